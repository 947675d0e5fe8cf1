#!/usr/bin/env bash
# Builds the example file-digest and computes the digests of files and of all files in folders. Inside folders, skips
# entries named ".git" or "build".
# usage: scripts/demo.sh [FILE|FOLDER...]   default: this checkout
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

[ $# -gt 0 ] || set -- "$root"
for path in "$@"; do
    case $path in
    -h | --help)
        echo "usage: scripts/demo.sh [FILE|FOLDER...]   default: this checkout"
        exit
        ;;
    esac
    if [ ! -e "$path" ]; then
        echo "demo: no such file or folder: $path" >&2
        exit 2
    fi
done

# Standard output contains only the digests.
(
    cd "$root"
    echo "== packages"
    scripts/setup.sh --library
    echo "== build"
    cmake --preset demo --log-level=WARNING
    cmake --build --preset demo
    echo "== digests"
) >&2
exec "$root/build/demo/examples/file-digest/file-digest" --exclude .git --exclude build -- "$@"
