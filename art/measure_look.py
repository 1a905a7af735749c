#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""measure_look.py: can the runner be seen and the text be read everywhere?

Prints contrast ratios after WCAG 2 (1 to 21, from relative luminance), from the shipped pictures
and the colours that the game paints behind them:

  sky     mean tone of what is seen (a tenth to a third of white), colour, and the step at the
          repeating edges against the step between any two rows or columns (near 1: no seam)
  play    of the sky over its gradient, rows 0 to 620: the part that burns out (2 % at most); how
          far the tones stray from their surroundings, from the top down, the last number being
          rows 580 to 620 (3 at least: forms can be made out); the same around the runner against
          the calmest other place of that size (below 1: nothing is calmer)
  rocks   mean grey of each style, to tell them apart (10 between any two), how far its pixels stray
          from it (at most 18: calm), and its lightest pixel; white text (4.5) and the runner's rim
          (3) against that pixel. The sign is left out; of it, the free pixels around its arrow (3)
  flames  step at the repeating edges against the step between any two columns or rows (1.5 at
          most: they join), and the mean light of the three (5 % apart at most: no flicker)
  star    the part of its cell that it covers (0.2 to 0.27)
  runner  of each frame: rim or ink, the better of the two at each place of the outline, against
          every pixel of every style and of the two skies where it stands. At least 3 everywhere
  text    against the pixels around its ink: the middle one, and the 5th worst of 100; "best" is
          what the gradient allows with the best of all skies. 4.5, and where the gradient allows
          less, nearly that. "cloud" is the middle pixel with the body of a cloud before it

The exit status is 1 if a limit is broken.
"""
import sys

import numpy as np
from PIL import Image, ImageDraw, ImageFilter, ImageFont

from make_runner import rim
from make_tiles import readTiles
from pictures import artFolder, spritesFolder

SCREEN = (1280, 720)
SIZE = 1024  # of the sky
FONT = artFolder.parent / "data" / "fonts" / "MarsNeedsCunnilingus.ttf"
LOOKS = {"start": 0, "goal": 1, "flames": 2, "sign": 3, "cavern": 4, "tower": 5}
FRAMES = [f"run-{i}" for i in range(1, 7)] + ["air-1", "air-2", "air-3", "stand-1", "stand-2",
                                              "stand-3", "pose"]
RUNNER = (608, 480, 672, 544)  # where the runner is drawn
CALMEST = (480, 380, 800, 560)  # around it
LOWEST = 620  # row down to which the sky must not burn out
PLAY, EPILOGUE, TITLE = (112, 96, 128), (96, 96, 255), None  # top of the gradient, below it white
WHITE, BLACK, YELLOW = (255, 255, 255), (0, 0, 0), (255, 255, 0)
# screen, text, size, x, y, colour, least contrast of the middle pixel
TEXTS = [(TITLE, "Trapped in a world which was never meant to be", 48, 128, 400, YELLOW, 4.5),
         (TITLE, "Where nobody even remembers your name", 48, 128, 400, YELLOW, 4.5),
         (TITLE, "You have only one hope to put right what once", 48, 128, 400, YELLOW, 4.5),
         (TITLE, "went wrong...", 48, 128, 462, YELLOW, 4.5),
         (TITLE, "Now go! Run! Tarnwick to the past!", 48, 128, 640, (255, 0, 255), 4.5),
         (PLAY, "Speed:", 64, 384, 40, WHITE, 4.4),
         (PLAY, "88mph", 64, 1024, 112, WHITE, 3.6),
         (EPILOGUE, "No! it's not far enough back...", 64, 24, 400, BLACK, 4.5),
         (EPILOGUE, "TO BE CONTINUED", 64, 360, 200, (255, 0, 0), 3.0)]
RIM, TEXT, SEAM = 3, 4.5, 1.5
APART, CALM, FREE, BURNT, FORMS = 10, 18, 3, 0.02, 3


def luminance(colour):
    """Relative luminance, 0 to 1, of bytes (..., 3)."""
    c = np.asarray(colour, np.float64)[..., :3] / 255
    linear = np.where(c <= 0.04045, c / 12.92, ((c + 0.055) / 1.055) ** 2.4)
    return linear @ (0.2126, 0.7152, 0.0722)


def contrast(a, b):
    """Of two luminances."""
    return (np.maximum(a, b) + 0.05) / (np.minimum(a, b) + 0.05)


def grey(colour):
    """The tone, 0 to 255, of bytes (..., 3), as a picture without colour shows it."""
    return np.asarray(colour, np.float64)[..., :3] @ (0.299, 0.587, 0.114)


def picture(name):
    return np.asarray(Image.open(spritesFolder / name).convert("RGBA"), np.float64)


def gradient(top):
    """What the screen shows before the sky is added, 720 by 1280 by 3."""
    y = (np.arange(SCREEN[1]) + 0.5)[:, None]
    if top is TITLE:
        rows = np.maximum(y - 480, 0) / 800 * 64 * np.ones(3)
    else:
        rows = np.array(top) + (255 - np.array(top)) * y / SCREEN[1]
    return np.repeat(rows[:, None], SCREEN[0], axis=1)


def backdrop(top, sky):
    """The same with the sky, enlarged to the width of the screen and added at half strength."""
    large = sky.resize((SCREEN[0], SCREEN[0]), Image.Resampling.BILINEAR)
    return np.minimum(gradient(top) + np.asarray(large, np.float64)[:SCREEN[1]] * 0.5, 255)


def measureSky(sky):
    tone = np.asarray(sky, np.float64)
    mean = tone[:SCREEN[1] * SIZE // SCREEN[0]].mean() / 255
    colour = np.ptp(tone, axis=2).max()
    across, down = seams(tone)
    print(f"sky      mean {mean:.3f} (0.1 to 0.334)  colour {colour:.0f}"
          f"  edges {across:.2f} {down:.2f} ({SEAM})")
    good = 0.1 <= mean <= 0.334 and colour == 0 and max(across, down) < SEAM
    return [] if good else ["sky"]


def seams(cell, painted=None):
    """The step at the right and at the lower edge against the mean step inside; of a picture with
    clear pixels, between those that are painted."""
    ratios = []
    for axis in (1, 0):
        steps = np.abs(np.roll(cell, -1, axis) - cell).mean(axis=2)
        if painted is not None:
            steps = np.where(painted & np.roll(painted, -1, axis), steps, np.nan)
        steps = np.nanmean(steps, axis=1 - axis)
        ratios.append(float(steps[-1] / steps[:-1].mean()))
    return ratios


def measurePlay(behind):
    """`behind` is the backdrop of the play."""
    burnt = (behind[:LOWEST] >= 254.5).any(axis=2).mean()
    tone = grey(behind)
    blurred = Image.fromarray(np.round(tone).astype(np.uint8)).filter(ImageFilter.GaussianBlur(24))
    forms = tone - np.asarray(blurred, np.float64)
    bands = [forms[y:min(y + 116, LOWEST)].std() for y in range(0, LOWEST, 116)]
    left, top, right, bottom = CALMEST
    width, height = right - left, bottom - top

    def stray(x, y):
        return forms[y:y + height, x:x + width].std()

    calm = stray(left, top)
    others = [stray(x, y) for x in range(0, SCREEN[0] - width + 1, 40)
              for y in range(0, LOWEST - height + 1, 40)
              if abs(x - left) >= width or abs(y - top) >= height]
    print(f"play     burnt {burnt:.3f} (at most {BURNT})  forms",
          *(f"{band:4.1f}" for band in bands), f"(at least {FORMS})",
          f" calm {calm / min(others):.2f} (below 1)")
    return [] if burnt <= BURNT and min(bands) >= FORMS and calm < min(others) else ["play"]


def measureRocks(looks):
    broken = []
    means = {name: grey(cell).mean() for name, cell in looks.items()}
    for name, cell in looks.items():
        lightest = luminance(cell).max()
        white, runner = contrast(1, lightest), contrast(luminance(rim), lightest)
        apart = min(abs(means[name] - mean) for other, mean in means.items() if other != name)
        stray = grey(cell).std()
        print(f"rock     {name:8s} mean {means[name]:5.1f}  apart {apart:4.1f} ({APART})"
              f"  stray {stray:4.1f} ({CALM})  lightest {lightest:.3f}  text {white:5.2f} ({TEXT})"
              f"  rim {runner:5.2f} ({RIM})")
        if white < TEXT or runner < RIM or apart < APART or stray > CALM:
            broken.append(name)
    return broken


def measureSign(cell):
    shape = grey(cell) != grey(cell)[0, 0]
    rows, columns = np.nonzero(shape)
    free = min(rows.min(), columns.min(), 15 - rows.max(), 15 - columns.max())
    print(f"sign     free {free} ({FREE})")
    return [] if free >= FREE else ["sign"]


def measureFlames(flames):
    broken, lights = [], []
    for number, flame in enumerate(flames, 1):
        cell = np.asarray(flame, np.float64)
        across, down = seams(cell[..., :3], cell[..., 3] > 0)
        lights.append((grey(cell) * cell[..., 3] / 255).mean())
        print(f"flame    {number}  edges {across:.2f} {down:.2f} ({SEAM})  light {lights[-1]:5.1f}")
        if max(across, down) > SEAM:
            broken.append(f"flame {number}")
    return broken + (["flicker"] if max(lights) > min(lights) * 1.05 else [])


def measureStar():
    covered = picture("star.png")[..., 3].mean() / 255
    print(f"star     covers {covered:.2f} (0.2 to 0.27)")
    return [] if 0.2 <= covered <= 0.27 else ["star"]


def outlineContrasts(figure, behind):
    """The worst contrast at each place of a figure's outline with any luminance of `behind`."""
    opaque = np.pad(figure[..., 3] > 0, 1)
    light = np.pad(luminance(figure), 1)
    outside = np.pad(figure[..., 3] == 0, 1)  # what touches the edge of the picture stands there
    worst = []
    for y, x in zip(*np.nonzero(opaque)):
        if not (outside[y - 1, x] or outside[y + 1, x] or outside[y, x - 1] or outside[y, x + 1]):
            continue
        near = light[y - 1:y + 2, x - 1:x + 2][opaque[y - 1:y + 2, x - 1:x + 2]]
        worst.append(contrast(near[:, None], behind[None, :]).max(axis=0).min())
    return np.array(worst)


def measureRunner(looks, skies):
    left, top, right, bottom = RUNNER
    places = dict(looks)
    places.update({name: sky[top:bottom, left:right] for name, sky in skies.items()})
    places = {name: np.unique(np.round(luminance(p), 4)) for name, p in places.items()}
    broken = []
    print("runner          ", *(f"{name:>8s}" for name in places))
    for frame in FRAMES:
        figure = picture(f"runner-{frame}.png")
        worst = [outlineContrasts(figure, behind).min() for behind in places.values()]
        print(f"runner   {frame:8s}", *(f"{value:8.2f}" for value in worst))
        if min(worst) < RIM:
            broken.append(frame)
    return broken


def surroundings(text, size, x, y):
    """A mask of the pixels up to 4 from the ink of a text, the ink itself left out."""
    ink = Image.new("L", SCREEN)
    ImageDraw.Draw(ink).text((x, y), text, 255, ImageFont.truetype(str(FONT), size))
    ink = np.asarray(ink) > 0
    wide = ink.copy()
    for _ in range(4):
        wide[1:-1, 1:-1] |= wide[:-2, 1:-1] | wide[2:, 1:-1] | wide[1:-1, :-2] | wide[1:-1, 2:]
    return wide & ~ink


def measureTexts(sky):
    broken = []
    alphas = picture("cloud.png")[..., 3]
    veil = np.median(alphas[alphas > 0]) / 255
    for top, text, size, x, y, colour, least in TEXTS:
        mask = surroundings(text, size, x, y)
        ink = luminance(colour)
        pixels = backdrop(top, sky)[mask]
        ratios = contrast(ink, luminance(pixels))
        black, white = (luminance(np.minimum(gradient(top)[mask] + add, 255)) for add in (0, 127.5))
        best = np.median(np.maximum(contrast(ink, black), contrast(ink, white)))
        middle, low = np.median(ratios), np.quantile(ratios, 0.05)
        clouded = np.median(contrast(ink, luminance(pixels + (255 - pixels) * veil)))
        cloud = "" if top is TITLE else f"  cloud {clouded:5.2f}"
        print(f"text     {middle:5.2f}  low {low:5.2f}  best {best:5.2f}{cloud}  {text}")
        if middle < least or (least == TEXT and low < TEXT):
            broken.append(text)
    return broken


def main():
    sky = Image.open(spritesFolder / "sky.jpg").convert("RGB")
    cells = readTiles(artFolder / "tiles.txt")
    looks = {name: np.asarray(cells[place, 0].convert("RGB")) for name, place in LOOKS.items()}
    skies = {"play": backdrop(PLAY, sky), "epilogue": backdrop(EPILOGUE, sky)}
    rocks = {name: look for name, look in looks.items() if name != "sign"}
    broken = (measureSky(sky) + measurePlay(skies["play"]) + measureRocks(rocks)
              + measureSign(looks["sign"])
              + measureFlames([cells[frame, 7] for frame in range(3)]) + measureStar()
              + measureRunner(looks, skies) + measureTexts(sky))
    for name in broken:
        print("not good:", name)
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main())
