# SPDX-License-Identifier: Zlib
"""What the picture makers share: where the pictures go, how a text grid becomes one, and a PNG
writer whose bytes depend on the pixels alone."""

import pathlib

from PIL import Image

artFolder = pathlib.Path(__file__).resolve().parent
imagesFolder = artFolder.parent / "images"
spritesFolder = imagesFolder / "sprites"

clear = (0, 0, 0, 0)


def savePng(image, path):
    """Writes `image` as a PNG of 8-bit RGBA to `path` and makes its folder. No palette, no
    metadata, no time: the same pixels give the same bytes. The colour of clear pixels is kept,
    since it shows in the edge of a picture that is drawn with linear filtering."""
    pixels = image.convert("RGBA")
    plain = Image.frombytes("RGBA", pixels.size, pixels.tobytes())  # leaves metadata behind
    path = pathlib.Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    plain.save(path, format="PNG", compress_level=9, optimize=False)


def fromRows(rows, palette):
    """A picture from text: one character a pixel, `palette` maps it to (r, g, b, a). Rows must
    be of one length."""
    width = len(rows[0])
    image = Image.new("RGBA", (width, len(rows)), clear)
    for y, row in enumerate(rows):
        if len(row) != width:
            raise ValueError(f"row {y} has {len(row)} characters, not {width}: {row!r}")
        for x, sign in enumerate(row):
            image.putpixel((x, y), palette[sign])
    return image
