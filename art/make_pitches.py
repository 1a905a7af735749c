#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes data/pitches/*.txt, the moods of the music, from the scales below.

A pitch file has eight lines, twice the frequency in hertz of the notes 0 to 7. What the play does
with the notes says what a scale must be good for:

  bass   note 7 all bar long, note 6 at the end of the bar; two octaves below the pitch
  pad    notes 4 5 3 2 4 5 3 6, a bar each; an octave above the pitch
  high   random figures of all eight notes; two octaves above the pitch

So note 7 is the root, note 6 leads back to it from below, and any note must bear any other. The
root sounds without a pause: intervals are ratios of small numbers to it and stand still in the air.
Scales of seven notes have their root in note 0 too; those of five or six go on below it.

Run again it writes the same bytes.
"""
from fractions import Fraction
import os

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "pitches")

# Name: frequency of note 7 in hertz, and the eight notes in relation to the root below it.
MOODS = {
    # Dorian: minor with a bright sixth, the runner's plain weather.
    "dusk": (220.0, "1 9/8 6/5 4/3 3/2 5/3 9/5 2"),
    # Aeolian: the long night.
    "midnight": (196.0, "1 9/8 6/5 4/3 3/2 8/5 9/5 2"),
    # Mixolydian with the seventh of the overtones: an open road.
    "highway": (246.94, "1 9/8 5/4 4/3 3/2 5/3 7/4 2"),
    # Lydian: everything lifts.
    "weightless": (207.65, "1 9/8 5/4 45/32 3/2 5/3 15/8 2"),
    # The eighth to sixteenth overtone of one deep string.
    "resonance": (233.08, "1 9/8 5/4 11/8 3/2 13/8 7/4 2"),
    # Minor pentatonic, from the fifth below.
    "neon": (261.63, "3/4 9/10 1 6/5 4/3 3/2 9/5 2"),
    # Major pentatonic, from the fifth below.
    "dawn": (293.66, "3/4 5/6 1 9/8 5/4 3/2 5/3 2"),
    # Minor without a sixth: six notes, cool and even.
    "clockwork": (174.61, "9/10 1 9/8 6/5 4/3 3/2 9/5 2"),
    # Five notes with two half steps: frost on glass.
    "frost": (277.18, "3/4 4/5 1 9/8 6/5 3/2 8/5 2"),
    # Phrygian: heat, and something behind you.
    "embers": (185.0, "1 16/15 6/5 4/3 3/2 8/5 9/5 2"),
}


def pitches(rootAbove, relations):
    """The eight frequencies in hertz."""
    notes = [rootAbove / 2 * Fraction(relation) for relation in relations.split()]
    assert len(notes) == 8 and notes == sorted(set(notes)) and notes[7] == rootAbove, relations
    return [float(note) for note in notes]


def main():
    os.makedirs(FOLDER, exist_ok=True)
    for name, (rootAbove, relations) in MOODS.items():
        lines = [f"{2 * note:.4f}\n" for note in pitches(rootAbove, relations)]
        with open(os.path.join(FOLDER, name + ".txt"), "w", encoding="ascii") as file:
            file.writelines(lines)


if __name__ == "__main__":
    main()
