#!/usr/bin/env bash
# Makes the golden pictures in tests/pictures/golden what the window looks like now: ./scripts/update-pictures.sh
# Look at each picture that has changed before you commit it. A name after the command takes only its state: shelf.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build sound test
cmake --preset release -DSOLVANE_BUILD_TESTS=ON >/dev/null
cmake --build --preset release --target solvane_picture_tests
state="${1:-}"
build/release/tests/solvane_picture_tests --gtest_brief=1 --update --gtest_filter="*EditorPicturesTest*/${state//-/_}*"
git status --short tests/pictures/golden
