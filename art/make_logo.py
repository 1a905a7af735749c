#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Draws images/sprites/logo.png, 1024 by 720: the title as a comic masthead.

The letters are those of letters.py with a far broader nib, bent into an arch. Everything is
painted larger than it ships and reduced at the end; lengths are pixels of the shipped picture,
y down. The lowest 120 rows stay clear."""

import math
import random

import numpy
from PIL import Image, ImageDraw
from scipy import ndimage

import letters
from pictures import savePng, spritesFolder

width, height, clearRows = 1024, 720, 120
oversample = 4

black = (10, 6, 20)
white = (255, 255, 255)
yellow = (255, 232, 0)
orange = (255, 128, 0)
flame = (255, 70, 10)
magenta = (236, 0, 140)
plum = (92, 0, 110)
night = (26, 16, 74)
indigo = (52, 34, 140)
cyan = (0, 214, 255)
sea = (0, 110, 220)

dialCentre = (512, 300)
dialRadius = 268


class Canvas:
    """The picture while it is painted: colour and alpha, each 0 to 1, at oversampled size."""

    def __init__(self):
        self.rows, self.columns = (height - clearRows) * oversample, width * oversample
        self.colour = numpy.zeros((self.rows, self.columns, 3), numpy.float32)
        self.alpha = numpy.zeros((self.rows, self.columns), numpy.float32)
        self.y, self.x = numpy.mgrid[0:self.rows, 0:self.columns].astype(numpy.float32)
        self.x = (self.x + 0.5) / oversample
        self.y = (self.y + 0.5) / oversample

    def shape(self, *polygons):
        """Mask of the union of polygons (lists of points)."""
        image = Image.new("1", (self.columns, self.rows))
        draw = ImageDraw.Draw(image)
        for polygon in polygons:
            draw.polygon([(x * oversample, y * oversample) for x, y in polygon], fill=1)
        return numpy.array(image)

    def sign(self, contours):
        """Mask of one sign: its outer contours filled, its holes left out."""
        mask = numpy.zeros((self.rows, self.columns), bool)
        for contour in contours:
            mask ^= self.shape(contour)
        return mask

    def union(self, masks):
        whole = numpy.zeros((self.rows, self.columns), bool)
        for mask in masks:
            whole |= mask
        return whole

    def paint(self, mask, colour, strength=1.0):
        """Lays a colour over the places of a mask; colour is 0 to 255, strength 0 to 1."""
        paint = numpy.asarray(colour, numpy.float32) / 255
        old = self.colour[mask]
        self.colour[mask] = old + (paint - old) * strength
        self.alpha[mask] = numpy.maximum(self.alpha[mask], strength)

    def dots(self, size, pitch, angle=45):
        """Mask of a halftone: round dots in a turned grid, each covering as much as size says.

        size is a field (rows by columns): 0 no dot, 1 closed ink."""
        turn = math.radians(angle)
        u = (self.x * math.cos(turn) + self.y * math.sin(turn)) / pitch
        v = (self.y * math.cos(turn) - self.x * math.sin(turn)) / pitch
        far = numpy.hypot(u - numpy.floor(u) - 0.5, v - numpy.floor(v) - 0.5)
        return far < numpy.clip(size, 0, 1) * 0.72

    def finish(self):
        """The picture at its shipped size."""
        shape = (height - clearRows, oversample, width, oversample)
        alpha = self.alpha.reshape(shape).mean(axis=(1, 3))
        colour = (self.colour * self.alpha[..., None]).reshape(*shape, 3).mean(axis=(1, 3))
        colour /= numpy.maximum(alpha, 1e-6)[..., None]
        pixels = numpy.zeros((height, width, 4), numpy.uint8)
        pixels[:-clearRows, :, :3] = numpy.round(colour * 255)
        pixels[:-clearRows, :, 3] = numpy.round(alpha * 255)
        return Image.fromarray(pixels, "RGBA")


def grown(mask, distance):
    """A mask made wider all round by a distance in pixels."""
    return ndimage.distance_transform_edt(~mask) < distance * oversample


def shrunk(mask, distance):
    return ndimage.distance_transform_edt(mask) > distance * oversample


def rounded(mask, size):
    """A mask with its corners, inner and outer, rounded off."""
    return ndimage.gaussian_filter(mask.astype(numpy.float32), size * oversample) > 0.5


def moved(mask, right, down):
    """A mask moved by whole oversampled pixels; what leaves the picture is lost."""
    right, down = round(right * oversample), round(down * oversample)
    result = numpy.zeros_like(mask)
    rows, columns = mask.shape
    result[max(down, 0):rows + min(down, 0), max(right, 0):columns + min(right, 0)] = \
        mask[max(-down, 0):rows - max(down, 0), max(-right, 0):columns - max(right, 0)]
    return result


def setWord(word, weight, widen, gap):
    """Contours of each letter of a word, side by side with the same least gap between
    neighbours; x and y run from 0 to 1 over the word (y up)."""
    placed = []
    edge = None
    for sign in word:
        contours = letters.outline(sign, weight, widen)
        left, right = {}, {}
        for x, y in numpy.concatenate(contours):
            row = int(y // 12)
            left[row] = min(left.get(row, x), x)
            right[row] = max(right.get(row, x), x)
        shift = 0.0
        if edge is not None:
            shift = max(edge[row + near] + gap - x for row, x in left.items()
                        for near in (-3, -2, -1, 0, 1, 2, 3) if row + near in edge)
        placed.append([contour + (shift, 0) for contour in contours])
        edge = {row: x + shift for row, x in right.items()}
    every = numpy.concatenate([point for contours in placed for point in contours])
    low, high = every.min(axis=0), every.max(axis=0)
    return [[(contour - low) / (high - low) for contour in contours] for contours in placed]


def bend(word, left, right, top, bottom):
    """Puts a set word between two curves: top and bottom give y for a place 0 to 1 along it."""
    result = []
    for contours in word:
        bent = []
        for contour in contours:
            u, v = contour[:, 0], contour[:, 1]
            y = bottom(u) + (top(u) - bottom(u)) * v
            bent.append(numpy.stack([left + (right - left) * u, y], axis=1))
        result.append(bent)
    return result


def paintWord(canvas, word, towards, depth, walls, faces):
    """Paints a bent word as solid letters: side walls that run towards a point, then faces.

    walls: the colour and its halftone's; faces: colours from the top of the letters to their
    foot, each carried into the next by halftone dots."""
    towards = numpy.array(towards)
    front = canvas.union(canvas.sign(contours) for contours in word)
    side = canvas.union(canvas.sign([towards + (contour - towards) * (1 - depth * step)
                                     for contour in contours])
                        for step in numpy.linspace(0, 1, 29) for contours in word)
    ink = grown(side, 7)
    canvas.paint(grown(ink, 4.5), white)
    canvas.paint(ink, black)
    low, high = (canvas.y[front].min(), canvas.y[front].max())
    along = (canvas.y - low) / (high - low)
    canvas.paint(side, walls[0])
    canvas.paint(side & canvas.dots(along * 1.1 - 0.1, 7), walls[1])
    canvas.paint(grown(front, 5.5), black)
    canvas.paint(front, faces[0])
    canvas.paint(front & canvas.dots((along - 0.22) * 1.7, 9), faces[1])
    canvas.paint(front & canvas.dots((along - 0.66) * 1.9, 9), faces[2])
    core = shrunk(front, 5)
    canvas.paint(core & ~moved(core, 3.4, 3.8), white)


def star(centre, radii, points, seed, inner=0.72):
    """A jagged burst: an ellipse's spikes with uneven reach."""
    hand = random.Random(seed)
    polygon = []
    for index in range(points * 2):
        angle = 2 * math.pi * (index + hand.uniform(-0.2, 0.2)) / (points * 2)
        reach = hand.uniform(0.9, 1.0) if index % 2 else inner * hand.uniform(0.92, 1.05)
        polygon.append((centre[0] + radii[0] * reach * math.cos(angle),
                        centre[1] + radii[1] * reach * math.sin(angle)))
    return polygon


def ellipse(centre, radiusX, radiusY):
    return [(centre[0] + radiusX * math.cos(a), centre[1] + radiusY * math.sin(a))
            for a in numpy.linspace(0, 2 * math.pi, 240, endpoint=False)]


def paintBurst(canvas):
    """The jagged flash behind everything, with speed lines that leave the dial's centre."""
    burst = canvas.shape(star(dialCentre, (508, 298), 21, "burst"))
    x, y = dialCentre
    far = numpy.hypot((canvas.x - x) / 500, (canvas.y - y) / 290)
    canvas.paint(grown(shrunk(burst, 4), 4), magenta)
    hand = random.Random("rays")
    rays = []
    for index in range(54):
        angle = 2 * math.pi * (index + hand.uniform(-0.3, 0.3)) / 54
        spread = hand.uniform(0.008, 0.026)
        start = hand.uniform(0.5, 0.7)
        rays.append([(x + 500 * start * math.cos(angle), y + 290 * start * math.sin(angle))]
                    + [(x + 640 * math.cos(angle + s), y + 370 * math.sin(angle + s))
                       for s in (-spread, spread)])
    canvas.paint(shrunk(burst, 4) & canvas.dots((far - 0.6) * 1.5, 9), plum)
    canvas.paint(canvas.shape(*rays) & shrunk(burst, 6), yellow)


def paintDial(canvas):
    """A clock's face behind the words, its minutes ticked off round the edge."""
    x, y = dialCentre
    far = numpy.hypot(canvas.x - x, canvas.y - y)
    canvas.paint(far < dialRadius + 10, black)
    canvas.paint(far < dialRadius + 3, yellow)
    canvas.paint(far < dialRadius - 11, black)
    canvas.paint(far < dialRadius - 16, night)
    face = far < dialRadius - 16
    canvas.paint(face & canvas.dots(1.1 - far / dialRadius * 1.35, 10), indigo)
    ticks = []
    for minute in range(60):
        angle = math.radians(minute * 6)
        long, half = (34, 5.5) if minute % 5 == 0 else (15, 2.2)
        along = numpy.array([math.cos(angle), math.sin(angle)])
        across = numpy.array([-along[1], along[0]])
        outer, inner = dialRadius - 22, dialRadius - 22 - long
        ticks.append([numpy.array(dialCentre) + along * r + across * half * side
                      for r, side in ((outer, -1), (outer, 1), (inner, 0.6), (inner, -0.6))])
    canvas.paint(canvas.shape(*ticks), cyan)


def paintBolt(canvas):
    """The bolt that strikes the dial."""
    bolt = [(690, 14), (420, 296), (516, 304), (330, 590), (668, 258), (566, 250), (790, 30)]
    mask = canvas.shape(bolt)
    canvas.paint(grown(mask, 9), black)
    canvas.paint(mask, yellow)
    canvas.paint(mask & canvas.dots((canvas.y - 160) / 420, 9), orange)
    core = shrunk(mask, 6)
    canvas.paint(core & ~moved(core, 6, 4), white)


def limb(*joints):
    """Polygons of a limb: joints (x, y, radius) and the tapered flesh between them."""
    polygons = []
    for (ax, ay, ar), (bx, by, br) in zip(joints[:-1], joints[1:]):
        along = numpy.array([bx - ax, by - ay])
        along = along / max(numpy.hypot(*along), 1e-6)
        across = numpy.array([-along[1], along[0]])
        a, b = numpy.array([ax, ay]), numpy.array([bx, by])
        polygons.append([a + across * ar, b + across * br, b - across * br, a - across * ar])
    polygons += [ellipse((x, y), radius, radius) for x, y, radius in joints]
    return polygons


def ribbon(points, radii):
    """Polygon of a band through points, half as wide as radii say."""
    points = numpy.array(points, float)
    tangent = numpy.gradient(points, axis=0)
    normal = numpy.stack([-tangent[:, 1], tangent[:, 0]], axis=1)
    normal *= (numpy.array(radii) / numpy.hypot(*tangent.T))[:, None]
    return list(points + normal) + list((points - normal)[::-1])


def tongue(foot, rise, lean, half):
    """Polygon of one flame: round at its foot, its tip blown back."""
    t = numpy.linspace(0, 1, 24)
    x = foot[0] - lean * t ** 1.6
    y = foot[1] - rise * t
    wide = half * numpy.sqrt(1 - t) * (0.75 + 0.55 * numpy.sin(t * math.pi))
    return list(zip(x + wide, y)) + list(zip((x - wide)[::-1], y[::-1]))


def paintFlames(canvas):
    """The two burning tracks that the runner leaves."""
    for base, left, right, seed, size in ((548, 250, 846, "far", 0.75), (584, 96, 872, "near", 1)):
        hand = random.Random(seed)
        feet = []
        x = left
        while x < right:
            share = (x - left) / (right - left)
            feet.append((x, (10 + 38 * share) * hand.uniform(0.6, 1.1) * size,
                         (26 + 34 * share) * size, (9 + 9 * share) * size))
            x += (15 + 13 * share) * size
        spine = [(x, base - 4 * size) for x in numpy.linspace(left - 60, right + 20, 80)]
        thick = numpy.linspace(0.3, 8, 80) * size
        thick[-16:] *= numpy.sqrt(1 - numpy.linspace(0, 0.99, 16) ** 2)

        def layer(share):
            flames = [tongue((x, base), rise * share, lean * share, half * share)
                      for x, rise, lean, half in feet]
            return canvas.shape(ribbon(spine, thick * share), *flames)
        outer = layer(1)
        canvas.paint(grown(outer, 5), black)
        for share, colour in ((1, flame), (0.74, orange), (0.5, yellow), (0.22, white)):
            canvas.paint(layer(share), colour)


def paintRunner(canvas):
    """The runner at full stride, off the end of the burning tracks."""
    def place(x, y, radius=0.0):
        return 812 + x, 402 + y, radius

    def part(*joints):
        return limb(*(place(*joint) for joint in joints))

    def patch(*points):
        return [place(x, y)[:2] for x, y in points]
    figure = canvas.shape(
        *part((84, 116, 18), (97, 93, 15.5), (112, 70, 20)),                        # trunk
        *part((122, 56, 10), (136, 40, 10)), *part((143, 30, 18), (147, 32, 16)),   # head
        patch((150, 14), (134, 36), (122, 26), (104, 2)),                           # hair
        patch((136, 18), (132, 44), (120, 38), (98, 20)),
        patch((160, 20), (140, 26), (132, 20), (122, -8)),
        *part((90, 114, 16), (118, 109, 14.5), (146, 112, 11), (146, 136, 10.5), (135, 163, 6)),
        *part((134, 167, 7), (150, 173, 6), (163, 174, 4)),                         # leading leg
        *part((84, 116, 16), (62, 140, 13.5), (44, 154, 10.5), (18, 152, 10), (-8, 143, 6)),
        *part((-8, 144, 7), (-19, 157, 6), (-25, 170, 4)),                          # trailing leg
        *part((120, 64, 12), (150, 88, 9), (165, 76, 9), (176, 57, 6), (179, 50, 9.5)))
    arm = canvas.shape(*part((106, 66, 11), (66, 72, 9.5), (56, 88, 9), (49, 106, 6),
                             (47, 113, 9)))
    arm = rounded(arm, 1.9)
    body = rounded(figure, 1.9) | arm
    t = numpy.linspace(0, 1, 50)
    tails = [ribbon([place(120 - reach * s, 52 - rise * s + sway * math.sin(s * curl) * s)[:2]
                     for s in t], wide * (0.75 + 1.1 * t) * numpy.clip((1 - t) * 5, 0.02, 1))
             for reach, rise, sway, curl, wide in ((118, 2, 13, 8.6, 7), (142, 30, 15, 7.0, 9))]
    scarf = [canvas.shape(tail) for tail in tails]
    scarf.append(canvas.shape(*part((110, 50, 9), (122, 55, 10), (136, 52, 8))))
    whole = canvas.union([body, *scarf])
    canvas.paint(grown(whole, 9.5), black)
    canvas.paint(grown(whole, 5), white)
    canvas.paint(grown(whole, 0.5), black)
    core = shrunk(body, 1.5)
    canvas.paint(core & ~moved(core, -3, 3.5), sea)
    canvas.paint(grown(arm, 2.5) & core, sea)
    canvas.paint(arm, black)
    for tail, colour in zip(scarf, (sea, cyan, cyan)):
        canvas.paint(grown(tail, 3), black)
        canvas.paint(tail, colour)
        inner = shrunk(tail, 2)
        canvas.paint(inner & ~moved(inner, 0, 3), white)
    canvas.paint(canvas.shape(patch((151, 22), (163, 25), (160, 33), (150, 31))), white)


def arch(along):
    """How far from the middle of a word, 0 there and 1 at both ends, for a place 0 to 1."""
    return (2 * along - 1) ** 2


def main():
    canvas = Canvas()
    paintBurst(canvas)
    paintDial(canvas)
    paintBolt(canvas)
    paintFlames(canvas)
    episode = bend(setWord("EPISODE", 1.8, 1.35, 26), 130, 786,
                   lambda u: 316 + 6 * arch(u), lambda u: 482 - 14 * arch(u))
    paintWord(canvas, episode, (512, 200), 0.07, (sea, night), (white, cyan, sea))
    tarnwick = bend(setWord("TARNWICK", 1.8, 1.3, 26), 22, 1002,
                    lambda u: 96 - 66 * arch(u), lambda u: 270 + 62 * arch(u))
    paintWord(canvas, tarnwick, (512, 640), 0.07, (magenta, plum), (yellow, orange, flame))
    paintRunner(canvas)
    savePng(canvas.finish(), spritesFolder / "logo.png")


if __name__ == "__main__":
    main()
