#!/usr/bin/env bash
# Saves what the pharmacist sees right after a scan of 5909990000012 (the demo
# drug with every section and two GIF decisions) on the small screens common at
# pharmacy counters: a virtual X server of that size with a window manager
# (openbox), the program maximized beside the service simulator.
#
#   scripts/screenshots.sh [-b build folder] [-p port] [-o output folder] [-n name prefix] [-s scale]... [size]...
#
# The build folder (default build) must hold bin/quillard and the demo
# database; the port must be the one the build was configured with
# (QUILLARD_SIMULATOR_PORT, 18765 by default). Sizes default to 1366x768 and
# 1280x1024, the scale (QT_SCALE_FACTOR) to 1. Files: <output>/<prefix>-<size>[-<scale>].png
# right after the scan, and <...>-page.png once the box and the bubbles have gone.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build
port=18765
output=docs/screens
prefix=screen
scales=()
while getopts "b:p:o:n:s:" option; do
    case "$option" in
        b) build=$OPTARG ;;
        p) port=$OPTARG ;;
        o) output=$OPTARG ;;
        n) prefix=$OPTARG ;;
        s) scales+=("$OPTARG") ;;
        *) sed -n '2,12p' "$0" >&2; exit 2 ;;
    esac
done
shift $((OPTIND - 1))
sizes=("$@")
[ ${#sizes[@]} -eq 0 ] && sizes=(1366x768 1280x1024)
[ ${#scales[@]} -eq 0 ] && scales=(1)

for tool in Xvfb openbox xdotool import; do
    if ! command -v "$tool" > /dev/null; then
        echo "$tool is missing: apt-get install -y xvfb openbox xdotool imagemagick" >&2
        exit 1
    fi
done
bin=$(cd "$build/bin" && pwd)
mkdir -p "$output"
output=$(cd "$output" && pwd)
work=$(mktemp -d)

pids=()
stop_all() {
    for pid in "${pids[@]}"; do
        kill "$pid" 2> /dev/null || true
    done
    for pid in "${pids[@]}"; do
        wait "$pid" 2> /dev/null || true
    done
    pids=()
}
trap 'stop_all; rm -rf "$work"' EXIT

# A copy of the demo database, so that the simulator's update does not replace the build's own.
cp "$bin/corvane_quillard_desktop.sqlite3" "$work/demo.sqlite3"

for size in "${sizes[@]}"; do
    for scale in "${scales[@]}"; do
        name="$prefix-$size"
        [ "$scale" != 1 ] && name="$name-$scale"
        echo "== $name"

        # A program folder of its own: the update replaces the database beside the program.
        program="$work/program-$size-$scale"
        mkdir -p "$program/config/Corvane"
        cp "$bin/quillard" "$work/demo.sqlite3" "$program/"
        mv "$program/demo.sqlite3" "$program/corvane_quillard_desktop.sqlite3"
        # The windows that open by themselves at the first start would hide the page.
        printf '[General]\nseen_RODO_info=true\nseen_shortcuts_page=true\n' > "$program/config/Corvane/Quillard.conf"

        python3 tools/simulator/simulator.py --port "$port" --db "$work/demo.sqlite3" \
            --state-dir "$program/simulator-state" > "$program/simulator.out" 2> "$program/simulator.log" &
        pids+=($!)
        # Xvfb picks a free display and writes its number to descriptor 3.
        Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3> "$program/display" > "$program/xvfb.log" 2>&1 &
        pids+=($!)
        for _ in $(seq 1 50); do
            [ -s "$program/display" ] && break
            sleep 0.2
        done
        export DISPLAY=":$(head -n 1 "$program/display")"
        openbox > "$program/openbox.log" 2>&1 &
        pids+=($!)
        for _ in $(seq 1 50); do
            grep -q LISTENING "$program/simulator.out" 2> /dev/null && break
            sleep 0.2
        done

        (cd "$program" && XDG_CONFIG_HOME="$program/config" QT_SCALE_FACTOR="$scale" QT_QPA_PLATFORM=xcb QTDIR= \
            exec ./quillard > "$program/quillard.out" 2>&1) &
        pids+=($!)
        xdotool search --sync --onlyvisible --name '^Quillard$' > /dev/null
        # The start-up checks (connection, program, database update) come first;
        # the scanner is wired when they are over.
        sleep 6
        xdotool type --delay 20 5909990000012
        sleep 4
        import -window root -colors 256 "png8:$output/$name.png"
        # The box and the bubbles go after ten seconds; then the whole page shows.
        sleep 8
        import -window root -colors 256 "png8:$output/$name-page.png"
        stop_all
        unset DISPLAY
    done
done
echo "Saved in $output"
