#!/usr/bin/env bash
# Installs what is needed, builds, and runs every test on both stores.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
cd build
../scripts/with-postgres.sh ctest --output-on-failure -j "$(nproc)"
