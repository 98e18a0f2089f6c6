#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks the shipped skins' files: complete, consistent, and what the programs here draw.

Needs numpy, pycairo, Pillow. Usage: verify.py [FOLDER] (default: PANELSET/ of this project). Ends with 1
and a line for each fault.
"""

import csv
import pathlib
import sys

import numpy as np
from PIL import Image

from build import PROJECT, SKINS
from sheet import Sheet

PAIRS = ((2, 3), (5, 6), (8, 9), (10, 11), (13, 14), (15, 16), (17, 18), (34, 35), (36, 37), (38, 39), (25, 26), (26, 27))
BUTTONS = (2, 4, 5, 7, 8, 10, 12, 13, 15, 17, 19, 20)
SHOWN_IMAGES = (22, 23, 24, 25, 34, 36, 38)
FILE_LIMIT = 700 * 1024  # bytes
LEAST_CLICK = 10  # pixels a side of the display's part for clicks


def read_lines(path):
    with open(path, newline="", encoding="ascii") as f:
        return [(int(r[1]), *map(int, r[2:8]), r[8]) for r in csv.reader(f) if r[1].isdigit()]


def overlap(a, b):
    (ax, ay, aw, ah), (bx, by, bw, bh) = a, b
    return ax < bx + bw and bx < ax + aw and ay < by + bh and by < ay + ah


def layout_faults(lines, size, least_widths):
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
    for n, least in least_widths.items():
        if place[n][2] < least:
            yield f"record {n}: {place[n][2]} pixels wide, needs {least}"


def picture_faults(lines, image, skin):
    """Pressed keys and lit lamps that look like the others, and files that are not what is drawn here."""
    cells = {n: image[cy : cy + h, cx : cx + w].astype(int) for n, _, _, cx, cy, w, h, _ in lines}
    for a, b in PAIRS:
        if np.abs(cells[a] - cells[b]).mean() < 6:
            yield f"records {a} and {b} look alike"
    drawn = skin.records()
    sheet = Sheet(skin.WIDTH)
    sheet.pack(drawn)
    fresh = sheet.image()
    # Versions of the drawing library round differently.
    if fresh.shape != image.shape or np.abs(fresh.astype(int) - image).max() > 4:
        yield "the bitmap is not what build.py draws"
    wanted = [(r.number, r.left, r.top, *r.clip, r.width, r.height, r.use) for r in drawn]
    if wanted != lines:
        yield "the CSV is not what build.py writes"


def free_of_texts(lines):
    """The widest part of the display, in whole pixels, that no text covers: where a click opens the settings."""
    place = {n: (x, y, w, h) for n, x, y, _, _, w, h, _ in lines}
    x, y, w, h = place[21]
    free = np.ones((h, w), bool)
    for n in range(28, 34):
        tx, ty, tw, th = place[n]
        free[max(0, ty - y) : max(0, ty + th - y), max(0, tx - x) : max(0, tx + tw - x)] = False
    best = 0
    for top in range(h - LEAST_CLICK + 1):
        columns = free[top : top + LEAST_CLICK].all(axis=0)
        runs = "".join("x" if c else " " for c in columns).split()
        best = max([best, *map(len, runs)])
    return best


def skin_faults(skin, folder):
    bitmap = folder / f"{skin.NAME}.BMP"
    image = np.asarray(Image.open(bitmap).convert("RGB"))
    lines = read_lines(folder / f"{skin.NAME}.CSV")
    faults = list(layout_faults(lines, (image.shape[1], image.shape[0]), skin.LEAST_WIDTHS))
    faults = faults or list(picture_faults(lines, image, skin))
    if not faults and free_of_texts(lines) < LEAST_CLICK:
        faults.append(f"no {LEAST_CLICK} by {LEAST_CLICK} pixels of the display are free of texts")
    if bitmap.stat().st_size > FILE_LIMIT:
        faults.append(f"the bitmap is larger than {FILE_LIMIT} bytes")
    return faults


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else PROJECT / "PANELSET"
    failed = False
    for skin in SKINS:
        faults = skin_faults(skin, folder)
        failed = failed or bool(faults)
        print("\n".join(f"{skin.NAME}: {fault}" for fault in faults) or f"{skin.NAME}: in order")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
