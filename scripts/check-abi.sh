#!/usr/bin/env bash
# Compares the binary interface of this checkout with that of a release: the layout of classes, virtual tables and
# signatures. The release is built from its commit in a worktree under build/abi.
# usage: scripts/check-abi.sh [COMMIT]   default: the last tag
# exit code: 0 if there are only additions; 1 if anything has changed or is missing; 2 if no comparison was possible
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if ! release=${1:-$(git describe --tags --abbrev=0 2>/dev/null)}; then
    echo "check-abi: there is no tag to compare with; name a commit: scripts/check-abi.sh COMMIT" >&2
    exit 2
fi
if ! git rev-parse --quiet --verify "$release^{commit}" >/dev/null; then
    echo "check-abi: no such commit: $release" >&2
    exit 2
fi
scripts/setup.sh abigail-tools
worktree=build/abi/release

# One unit for all sources, without optimisation: libabigail loses functions of a class that occurs in several units,
# and functions that the optimiser has merged.
build_library() { # SOURCE BUILD
    cmake -S "$1" -B "$2" -G Ninja --log-level=WARNING -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
        -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 \
        -DTARNWICK_BUILD_TESTS=OFF -DTARNWICK_BUILD_EXAMPLES=OFF -DTARNWICK_BUILD_BENCHMARKS=OFF
    cmake --build "$2" --target Tarnwick
}

trap 'git worktree remove --force "$worktree"' EXIT
git worktree add --quiet --force --detach "$worktree" "$release"
build_library "$worktree" build/abi/release-build
build_library . build/abi/checkout-build

# Additions are ignored. In abidiff's exit code, the bits 1 and 2 report errors and the other bits changes.
result=0
abidiff --no-added-syms --headers-dir1 "$worktree/src" --headers-dir2 src --drop-private-types \
    build/abi/release-build/src/libTarnwick.so build/abi/checkout-build/src/libTarnwick.so || result=$?
if ((result & 3)); then
    echo "check-abi: abidiff failed" >&2
    exit 2
fi
if ((result)); then
    echo 'check-abi: the interface has changed; see "Changing the interface" in CONTRIBUTING.md' >&2
    exit 1
fi
echo "check-abi: only additions since $release"
