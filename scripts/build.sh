#!/usr/bin/env bash
# Configures and builds into build/ (or $1), warnings as errors.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build}
shift || true
cmake -S "$here" -B "$build" -G Ninja -DTALLYRA_WERROR=ON "$@" >/dev/null
cmake --build "$build" -j "$(nproc)"
