#!/usr/bin/env bash
# Installs what is missing, builds Tarvex and runs every test. Screens are tested on the
# offscreen platform, so no display is needed.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
bash "$here/install-deps.sh"
bash "$here/build.sh"
cd "$here/../${TARVEX_BUILD_DIR:-build}"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure --timeout 600 "$@"
