#!/usr/bin/env bash
# Builds the fuzz targets with clang's libFuzzer into build-fuzz/ and runs
# each for the given number of seconds (default 25), starting from the seed
# corpora and keeping what they find in build-fuzz/corpus/. A crash, a
# sanitizer finding or a failed check stops the run and fails the script;
# the input is left in build-fuzz/crashes/.
#   bash scripts/fuzz.sh            # the short run CI does
#   bash scripts/fuzz.sh 1800       # half an hour per target
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-25}
build=$here/build-fuzz
bash "$here/scripts/deps.sh"
if ! dpkg-query -W -f='${Status}' libclang-rt-14-dev 2>/dev/null | grep -q "install ok installed"; then
  echo "Installing: clang-14 libclang-rt-14-dev"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq clang-14 libclang-rt-14-dev
fi
cxx=$(command -v clang++-14)
cmake -S "$here/fuzz" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" -DTALLYRA_WERROR=ON >/dev/null
cmake --build "$build" -j "$(nproc)"

corpus=$build/corpus
mkdir -p "$build/crashes"
"$build/bin/make_seeds" "$corpus/scenario_file" "$corpus/table_files"

export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export ASAN_OPTIONS=detect_leaks=1
status=0
# target, the longest input worth trying (a table file is up to 98,569 bytes)
for run in "scenario_file 4096" "table_files 100000"; do
  read -r target maxlen <<<"$run"
  echo "== fuzz_$target for ${seconds}s"
  "$build/bin/fuzz_$target" -max_total_time="$seconds" -max_len="$maxlen" -timeout=10 \
    -rss_limit_mb=1024 -malloc_limit_mb=256 -print_final_stats=1 -artifact_prefix="$build/crashes/$target-" \
    "$corpus/$target" 2>"$build/fuzz_$target.log" || status=1
  grep -E '^stat::(number_of_executed_units|average_exec_per_sec|new_units_added)|^#[0-9]+.*DONE' \
    "$build/fuzz_$target.log" || true
  if grep -qE 'ERROR|runtime error|deadly signal' "$build/fuzz_$target.log"; then
    status=1
    grep -E -A12 'ERROR|runtime error|deadly signal' "$build/fuzz_$target.log" | head -40
  fi
done
exit $status
