#!/usr/bin/env bash
# Builds Quillard with its demo database and runs it beside the local service
# simulator, which the default build's service addresses point at.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLARD_BUILD_TESTS=OFF -DQUILLARD_BUILD_BENCHMARKS=OFF
cmake --build build -j"$(nproc)"

port=18765
simulator_pid=""
if ! (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; then
    python3 tools/simulator/simulator.py --port "$port" --db build/bin/corvane_quillard_desktop.sqlite3 \
        --state-dir build/simulator-state > build/simulator.out 2> build/simulator.log &
    simulator_pid=$!
    stop_simulator() { kill "$simulator_pid" 2>/dev/null || true; }
    trap stop_simulator EXIT
    trap 'stop_simulator; exit 130' INT TERM
    for _ in $(seq 1 50); do
        grep -q LISTENING build/simulator.out 2>/dev/null && break
        sleep 0.2
    done
fi

cd build/bin
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display found: running on a virtual X server (xvfb-run)."
    xvfb-run -a -s "-screen 0 1920x1080x24" ./quillard
else
    ./quillard
fi
