#!/usr/bin/env python3
"""Draws the equaliser's measured response over the expected one: response-picture.py PROGRAM PICTURE

Measured: PROGRAM renders a file with a single impulse, and the spectrum of what comes out is taken.
Expected: the curves of the ten bands, worked out here from the formulas of the bell and the shelf. Bands up to
1500 Hz run at a quarter of the rate, the others at the full rate. Within a group the deviations from 1 add up; the two
groups follow each other, so their responses multiply.
"""

import cmath
import math
import pathlib
import struct
import subprocess
import sys
import tempfile

RATE = 48000
FACTOR = 4
SPLIT_HZ = 1500
LENGTH = 16384
IMPULSE_AT = 4096
LOWEST_HZ, HIGHEST_HZ, POINTS = 300, 20000, 400

# Frequency, gain in dB, Q, shelf. Within what Master holds, so that one expectation serves all four pictures.
BANDS = [
    (400, -3.0, 1.2, False),
    (700, 2.5, 1.5, False),
    (1100, -2.5, 1.5, False),
    (1900, 3.0, 1.2, False),
    (2800, -3.5, 1.5, False),
    (4000, 3.5, 1.5, False),
    (5600, -2.5, 1.5, False),
    (8000, 3.0, 1.2, False),
    (11000, -3.0, 1.2, False),
    (15000, 3.5, 1.0, True),
]

COMBINATIONS = [("mix", "linear"), ("mix", "minimum"), ("master", "linear"), ("master", "minimum")]


def frequencies():
    ratio = HIGHEST_HZ / LOWEST_HZ
    return [LOWEST_HZ * ratio ** (index / (POINTS - 1)) for index in range(POINTS)]


def bell(gain_db, hertz, q, rate):
    """Numerator and denominator of a bell by the bilinear transform; a cut is the inverse of the boost."""
    k = math.tan(math.pi * hertz / rate)
    wide = 10 ** (abs(gain_db) / 20) * k / q
    narrow = k / q
    boosted = [1 + wide + k * k, 2 * (k * k - 1), 1 - wide + k * k]
    plain = [1 + narrow + k * k, 2 * (k * k - 1), 1 - narrow + k * k]
    return (boosted, plain) if gain_db >= 0 else (plain, boosted)


def high_shelf(gain_db, hertz, rate):
    """(V s^2 + sqrt(2 V) s + 1) / (s^2 + sqrt(2) s + 1), with the corner at s = i; a cut is the inverse of the boost."""
    k = math.tan(math.pi * hertz / rate)
    v = 10 ** (abs(gain_db) / 20)
    lifted = [v + math.sqrt(2 * v) * k + k * k, 2 * (k * k - v), v - math.sqrt(2 * v) * k + k * k]
    plain = [1 + math.sqrt(2) * k + k * k, 2 * (k * k - 1), 1 - math.sqrt(2) * k + k * k]
    return (lifted, plain) if gain_db >= 0 else (plain, lifted)


def band_magnitude(band, hertz, rate):
    centre, gain_db, q, shelf = band
    numerator, denominator = high_shelf(gain_db, centre, rate) if shelf else bell(gain_db, centre, q, rate)
    z = cmath.exp(-2j * math.pi * hertz / rate)
    return abs(sum(b * z**n for n, b in enumerate(numerator)) / sum(a * z**n for n, a in enumerate(denominator)))


def expected_db(hertz):
    low = 1 + sum(
        band_magnitude(band, hertz, RATE / FACTOR) - 1
        for band in BANDS
        if band[0] <= SPLIT_HZ and hertz < RATE / FACTOR / 2
    )
    high = 1 + sum(band_magnitude(band, hertz, RATE) - 1 for band in BANDS if band[0] > SPLIT_HZ)
    return 20 * math.log10(low * high)


def write_impulse(path):
    samples = [0.0] * LENGTH
    samples[IMPULSE_AT] = 1.0
    data = struct.pack(f"<{LENGTH}f", *samples)
    form = struct.pack("<HHIIHH", 3, 1, RATE, RATE * 4, 4, 32)
    chunks = b"WAVEfmt " + struct.pack("<I", len(form)) + form + b"data" + struct.pack("<I", len(data)) + data
    path.write_bytes(b"RIFF" + struct.pack("<I", len(chunks)) + chunks)


def read_floats(path):
    content = path.read_bytes()
    position = 12
    while content[position : position + 4] != b"data":
        (size,) = struct.unpack_from("<I", content, position + 4)
        position += 8 + size + size % 2
    (size,) = struct.unpack_from("<I", content, position + 4)
    return struct.unpack_from(f"<{size // 4}f", content, position + 8)


def measure(program, folder, mode, phase):
    """The level in dB at every frequency, from a rendered impulse."""
    source, result = folder / "impulse.wav", folder / f"{mode}-{phase}.wav"
    write_impulse(source)
    command = [program, "render", source, result, "--mode", mode, "--phase", phase, "--format", "wav-float"]
    for hertz, gain_db, q, shelf in BANDS:
        command += ["--band", f"{hertz},{gain_db},{q}" + (",shelf" if shelf else "")]
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)

    response = [(n, sample) for n, sample in enumerate(read_floats(result)) if abs(sample) > 1e-9]
    levels = []
    for hertz in frequencies():
        step = -2 * math.pi * hertz / RATE
        levels.append(20 * math.log10(abs(sum(sample * cmath.exp(1j * step * n) for n, sample in response))))
    return levels


PLOT = """
set encoding utf8
set terminal pngcairo size 1600,1080 font "Lato,22" linewidth 1.6 background "white"
set output "{picture}"
set multiplot layout 2,2 title "Ten bands at 48 kHz, as designed and as measured" \\
    font "Lato,27" margins 0.075,0.975,0.12,0.885 spacing 0.06,0.14
set logscale x
set xrange [{lowest}:{highest}]
set yrange [-4:4]
set ytics ("−4" -4, "−2" -2, "0" 0, "+2" 2, "+4" 4)
set xtics ("320" 320, "500" 500, "1k" 1000, "2k" 2000, "5k" 5000, "10k" 10000, "20k" 20000)
set grid xtics ytics lt 1 lc rgb "#d8d8d8" lw 0.8
set border 3 lc rgb "#666666"
set tics nomirror scale 0.5 textcolor rgb "#333333"
set key off
{panels}
unset multiplot
"""

PANEL = """
set title "{title}" offset 0,-0.4
set xlabel "{xlabel}"
set ylabel "{ylabel}"
{key}
plot "{data}" using 1:2 with lines lw 7 lc rgb "#f4b266" title "expected from the bands' curves", \\
     "{data}" using 1:3 with lines lw 1.8 lc rgb "#1f3a5f" title "measured on rendered audio"
"""


def main():
    program, picture = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    expected = [expected_db(hertz) for hertz in frequencies()]

    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        panels = ""
        for index, (mode, phase) in enumerate(COMBINATIONS):
            measured = measure(program, folder, mode, phase)
            rows = list(zip(frequencies(), expected, measured))
            data = folder / f"{mode}-{phase}.dat"
            data.write_text("".join(f"{f:.3f} {e:.5f} {m:.5f}\n" for f, e, m in rows))
            worst = max(rows, key=lambda row: abs(row[1] - row[2]))
            print(f"{mode:6} {phase:8} differs by at most {abs(worst[1] - worst[2]):.2f} dB, at {worst[0]:.0f} Hz")
            panels += PANEL.format(
                title=f"{mode.capitalize()}, {phase} phase (within {math.ceil(abs(worst[1] - worst[2]) * 100) / 100:.2f} dB)",
                xlabel="Frequency in Hz" if index >= 2 else "",
                ylabel="Gain in dB" if index % 2 == 0 else "",
                key="set key inside bottom right samplen 2.5 spacing 1.15" if index == 0 else "set key off",
                data=data,
            )
        plot = PLOT.format(picture=picture, lowest=LOWEST_HZ, highest=HIGHEST_HZ, panels=panels)
        subprocess.run(["gnuplot"], input=plot, text=True, check=True)


if __name__ == "__main__":
    main()
