#!/usr/bin/env bash
# Builds the documentation: build/docs/docs/html/index.html for browsers, build/docs/docs/tarnwick.qch for Qt Assistant and
# Qt Creator.
# usage: scripts/docs.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh graphviz qt6-documentation-tools doxygen-awesome-css
cmake --preset docs --log-level=WARNING
cmake --build --preset docs
echo "$PWD/build/docs/docs/html/index.html"
echo "$PWD/build/docs/docs/tarnwick.qch"
