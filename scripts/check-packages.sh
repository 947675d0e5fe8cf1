#!/usr/bin/env bash
# Builds the Debian packages in build/packages, checks them with lintian, unpacks them into an empty folder, and builds
# and runs a client with the unpacked files. Installs none of the packages.
# usage: scripts/check-packages.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh dpkg-dev file lintian graphviz qt6-documentation-tools doxygen-awesome-css
build=build/packages
root=$PWD/$build/root

# Debian's own flags: hardening, and no build path in the binaries.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
cmake -S . -B "$build" -G Ninja --log-level=WARNING -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_INSTALL_DOCDIR=share/doc/libtarnwick-doc \
    -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)" \
    -DCMAKE_SHARED_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)" -DTARNWICK_BUILD_DOCS=ON \
    -DTARNWICK_BUILD_TESTS=OFF -DTARNWICK_BUILD_EXAMPLES=OFF -DTARNWICK_BUILD_BENCHMARKS=OFF
cmake --build "$build"
rm -rf "$build"/*.deb "$root" "$build/client"
(cd "$build" && umask 022 && cpack)

echo "== lintian"
lintian --allow-root --display-info --fail-on error,warning,info "$build"/*.deb

echo "== a client"
for package in "$build"/*.deb; do
    dpkg-deb -x "$package" "$root"
done
cmake -S tests/package/consumer -B "$build/client" -G Ninja --log-level=WARNING -DCMAKE_PREFIX_PATH="$root/usr"
grep "^Tarnwick_DIR:PATH=$root/" "$build/client/CMakeCache.txt"
cmake --build "$build/client"
"$build/client/consumer"
"$build/client/consumer-pkg-config"
test -s "$root"/usr/share/gdb/auto-load/usr/lib/*/libTarnwick.so.*-gdb.py
test -s "$root/usr/share/doc/libtarnwick-doc/tarnwick.qch"
test -s "$root/usr/share/doc/libtarnwick-doc/html/index.html"
ls "$build"/*.deb
