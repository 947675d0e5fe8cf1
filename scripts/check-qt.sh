#!/usr/bin/env bash
# Builds everything and passes the tests with each compiler and Qt that the library is for: g++ and clang 14 on this
# machine's Qt, and g++ on the newer Qt of a Debian trixie. A warning is an error, a call that Qt deprecates included.
# usage: scripts/check-qt.sh
#
# The first run installs that Debian in ~/.cache/tarnwick/trixie, about 1.6 GB, which takes root's rights; later ones use it
# as it is. What is built there is a copy of this checkout's files.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh clang-14 debootstrap
root=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwick/trixie

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo -n)

# Installs Debian trixie from the repository that this machine's own packages come from.
install_trixie() {
    local repository
    repository=$(apt-cache madison debootstrap | awk 'NR == 1 { print $5 }')
    "${as_root[@]}" rm -rf --one-file-system "$root"
    "${as_root[@]}" debootstrap --variant=minbase trixie "$root" "$repository"
    "${as_root[@]}" touch "$root/installed"
}

# Runs a command in the checkout's copy, in trixie and out of this machine's environment. Its mounts and processes end
# with it.
in_trixie() {
    "${as_root[@]}" unshare --mount --pid --fork --kill-child --root="$root" --wd=/tarnwick --mount-proc \
        env -i PATH=/usr/sbin:/usr/bin HOME=/root LANG=C.UTF-8 "$@"
}

have_trixie() { [ -e "$root/installed" ]; }

if ! have_trixie; then
    mkdir -p "$(dirname "$root")"
    echo "check-qt: installing Debian trixie; what it says goes to $root.log"
    trap 'have_trixie || { tail -n 20 "$root.log"; echo "check-qt: no trixie, see $root.log"; } >&2' EXIT
    install_trixie >"$root.log" 2>&1
fi

say='echo "== $($0 --version | head -n 1), Qt $(qmake6 -query QT_VERSION)"'

sh -c "$say" g++
scripts/test.sh dev release

sh -c "$say" clang++-14
cmake --preset release -B build/clang -DCMAKE_CXX_COMPILER=clang++-14 --log-level=WARNING
cmake --build build/clang
ctest --test-dir build/clang --output-on-failure --no-tests=error

"${as_root[@]}" rm -rf "$root/tarnwick"
"${as_root[@]}" mkdir "$root/tarnwick"
git ls-files -z --cached --others --exclude-standard | tar -c --null -T - | "${as_root[@]}" tar -x -C "$root/tarnwick"
in_trixie scripts/setup.sh
in_trixie sh -c "$say" g++
in_trixie scripts/test.sh dev release
