#!/usr/bin/env bash
# Installs what Tolvane needs to build, run and test on Debian. Idempotent: it asks dpkg which
# packages are really installed and, when nothing is missing, touches nothing and needs neither
# root nor the network. Each missing package is named before it is installed.
set -euo pipefail

PKGS=(
  build-essential cmake pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-serialport-dev qt6-charts-dev
  libqt6sql6-sqlite libqt6sql6-psql libqt6opengl6-dev
  libgl-dev libssl-dev libsqlite3-dev
  postgresql postgresql-client
  libbenchmark-dev
  clang-format
  fonts-dejavu-core
  # The Debian package and its checks (make package, scripts/check-package.sh).
  dpkg-dev file lintian appstream
  # The sample sheet's test renders its PDF and reads the barcodes back.
  poppler-utils zbar-tools
)

missing=()
for p in "${PKGS[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: everything is installed"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "install-deps: missing ${missing[*]}; run this script as root to install them" >&2
    exit 1
  fi
  SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
