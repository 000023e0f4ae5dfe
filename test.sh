#!/usr/bin/env bash
# Sets everything up and passes the tests: format, build with warnings as errors, all tests, those that
# work inside of a process once more under a real German C locale and under the sanitizers, the build
# that users get, clang-tidy on what changed.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
[ -z "${CI:-}" ] || test_packages+=("${ci_packages[@]}")
ensure_packages "${build_packages[@]}" "${test_packages[@]}"

stage() { printf '\n=== %s (%ss)\n' "$1" "$SECONDS"; }

stage "format"
mapfile -t sources < <(git ls-files '*.cpp' '*.h')
[ ${#sources[@]} -gt 0 ] || { echo "git lists no sources" >&2; exit 1; }
clang-format-14 --dry-run -Werror "${sources[@]}"

stage "build"
cmake --preset dev
cmake --build --preset dev

stage "tests"
ctest --preset dev -j 2

stage "tests under a German C locale"
mkdir -p build/locale
[ -d build/locale/de_DE.UTF-8 ] || localedef -i de_DE -f UTF-8 build/locale/de_DE.UTF-8
LOCPATH="$PWD/build/locale" LC_ALL=de_DE.UTF-8 ctest --preset dev -j 2 -LE e2e

stage "build with sanitizers"
cmake --preset asan
cmake --build --preset asan

stage "tests under the sanitizers"
ctest --preset asan -j 2 -LE e2e

stage "release build"
cmake --preset release
cmake --build --preset release

stage "clang-tidy on what changed"
base=${TIDY_BASE:-$(git rev-parse -q --verify HEAD~1 || true)}
if [ -n "$base" ]; then
  git diff --name-only --diff-filter=d "$base" -- 'core/*.cpp' 'grid/*.cpp' 'protocol/*.cpp' \
    'export/*.cpp' 'batch/*.cpp' 'wizard/*.cpp' 'app/*.cpp' |
    xargs -r -P 2 -n 1 clang-tidy-14 --quiet -p build/dev --extra-arg=-Wno-unknown-warning-option
else
  echo "skipped: there is no earlier commit to compare with"
fi

stage "done"
