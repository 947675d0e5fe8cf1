#!/usr/bin/env bash
# Loads a queue from several threads and prints what became of millions of commands. Fails where one does not end exactly
# once, a signal is missing or doubled, nothing moves any more, or the memory grows.
# usage: scripts/soak.sh [SECONDS]   without: 600
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh
cmake --preset release --log-level=WARNING
cmake --build --preset release --target soak_commandqueue
build/release/tests/soak_commandqueue "${1:-600}"
