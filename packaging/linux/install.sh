#!/bin/sh
# Adds the editor in this folder to the present user's desktop: menu entry, icon, and .orx files that open by a double
# click. With --remove it takes all of that away again.
set -eu
here=$(dirname "$(readlink -f "$0")")
data=${XDG_DATA_HOME:-$HOME/.local/share}
entry=$data/applications/orvista-editor.desktop
types=$data/mime/packages/orvista-editor.xml
icons=$data/icons/hicolor

# The program's path as a desktop entry's Exec line wants it: quoted, then escaped once more as any of its texts. A plain
# path stays as it is, for xdg-open without a desktop knows no quotes.
exec_path() {
    case $here in
        *[!A-Za-z0-9/._+-]*)
            printf '"%s"' "$(printf %s "$here/orvista-editor" | sed 's/[\\"`$]/\\&/g; s/\\/\\\\/g; s/%/%%/g')" ;;
        *) printf %s "$here/orvista-editor" ;;
    esac
}

# Desktops read databases made from the entries.
update_databases() {
    if command -v update-mime-database >/dev/null && [ -d "$data/mime/packages" ]; then
        update-mime-database "$data/mime"
    fi
    if command -v update-desktop-database >/dev/null && [ -d "$data/applications" ]; then
        update-desktop-database "$data/applications"
    fi
    if [ -d "$icons" ]; then
        touch "$icons"
    fi
}

add() {
    if ! [ -x "$here/orvista-editor" ]; then
        echo "orvista-editor is not in $here" >&2
        exit 1
    fi
    mkdir -p "$data/applications" "$data/mime/packages"
    escaped=$(exec_path | sed 's/[\\&|]/\\&/g')
    sed "s|@PROGRAM@|$escaped|" "$here/desktop/orvista-editor.desktop.in" >"$entry"
    cp "$here/desktop/orvista-editor.xml" "$types"
    for size in 48 128 256; do
        mkdir -p "$icons/${size}x$size/apps"
        cp "$here/desktop/orvista-editor-$size.png" "$icons/${size}x$size/apps/orvista-editor.png"
    done
    mkdir -p "$icons/scalable/apps"
    cp "$here/desktop/orvista-editor.svg" "$icons/scalable/apps/orvista-editor.svg"
    update_databases
    echo "The editor is in your menu, and .orx projects open with it."
}

# What the databases consist of once nobody else has an entry.
remove_empty_databases() {
    if [ -d "$data/mime/packages" ] && [ -z "$(ls -A "$data/mime/packages")" ]; then
        for name in XMLnamespaces aliases generic-icons globs globs2 icons magic mime.cache subclasses treemagic types version; do
            rm -f "$data/mime/$name"
        done
    fi
    if [ "$(ls -A "$data/applications" 2>/dev/null)" = mimeinfo.cache ]; then
        rm -f "$data/applications/mimeinfo.cache"
    fi
}

remove() {
    rm -f "$entry" "$types" "$icons/scalable/apps/orvista-editor.svg"
    for size in 48 128 256; do
        rm -f "$icons/${size}x$size/apps/orvista-editor.png"
    done
    update_databases
    remove_empty_databases
    for folder in "$icons"/*/apps "$icons"/* "$icons" "$data/icons" "$data/mime/packages" "$data/mime/application" \
        "$data/mime" "$data/applications"; do
        [ ! -d "$folder" ] || rmdir --ignore-fail-on-non-empty "$folder"
    done
    echo "The editor is no longer in your menu. This folder can be deleted."
}

case ${1:-} in
    '') add ;;
    --remove) remove ;;
    *) echo "usage: $0 [--remove]" >&2; exit 2 ;;
esac
