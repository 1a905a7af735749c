#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Draws the 43 pictures of the glyph font into images/glyphs: white signs, 64 by 64.

The glyph font sets its pictures side by side without a gap, so each sign stands in the middle
of its cell with room at both sides; all share one baseline."""
import pathlib

from PIL import Image, ImageChops, ImageDraw

import letters

CELL = 64               # pixels
BASELINE = 53           # pixels from the top
SCALE = 46 / letters.CAP_HEIGHT     # pixels per font unit: a capital is 46 high
OVERSAMPLE = 16

NAMES = {":": "colon", ",": "comma", "!": "exclamation", "-": "minus", ".": "period",
         "+": "plus", "?": "question"}
SIGNS = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ" + "".join(NAMES)
WIDE = {"I": "I wide"}  # a bare stem looks lost in a cell of fixed width


def drawCell(contours):
    """The alpha of one cell (64 by 64, grey)."""
    left, bottom, right, top = letters.bounds(contours)
    middle = (left + right) / 2
    large = CELL * OVERSAMPLE
    ink = Image.new("1", (large, large))
    for contour in contours:
        layer = Image.new("1", ink.size)
        points = [(((x - middle) * SCALE + CELL / 2) * OVERSAMPLE,
                   (BASELINE - y * SCALE) * OVERSAMPLE) for x, y in contour]
        ImageDraw.Draw(layer).polygon(points, fill=1)
        ink = ImageChops.logical_xor(ink, layer)
    return ink.convert("L").reduce(OVERSAMPLE)


def main():
    folder = pathlib.Path(__file__).resolve().parent.parent / "images" / "glyphs"
    folder.mkdir(parents=True, exist_ok=True)
    white = Image.new("L", (CELL, CELL), 255)
    for sign in SIGNS:
        alpha = drawCell(letters.outline(WIDE.get(sign, sign)))
        picture = Image.merge("RGBA", (white, white, white, alpha))
        picture.save(folder / (NAMES.get(sign, sign) + ".png"), optimize=True)


if __name__ == "__main__":
    main()
