#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes images/sprites/sky.jpg: the grey night sky of dials, gears and rays, 1024 by 1024 pixels.

Everything is light ink on dark ground and is computed on a torus, so that the picture repeats
without a seam in both directions. The game shows its rows 0 to 575 and adds them at half strength
to a colour gradient that ends in white. So the ground is black, which leaves the dusk of the
gradient as it is, and ink is darker the lower it is; otherwise everything would be white there.
Lengths are pixels of the finished picture, angles radians (clockwise, 0 to the right), tones 0
(black) to 1 (white). The same run gives the same bytes.
"""

import argparse
import os

import numpy as np
from PIL import Image, ImageDraw

SIZE = 1024
TAU = 2 * np.pi
HERO = (760.0, 324.0)  # the eye of the spiral clock, where the light comes from
QUALITY = 87
SEEN = 576  # rows
LIFT = 0.83  # exponent of the tone curve: below 1 opens the shadows
GROUND = 0.11  # tones up to here become black
SPARK = 0.45  # how far the brightest edges of forms may pass what the gradient leaves, far down

# Where white text stands in front (left, top, right, bottom): it asks for deep night.
NIGHT = ((303, 40, 462, 88), (817, 97, 968, 150))
RUNNER = (384, 304, 640, 448)  # around the runner: the calmest part
BEAM = 4.28  # the great ray that red text stands on: its twisted angle
BEAM_HALF = 24  # and half of its width, where it is full

NUMERALS = ("III", "IIII", "V", "VI", "VII", "VIII", "IX", "X", "XI", "XII", "I", "II")


def smoothstep(low, high, value):
    """0 below low, 1 above high (or the other way round when low > high)."""
    t = np.clip((value - low) / (high - low), 0, 1)
    return t * t * (3 - 2 * t)


def wrap(delta):
    """The shortest way round the torus: -512 to 512."""
    return (delta + SIZE / 2) % SIZE - SIZE / 2


def waves(x, y, terms):
    """Sum of sines repeating every SIZE pixels: (amplitude, cycles x, cycles y, phase) each."""
    total = np.zeros(np.broadcast(x, y).shape, np.float32)
    for amplitude, kx, ky, phase in terms:
        total += amplitude * np.sin(TAU * (kx * x + ky * y) / SIZE + phase)
    return total


def fold(angle, count, offset=0.0):
    """Angle to the nearest of count equal steps: -pi/count to pi/count."""
    step = TAU / count
    return (angle - offset + step / 2) % step - step / 2


class Canvas:
    """The picture while it is drawn, `scale` samples per pixel, in slightly bent coordinates."""

    def __init__(self, scale):
        self.scale = scale
        axis = ((np.arange(SIZE * scale) + 0.5) / scale).astype(np.float32)
        x, y = axis[None, :], axis[:, None]
        # Slow terms bend the forms, quick small ones are the unsteady hand.
        self.x = x + waves(x, y, [(9, 1, 1, 0.6), (7, -1, 2, 2.1), (3, 3, 1, 4.0),
                                  (0.45, 17, 9, 1.0), (0.35, -11, 21, 5.0)])
        self.y = y + waves(x, y, [(10, 1, -1, 1.9), (6, 2, 1, 0.2), (3, -1, 3, 3.3),
                                  (0.45, 13, -15, 2.0), (0.35, 19, 12, 0.4)])
        self.tone = np.zeros((axis.size, axis.size), np.float32)
        self.forms = np.zeros_like(self.tone)  # where anything is painted

    def window(self, centre, reach):
        """Index of the square around a place, and dx, dy from that place in bent pixels."""
        if reach >= SIZE / 2 - 1:
            span = np.arange(SIZE * self.scale)
            index = np.ix_(span, span)
        else:
            count = SIZE * self.scale
            rows = np.arange(int((centre[1] - reach) * self.scale),
                             int((centre[1] + reach) * self.scale)) % count
            columns = np.arange(int((centre[0] - reach) * self.scale),
                                int((centre[0] + reach) * self.scale)) % count
            index = np.ix_(rows, columns)
        return index, wrap(self.x[index] - centre[0]), wrap(self.y[index] - centre[1])

    def cover(self, distance):
        """Ink coverage from a signed distance in pixels, negative inside."""
        return np.clip(0.5 - distance * self.scale, 0, 1)

    def paint(self, index, coverage, value):
        old = self.tone[index]
        self.tone[index] = old + (value - old) * coverage
        self.forms[index] = np.maximum(self.forms[index], coverage)

    def lines(self, phase, width):
        """Lines at the whole numbers of phase; width in pixels, read against the local spacing."""
        gy = np.diff(phase, axis=0, append=phase[-1:])
        gx = np.diff(phase, axis=1, append=phase[:, -1:])
        gy -= np.round(gy)  # a phase may jump by a whole number, at the cut of an angle
        gx -= np.round(gx)
        gy[-1], gx[:, -1] = gy[-2], gx[:, -2]
        spacing = 1 / np.maximum(np.hypot(gx, gy) * self.scale, 1e-4)
        off = np.abs(phase - np.round(phase)) * spacing
        return self.cover(off - width / 2) * np.clip(width * 1.5 - 0.6, 0, 1)


def numeralStrip():
    """Tile of 12 numerals side by side, each 240 by 240 samples, top = rim of the dial; 0 to 1."""
    cell = 240
    big = 2
    strip = Image.new("L", (12 * cell * big, cell * big), 0)
    draw = ImageDraw.Draw(strip)

    def stroke(x0, x1, width):
        half = width / 2
        top, bottom = 14 * big, (cell - 14) * big
        draw.polygon([(x0 - half, top), (x0 + half, top), (x1 + half, bottom), (x1 - half, bottom)],
                     fill=255)
        for x, y in ((x0, top), (x1, bottom)):
            draw.rectangle([x - half - 7 * big, y - 7 * big, x + half + 7 * big, y + 7 * big],
                           fill=255)

    thick, thin = 25 * big, 11 * big
    advance = {"I": 51 * big, "V": 96 * big, "X": 98 * big}
    for number, text in enumerate(NUMERALS):
        width = sum(advance[sign] for sign in text)
        squeeze = min(1.0, 205 * big / width)
        x = (number + 0.5) * cell * big - width * squeeze / 2
        for sign in text:
            w = advance[sign] * squeeze
            centre = x + w / 2
            if sign == "I":
                stroke(centre, centre, thick * squeeze)
            elif sign == "V":
                stroke(centre - w * 0.3, centre, thick * squeeze)
                stroke(centre + w * 0.3, centre, thin)
            else:
                stroke(centre - w * 0.3, centre + w * 0.3, thick * squeeze)
                stroke(centre + w * 0.3, centre - w * 0.3, thin)
            x += w
    strip = strip.resize((12 * cell, cell), Image.Resampling.BOX)
    return np.asarray(strip, np.float32) / 255


STRIP = numeralStrip()


def numerals(angle, depth):
    """Ink of the numeral ring: angle on the dial, depth 0 at the outer edge to 1 at the inner."""
    height, width = STRIP.shape
    column = ((angle / TAU + 0.5 / 12) % 1) * width - 0.5
    row = np.clip(depth, 0, 1) * (height - 1)
    c0 = np.floor(column).astype(np.int32)
    r0 = np.minimum(np.floor(row).astype(np.int32), height - 2)
    fc, fr = column - c0, row - r0
    c1, c0 = (c0 + 1) % width, c0 % width
    upper = STRIP[r0, c0] * (1 - fc) + STRIP[r0, c1] * fc
    lower = STRIP[r0 + 1, c0] * (1 - fc) + STRIP[r0 + 1, c1] * fc
    ink = upper * (1 - fr) + lower * fr
    return np.where((depth > 0) & (depth < 1), ink, 0)


def halo(canvas, index, distance, reach, strength):
    """A soft shadow and a black outline of 3 pixels that set a form off from what lies behind."""
    shade = np.exp(-np.maximum(distance, 0) / reach) * strength
    canvas.tone[index] *= 1 - shade
    canvas.paint(index, canvas.cover(distance - 3.0), 0.0)


def within(x, y, box, edge):
    """1 inside a box (left, top, right, bottom), falling to 0 over `edge` pixels around it."""
    left, top, right, bottom = box
    dx = np.abs(wrap(x - (left + right) / 2)) - (right - left) / 2
    dy = np.abs(wrap(y - (top + bottom) / 2)) - (bottom - top) / 2
    return smoothstep(edge, 0, np.hypot(np.maximum(dx, 0), np.maximum(dy, 0)))


def background(canvas):
    """Night in flowing engraved lines, rays of light from the hero and fields of halftone dots."""
    x, y = canvas.x, canvas.y
    dx, dy = wrap(x - HERO[0]), wrap(y - HERO[1])
    r = np.hypot(dx, dy)
    angle = np.arctan2(dy, dx)
    everything = canvas.window((0, 0), SIZE)[0]

    nebula = waves(x, y, [(0.30, 1, 0, 3.9), (0.28, 1, 1, 0.4), (0.22, -1, 2, 5.2),
                          (0.14, 2, 1, 1.0)])
    nebula = np.clip(0.5 + nebula * 0.75, 0, 1)
    calm = np.ones(x.shape, np.float32)
    for left, top, right, bottom in NIGHT:
        far = np.hypot(wrap(x - (left + right) / 2) / (right - left + 46),
                       wrap(y - (top + bottom) / 2) / (bottom - top + 42)) * 2
        calm = np.minimum(calm, smoothstep(0.9, 2.6, far))

    # Rays: bundles of lines that run outward and swell inside each ray.
    twist = angle + 0.55 * np.log(np.maximum(r, 30) / 100)
    reach = 455 + 45 * np.sin(twist * 5 + 1.0) * np.cos(twist * 2)
    fade = smoothstep(reach, reach - 190, r)
    still = 1 - within(x, y, RUNNER, 90)
    fade *= 0.15 + 0.85 * still
    beam = smoothstep(BEAM_HALF + 60, BEAM_HALF, r * np.abs(fold(twist, 1, BEAM)))
    beam *= smoothstep(514, 470, r + 12 * np.sin(twist * 31)) * calm
    fade = np.maximum(fade, beam)
    ray = smoothstep(0.12, 0.85, 0.5 + 0.5 * np.cos(twist * 18))
    glow = smoothstep(512, 230, r)
    canvas.tone[:] = (0.07 + 0.06 * nebula + 0.10 * glow * ray) * calm

    # Lines of the night: level, but carried up and down as by a swell. Lines, rays and dots
    # make room for each other, so that they never cross into a net.
    lift = waves(x, y, [(34, 1, 0, 0.3), (26, 1, 1, 2.6), (16, 2, -1, 0.9), (9, 3, 1, 4.4)])
    phase = (y + lift) * (84 / SIZE)

    # Rivers of dots run with that swell; the ends of some rays break up into dots too.
    river = np.zeros(x.shape, np.float32)
    for bed, breadth, where in ((505, 62, 3.6), (95, 46, 5.4), (800, 70, 1.0)):
        strength = smoothstep(-0.35, 0.7, np.sin(TAU * x / SIZE + where))
        river = np.maximum(river, np.exp(-(wrap(y + lift - bed) / breadth) ** 2) * strength)
    frayed = smoothstep(0.1, 0.9, np.sin(twist * 3 - 0.4))
    river *= smoothstep(0.5, 0.05, fade * (1 - frayed))
    misty = np.maximum(river, frayed * smoothstep(330, 420, r) * smoothstep(505, 420, r))

    weight = 1.7 + 4.6 * nebula ** 1.4
    weight *= smoothstep(0.10, 0.0, fade) * smoothstep(0.42, 0.12, misty)
    ragged = reach + 20 + 90 * (0.5 + 0.5 * np.sin(np.round(phase) * 2.4))
    weight *= smoothstep(ragged - 70, ragged + 20, r)  # each line ends in a point of its own
    weight *= calm * (0.3 + 0.7 * still)
    canvas.paint(everything, canvas.lines(phase, weight), 0.32 + 0.20 * nebula)

    width = np.maximum(r, 1) * TAU / 126 * 0.60 * fade * (0.16 + 0.84 * ray)
    width *= smoothstep(0.55, 0.15, misty) * calm
    shine = 0.30 + 0.44 * fade
    # The great ray: there the lines swell until they nearly meet.
    width = np.minimum(width, 10)
    width += (np.maximum(r, 1) * TAU / 126 * 0.68 - width) * beam
    shine += (0.87 - shine) * beam
    canvas.tone[:] += (0.42 - canvas.tone) * beam ** 3
    canvas.paint(everything, canvas.lines(twist * (126 / TAU), width), shine)

    # Halftone: 45 degrees, pitch 9 pixels.
    dots = 80
    u = (x + y) * (dots / SIZE)
    v = (x - y) * (dots / SIZE)
    off = np.hypot(u - np.round(u), v - np.round(v)) * SIZE / (dots * np.sqrt(2))
    haze = smoothstep(400, 560, y) * smoothstep(760, 640, y)  # grows towards the ground
    misty = np.maximum(misty * (0.2 + 0.8 * still), 0.8 * haze * still)
    size = smoothstep(0.22, 1.0, misty * calm * (1 - beam)) * 4.3
    canvas.paint(everything, canvas.cover(off - size) * (size > 0.4), 0.50)


def gear(canvas, centre, radius, teeth, spokes, turn, brightness, curve=0.0):
    """A toothed wheel: ink outline, rim engraved in circles, bent spokes, open between them."""
    index, dx, dy = canvas.window(centre, radius * 1.25 + 90)
    r = np.hypot(dx, dy)
    angle = np.arctan2(dy, dx)
    pitch = TAU * radius / teeth
    height = pitch * 0.42
    phi = fold(angle, teeth, turn)
    tx, ty = r * np.cos(phi) - radius, np.abs(r * np.sin(phi))
    flank = (ty - (pitch * 0.29 - tx * 0.28)) * 0.96
    tooth = np.maximum(tx - height, flank)
    solid = np.minimum(r - radius, np.maximum(tooth, -tx - 4))
    rimInner, hub = radius * 0.74, radius * 0.27
    psi = fold(angle + curve * (r - hub) / radius, spokes, turn)
    swell = radius * (0.060 + 0.07 * ((r / radius - 0.5) / 0.24) ** 2)
    hole = np.maximum(np.maximum(r - rimInner, hub - r), swell - np.abs(r * np.sin(psi)))
    axle = r - radius * 0.085
    shape = np.maximum(np.maximum(solid, -hole), -axle)

    # Light comes from the hero.
    lx, ly = wrap(HERO[0] - centre[0]), wrap(HERO[1] - centre[1])
    aim = np.arctan2(ly, lx)
    lit = 0.5 + 0.5 * np.cos(angle - aim)
    sheen = 0.5 + 0.5 * np.cos(2 * (angle - aim) + 0.6)

    halo(canvas, index, shape, 16, 0.75)
    canvas.paint(index, canvas.cover(shape), 0.12 + 0.10 * lit)
    circles = canvas.lines((r / 7.0).astype(np.float32), 0.8 + 4.2 * sheen * (0.25 + 0.75 * lit))
    canvas.paint(index, circles * canvas.cover(shape + 4), brightness * (0.42 + 0.25 * lit))
    edge = np.abs(shape + 2.2) - (0.5 + 1.3 * lit)
    canvas.paint(index, canvas.cover(edge), brightness * (0.62 + 0.38 * lit))
    for ring in (radius * 0.93, radius * 0.80, radius * 0.20):
        canvas.paint(index, canvas.cover(np.abs(r - ring) - 2.6) * canvas.cover(shape), 0.03)
        canvas.paint(index, canvas.cover(np.abs(r - ring) - 0.4 - 0.8 * lit) * canvas.cover(shape),
                     brightness * 0.8)


def hand(canvas, index, dx, dy, heading, length, width, bend, value):
    """A clock hand from the centre: leaf shaped with a ring near its end, bent as it goes out."""
    r = np.hypot(dx, dy)
    angle = np.arctan2(dy, dx) - heading - bend * (r / length) ** 2
    along, across = r * np.cos(angle), np.abs(r * np.sin(angle))
    t = np.clip(along / length, -0.3, 1)
    half = width * (0.42 + 0.58 * smoothstep(0.10, 0.62, t)) * smoothstep(1.0, 0.62, t)
    shape = np.maximum(across - half, np.maximum(along - length, -along - length * 0.18))
    ring = np.hypot(along - length * 0.60, across)
    shape = np.minimum(shape, ring - width * 1.5)
    shape = np.maximum(shape, width * 0.75 - ring)
    shape = np.minimum(shape, r - width * 1.4)
    halo(canvas, index, shape, 5, 0.5)
    canvas.paint(index, canvas.cover(shape), value)
    canvas.paint(index, canvas.cover(r - width * 0.55), 0.0)


def dial(canvas, centre, radius, turn, twist, squash, brightness, hours, minutes):
    """A clock face: rim, minute track, numerals, engraved middle and two hands, wrung by twist.

    squash: how flat, along which angle, and how far it sags to one side (-1 to 1).
    """
    index, dx, dy = canvas.window(centre, radius * 1.3 + 90)
    # Bent as a whole: pressed along one direction and drawn out where it leans.
    lean = squash[1]
    px = dx * np.cos(lean) + dy * np.sin(lean)
    py = -dx * np.sin(lean) + dy * np.cos(lean)
    py = py * squash[0] + 0.22 * (px * px) / radius * squash[2]
    sx = px * np.cos(lean) - py * np.sin(lean)
    sy = px * np.sin(lean) + py * np.cos(lean)
    r = np.hypot(sx, sy)
    raw = np.arctan2(sy, sx)
    angle = raw - turn + twist * (1 - np.minimum(r / radius, 1.2))
    lx, ly = wrap(HERO[0] - centre[0]), wrap(HERO[1] - centre[1])
    lit = 0.5 + 0.5 * np.cos(raw - np.arctan2(ly, lx))
    edge = r - radius
    halo(canvas, index, edge, 12, 0.8)
    inside = canvas.cover(edge)
    canvas.paint(index, inside, 0.10 + 0.06 * lit)

    # Rim: bright, with engraved cross strokes in its shaded half.
    rim = np.abs(r - radius * 0.955) - radius * 0.045
    canvas.paint(index, canvas.cover(rim), brightness * (0.28 + 0.62 * lit))
    phase = (angle * round(radius * 0.95) / TAU).astype(np.float32)
    strokes = canvas.lines(phase, 1.2 + 1.8 * (1 - lit))
    canvas.paint(index, strokes * canvas.cover(rim) * (lit < 0.75), 0.06)
    canvas.paint(index, canvas.cover(np.abs(r - radius * 0.905) - 1.8), 0.0)

    # Minute track.
    for count, inner, half in ((60, 0.855, 0.9), (12, 0.82, 2.0)):
        off = np.abs(r * np.sin(fold(angle, count)))
        span = np.abs(r - radius * (0.89 + inner) / 2) - radius * (0.89 - inner) / 2
        tick = np.maximum(off - half * max(radius / 150, 0.7), span)
        canvas.paint(index, canvas.cover(tick), brightness * 0.85)

    canvas.paint(index, numerals(angle, (radius * 0.80 - r) / (radius * 0.24)) * inside,
                 brightness * (0.6 + 0.3 * lit))
    canvas.paint(index, canvas.cover(np.abs(r - radius * 0.53) - 0.9), brightness * 0.6)

    # Middle: a wrung rosette of lines.
    middle = canvas.cover(r - radius * 0.50) * smoothstep(radius * 0.04, radius * 0.2, r)
    petals = 0.5 + 0.5 * np.cos(6 * angle)
    width = np.minimum(r * 0.075, 5) * (0.25 + petals)
    rays = canvas.lines((angle * 36 / TAU).astype(np.float32), width)
    canvas.paint(index, rays * middle, brightness * (0.30 + 0.25 * lit))

    hand(canvas, index, sx, sy, hours, radius * 0.50, radius * 0.045, 0.35, brightness * 0.95)
    hand(canvas, index, sx, sy, minutes, radius * 0.78, radius * 0.036, -0.30, brightness)


def spiralClock(canvas):
    """The hero: one endless dial that winds into its own eye, twelve hours to each turn."""
    growth = 1.95  # radius of a turn against that of the next one in
    outer = 246.0
    index, dx, dy = canvas.window(HERO, SIZE)
    r = np.maximum(np.hypot(dx, dy), 1)
    raw = np.arctan2(dy, dx)
    start = 3 * TAU / 8  # where the outer end of the band lies
    around = ((raw - start) / TAU) % 1
    # Turns of the band counted inward from its outer edge; v runs across one turn, 0 to 1.
    turns = np.log(outer / r) / np.log(growth) - (1 - around)
    v = turns - np.floor(turns)
    bandPx = r * np.log(growth)  # length of one step of v, pixels
    centreGlow = smoothstep(150, 12, r)
    lit = 0.5 + 0.5 * np.cos(raw + 2.2)

    body = -turns * bandPx  # signed distance to the outer edge of the band, negative inside
    cut = r * np.sin(raw - start)  # to its outer end, negative on the side of the band
    behind = (body > 0) & (cut > 0) & (np.cos(raw - start) > 0)
    past = np.maximum(r * np.cos(raw - start) - outer, 0)
    body = np.where(behind, np.minimum(body, np.hypot(cut, past)), body)
    halo(canvas, index, np.where(body > 0, body, -1.0), 26, 0.85)
    inside = canvas.cover(body)
    canvas.paint(index, inside, 0.10 + 0.12 * centreGlow)
    small = smoothstep(9, 26, r)

    # Dots shade the face, largest away from the light.
    dots = 104
    u, w = (canvas.x + canvas.y) * (dots / SIZE), (canvas.x - canvas.y) * (dots / SIZE)
    off = np.hypot(u - np.round(u), w - np.round(w)) * SIZE / (dots * np.sqrt(2))
    shade = smoothstep(-0.6, 1.0, -np.cos(raw + 2.2)) * smoothstep(70, 230, r)
    canvas.paint(index, canvas.cover(off - 2.9 * shade) * inside * (shade > 0.1), 0.035)

    def ring(at, half):
        return canvas.cover((np.abs(v - at) - half) * bandPx)

    rim = ring(0.085, 0.055)
    canvas.paint(index, rim * inside, 0.30 + 0.35 * lit + 0.25 * centreGlow)
    marks = canvas.cover((np.abs(r * np.sin(fold(raw, 120)))) - r * 0.011 * (1.3 - lit))
    canvas.paint(index, marks * rim * inside * smoothstep(60, 110, r), 0.05)

    tick = canvas.cover(np.abs(r * np.sin(fold(raw, 60))) - r * 0.009)
    tick *= ring(0.215, 0.045) * smoothstep(50, 90, r)
    canvas.paint(index, tick * inside, 0.62)
    tick = canvas.cover(np.abs(r * np.sin(fold(raw, 12))) - r * 0.018) * ring(0.225, 0.055)
    canvas.paint(index, tick * inside, 0.80)

    ink = numerals(raw, (v - 0.31) / 0.43)
    canvas.paint(index, ink * inside * small, 0.66 + 0.22 * centreGlow)
    canvas.paint(index, ring(0.785, 0.008) * inside, 0.5)

    # The inner lip is shaded by lines along the band, heavier to the light.
    lip = canvas.cover((np.abs(v - 0.895) - 0.085) * bandPx)
    fine = canvas.lines((turns * 18).astype(np.float32), r * 0.037 * (0.25 + 0.6 * lit))
    canvas.paint(index, fine * lip * inside * smoothstep(40, 80, r), 0.40)
    canvas.paint(index, ring(0.0, 0.018) * inside, 0.0)

    seam = canvas.cover(np.abs(cut + 5) - 1.3) * (np.cos(raw - start) > 0) * (turns < 1)
    canvas.paint(index, seam * inside, 0.62)

    eye = smoothstep(40, 4, r)
    canvas.paint(index, eye, 0.92)
    hand(canvas, index, dx, dy, -2.25, 116, 7.5, 0.5, 0.90)
    hand(canvas, index, dx, dy, -0.66, 184, 7, -0.42, 0.96)


def stars(canvas):
    """A few four-pointed stars in the open night."""
    for x, y, size in ((60, 60, 15), (266, 34, 10), (395, 330, 9), (990, 610, 12), (30, 330, 8),
                       (948, 60, 9), (470, 660, 14), (900, 760, 10), (90, 760, 9), (560, 960, 8),
                       (302, 122, 7), (398, 113, 5), (503, 106, 8), (470, 14, 5), (592, 14, 7),
                       (1003, 18, 7), (1012, 165, 6), (352, 262, 6), (160, 30, 6)):
        index, dx, dy = canvas.window((x, y), 40)
        ax, ay = np.abs(dx), np.abs(dy)
        shape = (np.sqrt(ax) + np.sqrt(ay) - np.sqrt(size)) * np.sqrt(size) * 0.6
        halo(canvas, index, np.hypot(dx, dy) - size * 0.4, 6, 0.7)
        canvas.paint(index, canvas.cover(shape), 0.88)


def shade(tone):
    """Holds the tones behind white text near black."""
    axis = np.arange(SIZE) + 0.5
    limit = 0.015
    for box in NIGHT:
        held = limit * (1 - np.exp(-tone / limit))
        tone = tone + (held - tone) * within(axis[None, :], axis[:, None], box, 26)
    return tone


def room(row):
    """The brightest tone of a row: over the gradient of the play, whose blue runs from 128 to 255,
    the screen reaches 250. The rows below, which are never seen, lead back to the first one."""
    blue = 128 + 127 * np.minimum(row, SEEN) / SEEN
    left = np.maximum((250 - blue) * 2 / 255, 0.02)
    return left + (0.95 - left) * smoothstep(SEEN, SIZE, row)


def fall(tone, forms):
    """Fits the tones to the room of their row. The less there is of it, the steeper the curve, so
    that forms can be made out far down. Only the edges of the forms may pass it a little: they
    turn white in the play, and the title, which has no gradient, lives by them."""
    left = room(np.arange(SIZE) + 0.5)[:, None]
    tone = np.maximum((tone - GROUND) / (0.40 + 0.42 * left), 0)
    return np.minimum(tone, 1) * left + SPARK * (1 - left) * forms * smoothstep(1.22, 1.5, tone)


def draw(scale):
    canvas = Canvas(scale)
    background(canvas)
    canvas.forms[:] = 0  # lines and dots of the background are not forms
    stars(canvas)
    gear(canvas, (252, 510), 128, 26, 6, 0.05, 0.85, 0.9)
    gear(canvas, (20, 225), 84, 18, 5, 0.2, 0.7, -0.7)
    gear(canvas, (620, 800), 150, 30, 7, 0.0, 0.75, 0.8)
    gear(canvas, (850, 905), 92, 18, 5, 0.12, 0.8, -0.8)
    spiralClock(canvas)
    dial(canvas, (150, 178), 116, -0.5, 0.7, (1.12, 0.5, 1.0), 0.9, 2.6, -0.7)
    dial(canvas, (150, 690), 105, 0.4, -0.8, (1.15, 2.4, -1.0), 0.8, 1.2, -2.0)
    gear(canvas, (127, 365), 54, 12, 4, 0.15, 0.9, 0.6)

    def reduced(field):
        return field.reshape(SIZE, scale, SIZE, scale).mean(axis=(1, 3))

    return fall(shade(np.clip(reduced(canvas.tone), 0, 1) ** LIFT), reduced(canvas.forms))


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    default = os.path.join(os.path.dirname(here), "images", "sprites", "sky.jpg")
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("output", nargs="?", default=default)
    parser.add_argument("--scale", type=int, default=3, help="samples per pixel and direction")
    arguments = parser.parse_args()
    tone = draw(arguments.scale)
    grey = np.round(tone * 255).astype(np.uint8)
    picture = Image.fromarray(np.stack([grey] * 3, axis=-1), "RGB")
    picture.save(arguments.output, "JPEG", quality=QUALITY, subsampling=0, optimize=True)
    print(f"{arguments.output}: mean {grey.mean() / 255:.3f}, "
          f"{os.path.getsize(arguments.output)} bytes")


if __name__ == "__main__":
    main()
