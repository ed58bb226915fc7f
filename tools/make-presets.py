#!/usr/bin/env python3
"""Writes the library of tonal balances, source/core/presets/PresetTable.cpp, and the lists of docs/presets.md.

    tools/make-presets.py            writes the two files
    tools/make-presets.py --check    fails where one that is there differs
    tools/make-presets.py --data     prints group, name, lufs and the ten values in use of every preset, for plots

A preset's loudness is set by hand. Its ten values are its loudness, plus the base of its group, plus modifiers set by
hand, which are what an engineer would do to one kind of music to arrive at the other:

    base      offsets of the group's bands against the overall loudness
    weight    dB taken from every band: what lies below 320 Hz sets the loudness, but shows in no band
    tilt      dB per octave around 1 kHz
    low_mid   dB, a bell one octave either way around 400 Hz
    mid       dB, a bell one octave either way around 1.2 kHz
    presence  dB, a bell around 3 kHz
    air       dB per octave above 8 kHz
    cut       from this frequency on, so many dB per octave less: a cabinet, or a drum that ends there

Values lie on the meter's scale, whose floor is at -70. A row whose music ends below 18 kHz runs out into a floor a little
above that, falling to the last. The band at 18 kHz is never measured but extrapolated, as the plug-in does it. Nothing
here is random.
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
FLOOR = -69.4
LOWEST = -69.5
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


def row(number, name, lufs, why, weight=0.0, tilt=0.0, low_mid=0.0, mid=0.0, presence=0.0, air=0.0, cut=None):
    """A row that is computed. `why` says what the modifiers stand for; `cut` is a frequency and dB per octave."""
    return {"id": number, "name": name, "lufs": lufs, "why": why,
            "modifiers": {"weight": weight, "tilt": tilt, "low_mid": low_mid, "mid": mid, "presence": presence,
                          "air": air, "cut": cut}}


ZEROS = [0.0] * 10

# Group, its base, its rows: number, name, lufs, what the modifiers stand for, the modifiers.
GROUPS = [
    ("PRESET", None, [
        given(1, "NO TARGETS", 0.0, ZEROS),
        given(130, "USER SETTING", 0.0, ZEROS),
        given(131, "BALANCED MASTER", -6.393050,
              [-18.34, -20.64, -21.80, -23.32, -23.83, -24.00, -23.77, -26.18, -34.33, -39.70]),
    ]),
    ("BASS", "BASS", [
        given(2, "808", -12.406793, [-42.34, -49.51, -57.93, -66.11, -69.31, 0.0, 0.0, 0.0, 0.0, 0.0]),
        row(3, "CLEAN ROCK", -11.6, "round-wound strings, clean, with fingers' and fret's click",
            tilt=2.0, low_mid=5.5, mid=4.0, presence=6.5, air=-2.5),
        given(4, "DARK POP", -11.877717, [-24.84, -34.09, -36.01, -43.17, -43.61, -47.01, -56.21, -61.61, -69.13]),
        row(5, "GRITTY ROCK", -11.2, "overdrive growls up to 3 kHz, the cabinet shuts above",
            tilt=1.4, low_mid=5.5, mid=7.0, presence=9.0, air=-3.0),
        row(6, "METAL", -10.8, "scooped low mids, pick clank at 3 kHz, heavy compression",
            tilt=3.0, low_mid=3.5, mid=2.0, presence=12.0, air=-7.0),
        row(7, "POP BASS SYNTH", -11.0, "saws behind a low-pass filter: full mids, no click",
            tilt=0.2, low_mid=3.5, mid=5.5, presence=3.0, air=-0.5),
        row(8, "SOFT POP BASS", -11.5, "fingers near the neck; the tone control is shut",
            tilt=-0.4, low_mid=1.5, mid=1.5, presence=0.5, air=-1.0),
    ]),
    ("DRUMS", "DRUMS", [
        row(9, "CLAPS", -17.5, "all in the hands at 1 to 2 kHz, layered, with noise above",
            tilt=1.2, low_mid=-6.5, mid=11.0, presence=5.0),
        row(10, "FULL KIT CLEAN TIGHT POP", -13.0, "close microphones, little room, open cymbals",
            tilt=0.9, low_mid=0.5, mid=-2.0, presence=1.0, air=0.5),
        row(11, "FULL KIT CRISP ELECTRONIC", -11.5, "samples with bright hats and no room",
            tilt=1.6, mid=-2.5, air=1.0),
        row(12, "FULL KIT DARK POP", -13.6, "damped heads, dark cymbals, tape",
            tilt=-2.8, low_mid=-2.0, mid=1.5, presence=1.5, air=-2.0),
        row(13, "FULL KIT LIVE ROCK", -14.2, "a player in a room, which fills the low mids and dulls the cymbals",
            tilt=-0.5, low_mid=1.5, mid=1.0, presence=2.0, air=-1.3),
        row(14, "FULL KIT POP ROCK", -12.4, "produced: snare's crack and open cymbals",
            tilt=-0.1, low_mid=0.5, mid=-1.0, presence=3.2, air=0.4),
        row(15, "FULL KIT ROCK", -12.0, "large shells, loud snare; cymbals held back",
            tilt=-0.9, low_mid=2.6, mid=-1.4, presence=4.6, air=0.3),
        row(16, "KICK ELECTRONIC", -11.0, "a falling sine and the shortest click",
            weight=22.0, tilt=-2.0, low_mid=-2.0, presence=2.0, cut=(4000, 9)),
        row(17, "KICK HOUSE", -11.0, "punch: the sweep still sounds at 320 Hz, noise makes the click",
            weight=13.0, tilt=-3.0, low_mid=-1.0, mid=0.5, presence=3.0, cut=(4000, 6)),
        row(18, "KICK LIVE ROCK", -11.5, "boom, box and a beater at 3 to 4 kHz",
            weight=7.0, tilt=-2.5, low_mid=-2.0, mid=-2.0, presence=8.0, cut=(4000, 10)),
        row(19, "KICK POP", -10.8, "tight and scooped, with a soft click",
            weight=9.0, tilt=-2.5, low_mid=-4.0, mid=-4.5, presence=5.0, cut=(4000, 10)),
        row(20, "OVERHEADS", -22.0, "cymbals; body is left to the close microphones",
            tilt=2.8, mid=-2.0, presence=0.5, air=1.0),
        row(21, "SNARE BRIGHT", -15.0, "tuned high: wires and crack",
            tilt=2.0, low_mid=4.0, presence=5.0, air=-0.5),
        row(22, "SNARE DEEP", -15.6, "tuned low; shell before wires",
            tilt=-2.0, low_mid=4.5, mid=1.5, presence=4.5, air=-2.0),
        row(23, "SNARE LIVE ROCK", -16.4, "wooden shell, hit hard, in a room",
            tilt=-0.4, low_mid=5.0, mid=2.6, presence=5.5, air=-2.0),
        row(24, "SNARE POP", -14.4, "sampled, tight, top opened",
            tilt=1.3, low_mid=4.5, mid=-0.5, presence=4.5),
        row(25, "TOMS", -14.0, "tone below 640 Hz, sticks above, no cymbals",
            weight=0.5, tilt=-5.0, low_mid=-3.5, mid=-1.0, presence=4.0, air=-2.0),
    ]),
    ("GUITAR", "GUITAR", [
        row(26, "ACOUSTIC", -18.0, "steel strings before a microphone: no cabinet, all their shimmer",
            tilt=3.7, low_mid=4.0, mid=-3.0, presence=-4.0, air=3.5),
        row(27, "BRITPOP ELECTRIC", -14.5, "chiming small amplifier, forward mids",
            tilt=1.0, low_mid=-1.0, mid=0.8, presence=2.2, air=-1.5),
        row(28, "CLEAN ELECTRIC", -15.0, "single coils into a clean amplifier, its bright switch on",
            tilt=1.6, low_mid=3.0, mid=-1.5, presence=-3.0, air=0.5),
        row(29, "CLEAN POP LEAD", -13.5, "single notes, smooth and compressed, with sheen",
            tilt=1.9, low_mid=0.8, mid=1.5, presence=-2.5, air=2.5),
        row(30, "DISTORTED ELECTRIC", -13.2, "power chords: full mids, an edge, then the cabinet",
            tilt=0.1, low_mid=-0.5, mid=0.3, presence=4.0, air=-2.5),
        row(31, "FUNKY LEAD", -17.5, "short strokes straight into the desk, no low mids",
            tilt=2.9, low_mid=-1.0),
        row(32, "GRITTY ELECTRIC", -13.5, "edge of breaking up",
            tilt=-0.1, mid=0.5, presence=2.5, air=-1.0),
        row(33, "METAL", -12.4, "palm mutes below, scooped mids, fizz at 3 kHz, nothing above the cabinet",
            tilt=-0.3, low_mid=0.3, mid=-3.0, presence=6.2, air=-3.5),
        row(34, "MODERN ROCK", -13.0, "wall of layered guitars, thick in the low mids",
            tilt=0.1, low_mid=2.4, mid=-1.0, presence=2.4, air=-0.4),
    ]),
    ("OTHER", "OTHER CHANNELS", [
        row(35, "CELLO", -22.0, "wood and low strings, a little bow noise",
            tilt=-2.2, low_mid=2.2, mid=-2.0, air=1.5),
        row(36, "DENSE MUSIC STEM", -10.5, "everything but drums and voice, which leave room in the mids",
            tilt=1.3, low_mid=2.5, mid=-3.0, presence=-2.0, air=0.5),
        row(37, "FULL STRING SECTION", -19.0, "violins above, many bows, a hall's air",
            tilt=0.6, low_mid=3.2, mid=-1.5, presence=-0.5, air=0.5),
        row(38, "PIANO & STRINGS", -17.0, "a grand's body below a soft section",
            tilt=-0.8, low_mid=1.8, mid=-2.5, presence=-1.0, air=1.2),
        row(39, "POP HORN SECTION", -16.0, "trumpets over trombones and saxophones, blown hard, close",
            tilt=3.4, low_mid=5.0, mid=0.8, presence=0.5, air=3.5),
        given(40, "TRUMPET", -35.943893,
              [-58.74, -47.50, -42.19, -41.76, -43.03, -44.79, -48.35, -49.34, -54.24, -59.35]),
        row(41, "VOCAL CHOPS", -14.5, "pitched-up slices of a bright voice",
            tilt=2.7, low_mid=1.0, mid=-2.3, presence=-3.0, air=3.5),
    ]),
    ("PIANO", "PIANO", [
        row(42, "70s ROCK", -13.6, "upright with forward mids, to tape",
            tilt=-0.6, low_mid=-1.0, mid=2.0, presence=1.0, air=-2.5),
        row(43, "DARK POP", -13.0, "felt, lid closed",
            tilt=-2.0, low_mid=-0.8, air=-1.0),
        row(44, "ELECTRIC", -16.0, "reeds that bark, some drive",
            low_mid=-0.4, mid=2.4, presence=3.6, air=-1.0),
        row(45, "HAMMOND ORGAN", -11.5, "drawbars and a driven horn, which a rotary cabinet ends at 6 kHz",
            tilt=-0.6, low_mid=-0.5, mid=1.5, presence=5.0, air=-2.0, cut=(5000, 4)),
        row(46, "POP KEYS", -14.0, "layered bright keys that cut through",
            tilt=2.4, low_mid=1.0, mid=-0.5, presence=1.0, air=-1.0),
        row(47, "RHODES", -12.0, "round tines, a small bell, no more above",
            tilt=-1.8, low_mid=-1.2, mid=2.8, presence=1.5, air=-1.0),
        row(48, "RICH CLEAR", -17.0, "concert grand, lid open",
            tilt=1.7, low_mid=3.3, air=-1.0),
    ]),
    ("SYNTHS", "SYNTHS", [
        row(49, "BRASS LEAD", -14.5, "stacked saws with a filter that opens half",
            tilt=-1.2, mid=2.5, presence=2.5, air=-1.2),
        row(50, "DUB DROP", -11.0, "a bass that growls up to 3 kHz",
            tilt=0.6, low_mid=1.2, mid=-1.8, presence=1.5, air=-0.2),
        row(51, "LEAD", -13.5, "cuts through at 3 kHz",
            tilt=0.5, low_mid=-0.5, mid=0.6, presence=2.5, air=-1.0),
        row(52, "POP PLUCK", -16.5, "short, clicking attack, little body",
            tilt=1.6, low_mid=-1.6, mid=-0.4, presence=-0.8, air=0.2),
        row(53, "POP", -14.0, "polished pad and chords, soft presence and sheen",
            tilt=0.4, mid=-0.4, presence=-0.9, air=1.0),
        row(54, "RICH PLUCK", -15.5, "body and a soft attack",
            tilt=-0.2, low_mid=2.5, presence=-0.5, air=-0.6),
        row(55, "ROCK", -13.0, "driven through an amplifier and its cabinet",
            tilt=-1.1, low_mid=-0.5, mid=1.0, presence=4.0, air=-3.5),
        row(56, "SAW LEAD", -13.0, "detuned saws, filter open",
            tilt=1.7, low_mid=3.0, mid=1.2, presence=1.2),
    ]),
    ("VOCALS", "VOCALS", [
        row(57, "FEMALE BACKING", -20.0, "thinned and airy, behind the lead",
            tilt=0.2, low_mid=-2.8, mid=-0.5, presence=-0.8, air=2.0),
        row(58, "FEMALE JAZZ", -19.5, "close and smooth, little processing",
            low_mid=1.2, mid=1.2, presence=-1.2, air=0.2),
        row(59, "FEMALE POP", -16.0, "bright, compressed, up front",
            tilt=0.8, low_mid=-1.0, mid=-0.3, presence=1.5, air=1.5),
        row(60, "FEMALE R&B", -17.0, "breathy and full",
            tilt=0.4, low_mid=1.0, mid=-0.6, presence=0.2, air=2.4),
        row(61, "FEMALE ROCK", -15.5, "belted; edge at 3 kHz",
            tilt=0.6, low_mid=0.4, mid=0.6, presence=3.4),
        row(62, "MALE BRITPOP", -16.5, "nasal: forward at 1 kHz, thin below and dull above",
            tilt=0.4, low_mid=-2.0, mid=2.2, presence=0.3, air=-1.8),
        row(63, "MALE DARK POP", -17.5, "low and close, top rolled off",
            tilt=-1.5, low_mid=0.5, air=-2.0),
        row(64, "MALE POP BACKING", -20.5, "softened, behind the lead",
            tilt=-0.3, low_mid=-2.6, mid=-0.6, presence=-1.6, air=1.6),
        row(65, "MALE POP", -16.0, "clear and compressed",
            tilt=0.3, low_mid=-0.3, presence=1.0, air=1.0),
        row(66, "MALE R&B", -17.5, "warm with breath",
            tilt=-0.5, low_mid=2.4, mid=-0.4, presence=0.3, air=1.6),
        row(67, "MALE RAP", -14.5, "dry, close, every consonant",
            tilt=0.1, low_mid=2.4, mid=-0.6, presence=3.0, air=-0.2),
        row(68, "MALE ROCK BACKING", -18.5, "shouted from behind",
            tilt=-0.4, low_mid=-2.0, mid=1.4, presence=0.8, air=-0.6),
        row(69, "MALE ROCK", -15.0, "rough, with drive",
            tilt=0.1, low_mid=0.8, mid=1.5, presence=3.4, air=-1.4),
        row(70, "MALE VOCAL BUS", -13.5, "leads and doubles together",
            low_mid=0.4, presence=0.8, air=0.2),
    ]),
    ("ELECTRONIC", "ELECTRONIC", [
        given(71, "DANCE", -4.553161,
              [-19.09, -18.05, -17.32, -21.16, -22.30, -24.17, -23.53, -23.59, -28.50, -35.67]),
        row(72, "DRUM & BASS", -4.7, "fast breaks and hats over sub bass, little between",
            tilt=0.1, low_mid=-1.8, mid=-1.0, presence=1.4, air=0.5),
        row(73, "DUBSTEP", -4.4, "growls from 300 Hz to 3 kHz",
            tilt=-0.3, low_mid=2.0, mid=1.0, presence=1.0, air=-0.8),
        row(74, "EDM", -4.5, "wide saws and rises of white noise",
            tilt=0.3, mid=1.2, presence=0.3, air=0.3),
        row(75, "HARDSTYLE", -4.3, "the distorted kick fills the mids",
            tilt=0.2, low_mid=1.0, mid=3.2, presence=2.2, air=-1.4),
        row(76, "MOOMBAHTON", -5.2, "half tempo: drums and a stabbing lead, sparse around them",
            weight=0.3, tilt=-0.4, low_mid=-1.4, mid=-0.8, presence=2.2, air=0.4),
        row(77, "TRANCE", -5.1, "open hats over wide pads",
            tilt=0.5, low_mid=1.8, mid=-0.5, presence=-1.2, air=1.5),
        row(78, "TRAP", -5.0, "an 808, little above it, then hats",
            weight=0.5, tilt=-0.2, low_mid=-2.8, mid=-1.8, air=2.8),
    ]),
    ("HIP HOP", "HIP HOP", [
        row(79, "CONTEMPORARY", -5.4, "808, dry voice, bright hats",
            weight=0.4, tilt=-0.3, low_mid=-2.4, mid=-2.0, presence=-0.4, air=2.6),
        row(80, "EAST COAST", -6.6, "sampled loops, dusty breaks",
            tilt=-0.4, low_mid=1.5, mid=0.8, presence=0.4, air=-1.2),
        row(81, "GANGSTA RAP", -6.2, "voice forward, whining lead",
            tilt=-0.2, low_mid=0.2, mid=-0.8, presence=2.0, air=-0.4),
        row(82, "GRIME", -5.2, "cold square waves, fast voice",
            tilt=0.4, low_mid=-1.4, mid=0.8, presence=1.2, air=-0.4),
        row(83, "OLD SKOOL", -7.6, "drum machine and voice, vinyl's top",
            tilt=-0.5, low_mid=-0.6, mid=1.0, presence=1.2, air=-1.5),
        row(84, "POP RAP", -5.1, "pop gloss on the beat",
            tilt=0.4, low_mid=1.2, mid=0.4, presence=0.8, air=0.5),
    ]),
    ("HOUSE", "HOUSE", [
        row(85, "CLASSIC", -7.0, "sampled pianos and strings, early converters",
            tilt=-0.5, low_mid=0.6, mid=0.6, air=-1.5),
        row(86, "COMMERCIAL", -5.0, "bright, voice and piano ahead",
            tilt=0.3, low_mid=0.8, mid=0.2, presence=0.8, air=0.7),
        row(87, "DEEP", -6.2, "soft chords, filtered top",
            tilt=-1.0, low_mid=0.8, presence=-0.3, air=-1.0),
        row(88, "ELECTRO", -4.8, "buzzing mids",
            tilt=0.2, low_mid=0.8, mid=2.6, presence=2.0, air=-0.8),
        row(89, "FUTURE", -4.9, "metallic stabs, hollow below",
            tilt=-0.2, low_mid=-2.8, mid=-1.2, presence=0.3, air=2.4),
        row(90, "PROGRESSIVE", -5.5, "long pads, wide and full",
            tilt=-0.2, low_mid=1.8, mid=0.4, presence=-0.5, air=0.6),
        row(91, "TECH", -5.6, "dry percussion, empty low mids",
            tilt=-0.4, low_mid=-2.2, mid=-1.2, presence=1.8, air=-0.2),
        row(92, "TROPICAL", -5.7, "marimbas and breath, soft presence",
            tilt=-0.2, low_mid=-0.8, mid=1.0, presence=-1.5, air=1.2),
    ]),
    ("OTHER", "OTHER MIXES", [
        row(93, "COUNTRY", -6.6, "acoustic strings, steel guitar, voice ahead",
            tilt=0.4, low_mid=-0.6, mid=-0.4, presence=1.6, air=0.8),
        row(94, "DISCO", -7.6, "open hats and string machines, soft presence",
            tilt=0.6, low_mid=0.2, mid=-0.4, presence=-1.4, air=0.5),
        row(95, "FUNK", -7.4, "tight guitars and horns",
            tilt=0.1, low_mid=0.2, mid=1.8, presence=1.2, air=-0.8),
        row(96, "JAZZ", -8.3, "natural balance, brushed cymbals",
            tilt=-0.6, low_mid=1.0, mid=1.2, presence=-0.8, air=0.8),
        row(97, "K POP", -4.8, "dense, glossy and bright",
            tilt=1.2, low_mid=0.5, presence=-0.2, air=2.2),
        row(98, "METAL", -4.7, "scooped; guitars' edge and beater click",
            tilt=0.4, low_mid=-1.4, mid=-1.2, presence=3.2, air=-0.2),
        row(99, "MOTOWN", -7.9, "forward mids for small radios, no top",
            tilt=-0.5, low_mid=-0.2, mid=2.4, presence=0.6, air=-1.5),
        row(100, "ORCHESTRAL", -8.5, "strings, woodwind and horns in a hall; nothing is close",
            tilt=-1.7, low_mid=1.0, mid=1.6, presence=0.4),
        row(101, "REGGAE", -7.2, "bass first, organ and guitar behind",
            weight=1.0, tilt=-0.5, mid=-1.4, presence=-1.4, air=-1.2),
        row(102, "REGGAETON", -5.2, "drum machine and voice, little between, club top",
            weight=0.4, tilt=0.9, low_mid=-1.6, mid=-1.6, presence=1.2, air=1.4),
        row(103, "SOUL", -7.5, "warm band, voice ahead",
            tilt=-0.2, low_mid=1.8, mid=1.0, presence=1.6, air=-0.4),
    ]),
    ("POP", "POP", [
        row(104, "CONTEMPORARY", -5.3, "clean low mids, airy voice",
            low_mid=-0.6, mid=0.2, presence=0.4, air=1.4),
        row(105, "DANCE", -4.8, "club drums, bright synths",
            tilt=0.5, low_mid=-1.7, mid=-1.0, presence=-0.3, air=0.3),
        row(106, "ELECTRONIC", -5.2, "pads and bright percussion",
            tilt=0.4, low_mid=1.0, mid=-0.5, presence=-0.8, air=1.0),
        row(107, "HIP HOP", -5.2, "808 and hats under a pop voice",
            weight=0.6, tilt=-0.6, low_mid=-1.6, mid=-2.0, presence=1.2, air=1.6),
        row(108, "LATIN", -5.6, "percussion and nylon strings",
            tilt=0.1, low_mid=0.2, mid=0.4, presence=2.6, air=0.2),
        row(109, "ROCK", -5.4, "guitars fill the mids",
            tilt=-0.2, low_mid=1.2, mid=2.0, presence=1.4, air=-1.2),
        row(110, "SYNTH", -6.1, "analogue pads, drum machine",
            tilt=-0.2, low_mid=1.3, presence=-1.0, air=0.4),
        row(111, "WARM", -7.0, "round and soft",
            tilt=-1.0, low_mid=0.6, mid=0.3, air=-1.0),
    ]),
    ("R&B", "R&B", [
        row(112, "90's", -7.0, "swing beats, layered voices",
            tilt=0.1, low_mid=1.2, mid=0.4, presence=1.0),
        row(113, "CONTEMPORARY", -5.6, "sub bass, sparse mids, breath",
            weight=0.4, tilt=-0.1, low_mid=-1.4, mid=-0.8, presence=-0.2, air=1.9),
        row(114, "OLD SKOOL", -7.8, "band to tape",
            tilt=-0.5, low_mid=1.0, mid=0.6, air=-1.5),
        row(115, "RHYTHM & BLUES", -8.2, "horns and shouted voice, no top",
            tilt=-0.2, low_mid=1.0, mid=2.0, presence=1.8, air=-1.8),
    ]),
    ("ROCK", "ROCK", [
        row(116, "ALTERNATIVE", -5.6, "loud guitars, raw snare",
            tilt=0.2, low_mid=0.5, mid=0.5, presence=1.2, air=0.1),
        row(117, "CLASSIC", -7.5, "tape and tubes",
            tilt=-0.6, low_mid=0.2, mid=0.8, presence=-0.2, air=-1.6),
        row(118, "CONTEMPORARY", -4.9, "sample-reinforced drums, bright",
            tilt=0.6, low_mid=-0.6, mid=-0.8, presence=0.8, air=0.8),
        row(119, "ELECTRONIC", -5.0, "machines beside guitars",
            tilt=0.9, low_mid=-1.3, mid=-0.5, presence=-0.8, air=1.5),
        row(120, "HARD", -4.8, "guitars' edge",
            tilt=0.3, mid=-0.3, presence=3.0, air=-0.3),
        row(121, "INDIE", -6.2, "room sound, loose low mids",
            tilt=-0.1, low_mid=2.2, mid=-0.4, presence=0.8, air=-0.2),
        row(122, "PROGRESSIVE", -7.1, "wide range, keyboards and cymbals",
            low_mid=-0.4, mid=-0.8, presence=-0.8, air=0.8),
    ]),
    ("STAR ENGINEERS", "POP", [
        row(123, "ALT-ROCK HERO", -4.9, "big drums, guitars in front, a rock mix's top",
            tilt=-0.8, low_mid=0.8, mid=2.2, presence=4.6, air=-0.6),
        row(124, "DANCE-POP GURU", -4.6, "tight below, bright above",
            tilt=0.5, low_mid=-1.4, mid=-0.2, presence=0.4, air=1.2),
        row(125, "EXPENSIVE POP GENIUS", -5.4, "smooth presence and silk on top",
            tilt=0.1, low_mid=-0.5, mid=-0.3, presence=-0.9, air=2.2),
        row(126, "HIP-HOP KING", -5.0, "low end first, crisp snare",
            weight=0.7, tilt=-0.3, low_mid=-1.6, mid=-0.6, presence=0.5, air=0.4),
        given(127, "MODERN ROCK MASTER", -4.324515,
              [-14.61, -13.21, -12.78, -13.65, -16.72, -20.43, -24.72, -30.36, -38.09, -43.71]),
        row(128, "POP-SOUL CHIEF", -6.2, "warm band under a close voice",
            tilt=-0.5, low_mid=1.4, mid=0.3, presence=0.3),
        row(129, "R&B BOSS", -5.5, "soft mids, open top",
            weight=0.3, tilt=-0.2, low_mid=0.3, mid=-0.7, presence=-0.7, air=1.9),
    ]),
]


# What is said of each group in the documentation, by category.
NOTES = [
    "All given.",
    "808 and DARK POP are given. The base is a plain electric bass through a dark amplifier: strings and pick come as "
    "mid and presence.",
    "The base is a produced kit. Kicks and toms take their weight from below 320 Hz, and kicks end above their click.",
    "The base is an electric guitar through a cabinet, which falls steeply above 5 kHz. What is brighter there went past "
    "the cabinet.",
    "TRUMPET is given. The base is a sustained instrument with its weight between 320 Hz and 1 kHz.",
    "The base is a grand piano at a distance.",
    "The base is a filtered saw.",
    "Voices hold even from 320 Hz to 1 kHz, have consonants at 3 kHz and breath above 8 kHz.",
    "DANCE is given, and the base lies around it: even up to 1 kHz, slowly falling above, hats up to 15 kHz.",
    "Less between bass and voice than electronic music, and less top.",
    "Electronic music, half a decibel thinner below 1 kHz.",
    "Band music without much processing at the top.",
    "Between electronic and band music, voice in front.",
    "Pop with a little less above 1 kHz.",
    "Guitars fill up to 3 kHz and fall steeply from there, as MODERN ROCK MASTER does.",
    "MODERN ROCK MASTER is given. The others start from pop and move to the music that each is known for.",
]


# Presets of instruments of which there are free recordings. From 320 Hz to 6 kHz, where those hold what a microphone
# heard, their shapes differ by less than this, as root mean square at equal means.
HIGHEST_DISTANCE = 3.5
BANDS_COMPARED = 7
RECORDED = {3: "bass-bright", 8: "bass-soft", 13: "kit-live", 14: "kit-pop-rock", 15: "kit-rock", 18: "kick-live",
            20: "overheads", 23: "snare-live", 25: "toms", 26: "guitar-steel", 35: "cello", 37: "strings", 39: "horns",
            44: "electric-piano", 48: "piano", 100: "orchestra"}


def distance(values, recorded):
    """Root mean square of the difference of two shapes, in dB."""
    differences = [a - b for a, b in zip(values[:BANDS_COMPARED], recorded)]
    mean = sum(differences) / BANDS_COMPARED
    return math.sqrt(sum((difference - mean) ** 2 for difference in differences) / BANDS_COMPARED)


def comparison_with_recordings():
    """A table of how far presets lie from recordings; ends the program where one lies too far."""
    with open(os.path.join(HERE, "measured-recordings.csv"), newline="", encoding="utf-8") as file:
        recordings = {line["name"]: line for line in csv.DictReader(file)}

    lines = ["", "## Against recordings", "", "| id | preset | recordings | distance |", "|---|---|---|---|"]

    for _, _, rows in library():
        for number, name, _, values in rows:
            if number in RECORDED:
                recording = recordings[RECORDED[number]]
                apart = distance(values, [float(recording[str(centre)]) for centre in CENTRES])
                lines.append("| %d | %s | %s | %.1f dB |" % (number, name, recording["recordings"], apart))

                if apart > HIGHEST_DISTANCE:
                    sys.exit("%s lies %.1f dB from its recordings" % (name, apart))

    return lines


def bell(frequency, centre, octaves):
    return math.exp(-(math.log2(frequency / centre) / octaves) ** 2)


def modifier(frequency, weight, tilt, low_mid, mid, presence, air, cut):
    """The sum of a row's modifiers at a frequency, in dB."""
    cut_from, cut_slope = cut or (frequency, 0.0)
    return (-weight
            + tilt * math.log2(frequency / 1000)
            + low_mid * bell(frequency, 400, 1.0)
            + mid * bell(frequency, 1200, 1.0)
            + presence * bell(frequency, 3000, 1.2)
            + air * max(0.0, math.log2(frequency / 8000))
            - cut_slope * max(0.0, math.log2(frequency / cut_from)))


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


def run_out(levels):
    """Lets nine levels that fall below the floor run out into it instead: 10 kHz keeps half of the way from 6 kHz to the
    floor, and 15 kHz rises as far as it takes for the curve through the three to reach 18 kHz above the floor."""
    levels[7] = max(levels[7], (levels[6] + FLOOR) / 2)
    low, high = levels[8], levels[7]

    if top_band(levels[6:9]) >= FLOOR:
        return levels

    while high - low > 0.001:
        middle = (low + high) / 2
        low, high = (low, middle) if top_band([levels[6], levels[7], middle]) >= FLOOR else (middle, high)

    return levels[:8] + [high]


def top_band_in_use(values):
    """What the plug-in aims at at 18 kHz: the extrapolated level, or what is stored where there is no curve."""
    return values[9] if values[6] == values[7] == values[8] else top_band(values[6:9])


def computed(entry, base):
    levels = [entry["lufs"] + offset + modifier(frequency, **entry["modifiers"])
              for frequency, offset in zip(CENTRES, base)]
    values = [round(level, 2) for level in run_out(levels)]
    values.append(round(top_band(values[6:9]), 2))

    for frequency, value in zip(CENTRES, values):
        if not LOWEST <= value <= HIGHEST:
            sys.exit("%s: %.2f at %d Hz is outside %.1f to %.1f" % (entry["name"], value, frequency, LOWEST, HIGHEST))

    return values


def values_of(entry, group_base):
    return entry["values"] if "values" in entry else computed(entry, BASES[group_base])


def library():
    """Category, group name and (id, name, lufs, values) of each row."""
    return [(category, group,
             [(entry["id"], entry["name"], entry["lufs"], values_of(entry, base)) for entry in entries])
            for category, (group, base, entries) in enumerate(GROUPS)]


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


def modifier_cells(modifiers):
    """One cell for each modifier; nothing where it is 0."""
    cut = "-%g from %g kHz" % (modifiers["cut"][1], modifiers["cut"][0] / 1000) if modifiers["cut"] else ""
    return ["%g" % modifiers[name] if modifiers[name] else ""
            for name in ("weight", "tilt", "low_mid", "mid", "presence", "air")] + [cut]


def in_use(values):
    return "%.2f" % top_band_in_use(values) if len(values) < 10 or any(values[6:9]) else "as stored"


def documentation():
    """How far rows lie from recordings, what every row is made from, and its values."""
    lines = comparison_with_recordings()

    for category, (group, base, entries) in enumerate(GROUPS):
        kind = " (channels)" if group == "OTHER" and category < 8 else " (mixes)" if group == "OTHER" else ""
        lines += ["", "## " + group + kind, "", NOTES[category], ""]
        made = [entry for entry in entries if "values" not in entry]

        if made:
            lines += ["Base, 320 Hz to 15 kHz: %s." % ", ".join("%g" % offset for offset in BASES[base]), "",
                      "| id | preset | loudness | weight | tilt | low mid | mid | presence | air | cut | why |",
                      "|---|---|---|---|---|---|---|---|---|---|---|"]
            lines += ["| %d | %s | %.1f | %s | %s |" % (entry["id"], entry["name"], entry["lufs"],
                                                       " | ".join(modifier_cells(entry["modifiers"])), entry["why"])
                      for entry in made]
            lines.append("")

        lines += ["| id | preset | 320 | 640 | 1k | 2k | 3k | 4k | 6k | 10k | 15k | 18k stored | 18k in use |",
                  "|---|---|---|---|---|---|---|---|---|---|---|---|---|"]

        for entry in entries:
            values = values_of(entry, base)
            cells = ["%.2f" % value for value in values] + [""] * (10 - len(values)) + [in_use(values)]
            lines.append("| %d | %s | %s |" % (entry["id"], entry["name"], " | ".join(cells)))

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
                used = values[:9] + [top_band_in_use(values)]
                print("\t".join([str(category), group, str(number), name, str(lufs)] + ["%.2f" % v for v in used]))

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
