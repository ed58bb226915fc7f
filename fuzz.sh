#!/usr/bin/env bash
# Installs what is missing, builds the fuzz target of the session block with clang, and runs it: ./fuzz.sh [SECONDS]
# What it learns stays in build/fuzz/corpus. A finding is left in build/fuzz/findings; it belongs into tests/fixtures and
# into a test once it is mended.
set -euo pipefail
cd "$(dirname "$0")"

seconds=${1:-300}
[[ $seconds =~ ^[0-9]+$ ]] || { echo "usage: ./fuzz.sh [SECONDS]" >&2; exit 2; }

scripts/install-packages.sh build fuzz
cmake --preset fuzz >build-configure.log 2>&1 || { cat build-configure.log >&2; exit 1; }
rm -f build-configure.log
cmake --build --preset fuzz --target solvane_session_fuzz

folder=build/fuzz
mkdir -p "$folder/corpus" "$folder/findings" "$folder/home"
HOME="$PWD/$folder/home" "$folder/fuzz/solvane_session_fuzz" -max_total_time="$seconds" -print_final_stats=1 \
    -dict=fuzz/session.dict -max_len=16384 -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$folder/findings/" "$folder/corpus" tests/fixtures/sessions tests/fixtures/settings
