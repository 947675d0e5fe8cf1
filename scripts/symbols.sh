#!/usr/bin/env bash
# Writes the symbols that a built library exports, demangled, to docs/abi/symbols.txt.
# usage: scripts/symbols.sh [--check] LIBRARY   with --check: writes nothing; a difference is a failure
set -euo pipefail
list=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/docs/abi/symbols.txt

export LC_ALL=C
check=
[ "$1" != --check ] || { check=yes && shift; }
symbols=$(nm --dynamic --defined-only --demangle "$1" | sed -E 's/^[0-9a-f]+ . //' | sort -u)

if [ -z "$check" ]; then
    printf '%s\n' "$symbols" >"$list"
elif ! diff -u "$list" <(printf '%s\n' "$symbols"); then
    echo "symbols: the exported symbols differ from docs/abi/symbols.txt; see \"Changing the interface\" in CONTRIBUTING.md" >&2
    exit 1
fi
