#!/usr/bin/env bash
# Builds the Debian package of the program: installs what is missing, makes a release build and
# leaves the .deb in build/deb.
set -euo pipefail
umask 022 # apt reads the package as a user of its own
cd "$(dirname "$0")/.."
. scripts/packages.sh
ensure_packages "${build_packages[@]}" "${deb_packages[@]}"

# In a folder of its own: with the compiler's and linker's flags of every Debian package.
cmake --preset release -B build/deb \
  -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(DEB_BUILD_MAINT_OPTIONS=hardening=+bindnow dpkg-buildflags --get LDFLAGS)"
cmake --build build/deb
rm -f build/deb/kalibrierung-wendral_*.deb
(cd build/deb && cpack -G DEB)
ls -l build/deb/kalibrierung-wendral_*.deb
