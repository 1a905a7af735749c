#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""measure_music.py RENDER_WAV [--seconds N] [--seeds A,B,...] [TUNE...]: is the music sound?

Renders the music of a play at full speed with every tune of data/pitches (or those named) and the
patches of data/synthPatches, and prints for each tune and seed:

  peak   largest distance from 0. Nothing limits the sum of the voices: below 0.9
  loud   loudness in LUFS after ITU-R BS.1770 (gated, both channels). Tunes within 3 dB
  dc     mean. Below 0.01
  bands  level in dB in octaves from 31 to 16000 hertz. Bass, pad and high voice each have a place
         of their own, and it falls by about 4 dB an octave above 125 hertz: bright, not harsh
  line   the loudest line above 1500 hertz that sounds nine tenths of the time, in dB: a whine that
         never stops would show. Below -55

and for each patch, over the pitches of all tunes, the largest last sample of a note (below 0.01:
no click), and its peak. After a change of a patch, measure 600 seconds with a few seeds. The exit
status is 1 if a limit is broken.
"""
import argparse
import os
import struct
import subprocess
import sys
import tempfile

import numpy as np

DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data")
RATE = 44100                        # hertz
BAR = 88274 / RATE                  # seconds
PATCHES = ["SeqBass", "SeqPad", "SeqHi", "SeqDuck", "Bom"]
BLOCK, HOP = 17640, 4410            # samples: 400 ms every 100 ms
PEAK, LOUDNESS_SPREAD, MEAN, LAST_SAMPLE, LINE = 0.9, 3, 0.01, 0.01, -55


def render(tool, *arguments):
    """The left channel; the right one is equal."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "piece.wav")
        subprocess.run([tool, *map(str, arguments[:3]), path, *map(str, arguments[3:])],
                       check=True, stdout=subprocess.DEVNULL)
        with open(path, "rb") as file:
            content = file.read()
    place = 12
    while content[place:place + 4] != b"data":
        place += 8 + struct.unpack("<I", content[place + 4:place + 8])[0]
    return np.frombuffer(content[place + 8:], "<f4")[::2].astype(np.float64)


def weighting(frequencies):
    """Power of the two filters of BS.1770, as a head and an ear have it."""
    def biquad(f0, q, numerator):
        k = np.tan(np.pi * f0 / RATE)
        z = np.exp(-2j * np.pi * frequencies / RATE)
        b0, b1, b2 = numerator(k, q)
        return (b0 + b1 * z + b2 * z * z) / (1 + k / q + k * k + 2 * (k * k - 1) * z
                                             + (1 - k / q + k * k) * z * z)

    def shelf(k, q):
        high = 10 ** (3.999843853973347 / 20)
        middle = high ** 0.4996667741545416
        return (high + middle * k / q + k * k, 2 * (k * k - high), high - middle * k / q + k * k)

    head = biquad(1681.974450955533, 0.7071752369554196, shelf)
    ear = biquad(38.13547087602444, 0.5003270373238773, lambda k, q: (1, -2, 1))
    ear = ear * (1 + np.tan(np.pi * 38.13547087602444 / RATE) / 0.5003270373238773
                 + np.tan(np.pi * 38.13547087602444 / RATE) ** 2)
    return np.abs(head * ear) ** 2


def loudness(samples):
    gain = weighting(np.fft.rfftfreq(BLOCK, 1 / RATE))
    gain[1:-1] *= 2                 # the other half of the spectrum
    powers = np.array([
        2 * np.sum(np.abs(np.fft.rfft(samples[i:i + BLOCK])) ** 2 * gain) / BLOCK ** 2
        for i in range(0, len(samples) - BLOCK, HOP)])
    levels = -0.691 + 10 * np.log10(powers + 1e-20)
    loud = powers[levels > -70]
    threshold = -0.691 + 10 * np.log10(loud.mean()) - 10
    return -0.691 + 10 * np.log10(powers[levels > max(threshold, -70)].mean())


def spectra(samples, size=16384):
    """Frequencies, and the power in each bin: rows are windows of 0.37 s, half over each other."""
    window = np.hanning(size)
    rows = [np.abs(np.fft.rfft(samples[i:i + size] * window)) ** 2
            for i in range(0, len(samples) - size, size // 2)]
    return np.fft.rfftfreq(size, 1 / RATE), np.array(rows) / (size * np.sum(window ** 2)) * 2


def octaves(frequencies, power):
    centres = 31.25 * 2.0 ** np.arange(10)
    return [10 * np.log10(power[(frequencies >= f / 2 ** 0.5) & (frequencies < f * 2 ** 0.5)].sum()
                          + 1e-20) for f in centres]


def steadiestLine(frequencies, powers):
    high = powers[:, frequencies > 1500]
    return 10 * np.log10(np.quantile(high, 0.1, axis=0).max() + 1e-20)


def measureTunes(tool, tunes, seeds, seconds):
    broken, louds, peaks = [], [], []
    for tune in tunes:
        for seed in seeds:
            samples = render(tool, "music", os.path.join(DATA, "pitches", tune + ".txt"),
                             round(seconds / BAR), "--seed", seed)
            frequencies, powers = spectra(samples)
            peak, loud, mean = np.abs(samples).max(), loudness(samples), samples.mean()
            line = steadiestLine(frequencies, powers)
            louds.append(loud)
            peaks.append(peak)
            bands = " ".join(f"{level:4.0f}" for level in octaves(frequencies, powers.mean(axis=0)))
            print(f"{tune:12s} seed {seed:<6} peak {peak:.3f}  loud {loud:6.2f}  dc {mean:+.4f}"
                  f"  line {line:5.1f}  bands {bands}", flush=True)
            if peak >= PEAK or abs(mean) >= MEAN or line >= LINE:
                broken.append(f"{tune}, seed {seed}")
    spread = max(louds) - min(louds)
    print(f"peaks {min(peaks):.3f} to {max(peaks):.3f}, limit {PEAK}; loudness {min(louds):.2f} to"
          f" {max(louds):.2f}, spread {spread:.2f} dB, limit {LOUDNESS_SPREAD}")
    if spread >= LOUDNESS_SPREAD:
        broken.append("loudness")
    return broken


def measurePatches(tool, tunes):
    pitches = set()
    for tune in tunes:
        with open(os.path.join(DATA, "pitches", tune + ".txt"), encoding="ascii") as file:
            pitches |= {float(line) / 2 for line in file}
    broken = []
    for patch in PATCHES:
        notes = [render(tool, "note", os.path.join(DATA, "synthPatches", patch + ".inl"), pitch)
                 for pitch in sorted(pitches)]
        last = max(abs(note[-1]) for note in notes)
        print(f"{patch:8s} last sample {last:.6f}  peak {max(np.abs(n).max() for n in notes):.3f}"
              f"  {len(notes[0])} samples")
        if last >= LAST_SAMPLE:
            broken.append(patch)
    return broken


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("tool")
    parser.add_argument("tunes", nargs="*")
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--seeds", default="1")
    wish = parser.parse_args()
    tunes = wish.tunes or sorted(name[:-4] for name in os.listdir(os.path.join(DATA, "pitches")))
    broken = measurePatches(wish.tool, tunes)
    broken += measureTunes(wish.tool, tunes, wish.seeds.split(","), wish.seconds)
    for name in broken:
        print("not good:", name)
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main())
