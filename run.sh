#!/usr/bin/env bash
# Installs what is missing, builds, and equalises a sound file: ./run.sh [AUDIO FILE]
# Without a file it takes a recorded drum loop. The result is in out/.
set -euo pipefail

if [ $# -gt 1 ] || [[ ${1:-} == -* ]]; then
    echo "Usage: ./run.sh [AUDIO FILE]" >&2
    exit 2
fi

# A path is the caller's, who need not stand where this script does.
input=${1:+$(realpath -m -- "$1")}
cd "$(dirname "$0")"

if [ -n "$input" ] && [ ! -r "$input" ]; then
    echo "There is no file '$input' that can be read." >&2
    exit 3
fi

scripts/build-product.sh

if [ -z "$input" ]; then
    scripts/install-packages.sh sound
    input=/usr/share/sonic-pi/samples/loop_amen_full.flac
fi

name=$(basename -- "$input")
output=out/${name%.*}-equalised.wav
mkdir -p out

# Less box, more snap and air; the sides get a little more air than the middle.
settings=(--mode mix --phase linear
    --band 360,1.5,0.8
    --band 500,-3,1.4
    --band 900,-1.5,1
    --band 1400,1,1.2
    --band 2400,2.5,1
    --band 3600,-2,2
    --band 5000,2,1.2
    --band 7200,-1.5,2,ms=0
    --band 10000,3,1,shelf
    --band 13000,2,1,ms=1
    --output-gain -3)

echo "dist/bin/solvane render '$input' '$output' ${settings[*]}"
dist/bin/solvane render "$input" "$output" "${settings[@]}"
echo "Listen to $PWD/$output"
