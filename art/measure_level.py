#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""measure_level.py TRACE...: what comes into view in a run through the level.

TRACE is written by tarnwick-replay, which needs a display (tools/with_display):

  build/release/tarnwick-replay trace tests/replays/goal.txt --output TRACE

Prints for each trace

  flames     the share of the frames of the play with a flame in view (at least 25 %), and the longest
             stretch without one (at most 300 frames)
  landmarks  how many come into view by a third or more; how many screens of the path have none, a
             screen being as far from the last as the view is wide or high; and whether two
             neighbouring screens have a landmark of the same name (never)

and then every screen without a landmark, mostly in a high flight with sky all around. The exit status
is 1 if a limit is broken.
"""
import sys

import numpy as np

import make_levels
from pictures import artFolder

left, right, above, below = 9.5, 10.5, 7.5, 3.75  # what is in view around the runner's point
longestDark, leastLit = 300, 0.25
screenWidth, screenHeight = 19, 11
third = 1 / 3


def places(path):
    """The runner's x and y in each frame of the play up to the goal."""
    lines = (line.split() for line in path)
    return [(float(f[2]), float(f[3])) for f in lines
            if len(f) > 5 and f[1] == "GamePlay" and "F" not in f[6:]]


def shown(x, y, box):
    """The share of a box (left, top, right, bottom; inclusive cells) that is in view from (x, y)."""
    across = min(box[2] + 1, x + right) - max(box[0], x - left)
    down = min(box[3] + 1, y + below) - max(box[1], y - above)
    return max(0, across) * max(0, down) / ((box[2] + 1 - box[0]) * (box[3] + 1 - box[1]))


def longestRun(flags, value):
    best = run = 0
    for flag in flags:
        run = run + 1 if flag == value else 0
        best = max(best, run)
    return best


def screens(path):
    """The path in pieces that each fill one screen."""
    pieces = []
    for x, y in path:
        if not pieces or abs(x - pieces[-1][0][0]) >= screenWidth \
                or abs(y - pieces[-1][0][1]) >= screenHeight:
            pieces.append([])
        pieces[-1].append((x, y))
    return pieces


def measure(name, path, level, tiles):
    ys, xs = np.nonzero(tiles == make_levels.flameCode)
    lit = [bool(((xs + 0.5 > x - left) & (xs + 0.5 < x + right)
                 & (ys + 0.5 > y - above) & (ys + 0.5 < y + below)).any()) for x, y in path]
    share, dark = sum(lit) / len(lit), longestRun(lit, False)

    marks = [mark for mark in level.landmarks if mark[3] - mark[1] >= 6]
    found, empty, repeated, last = set(), [], [], None
    for piece in screens(path):
        most = {mark: max(shown(x, y, mark[1:]) for x, y in piece[::3]) for mark in marks
                if abs(mark[1] - piece[0][0]) < 60 and abs(mark[2] - piece[0][1]) < 60}
        seen = [mark for mark in most if most[mark] >= third]
        found.update(seen)
        if not seen:
            empty.append(tuple(round(v) for v in piece[len(piece) // 2]))
        names = {mark[0]: mark for mark in seen}
        if last:
            repeated += [n for n in names if n in last and last[n] != names[n]]
        last = names
    count = len(screens(path))
    print(f"{name}: {len(path)} frames; flames in {share:.0%}, longest without {dark} frames; "
          f"{len(found)} landmarks of {len({mark[0] for mark in found})} kinds on {count} screens, "
          f"{len(empty)} screens without, {len(repeated)} repeated {' '.join(sorted(set(repeated)))}")
    for place in empty:
        print("  no landmark near column {}, row {}".format(*place))
    return share < leastLit or dark > longestDark or bool(repeated)


def main():
    make_levels.readLandmarks(artFolder / "landmarks.txt")
    level = make_levels.read(artFolder / "levels" / "episode1.txt")
    tiles = level.paint()
    bad = False
    for name in sys.argv[1:]:
        with open(name, encoding="ascii") as trace:
            bad |= measure(name, places(trace), level, tiles)
    sys.exit(bad)


if __name__ == "__main__":
    main()
