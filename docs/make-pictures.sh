#!/usr/bin/env bash
# Makes the pictures in this folder again, from audio that the program renders.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh docs
scripts/build-product.sh
python3 tools/response-picture.py dist/bin/solvane docs/response.png
echo "docs/response.png"
