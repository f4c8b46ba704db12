#!/usr/bin/env bash
# Installs what is needed, builds, makes a demo data directory of a generated
# agency (once) and starts the desktop program on it. Sign in as "keeperin".
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
DATA=${KB_DEMO_DIR:-$HOME/kettlebrook-demo}
if [ ! -e "$DATA/kettlebrook.db" ]; then
  build/app/kettlebrook init "$DATA" --demo 5000
fi
exec build/app/kettlebrook --data "$DATA" "$@"
