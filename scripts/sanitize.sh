#!/usr/bin/env bash
# Builds every test with AddressSanitizer and UndefinedBehaviorSanitizer into
# build-sanitize/ and runs them; any finding fails the run. The desktop's
# tests run too, on Qt's offscreen platform; TALLYRA_GUI=OFF leaves the
# desktop out for a quicker core-only run.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=$here/build-sanitize
bash "$here/scripts/deps.sh"
bash "$here/scripts/build.sh" "$build" -DCMAKE_BUILD_TYPE=Debug -DTALLYRA_SANITIZE=ON \
  -DTALLYRA_GUI="${TALLYRA_GUI:-ON}" -DTALLYRA_BENCH=OFF
export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export QT_QPA_PLATFORM=offscreen
cd "$build"
ctest --output-on-failure -j "$(nproc)"
