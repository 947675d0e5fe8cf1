#!/usr/bin/env bash
# Checks the format of all sources and the spelling of all texts, and analyses src/ and examples/ with clang's warnings,
# the checks of .clang-tidy, clazy's level 1, and cppcheck. Any finding is a failure.
# usage: scripts/analyse.sh
#
# Parsing Qt's headers takes most of the time, so the sources of a target are analysed as one unit. Tests, benchmarks
# and snippets are separate programs and would take six times as long, so only the compilers' warnings cover them.
# Cppcheck, which does not read Qt's headers, analyses the snippets, too.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh clang clang-format-14 clang-tidy clazy codespell cppcheck

# Other versions of clang-format give other results.
git ls-files -z --cached --others --exclude-standard '*.h' '*.cpp' | xargs -0 clang-format-14 --dry-run --Werror
git grep -zIl '' -- ':!docs/abi' ':!*.ts' | xargs -0 codespell --ignore-words-list=shouldbe

export build=build/tidy
cmake --preset tidy --log-level=WARNING
mapfile -t meta_objects < <(ninja -C "$build" -t targets all | sed -n 's/^\([^/ ]*_autogen\): phony$/\1/p')
cmake --build "$build" --target "${meta_objects[@]}" >"$build/meta-objects.log" || {
    cat "$build/meta-objects.log" >&2
    exit 1
}

# Prints the output of a tool only if the tool found something.
analyse() { # TOOL [OPTION...] UNIT
    local output
    if ! output=$("$1" -p "$build" "${@:2}" 2>&1); then
        printf '== %s\n%s\n' "$1" "$output" >&2
        return 1
    fi
}
export -f analyse

# Left out of clazy: non-pod-global-static. Registrars of logging categories and the table of file errors are global on
# purpose.
sed -n 's/.*"file": "\(.*\)".*/\1/p' "$build/compile_commands.json" | grep -v -e /mocs_compilation.cpp -e /.rcc/ -e /snippets/ |
    xargs -d '\n' -P "$(nproc)" -I '{}' bash -c '
        analyse clang-tidy --quiet "$1"; tidy=$?
        analyse clazy-standalone --checks=level1,no-non-pod-global-static "$1" && exit "$tidy"' - '{}'

# Left out of cppcheck:
# - useStlAlgorithm: it suggests an algorithm for every loop; few would be shorter.
# - unreadVariable, variableScope: a variable is declared before a locker only to be destroyed after it.
# - noExplicitConstructor of Optional: the conversion from a value is part of the interface.
cppcheck -j "$(nproc)" --quiet --error-exitcode=1 --language=c++ --std=c++17 --library=qt \
    --enable=warning,performance,portability,style --suppress=useStlAlgorithm --suppress=unreadVariable \
    --suppress=variableScope --suppress=noExplicitConstructor:src/foundation/Optional.h \
    src examples
