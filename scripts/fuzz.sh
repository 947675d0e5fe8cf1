#!/usr/bin/env bash
# Runs each target of tests/fuzz with libFuzzer under the address and undefined behaviour sanitizers, and prints how
# much of the code under test it covers. Any finding is a failure. Its input is saved in build/fuzz/findings; the commit
# with the fix adds this input as a row of a test.
# usage: scripts/fuzz.sh SECONDS   for each target
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=$1
build=build/fuzz
scripts/setup.sh clang-14 libclang-rt-14-dev llvm-14
cmake --preset fuzz --log-level=WARNING
cmake --build --preset fuzz

rm -rf "$build/work"
mkdir -p "$build/findings"
export QT_QPA_PLATFORM=offscreen
failed=0
for source in tests/fuzz/fuzz_*.cpp; do
    target=$(basename "$source" .cpp)
    target=${target#fuzz_}
    work=$build/work/$target
    mkdir -p "$work/corpus"
    echo "== $target"
    # LLVM replaces %m by the signature of the binary: the program and the library each write a profile.
    if ! LLVM_PROFILE_FILE="$work/%m.profraw" "$build/tests/fuzz_$target" -max_total_time="$seconds" -timeout=30 \
        -print_final_stats=1 -artifact_prefix="$build/findings/$target-" "$work/corpus" >"$work/log" 2>&1; then
        tail -n 50 "$work/log"
        failed=1
        continue
    fi
    awk '/^stat::number_of_executed_units/ { runs = $2 } /^stat::average_exec_per_sec/ { print runs " runs, " $2 " in a second" }' \
        "$work/log"
    read -ra aims <<<"$(sed -n 's|^// Aims at: ||p' "$source")"
    llvm-profdata-14 merge -o "$work/profile" "$work"/*.profraw
    llvm-cov-14 report "$build/src/libTarnwick.so" -instr-profile="$work/profile" "${aims[@]}" |
        awk '/%/ { sub(/.*\//, "", $1); print "lines covered of " $1 ": " $10 }'
done
exit "$failed"
