#!/usr/bin/env bash
# Builds the documentation: build/docs/docs/html/index.html for browsers, build/docs/docs/tarnwick.qch for Qt Assistant and
# Qt Creator.
# usage: scripts/docs.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh graphviz qt6-documentation-tools doxygen-awesome-css
cmake -S . -B build/docs -G Ninja --log-level=WARNING -DTARNWICK_BUILD_DOCS=ON \
    -DTARNWICK_BUILD_TESTS=OFF -DTARNWICK_BUILD_EXAMPLES=OFF -DTARNWICK_BUILD_BENCHMARKS=OFF
cmake --build build/docs --target docs
echo "$PWD/build/docs/docs/html/index.html"
echo "$PWD/build/docs/docs/tarnwick.qch"
