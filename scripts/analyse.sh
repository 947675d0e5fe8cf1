#!/usr/bin/env bash
# Looks for faults in src/ and examples/ without running anything: the warnings of clang, the checks that .clang-tidy names,
# those of clazy's level 1, and cppcheck. Any finding is a failure.
# usage: scripts/analyse.sh
#
# Nearly all of the time goes into the headers of Qt, so the sources of a target are analysed as one. Tests, benchmarks and
# snippets are a program each, and would take six times as long as the rest: of these, what the compilers say has to do, and
# what cppcheck, which does not read those headers, says of the snippets.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh clang clang-tidy clazy cppcheck
export build=build/analysis
cmake -S . -B "$build" -G Ninja --log-level=WARNING -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=10 -DTARNWICK_WERROR=ON \
    -DTARNWICK_BUILD_TESTS=OFF -DTARNWICK_BUILD_BENCHMARKS=OFF
mapfile -t meta_objects < <(ninja -C "$build" -t targets all | sed -n 's/^\([^/ ]*_autogen\): phony$/\1/p')
cmake --build "$build" --target "${meta_objects[@]}" >"$build/meta-objects.log" || {
    cat "$build/meta-objects.log" >&2
    exit 1
}

# Says what a tool found, and nothing, not even the number of what it suppressed, when it found nothing.
analyse() { # TOOL [OPTION...] UNIT
    local output
    if ! output=$("$1" -p "$build" "${@:2}" 2>&1); then
        printf '== %s\n%s\n' "$1" "$output" >&2
        return 1
    fi
}
export -f analyse

# Left out of clazy: non-pod-global-static, since registrars of logging categories and the table of file errors are to be
# there before the program begins.
sed -n 's/.*"file": "\(.*\)".*/\1/p' "$build/compile_commands.json" | grep -v -e /mocs_compilation.cpp -e /snippets/ |
    xargs -d '\n' -P "$(nproc)" -I '{}' bash -c '
        analyse clang-tidy --quiet "$1"; tidy=$?
        analyse clazy-standalone --checks=level1,no-non-pod-global-static "$1" && exit "$tidy"' - '{}'

# Left out of cppcheck:
# - useStlAlgorithm: it takes every loop for an algorithm that was missed, where few would be shorter.
# - unreadVariable, variableScope: what is declared in front of a locker so that it dies after it is never read.
# - noExplicitConstructor of Optional: that a value turns into an optional is its interface.
# - knownConditionTrueFalse, nullPointer of CommandQueue: it believes that no search finds anything.
cppcheck -j "$(nproc)" --quiet --error-exitcode=1 --language=c++ --std=c++17 --library=qt \
    --enable=warning,performance,portability,style --suppress=useStlAlgorithm --suppress=unreadVariable \
    --suppress=variableScope --suppress=noExplicitConstructor:src/foundation/Optional.h \
    --suppress=knownConditionTrueFalse:src/commands/CommandQueue.cpp --suppress=nullPointer:src/commands/CommandQueue.cpp \
    src examples
