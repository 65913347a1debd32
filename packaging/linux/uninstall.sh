#!/bin/sh
# Takes back what install.sh added to the present user's desktop.
exec "$(dirname "$(readlink -f "$0")")/install.sh" --remove
