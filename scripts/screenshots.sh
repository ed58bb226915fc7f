#!/usr/bin/env bash
# Makes pictures of the plug-in's window in its states and sizes, from the built plug-in: ./scripts/screenshots.sh [FOLDER]
# All of them go into the folder, build/screenshots unless another is named; those that docs/images has are renewed there.
set -euo pipefail
cd "$(dirname "$0")/.."
folder="${1:-build/screenshots}"

scripts/install-packages.sh build sound test
cmake --preset release -DSOLVANE_BUILD_TESTS=ON >/dev/null
cmake --build --preset release --target solvane_screenshots
build/release/tests/solvane_screenshots "$folder"

# The room before and after ADD SMART BANDS needs a measurement that has come to rest: from the states of the picture tests.
cp tests/pictures/golden/target-680x712.png "$folder/target-normal.png"
cp tests/pictures/golden/smart-bands-680x712.png "$folder/smart-bands-normal.png"

for picture in docs/images/*.png; do
    if [ -e "$folder/${picture##*/}" ]; then
        cp "$folder/${picture##*/}" "$picture"
    fi
done
