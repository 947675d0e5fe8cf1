#!/usr/bin/env bash
# Plants faults in the library, one at a time, and prints those that no test notices.
# usage: scripts/mutate.sh [--jobs N] [--every N] [--all] [PATH...]   paths of files or folders; without one: src
#
# A fault is a moved boundary, a negated condition, a removed call or assignment, two swapped arguments or a changed
# constant, one of a kind on a line. The tests of the file's class run first, then those of its subsystem, then
# all; the first failure, crash or hang ends the matter. Faults that change nothing a test could see stand with the
# reason in scripts/mutate-equivalent.txt, as they are printed here. Fails if less than 95 % of the others are noticed.
#
# --every N takes each Nth fault. What became of each stands in build/mutate/results.json, a line a fault, with the test
# functions that failed. With --all that is all of the subsystem: one that fails nowhere alone is a test to part with.
#
# The work is done in a copy under build/mutate. The locks are not removed here: scripts/tsan.sh tells when one lacks.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh python3
exec python3 scripts/mutate.py "$@"
