#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test: ./test.sh [release|debug|asan|tsan] [ctest arguments]
set -euo pipefail
cd "$(dirname "$0")"

preset=release
if [ $# -gt 0 ] && [[ $1 != -* ]]; then preset=$1; shift; fi

scripts/install-packages.sh build sound test
cmake --preset "$preset" -DSOLVANE_BUILD_TESTS=ON >build-configure.log 2>&1 || { cat build-configure.log >&2; exit 1; }
rm -f build-configure.log
cmake --build --preset "$preset"
ctest --preset "$preset" "$@"
