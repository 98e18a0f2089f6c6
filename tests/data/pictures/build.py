#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the JPEG files of the tests: 48 by 32 pixels in six flat fields of 16 by 16. Needs python3-pil.

What the fields look like stands in tests/unit/linux/picture_formats_test.cpp.
"""

import pathlib

from PIL import Image

HERE = pathlib.Path(__file__).parent
SIDE = 16
RGB = [(255, 0, 0), (0, 160, 0), (0, 0, 255), (255, 255, 255), (0, 0, 0), (200, 150, 50)]
GREY = [255, 200, 150, 100, 50, 0]
INK = [(255, 0, 0, 0), (0, 255, 0, 0), (0, 0, 255, 0), (0, 0, 0, 255), (0, 0, 0, 0), (100, 50, 0, 50)]  # 255: all of it


def fields(mode: str, colours: list) -> Image.Image:
    picture = Image.new(mode, (3 * SIDE, 2 * SIDE))
    for i, colour in enumerate(colours):
        left, top = i % 3 * SIDE, i // 3 * SIDE
        picture.paste(colour, (left, top, left + SIDE, top + SIDE))
    return picture


def write_as_brightness(path: pathlib.Path, ink: Image.Image) -> None:
    """Ink of which three are stored as brightness and two colours, as picture editors do by themselves."""
    cyan, magenta, yellow, black = ink.split()
    backwards = [Image.eval(part, lambda value: 255 - value)
                 for part in Image.merge("RGB", (cyan, magenta, yellow)).convert("YCbCr").split()]
    Image.merge("CMYK", (*backwards, black)).save(path, quality=95)
    jpeg = bytearray(path.read_bytes())
    mark = jpeg.index(b"Adobe")
    jpeg[mark + 11] = 2  # how the colours are stored
    path.write_bytes(jpeg)


def main() -> None:
    colours, grey, ink = fields("RGB", RGB), fields("L", GREY), fields("CMYK", INK)
    quality = {"quality": 95}
    colours.save(HERE / "baseline.jpg", **quality)
    colours.save(HERE / "full_colour.jpg", subsampling="4:4:4", **quality)
    colours.save(HERE / "progressive.jpg", progressive=True, **quality)
    grey.save(HERE / "grey.jpg", **quality)
    grey.save(HERE / "grey_progressive.jpg", progressive=True, **quality)
    write_as_brightness(HERE / "ink_as_brightness.jpg", ink)
    ink.save(HERE / "ink_inverted.jpg", **quality)  # as picture editors write it: their mark, and ink counted backwards


if __name__ == "__main__":
    main()
