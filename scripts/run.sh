#!/usr/bin/env bash
# Installs what is missing, builds, and runs the main job.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
bash "$here/scripts/deps.sh"
bash "$here/scripts/build.sh" "$here/build"
"$here/build/bin/tallyra" --version
