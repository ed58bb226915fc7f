#!/usr/bin/env python3
"""Writes the library of tonal balances, source/core/presets/PresetTable.cpp, and the lists of docs/presets.md.

    tools/make-presets.py            writes the two files
    tools/make-presets.py --check    fails where one that is there differs
    tools/make-presets.py --data     prints group, name, lufs and the ten values of every preset, for plots

A preset's loudness is set by hand. Its ten values are its loudness, plus a base, plus modifiers set by hand:

    base      offsets of its group against the overall loudness, or those of a recording (measured-recordings.csv)
    tilt      dB per octave around 1 kHz
    low_mid   dB, a bell one octave either way around 400 Hz
    presence  dB, a bell around 3 kHz
    air       dB per octave above 8 kHz

Values lie on the meter's scale: from the first one below -69.5 on, nothing is measured, which is written as 0. The band
at 18 kHz is never measured but extrapolated, as the plug-in does it. Nothing here is random.
"""

import csv
import math
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
TABLE = os.path.join(HERE, "..", "source", "core", "presets", "PresetTable.cpp")
CENTRES = [320, 640, 1000, 2000, 3000, 4000, 6000, 10000, 15000, 18000]
DOCUMENT = os.path.join(HERE, "..", "docs", "presets.md")
MARKER = "<!-- Below this line tools/make-presets.py writes. -->\n"
FLOOR = -69.5
HIGHEST = -12.0

# Offsets of bands 0 to 8 against the overall loudness.
BASES = {
    "BASS": [-16, -24, -28, -36, -40, -44, -50, -56, -62],
    "DRUMS": [-15, -17, -18, -19, -19, -19, -18, -20, -26],
    "GUITAR": [-12, -13, -14, -16, -19, -22, -28, -38, -50],
    "OTHER CHANNELS": [-12, -11, -11, -13, -16, -19, -24, -31, -41],
    "PIANO": [-10, -12, -14, -19, -23, -27, -33, -42, -52],
    "SYNTHS": [-13, -14, -15, -17, -19, -21, -24, -29, -37],
    "VOCALS": [-12, -12, -13, -16, -17, -19, -21, -25, -32],
    "ELECTRONIC": [-14, -14, -14, -16.5, -17.5, -18.5, -18.5, -19.5, -25],
    "HIP HOP": [-14, -15, -15.5, -17.5, -18.5, -19, -19, -21, -27.5],
    "HOUSE": [-14.5, -14.5, -14.5, -16.5, -17.5, -18.5, -18.5, -19.5, -25],
    "OTHER MIXES": [-12, -13, -14, -16, -17.5, -18.5, -19.5, -23, -30],
    "POP": [-12.5, -13.5, -14.5, -16.5, -17.5, -18, -18, -20, -27],
    "R&B": [-13, -14, -15.5, -17.5, -18.5, -19, -19, -21, -28],
    "ROCK": [-11, -11.5, -12, -13, -15, -17.5, -20, -24.5, -32],
}


def given(number, name, lufs, values):
    """A row whose figures are known; they are kept as they stand."""
    return {"id": number, "name": name, "lufs": lufs, "values": values}


def row(number, name, lufs, tilt, low_mid, presence, air, why, base=None):
    """A row that is computed. `why` says what the modifiers stand for; `base` replaces the group's."""
    return {"id": number, "name": name, "lufs": lufs, "modifiers": (tilt, low_mid, presence, air), "why": why,
            "base": base}


ZEROS = [0.0] * 10

# Group, its base, its rows: number, name, lufs, tilt, low mid, presence, air, reason.
GROUPS = [
    ("PRESET", None, [
        given(1, "NO TARGETS", 0.0, ZEROS),
        given(130, "USER SETTING", 0.0, ZEROS),
        given(131, "BALANCED MASTER", -6.393050,
              [-18.34, -20.64, -21.80, -23.32, -23.83, -24.00, -23.77, -26.18, -34.33, -39.70]),
    ]),
    ("BASS", "BASS", [
        given(2, "808", -12.406793, [-42.34, -49.51, -57.93, -66.11, -69.31, 0.0, 0.0, 0.0, 0.0, 0.0]),
        row(3, "CLEAN ROCK", -12.6, 0.0, 0.0, 1.0, -0.5, "round-wound strings, clean, with their click", "bass-bright"),
        given(4, "DARK POP", -11.877717, [-24.84, -34.09, -36.01, -43.17, -43.61, -47.01, -56.21, -61.61, -69.13]),
        row(5, "GRITTY ROCK", -11.9, 0.3, 1.5, 4.0, -1.5, "overdrive fills in up to 4 kHz, the cabinet shuts above",
            "bass-bright"),
        row(6, "METAL", -11.2, 1.8, -3.0, 7.0, 0.0, "scooped low mids, pick clank at 3 kHz, heavy compression"),
        row(7, "POP BASS SYNTH", -12.2, 0.0, 0.0, 0.0, 0.0, "filtered saws as they come", "bass-synth"),
        row(8, "SOFT POP BASS", -14.0, -0.2, 0.0, 0.0, -1.0, "fingers near the neck; the top is rolled off",
            "bass-soft"),
    ]),
    ("DRUMS", "DRUMS", [
        row(9, "CLAPS", -17.5, 0.2, 0.0, 0.0, 1.0, "layered and opened at the top", "claps"),
        row(10, "FULL KIT CLEAN TIGHT POP", -13.0, 0.2, 0.0, 1.0, -10.0,
            "close microphones, little room; the recorded hats' sizzle taken down", "kit-tight"),
        row(11, "FULL KIT CRISP ELECTRONIC", -11.5, 0.9, -1.0, 1.0, 1.5, "samples with bright hats and no room",
            "kit-electronic"),
        row(12, "FULL KIT DARK POP", -13.6, -1.5, 1.0, 0.0, -12.0, "damped heads, dark cymbals, tape", "kit-tight"),
        row(13, "FULL KIT LIVE ROCK", -14.2, 0.0, 0.0, 0.0, 0.0, "a player in a room", "kit-live"),
        row(14, "FULL KIT POP ROCK", -12.4, 0.0, 0.0, 0.5, -9.0, "produced; crash and sizzle held back",
            "kit-pop-rock"),
        row(15, "FULL KIT ROCK", -12.0, 0.0, 1.0, 1.0, -7.5, "large shells, loud snare; crash held back", "kit-rock"),
        row(16, "KICK ELECTRONIC", -12.0, 0.0, 0.0, 0.0, -2.0, "a sine with a short click", "kick-electronic"),
        row(17, "KICK HOUSE", -12.2, 0.0, 0.0, 0.0, -3.0, "punchy, with body at 300 Hz", "kick-house"),
        row(18, "KICK LIVE ROCK", -18.0, -0.3, 0.0, 0.0, -3.0, "the beater shows at 3 kHz; spill taken out",
            "kick-live"),
        row(19, "KICK POP", -13.4, 0.0, 0.0, 1.0, -2.0, "body and a soft click", "kick-pop"),
        row(20, "OVERHEADS", -22.0, 0.3, -1.0, 0.0, 1.0, "cymbals; body left to the close microphones", "overheads"),
        row(21, "SNARE BRIGHT", -15.0, 0.4, 0.0, 0.5, 1.0, "wires and crack", "snare-bright"),
        row(22, "SNARE DEEP", -15.6, 0.0, 0.0, 0.0, 1.0, "tuned low; shell before wires", "snare-deep"),
        row(23, "SNARE LIVE ROCK", -16.4, 0.0, 0.0, 0.0, 0.0, "acoustic snares, played hard and soft",
            "snare-live"),
        row(24, "SNARE POP", -14.4, 0.2, 0.0, 0.0, 2.0, "sampled, tight, top opened", "snare-pop"),
        row(25, "TOMS", -17.0, 0.0, 0.0, 0.0, 0.0, "six toms from high to low", "toms"),
    ]),
    ("GUITAR", "GUITAR", [
        row(26, "ACOUSTIC", -18.0, 0.3, -1.0, 0.0, 4.0, "steel strings; the close microphone keeps their shimmer",
            "guitar-steel"),
        row(27, "BRITPOP ELECTRIC", -14.5, 0.7, -1.0, 2.5, 0.5, "chiming small amplifier, forward mids"),
        row(28, "CLEAN ELECTRIC", -15.0, 0.5, 0.0, 0.0, 12.0, "recorded softly; opened at the top", "guitar-clean"),
        row(29, "CLEAN POP LEAD", -13.5, -0.1, -1.5, 0.8, 3.0, "single notes, smooth and compressed, with sheen"),
        row(30, "DISTORTED ELECTRIC", -13.2, 0.0, 0.0, 0.0, 5.0, "power chords through a cabinet", "guitar-distortion"),
        row(31, "FUNKY LEAD", -17.5, 1.2, -2.0, 2.0, 3.0, "short strokes straight into the desk, no low mids"),
        row(32, "GRITTY ELECTRIC", -13.5, 0.3, 1.0, 1.5, 1.5, "edge of breaking up", "guitar-overdrive"),
        row(33, "METAL", -12.4, 0.9, 1.5, 4.0, -2.0, "palm mutes below, fizz at 3 kHz, nothing above the cabinet"),
        row(34, "MODERN ROCK", -13.0, 0.4, 2.0, 1.5, 1.5, "wall of layered guitars"),
    ]),
    ("OTHER", "OTHER CHANNELS", [
        row(35, "CELLO", -22.0, 0.2, 0.0, 0.0, 5.0, "bow noise and room above the strings", "cello"),
        row(36, "DENSE MUSIC STEM", -10.5, 0.3, 1.0, -0.5, 1.5, "everything but drums and voice, filled in"),
        row(37, "FULL STRING SECTION", -19.0, 0.6, -0.5, 0.0, 9.0, "many bows; the recorded hall's air",
            "strings"),
        row(38, "PIANO & STRINGS", -17.0, 0.2, 1.0, -0.5, 11.0, "hammers above a soft section, in a hall",
            "piano-strings"),
        row(39, "POP HORN SECTION", -16.0, 1.0, -0.5, 1.0, 12.0, "blown hard, close, brightened for a pop mix",
            "horns"),
        given(40, "TRUMPET", -35.943893,
              [-58.74, -47.50, -42.19, -41.76, -43.03, -44.79, -48.35, -49.34, -54.24, -59.35]),
        row(41, "VOCAL CHOPS", -14.5, 0.6, -2.0, 1.0, 3.0, "pitched-up slices of a bright voice", "VOCALS"),
    ]),
    ("PIANO", "PIANO", [
        row(42, "70s ROCK", -13.6, -0.5, 1.0, 0.0, -1.5, "upright or electric grand to tape"),
        row(43, "DARK POP", -17.5, -1.5, 0.5, 0.0, -2.0, "felt, lid closed"),
        row(44, "ELECTRIC", -16.0, 0.3, 0.0, 0.5, 1.0, "reeds with bell and some drive", "electric-piano"),
        row(45, "HAMMOND ORGAN", -14.5, 1.8, 0.0, 1.0, 3.0, "key click and driven horn over the tone wheels", "organ"),
        row(46, "POP KEYS", -14.0, 1.2, -1.5, 1.0, 1.5, "layered bright keys that cut through"),
        row(47, "RHODES", -14.5, 0.4, 0.5, 0.0, 0.0, "tines; nothing but the amplifier above 10 kHz", "rhodes"),
        row(48, "RICH CLEAR", -17.0, 0.2, 0.5, 0.5, 9.0, "concert grand, lid open", "piano"),
    ]),
    ("SYNTHS", "SYNTHS", [
        row(49, "BRASS LEAD", -14.5, 0.8, 0.0, 1.0, 4.0, "stacked saws with a filter that opens", "synth-brass"),
        row(50, "DUB DROP", -11.0, 0.0, 0.0, 0.0, 0.0, "growling bass drops", "synth-drop"),
        row(51, "LEAD", -13.5, 0.3, -0.5, 2.0, 0.5, "cuts through at 3 kHz"),
        row(52, "POP PLUCK", -16.5, 0.9, -1.5, -0.5, 1.5, "short, clicking attack, little body"),
        row(53, "POP", -14.0, 0.2, -0.3, 0.0, 1.2, "polished pad and chords"),
        row(54, "RICH PLUCK", -15.5, -0.4, 2.5, 0.8, 0.3, "body and a soft attack"),
        row(55, "ROCK", -13.0, -0.1, 1.2, 2.8, -1.5, "driven through an amplifier"),
        row(56, "SAW LEAD", -13.0, 0.4, 0.0, 0.0, 6.0, "detuned saws, filter open", "synth-saw"),
    ]),
    ("VOCALS", "VOCALS", [
        row(57, "FEMALE BACKING", -20.0, 0.2, -2.5, 0.0, 1.5, "thinned and airy, behind the lead"),
        row(58, "FEMALE JAZZ", -19.5, 0.1, 1.0, -1.0, 0.0, "close and smooth, little processing"),
        row(59, "FEMALE POP", -16.0, 0.8, -1.0, 1.5, 1.5, "bright, compressed, up front"),
        row(60, "FEMALE R&B", -17.0, 0.4, 0.8, 0.3, 2.2, "breathy and full"),
        row(61, "FEMALE ROCK", -15.5, 0.5, 0.3, 3.0, -0.3, "belted; edge at 3 kHz"),
        row(62, "MALE BRITPOP", -16.5, 0.5, -2.2, 0.8, -1.8, "nasal, thin below and dull above"),
        row(63, "MALE DARK POP", -17.5, -1.5, 0.5, 0.0, -2.0, "low and close, top rolled off"),
        row(64, "MALE POP BACKING", -20.5, -0.3, -2.0, -1.0, 1.0, "softened, behind the lead"),
        row(65, "MALE POP", -16.0, 0.3, -0.5, 1.0, 1.0, "clear and compressed"),
        row(66, "MALE R&B", -17.5, -0.4, 1.5, 0.0, 1.4, "warm with breath"),
        row(67, "MALE RAP", -14.5, 0.1, 2.6, 2.4, 0.0, "dry, close, every consonant"),
        row(68, "MALE ROCK BACKING", -18.5, -0.4, -1.5, 1.0, -0.8, "shouted from behind"),
        row(69, "MALE ROCK", -15.0, 0.2, 1.2, 3.2, -1.2, "rough, with drive"),
        row(70, "MALE VOCAL BUS", -13.5, -0.2, 0.0, 0.6, 0.4, "leads and doubles together"),
    ]),
    ("ELECTRONIC", "ELECTRONIC", [
        given(71, "DANCE", -4.553161,
              [-19.09, -18.05, -17.32, -21.16, -22.30, -24.17, -23.53, -23.59, -28.50, -35.67]),
        row(72, "DRUM & BASS", -4.7, 0.0, -1.6, 1.4, 0.5, "fast breaks and hats over sub bass"),
        row(73, "DUBSTEP", -4.4, -0.2, 1.5, 1.5, -0.5, "growls from 300 Hz to 3 kHz"),
        row(74, "EDM", -4.5, 0.2, 0.2, 0.2, 0.7, "wide saws and white-noise rises"),
        row(75, "HARDSTYLE", -4.3, 0.4, 1.2, 2.5, -1.0, "the distorted kick fills the mids"),
        row(76, "MOOMBAHTON", -5.2, -0.4, -0.6, 0.8, 0.4, "drums and sparse leads, half tempo"),
        row(77, "TRANCE", -5.1, 0.4, 0.2, -0.9, 1.6, "open hats over wide pads"),
        row(78, "TRAP", -5.0, -0.7, -2.0, -0.6, 3.0, "an 808, little above it, then hats"),
    ]),
    ("HIP HOP", "HIP HOP", [
        row(79, "CONTEMPORARY", -5.4, -0.3, -2.0, 0.0, 1.8, "808, dry voice, bright hats"),
        row(80, "EAST COAST", -6.6, -0.4, 1.4, 0.5, -1.2, "sampled loops, dusty breaks"),
        row(81, "GANGSTA RAP", -6.2, -0.1, 0.3, 1.4, -0.4, "voice forward, whining lead"),
        row(82, "GRIME", -5.2, 0.5, -1.2, 1.2, 0.0, "cold square waves, fast voice"),
        row(83, "OLD SKOOL", -7.6, -0.5, -0.3, 1.5, -1.5, "drum machine and voice, vinyl's top"),
        row(84, "POP RAP", -5.1, 0.4, 0.6, 1.2, 0.8, "pop gloss on the beat"),
    ]),
    ("HOUSE", "HOUSE", [
        row(85, "CLASSIC", -7.0, -0.5, 0.6, 0.0, -1.5, "sampled pianos and strings, early converters"),
        row(86, "COMMERCIAL", -5.0, 0.2, 0.0, 0.8, 0.7, "bright, voice and piano ahead"),
        row(87, "DEEP", -6.2, -1.0, 0.5, 0.0, -1.0, "soft chords, filtered top"),
        row(88, "ELECTRO", -4.8, 0.4, 1.0, 1.9, -0.3, "buzzing mids"),
        row(89, "FUTURE", -4.9, 0.0, -1.4, -0.4, 1.7, "metallic stabs, hollow below"),
        row(90, "PROGRESSIVE", -5.5, -0.2, 1.6, -0.4, 0.6, "long pads, wide and full"),
        row(91, "TECH", -5.6, -0.4, -1.9, 0.6, 0.4, "dry percussion, empty low mids"),
        row(92, "TROPICAL", -5.7, -0.3, -1.2, -1.2, 1.3, "marimbas and breath, soft presence"),
    ]),
    ("OTHER", "OTHER MIXES", [
        row(93, "COUNTRY", -6.6, 0.4, -0.6, 1.4, 0.5, "acoustic strings, steel guitar, voice ahead"),
        row(94, "DISCO", -7.6, 0.5, -0.4, -1.8, 0.2, "open hats and string machines, soft presence"),
        row(95, "FUNK", -7.4, 0.2, 0.9, 1.2, -0.6, "tight guitars and horns"),
        row(96, "JAZZ", -8.3, -0.5, 1.0, -0.9, 0.2, "natural balance, brushed cymbals"),
        row(97, "K POP", -4.8, 0.7, -1.2, 0.8, 1.6, "dense, glossy and bright"),
        row(98, "METAL", -4.7, 0.3, -1.0, 3.0, 0.0, "guitars' edge and beater click"),
        row(99, "MOTOWN", -7.9, -0.5, 0.8, 1.2, -1.5, "mid-forward for small radios"),
        row(100, "ORCHESTRAL", -8.5, 0.0, 0.0, 0.0, 0.0, "six scores as they are", "orchestra"),
        row(101, "REGGAE", -7.2, -0.5, -0.5, -0.9, -1.5, "bass first, organ and guitar behind"),
        row(102, "REGGAETON", -5.2, -0.2, -1.8, 0.0, 1.8, "drum machine, voice, little between"),
        row(103, "SOUL", -7.5, -0.2, 2.2, 1.0, -0.2, "warm band, voice ahead"),
    ]),
    ("POP", "POP", [
        row(104, "CONTEMPORARY", -5.3, 0.1, -0.8, 0.3, 1.0, "clean low mids, airy voice"),
        row(105, "DANCE", -4.8, 0.5, -1.2, -0.1, 0.5, "club drums, bright synths"),
        row(106, "ELECTRONIC", -5.2, 0.4, 0.8, -0.7, 1.0, "pads and bright percussion"),
        row(107, "HIP HOP", -5.2, -0.5, -1.4, 0.4, 0.9, "808 and hats under a pop voice"),
        row(108, "LATIN", -5.6, 0.1, 0.3, 1.5, 0.1, "percussion and nylon strings"),
        row(109, "ROCK", -5.4, -0.1, 1.3, 1.6, -1.0, "guitars fill the mids"),
        row(110, "SYNTH", -6.1, -0.2, 1.1, -1.0, 0.4, "analogue pads, drum machine"),
        row(111, "WARM", -7.0, -1.0, 0.5, 0.0, -1.0, "round and soft"),
    ]),
    ("R&B", "R&B", [
        row(112, "90's", -7.0, 0.2, 0.9, 0.8, 0.2, "swing beats, layered voices"),
        row(113, "CONTEMPORARY", -5.6, 0.0, -0.8, 0.0, 1.5, "sub bass, sparse mids, breath"),
        row(114, "OLD SKOOL", -7.8, -0.5, 0.8, 0.0, -1.5, "band to tape"),
        row(115, "RHYTHM & BLUES", -8.2, -0.1, 1.5, 1.8, -1.8, "horns and shouted voice, no top"),
    ]),
    ("ROCK", "ROCK", [
        row(116, "ALTERNATIVE", -5.6, 0.2, 0.4, 1.0, 0.4, "loud guitars, raw snare"),
        row(117, "CLASSIC", -7.5, -0.5, 0.3, 0.0, -1.5, "tape and tubes"),
        row(118, "CONTEMPORARY", -4.9, 0.6, -0.8, 0.6, 0.9, "sample-reinforced drums, bright"),
        row(119, "ELECTRONIC", -5.0, 0.9, -1.3, -0.6, 1.5, "machines beside guitars"),
        row(120, "HARD", -4.8, 0.3, 0.0, 3.0, 0.0, "guitars' edge"),
        row(121, "INDIE", -6.2, -0.1, 1.4, 0.4, -0.3, "room sound, loose low mids"),
        row(122, "PROGRESSIVE", -7.1, 0.0, -0.6, -0.8, 0.6, "wide range, keyboards and cymbals"),
    ]),
    ("STAR ENGINEERS", "POP", [
        row(123, "ALT-ROCK HERO", -4.9, 0.2, 0.4, 1.6, 0.4, "big drums, guitars in front", "ROCK"),
        row(124, "DANCE-POP GURU", -4.6, 0.5, -1.4, 0.4, 1.2, "tight below, bright above"),
        row(125, "EXPENSIVE POP GENIUS", -5.4, 0.1, -0.5, -0.8, 2.2, "smooth presence and silk on top"),
        row(126, "HIP-HOP KING", -5.0, -0.2, -0.7, 0.6, 0.7, "low end first, crisp snare", "HIP HOP"),
        given(127, "MODERN ROCK MASTER", -4.324515,
              [-14.61, -13.21, -12.78, -13.65, -16.72, -20.43, -24.72, -30.36, -38.09, -43.71]),
        row(128, "POP-SOUL CHIEF", -6.2, -0.5, 1.2, 0.3, 0.0, "warm band under a close voice"),
        row(129, "R&B BOSS", -5.5, -0.1, 0.2, -0.4, 1.9, "soft mids, open top", "R&B"),
    ]),
]


# What is said of each group in the documentation, by category.
NOTES = [
    "All given.",
    "Measured but for METAL: plucked basses from a sound font, synthesisers from loops. A bass has little above 6 kHz; "
    "the softer it is, the earlier its row ends.",
    "All measured: one-shots, breaks played by drummers, and two recorded kits and an electronic one playing beats. "
    "Kicks end at or below 10 kHz; what their recordings hold above is spill and noise, which the air modifier takes "
    "out.",
    "Acoustic, clean, gritty and distorted guitars are measured; the others start from the fall of a guitar amplifier's "
    "cabinet, steep above 5 kHz.",
    "TRUMPET is given; strings, horns and piano are measured and opened above 8 kHz, where the sound font stops but a "
    "hall does not. The stem is modelled, and so are the vocal chops, from the base of voices.",
    "Grand, tines, reeds and organ are measured; produced pianos are modelled. Felt, tape and rotary cabinets end early.",
    "Leads of saws and brass and the bass drops are measured, the others modelled around falling harmonics.",
    "All modelled: voices hold even from 320 Hz to 1 kHz, have consonants at 3 kHz and breath above 8 kHz.",
    "Modelled around DANCE: even up to 1 kHz, slowly falling above, hats up to 15 kHz.",
    "Modelled: less between bass and voice than electronic music, and less top.",
    "Modelled as electronic music, half a decibel thinner below 1 kHz.",
    "Modelled from band music, mixes without much processing at the top; ORCHESTRAL is the mean of six scores.",
    "Modelled: between electronic and band music, voice in front.",
    "Modelled: pop with a little less above 1 kHz.",
    "Modelled: guitars fill up to 3 kHz and fall steeply from there, as MODERN ROCK MASTER does.",
    "Modelled from the base of the music that each is known for.",
]


def recording_lines():
    with open(os.path.join(HERE, "measured-recordings.csv"), newline="", encoding="utf-8") as file:
        return {line["name"]: line for line in csv.DictReader(file)}


def read_recordings():
    return {name: [float(line[str(centre)]) for centre in CENTRES[:9]] for name, line in recording_lines().items()}


def modifier(frequency, tilt, low_mid, presence, air):
    """The sum of a row's modifiers at a frequency, in dB."""
    return (tilt * math.log2(frequency / 1000)
            + low_mid * math.exp(-math.log2(frequency / 400) ** 2)
            + presence * math.exp(-(math.log2(frequency / 3000) / 1.2) ** 2)
            + air * max(0.0, math.log2(frequency / 8000)))


def top_band(levels):
    """The level at 18 kHz: the second cubic of a modified Akima interpolant through 6, 10 and 15 kHz, run on beyond its
    end. A cubic with given values and slopes at both ends has this closed form."""
    x = CENTRES[6:9]
    m = {i: (levels[i + 1] - levels[i]) / (x[i + 1] - x[i]) for i in (0, 1)}
    m[-1] = 2 * m[0] - m[1]
    m[2] = 2 * m[1] - m[0]
    m[3] = 2 * m[2] - m[1]

    def slope(knot):
        after = abs(m[knot + 1] - m[knot]) + abs(m[knot + 1] + m[knot]) / 2
        before = abs(m[knot - 1] - m[knot - 2]) + abs(m[knot - 1] + m[knot - 2]) / 2
        return (after * m[knot - 1] + before * m[knot]) / (after + before)

    width = x[2] - x[1]
    t = (18000 - x[1]) / width
    return ((2 * t ** 3 - 3 * t ** 2 + 1) * levels[1] + (3 * t ** 2 - 2 * t ** 3) * levels[2]
            + (t ** 3 - 2 * t ** 2 + t) * width * slope(1) + (t ** 3 - t ** 2) * width * slope(2))


def computed(entry, base):
    values = []

    for frequency, offset in zip(CENTRES, base):
        value = round(entry["lufs"] + offset + modifier(frequency, *entry["modifiers"]), 2)

        if value < FLOOR:
            return values + [0.0] * (10 - len(values))

        if value > HIGHEST:
            sys.exit("%s: %.2f at %d Hz is too high" % (entry["name"], value, frequency))

        values.append(value)

    last = round(top_band(values[6:9]), 2)
    return values + [last if last >= FLOOR else 0.0]


def library():
    """Category, group name and (id, name, lufs, values) of each row."""
    recordings = read_recordings()
    groups = []

    for category, (group, group_base, entries) in enumerate(GROUPS):
        rows = []

        for entry in entries:
            name = entry.get("base") or group_base
            values = entry.get("values")

            if values is None:
                values = computed(entry, recordings[name] if name in recordings else BASES[name])

            rows.append((entry["id"], entry["name"], entry["lufs"], values))

        groups.append((category, group, rows))

    return groups


def cpp_float(value, decimals):
    return "%.*ff" % (decimals, value)


def cpp_table(groups):
    lines = ["// Generated by tools/make-presets.py, which says where every figure comes from. Change it there.",
             "",
             '#include "core/presets/Presets.h"',
             "",
             "namespace Presets",
             "{",
             "namespace",
             "{",
             "// clang-format off"]

    for _, group, rows in groups:
        lines += ["", "// " + group]

        for number, _, _, values in rows:
            lines.append("constexpr float values%d[] { %s };"
                         % (number, ", ".join(cpp_float(value, 2) for value in values)))

    lines += ["", "constexpr TableRow rows[] {"]

    for category, _, rows in groups:
        lines += ['    { %d, %d, "%s", %s, values%d },' % (number, category, name, cpp_float(lufs, 6), number)
                  for number, name, lufs, _ in rows]

    lines += ["};",
              "",
              "constexpr std::array<const char*, groupCount> names {",
              "    " + ", ".join('"%s"' % group for _, group, _ in groups),
              "};",
              "// clang-format on",
              "} // namespace",
              "",
              "const std::array<const char*, groupCount>& groupNames() noexcept",
              "{",
              "    return names;",
              "}",
              "",
              "std::span<const TableRow> table() noexcept",
              "{",
              "    return rows;",
              "}",
              "} // namespace Presets",
              ""]
    return "\n".join(lines)


def documentation():
    """The lists of what every row is made from."""
    recordings = recording_lines()
    lines = []

    for category, (group, group_base, entries) in enumerate(GROUPS):
        kind = " (channels)" if group == "OTHER" and category < 8 else " (mixes)" if group == "OTHER" else ""
        lines += ["", "## " + group + kind, "", NOTES[category], ""]

        if any("values" not in entry and entry["base"] is None for entry in entries):
            lines += ["Base of its modelled rows, 320 Hz to 15 kHz: %s."
                      % ", ".join("%g" % offset for offset in BASES[group_base]), ""]

        lines += ["| id | preset | loudness | base | tilt | low mid | presence | air | why |",
                  "|---|---|---|---|---|---|---|---|---|"]
        used = []

        for entry in entries:
            if "values" in entry:
                lines.append("| %d | %s | %.2f | given | | | | | |" % (entry["id"], entry["name"], entry["lufs"]))
                continue

            base = entry["base"]
            used += [base] if base in recordings and base not in used else []
            made = "modelled" if base is None else "measured: " + base if base in recordings else "modelled: " + base
            lines.append("| %d | %s | %.1f | %s | %s | %s |"
                         % (entry["id"], entry["name"], entry["lufs"], made,
                            " | ".join("%g" % value for value in entry["modifiers"]), entry["why"]))

        if used:
            lines.append("")

        lines += ["- %s: %s" % (name, recordings[name]["recordings"]) for name in used]

    return "\n".join(lines) + "\n"


def read(path):
    with open(path, encoding="utf-8", newline="") as file:
        return file.read()


def main():
    arguments = sys.argv[1:]

    if arguments not in ([], ["--check"], ["--data"]):
        sys.exit(__doc__)

    groups = library()

    if arguments == ["--data"]:
        for category, group, rows in groups:
            for number, name, lufs, values in rows:
                print("\t".join([str(category), group, str(number), name, str(lufs)] + ["%.2f" % v for v in values]))

        return

    files = {TABLE: cpp_table(groups), DOCUMENT: read(DOCUMENT).split(MARKER)[0] + MARKER + documentation()}

    for path, text in files.items():
        if arguments == ["--check"]:
            if read(path) != text:
                sys.exit("%s is not what tools/make-presets.py writes; run it again." % os.path.relpath(path))
        else:
            with open(path, "w", encoding="utf-8", newline="\n") as file:
                file.write(text)


if __name__ == "__main__":
    main()
