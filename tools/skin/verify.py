#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks the default skin's files: complete, consistent, and what the programs here draw.

Needs numpy, pycairo, Pillow. Usage: verify.py [FOLDER] (default: PANELSET/ of this project). Ends with 1
and a line for each fault.
"""

import csv
import pathlib
import sys

import numpy as np
from PIL import Image

import default_skin
from build import PROJECT
from sheet import Sheet

PAIRS = ((2, 3), (5, 6), (8, 9), (10, 11), (13, 14), (15, 16), (17, 18), (34, 35), (36, 37), (38, 39), (25, 26), (26, 27))
BUTTONS = (2, 4, 5, 7, 8, 10, 12, 13, 15, 17, 19, 20)
SHOWN_IMAGES = (22, 23, 24, 25, 34, 36, 38)
LEAST_WIDTHS = {32: 230, 33: 200, 31: 70, 40: 200}  # panel pixels
FILE_LIMIT = 700 * 1024  # bytes


def read_lines(path):
    with open(path, newline="", encoding="ascii") as f:
        return [(int(r[1]), *map(int, r[2:8]), r[8]) for r in csv.reader(f) if r[1].isdigit()]


def overlap(a, b):
    (ax, ay, aw, ah), (bx, by, bw, bh) = a, b
    return ax < bx + bw and bx < ax + aw and ay < by + bh and by < ay + ah


def layout_faults(lines, size):
    """Records missing or doubled, cells outside the bitmap, elements that hide each other."""
    numbers = [line[0] for line in lines]
    if sorted(numbers) != list(range(41)):
        yield f"records {numbers} instead of 0 to 40, once each"
        return
    place = {n: (x, y, w, h) for n, x, y, _, _, w, h, _ in lines}
    panel = place[0][2:]
    for n, _, _, cx, cy, w, h, _ in lines:
        if cx < 0 or cy < 0 or cx + w > size[0] or cy + h > size[1]:
            yield f"record {n}: the cell lies outside the bitmap"
        x, y = place[n][:2]
        if x < 0 or y < 0 or x + w > panel[0] or y + h > panel[1]:
            yield f"record {n}: outside the panel"
    for a, b in PAIRS:
        if place[a] != place[b]:
            yield f"records {a} and {b} differ in place or size"
    elements = (*BUTTONS, *SHOWN_IMAGES, 21, 40)
    for i, a in enumerate(elements):
        for b in elements[i + 1 :]:
            if overlap(place[a], place[b]):
                yield f"records {a} and {b} overlap"
    for n, least in LEAST_WIDTHS.items():
        if place[n][2] < least:
            yield f"record {n}: {place[n][2]} pixels wide, needs {least}"


def picture_faults(lines, image):
    """Pressed keys and lit lamps that look like the others, and files that are not what is drawn here."""
    cells = {n: image[cy : cy + h, cx : cx + w].astype(int) for n, _, _, cx, cy, w, h, _ in lines}
    for a, b in PAIRS:
        if np.abs(cells[a] - cells[b]).mean() < 6:
            yield f"records {a} and {b} look alike"
    drawn = default_skin.records()
    sheet = Sheet(default_skin.WIDTH)
    sheet.pack(drawn)
    fresh = sheet.image()
    # Versions of the drawing library round differently.
    if fresh.shape != image.shape or np.abs(fresh.astype(int) - image).max() > 4:
        yield "the bitmap is not what build.py draws"
    wanted = [(r.number, r.left, r.top, *r.clip, r.width, r.height, r.use) for r in drawn]
    if wanted != lines:
        yield "the CSV is not what build.py writes"


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else PROJECT / "PANELSET"
    bitmap = folder / "DEFAULT.BMP"
    image = np.asarray(Image.open(bitmap).convert("RGB"))
    lines = read_lines(folder / "DEFAULT.CSV")
    faults = list(layout_faults(lines, (image.shape[1], image.shape[0])))
    faults = faults or list(picture_faults(lines, image))
    if bitmap.stat().st_size > FILE_LIMIT:
        faults.append(f"the bitmap is larger than {FILE_LIMIT} bytes")
    print("\n".join(faults) or f"{len(lines)} records in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
