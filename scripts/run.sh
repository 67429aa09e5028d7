#!/usr/bin/env bash
# Installs what is missing, builds Tarvex and starts it. Arguments go to the program
# (for example /DEV for the separate development catalogue).
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
bash "$here/install-deps.sh"
bash "$here/build.sh"
exec "$here/../${TARVEX_BUILD_DIR:-build}/bin/tarvex" "$@"
