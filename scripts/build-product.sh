#!/usr/bin/env bash
# Installs what the build needs and is missing, and brings dist/ up to date. Tests stay out of it. Says nothing where
# nothing is to do.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build

log=$(mktemp)
trap 'rm -f "$log"' EXIT

# Keeps the words of a step to itself unless it fails.
quietly() {
    "$@" >"$log" 2>&1 && return
    cat "$log" >&2
    echo "This failed: $*" >&2
    exit 1
}

if [ ! -e build/release/build.ninja ]; then
    quietly cmake --preset release -DSOLVANE_BUILD_TESTS=OFF
    echo "Building. The first time takes some minutes."
fi

if [ -t 1 ]; then
    cmake --build --preset release --target solvane_dist
else
    quietly cmake --build --preset release --target solvane_dist
fi
