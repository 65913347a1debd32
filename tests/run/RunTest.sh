#!/bin/sh
# RunTest.sh SOURCE: plays the run script of the source folder with programs that only note how they were called.
set -eu
source=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

program() {
    { echo "#!/bin/sh" && cat; } >"$1"
    chmod +x "$1"
}

expect() {
    [ "$2" = "$3" ] && return
    printf '%s:\nexpected %s\nfound    %s\n' "$1" "$3" "$2" >&2
    exit 1
}

mkdir -p packaging/linux tools examples/pumpstation build/release/bin elsewhere
cp "$source/run" .
echo original >examples/pumpstation/PUMPSTATION.orx
mkfifo device-is-up device-is-alive
program packaging/linux/install-missing </dev/null
program tools/cmake </dev/null
# Nobody ends the device but the script; should that forget, it says so.
program build/release/bin/lx400d-simulator <<END
exec 3>"$folder/device-is-alive"
echo "device \$*" >>"$folder/calls"
echo >"$folder/device-is-up"
trap 'kill \$!; exit' TERM
sleep 20 3>&- &
wait
echo "device left alone" >>"$folder/calls"
END
program build/release/bin/orvista-editor <<END
read -r _ <"$folder/device-is-up" || true
echo "editor \$*" >>"$folder/calls"
echo changed >"\$1"
exit 3
END
program build/release/bin/orvista-tour <<END
echo "tour \$1 on \$QT_QPA_PLATFORM" >>"$folder/calls"
END
PATH=$folder/tools:$PATH
export PATH

# What the programs noted, in one line, once the device is gone.
calls_of() {
    : >calls
    cat device-is-alive &
    device_end=$!
    status=0
    (cd elsewhere && DISPLAY=:none ../run "$@") || status=$?
    wait $device_end
    echo "$(paste -s -d '|' calls) status $status"
}

here=$(pwd -P)
expect "device and editor, on a copy of the example" "$(calls_of)" \
    "device --root build/device|editor $here/build/examples/pumpstation/PUMPSTATION.orx status 3"
expect "the example afterwards" "$(cat examples/pumpstation/PUMPSTATION.orx)" original
expect "a project of one's own, from where one stands" "$(calls_of mine.orx)" \
    "device --root build/device|editor $folder/elsewhere/mine.orx status 3"

: >calls
env -u DISPLAY -u WAYLAND_DISPLAY ./run >/dev/null
DISPLAY=:none ./run --tour
expect "the tour, without a display and on request" "$(paste -s -d '|' calls)" \
    "tour build/tour on offscreen|tour build/tour on offscreen"
status=0
./run --nonsense 2>/dev/null || status=$?
expect "an option that is none" $status 2
