#!/usr/bin/env bash
# Installs the Debian packages that Quenby needs to build, test and run.
# Only missing packages are installed; a machine that has them all is left alone.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config
  qt6-base-dev qt6-qpa-plugins libqt6opengl6-dev qt6-charts-dev qt6-serialport-dev
  libgtest-dev libbenchmark-dev
  clang libclang-rt-14-dev
  fonts-dejavu-core xvfb imagemagick poppler-utils
  locales clang-format
  libquazip1-qt6-dev libpugixml-dev libreoffice-calc-nogui dpkg-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
if [ ${#missing[@]} -ne 0 ]; then
  echo "Installing: ${missing[*]}"
  $sudo apt-get update -qq
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# The suite also runs under a French and a Polish locale.
wanted_locales=(fr_FR.UTF-8 pl_PL.UTF-8)
have=$(locale -a 2>/dev/null | tr '[:upper:]' '[:lower:]' | sed 's/utf8/utf-8/')
regenerate=0
for l in "${wanted_locales[@]}"; do
  lower=$(echo "$l" | tr '[:upper:]' '[:lower:]')
  if ! grep -qx "$lower" <<<"$have"; then
    $sudo sed -i "s/^# *\($l UTF-8\)/\1/" /etc/locale.gen
    grep -q "^$l UTF-8" /etc/locale.gen || echo "$l UTF-8" | $sudo tee -a /etc/locale.gen >/dev/null
    regenerate=1
  fi
done
[ $regenerate -eq 0 ] || $sudo locale-gen >/dev/null
