#!/bin/sh
# Pictures of the window in its states, light and dark, at the least and the usual size: screenshots.sh BUILD-FOLDER OUT-FOLDER
set -eu
program=$1/bin/velarin-offline
out=$2
mkdir -p "$out"

runtime=$(mktemp -d)
chmod 700 "$runtime"
Xvfb -displayfd 3 -screen 0 3200x2000x24 -nolisten tcp 3>"$runtime/display" 2>/dev/null &
server=$!
trap 'kill $server; rm -rf "$runtime"' EXIT
while [ ! -s "$runtime/display" ]; do sleep 0.1; done
export DISPLAY=":$(cat "$runtime/display")" XDG_RUNTIME_DIR="$runtime" QT_QPA_PLATFORM=xcb
unset DBUS_SESSION_BUS_ADDRESS WAYLAND_DISPLAY

states=${STATES:-idle playing untitled connecting failed muted focus menu context devices}
for scheme in ${SCHEMES:-dark light}; do
    for size in ${SIZES:-1180x780 900x560}; do
        for state in $states; do
            "$program" --screenshot "$out/$state-$scheme-$size.png" --size "$size" --scheme "$scheme" --state "$state"
        done
    done
done
