#!/usr/bin/env bash
# Compares the binary interface of the library, with the layout of its classes, their virtual tables and all signatures, to
# the stored one, docs/abi/baseline.xml, and says what has changed. Any change is a failure.
# usage: scripts/check-abi.sh [--update]   with --update the interface as it is becomes the stored one
#
# Both have to come from the same compiler and Qt: those of Debian bookworm.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh abigail-tools
build=build/abi
baseline=docs/abi/baseline.xml
[ "${1:-}" = --update ] && new=$baseline || new=$build/interface.xml

# All sources in one unit, and not optimised: of a class that several units know, abidw loses the functions that are not in
# the first, and of functions that an optimiser finds to be alike it loses all but one.
cmake -S . -B "$build" -G Ninja --log-level=WARNING -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 \
    -DTARNWICK_BUILD_TESTS=OFF -DTARNWICK_BUILD_EXAMPLES=OFF -DTARNWICK_BUILD_BENCHMARKS=OFF
cmake --build "$build" --target Tarnwick
abidw --suppressions docs/abi/foreign.suppr --exported-interfaces-only --no-show-locs --no-corpus-path --no-comp-dir-path \
    --no-elf-needed --no-architecture --no-parameter-names --out-file "$new" "$build/src/libTarnwick.so"

if [ "$new" != "$baseline" ] && ! abidiff --leaf-changes-only "$baseline" "$new"; then
    echo 'check-abi: the binary interface has changed; see "Changing the interface" in CONTRIBUTING.md' >&2
    exit 1
fi
