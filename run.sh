#!/usr/bin/env bash
# Sets everything up, builds the program and runs its main job.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
ensure_packages "${build_packages[@]}"

cmake --preset release
cmake --build --preset release
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/release/app/kalibrierung-wendral
fi
echo "There is no display to open the window on; here is the evaluation of an example."
build/release/batch/kalibrierung-auswertung examples/verdichtungsgrad.xml
