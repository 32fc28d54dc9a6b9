#!/usr/bin/env bash
# Installs the Debian packages that Quenby needs to build, test and run.
# Only missing packages are installed; a machine that has them all is left alone.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config
  qt6-base-dev qt6-qpa-plugins libqt6opengl6-dev qt6-charts-dev qt6-serialport-dev
  libgtest-dev libbenchmark-dev
  clang libclang-rt-14-dev
  fonts-dejavu-core xvfb xauth x11-apps imagemagick
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
