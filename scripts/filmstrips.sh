#!/usr/bin/env bash
# Films what moves in the plug-in's window, from the built plug-in: ./scripts/filmstrips.sh [FOLDER]
# Leaves drag-strip.png and scale-strip.png in the folder, docs/images unless another is named.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build sound test
cmake --preset release -DSOLVANE_BUILD_TESTS=ON >/dev/null
cmake --build --preset release --target solvane_filmstrips
build/release/tests/solvane_filmstrips "${1:-docs/images}"
