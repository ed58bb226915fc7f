#!/usr/bin/env bash
# Makes the pictures of the plug-in's window in docs/images from the built plug-in: ./scripts/screenshots.sh [FOLDER]
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build sound test
cmake --preset release -DSOLVANE_BUILD_TESTS=ON >/dev/null
cmake --build --preset release --target solvane_screenshots
build/release/tests/solvane_screenshots "${1:-docs/images}"
