#!/usr/bin/env bash
# Builds the library, tests and examples for Windows with MinGW, with warnings as errors, and runs the tests under Wine.
# Needs no display.
# usage: scripts/check-windows.sh [--widgets] [CTEST-OPTION...]   for example: scripts/check-windows.sh -R naturalsort
#   --widgets   builds the example queue-monitor, too, and the Qt Widgets that it needs
#
# The first run cross-builds Core, Gui and Test from the source package of this machine's Qt. On two idle cores that
# takes 10 to 20 minutes, and 10 more for Widgets. The result is kept in ~/.cache/tarnwick/qt-windows: about 2 GB, with
# Wine's files.
#
# Not tested there:
# - documentation, model-*: check the checkout on this machine; they compile nothing
# - gdb-*: GDB loads the printers from the folder of a Linux library
# - lifecycle-*, symbols: only on Linux does the library stay loaded and have a list of exports
# - readme: a shell script
# - file-digest-linux, tst_digestcommand: need sha256sum, the signals of Unix and sparse files
# - tst_queuemonitor: passes, but half of its processes hang while they end, in pthread_key_delete() of MinGW's runtime
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

widgets=
if [ "${1-}" = --widgets ]; then
    widgets=1
    shift
fi

scripts/setup.sh g++-mingw-w64-x86-64-posix mingw-w64-tools perl wine64

version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwick/qt-windows
qt=$cache/build
gmp=$cache/gmp
host=x86_64-w64-mingw32
wine=/usr/lib/wine/wine64 # the package has no command in PATH

# Qt with only the features that the library, tests and examples use.
features=(
    -release -shared -no-opengl -no-dbus -no-icu -no-glib -no-libjpeg -no-gif -no-feature-harfbuzz -no-feature-vulkan
    -no-feature-sql -no-feature-network -no-feature-printsupport -no-feature-concurrent -no-feature-sessionmanager
    -no-feature-androiddeployqt -no-feature-pdf -no-feature-textmarkdownreader -no-feature-textmarkdownwriter
    -no-feature-textodfwriter -qt-zlib -qt-pcre -qt-doubleconversion -qt-freetype -qt-libpng
)
recipe="$version ${features[*]}"

write_toolchain() {
    cat >"$cache/toolchain.cmake" <<END
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER $host-gcc-posix)
set(CMAKE_CXX_COMPILER $host-g++-posix)
set(CMAKE_RC_COMPILER $host-windres)
set(CMAKE_FIND_ROOT_PATH /usr/$host)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
END
}

# Qt is used from its build folder and not installed. It is shared, so that the library and its tests use the same Qt.
configure_qt() {
    scripts/fetch-source.sh qt6-base-dev "$cache/source"
    write_toolchain
    rm -rf "$qt"
    mkdir -p "$qt"
    (
        cd "$qt"
        "$cache/source/configure" -prefix "$qt" -xplatform win32-g++ -qt-host-path /usr "${features[@]}" \
            -nomake examples -nomake tests -- -G Ninja -DCMAKE_TOOLCHAIN_FILE="$cache/toolchain.cmake" \
            -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -print-multiarch)/cmake" -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG"
    )
}

build_qt() { nice -n 19 cmake --build "$qt" --target Core Gui Test QOffscreenIntegrationPlugin; }

build_widgets() {
    nice -n 19 cmake --build "$qt" --target Widgets EntryPointImplementation QWindowsIntegrationPlugin \
        QWindowsVistaStylePlugin
}

# For the base converter's test: mini-gmp, which comes with the source of GMP.
build_gmp() {
    scripts/fetch-source.sh libgmp-dev "$gmp/source"
    cp "$gmp/source/mini-gmp/mini-gmp.h" "$gmp/gmp.h"
    cp "$gmp/source/mini-gmp/mini-gmp.c" "$gmp/source/mini-gmp/mini-gmp.h" "$gmp/"
    "$host-gcc-posix" -O2 -c "$gmp/mini-gmp.c" -o "$gmp/mini-gmp.o"
    rm -f "$gmp/libgmp.a"
    "$host-ar" rcs "$gmp/libgmp.a" "$gmp/mini-gmp.o"
}

# Runs each step unless an earlier run has completed it for the same recipe.
once() { # FUNCTION...
    local step
    for step in "$@"; do
        if [ "$(cat "$cache/$step.done" 2>/dev/null)" != "$recipe" ]; then
            mkdir -p "$cache"
            echo "check-windows: ${step//_/ }, for Qt $version; the output goes to $cache/$step.log"
            failed_log=$cache/$step.log
            rm -f "$cache/$step.done"
            "$step" >"$failed_log" 2>&1
            failed_log=
            echo "$recipe" >"$cache/$step.done"
        fi
    done
}

failed_log=
wine_started=
finish() {
    if [ -n "$failed_log" ]; then
        tail -n 20 "$failed_log" >&2
        echo "check-windows: this failed, see $failed_log" >&2
    fi
    [ -z "$wine_started" ] || "${wine/%wine64/wineserver64}" -k || true
}
trap finish EXIT

once configure_qt build_qt build_gmp
[ -z "$widgets" ] || once build_widgets

# Wine does not pass on variables whose names begin with QT_; it passes on WINEQT_X as QT_X.
unset DISPLAY WAYLAND_DISPLAY
export WINEPREFIX=$cache/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
# Without WINEQT_FORCE_STDERR_LOGGING, Qt Test prints nothing.
export WINEQT_QPA_PLATFORM=offscreen WINEQT_FORCE_STDERR_LOGGING=1
runtime=$(dirname "$("$host-g++-posix" -print-libgcc-file-name)")
build=$PWD/build/windows
WINEPATH=$(printf 'Z:%s;' "$build/src" "$qt/bin" "$runtime" "/usr/$host/lib" | tr / '\\')
export WINEPATH

create_prefix() { "$wine" wineboot -u; }
wine_started=1
once create_prefix

left_out=()
without=(-DCMAKE_DISABLE_FIND_PACKAGE_Doxygen=ON -DCMAKE_DISABLE_FIND_PACKAGE_Spin=ON -DCMAKE_DISABLE_FIND_PACKAGE_GDB=ON)
if [ -n "$widgets" ]; then
    left_out=(-E '^tst_queuemonitor$')
    without+=(-DCMAKE_DISABLE_FIND_PACKAGE_Qt6Widgets=OFF)
else
    without+=(-DCMAKE_DISABLE_FIND_PACKAGE_Qt6Widgets=ON)
fi
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE=-O0 -DTARNWICK_WERROR=ON \
    -DTARNWICK_BUILD_BENCHMARKS=OFF -DCMAKE_TOOLCHAIN_FILE="$qt/lib/cmake/Qt6/qt.toolchain.cmake" -DQT_HOST_PATH=/usr \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$wine" -DGMP_INCLUDE_DIR="$gmp" -DGMP_LIBRARY="$gmp/libgmp.a" "${without[@]}" \
    --log-level=WARNING
cmake --build "$build"
"$wine" wineboot # starts Wine's services, so that the first test does not wait for them
ctest --test-dir "$build" --parallel "$(nproc)" --output-on-failure --no-tests=error "${left_out[@]}" "$@"
