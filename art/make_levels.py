#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes data/levels/*.png from the descriptions art/levels/*.txt, and, beside a description that
names zones, art/levels/*.zones, their list for tools: lines `region|goal NAME X-X Y-Y` and
`want MEASURE LEAST-MOST`.

A level is a picture, one pixel a tile (8-bit RGB, red = green = blue = tile code). A description
is a list of verbs, one a line; '#' starts a comment. The grid begins as rock. Each verb changes it, and
later lines win. Ranges are inclusive: `24-96` are the columns 24 to 96. Row 0 is the top.

  size W H                      the picture, first verb
  start X Y FLOOR FLAT          where the runner begins, the floor row below, and for how many tiles
                                to both sides it must be level; used by the checks alone
  scene                         nobody steers here: nothing is checked that only a kick could meet
  keep X-X Y-Y                  stays open, because text stands there; used by the checks alone
  region NAME LINING FLOOR      what follows belongs to this region. Rock near its open cells gets the
                                style LINING, but for the top row of a floor: FLOOR (hexadecimal)
  zone NAME X-X Y-Y             a rectangle of the part of the level that is called NAME
  goal NAME X-X Y-Y             one of the places where the goal may be reached
  want MEASURE LEAST-MOST       what tarnwick-levelcheck expects of the level: see its manual page
  carve X-X Y-Y                 open space
  fill X-X Y-Y [CODE]           rock; with a code its style is fixed
  flame X-X Y-Y                 flames
  sign X-X Y-Y                  rock in the style that marks a take-off or a way on
  cave FLOOR X,Y X,Y ...        open space from a ceiling line (its points, left to right) to FLOOR
  ground X,Y X,Y ...            rock under a line of steps: Y is the floor row from X to the next X;
                                reaches down to where rock begins; the last point ends it
  vault X-X CROWN PIER FLOOR BAY WIDTH
                                open space under round arches: ceilings at row CROWN in the middle
                                of a bay, at row PIER under a pier; piers WIDTH wide, BAY apart,
                                BAY less WIDTH even
  hollow X Y,H Y,H ...          open space to both sides of column X: H to each side in row Y
  disc X Y R                    round open space
  wheel X Y R N                 a toothed wheel of radius R with N spokes, open between them where the
                                room was open; a bob with a burning heart for N = 0
  hand X,Y X,Y THICK            a bar of rock between two points, THICK rows thick
  drip X Y H W                  rock hanging from a ceiling at row Y: H rows, W wide, pointed
  mound X Y H W                 rock standing on a floor in row Y: H rows, W wide, pointed
  pipes X-X Y H,H,...           columns of rock, 3 wide, hanging H rows from row Y, lengths in turn
  island X-X Y H                a floating ledge: floor row Y, H rows thick in its middle
  stand NAME X FLOOR [STYLE] [SECOND]
                                a landmark, a figure of landmarks.txt: its left column is X, its
                                lowest row stands on the floor row, or in rock or in the air.
                                Its two styles are 00 and 40 if not given
  hang NAME X TOP [STYLE] [SECOND]
                                the same with its highest row given, on a rod from the ceiling
  stair X-X Y N RISE            N equal steps of RISE rows from floor row Y, up towards the second
                                column (`90-60` climbs to the left), on rock as deep as `ground`

Every level is checked before it is written. The files of a level with a fault stay as they are, and the
exit status is 1.
"""
import math
import sys

import numpy as np
from PIL import Image
from scipy import ndimage

from pictures import artFolder

emptyCode, flameCode, signCode = 0xFF, 0xE0, 0xFE
lookCodes = (0x00, 0x20, 0x40, 0x60, 0x80, signCode)
rock = -1            # rock whose style the nearest region decides
lining = 3           # tiles of a region's style around open space, before quiet rock begins
quietCode = 0x40     # its style
smallestDepth = 200  # tiles of quiet rock in one piece
border = 12          # tiles of rock on every side of the picture: beyond it nothing is seen
thinnest = 3         # of a wall or floor between two spaces
narrowest = 4        # floor with a top row of its own
pipeWidth = 3        # width of a hanging column
rimCode = 0x00       # style of wheels, hands and rods

landmarkRows = {}     # a figure's rows, by its name

zonesHead = """# SPDX-License-Identifier: Zlib
# Made by make_levels.py. Columns, rows, inclusive; several lines of one name are one zone. What is
# wanted: seconds of the fastest path, regions it visits, percent of open cells reached, percent of
# all cells that are open, percent of random players who win."""


def span(text):
    """`24-96` or `24` as first and last, inclusive, in the order given."""
    first, _, last = text.partition("-")
    return int(first), int(last or first)


def point(text):
    x, y = text.split(",")
    return int(x), int(y)


def halfWidth(width, row, height):
    """Half the width of a pointed rock, `row` rows from its foot; the point is 3 wide. It shrinks
    by 2 at a time: see the trap in playFaults."""
    share = row / max(1, height - 1)
    return 2 * round((width - 3) / 4 * (1 - share) ** 1.6) + 1


class Level:
    """One level while it is being built: `tiles` is rows by columns of tile codes or rock, `owner`
    the index in `regions` of each cell's region, `startPlace` the numbers of the verb `start`,
    `kept` the spans of the verb `keep`, `zones` the lines for tools, `steered` whether somebody
    plays here."""

    def __init__(self):
        self.tiles = np.zeros((0, 0), np.int16)
        self.owner = np.zeros((0, 0), np.int16)
        self.regions = []
        self.startPlace = (0, 0, 0, 0)
        self.kept = []
        self.landmarks = []
        self.ornament = self.tiles == rock
        self.furnished = self.tiles == rock
        self.zones = []
        self.steered = True

    def put(self, columns, rows, code):
        left, right = sorted(columns)
        top, bottom = sorted(rows)
        if left < 0 or top < 0 or right >= self.tiles.shape[1] or bottom >= self.tiles.shape[0]:
            raise ValueError("outside the picture")
        self.tiles[top:bottom + 1, left:right + 1] = code
        self.owner[top:bottom + 1, left:right + 1] = len(self.regions) - 1

    def ceilingColumn(self, column, ceiling, floor):
        """Opens one column between the rock of a ceiling row and the rock of a floor row."""
        if ceiling + 1 < floor:
            self.put((column, column), (ceiling + 1, floor - 1), emptyCode)

    def floorColumn(self, column, floor):
        """Rock from a floor row down to the rock already there."""
        row = floor
        while self.tiles[row, column] in (emptyCode, flameCode):
            row += 1
        if row > floor:
            self.put((column, column), (floor, row - 1), rock)

    # The verbs, named as in the descriptions.

    def size(self, width, height):
        self.tiles = np.full((int(height), int(width)), rock, np.int16)
        self.owner = np.zeros_like(self.tiles)
        self.ornament = self.owner > 0
        self.furnished = self.owner > 0

    def start(self, x, y, floor, flat):
        self.startPlace = (int(x), int(y), int(floor), int(flat))

    def scene(self):
        self.steered = False

    def keep(self, columns, rows):
        self.kept.append((span(columns), span(rows)))

    def region(self, name, look, floor):
        self.regions.append((name, int(look, 16), int(floor, 16)))

    def zone(self, name, columns, rows):
        self.zones.append(f"region {name} {columns} {rows}")

    def goal(self, name, columns, rows):
        self.zones.append(f"goal {name} {columns} {rows}")

    def want(self, measure, bounds):
        self.zones.append(f"want {measure} {bounds}")

    def carve(self, columns, rows):
        self.put(span(columns), span(rows), emptyCode)

    def fill(self, columns, rows, code=None):
        self.put(span(columns), span(rows), rock if code is None else int(code, 16))

    def flame(self, columns, rows):
        self.put(span(columns), span(rows), flameCode)

    def sign(self, columns, rows):
        self.put(span(columns), span(rows), signCode)

    def cave(self, floor, *points):
        line = [point(p) for p in points]
        xs, ys = zip(*line)
        for column in range(xs[0], xs[-1] + 1):
            place = xs[0] + (column - xs[0]) // 2 * 2  # steps 2 wide: see playFaults
            self.ceilingColumn(column, int(np.floor(np.interp(place, xs, ys) + 0.5)), int(floor))

    def ground(self, *points):
        line = [point(p) for p in points]
        for (left, floor), (right, _) in zip(line, line[1:]):
            for column in range(left, right):
                self.floorColumn(column, floor)

    def vault(self, columns, crown, pier, floor, bay, width):
        left, right = span(columns)
        crown, pier, floor, bay, width = int(crown), int(pier), int(floor), int(bay), int(width)
        for column in range(left, right + 1):
            place = (column - left) % bay - width        # in the arch, below 0 in the pier
            ceiling = pier
            if place >= 0:
                middle = place // 2 * 2 + 1              # of its step, 2 wide: see playFaults
                across = 2 * middle / (bay - width) - 1  # -1 to 1
                ceiling -= round((pier - crown) * math.sqrt(1 - across * across))
            self.ceilingColumn(column, ceiling, floor)

    def hollow(self, x, *points):
        rows, halves = zip(*(point(p) for p in points))
        for row in range(rows[0], rows[-1] + 1):
            half = 2 * round(float(np.interp(row, rows, halves)) / 2)  # steps 2 wide: see playFaults
            self.put((int(x) - half, int(x) + half - 1), (row, row), emptyCode)

    def disc(self, x, y, radius):
        self.blocks(int(x), int(y), int(radius), lambda away, turn: away <= int(radius), emptyCode)

    def wheel(self, x, y, radius, spokes):
        x, y, radius, spokes = int(x), int(y), int(radius), int(spokes)
        teeth = 4 * round(radius / 6.5)

        def body(away, turn):
            tooth = np.cos(turn * teeth) > -0.1 if spokes else False
            return (away <= radius - 2) | ((away <= radius + 1.5) & tooth)

        def web(away, turn):
            if spokes == 0:
                return away <= radius * 0.4
            side = np.arcsin(abs(np.sin(turn * spokes / 2))) * 2 / spokes * away
            return (away <= radius - 5) & (away > radius * 0.35) & (side > 1.9)
        room = self.tiles == emptyCode
        self.blocks(x, y, radius, body, rimCode)
        self.blocks(x, y, radius, web, quietCode if spokes else flameCode)
        self.ornament |= room & (self.tiles != emptyCode)
        rows = np.nonzero(room[:, x] & (self.tiles[:, x] != emptyCode))[0]
        self.landmarks.append(("wheel" if spokes else "pendulum", x - 6, rows.min(), x + 5, rows.max()))
        self.tiles[room & (self.tiles == quietCode)] = emptyCode  # the sky between its spokes

    def blocks(self, x, y, radius, inside, code):
        """Puts a code where inside(distance from x, y; angle) holds, in blocks of 2 by 2 cells.
        Shapes lose what is narrower than two blocks, for the sake of playFaults."""
        reach = radius // 2 + 2
        ys, xs = np.mgrid[-reach:reach, -reach:reach] * 2 + 1
        mask = inside(np.hypot(xs, ys), np.arctan2(ys, xs))
        if code in (rimCode, emptyCode):
            mask = ndimage.binary_opening(mask, np.ones((2, 2)))
        for row, column in zip(*np.nonzero(mask)):
            left, top = x + 2 * (column - reach), y + 2 * (row - reach)
            self.put((left, left + 1), (top, top + 1), code)

    def hand(self, first, last, thick):
        (x, y), (toX, toY) = point(first), point(last)
        step = 2 if toX > x else -2
        for column in range(x, toX, step):
            row = y + round((toY - y) * (column - x) / (toX - x) / 2) * 2
            self.put((column, column + 3), (row, row + int(thick) - 1), rimCode)

    def drip(self, x, y, height, width):
        self.pointed(int(x), int(y), int(height), int(width), 1)

    def mound(self, x, y, height, width):
        self.pointed(int(x), int(y) - 1, int(height), int(width), -1)

    def pointed(self, x, foot, height, width, step):
        """A pointed rock from the row of its foot on, `step` 1 downwards or -1 upwards; its foot
        follows an uneven ceiling or floor."""
        for row in range(height):
            half = halfWidth(width, row, height)
            self.put((x - half, x + half), (foot + step * row,) * 2, rock)
        half = halfWidth(width, 0, height)
        for column in range(x - half, x + half + 1):
            row = foot - step
            while self.tiles[row, column] == emptyCode:
                self.put((column, column), (row, row), rock)
                row -= step

    def pipes(self, columns, y, lengths):
        left, right = span(columns)
        lengths = [int(length) for length in lengths.split(",")]
        for index, column in enumerate(range(left, right - 1, pipeWidth)):
            length = lengths[index % len(lengths)]
            if length:
                self.put((column, column + pipeWidth - 1), (int(y), int(y) + length - 1), rock)

    def island(self, columns, y, height):
        left, right = span(columns)
        y, height = int(y), int(height)
        width = right - left + 1
        for row in range(height):
            share = max(0, row - 2) / max(1, height - 3)
            inset = 2 * round(max(0, width // 2 - 3) / 2 * share * share)
            self.put((left + inset, right - inset), (y + row, y + row), rock)

    def stair(self, columns, y, count, rise):
        first, last = span(columns)
        y, count, rise = int(y), int(count), int(rise)
        step = 1 if last >= first else -1
        total = abs(last - first) + 1
        for index in range(total):
            floor = y - rise * (index * count // total + 1)
            self.floorColumn(first + step * index, floor)

    def stand(self, name, x, floor, *styles):
        self.landmark(name, int(x), int(floor) - len(landmarkRows[name]), *styles)

    def hang(self, name, x, top, *styles):
        x, top = int(x), int(top)
        self.landmark(name, x, top, *styles)
        # As wide as the figure's tip, or 2: a step of one column would be a trap, see playFaults.
        signs = landmarkRows[name][0]
        middle = len(signs) // 2
        before, behind = signs[:middle].rpartition(".")[2], signs[middle:].partition(".")[0]
        if len(before + behind) == 4:
            first, last = middle - len(before), middle + len(behind) - 1
        else:
            first, last = middle - 1, middle
        row = top
        while self.tiles[row, x + first] == emptyCode:
            row += 1
        while self.tiles[row - 1, x + first] == emptyCode:
            row -= 1
            self.tiles[row, x + first:x + last + 1] = rimCode
            self.ornament[row, x + first:x + last + 1] = True

    def landmark(self, name, x, top, style="00", second="40"):
        codes = {"#": int(style, 16), "+": int(second, 16), "*": flameCode, "o": emptyCode}
        for row, signs in enumerate(landmarkRows[name], top):
            for column, sign in enumerate(signs, x):
                if sign != ".":
                    self.furnished[row, column] |= self.tiles[row, column] == emptyCode
                    self.tiles[row, column] = codes[sign]
                    self.ornament[row, column] = True
        self.landmarks.append((name, x, top, x + len(signs) - 1, row))

    def paint(self):
        """Gives all undecided rock its style. Returns the finished codes, rows by columns."""
        room = (self.tiles == emptyCode) | self.furnished
        opened = room | (self.tiles == flameCode) & ~self.ornament
        away, nearest = ndimage.distance_transform_cdt(~opened, metric="chessboard",
                                                       return_indices=True)
        look = np.array([style for _, style, _ in self.regions])[self.owner[tuple(nearest)]]
        # Only large masses have depths; a core in an island would look like a hole.
        parts, _ = ndimage.label(away > lining)
        deep = np.bincount(parts.ravel())[parts] * (parts > 0) >= smallestDepth
        painted = np.where(deep, quietCode, look)
        # Two linings do not meet: quiet rock lies between them.
        lined = np.where((self.tiles == rock) & ~deep, look, quietCode)
        for axis in (0, 1):
            for step in (-1, 1):
                beside = np.roll(lined, step, axis)
                painted[(lined != quietCode) & (beside != quietCode) & (beside != lined)] = quietCode
        # The top row of floors tells them from walls; that of a narrow ledge would look like a tooth.
        floors = (self.tiles == rock) & np.roll(opened, 1, axis=0)
        wide = ndimage.binary_opening(floors, np.ones((1, narrowest)))
        top = np.array([style for _, _, style in self.regions])[self.owner[tuple(nearest)]]
        painted = np.where(wide, top, painted)
        return np.where(self.tiles == rock, painted, self.tiles).astype(np.uint8)


verbs = {verb.__name__: verb for verb in (
    Level.size, Level.start, Level.scene, Level.keep, Level.region, Level.zone, Level.goal,
    Level.want, Level.carve, Level.fill, Level.flame, Level.sign, Level.cave, Level.ground, Level.vault,
    Level.hollow, Level.disc, Level.wheel, Level.hand, Level.drip, Level.mound, Level.pipes,
    Level.island, Level.stair, Level.stand, Level.hang)}


def readLandmarks(path):
    for block in path.read_text(encoding="utf-8").split("\n\n")[1:]:
        name, *rows = block.split()
        if {len(row) for row in rows} != {len(rows[0])} or set("".join(rows)) - set("#+*o."):
            sys.exit(f"{path.name}: {name}: rows of one length, of #+*o.")
        landmarkRows[name] = rows


def read(path):
    level = Level()
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        words = line.split("#")[0].split()
        if not words:
            continue
        try:
            verbs[words[0]](level, *words[1:])
        except (KeyError, TypeError, ValueError, IndexError) as fault:
            sys.exit(f"{path.name}:{number}: {line.strip()}: {fault!r}")
    return level


def cells(mask):
    """The first few cells of a mask, as text."""
    ys, xs = np.nonzero(mask)
    return " ".join(f"({x},{y})" for x, y in list(zip(xs, ys))[:8]) + f" ({len(xs)} in all)"


def thinRuns(solid):
    """Solid cells in a row of fewer than thinnest between two open cells, left and right."""
    thin = np.zeros_like(solid)
    for size in range(1, thinnest):
        for left in range(1, solid.shape[1] - size):
            hit = ~solid[:, left - 1] & ~solid[:, left + size] \
                & solid[:, left:left + size].all(axis=1)
            thin[hit, left] = True
    return thin


def stageFaults(level, tiles):
    """What would make any level unsafe; a list of (text, mask of the cells)."""
    empty, flame = tiles == emptyCode, tiles == flameCode
    inside = np.zeros_like(empty)
    inside[border:-border, border:-border] = True
    x, y, floor, flat = level.startPlace
    around = slice(x - flat, x + flat + 1)
    found = [
        ("unknown code", ~np.isin(tiles, (*lookCodes, flameCode, emptyCode))),
        ("border is not all rock", (empty | flame) & ~inside),
        ("start not free", ~empty & at(empty, around, slice(y, floor))),
        ("ground of the start not level or thin",
         (empty | flame) & at(empty, around, slice(floor, floor + thinnest)))]
    for (left, right), (top, bottom) in level.kept:
        kept = at(empty, slice(left, right + 1), slice(top, bottom + 1))
        found.append(("not kept open", ~empty & kept))
    return found


def at(like, columns, rows):
    """A mask of one rectangle."""
    mask = np.zeros_like(like)
    mask[rows, columns] = True
    return mask


def playFaults(level, tiles):
    """What would make a level unfair or unsafe for a runner who kicks, in the form of stageFaults.
    Landmarks may be thin: a runner who flies through one comes out in the same space."""
    empty, flame = tiles == emptyCode, tiles == flameCode

    # A rising kick that stops between two solid cells would stay a kick for good.
    low = np.zeros_like(empty)
    low[1:-1] = empty[1:-1] & ~empty[:-2] & ~empty[2:]

    # A flame beside a gap of 1 throws the runner into the rock behind it.
    tight = np.zeros_like(empty)
    tight[:, 1:-2] |= flame[:, 1:-2] & empty[:, 2:-1] & ~empty[:, 3:]
    tight[:, 2:-1] |= flame[:, 2:-1] & empty[:, 1:-2] & ~empty[:, :-3]

    # A kick flight may move by 2 columns and 1 row at once, past a corner that nothing tests, and
    # end in a cell of rock with rock on all four sides. Steps at least 2 wide leave no such cell.
    trap = np.zeros_like(empty)
    closed = np.zeros_like(empty)
    closed[1:-1, 1:-1] = ~(empty[1:-1, 1:-1] | empty[:-2, 1:-1] | empty[2:, 1:-1]
                           | empty[1:-1, :-2] | empty[1:-1, 2:])
    for side in (-1, 1):
        for down in (-1, 1):
            def seen(dx, dy):
                return np.roll(empty, (-dy, -dx), (0, 1))
            trap |= closed & seen(-2 * side, -down) & seen(-side, -down) & seen(-2 * side, 0)

    return [("passage 1 high", low), ("flame beside a gap of 1", tight),
            ("wall thinner than 3", thinRuns(~empty) & ~level.ornament),
            ("floor thinner than 3", thinRuns(~empty.T).T & ~level.ornament), ("trap behind a corner", trap)]


def faults(level, tiles):
    """The faults of a finished level as lines of text."""
    found = stageFaults(level, tiles) + (playFaults(level, tiles) if level.steered else [])
    return [f"{text}: {cells(mask)}" for text, mask in found if mask.any()]


def main():
    target = artFolder.parent / "data" / "levels"
    target.mkdir(parents=True, exist_ok=True)
    readLandmarks(artFolder / "landmarks.txt")
    bad = False
    for path in sorted((artFolder / "levels").glob("*.txt")):
        level = read(path)
        tiles = level.paint()
        problems = faults(level, tiles)
        for problem in problems:
            print(f"{path.stem}: {problem}")
        if problems:
            bad = True
            continue
        if level.zones:
            path.with_suffix(".zones").write_text("\n".join([zonesHead, *level.zones, ""]))
        Image.fromarray(np.repeat(tiles[:, :, None], 3, axis=2), "RGB").save(
            target / f"{path.stem}.png", compress_level=9)
        print(f"{path.stem}: {tiles.shape[1]} x {tiles.shape[0]}, "
              f"{(tiles == emptyCode).mean():.1%} open, {(tiles == flameCode).sum()} flames, {len(level.landmarks)} landmarks")
    sys.exit(bad)


if __name__ == "__main__":
    main()
