#!/usr/bin/env bash
# Builds everything and runs the tests.
# usage: scripts/test.sh [PRESET...]   presets of CMakePresets.json: dev, release, asan; default: dev
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh
[ $# -gt 0 ] || set -- dev
for preset in "$@"; do
    echo "== $preset"
    cmake --preset "$preset" --log-level=WARNING
    cmake --build --preset "$preset"
    ctest --preset "$preset" --parallel "$(nproc)"
done
