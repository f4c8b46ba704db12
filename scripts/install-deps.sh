#!/usr/bin/env bash
# Installs the Debian packages that building, testing and running need.
set -euo pipefail

PACKAGES=(
  cmake g++ ninja-build ccache pkg-config
  qt6-base-dev libqt6sql6-sqlite libqt6sql6-psql qt6-charts-dev libqt6opengl6-dev qt6-svg-dev
  libsqlite3-dev libpq-dev postgresql
  libzint-dev libcurl4-openssl-dev libjpeg-dev zlib1g-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang-14 libclang-rt-14-dev
  xvfb xauth
  fonts-dejavu-core poppler-utils zbar-tools
  libreoffice-calc-nogui
)

missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
