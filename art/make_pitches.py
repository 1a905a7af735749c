#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes data/pitches/*.txt, the moods of the music, from the scales below.

A pitch file has eight lines, twice the frequency in hertz of the notes 0 to 7. The play does this
with the notes:

  bass   note 7 all bar long, note 6 at the end of the bar; two octaves below the pitch
  pad    notes 4 5 3 2 4 5 3 6, a bar each; an octave above the pitch
  high   random figures of all eight notes; two octaves above the pitch

So note 7 is the root, note 6 is the turn of the bass and the last bar of the pad, notes 2 to 5 are
the rest of the pad's line, and notes 0 and 1 are heard in the high voice alone. The notes need not
rise: their order is what gives each tune a line of its own.

Before it writes, the program checks what makes ten different tunes that sound well:

  tuning      each line of a file is within 3 cents of the cents that its mood claims below
  contour     the pad goes up and down as the mood claims, differently in any two tunes
  turn        at least four intervals of the bass, from note 7 to note 6, a half step or more apart
  intervals   the notes 2 to 7 of no two tunes are the same set, transposed and in any octaves
  line        at least 4 of the 8 bars of the pad differ in any two tunes, transposed to fit best
  consonance  of the 28 pairs of notes at least 75 % are, but for octaves, within 5 cents of a ratio
              of two of the numbers 1 3 5 7 9; of eight random pitches about 16 % are
  range       the eight notes differ; the bass is between 32 and 82 hertz, the pad below 600 and the
              high voice below 1540, where its saws still have overtones

If a check fails, it writes nothing and its exit status is 1. Otherwise it prints a line for each
tune: consonance, cents of the turn, contour, and the pad's line in cents above the root. Run again
it writes the same bytes.
"""
from collections import namedtuple
from fractions import Fraction
from itertools import combinations
from math import log2
import os
import sys

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "pitches")

PAD_LINE = [4, 5, 3, 2, 4, 5, 3, 6]
BASS_OCTAVE, PAD_OCTAVE, HIGH_OCTAVE = 0.25, 2, 4
DEEPEST_BASS, HIGHEST_BASS, HIGHEST_PAD, HIGHEST_VOICE = 32, 82, 600, 1540      # hertz
TUNING = 3                          # cents
SAME = 40                           # cents: closer intervals count as the same
TURNS = 4
OTHER_BARS = 4
PURE, CONSONANCE = 5, 0.75          # cents, and share of the pairs
SMALL_NUMBERS = [1, 3, 5, 7, 9]

# The root, note 7, as a note of a piano tuned to 440 hertz; the notes 0 to 7 as ratios to it; the
# claims: their cents above or below the root, and the steps of the pad from bar to bar.
Mood = namedtuple("Mood", "root notes cents contour")
MOODS = {
    # Dorian: minor with a bright sixth, calm steps. The bass comes up a whole tone.
    "dusk": Mood("A3", "1/2 9/16 3/5 2/3 3/4 5/6 9/10 1",
                 "-1200 -996 -884 -702 -498 -316 -182 0", "+--++-+"),
    # Aeolian: the pad only falls, and the bass a fourth with it. The longest night.
    "midnight": Mood("F3", "9/10 3/5 2/3 4/5 6/5 9/8 3/4 1",
                     "-182 -884 -702 -386 316 204 -498 0", "---+---"),
    # Mixolydian with the seventh of the overtones: the pad opens upwards, bar after bar.
    "highway": Mood("C#4", "1/2 9/16 3/4 5/6 5/8 2/3 7/8 1",
                    "-1200 -996 -498 -316 -814 -702 -231 0", "++--+++"),
    # Lydian: whole tones that lift, over a half step of the bass.
    "weightless": Mood("B3", "3/4 5/6 9/8 45/64 9/16 5/8 15/16 1",
                       "-498 -316 204 -610 -996 -814 -112 0", "+++-+++"),
    # Overtones 8 to 14 of one deep string: the pad falls to the root and climbs them again.
    "resonance": Mood("G#3", "5/8 3/4 11/16 9/16 7/8 1/2 5/4 1",
                      "-814 -498 -649 -996 -231 -1200 386 0", "-+++-++"),
    # Minor blues: leaps in zigzag, a blue fifth, the bass a minor third up.
    "neon": Mood("A#3", "1/2 2/3 7/10 9/10 3/4 3/5 6/5 1",
                 "-1200 -702 -617 -182 -498 -884 316 0", "-+-+-++"),
    # Major pentatonic: the triad comes up from the root, and higher the second time.
    "dawn": Mood("D4", "3/8 9/16 5/12 3/4 1/2 5/8 5/6 1",
                 "-1698 -996 -1516 -498 -1200 -814 -316 0", "++-++++"),
    # Minor without a sixth: the pad swings like a pendulum, the bass ticks up a fifth and back.
    "clockwork": Mood("G3", "1/2 3/4 9/8 3/5 2/3 9/10 3/2 1",
                      "-1200 -498 204 -884 -702 -182 702 0", "+-+-+-+"),
    # Five notes with two half steps, and empty fifths between: frost on glass.
    "frost": Mood("C4", "9/16 6/5 4/5 3/4 3/5 1/2 9/8 1",
                  "-996 316 -386 -498 -884 -1200 204 0", "-++--++"),
    # Phrygian: heat that crawls by half steps, and something behind you a half step above the root.
    "embers": Mood("F#3", "1/2 9/10 2/3 3/5 4/5 3/4 16/15 1",
                   "-1200 -182 -702 -884 -386 -498 112 0", "--++--+"),
}


def cents(ratio):
    return 1200 * log2(ratio)


def distance(a, b):
    """Between two intervals in cents, octaves left out."""
    return abs((a - b + 600) % 1200 - 600)


def hertz(piano):
    """Of a note such as C#4."""
    names = ["C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"]
    return 440 * 2 ** ((names.index(piano[:-1]) - 9) / 12 + int(piano[-1]) - 4)


def fileText(mood):
    return "".join(f"{2 * hertz(mood.root) * Fraction(note):.4f}\n" for note in mood.notes.split())


def contour(pitches):
    line = [pitches[note] for note in PAD_LINE]
    return "".join("+" if after > before else "-" for before, after in zip(line, line[1:]))


def consonance(pitches):
    """Share of the pairs of notes whose interval is a ratio of small numbers."""
    pure = [cents(a / b) for a in SMALL_NUMBERS for b in SMALL_NUMBERS]
    intervals = [cents(a / b) for a, b in combinations(pitches, 2)]
    return sum(any(distance(interval, ratio) <= PURE for ratio in pure)
               for interval in intervals) / len(intervals)


def isTransposed(a, b):
    """Whether two lists of pitches are the same intervals but for one shift and octaves."""
    first, second = ([cents(pitch) for pitch in pitches] for pitches in (a, b))

    def holds(some, others, shift):
        return all(any(distance(one + shift, other) <= SAME for other in others) for one in some)

    shifts = [other - one for one in first for other in second]
    return any(holds(first, second, shift) and holds(second, first, -shift) for shift in shifts)


def otherBars(a, b):
    """Bars of the pad that differ between two tunes, one of them transposed so that fewest do."""
    steps = [cents(a[note] / b[note]) for note in PAD_LINE]
    return min(sum(abs(step - shift) > SAME for step in steps) for shift in steps)


def faultsOf(mood, pitches):
    """What is wrong with one tune."""
    claims = [int(claim) for claim in mood.cents.split()]
    if not len(pitches) == len(claims) == len(set(pitches)) == 8 or pitches[7] * 2 != float(
            f"{2 * hertz(mood.root):.4f}"):
        return ["not eight different notes, the root in place 7"]
    faults = [f"note {note} is {cents(pitch / hertz(mood.root)):.1f} cents, claimed {claim}"
              for note, (pitch, claim) in enumerate(zip(pitches, claims))
              if abs(cents(pitch / hertz(mood.root)) - claim) > TUNING]
    if contour(pitches) != mood.contour:
        faults.append(f"contour {contour(pitches)}, claimed {mood.contour}")
    if consonance(pitches) < CONSONANCE:
        faults.append(f"consonance {consonance(pitches):.2f}")
    if (min(pitches[6:]) * BASS_OCTAVE <= DEEPEST_BASS
            or max(pitches[6:]) * BASS_OCTAVE >= HIGHEST_BASS
            or max(pitches[2:7]) * PAD_OCTAVE >= HIGHEST_PAD
            or max(pitches) * HIGH_OCTAVE >= HIGHEST_VOICE):
        faults.append("out of range")
    return faults


def faultsBetween(tunes):
    """What is wrong with the tunes side by side."""
    faults = []
    turns = []
    for name, pitches in tunes.items():
        turn = cents(pitches[6] / pitches[7])
        if all(abs(turn - other) > SAME for other in turns):
            turns.append(turn)
    if len(turns) < TURNS:
        faults.append(f"{len(turns)} turns of the bass")
    for (one, first), (other, second) in combinations(tunes.items(), 2):
        if contour(first) == contour(second):
            faults.append(f"{one} and {other} have the same contour")
        if otherBars(first, second) < OTHER_BARS:
            faults.append(f"{one} and {other} have much the same line")
        if isTransposed(first[2:], second[2:]):
            faults.append(f"{one} and {other} have the same intervals")
    return faults


def main():
    texts = {name: fileText(mood) for name, mood in MOODS.items()}
    tunes = {name: [float(line) / 2 for line in text.split()] for name, text in texts.items()}
    faults = [f"{name}: {fault}" for name in MOODS for fault in faultsOf(MOODS[name], tunes[name])]
    if not faults:
        faults = faultsBetween(tunes)
    os.makedirs(FOLDER, exist_ok=True)
    faults += [f"{name} is not made here" for name in sorted(os.listdir(FOLDER))
               if name not in [mood + ".txt" for mood in MOODS]]
    if faults:
        sys.exit("\n".join(faults))
    for name, pitches in tunes.items():
        with open(os.path.join(FOLDER, name + ".txt"), "w", encoding="ascii") as file:
            file.write(texts[name])
        line = " ".join(f"{round(cents(2 * pitches[note] / pitches[7])):5}" for note in PAD_LINE)
        print(f"{name:11s} {consonance(pitches):.2f}  {cents(pitches[6] / pitches[7]):+5.0f}"
              f"  {contour(pitches)}  {line}")


if __name__ == "__main__":
    main()
