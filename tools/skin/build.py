#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Draws the shipped skins' bitmaps and CSV files, and the tests' skin.

Needs numpy and pycairo. Usage: build.py [--double] [--only NAME] [FOLDER] (default: PANELSET/ of this project), or
build.py --odd [FOLDER] for the tests' skin (default: tests/data/skins/).
--double also writes the bitmap at twice the size, as NAME@2X.BMP.
"""

import argparse
import pathlib

import odd_skin
from brass_skin import BrassSkin
from default_skin import DefaultSkin
from paper_skin import PaperSkin
from sheet import HEADING, Sheet, bmp_bytes, csv_bytes, csv_line, indexed_bmp_bytes
from slim_skin import SlimSkin

PROJECT = pathlib.Path(__file__).resolve().parents[2]
SKINS = (DefaultSkin(), SlimSkin(), BrassSkin(), PaperSkin())


def write_skin(folder, name, records, width, resolution):
    sheet = Sheet(width, resolution)
    sheet.pack(records)
    suffix = "" if resolution == 1 else f"@{resolution}X"
    bitmap = bmp_bytes(sheet.image())
    (folder / f"{name}{suffix}.BMP").write_bytes(bitmap)
    print(f"{len(bitmap):8d}  {name}{suffix}.BMP  {sheet.width} x {sheet.height}")
    if resolution == 1:
        (folder / f"{name}.CSV").write_bytes(csv_bytes(records))


def write_odd_skin(folder):
    records = odd_skin.records()
    sheet = Sheet(320)
    sheet.pack(records)
    (folder / "ODD.BMP").write_bytes(indexed_bmp_bytes(sheet.image(odd_skin.BLANK)))
    (folder / "ODD.CSV").write_bytes(odd_skin.csv_text(list(map(csv_line, records)), HEADING))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--double", action="store_true")
    parser.add_argument("--odd", action="store_true")
    parser.add_argument("--only", metavar="NAME")
    parser.add_argument("folder", nargs="?", type=pathlib.Path)
    options = parser.parse_args()
    folder = options.folder or PROJECT / ("tests/data/skins" if options.odd else "PANELSET")
    folder.mkdir(parents=True, exist_ok=True)
    if options.odd:
        write_odd_skin(folder)
        return
    for skin in SKINS:
        if options.only in (None, skin.NAME):
            for resolution in (1, 2) if options.double else (1,):
                write_skin(folder, skin.NAME, skin.records(resolution), skin.WIDTH, resolution)


if __name__ == "__main__":
    main()
