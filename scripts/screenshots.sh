#!/usr/bin/env bash
# Saves what the pharmacist sees right after a scan of 5909990000012 (the demo
# drug with every section and two GIF decisions) on the small screens common at
# pharmacy counters: a virtual X server of that size with a window manager
# (openbox), the program maximized beside the service simulator.
#
#   scripts/screenshots.sh [-b build folder] [-p port] [-o output folder] [-n name prefix] [-s scale]... [size]...
#   scripts/screenshots.sh -g [-b build folder] [-p port]
#
# The build folder (default build) must hold bin/quillard and the demo
# database; the port must be the one the build was configured with
# (QUILLARD_SIMULATOR_PORT, 18765 by default). Sizes default to 1366x768 and
# 1280x1024, the scale (QT_SCALE_FACTOR) to 1. Files: <output>/<prefix>-<size>[-<scale>].png
# right after the scan, and <...>-page.png once the box and the bubbles have gone.
# With -g it takes the README's pictures instead, at 1366x768, into docs/guide/:
# the first start, the notification box over another program, the drug page,
# its descriptions and warnings, a leaflet, the recipes and "Twoje dane".
set -euo pipefail
cd "$(dirname "$0")/.."

build=build
port=18765
output=docs/screens
prefix=screen
scales=()
guide=0
while getopts "gb:p:o:n:s:" option; do
    case "$option" in
        g) guide=1 ;;
        b) build=$OPTARG ;;
        p) port=$OPTARG ;;
        o) output=$OPTARG ;;
        n) prefix=$OPTARG ;;
        s) scales+=("$OPTARG") ;;
        *) sed -n '2,16p' "$0" >&2; exit 2 ;;
    esac
done
shift $((OPTIND - 1))
sizes=("$@")
[ ${#sizes[@]} -eq 0 ] && sizes=(1366x768 1280x1024)
[ ${#scales[@]} -eq 0 ] && scales=(1)

for tool in Xvfb openbox xdotool import xmessage; do
    if ! command -v "$tool" > /dev/null; then
        echo "$tool is missing: apt-get install -y xvfb openbox xdotool imagemagick x11-utils" >&2
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

# The session of one program: a folder of its own with the settings given,
# the simulator, a virtual X server of the size given with openbox, the program.
start_session() {
    local size=$1 settings=$2
    program="$work/program-$size-$((++session))"
    mkdir -p "$program/config/Corvane"
    cp "$bin/quillard" "$work/demo.sqlite3" "$program/"
    mv "$program/demo.sqlite3" "$program/corvane_quillard_desktop.sqlite3"
    printf '%b' "$settings" > "$program/config/Corvane/Quillard.conf"
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
    (cd "$program" && XDG_CONFIG_HOME="$program/config" QT_SCALE_FACTOR="${scale:-1}" QT_QPA_PLATFORM=xcb QTDIR= \
        exec ./quillard > "$program/quillard.out" 2>&1) &
    pids+=($!)
    xdotool search --sync --onlyvisible --name '^Quillard$' > /dev/null
}
shoot() {
    import -window root -colors 256 "png8:$output/$1.png"
    echo "   $1.png"
}
click() {
    xdotool mousemove "$1" "$2" click 1
    sleep "${3:-1}"
}
session=0

if [ "$guide" = 1 ]; then
    output=$(pwd)/docs/guide
    mkdir -p "$output"
    echo "== the first start"
    # The notice on personal data comes first, then the shortcuts window.
    start_session 1366x768 ''
    sleep 4
    shoot first-start
    stop_all
    start_session 1366x768 '[General]\nseen_RODO_info=true\n'
    sleep 4
    shoot shortcuts-window
    stop_all

    echo "== a day at the counter"
    # The places clicked below are those of the demo base's drug at 1366x768.
    start_session 1366x768 '[General]\nseen_RODO_info=true\nseen_shortcuts_page=true\n'
    sleep 6
    # Another program has the focus when the code is scanned (xmessage shows ASCII only).
    xmessage -geometry 640x260+60+300 -title "Program apteczny" \
        "Program apteczny - sprzedaz, pozycja 3" &
    pids+=($!)
    xdotool search --sync --onlyvisible --name '^Program apteczny$' windowactivate --sync > /dev/null
    xdotool type --delay 20 5909990000012
    sleep 4
    shoot notification-box
    # The box goes after ten seconds; the drug page stays.
    sleep 8
    xdotool search --onlyvisible --name '^Quillard$' windowactivate --sync > /dev/null
    sleep 1
    shoot main-window
    click 866 68
    click 640 162
    shoot descriptions
    click 985 68
    shoot warnings
    click 620 68
    click 888 293 0
    xdotool search --sync --onlyvisible --name '^Ulotka$' > /dev/null
    sleep 3
    shoot leaflet
    xdotool key alt+F4
    sleep 1
    click 483 127 2
    shoot recipes
    click 181 29
    click 203 52 2
    shoot your-data
    stop_all
    echo "Saved in $output"
    exit 0
fi

for size in "${sizes[@]}"; do
    for scale in "${scales[@]}"; do
        name="$prefix-$size"
        [ "$scale" != 1 ] && name="$name-$scale"
        echo "== $name"

        # The windows that open by themselves at the first start would hide the page.
        start_session "$size" '[General]\nseen_RODO_info=true\nseen_shortcuts_page=true\n'
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
