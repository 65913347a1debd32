#!/bin/sh
# Adds the programs in this folder to the present user's desktop: menu entries, icon, .orx files that open by a double
# click, manual pages and completion of bash, zsh and fish, and orvista to where commands are found. With --remove it takes all of that away again.
set -eu
here=$(dirname "$(readlink -f "$0")")
data=${XDG_DATA_HOME:-$HOME/.local/share}
programs='orvista-editor lx400d-simulator'
entries=$data/applications
types=$data/mime/packages/orvista-editor.xml
about=$data/metainfo/orvista-editor.metainfo.xml
manual=$data/man/man1
bash=$data/bash-completion/completions
zsh=$data/zsh/site-functions
fish=$data/fish/vendor_completions.d
icons=$data/icons/hicolor
commands=$HOME/.local/bin

# exec_path PROGRAM: its path as a desktop entry's Exec line wants it: quoted, then escaped once more as any of its texts. A plain
# path stays as it is, for xdg-open without a desktop knows no quotes.
exec_path() {
    case $here in
        *[!A-Za-z0-9/._+-]*)
            printf '"%s"' "$(printf %s "$here/$1" | sed 's/[\\"`$]/\\&/g; s/\\/\\\\/g; s/%/%%/g')" ;;
        *) printf %s "$here/$1" ;;
    esac
}

# Desktops read databases made from the entries.
update_databases() {
    if command -v update-mime-database >/dev/null && [ -d "$data/mime/packages" ]; then
        update-mime-database "$data/mime"
    fi
    if command -v update-desktop-database >/dev/null && [ -d "$entries" ]; then
        update-desktop-database "$entries"
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
    mkdir -p "$entries" "$data/mime/packages" "$data/metainfo" "$manual" "$bash" "$zsh" "$fish"
    for program in $programs; do
        escaped=$(exec_path $program | sed 's/[\\&|]/\\&/g')
        sed "s|@PROGRAM@|$escaped|" "$here/desktop/$program.desktop.in" >"$entries/$program.desktop"
    done
    for program in $programs orvista; do
        cp "$here/man/$program.1" "$manual"
        cp "$here/completion/bash/$program" "$bash"
        cp "$here/completion/zsh/_$program" "$zsh"
        cp "$here/completion/fish/$program.fish" "$fish"
    done
    # A command of that name that is somebody else's stays.
    mkdir -p "$commands"
    if [ -L "$commands/orvista" ] || ! [ -e "$commands/orvista" ]; then
        ln -sfn "$here/orvista" "$commands/orvista"
    fi
    cp "$here/desktop/orvista-editor.xml" "$types"
    cp "$here/desktop/orvista-editor.metainfo.xml" "$about"
    for size in 48 128 256; do
        mkdir -p "$icons/${size}x$size/apps"
        cp "$here/desktop/orvista-editor-$size.png" "$icons/${size}x$size/apps/orvista-editor.png"
    done
    mkdir -p "$icons/scalable/apps"
    cp "$here/desktop/orvista-editor.svg" "$icons/scalable/apps/orvista-editor.svg"
    update_databases
    echo "The editor and the simulated display are in your menu, and .orx projects open with it."
}

# What the databases consist of once nobody else has an entry.
remove_empty_databases() {
    if [ -d "$data/mime/packages" ] && [ -z "$(ls -A "$data/mime/packages")" ]; then
        for name in XMLnamespaces aliases generic-icons globs globs2 icons magic mime.cache subclasses treemagic types version; do
            rm -f "$data/mime/$name"
        done
    fi
    if [ "$(ls -A "$entries" 2>/dev/null)" = mimeinfo.cache ]; then
        rm -f "$entries/mimeinfo.cache"
    fi
}

remove() {
    for program in $programs; do
        rm -f "$entries/$program.desktop"
    done
    for program in $programs orvista; do
        rm -f "$manual/$program.1" "$bash/$program" "$zsh/_$program" "$fish/$program.fish"
    done
    if [ -L "$commands/orvista" ]; then
        rm "$commands/orvista"
    fi
    rm -f "$types" "$about" "$icons/scalable/apps/orvista-editor.svg"
    for size in 48 128 256; do
        rm -f "$icons/${size}x$size/apps/orvista-editor.png"
    done
    update_databases
    remove_empty_databases
    for folder in "$icons"/*/apps "$icons"/* "$icons" "$data/icons" "$data/mime/packages" "$data/mime/application" \
        "$data/mime" "$entries" "$data/metainfo" "$manual" "$data/man" "$bash" "$data/bash-completion" "$zsh" "$data/zsh" "$fish" \
        "$data/fish" "$commands"; do
        [ ! -d "$folder" ] || rmdir --ignore-fail-on-non-empty "$folder"
    done
    echo "The programs are no longer in your menu. This folder can be deleted."
}

case ${1:-} in
    '') add ;;
    --remove) remove ;;
    *) echo "usage: $0 [--remove]" >&2; exit 2 ;;
esac
