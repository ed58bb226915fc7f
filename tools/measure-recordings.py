#!/usr/bin/env python3
"""Measures free recordings of instruments, which make-presets.py holds its rows against, from Debian's packages.

    tools/measure-recordings.py build/release/tools/measure-recording > tools/measured-recordings.csv

It needs sox, fluidsynth and the packages sonic-pi-samples, fluid-soundfont-gm, avldrums.lv2-soundfont and
wesnoth-1.16-music. The figures are checked in, so that nobody needs these to make the presets.

Each line of the output holds a name, ten values in dB against the recording's overall loudness, and what was measured.
Where several recordings stand behind a name, the values are their mean in dB, as a target made from several tracks is.
"""

import csv
import struct
import subprocess
import sys
import tempfile

RATE = 48000
SONIC_PI = "/usr/share/sonic-pi/samples"
WESNOTH = "/usr/share/games/wesnoth/1.16/data/core/music"
SOUND_FONTS = "/usr/share/sounds/sf2"
GM = "FluidR3_GM"
PEARL = "Black_Pearl_4_LV2"
ZEPPELIN = "Red_Zeppelin_4_LV2"
TICKS_PER_BEAT = 48
PROGRAMS = {0: "grand piano", 5: "electric piano", 25: "steel guitar", 33: "fingered bass", 34: "picked bass",
            36: "slapped bass", 42: "cello", 48: "strings", 61: "brass section"}


def hits(period, *names):
    """One-shots, each struck anew every `period` seconds and cut off by the next."""
    return [("struck every %g s" % period, ["%s/%s.flac" % (SONIC_PI, n), period]) for n in names]


def loops(*names):
    return [("looped", ["%s/%s.flac" % (SONIC_PI, n), None]) for n in names]


def scores(*names):
    return [("as a whole", ["%s/%s.ogg" % (WESNOTH, n), None]) for n in names]


def decoded(path, period):
    command = ["sox", "-V1", "-D", path, "-r", str(RATE), "-c", "2", "-e", "float", "-b", "32", "-L", "-t", "raw", "-"]

    if period is not None:
        command += ["pad", "0", str(period), "trim", "0", str(period)]

    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


# ----------------------------------------------------------------------------------------------------------------------
# Phrases for recorded instruments: (start in beats, length in beats, MIDI note, velocity) at 120 beats a minute.


def strum(chords, each, count, velocity=96):
    """`count` strokes of `each` beats on every chord."""
    notes = []
    beat = 0.0

    for chord in chords:
        for stroke in range(count):
            notes += [(beat, each * 0.95, note, velocity - 14 * (stroke % 2)) for note in chord]
            beat += each

    return notes


def line(notes, each, velocity=100):
    return strum([[note] for note in notes], each, 1, velocity)


POP_CHORDS = [[48, 55, 60, 64, 67], [45, 57, 60, 64, 69], [41, 57, 60, 65, 69], [43, 55, 59, 62, 67]]
OPEN_GUITAR = [[40, 47, 52, 55, 59, 64], [43, 47, 50, 55, 59, 67], [50, 57, 62, 66], [45, 52, 57, 61, 64]]
BASS_LINE = [28, 28, 40, 28, 31, 31, 43, 31, 33, 33, 45, 33, 26, 28, 38, 40]
KEYS_HIGH = [[60, 64, 67, 72, 76], [57, 64, 69, 72, 76], [57, 65, 69, 72, 77], [59, 62, 67, 71, 79]]
CELLO_LINE = [36, 43, 48, 50, 52, 55, 53, 50, 45, 48, 52, 57, 55, 50, 47, 43]
STRING_CHORDS = [[36, 48, 55, 64, 72, 79], [33, 45, 57, 64, 72, 76], [41, 53, 60, 69, 77, 81], [43, 50, 59, 67, 74, 83]]
HORN_CHORDS = [[55, 60, 64, 67, 72], [57, 60, 64, 69, 72], [57, 60, 65, 69, 77], [55, 59, 62, 67, 74]]

KICK, SNARE, CLOSED_HAT, OPEN_HAT, CRASH, RIDE = 36, 38, 42, 46, 49, 51


def beat_pattern(cymbal, crash_every, hat_velocity, kicks=(0.0, 2.0, 2.5), open_hat=False):
    notes = []

    for bar in range(4):
        start = 4.0 * bar
        notes += [(start + beat, 0.4, KICK, 112) for beat in kicks]
        notes += [(start + beat, 0.4, SNARE, 112) for beat in (1.0, 3.0)]
        notes += [(start + 0.5 * eighth, 0.4, cymbal, hat_velocity - 16 * (eighth % 2)) for eighth in range(8)]

        if open_hat:
            notes.append((start + 3.5, 0.4, OPEN_HAT, hat_velocity))

        if crash_every and bar % crash_every == 0:
            notes.append((start, 3.5, CRASH, 110))

    return notes


def struck(note):
    return [(float(beat), 0.9, note, 112) for beat in range(16)]


CYMBALS_ONLY = [n for n in beat_pattern(RIDE, 2, 96, (), True) if n[2] != SNARE]


def phrase(font, program, notes):
    return [("playing a phrase", [font, program, notes])]


def kit(font, notes):
    """The kits of the drum sound fonts are ordinary programs."""
    return [("playing a pattern", [font, 0, notes])]


def variable_length(value):
    data = [value & 0x7F]
    value >>= 7

    while value:
        data.insert(0, 0x80 | (value & 0x7F))
        value >>= 7

    return bytes(data)


def midi_file(program, notes):
    """A file of one track that plays the notes four times over, at the default tempo of 120 beats a minute."""
    length = max(start + duration for start, duration, _, _ in notes)
    length = 4.0 * -(-length // 4.0)
    events = [(0, 0, bytes([0xC0, program]))]

    for turn in range(4):
        for start, duration, note, velocity in notes:
            on = round((turn * length + start) * TICKS_PER_BEAT)
            off = round((turn * length + start + duration) * TICKS_PER_BEAT)
            events.append((on, 2, bytes([0x90, note, velocity])))
            events.append((off, 1, bytes([0x80, note, 0])))

    events.sort()
    track = b""
    now = 0

    for tick, _, message in events:
        track += variable_length(tick - now) + message
        now = tick

    track += b"\x00\xff\x2f\x00"
    header = b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS_PER_BEAT)
    return header + b"MTrk" + struct.pack(">I", len(track)) + track


def played(font, program, notes):
    with tempfile.TemporaryDirectory() as folder:
        midi, raw = folder + "/phrase.mid", folder + "/phrase.raw"

        with open(midi, "wb") as file:
            file.write(midi_file(program, notes))

        subprocess.run(["fluidsynth", "-n", "-i", "-q", "-R", "0", "-C", "0", "-g", "0.3", "-r", str(RATE), "-T", "raw",
                        "-O", "float", "-F", raw, "%s/%s.sf2" % (SOUND_FONTS, font), midi],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

        with open(raw, "rb") as file:
            return file.read()


# ----------------------------------------------------------------------------------------------------------------------

RECORDINGS = {
    "bass-bright": phrase(GM, 34, line(BASS_LINE, 0.5)) + phrase(GM, 36, line(BASS_LINE, 0.5)),
    "bass-soft": phrase(GM, 33, line(BASS_LINE, 0.5)) + phrase(GM, 34, line(BASS_LINE, 0.5)),
    "kick-live": hits(0.5, "drum_bass_hard", "drum_bass_soft") + kit(PEARL, struck(KICK)) + kit(ZEPPELIN, struck(KICK)),
    "snare-live": hits(1, "drum_snare_hard", "drum_snare_soft") + kit(ZEPPELIN, struck(SNARE)),
    "overheads": hits(1, "drum_cymbal_closed", "drum_cymbal_open", "drum_cymbal_pedal", "drum_cymbal_soft",
                      "drum_splash_hard")
                 + kit(PEARL, CYMBALS_ONLY) + kit(ZEPPELIN, CYMBALS_ONLY),
    "toms": hits(1, "drum_tom_hi_hard", "drum_tom_mid_hard", "drum_tom_lo_hard", "drum_tom_hi_soft",
                 "drum_tom_mid_soft", "drum_tom_lo_soft"),
    "kit-pop-rock": kit(PEARL, beat_pattern(CLOSED_HAT, 4, 100, (0.0, 1.5, 2.0), True)),
    "kit-rock": kit(ZEPPELIN, beat_pattern(CLOSED_HAT, 2, 104, (0.0, 2.0, 2.5), True)),
    "kit-live": loops("loop_amen", "loop_amen_full") + kit(ZEPPELIN, beat_pattern(RIDE, 2, 100)),
    "guitar-steel": phrase(GM, 25, strum(OPEN_GUITAR, 0.5, 8)),
    "cello": phrase(GM, 42, line(CELLO_LINE, 1.0)),
    "strings": phrase(GM, 48, strum(STRING_CHORDS, 4.0, 1)),
    "horns": phrase(GM, 61, strum(HORN_CHORDS, 1.0, 4)),
    "piano": phrase(GM, 0, strum(POP_CHORDS, 1.0, 4) + line([72, 76, 79, 81, 84, 81, 79, 76] * 4, 0.5)),
    "electric-piano": phrase(GM, 5, strum(KEYS_HIGH, 1.0, 4)),
    "orchestra": scores("battle-epic", "love_theme", "return_to_wesnoth", "siege_of_laurelmor", "the_city_falls",
                        "the_dangerous_symphony"),
}


def name_of(source):
    _, arguments = source

    if arguments[0].startswith("/"):
        return arguments[0].rsplit("/", 1)[1]

    font, program, _ = arguments
    return "%s %s" % (font, PROGRAMS[program]) if font == GM else font


def describe(sources):
    """Names of the recordings by what was done with them, each name once."""
    groups = {}

    for source in sources:
        names = groups.setdefault(source[0], [])

        if name_of(source) not in names:
            names.append(name_of(source))

    return "; ".join("%s %s" % (", ".join(names), what) for what, names in groups.items())


def measure(tool, source):
    arguments = source[1]
    samples = decoded(*arguments) if arguments[0].startswith("/") else played(*arguments)
    output = subprocess.run([tool, str(RATE)], check=True, input=samples, stdout=subprocess.PIPE).stdout
    return [float(value) for value in output.split()]


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: measure-recordings.py PATH-OF-measure-recording > measured-recordings.csv")

    writer = csv.writer(sys.stdout, lineterminator="\n")
    writer.writerow(["name", 320, 640, 1000, 2000, 3000, 4000, 6000, 10000, 15000, 18000, "recordings"])

    for name, sources in RECORDINGS.items():
        measured = [measure(sys.argv[1], source) for source in sources]
        means = ["%.2f" % (sum(values) / len(values)) for values in zip(*measured)]
        writer.writerow([name] + means + [describe(sources)])


if __name__ == "__main__":
    main()
