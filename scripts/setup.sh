#!/usr/bin/env bash
# Installs missing packages with apt-get, without asking: those that development needs, and each PACKAGE.
# usage: scripts/setup.sh [--library] [PACKAGE...]   with --library: only what the library and the examples need, and
#                                                    each PACKAGE
set -euo pipefail

packages=(g++ cmake ninja-build qt6-base-dev)
if [ "${1:-}" = --library ]; then
    shift
else
    packages+=(
        git
        qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools   # tests: compiles a translation
        libgmp-dev                                         # tests and benchmarks: the oracle of the base converter
        doxygen                                            # tests: checks the documentation
        spin                                               # tests: searches the model of the worker
        pkgconf                                            # tests: a client that uses the pkg-config module
        gdb                                                # tests: the printers for GDB
        libbenchmark-dev                                   # benchmarks
    )
fi
packages+=("$@")

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
