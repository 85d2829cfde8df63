#!/usr/bin/env bash
# Installs what is missing, builds and starts parvex-config. Extra arguments go to the program.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
export CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"
export CCACHE_BASEDIR="$PWD"
cmake --preset default >/dev/null
cmake --build --preset default --target parvex-config
exec build/default/app/parvex-config "$@"
