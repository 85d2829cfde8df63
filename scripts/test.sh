#!/usr/bin/env bash
# Installs what is missing, builds and runs the whole test suite.
#   scripts/test.sh            normal build, then the sanitizer build (what CI runs)
#   scripts/test.sh default    only the normal build
#   scripts/test.sh asan       only the sanitizer build
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

presets=("$@")
[ ${#presets[@]} -gt 0 ] || presets=(default asan)

export CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"
export CCACHE_BASEDIR="$PWD"
for preset in "${presets[@]}"; do
  echo "== ${preset}: configure and build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  echo "== ${preset}: test"
  ctest --preset "$preset"
done
