#!/usr/bin/env bash
# Builds Quillard and runs every test: unit tests offscreen, the keyboard and
# window tests on a virtual X server, the network tests against the local
# service simulator that each test starts for itself.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
# A port of its own, so that a demo running beside the tests is not disturbed.
cmake -S . -B build-tests -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUILLARD_SIMULATOR_PORT=18766 -DQUILLARD_WARNINGS_AS_ERRORS=ON
cmake --build build-tests -j"$(nproc)"

cd build-tests
xvfb-run -a -s "-screen 0 1920x1080x24" \
    ctest --output-on-failure -j"$(nproc)" --timeout 600
