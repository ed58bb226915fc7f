#!/usr/bin/env bash
# Installs the Debian packages that a task needs and that are missing:
# install-packages.sh build|sound|test|fuzz|bench ...
# "presets" is what the presets were measured from, "matching" what docs/matching.md was; only measuring them anew needs them.
set -euo pipefail

build=(g++ make cmake ninja-build ccache pkg-config ca-certificates
    juce-modules-source fst-dev libopenblas-serial-dev libkissfft-dev libcli11-dev nlohmann-json3-dev
    libsndfile1-dev libmpg123-dev libnlopt-dev
    libgl-dev libflac-dev libpng-dev libjpeg-dev zlib1g-dev libcurl4-gnutls-dev)
sound=(sonic-pi-samples)
test=(libgtest-dev libgmock-dev lilv-utils lv2-dev lv2file python3 sordi sox libsox-fmt-mp3 ffmpeg libebur128-dev
    groff-base zsh xvfb openbox libxtst-dev)
fuzz=(clang-14 libclang-rt-14-dev)
bench=(libbenchmark-dev xvfb openbox)
peers=(lsp-plugins-vst iem-plugin-suite-vst)
docs=(python3 gnuplot-nox fonts-lato)
matching=(sonic-pi-samples wesnoth-1.16-music singularity-music klettres-data sox python3)
presets=(sonic-pi-samples fluid-soundfont-gm avldrums.lv2-soundfont wesnoth-1.16-music fluidsynth sox)

missing=()
for group in "$@"; do
    declare -n packages="$group"
    for package in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
done

[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Missing packages: ${missing[*]}. Install them as root, then start again." >&2; exit 1; }
    as_root=(sudo)
fi

echo "Installing: ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" apt-get update &&
       "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    echo "The packages could not be installed; the lines above say why." >&2
    exit 1
fi
