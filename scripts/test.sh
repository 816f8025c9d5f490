#!/usr/bin/env bash
# Builds Quillard and runs every test: unit tests offscreen, the keyboard and
# window tests on a virtual X server, the network tests against the local
# service simulator that each test starts for itself.
#
# The suite runs twice: as the program is shipped (build-tests), then built
# with AddressSanitizer and UndefinedBehaviorSanitizer (build-asan), where a
# memory error, a leak or undefined behaviour fails the test. Name one pass,
# "plain" or "sanitized", to run only that one.
set -euo pipefail
cd "$(dirname "$0")/.."

passes=("$@")
if [ ${#passes[@]} -eq 0 ]; then
    passes=(plain sanitized)
fi
for pass in "${passes[@]}"; do
    case "$pass" in
        plain|sanitized) ;;
        *) echo "usage: $0 [plain|sanitized]..." >&2; exit 2 ;;
    esac
done

scripts/install-deps.sh

# run_pass FOLDER PORT [CMAKE OPTION...]: builds into FOLDER and runs the tests
# there. Each build has a simulator port of its own, so that a demo running
# beside the tests, or the other pass, is not disturbed.
run_pass() {
    local folder=$1 port=$2
    shift 2
    cmake -S . -B "$folder" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DQUILLARD_SIMULATOR_PORT="$port" -DQUILLARD_WARNINGS_AS_ERRORS=ON "$@"
    cmake --build "$folder" -j"$(nproc)"
    (cd "$folder" && xvfb-run -a -s "-screen 0 1920x1080x24" \
        ctest --output-on-failure -j"$(nproc)" --timeout 600)
}

for pass in "${passes[@]}"; do
    case "$pass" in
        plain) run_pass build-tests 18766 -DQUILLARD_SANITIZE=OFF ;;
        sanitized) run_pass build-asan 18769 -DQUILLARD_SANITIZE=ON ;;
    esac
done
