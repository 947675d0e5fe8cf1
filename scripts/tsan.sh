#!/usr/bin/env bash
# Passes every test of src/ that uses threads under the thread sanitizer, on a Qt that is built under it, too. What meets
# chance in them is tried 10,000 times; in those of the worker as often as TARNWICK_TORTURE_ROUNDS says.
# usage: scripts/tsan.sh [CTEST-OPTION...]   for example: TARNWICK_TORTURE_ROUNDS=100 scripts/tsan.sh -R commandqueuethread
#
# A Qt without the sanitizer hides its locks and its event queue, and every QRecursiveMutex then reads as a race. So the
# first run fetches the source package that this machine's Qt was made from and builds Core and Test of it; that takes
# 10 to 45 minutes and about 1.5 GB, kept in ~/.cache/tarnwick. Any report of the sanitizer fails the run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Where the addresses of a process are spread further than the sanitizer of GCC 12 can stand, its programs end at
# start. They live with the plain layout, if this machine lets a process choose it.
plain_layout=()
setarch -R true 2>/dev/null && plain_layout=(setarch -R)

scripts/setup.sh perl

version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwick/qt-tsan
qt=$cache/build
recipe="$version, unchanged"

# Builds what the tests need, to be used where it is built. The bundled libraries take the place of the
# machine's, and GLib and ICU stay out: what lies under Qt should not be blind to the sanitizer either.
build_qt() {
    rm -rf "$qt"
    mkdir -p "$qt"
    (
        cd "$qt"
        "$cache/source/configure" -prefix "$qt" -sanitize thread -release -force-debug-info \
            -no-gui -no-widgets -no-dbus -no-feature-sql -no-feature-network -no-feature-xml -no-glib -no-icu \
            -qt-zlib -qt-pcre -qt-doubleconversion -nomake examples -nomake tests -- -G Ninja
        nice -n 19 "${plain_layout[@]}" cmake --build . --target Core Test moc
    )
    echo "$recipe" >"$cache/done"
}

have_qt() { [ "$(cat "$cache/done" 2>/dev/null)" = "$recipe" ]; }

if ! have_qt; then
    mkdir -p "$cache"
    rm -f "$cache/done"
    echo "tsan: building Qt $version with the thread sanitizer; what it says goes to $cache/build.log"
    trap 'have_qt || { tail -n 20 "$cache/build.log"; echo "tsan: no Qt, see $cache/build.log"; } >&2' EXIT
    scripts/fetch-source.sh qt6-base-dev "$cache/source" >"$cache/build.log" 2>&1
    build_qt >>"$cache/build.log" 2>&1
fi

export TARNWICK_TORTURE_ROUNDS=${TARNWICK_TORTURE_ROUNDS:-10000}
build=build/tsan-threads
cmake -S tests/stress/tsan -B "$build" -G Ninja -DCMAKE_PREFIX_PATH="$qt" -DCMAKE_BUILD_TYPE=RelWithDebInfo --log-level=WARNING
"${plain_layout[@]}" cmake --build "$build"
"${plain_layout[@]}" ctest --test-dir "$build" --output-on-failure --no-tests=error "$@"
