#!/usr/bin/env bash
# Copies compiled examples into README.md: replaces the code block after each line "<!-- from FILE -->" with the file.
# usage: scripts/readme.sh [--check]   with --check: writes nothing; a difference is a failure
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

fill_in() {
    awk '
        /^<!-- from .* -->$/ { file = $3 }
        inside && /^```$/ { inside = 0 }
        !inside { print }
        file && /^```cpp$/ {
            while ((getline line < file) > 0) print line
            inside = 1
            file = ""
        }' README.md
}

if [ "${1:-}" = --check ]; then
    diff -u README.md <(fill_in)
    exit
fi
filled=$(fill_in)
printf '%s\n' "$filled" >README.md
