#!/usr/bin/env bash
# Builds the Debian package and checks it:
#
#   scripts/package.sh [build folder]     # default build-deb
#
# A Release build with the hardening flags of dpkg-buildflags, without tests
# or benchmarks and with QUILLARD_SELF_UPDATE off (the package manager updates
# the program), then cpack -G DEB. The package lands in the build folder
# (quillard_<version>_<arch>.deb) and must pass lintian (no error),
# desktop-file-validate and appstreamcli validate --no-net.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build-deb}
scripts/install-deps.sh

# Every hardening feature Debian has, bindnow included.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
cxxflags="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
ldflags=$(dpkg-buildflags --get LDFLAGS)
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DQUILLARD_SELF_UPDATE=OFF \
    -DQUILLARD_BUILD_TESTS=OFF -DQUILLARD_BUILD_BENCHMARKS=OFF \
    -DCMAKE_CXX_FLAGS="$cxxflags" -DCMAKE_EXE_LINKER_FLAGS="$ldflags"
# The install step doesn't build (CMAKE_SKIP_INSTALL_ALL_DEPENDENCY), so the build comes first.
cmake --build "$build" -j"$(nproc)"
(cd "$build" && cpack -G DEB)

deb=$(ls -t "$build"/quillard_*.deb | head -n 1)
echo "== $deb"
dpkg-deb --info "$deb"
desktop-file-validate packaging/pl.corvane.Quillard.desktop
appstreamcli validate --no-net packaging/pl.corvane.Quillard.metainfo.xml
# Errors fail the build; the warnings left, each with its reason, are in the README.
lintian --fail-on error --profile debian "$deb"
echo "Built $deb: sudo apt install ./$deb"
