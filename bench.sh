#!/usr/bin/env bash
# Installs what is missing, builds, and prints what the plug-in costs: ./bench.sh [--peers]
# --peers also measures equalisers that people would use instead, from Debian, in the same run.
set -euo pipefail
cd "$(dirname "$0")"

groups=(build bench)
for argument in "$@"; do
    case $argument in
        --peers) groups+=(peers) ;;
        *) echo "bench.sh knows --peers and nothing else, not '$argument'." >&2; exit 2 ;;
    esac
done

scripts/install-packages.sh "${groups[@]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { cmake --preset bench && cmake --build --preset bench; } >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi

printf 'Machine: %s, %s cores. %s\n' \
    "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1)" "$(nproc)" "$(c++ --version | head -1)"
printf 'Version: %s\n\n' "$(git describe --always --dirty 2>/dev/null || echo unknown)"
build/bench/benchmarks/solvane_plugin_bench "$@"

printf '\n'
build/bench/benchmarks/solvane_window_bench

printf '\nReference tracks, loaded and measured:\n'
build/bench/benchmarks/solvane_track_bench --benchmark_color=false

printf '\nMeters and bands by themselves, with their plain versions and their longest calls:\n'
build/bench/benchmarks/solvane_meter_bench --benchmark_color=false

printf '\nA fit of bands, from eleven numbers:\n'
build/bench/benchmarks/solvane_fit_bench --benchmark_color=false
