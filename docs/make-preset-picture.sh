#!/usr/bin/env bash
# Draws docs/presets.png, the shape of every preset by group: docs/make-preset-picture.sh
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh docs
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# One file a group, one block a preset: its name, then frequency and value against loudness up to where its row ends.
python3 tools/make-presets.py --data | awk -F '\t' -v folder="$folder" '
    BEGIN { split("320 640 1000 2000 3000 4000 6000 10000 15000 18000", hertz, " ") }
    $3 == 1 || $3 == 130 { next }
    {
        file = sprintf("%s/%02d.dat", folder, $1)
        printf "%s\"%s\"\n", (file in seen ? "\n\n" : ""), $4 > file
        seen[file] = 1
        for (i = 1; i <= NF - 5 && $(i + 5) < 0; ++i)
            printf "%s %.2f\n", hertz[i], $(i + 5) - $5 > file
        count[$1]++
        group[$1] = $2 ($2 != "OTHER" ? "" : $1 < 8 ? " (channels)" : " (mixes)")
    }
    END {
        for (i = 0; i < 16; ++i)
            printf "%d\t%d\t%s\n", i, count[i], group[i] > (folder "/groups")
    }'

{
    cat <<'PLOT'
set terminal pngcairo size 3300,2400 noenhanced font "Lato,17" background "#ffffff"
set output "docs/presets.png"
set multiplot layout 4,4 margins 0.022,0.888,0.03,0.945 spacing 0.116,0.05 \
    title "Ten bands of every preset in dB against its overall loudness, over frequency in Hz" font "Lato,30"
set logscale x
set xrange [300:20000]
set xtics ("320" 320, "640" 640, "1k" 1000, "2k" 2000, "4k" 4000, "" 6000, "10k" 10000, "18k" 18000)
set ytics 10
set border 3 linecolor "#808080"
set tics nomirror
set key at graph 1.01,1.03 left top reverse Left samplen 2.0 spacing 1.15 font "Lato,16" noautotitle
set grid ytics linecolor "#e4e4e4" linetype 1 linewidth 1
PLOT
    # Colours that are told apart in pairs of full and dashed lines.
    for ((i = 0; i < 18; ++i)); do
        colours=('#1b6ca8' '#d1495b' '#2e8b57' '#e08e0b' '#7d4fa3' '#009e9e' '#8c564b' '#4d4d4d' '#c2388f')
        dash=1; [ $i -ge 9 ] && dash=2
        echo "set linetype $((i + 1)) linecolor rgb '${colours[$((i % 9))]}' dashtype $dash linewidth 2.4 pointtype 7 pointsize 0.9"
    done
    echo "set linetype cycle 18"
    while IFS=$'\t' read -r category count group; do
        printf 'set title "%s" font "Lato,23" offset 0,-0.6\n' "$group"
        if [ "$category" -ge 1 ] && [ "$category" -le 7 ]; then echo 'set yrange [-60:0]'; else echo 'set yrange [-45:-5]'; fi
        printf 'plot for [i=0:%d] "%s/%02d.dat" index i using 1:2 with linespoints linetype i+1 title columnheader(1)\n' \
            "$((count - 1))" "$folder" "$category"
    done <"$folder/groups"
} >"$folder/plot.gp"

gnuplot "$folder/plot.gp"
