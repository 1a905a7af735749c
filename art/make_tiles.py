#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes the tile sheet, images/sprites/tiles.png, from the text grids of tiles.txt.

Run it with no arguments. It refuses a sheet whose rock has a clear pixel."""

import re

from PIL import Image

from pictures import artFolder, clear, fromRows, savePng, spritesFolder

cellSize = 16  # pixels
sheetCells = 8
rockRow = 0


def readTiles(path):
    """The cells of a grid file by their (column, row), each a picture."""
    cells = {}
    place, palette, rows = None, {}, []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        if line.startswith("tile "):
            _, column, row, _ = line.split()
            place, palette, rows = (int(column), int(row)), {".": clear}, []
        elif re.fullmatch(r"\S [0-9a-f]{6}", line):
            palette[line[0]] = (*bytes.fromhex(line[2:]), 255)
        else:
            if len(line) != cellSize:
                raise ValueError(f"{path.name}:{number}: {len(line)} pixels, not {cellSize}")
            rows.append(line)
            if len(rows) == cellSize:
                cells[place] = fromRows(rows, palette)
    return cells


def main():
    sheet = Image.new("RGBA", (sheetCells * cellSize, sheetCells * cellSize), clear)
    for (column, row), cell in readTiles(artFolder / "tiles.txt").items():
        if row == rockRow and cell.getchannel("A").getextrema() != (255, 255):
            raise ValueError(f"the rock in cell ({column}, {row}) is not opaque")
        sheet.paste(cell, (column * cellSize, row * cellSize))
    savePng(sheet, spritesFolder / "tiles.png")


if __name__ == "__main__":
    main()
