#!/usr/bin/env bash
# Digests all files under a folder with the example file-digest, which it builds first.
# usage: scripts/demo.sh [FOLDER]   without one: this checkout
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Standard output is the demo's alone.
(
    cd "$root"
    scripts/setup.sh
    cmake --preset release --log-level=WARNING
    cmake --build --preset release --target file-digest
) >&2
exec "$root/build/release/examples/file-digest/file-digest" "${1:-$root}"
