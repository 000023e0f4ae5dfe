#!/usr/bin/env bash
# Builds the Debian package of the program: installs what is missing, makes a release build and
# leaves the .deb in build/release.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
ensure_packages "${build_packages[@]}" "${deb_packages[@]}"

# The compiler's and linker's flags of every Debian package; the preset's own come behind them.
cmake --preset release \
  -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(DEB_BUILD_MAINT_OPTIONS=hardening=+bindnow dpkg-buildflags --get LDFLAGS)"
cmake --build --preset release
rm -f build/release/kalibrierung-wendral_*.deb
(cd build/release && cpack -G DEB)
ls -l build/release/kalibrierung-wendral_*.deb
