#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes data/fonts/MarsNeedsCunnilingus.ttf from the pen strokes of letters.py.

The game paints a sign's ink where the pen stands, without the room at its left; so every sign
has the same left room and keeps all difference in its right one, and the spacing is the same
in the game as in any other program."""
import math

import numpy
from fontTools.cu2qu import curve_to_quadratic
from fontTools.fontBuilder import FontBuilder
from fontTools.misc.timeTools import timestampFromString
from fontTools.pens.ttGlyphPen import TTGlyphPen

import letters
from pictures import artFolder

characters = ("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
              "+-=.,;:'?()!\"\\/<>_ ")
family = "Tarnwick Hand"
made = "Thu Jan 01 00:00:00 2026"   # fixed, so that the same drawing gives the same bytes

ascent = 900            # font units, as all lengths here
descent = 280
leftRoom = 36
blank = 280
rightRoom = {          # where the right side asks for more or less than the usual
    "r": -12, "f": -34, "t": 4, "c": 10, "e": 14, "k": 2, "v": -2, "w": -2, "x": 4, "y": -6,
    "z": 12, "s": 16, "o": 18, "b": 20, "p": 20, "T": -30, "F": -20, "L": 4, "P": -10, "V": -30,
    "W": -28, "Y": -34, "A": 2, "K": -6, "X": -6, "C": 0, "E": 4, "Z": 4, "7": -14, "/": -10,
    "\\": 10, "(": -20, "'": 14, ".": 44, ",": 44, ":": 40, ";": 40, "!": 30, "?": 20,
    "H": 44, "I": 44, "M": 44, "N": 44, "U": 40, "J": 40,
}
usualRightRoom = 26

reach = 14.0            # length over which a contour's direction is measured
cornerTurn = math.radians(40)
fitDistance = 1.2       # largest distance of a fitted curve from the ink's edge
quadraticDistance = 0.7 # and of the font's own kind of curve from that one


def walk(points, lengths, start, distance):
    """Index of the point of a closed contour that lies a distance from another."""
    total = lengths[-1]
    goal = (lengths[start] + distance) % total
    return int(numpy.searchsorted(lengths[:-1], goal)) % len(points)


def breaks(points):
    """Where a closed contour is cut for fitting: sorted indices, {index: corner or not}, and
    the direction of the contour at every point.

    Cut are the inner corners where strokes meet, and the farthest places left, right, up and
    down, which a font's outlines should own."""
    count = len(points)
    lengths = numpy.concatenate(
        [[0], numpy.cumsum(numpy.hypot(*(numpy.roll(points, -1, axis=0) - points).T))])
    ahead = numpy.array([points[walk(points, lengths, i, reach)] - points[i]
                         for i in range(count)])
    behind = numpy.array([points[i] - points[walk(points, lengths, i, -reach)]
                          for i in range(count)])
    turn = numpy.arctan2(behind[:, 0] * ahead[:, 1] - behind[:, 1] * ahead[:, 0],
                         (behind * ahead).sum(axis=1))
    found = {}
    taken = numpy.zeros(count, dtype=bool)

    def near(index):
        gap = numpy.abs(lengths[:-1] - lengths[index])
        return numpy.minimum(gap, lengths[-1] - gap) < reach * 1.5

    for index in numpy.argsort(-turn, kind="stable"):
        if turn[index] < cornerTurn:    # ink at the right hand: inner corners turn left
            break
        if not taken[index]:
            found[int(index)] = True
            taken |= near(index)
    course = ahead + behind
    for axis in (0, 1):
        side = course[:, axis] > 0
        for index in numpy.nonzero(side != numpy.roll(side, 1))[0]:
            if not taken[index]:
                found[int(index)] = False
                taken |= near(index)
    return sorted(found), found, course


def unit(vector):
    return vector / max(float(numpy.hypot(*vector)), 1e-9)


def fitCubic(points, leave, arrive):
    """Cubic pieces along points (n x 2), leaving and arriving in the given directions."""
    chord = numpy.hypot(*numpy.diff(points, axis=0).T)
    along = numpy.concatenate([[0], numpy.cumsum(chord)])
    if len(points) < 3 or along[-1] < 6:
        arm = along[-1] / 3
        return [(points[0], points[0] + leave * arm, points[-1] - arrive * arm, points[-1])]
    t = along / along[-1]
    for attempt in range(6):
        b0, b1, b2, b3 = (1 - t) ** 3, 3 * t * (1 - t) ** 2, 3 * t * t * (1 - t), t ** 3
        rest = points - numpy.outer(b0 + b1, points[0]) - numpy.outer(b2 + b3, points[-1])
        first, second = numpy.outer(b1, leave), numpy.outer(b2, -arrive)
        matrix = numpy.array([[(first * first).sum(), (first * second).sum()],
                              [(first * second).sum(), (second * second).sum()]])
        right = numpy.array([(first * rest).sum(), (second * rest).sum()])
        if abs(numpy.linalg.det(matrix)) > 1e-6:
            arms = numpy.linalg.solve(matrix, right)
        else:
            arms = numpy.array([along[-1] / 3] * 2)
        if arms.min() < along[-1] * 0.02 or arms.max() > along[-1] * 2:
            arms = numpy.array([along[-1] / 3] * 2)
        a, b = points[0], points[0] + leave * arms[0]
        c, d = points[-1] - arrive * arms[1], points[-1]
        curve = (numpy.outer(b0, a) + numpy.outer(b1, b) + numpy.outer(b2, c)
                 + numpy.outer(b3, d))
        off = points - curve
        error = numpy.hypot(*off.T)
        if error.max() < fitDistance:
            return [(a, b, c, d)]
        speed = (numpy.outer(3 * (1 - t) ** 2, b - a) + numpy.outer(6 * t * (1 - t), c - b)
                 + numpy.outer(3 * t * t, d - c))
        step = (off * speed).sum(axis=1) / numpy.maximum((speed * speed).sum(axis=1), 1e-9)
        t = numpy.maximum.accumulate(numpy.clip(t + step, 0, 1))
    worst = len(points) // 2
    if len(points) > 5:
        worst = min(max(int(error.argmax()), 2), len(points) - 3)
    low, high = max(worst - 3, 0), min(worst + 3, len(points) - 1)
    middle = unit(points[high] - points[low])
    return (fitCubic(points[:worst + 1], leave, middle)
            + fitCubic(points[worst:], middle, arrive))


def fitContour(points):
    """Cubic pieces around a closed contour (n x 2)."""
    cuts, corner, course = breaks(points)
    pieces = []
    for number, start in enumerate(cuts):
        end = cuts[(number + 1) % len(cuts)]
        if end <= start:
            run = numpy.concatenate([points[start:], points[:end + 1]])
        else:
            run = points[start:end + 1]
        span = min(3, len(run) - 1)
        leave, arrive = unit(run[span] - run[0]), unit(run[-1] - run[-1 - span])
        if not corner[start]:
            leave = extremeDirection(course[start])
        if not corner[end]:
            arrive = extremeDirection(course[end])
        pieces += fitCubic(run, leave, arrive)
    return pieces


def extremeDirection(course):
    """The upright or level direction nearest to a course."""
    if abs(course[0]) > abs(course[1]):
        return numpy.array([math.copysign(1, course[0]), 0.0])
    return numpy.array([0.0, math.copysign(1, course[1])])


def place(point):
    """A point in whole font units."""
    return round(float(point[0])), round(float(point[1]))


def drawGlyph(character):
    """TrueType glyph and advance of a character."""
    pen = TTGlyphPen(None)
    if character == " ":
        return pen.glyph(), blank
    contours = letters.outline(character)
    left, bottom, right, top = letters.bounds(contours)
    shift = leftRoom - left
    for contour in contours:
        pieces = fitContour(contour + (shift, 0))
        pen.moveTo(place(pieces[0][0]))
        for piece in pieces:
            spline = curve_to_quadratic([tuple(map(float, point)) for point in piece],
                                        quadraticDistance)
            pen.qCurveTo(*(place(point) for point in spline[1:]))
        pen.closePath()
    room = rightRoom.get(character, usualRightRoom)
    return pen.glyph(), round(right + shift) + room


def main():
    names = {character: "space" if character == " " else "uni%04X" % ord(character)
             for character in characters}
    order = [".notdef"] + [names[character] for character in sorted(characters)]
    glyphs, widths = {}, {}
    for character in characters:
        glyphs[names[character]], widths[names[character]] = drawGlyph(character)
    glyphs[".notdef"], widths[".notdef"] = drawGlyph("?")

    builder = FontBuilder(letters.unitsPerEm, isTTF=True)
    builder.setupGlyphOrder(order)
    builder.setupCharacterMap({ord(character): name for character, name in names.items()})
    builder.setupGlyf(glyphs)
    table = builder.font["glyf"]
    builder.setupHorizontalMetrics({name: (widths[name], getattr(table[name], "xMin", 0))
                                    for name in order})
    builder.setupHorizontalHeader(ascent=ascent, descent=-descent, lineGap=0)
    builder.setupNameTable({
        "copyright": "Copyright The Tarnwick Episode developers",
        "familyName": family,
        "styleName": "Regular",
        "uniqueFontIdentifier": family + " 1.0",
        "fullName": family,
        "version": "Version 1.0",
        "psName": family.replace(" ", "") + "-Regular",
        "licenseDescription": "SIL Open Font License 1.1",
    }, mac=False)
    builder.setupOS2(sTypoAscender=ascent, sTypoDescender=-descent, sTypoLineGap=0,
                     usWinAscent=ascent, usWinDescent=descent, sxHeight=letters.xHeight,
                     sCapHeight=letters.capHeight, usWeightClass=700, fsSelection=0x40, fsType=0,
                     xAvgCharWidth=round(sum(widths.values()) / len(widths)), achVendID="NONE")
    builder.setupPost(underlinePosition=-90, underlineThickness=90)
    builder.setupHead(unitsPerEm=letters.unitsPerEm, fontRevision=1.0,
                      created=timestampFromString(made), modified=timestampFromString(made))
    builder.font.recalcTimestamp = False
    folder = artFolder.parent / "data" / "fonts"
    folder.mkdir(parents=True, exist_ok=True)
    builder.save(folder / "MarsNeedsCunnilingus.ttf")


if __name__ == "__main__":
    main()
