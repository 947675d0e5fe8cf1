#!/usr/bin/env bash
# Runs the load test and every test of src/ that uses threads under the thread sanitizer, with a Qt that is built with
# it, too. Tests that provoke a race repeat it 10,000 times. For the tests of the worker, TARNWICK_TORTURE_ROUNDS sets
# another number.
# usage: scripts/tsan.sh [CTEST-OPTION...]   for example: TARNWICK_TORTURE_ROUNDS=100 scripts/tsan.sh -R commandqueuethread
#
# The sanitizer does not see the locks and the event queue of an ordinary Qt, and reports each QRecursiveMutex as a
# race. So the first run fetches the source package of this machine's Qt and builds Core and Test in ~/.cache/tarnwick.
# That takes 10 to 45 minutes and about 1.5 GB. Any report of the sanitizer is a failure.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The thread sanitizer of GCC 12 does not support the address randomisation of some kernels: programs end when they
# start. setarch -R turns the randomisation off, if this machine permits that.
fixed_addresses=()
setarch -R true 2>/dev/null && fixed_addresses=(setarch -R)

scripts/setup.sh perl

version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwick/qt-tsan
qt=$cache/build
recipe="$version, unchanged"

# Builds the parts of Qt that the tests need. They are used from the build folder. The bundled libraries are
# instrumented, too; GLib and ICU of this machine are not, so Qt is built without them.
build_qt() {
    rm -rf "$qt"
    mkdir -p "$qt"
    (
        cd "$qt"
        "$cache/source/configure" -prefix "$qt" -sanitize thread -release -force-debug-info \
            -no-gui -no-widgets -no-dbus -no-feature-sql -no-feature-network -no-feature-xml -no-glib -no-icu \
            -qt-zlib -qt-pcre -qt-doubleconversion -nomake examples -nomake tests -- -G Ninja
        nice -n 19 "${fixed_addresses[@]}" cmake --build . --target Core Test moc
    )
    echo "$recipe" >"$cache/done"
}

have_qt() { [ "$(cat "$cache/done" 2>/dev/null)" = "$recipe" ]; }

if ! have_qt; then
    mkdir -p "$cache"
    rm -f "$cache/done"
    echo "tsan: building Qt $version with the thread sanitizer; the output goes to $cache/build.log"
    trap 'have_qt || { tail -n 20 "$cache/build.log"; echo "tsan: Qt could not be built, see $cache/build.log"; } >&2' EXIT
    scripts/fetch-source.sh qt6-base-dev "$cache/source" >"$cache/build.log" 2>&1
    build_qt >>"$cache/build.log" 2>&1
fi

export TARNWICK_TORTURE_ROUNDS=${TARNWICK_TORTURE_ROUNDS:-10000}
build=build/tsan-threads
cmake -S tests/stress/tsan -B "$build" -G Ninja -DCMAKE_PREFIX_PATH="$qt" -DCMAKE_BUILD_TYPE=RelWithDebInfo --log-level=WARNING
"${fixed_addresses[@]}" cmake --build "$build"
"${fixed_addresses[@]}" ctest --test-dir "$build" --output-on-failure --no-tests=error "$@"
