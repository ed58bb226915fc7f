#!/usr/bin/env bash
# Installs what is missing, builds, and does the whole job on a sound file: ./run.sh [AUDIO FILE [REFERENCE]]
# It is equalised with bands that are given, and brought near a reference with bands that follow from listening.
# Without files it takes recorded drum loops; without a reference the library's target for masters. Results are in out/.
set -euo pipefail

if [ $# -gt 2 ] || [[ ${1:-} == -* ]] || [[ ${2:-} == -* ]]; then
    echo "Usage: ./run.sh [AUDIO FILE [REFERENCE]]" >&2
    exit 2
fi

# A path is the caller's, who need not stand where this script does.
input=${1:+$(realpath -m -- "$1")}
reference=${2:+$(realpath -m -- "$2")}
cd "$(dirname "$0")"

for file in "$input" "$reference"; do
    if [ -n "$file" ] && [ ! -r "$file" ]; then
        echo "There is no file '$file' that can be read." >&2
        exit 3
    fi
done

scripts/build-product.sh

if [ -z "$input" ]; then
    scripts/install-packages.sh sound
    input=/usr/share/sonic-pi/samples/loop_amen_full.flac
    reference=/usr/share/sonic-pi/samples/loop_garzul.flac
fi

name=$(basename -- "$input")
result=out/${name%.*}
mkdir -p out

# Shows a command as one could type it, and runs it.
perform() {
    local word line='$'
    for word in "$@"; do
        [[ $word =~ ^[[:alnum:]_./,:=-]+$ ]] || word=${word@Q}
        line+=" $word"
    done
    printf '%s\n' "$line"
    "$@"
    printf '\n'
}

# Less box, more snap and air; the sides get a little more air than the middle.
perform dist/bin/solvane render "$input" "$result-equalised.wav" --mode mix --phase linear \
    --band 360,1.5,0.8 \
    --band 500,-3,1.4 \
    --band 900,-1.5,1 \
    --band 1400,1,1.2 \
    --band 2400,2.5,1 \
    --band 3600,-2,2 \
    --band 5000,2,1.2 \
    --band 7200,-1.5,2,ms=0 \
    --band 10000,3,1,shelf \
    --band 13000,2,1,ms=1 \
    --output-gain -3

# The table shows input, target and result, and what is left to adjust; the picture the bands as well.
if [ -n "$reference" ]; then
    target=(--reference "$reference" --overwrite)
else
    target=(--preset "BALANCED MASTER")
fi

perform dist/bin/solvane render "$input" "$result-matched.wav" --mode mix --output-gain -6 \
    --smart-bands "${target[@]}" --report "$result-matched.png"

echo "Listen to $PWD/$result-equalised.wav and $PWD/$result-matched.wav, and look at $PWD/$result-matched.png"
