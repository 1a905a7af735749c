#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Draws the 43 pictures of the glyph font into images/glyphs: white signs, 64 by 64.

The glyph font sets its pictures side by side without a gap. So each sign stands in the middle
of its cell with room at both sides, and is drawn wider and bolder than in the font, for words
to hold together; all share one baseline."""
from PIL import Image, ImageChops, ImageDraw

import letters
from pictures import imagesFolder, savePng

cell = 64               # pixels
baseline = 53           # pixels from the top
scale = 46 / letters.capHeight    # pixels per font unit: a capital is 46 high
widest = 57             # pixels
weight = 1.12           # of the nib, against the font's
widenings = (1.3, 1.2, 1.1, 1.0)
oversample = 16

fileNames = {":": "colon", ",": "comma", "!": "exclamation", "-": "minus", ".": "period",
             "+": "plus", "?": "question"}
signs = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ" + "".join(fileNames)
wideForms = {"I": "I wide"}  # a bare stem looks lost in a cell of fixed width


def cellOutline(sign):
    """The ink of a sign, as wide as its cell allows but no wider than looks well."""
    name = wideForms.get(sign, sign)
    for widen in widenings:
        contours = letters.outline(name, weight, widen)
        left, bottom, right, top = letters.bounds(contours)
        if (right - left) * scale <= widest:
            break
    return contours


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
        alpha = drawCell(cellOutline(sign))
        savePng(Image.merge("RGBA", (white, white, white, alpha)),
                imagesFolder / "glyphs" / (fileNames.get(sign, sign) + ".png"))


if __name__ == "__main__":
    main()
