#!/usr/bin/env bash
# The Debian package, as a user gets it: packed by CPack from the build,
# extracted with dpkg-deb -x into a temporary root, and the extracted program
# started on a virtual X server with a home of its own and the simulator
# running. A typed demo code must bring the drug up (its scan record reaches
# the simulator), and the program must have written nothing outside the
# home's data folder (its settings aside).
#
#   check_package.sh <build folder> <simulator port>
#
# Exits 77 (skipped) without dpkg-deb, Xvfb or xdotool.
set -euo pipefail
build=$(cd "$1" && pwd)
port=$2
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
ean=5909990000012

for tool in dpkg-deb cpack Xvfb xdotool curl; do
    if ! command -v "$tool" > /dev/null; then
        echo "SKIP: $tool is missing"
        exit 77
    fi
done

work=$(mktemp -d)
pids=()
finish() {
    for pid in "${pids[@]}"; do
        kill "$pid" 2> /dev/null || true
    done
    for pid in "${pids[@]}"; do
        wait "$pid" 2> /dev/null || true
    done
    [ -n "${KEEP_WORK:-}" ] || rm -rf "$work"
}
trap finish EXIT
fail() {
    echo "FAIL: $*"
    for log in "$work"/*.log "$data/log.log"; do
        [ -f "$log" ] && { echo "--- $log"; tail -n 30 "$log"; }
    done
    exit 1
}

# Waits up to $1 tenths of a second for the command after it to succeed.
wait_for() {
    local tenths=$1
    shift
    for _ in $(seq 1 "$tenths"); do
        "$@" && return 0
        sleep 0.1
    done
    return 1
}

echo "== packing"
cpack -G DEB -B "$work/out" --config "$build/CPackConfig.cmake" > "$work/cpack.log" 2>&1 || fail "cpack"
deb=$(ls "$work"/out/quillard_*.deb)
dpkg-deb -x "$deb" "$work/root"
root="$work/root"

echo "== contents"
for file in usr/bin/quillard usr/share/quillard/corvane_quillard_desktop.sqlite3 \
    usr/share/applications/pl.corvane.Quillard.desktop usr/share/metainfo/pl.corvane.Quillard.metainfo.xml \
    usr/share/icons/hicolor/scalable/apps/quillard.svg usr/share/doc/quillard/copyright; do
    [ -f "$root/$file" ] || fail "$file is not in the package"
done
for size in 16 22 24 32 48 64 128 256; do
    [ -f "$root/usr/share/icons/hicolor/${size}x${size}/apps/quillard.png" ] || fail "no ${size}px icon"
done
dpkg-deb --field "$deb" Depends | grep -q poppler-utils || fail "poppler-utils is not a dependency"

echo "== first start"
home="$work/home"
data="$home/.local/share/Corvane/Quillard"
mkdir -p "$home/.config/Corvane" "$work/cwd"
# The notice and the shortcuts window of a first start would hold the scanner
# back; the user has seen them.
printf '[General]\nseen_RODO_info=true\nseen_shortcuts_page=true\n' > "$home/.config/Corvane/Quillard.conf"

cp "$root/usr/share/quillard/corvane_quillard_desktop.sqlite3" "$work/offered.sqlite3"
python3 "$source_dir/tools/simulator/simulator.py" --port "$port" --db "$work/offered.sqlite3" \
    --state-dir "$work/simulator-state" > "$work/simulator.out" 2> "$work/simulator.log" &
pids+=($!)
Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3> "$work/display" > "$work/xvfb.log" 2>&1 &
pids+=($!)
wait_for 100 test -s "$work/display" || fail "Xvfb did not start"
wait_for 100 grep -q LISTENING "$work/simulator.out" || fail "the simulator did not start"

# What the program may not change: everything of the home but its data folder
# and its settings, the folder it starts in and the extracted package.
snapshot() {
    find "$home" "$work/cwd" "$root" -type f ! -path "$data/*" ! -path "$home/.config/Corvane/*" \
        -exec md5sum {} + | sort
}
snapshot > "$work/before.txt"
mkdir -m 700 "$work/runtime"
(cd "$work/cwd" && exec env -i PATH=/usr/bin:/bin HOME="$home" XDG_CONFIG_HOME="$home/.config" \
    XDG_DATA_HOME="$home/.local/share" XDG_CACHE_HOME="$home/.cache" XDG_RUNTIME_DIR="$work/runtime" \
    DISPLAY=":$(head -n 1 "$work/display")" QT_QPA_PLATFORM=xcb "$root/usr/bin/quillard" \
    > "$work/program.log" 2>&1) &
pids+=($!)

# The scanner is wired once the start-up checks are over.
wait_for 600 grep -q "Finnished checks" "$data/log.log" 2> /dev/null || fail "the start-up checks never ended"
scans() {
    curl -s "http://127.0.0.1:$port/_sim/records?path=%2Fdesktop%2Fusage%2Fscanned_ean.php"
}
DISPLAY=":$(head -n 1 "$work/display")" xdotool type --delay 20 "$ean"
wait_for 200 eval 'scans | grep -q "$ean"' || fail "the scan of $ean brought no drug up"

echo "== files"
[ -s "$data/corvane_quillard_desktop.sqlite3" ] || fail "no base in the data folder"
outside=$(snapshot | diff "$work/before.txt" - || true)
[ -z "$outside" ] || fail "written outside the data folder: $outside"
echo "written: $(cd "$data" && find . -type f | sort | tr '\n' ' ')"
echo "PASS"
