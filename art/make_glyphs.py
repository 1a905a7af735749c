#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Draws the 43 pictures of the glyph font into images/glyphs: white signs, 64 by 64.

The glyph font sets its pictures side by side without a gap, so each sign stands in the middle
of its cell with room at both sides; all share one baseline."""
from PIL import Image, ImageChops, ImageDraw

import letters
from pictures import imagesFolder, savePng

cell = 64               # pixels
baseline = 53           # pixels from the top
scale = 46 / letters.capHeight     # pixels per font unit: a capital is 46 high
oversample = 16

fileNames = {":": "colon", ",": "comma", "!": "exclamation", "-": "minus", ".": "period",
         "+": "plus", "?": "question"}
signs = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ" + "".join(fileNames)
wideForms = {"I": "I wide"}  # a bare stem looks lost in a cell of fixed width


def drawCell(contours):
    """The alpha of one cell (64 by 64, grey)."""
    left, bottom, right, top = letters.bounds(contours)
    middle = (left + right) / 2
    large = cell * oversample
    ink = Image.new("1", (large, large))
    for contour in contours:
        layer = Image.new("1", ink.size)
        points = [(((x - middle) * scale + cell / 2) * oversample,
                   (baseline - y * scale) * oversample) for x, y in contour]
        ImageDraw.Draw(layer).polygon(points, fill=1)
        ink = ImageChops.logical_xor(ink, layer)
    return ink.convert("L").reduce(oversample)


def main():
    white = Image.new("L", (cell, cell), 255)
    for sign in signs:
        alpha = drawCell(letters.outline(wideForms.get(sign, sign)))
        savePng(Image.merge("RGBA", (white, white, white, alpha)),
                imagesFolder / "glyphs" / (fileNames.get(sign, sign) + ".png"))


if __name__ == "__main__":
    main()
