#!/usr/bin/env bash
# Installs with apt-get what the build needs and this machine lacks. Asks nothing; installs nothing where nothing is
# missing.
# usage: scripts/setup.sh [PACKAGE...]   further packages that the caller needs
set -euo pipefail

packages=(
    g++ cmake ninja-build git
    qt6-base-dev                                       # the library
    qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools   # tests: compiling a translation
    libgmp-dev                                         # tests and benchmarks: the oracle of the base converter
    doxygen                                            # tests: checking the documentation
    spin                                               # tests: searching the model of the worker
    pkgconf                                            # tests: a client that finds the library by pkg-config
    gdb                                                # tests: the printers for it
    libbenchmark-dev                                   # benchmarks
    "$@"
)

installed() {
    [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$1" 2>/dev/null | head -c 2)" = ii ]
}

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "setup: no apt-get here; install these by hand: ${packages[*]}" >&2
    exit 1
fi

missing=()
for package in "${packages[@]}"; do
    installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! sudo -n true 2>/dev/null; then
        echo "setup: not root, and sudo wants a password. Run as root: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo -n env DEBIAN_FRONTEND=noninteractive)
fi

export DEBIAN_FRONTEND=noninteractive
echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" apt-get update -q && "${as_root[@]}" apt-get install -qy --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "setup: apt-get could not install: ${missing[*]}" >&2
    exit 1
fi
