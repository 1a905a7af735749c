#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Draws the program's icon: packaging/icons/tarnwick.svg, the same as PNG in the sizes that
desktops ask for, and images/icon.png, which the window shows.

The runner crosses a clock's face. Below 48 pixels a plainer drawing stands in, without burst and
ticks; the smallest is set pixel by pixel. Lengths are 256ths of the icon's side, y down. Needs
rsvg-convert (librsvg2-bin). Run it with no arguments."""

import io
import math
import subprocess

import numpy
from PIL import Image

from make_logo import black, cyan, flame, magenta, orange, ribbon, sea, star, white, yellow
from pictures import artFolder, fromRows, imagesFolder, savePng

iconFolder = artFolder.parent / "packaging" / "icons"
sizes = (16, 22, 24, 32, 48, 64, 128, 256)  # pixels
firstDetailed = 48
windowSize = 32

smallest = [  # K ink, y o the dial, c the scarf, e the eye
    ".....kKKKKk.....",
    "...KKYYYYYYKK...",
    "..KYYYYYKKKYYK..",
    ".KYYYYYKKKKKYYK.",
    ".KYccYYKKKeeYYK.",
    "kKccccccKKKKYYKk",
    "KYYYccccccKYKYYK",
    "KyyyyyKKKKccKyyK",
    "KyyyyKKyKKKKKyyK",
    "KyyyyyyKKKKyyyyK",
    "kKyyyKKKKKKKyyKk",
    ".KKKKKKoooKKooK.",
    ".KKoooooooKKooK.",
    "..KoooooooKKKK..",
    "...KKooooooKK...",
    ".....kKKKKk.....",
]

side = 256


def paint(colour):
    return "#%02x%02x%02x" % colour


def number(value):
    """A length without needless digits."""
    return f"{value:.1f}".removesuffix(".0")


def polygon(points):
    return "M" + "L".join(f"{number(x)} {number(y)}" for x, y in points) + "Z"


def shape(*polygons):
    """One path, filled where any of the polygons is."""
    turned = []
    for points in polygons:
        x, y = numpy.array(points, float).T
        forward = numpy.dot(x, numpy.roll(y, -1)) > numpy.dot(y, numpy.roll(x, -1))
        turned.append(polygon(list(zip(x, y))[::1 if forward else -1]))
    return f'<path d="{"".join(turned)}"/>'


def limb(*joints):
    """Joints (x, y, radius) and the tapered flesh between them."""
    flesh = []
    for (ax, ay, ar), (bx, by, br) in zip(joints[:-1], joints[1:]):
        along = numpy.array([bx - ax, by - ay]) / math.hypot(bx - ax, by - ay)
        across = numpy.array([-along[1], along[0]])
        a, b = numpy.array([ax, ay]), numpy.array([bx, by])
        flesh.append([a + across * ar, b + across * br, b - across * br, a - across * ar])
    return shape(*flesh) + "".join(
        f'<circle cx="{number(x)}" cy="{number(y)}" r="{number(r)}"/>' for x, y, r in joints)


class Runner:
    """The runner at full stride. `place` is where its own (0, 0) lies, `scale` its size, `flesh`
    a factor of every limb's width."""

    def __init__(self, place, scale, flesh):
        self.place, self.scale, self.flesh = place, scale, flesh

    def at(self, x, y):
        return self.place[0] + x * self.scale, self.place[1] + y * self.scale

    def part(self, *joints):
        return limb(*((*self.at(x, y), radius * self.scale * self.flesh) for x, y, radius in joints))

    def patch(self, *points):
        return shape([self.at(x, y) for x, y in points])

    def body(self):
        return "".join([
            self.part((84, 116, 18), (97, 93, 16), (110, 68, 18)),  # trunk
            self.patch((66, 82), (110, 60), (132, 68), (136, 96), (112, 128), (76, 104)),
            self.part((122, 56, 11), (136, 40, 11)), self.part((143, 30, 20), (148, 33, 17)),
            self.patch((150, 12), (134, 36), (122, 26), (104, 0)),  # hair
            self.patch((136, 18), (132, 46), (120, 38), (96, 20)),
            self.patch((160, 20), (140, 26), (132, 20), (122, -12)),
            self.part((90, 114, 17), (118, 108, 17), (146, 112, 12), (147, 140, 10.5),
                      (137, 164, 7)),  # leading leg
            self.part((134, 168, 8), (152, 174, 7), (165, 175, 5)),
            self.part((84, 116, 17), (62, 140, 14.5), (44, 154, 11.5), (16, 154, 10.5),
                      (-6, 146, 7)),  # trailing leg
            self.part((-6, 147, 8), (-17, 158, 7), (-23, 170, 5)),
            self.part((118, 62, 13), (150, 90, 9.5), (167, 78, 9.5), (178, 56, 10))])

    def nearArm(self):
        return self.part((106, 66, 12), (66, 74, 10.5), (56, 90, 10), (48, 112, 9.5))

    def eye(self):
        return self.patch((150, 22), (166, 25), (163, 36), (149, 34))

    def scarf(self, reach, rise, wave, wide):
        """The two tails and the band, each with its colour."""
        t = numpy.linspace(0, 1, 24)
        shapes = []
        for length, lift, curl, breadth, colour in ((reach * 0.8, rise * 0.1, 8.6, 0.8, sea),
                                                    (reach, rise, 7.0, 1, cyan)):
            spine = [self.at(118 - length * s, 52 - lift * s + wave * math.sin(s * curl) * s)
                     for s in t]
            half = wide * breadth * self.scale * (0.7 + t) * numpy.clip((1 - t) * 5, 0.02, 1)
            shapes.append((shape(ribbon(spine, half)), colour))
        return shapes + [(self.part((108, 50, 9), (122, 56, 10), (138, 54, 8)), cyan)]


def group(content, colour, grown=0.0):
    """Elements in one colour, wider all round by `grown`."""
    stroke = f' stroke="{paint(colour)}" stroke-width="{number(2 * grown)}"' if grown else ""
    return f'<g fill="{paint(colour)}"{stroke}>{content}</g>'


def disc(centre, radius, fill):
    return (f'<circle cx="{number(centre[0])}" cy="{number(centre[1])}" r="{number(radius)}"'
            f' fill="{fill}"/>')


def dial(centre, radius, ring):
    """A clock's face of sunset in a ring of ink; `ring` is how broad."""
    return (disc(centre, radius, paint(black)) + disc(centre, radius - ring, "url(#sunset)"))


def ticks(centre, outer):
    marks = []
    for hour in range(12):
        length, half = (19, 4.2) if hour % 3 == 0 else (13, 2.6)
        angle = math.radians(hour * 30)
        along = numpy.array([math.cos(angle), math.sin(angle)])
        across = numpy.array([-along[1], along[0]])
        marks.append([numpy.array(centre) + along * r + across * half * s for r, s in
                      ((outer, -1), (outer, 1), (outer - length, 0.7), (outer - length, -0.7))])
    return group(shape(*marks), black)


def halftone(centre, radius, pitch):
    """Dots of flame that grow towards the foot of the dial."""
    dots = []
    steps = int(radius / pitch * 1.5)
    for i in range(-steps, steps + 1):
        for j in range(-steps, steps + 1):
            x, y = (i + j) * pitch * math.sqrt(0.5), (i - j) * pitch * math.sqrt(0.5)
            size = (y / radius - 0.1) * pitch * 0.62
            if size > 0.4 and math.hypot(x, y) + size < radius:
                dots.append(disc((centre[0] + x, centre[1] + y), size, paint(flame)))
    return "".join(dots)


def figure(runner, scarf, ink, light):
    """The runner with its scarf, in a line of light and a line of ink."""
    whole = runner.body() + runner.nearArm() + "".join(tail for tail, _ in scarf)
    return (group(whole, black, ink + light) + (group(whole, white, light) if light else "")
            + group(runner.body(), black))


def detailed():
    centre, radius = (130, 130), 104
    runner = Runner((48, 54), 0.9, 1)
    scarf = runner.scarf(132, 24, 11, 8)
    burst = shape(star(centre, (124, 124), 15, "icon", inner=0.82))
    content = [
        group(burst, black, 3), group(burst, magenta),
        dial(centre, radius, 6), halftone(centre, radius - 8, 9.5), ticks(centre, radius - 11),
        figure(runner, scarf, 4, 4)]
    for tail, colour in scarf:
        content += [group(tail, black, 2.5), group(tail, colour)]
    return content + [group(runner.nearArm(), sea, 2.5), group(runner.nearArm(), black),
                      group(runner.eye(), white)]


def plain():
    centre = (side / 2, side / 2)
    runner = Runner((40, 40), 1.03, 0.98)
    scarf = runner.scarf(112, 16, 6, 10)[1:]
    content = [dial(centre, 126, 12), figure(runner, scarf, 0, 0)]
    content += [group(tail, colour) for tail, colour in scarf]
    return content + [group(runner.eye(), white, 1.5)]


def svg(content):
    return "\n".join([
        '<?xml version="1.0" encoding="UTF-8"?>',
        "<!-- SPDX-License-Identifier: CC-BY-4.0 -->",
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{side}" height="{side}"'
        f' viewBox="0 0 {side} {side}" stroke-linejoin="round">',
        '<linearGradient id="sunset" x1="0" y1="0" x2="0" y2="1">'
        f'<stop offset="0.1" stop-color="{paint(yellow)}"/>'
        f'<stop offset="1" stop-color="{paint(orange)}"/></linearGradient>',
        *content, "</svg>", ""])


def render(text, size):
    png = subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size)],
                         input=text.encode(), stdout=subprocess.PIPE, check=True).stdout
    return Image.open(io.BytesIO(png)).convert("RGBA")


def icon(size):
    """The picture for a size in pixels."""
    if size == len(smallest):
        inks = {"K": (*black, 255), "k": (*black, 140), "Y": (*yellow, 255), "y": (255, 192, 0, 255),
                "o": (*orange, 255), "c": (*cyan, 255), "e": (*white, 255), ".": (0, 0, 0, 0)}
        return fromRows(smallest, inks)
    return render(svg(detailed() if size >= firstDetailed else plain()), size)


def main():
    iconFolder.mkdir(parents=True, exist_ok=True)
    (iconFolder / "tarnwick.svg").write_text(svg(detailed()))
    for size in sizes:
        savePng(icon(size), iconFolder / f"tarnwick-{size}.png")
    savePng(icon(windowSize), imagesFolder / "icon.png")


if __name__ == "__main__":
    main()
