#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""make_screenshots.py BUILD_FOLDER: makes the pictures of docs/pictures from the game itself.

Runs the replay tool of a release build: on the title without keys, on the winning run
(tests/replays/goal.txt) and on the fall into the well. Also runs the level checker. The frames are
listed below. After a new run, look for better ones: tools/with_display BUILD_FOLDER/tarnwick-replay
trace tests/replays/goal.txt --pictures FOLDER --every 30. Takes a few minutes."""

import pathlib
import subprocess
import sys
import tempfile

from PIL import Image, ImageDraw, ImageFont

import make_levels
from pictures import artFolder, savePng, spritesFolder

root = artFolder.parent
folder = root / "docs" / "pictures"

titleFrame = 600
shots = {"play": 4880, "fire": 524}
# The film: hall, fire, launcher, wells, cavern, tower, wheels, hourglass, great hall, chimney,
# vortex, and the end.
filmFrames = [144, 524, 980, 1284, 1664, 3032, 3374, 3792, 4172, 4880, 4975, 5434]
filmColumns = 3
# The picture of the moves: run, jump, first kick, danger, thrown by a flame, chained kicks; then a
# kick in a fall, from the other run.
teachingFrames = [106, 220, 258, 524, 980, 1170]
fallFrame = 4095
teachingColumns = 3
still = (480, 270)
# A landmark: the cells around it, the pixels of each, and how many stand in a row.
around = (18, 14)
cellSize = 8
landmarkColumns = 8
sheetCells = {0x20: (0, 0), 0x00: (1, 0), 0x40: (2, 0), 0xFE: (3, 0), 0x60: (4, 0), 0x80: (5, 0),
              make_levels.flameCode: (0, 7)}
mapSize = (1024, 2048)


def replay(build, script, frames, into):
    subprocess.run(
        [root / "tools" / "with_display", build / "tarnwick-replay", "trace", script, "--pictures", into,
         "--frames", ",".join(map(str, sorted(set(frames))))],
        check=True, stdout=subprocess.DEVNULL)
    return {frame: Image.open(into / f"{frame:06}.png").convert("RGB") for frame in frames}


def makeSheet(pictures, columns):
    rows = -(-len(pictures) // columns)
    sheet = Image.new("RGB", (still[0] * columns, still[1] * rows), (255, 255, 255))
    for i, picture in enumerate(pictures):
        place = (i % columns * still[0], i // columns * still[1])
        sheet.paste(picture.resize(still, Image.LANCZOS), place)
    return sheet


def drawCells(codes):
    """Codes of the level, rows by columns, as the game draws them, on plain dusk."""
    rows, columns = codes.shape
    picture = Image.new("RGBA", (columns * cellSize, rows * cellSize), (176, 160, 184, 255))
    tiles = Image.open(spritesFolder / "tiles.png").convert("RGBA")
    places = [(x, y) for y in range(rows) for x in range(columns) if codes[y, x] in sheetCells]
    draw = ImageDraw.Draw(picture)
    for x, y in places:
        if codes[y, x] != make_levels.flameCode:
            draw.rectangle((x * cellSize - 1, y * cellSize - 1, (x + 1) * cellSize,
                            (y + 1) * cellSize), (0, 0, 0))
    for x, y in places:
        u, v = sheetCells[codes[y, x]]
        cell = tiles.crop((u * 16, v * 16, u * 16 + 16, v * 16 + 16)).resize((cellSize, cellSize),
                                                                             Image.BOX)
        picture.alpha_composite(cell, (x * cellSize, y * cellSize))
    return picture.convert("RGB")


def makeLandmarks():
    """Each kind of landmark where it first stands, with its name."""
    make_levels.readLandmarks(artFolder / "landmarks.txt")
    level = make_levels.read(artFolder / "levels" / "episode1.txt")
    codes = level.paint()
    firsts = {}
    for name, *box in level.landmarks:
        if box[2] - box[0] >= 6 and name in make_levels.landmarkRows:
            firsts.setdefault(name, box)
    width, height = around[0] * cellSize, around[1] * cellSize + 20
    sheet = Image.new("RGB", (width * landmarkColumns, height * -(-len(firsts) // landmarkColumns)),
                      (255, 255, 255))
    font = ImageFont.truetype(str(next((root / "data" / "fonts").glob("*.ttf"))), 16)
    draw = ImageDraw.Draw(sheet)
    for i, (name, (left, top, right, bottom)) in enumerate(firsts.items()):
        x, y = i % landmarkColumns * width, i // landmarkColumns * height
        column, row = (left + right + 1 - around[0]) // 2, (top + bottom + 1 - around[1]) // 2
        part = codes[row:row + around[1], column:column + around[0]]
        sheet.paste(drawCells(part), (x, y))
        draw.text((x + width // 2, y + height - 2), name, (0, 0, 0), font, "md")
    return sheet


def makeMap(build, into):
    subprocess.run(
        [build / "tarnwick-levelcheck", root / "data" / "levels" / "episode1.png", "--zones",
         artFolder / "levels" / "episode1.zones", "--through", "hourglass", "--to", "chimney",
         "--picture", into],
        check=True, stdout=subprocess.DEVNULL)
    return Image.open(into).convert("RGB").resize(mapSize, Image.BOX)


def main(build):
    with tempfile.TemporaryDirectory() as name:
        scratch = pathlib.Path(name)
        story = scratch / "story.txt"
        story.write_text(f"{titleFrame + 1} end\n")
        title = replay(build, story, [titleFrame], scratch / "title")[titleFrame]
        replays = root / "tests" / "replays"
        run = replay(build, replays / "goal.txt",
                     [*shots.values(), *filmFrames, *teachingFrames], scratch / "run")
        fall = replay(build, replays / "well.txt", [fallFrame], scratch / "fall")[fallFrame]
        savePng(title, folder / "title.png")
        for shot, frame in shots.items():
            savePng(run[frame], folder / f"{shot}.png")
        film = [run[frame] for frame in filmFrames]
        savePng(makeSheet(film, filmColumns), folder / "film.png")
        teaching = [run[frame] for frame in teachingFrames] + [fall]
        savePng(makeSheet(teaching, teachingColumns), folder / "teaching.png")
        savePng(makeLandmarks(), folder / "landmarks.png")
        savePng(makeMap(build, scratch / "map.png"), folder / "level.png")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]).resolve())
