#!/usr/bin/env bash
# Installs, from Debian's packages, what building, testing and looking at
# QORTool needs. Packages already present are skipped, so a second run is quick.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev qt6-qpa-plugins
  libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-dev clang-format
  xvfb xauth fonts-noto-cjk poppler-utils
  g++-mingw-w64-x86-64-posix wine64
  dpkg-dev file desktop-file-utils appstream libxml2-utils
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi
echo "Installing from Debian's packages: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
