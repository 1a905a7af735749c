# SPDX-License-Identifier: Zlib
"""The game's lettering: every sign as pen strokes, and the pen that draws them.

The glyph pictures, the font and the logo all take their outlines from outline() below, so they
look alike. Coordinates are font units, 1000 to the em, y up, the ink's baseline at 0.

A stroke is the path of the pen's centre, in a grid of its own: y 0 lies half a nib above the
baseline, so that the ink rests on it (capitals reach 600, small letters 400):

    x,y      a point of a smooth curve         x,y@a   ... that is passed in direction a (degrees)
    x,y!     a corner                          x,y!a   a corner that is left in direction a
    -        a straight line to the next point

A word after the points names the pressure: "drop" is heavy and thins out, "dot" is pressed
flat, "even" does not taper.
"""
import cmath
import math
import random
import re

import numpy

unitsPerEm = 1000
capHeight = 710     # of the ink, as drawn with the plain nib
xHeight = 510
nibLong = 132.0     # the nib is an ellipse: long and short axis, and the angle it is held at
nibShort = 86.0
nibAngle = math.radians(38)
penLift = 56        # the pen centre's y 0 above the baseline
slant = 0.085       # x gained per unit of height
wobble = 3.2        # sideways sway of the hand
grid = 4.0          # step of the grid on which the ink is traced

strokes = {
    "A": ["212,612 112,318 0,-8", "212,612 - 300,318 404,-10", "72,178 - 350,192"],
    "B": ["34,602 - 20,0", "0,596 - 170,604@0 322,468@-90 208,332 - 84,318!",
          "84,318 - 210,320@0 368,160@-90 200,2 - -8,-2"],
    "C": ["384,478 242,607@180 0,286@-90 222,-8@0 398,106"],
    "D": ["36,602 - 22,0", "-4,594 - 150,602 416,318@-92 190,4 - -10,-4"],
    "E": ["36,602 - 20,0! - 346,8", "6,598 - 344,610", "34,306 - 296,320"],
    "F": ["36,602 - 20,-10", "6,598 - 338,612", "34,298 - 290,312"],
    "G": ["388,492 246,607@180 0,288@-90 214,-8@0 376,70", "232,272 - 402,284! - 388,-6"],
    "H": ["26,606 - 12,-8", "386,610 - 372,-10", "18,296 - 380,312"],
    "I": ["12,608 - 0,-8"],
    "J": ["296,608 - 288,170 136,-8@180 0,132"],
    "K": ["28,608 - 14,-8", "366,606 206,418 50,276", "112,322 250,180 396,-10"],
    "L": ["30,608 - 16,0! - 344,8"],
    "M": ["66,604 38,300 0,-8", "66,604 - 254,130", "452,608 - 254,130", "452,608 482,300 506,-10"],
    "N": ["22,-8 - 30,604", "30,604 - 376,0", "398,612 - 376,0"],
    "O": ["262,598 218,607@180 0,292@-90 214,-8@0 438,310@90 204,606@184"],
    "P": ["36,604 - 20,-10", "0,596 - 190,606@0 358,440@-90 190,262 - 36,252"],
    "Q": ["262,598 218,607@180 0,292@-90 214,-8@0 438,310@90 204,606@184", "262,162 - 432,-62"],
    "R": ["36,604 - 20,-10", "0,596 - 190,606@0 352,452@-90 196,296 - 40,284", "166,296 - 392,-10"],
    "S": ["358,500 204,607@180 28,458@-90 194,316@-18 376,148@-90 182,-8@180 0,98"],
    "T": ["0,594 - 424,612", "218,596 - 202,-10"],
    "U": ["18,608 - 8,186 192,-8@0 386,190 - 396,612"],
    "V": ["0,608 - 196,-4", "412,612 - 196,-4"],
    "W": ["0,608 - 124,-4", "288,366 - 124,-4", "288,366 - 408,-4", "568,612 - 408,-4"],
    "X": ["18,608 - 392,-10", "386,610 - 0,-10"],
    "Y": ["0,608 - 202,280", "408,612 - 202,280! - 190,-10"],
    "Z": ["14,598 - 382,604! - 0,2! - 396,8"],
    "a": ["316,350 182,405@180 0,188@-90 146,-6@0 318,196", "336,402 - 326,110 350,-8"],
    "b": ["34,646 - 20,0", "24,232 190,405@0 350,206@-90 176,-6@180 22,72"],
    "c": ["306,326 182,405@180 0,192@-90 176,-6@0 322,72"],
    "d": ["316,346 182,405@180 0,188@-90 146,-6@0 318,196", "346,648 - 328,-8"],
    "e": ["18,186 - 328,222!100 182,405@180 0,188@-90 182,-6@0 330,70"],
    "f": ["276,602 196,648@180 104,500@-92 - 88,-10", "0,384 - 244,404"],
    "g": ["316,346 182,405@180 0,188@-90 146,-6@0 318,196",
          "338,402 - 322,-40 150,-196@180 8,-124"],
    "h": ["34,646 - 16,-8", "24,222 196,405@0 322,258@-90 - 322,-10"],
    "i": ["8,402 - 0,-8", "23,593 - 7,613 dot"],
    "j": ["134,402 - 122,-70 58,-190@180 0,-176", "151,593 - 135,613 dot"],
    "k": ["34,646 - 16,-8", "298,402 - 46,170", "112,222 - 326,-10"],
    "l": ["20,646 - 10,110 90,-8@0 142,24"],
    "m": ["26,402 - 12,-8", "22,222 166,405@0 272,258@-90 - 268,-8",
          "276,222 418,405@0 526,258@-90 - 528,-10"],
    "n": ["26,402 - 12,-8", "22,222 192,405@0 320,258@-90 - 322,-10"],
    "o": ["212,398 178,405@180 0,192@-90 174,-6@0 354,206@90 168,405@184"],
    "p": ["28,402 - 10,-192", "26,232 192,405@0 354,206@-90 180,-6@180 22,72"],
    "q": ["316,346 182,405@180 0,188@-90 146,-6@0 318,196", "340,402 - 322,-194"],
    "r": ["26,402 - 12,-8", "20,204 130,372 260,382"],
    "s": ["278,330 152,405@180 16,304@-90 148,208@-16 292,100@-90 138,-6@180 0,72"],
    "t": ["120,568 - 106,112 194,-6@0 276,44", "0,388 - 262,406"],
    "u": ["14,404 - 8,146 142,-6@0 314,190", "330,406 - 316,-8"],
    "v": ["0,404 - 160,-4", "326,408 - 160,-4"],
    "w": ["0,404 - 112,-4", "242,306 - 112,-4", "242,306 - 358,-4", "488,408 - 358,-4"],
    "x": ["14,404 - 322,-8", "318,406 - 0,-8"],
    "y": ["0,404 - 168,22", "334,408 230,120 84,-194"],
    "z": ["10,396 - 304,402! - 0,2! - 318,8"],
    "0": ["220,600 190,607@180 0,296@-90 186,-8@0 378,306@90 180,607@184"],
    "1": ["0,470 - 152,608! - 138,-8"],
    "2": ["14,474 186,607@0 350,446@-90 210,196 0,2! - 384,8"],
    "3": ["18,530 176,607@0 328,466@-90 128,322!10 362,154@-92 160,-8@180 0,84"],
    "4": ["286,608 - 0,184! - 410,198", "286,608 - 272,-10"],
    "5": ["352,606 - 66,598", "66,598 - 40,330!18 190,378@0 366,190@-90 166,-8@180 0,82"],
    "6": ["304,596 82,424 0,190@-90 180,-8@0 356,182@90 190,352@180 12,206"],
    "7": ["0,598 - 378,606!-118 228,290 134,-10"],
    "8": ["320,512 186,607@180 36,470@-90 186,318@-24 362,146@-90 178,-8@180"
          " 0,148@90 178,318@24 332,474@90 196,607@180"],
    "9": ["330,424 176,262@180 0,440@90 180,607@0 348,440@-90 290,180 176,-10"],
    "+": ["178,486 - 168,122", "0,296 - 348,310"],
    "-": ["0,290 - 250,302"],
    "=": ["0,396 - 322,408", "0,196 - 322,208"],
    ".": ["11,1 - -5,21 dot"],
    ",": ["34,18 30,-60 0,-126 drop"],
    ";": ["69,345 - 53,365 dot", "34,18 30,-60 0,-126 drop"],
    ":": ["11,1 - -5,21 dot", "33,345 - 17,365 dot"],
    "'": ["10,648 - 0,470 drop"],
    "?": ["0,478 170,607@0 332,458@-90 190,284 156,178", "153,1 - 137,21 dot"],
    "(": ["150,690 0,296@-90 134,-98"],
    ")": ["16,690 150,296@-90 0,-98"],
    "!": ["14,624 - 0,190 drop", "3,1 - -13,21 dot"],
    '"': ["10,648 - 0,470 drop", "200,648 - 190,470 drop"],
    "\\": ["0,656 - 290,-60"],
    "/": ["290,656 - 0,-60"],
    "<": ["286,508 - 0,298", "0,298 - 296,96"],
    ">": ["0,508 - 290,298", "290,298 - 0,96"],
    "_": ["0,-88 - 400,-88 even"],
    "I wide": ["124,604 - 112,0", "0,598 - 248,610", "0,-4 - 240,6"],
}

pressures = {    # nib size at places along a stroke, 0 to 1
    "": ((0, 1.05), (0.18, 1.0), (0.72, 1.0), (1, 0.84)),
    "even": ((0, 1.0), (1, 1.0)),
    "drop": ((0, 1.26), (0.3, 1.18), (1, 0.62)),
    "dot": ((0, 1.26), (1, 1.26)),
}


def velocity(a, b):
    """Length of a control arm for the angles a (here) and b (at the far end), both radians."""
    root = math.sqrt(2) * (math.sin(a) - math.sin(b) / 16) * (math.sin(b) - math.sin(a) / 16)
    below = 1 + (math.sqrt(5) - 1) / 2 * math.cos(a) + (3 - math.sqrt(5)) / 2 * math.cos(b)
    return (2 + root * (math.cos(a) - math.cos(b))) / (3 * below)


def curveThrough(points, startDirection, endDirection):
    """Cubic pieces (4 complex points each) of the smoothest curve through complex points.

    The directions are radians, or None for a free end."""
    count = len(points) - 1
    chord = [points[k + 1] - points[k] for k in range(count)]
    length = [abs(c) for c in chord]
    psi = [0.0] + [cmath.phase(chord[k] / chord[k - 1]) for k in range(1, count)] + [0.0]
    matrix = numpy.zeros((count + 1, count + 1))
    right = numpy.zeros(count + 1)
    for k in range(1, count):
        matrix[k, k - 1] = 1 / length[k - 1]
        matrix[k, k] = 2 / length[k - 1] + 2 / length[k]
        matrix[k, k + 1] = 1 / length[k]
        right[k] = -2 / length[k - 1] * psi[k] - psi[k + 1] / length[k]
    matrix[0, 0] = matrix[count, count] = 1
    if startDirection is None:
        matrix[0, 1] = 1
        right[0] = -psi[1]
    else:
        right[0] = cmath.phase(cmath.rect(1, startDirection) / chord[0])
    if endDirection is None:
        matrix[count, count - 1] = 1
    else:
        right[count] = cmath.phase(cmath.rect(1, endDirection) / chord[-1])
    theta = numpy.linalg.solve(matrix, right)
    pieces = []
    for k in range(count):
        a, b = theta[k], -psi[k + 1] - theta[k + 1]
        pieces.append((points[k], points[k] + cmath.rect(velocity(a, b), a) * chord[k],
                       points[k + 1] - cmath.rect(velocity(b, a), -b) * chord[k], points[k + 1]))
    return pieces


class Knot:
    """One point of a written stroke: where it is, and what the pen does there."""

    def __init__(self, word):
        x, y, sign, angle = re.fullmatch(r"(-?\d+),(-?\d+)(?:([@!])(-?\d+)?)?", word).groups()
        self.place = complex(int(x), int(y))
        self.corner = sign == "!"
        self.direction = None if angle is None else math.radians(int(angle))
        self.lineBefore = False


def pathPieces(text):
    """Turns a written stroke into cubic pieces and the name of its pressure."""
    words = text.split()
    pressure = words.pop() if words[-1] in pressures else ""
    knots = []
    for index, word in enumerate(words):
        if word != "-":
            knots.append(Knot(word))
            knots[-1].lineBefore = index > 0 and words[index - 1] == "-"
    pieces = []
    start = 0
    while start < len(knots) - 1:
        if knots[start + 1].lineBefore:
            a, b = knots[start].place, knots[start + 1].place
            pieces.append((a, a + (b - a) / 3, b - (b - a) / 3, b))
            start += 1
            continue
        end = start + 1
        while (end < len(knots) - 1 and knots[end].direction is None and not knots[end].corner
               and not knots[end + 1].lineBefore):
            end += 1
        first, last = knots[start], knots[end]
        leave = first.direction
        if leave is None and first.lineBefore and not first.corner:
            leave = cmath.phase(first.place - knots[start - 1].place)
        arrive = None if last.corner else last.direction
        if (arrive is None and not last.corner and end < len(knots) - 1
                and knots[end + 1].lineBefore):
            arrive = cmath.phase(knots[end + 1].place - last.place)
        pieces += curveThrough([knot.place for knot in knots[start:end + 1]], leave, arrive)
        start = end
    return pieces, pressure


def penTrack(name, number, text, widen):
    """Places (n x 2, font units) and nib sizes (n) of one stroke as the hand draws it."""
    pieces, pressure = pathPieces(text)
    steps = numpy.linspace(0, 1, 25)
    places = [pieces[0][0]]
    for a, b, c, d in pieces:
        t = steps[1:]
        places.extend(a * (1 - t) ** 3 + 3 * b * t * (1 - t) ** 2 + 3 * c * t * t * (1 - t)
                      + d * t ** 3)
    places = numpy.array(places)
    places = places.real * widen + 1j * places.imag
    stretch = numpy.concatenate([[0], numpy.cumsum(numpy.abs(numpy.diff(places)))])
    along = stretch / stretch[-1]
    marks, sizes = zip(*pressures[pressure])
    size = numpy.interp(along, marks, sizes)

    hand = random.Random("%s %d" % (name, number))
    tangent = numpy.gradient(places)
    normal = 1j * tangent / numpy.maximum(numpy.abs(tangent), 1e-9)
    for share in (1.0, 0.55):
        wavelength = hand.uniform(300, 620) * share
        phase = hand.uniform(0, 2 * math.pi)
        wave = numpy.sin(stretch / wavelength * 2 * math.pi + phase)
        if pressure != "dot":
            places = places + normal * wave * wobble * share
        size = size * (1 + 0.018 * share * numpy.cos(stretch / wavelength * 5 + phase))
    y = places.imag + penLift
    return numpy.stack([places.real + slant * y, y], axis=1), size


def inkDistance(tracks, weight, x, y):
    """How far each place (x, y) lies outside the ink: below 0 within, in shares of the nib."""
    cos, sin = math.cos(nibAngle), math.sin(nibAngle)
    toNib = numpy.array([[cos * 2 / nibLong, sin * 2 / nibLong],
                         [-sin * 2 / nibShort, cos * 2 / nibShort]]) / weight
    px = toNib[0, 0] * x + toNib[0, 1] * y
    py = toNib[1, 0] * x + toNib[1, 1] * y
    nearest = numpy.full(x.shape, 1e9)
    for places, size in tracks:
        nib = places @ toNib.T
        for (ax, ay), (bx, by), ra, rb in zip(nib[:-1], nib[1:], size[:-1], size[1:]):
            dx, dy = bx - ax, by - ay
            square = max(dx * dx + dy * dy, 1e-12)
            t = numpy.clip(((px - ax) * dx + (py - ay) * dy) / square, 0, 1)
            far = numpy.hypot(px - ax - t * dx, py - ay - t * dy) - (ra + t * (rb - ra))
            numpy.minimum(nearest, far, out=nearest)
    return nearest


# Marching squares. Corners of a cell: 1 lower left, 2 lower right, 4 upper right, 8 upper left;
# edges: b(ottom), r(ight), t(op), l(eft). Each path has the ink on its right.
cellWays = {1: "lb", 2: "br", 3: "lr", 4: "rt", 5: "lb rt", 6: "bt", 7: "lt", 8: "tl", 9: "tb",
            10: "br tl", 11: "tr", 12: "rl", 13: "rb", 14: "bl"}


def traceContours(field, x0, y0, step):
    """Closed polygons (n x 2) around the places where field (rows by columns) is below 0.

    Outer ones run clockwise (y up), holes the other way."""
    inside = field < 0
    code = (inside[:-1, :-1] * 1 + inside[:-1, 1:] * 2 + inside[1:, 1:] * 4 + inside[1:, :-1] * 8)
    following = {}
    for row, column in zip(*numpy.nonzero((code > 0) & (code < 15))):
        edge = {"b": (row, column, 0), "t": (row + 1, column, 0),
                "l": (row, column, 1), "r": (row, column + 1, 1)}
        for way in cellWays[int(code[row, column])].split():
            following[edge[way[0]]] = edge[way[1]]
    contours = []
    while following:
        edge = min(following)
        points = []
        while edge in following:
            row, column, upright = edge
            here = field[row, column]
            there = field[row + upright, column + 1 - upright]
            share = here / (here - there)
            points.append((x0 + step * (column + (0 if upright else share)),
                           y0 + step * (row + (share if upright else 0))))
            edge = following.pop(edge)
        contours.append(numpy.array(points))
    return contours


def outline(name, weight=1.0, widen=1.0):
    """The ink of a sign as closed polygons in font units, outer ones clockwise.

    weight scales the nib, widen the path of the pen from left to right. The ink begins wherever
    the strokes put it, so callers place the sign by its bounds."""
    tracks = [penTrack(name, number, text, widen) for number, text in enumerate(strokes[name])]
    every = numpy.concatenate([places for places, size in tracks])
    room = nibLong * weight
    x0, y0 = numpy.floor((every.min(axis=0) - room) / grid) * grid
    x1, y1 = every.max(axis=0) + room
    x, y = numpy.meshgrid(numpy.arange(x0, x1, grid), numpy.arange(y0, y1, grid))
    return traceContours(inkDistance(tracks, weight, x, y), x0, y0, grid)


def bounds(contours):
    """Left, bottom, right and top of polygons."""
    every = numpy.concatenate(contours)
    return (*every.min(axis=0), *every.max(axis=0))
