#!/usr/bin/env python3
"""Matches pairs of the recordings in a folder with the program, and prints a document of what came of it."""

import json
import math
import os
import pathlib
import resource
import statistics
import subprocess
import sys

PROGRAM = pathlib.Path(__file__).resolve().parent.parent / "dist/bin/solvane"

# Recording, what it is matched with, and what is special about them.
PAIRS = [
    ("amen_full", "battle", "drum loop, orchestra"),
    ("garzul", "industrial", "loops"),
    ("mika", "orbital_elevator", "loop, electronic track"),
    ("compus", "mehackit1", "loops"),
    ("electric", "weirdo", "loops, a quiet one"),
    ("knalgan_theme", "frantic", "orchestra"),
    ("northerners", "media_threat", "orchestra, electronic track"),
    ("media_threat", "nebula", "electronic tracks"),
    ("frantic", "amen_full", "orchestra, drum loop"),
    ("love_theme", "coherence", "orchestra, of which 320 Hz is the loudest part"),
    ("awakening", "return", "up to 28 dB apart"),
    ("awakening_96k", "deprecation", "electronic tracks, at 96 kHz"),
    ("english", "love_theme", "speech, mono, quiet; orchestra"),
    ("english", "czech", "speech, mono, quiet"),
    ("czech", "italian", "speech, mono"),
    ("tabla_mono", "safari", "loop, mono, quiet"),
    ("sad_quiet", "elvish-theme", "orchestra, very quiet"),
    ("orbital_dull", "coherence", "electronic tracks, a dull one"),
    ("orbital_cut", "coherence", "electronic tracks, one with nothing from 10 kHz on"),
    ("amen_full", "amen_full", "equals"),
]

MODES = ["mix", "master"]
WAYS = [("smart bands", mode, []) for mode in MODES] + [("fit", mode, ["--fit"]) for mode in MODES]
READ_BANDS = 9

# What a silent band counts as, so that a filter that mutes one does not look like a success.
SILENCE = -70.0


def match(folder, recording, reference, options):
    """The program's report, and the processor time in seconds that it took."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    run = subprocess.run(
        [PROGRAM, "match", f"{folder}/{recording}.wav", f"{folder}/{reference}.wav", f"{folder}/out.wav"]
        + ["--format", "wav-float", "--json", "--quiet"] + options, check=True, capture_output=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return json.loads(run.stdout)[0], after.ru_utime - before.ru_utime


def deviation(report, when, count):
    """The root of the mean square of what is left to adjust in so many bands."""
    heard, target = report[when], report["target"]
    levels = [SILENCE if level is None else level for level in heard["bands"]]
    rests = [value - level - target["lufs"] + heard["lufs"]
             for value, level in zip(target["values"][:count], levels) if value is not None]
    return math.sqrt(sum(rest * rest for rest in rests) / len(rests))


def beyond_hearing(report):
    """How many of the bands have no reading, or would have none if they became what is wanted of them."""
    before, target = report["before"], report["target"]
    return sum(level is None or (value is not None and value - target["lufs"] + before["lufs"] < SILENCE)
               for level, value in list(zip(before["bands"], target["values"]))[:READ_BANDS])


def measured(folder):
    for recording, reference, remark in PAIRS:
        ways = {(way, mode): match(folder, recording, reference, options + ["--mode", mode])
                for way, mode, options in WAYS}
        row = {"recording": recording, "reference": reference, "remark": remark}
        any_report = ways["fit", "mix"][0]
        row["beyond"] = beyond_hearing(any_report)
        row["before"] = {count: deviation(any_report, "before", count) for count in (READ_BANDS, 10)}
        row["after"] = {(way, count): deviation(ways[way][0], "after", count) for way in ways for count in (READ_BANDS, 10)}
        row["seconds"] = statistics.mean(
            ways["fit", mode][1] - ways["smart bands", mode][1] for mode in MODES)
        row["louder"] = [ways["fit", mode][0]["after"]["lufs"] - any_report["before"]["lufs"] for mode in MODES]
        row["bands"] = [len(ways["fit", mode][0]["smartBands"]) for mode in MODES]
        yield row


def print_table(rows, count):
    print("| Recording | Goes by | | Unheard | Before | Smart Mix | Smart Master | Fit Mix | Fit Master |")
    print("|---|---|---|---|---|---|---|---|---|")
    for row in rows:
        cells = [row["recording"], row["reference"], row["remark"], str(row["beyond"] or ""),
                 f"{row['before'][count]:.2f}"]
        cells += [f"{row['after'][(way, mode), count]:.2f}" for way, mode, _ in WAYS]
        print("| " + " | ".join(cells) + " |")
    for name, those in (("all", rows), ("with nothing unheard", heard(rows))):
        shares = ["", "", f"median share that is left, {name}", "", ""]
        for way, mode, _ in WAYS:
            shares.append("{:.2f}".format(statistics.median(
                row["after"][(way, mode), count] / row["before"][count] for row in those if row["before"][count] > 0.0)))
        print("| " + " | ".join(shares) + " |")
    print()


def heard(rows):
    return [row for row in rows if row["beyond"] == 0]


def print_reached(rows, name):
    kept = {"mix": 0.35, "master": 0.55}
    mix, master = (sum(row["after"][("fit", mode), READ_BANDS] <= max(share * row["before"][READ_BANDS], 1.0)
                       for row in rows) for mode, share in kept.items())
    print(f"- Of {name}, {len(rows)}, a fit leaves at most 35 % or 1 dB in Mix in {mix}, and at most 55 % or 1 dB in Master in "
          f"{master}.")


def main(folder):
    rows = list(measured(folder))
    print("""# Matching, measured

What `solvane match` makes of real recordings, from Debian's packages, in each of its ways. `scripts/match-table.sh` makes
this document anew.

The figures are in dB: the root of the mean square of the gain adjustments before, and of those that are left after. A band
that reads nothing counts as -70 LUFS, so that a filter that mutes it does not look like a success. The band at 18 kHz is
never read; it follows from those at 6, 10 and 15 kHz.

"Unheard" counts the bands of the nine that the meters cannot follow: those that read nothing of the recording, and those
that would have to fall below -70 LUFS beside its loudness. No filter brings their figures to where they are wanted.

## The nine bands that are read
""")
    print_table(rows, READ_BANDS)
    print_reached(rows, "all pairs")
    print_reached(heard(rows), "the pairs with nothing unheard")
    print("""
What stays is mostly what no filter can help, or should not:

- **A quiet recording.** What the meters hear ends at -70 LUFS. A band that would have to fall below reads as its loudest
  moments, or as nothing; one that lies below already is never lifted, since there may be nothing but hiss.
- **A dull recording.** The same, at the top alone.
- **One band that is most of the sound.** Lowering it lowers the whole as well, and beside the whole it hardly falls.
- **A long way.** No response rises by more than 20 dB, or 15 at the ends of the range.

## All ten bands
""")
    print_table(rows, 10)
    print("""## What a fit costs, and what it does to the loudness

Processor time beside smart bands, bands, and how much louder the result is than the recording, in LU. A recording below
-28 LUFS may become 3 LU louder, another one with nothing in a band 3 LU softer.

| Recording | Goes by | Seconds | Bands in Mix | in Master | Louder in Mix | in Master |
|---|---|---|---|---|---|---|""")
    for row in rows:
        print(f"| {row['recording']} | {row['reference']} | {max(row['seconds'], 0.0):.2f} | {row['bands'][0]} | {row['bands'][1]} | "
              f"{row['louder'][0]:+.1f} | {row['louder'][1]:+.1f} |")


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C"
    main(sys.argv[1])
