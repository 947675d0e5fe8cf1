#!/usr/bin/env bash
# Measures in build/coverage which lines of src/ the tests execute. Names each line that they do not execute; any such
# line is a failure. Branches are reported for information only, without those of exceptions.
# usage: scripts/coverage.sh
#
# A line that no test can reach is marked "GCOVR_EXCL_LINE" with the reason.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh gcovr
build=build/coverage
cmake --preset coverage --log-level=WARNING
cmake --build --preset coverage
find "$build" -name '*.gcda' -delete
# Left out: the tests that build a library of their own, and those of GDB, which execute few lines.
ctest --preset coverage --parallel "$(nproc)" --exclude-regex '^(consumer|subproject|gdb)'

measure() { gcovr --root . --filter src/ --exclude-throw-branches "$@" "$build"; }
measure --branches
measure --fail-under-line 100
