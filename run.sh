#!/usr/bin/env bash
# Sets everything up, builds the program and runs its main job.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
ensure_packages "${build_packages[@]}"

cmake --preset release
cmake --build --preset release
build/release/batch/kalibrierung-auswertung examples/verdichtungsgrad.xml
