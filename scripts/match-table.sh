#!/usr/bin/env bash
# Matches pairs of real recordings, in each of the program's ways, and writes what came of it to docs/matching.md.
# The recordings come from Debian's packages; nothing is left behind.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build matching
cmake --preset release >/dev/null
cmake --build --preset release --target solvane_dist_program >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
loops=/usr/share/sonic-pi/samples
songs=/usr/share/games/wesnoth/1.16/data/core/music
tracks=/usr/share/games/singularity/music
voices=/usr/share/klettres

# As long as the meters take to come to rest, without samples at full scale.
loop() { sox -V1 -D "$loops/loop_$1.flac" -b 24 "$work/$1.wav" gain -6 repeat "$2"; }
part() { sox -V1 -D "$1" -b 24 "$work/$2.wav" gain -3 trim "$3" 45; }
speech() { sox -V1 -D "$voices/$1"/alpha/*.ogg -b 24 "$work/$2.wav" gain -3; }
changed() { sox -V1 -D "$work/$1.wav" -b 24 "$work/$2.wav" "${@:3}"; }

loop amen_full 4
loop garzul 3
loop industrial 30
loop mika 4
loop compus 5
loop electric 12
loop weirdo 6
loop safari 4
loop mehackit1 12
loop tabla 3
part "$songs/battle.ogg" battle 20
part "$songs/love_theme.ogg" love_theme 10
part "$songs/knalgan_theme.ogg" knalgan_theme 30
part "$songs/frantic.ogg" frantic 20
part "$songs/return_to_wesnoth.ogg" return 30
part "$songs/sad.ogg" sad 0
part "$songs/elvish-theme.ogg" elvish-theme 20
part "$songs/northerners.ogg" northerners 30
part "$tracks/Orbital Elevator.ogg" orbital_elevator 60
part "$tracks/Coherence.ogg" coherence 60
part "$tracks/Awakening.ogg" awakening 60
part "$tracks/Nebula.ogg" nebula 60
part "$tracks/Media Threat.ogg" media_threat 60
part "$tracks/Deprecation.ogg" deprecation 60
speech en english
speech cs czech
speech it italian
changed tabla tabla_mono remix 1,2
changed sad sad_quiet gain -18
changed orbital_elevator orbital_dull treble -14
changed orbital_elevator orbital_cut lowpass 3000
changed awakening awakening_96k rate 96000

tools/match-table.py "$work" >"$work/matching.md"
mv "$work/matching.md" docs/matching.md
echo "docs/matching.md is written."
