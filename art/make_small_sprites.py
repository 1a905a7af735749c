#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes the small pictures of one shape each: cloud, star, rings, outline and soft line.

Run it with no arguments; it writes them to images/sprites."""

import math

from PIL import Image, ImageDraw

from pictures import clear, fromRows, savePng, spritesFolder

scale = 16  # drawn this many times larger, then reduced with a box filter

cloudSize = (132, 68)
cloudInk = 120  # alpha of the outline
cloudBody = 52
cloudShade = 20  # alpha of the body between the dots of the shaded underside
# Puffs: centre x, centre y, radius, in pixels. The underside is cut flat at cloudBase.
cloudPuffs = [(17, 50, 13), (34, 38, 18), (62, 28, 25), (91, 35, 20), (113, 47, 16)]
cloudBase = 63
# Strokes inside the cloud that tell one puff from the next: puff, first and last angle in degrees.
cloudStrokes = [(1, 300, 352), (2, 322, 368), (3, 214, 252)]

starTip, starNotch = 7.0, 2.75  # how far the points and the notches lie from the middle, in pixels

# Each ring reaches one pixel under the next one, so the nest shows no hole at any scale and
# angle. No corner of the outer shape is nearer to its centre than 4 pixels: at the size at which
# it is 1600 units across it hides the whole screen, however it is turned.
ringRows = {
    8: """
.######.
########
##....##
##....##
##....##
##....##
########
.######.
""",
    6: """
........
..####..
.######.
.##..##.
.##..##.
.######.
..####..
........
""",
    4: """
........
........
...##...
..####..
..####..
...##...
........
........
""",
    2: """
........
........
........
...##...
...##...
........
........
........
""",
}

lineAlphas = [2, 33, 192, 255, 255, 192, 33, 2]  # across the line


def discs(size, puffs, grow):
    """A mask of all puffs, `scale` times enlarged, their radius changed by `grow` pixels."""
    mask = Image.new("L", (size[0] * scale, size[1] * scale), 0)
    pen = ImageDraw.Draw(mask)
    for x, y, radius in puffs:
        r = radius + grow
        pen.ellipse([(x - r) * scale, (y - r) * scale, (x + r) * scale, (y + r) * scale], fill=255)
    return mask


def makeCloud():
    width, height = cloudSize
    whole = discs(cloudSize, cloudPuffs, 0)
    body = discs(cloudSize, cloudPuffs, -2)
    left, right, top = cloudPuffs[0][0], cloudPuffs[-1][0], 45  # below the puffs all is cloud
    for mask, inset in ((whole, 0), (body, 2)):
        pen = ImageDraw.Draw(mask)
        pen.rectangle([v * scale for v in (left, top, right, cloudBase - inset)], 255)
        pen.rectangle([0, (cloudBase - inset) * scale, width * scale, height * scale], 0)

    alpha = Image.new("L", whole.size, 0)
    alpha.paste(cloudInk, (0, 0), whole)
    alpha.paste(cloudBody, (0, 0), body)

    # The underside in halftone: the lower, the smaller the dots that are left of the body.
    shade = Image.new("L", whole.size, cloudShade)
    dots = ImageDraw.Draw(shade)
    step = 6
    for row in range(height // (step // 2)):
        y = row * step // 2
        for column in range(-1, width // step + 1):
            x = column * step + (row % 2) * step // 2
            depth = (y - shadeTop(x)) / 20
            radius = 3.2 * (1 - max(0, min(1, depth))) + 0.5
            dots.ellipse([(x - radius) * scale, (y - radius) * scale,
                          (x + radius) * scale, (y + radius) * scale], fill=cloudBody)
    below = Image.new("L", whole.size, 0)
    pen = ImageDraw.Draw(below)
    edge = [(x * scale, shadeTop(x) * scale) for x in range(width + 1)]
    pen.polygon(edge + [(width * scale, height * scale), (0, height * scale)], fill=255)
    alpha.paste(shade, (0, 0), Image.composite(below, Image.new("L", whole.size, 0), body))

    strokes = Image.new("L", whole.size, 0)
    pen = ImageDraw.Draw(strokes)
    for puff, first, last in cloudStrokes:
        x, y, radius = cloudPuffs[puff]
        for angle in range(first * 4, last * 4):
            # The pen swells in the middle of a stroke.
            along = (angle / 4 - first) / (last - first)
            nib = 0.25 + 0.85 * math.sin(math.pi * along)
            px = x + (radius - 1) * math.cos(math.radians(angle / 4))
            py = y + (radius - 1) * math.sin(math.radians(angle / 4))
            pen.ellipse([(px - nib) * scale, (py - nib) * scale,
                         (px + nib) * scale, (py + nib) * scale], fill=255)
    alpha.paste(cloudInk, (0, 0), Image.composite(strokes, Image.new("L", whole.size, 0), body))

    alpha = alpha.reduce(scale)
    cloud = Image.new("RGBA", cloudSize, (255, 255, 255, 0))
    cloud.putalpha(alpha)
    return cloud


def shadeTop(x):
    """The row at which the shaded underside begins, a gentle wave."""
    return 45 + 3 * math.sin(x / 132 * 2 * math.pi * 2.5 + 0.6) - 3 * math.sin(x / 132 * math.pi)


def makeStar():
    """Five slim points around the middle, about which the game turns it. The soft edge keeps them
    clean when it is enlarged and turned."""
    corners = []
    for i in range(10):
        angle = math.radians(36 * i - 90)
        reach = starNotch if i % 2 else starTip
        corners.append(tuple((8 + reach * f(angle)) * scale for f in (math.cos, math.sin)))
    mask = Image.new("L", (16 * scale, 16 * scale), 0)
    ImageDraw.Draw(mask).polygon(corners, fill=255)
    star = Image.new("RGBA", (16, 16), (255, 255, 255, 0))
    star.putalpha(mask.reduce(scale))
    return star


def makeOutline():
    outline = Image.new("RGBA", (36, 36), (0, 0, 0, 255))
    outline.paste(clear, (2, 2, 34, 34))
    return outline


def makeLine():
    line = Image.new("RGBA", (8, 8))
    for y in range(8):
        for x in range(8):
            line.putpixel((x, y), (255, 255, 255, lineAlphas[x]))
    return line


def main():
    white = {".": clear, "#": (255, 255, 255, 255)}
    savePng(makeCloud(), spritesFolder / "cloud.png")
    savePng(makeStar(), spritesFolder / "star.png")
    for diameter, rows in ringRows.items():
        savePng(fromRows(rows.split(), white), spritesFolder / f"ring-{diameter}.png")
    savePng(makeOutline(), spritesFolder / "outline.png")
    savePng(makeLine(), spritesFolder / "line.png")


if __name__ == "__main__":
    main()
