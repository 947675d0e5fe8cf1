#!/usr/bin/env bash
# Measures what the tests execute of src/, in build/coverage, and names each line of it that they do not: that is a failure.
# Branches are counted for information only; exceptions, which anything may throw, are left out of them.
# usage: scripts/coverage.sh
#
# A line that no test can reach carries "GCOVR_EXCL_LINE" and the reason.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh gcovr
build=build/coverage
cmake -S . -B "$build" -G Ninja --log-level=WARNING -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS='--coverage -fprofile-update=atomic' -DTARNWICK_BUILD_BENCHMARKS=OFF
cmake --build "$build"
find "$build" -name '*.gcda' -delete
# The clients that the tests build for themselves, and GDB's, bring a library of their own, or execute next to nothing.
ctest --test-dir "$build" --output-on-failure --no-tests=error --exclude-regex '^(consumer|subproject|gdb)'

measure() { gcovr --root . --filter src/ --exclude-throw-branches "$@" "$build"; }
measure --branches
measure --fail-under-line 100
