#!/usr/bin/env bash
# Installs the Debian packages Tarvex needs to build, test and run.
# Safe to run again: packages already present are left alone.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools
  libsqlite3-dev libsqlitecpp-dev sqlite3
  libxlsxwriter-dev libzip-dev libpugixml-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  qt6-image-formats-plugins
  fonts-liberation2
  xvfb xdotool imagemagick xauth poppler-utils
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "All packages Tarvex needs are installed."
  exit 0
fi

if [ "$(id -u)" -eq 0 ]; then
  sudo_cmd=()
elif command -v sudo >/dev/null 2>&1; then
  sudo_cmd=(sudo)
else
  echo "These packages are missing and neither root nor sudo is available: ${missing[*]}" >&2
  exit 1
fi

echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -q
"${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
