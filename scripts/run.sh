#!/usr/bin/env bash
# Installs what is missing, builds, then runs the batch job on the
# demonstration scenario and shows the report it wrote.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
bash "$here/scripts/deps.sh"
bash "$here/scripts/build.sh" "$here/build"
bin="$here/build/bin"
report="$here/build/demo-report.txt"
"$bin/tallyra" /silent /input "$bin/demo.ira" /output "$report"
cat "$report"
