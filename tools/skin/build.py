#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Draws a skin's bitmap and CSV.

Needs numpy and pycairo. Usage: build.py [--double] [FOLDER] (default: PANELSET/ of this project).
--double also writes the bitmap at twice the size, as NAME@2X.BMP.
"""

import argparse
import pathlib

import default_skin
from sheet import Sheet, bmp_bytes, csv_bytes


def write_skin(folder, name, records, width, resolution):
    sheet = Sheet(width, resolution)
    sheet.pack(records)
    suffix = "" if resolution == 1 else f"@{resolution}X"
    bitmap = bmp_bytes(sheet.image())
    (folder / f"{name}{suffix}.BMP").write_bytes(bitmap)
    print(f"{len(bitmap):8d}  {name}{suffix}.BMP  {sheet.width} x {sheet.height}")
    if resolution == 1:
        (folder / f"{name}.CSV").write_bytes(csv_bytes(records))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--double", action="store_true")
    parser.add_argument("folder", nargs="?", default=pathlib.Path(__file__).resolve().parents[2] / "PANELSET", type=pathlib.Path)
    options = parser.parse_args()
    options.folder.mkdir(parents=True, exist_ok=True)
    for resolution in (1, 2) if options.double else (1,):
        write_skin(options.folder, "DEFAULT", default_skin.records(resolution), default_skin.WIDTH, resolution)


if __name__ == "__main__":
    main()
