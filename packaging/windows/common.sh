# Shared by build and check: where things are kept, cached steps, running under Wine. Sourced, never run.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source_root=$(cd "$here/../.." && pwd)
cache=${ORVISTA_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvista-windows}
prefix=$cache/prefix
wine_root=$cache/wine-root
build_folder=$source_root/build/windows
programs=$build_folder/programs
jobs=${JOBS:-$(nproc)}
target=i686-w64-mingw32

say() { printf '== %s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

# Asks for the administrator's password only when the user is not root already.
as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

# need PURPOSE...: installs what the purposes need and the machine lacks.
need() { "$source_root/packaging/linux/install-missing" "$@"; }

# The configured Debian archives, as source archives, in lists of our own: the system's configuration stays as it is.
source_apt() {
  local command=$1 apt=$cache/apt
  shift
  mkdir -p "$apt/sources" "$apt/lists/partial" "$apt/archives/partial"
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > "$apt/sources/debian.sources"
  else
    sed -n 's/^deb\(-src\)\? /deb-src /p' /etc/apt/sources.list | sort -u > "$apt/sources/debian.list"
  fi
  "$command" -qq -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$apt/sources" \
    -o Dir::State::Lists="$apt/lists" -o Dir::Cache="$apt" -o APT::Sandbox::User="$(id -un)" "$@"
}

# fetch_source PACKAGE FOLDER: Debian's source of PACKAGE, patched, in FOLDER. What apt has fetched it has also checked.
fetch_source() {
  local package=$1 folder=$2
  rm -rf "$folder" "$cache/download/$package"
  mkdir -p "$cache/download/$package" "$(dirname "$folder")"
  if [ -z "$(find "$cache/apt/updated" -mtime -1 2>/dev/null)" ]; then
    source_apt apt-get update
    touch "$cache/apt/updated"
  fi
  (cd "$cache/download/$package" && source_apt apt-get source --download-only "$package" \
    && dpkg-source --no-check --no-copy -x ./*.dsc "$folder" >/dev/null)
}

# cached_step NAME: runs recipes/NAME unless it has run to its end with the same recipe, toolchain and compiler.
cached_step() {
  local name=$1 recipe=$here/recipes/$1 stamp=$cache/stamps/$1 key log=$cache/$1.log started=$SECONDS
  key=$(cat "$recipe" "$here/mingw32.cmake" <($target-g++-posix --version) | sha256sum | cut -d' ' -f1)
  if [ "$(cat "$stamp" 2>/dev/null)" = "$key" ]; then
    say "$name: kept from an earlier run"
    return 0
  fi
  mkdir -p "$cache/stamps" "$prefix"
  rm -f "$stamp"
  say "$name: building (log in $log)"
  bash "$recipe" > "$log" 2>&1 || { tail -n 40 "$log" >&2; die "$name: failed, see $log"; }
  echo "$key" > "$stamp"
  say "$name: done in $((SECONDS - started)) s"
}

# in_wine SCRIPT: runs SCRIPT as the present user in the root that has Wine. The source tree lies there where it lies here,
# on Wine's drive Z:. Mounts, processes and a network of nothing but loopback are the run's own and go with it. Wine's
# server stays for the whole run: one that leaves between two programs may take the next one with it. Only while the
# prefix is being made does it come and go with its programs: a server kept before there is a prefix finds no folder to
# live in, and whoever makes the prefix waits for it to leave.
in_wine() {
  local script=$1
  as_root mkdir -p "$wine_root$source_root"
  as_root unshare --mount --pid --net --fork --kill-child bash -euc '
    root=$1 source=$2 user=$3 script=$4
    ip link set lo up
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount --bind "$source" "$root$source"
    chroot --userspec="$user" "$root" /usr/bin/env -i PATH=/usr/bin:/bin LANG=C.UTF-8 HOME=/home/check \
      WINEPREFIX=/home/check/wine WINEARCH=win32 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" \
      bash -euc "[ ! -d \"\$WINEPREFIX\" ] || wineserver --persistent; cd \"$source\"; $script"' in-wine "$wine_root" "$source_root" "$(id -u):$(id -g)" "$script"
}
