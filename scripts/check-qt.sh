#!/usr/bin/env bash
# Builds everything and runs the tests with the compilers, versions of Qt and standards of C++ that the library
# supports. Warnings are errors, including those about functions that Qt deprecates.
# usage: scripts/check-qt.sh [PART...]   default: all parts except "standards"
#   gcc         g++ and Qt of this machine
#   clang       clang 14 and Qt of this machine
#   libc++      the same with libc++, which has no std::from_chars() and std::to_chars() for floating-point numbers
#   trixie      g++ and Qt of Debian trixie
#   sid         g++ and Qt of Debian sid, as C++17, C++20 and C++23
#   standards   g++ and Qt of this machine, as C++20 and C++23
#
# The first run installs trixie and sid in ~/.cache/tarnwick, 1.6 GB each. This requires root. Later runs use trixie
# unchanged and upgrade sid. A copy of this checkout's files is built there. If sid cannot be installed or upgraded, it
# is reported and left out.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

cache=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwick
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo -n)
say='echo "== $($0 --version | head -n 1), Qt $(qmake6 -query QT_VERSION)"'

# Runs a command inside a Debian installation, in the copy of the checkout, without this machine's environment. Its
# mounts and processes end with the command.
run_in() { # DEBIAN COMMAND...
    "${as_root[@]}" unshare --mount --pid --fork --kill-child --root="$cache/$1" --wd=/tarnwick --mount-proc \
        env -i PATH=/usr/sbin:/usr/bin HOME=/root LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive "${@:2}"
}

# Installs a Debian release, from the repository that this machine's packages come from, and the packages that the build
# needs.
install_debian() { # DEBIAN
    local repository root=$cache/$1
    if [ ! -e "$root/installed" ]; then
        repository=$(apt-cache madison debootstrap | awk 'NR == 1 { print $5 }')
        "${as_root[@]}" rm -rf --one-file-system "$root" || return
        "${as_root[@]}" debootstrap --variant=minbase "$1" "$root" "$repository" || return
        "${as_root[@]}" touch "$root/installed" || return
    fi
    "${as_root[@]}" rm -rf "$root/tarnwick" || return
    "${as_root[@]}" mkdir "$root/tarnwick" || return
    git ls-files -z --cached --others --exclude-standard | tar -c --null -T - |
        "${as_root[@]}" tar -x -C "$root/tarnwick" || return
    if [ "$1" = sid ]; then
        # The index of sid expires after a week, and a mirror may be older.
        echo 'Acquire::Check-Valid-Until "false";' |
            "${as_root[@]}" tee "$root/etc/apt/apt.conf.d/90check-valid-until" || return
        run_in "$1" apt-get update -q || return
        run_in "$1" apt-get dist-upgrade -qy --no-install-recommends || return
    fi
    run_in "$1" scripts/setup.sh
}

prepare_debian() { # DEBIAN
    scripts/setup.sh debootstrap
    mkdir -p "$cache"
    echo "check-qt: preparing Debian $1; the output goes to $cache/$1.log"
    install_debian "$1" >"$cache/$1.log" 2>&1 || {
        tail -n 20 "$cache/$1.log" >&2
        return 1
    }
    run_in "$1" sh -c "$say" g++
}

# Builds and tests in FOLDER, with the preset dev and the given options.
build_and_test() { # FOLDER CMAKE-OPTION...
    cmake --preset dev -B "$1" "${@:2}" --log-level=WARNING
    cmake --build "$1"
    ctest --test-dir "$1" --parallel "$(nproc)" --output-on-failure --no-tests=error "${left_out[@]}"
}
left_out=()

check_gcc() {
    scripts/setup.sh
    sh -c "$say" g++
    scripts/test.sh dev release
}

check_clang() {
    scripts/setup.sh clang-14
    sh -c "$say" clang++-14
    build_and_test build/clang -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=clang++-14
}

# Qt is built with libstdc++. Its functions with parameters of standard library types have other symbols under libc++.
# tests/support/libcxx defines those that the library and the tests call. Left out:
# - the examples: they call more of these functions
# - symbols: the list has the names of libstdc++'s types
# - consumer, consumer-static, subproject-*: their clients are built with the compiler's own standard library
# - documentation, model-*: they compile nothing
check_libcxx() {
    scripts/setup.sh clang-14 libc++-14-dev libc++abi-14-dev
    sh -c "$say" clang++-14
    local build=$PWD/build/libc++ headers flags
    headers=$(qmake6 -query QT_INSTALL_HEADERS)
    flags=(-std=c++17 -O1 -fPIC -Wall -Wextra -Werror -isystem "$headers" -isystem "$headers/QtCore")
    mkdir -p "$build"
    clang++-14 "${flags[@]}" -stdlib=libc++ -c tests/support/libcxx/qt.cpp -o "$build/qt.o"
    clang++-14 "${flags[@]}" -c tests/support/libcxx/forward.cpp -o "$build/forward.o"
    rm -f "$build/libqt.a"
    ar rcs "$build/libqt.a" "$build/qt.o" "$build/forward.o"

    local -a left_out=(-E '^(symbols|consumer|subproject-|documentation|model-)')
    build_and_test "$build" -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_CXX_FLAGS=-stdlib=libc++ \
        -DTARNWICK_BUILD_EXAMPLES=OFF \
        -DCMAKE_CXX_STANDARD_LIBRARIES="$build/libqt.a $(qmake6 -query QT_INSTALL_LIBS)/libQt6Core.so -l:libstdc++.so.6"
}

check_standards() {
    scripts/setup.sh
    local standard
    for standard in 20 23; do
        echo "== C++$standard"
        build_and_test "build/c++$standard" -DCMAKE_CXX_STANDARD="$standard"
    done
}

check_trixie() {
    prepare_debian trixie
    run_in trixie scripts/test.sh dev release
}

check_sid() {
    if ! prepare_debian sid; then
        echo "check-qt: Debian sid is left out, it cannot be installed or upgraded now; see $cache/sid.log" >&2
        return
    fi
    run_in sid scripts/test.sh dev release
    run_in sid scripts/check-qt.sh standards
}

[ $# -gt 0 ] || set -- gcc clang libc++ trixie sid
for part in "$@"; do
    case $part in
    gcc | clang | trixie | sid | standards) "check_$part" ;;
    libc++) check_libcxx ;;
    *)
        echo "check-qt: no part is named $part" >&2
        exit 2
        ;;
    esac
done
