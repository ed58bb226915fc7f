#!/usr/bin/env bash
# Installs what is missing and builds.
set -euo pipefail
cd "$(dirname "$0")"
scripts/install-packages.sh build sound
cmake --preset release -DSOLVANE_BUILD_TESTS=OFF
cmake --build --preset release
