#!/usr/bin/env bash
# Installs, with apt-get, whatever the build and the tests need and this
# machine lacks. Meant for a Debian machine as root.
set -euo pipefail
need=(cmake g++ ninja-build pkg-config nettle-dev libgtest-dev qt6-base-dev libgl-dev fonts-liberation fonts-noto-mono poppler-utils nlohmann-json3-dev)
missing=()
for p in "${need[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq "${missing[@]}"
fi
