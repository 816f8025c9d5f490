#!/usr/bin/env bash
# Builds the fuzz targets of fuzz/ with Clang, libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer (build-fuzz/) and runs each for the given number
# of seconds (60 by default), one after another on one core. Prints the
# executions and the findings of each target; a finding's input is left as
# build-fuzz/findings/<target>/crash-* (or leak-*, timeout-*, oom-*). Inputs
# that reach new code are added to a copy of the corpus in
# build-fuzz/corpus/<target>, never to the seeds in the repository.
#
# Not part of scripts/test.sh: the tests run each target once over its corpus.
#
#   scripts/fuzz.sh [seconds] [target...]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true

QUILLARD_FUZZ_DEPS=1 scripts/install-deps.sh

CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLARD_FUZZ=ON \
    -DQUILLARD_BUILD_TESTS=OFF -DQUILLARD_BUILD_BENCHMARKS=OFF -DQUILLARD_SIMULATOR_PORT=18786 >/dev/null
cmake --build build-fuzz --target fuzz-targets -j"$(nproc)"

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for source in fuzz/corpus/*/; do
        targets+=("$(basename "$source")")
    done
fi

export ASAN_OPTIONS="detect_leaks=1:allocator_may_return_null=1"
# One suppressions file: the tests' and the fuzz runs' own.
cat tests/sanitizers/lsan.supp fuzz/lsan.supp >build-fuzz/lsan.supp
export LSAN_OPTIONS="suppressions=$PWD/build-fuzz/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export QT_QPA_PLATFORM=offscreen

summary=()
total_findings=0
for target in "${targets[@]}"; do
    corpus=build-fuzz/corpus/$target
    findings=build-fuzz/findings/$target
    mkdir -p "$corpus" "$findings"
    log=build-fuzz/findings/$target.log
    echo "== $target: $seconds s"
    # -fork keeps going after a finding, so that one run reports all it finds.
    # Qt's JSON reader leaks on a repeated key (fuzz/qt-findings/): the
    # envelope's own leaks would hide behind that one.
    leaks=1
    [ "$target" = envelope ] && leaks=0
    set +e
    ASAN_OPTIONS="detect_leaks=$leaks:allocator_may_return_null=1" \
    build-fuzz/bin/fuzz_"$target" "$corpus" fuzz/corpus/"$target" \
        -fork=1 -ignore_crashes=1 -ignore_timeouts=1 -ignore_ooms=1 \
        -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 \
        -artifact_prefix="$findings/" -print_final_stats=1 >"$log" 2>&1
    set -e
    execs=$(grep -Eo 'exec/s: [0-9]+|execs: [0-9]+' "$log" | tail -1 || true)
    runs=$(grep -E '^#[0-9]+' "$log" | tail -1 | grep -Eo '^#[0-9]+' | tr -d '#' || true)
    count=$(find "$findings" -maxdepth 1 -type f | wc -l)
    total_findings=$((total_findings + count))
    summary+=("$(printf '%-16s %12s executions  %3d findings' "$target" "${runs:-?}" "$count")")
    echo "   ${runs:-?} executions, $count findings (log: $log)"
done

echo
echo "Target           executions          findings"
printf '%s\n' "${summary[@]}"
[ "$total_findings" -eq 0 ]
