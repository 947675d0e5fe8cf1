#!/usr/bin/env bash
# Unpacks the source of an installed Debian package, in the installed version, into a folder. Replaces the folder.
# usage: scripts/fetch-source.sh PACKAGE FOLDER
#
# Reads the index of sources from the repository of the package, with the keys that the machine's configuration names
# for it. Keeps index and downloads in ~/.cache/tarnwick/sources. Does not change the machine's own sources and indexes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
package=$1
folder=$2

scripts/setup.sh dpkg-dev perl
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwick/sources
source=$(dpkg-query -W -f '${source:Package}' "$package")
version=$(dpkg-query -W -f '${source:Version}' "$package")
description=$cache/${source}_${version#*:}.dsc
options=(
    -q -o APT::Sandbox::User="$(id -un)"
    -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$cache/apt/sources"
    -o Dir::State::lists="$cache/apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
)

# Two scripts may fetch at the same time.
mkdir -p "$cache"
exec 9>"$cache/lock"
flock 9

if [ ! -e "$description.complete" ]; then
    repository=$(apt-cache madison "$package" |
        awk -v version="$version" 'index($3, version) == 1 && !found++ { print $5 }')
    rm -rf "$cache/apt/sources"
    mkdir -p "$cache/apt/sources" "$cache/apt/lists"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
        if [ -n "$repository" ] && grep -qsF "$repository" "$file"; then
            sed -E 's/^Types:.*/Types: deb-src/; s/^deb([[:blank:]])/deb-src\1/' "$file" \
                >"$cache/apt/sources/$(basename "$file")"
        fi
    done
    apt-get "${options[@]}" update
    (cd "$cache" && apt-get "${options[@]}" source --only-source --download-only "$source=$version")
    touch "$description.complete"
fi
rm -rf "$folder"
mkdir -p "$(dirname "$folder")"
dpkg-source --no-check -x "$description" "$folder"
