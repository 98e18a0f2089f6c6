#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Draws the program's icon: a panel with its display, a play key and its knob.

Needs pycairo. Usage: build.py [FOLDER] (default: packaging/icons/ of this project). Writes corvane.svg and a
corvane-SIZE.png for each size; small sizes leave out what would blur.
"""

import math
import pathlib
import sys

import cairo

PROJECT = pathlib.Path(__file__).resolve().parents[2]
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
SIDE = 64  # the drawing's own unit
DETAIL = 32  # pixels; below it texts' bars and the knob's mark are left out

PLATE = ((0x3A, 0x44, 0x54), (0x16, 0x1B, 0x24))
GLASS = ((0x0B, 0x24, 0x36), (0x10, 0x3B, 0x55))
KEY = ((0xF2, 0x8C, 0x3C), (0xC2, 0x4E, 0x0C))
KNOB = ((0x6B, 0x77, 0x8A), (0x2A, 0x31, 0x3D))
LIGHT, BAR, RIM = (0xE8, 0xF8, 0xFF), (0x52, 0xCC, 0xF5), (0x6F, 0x7C, 0x90)


def share(colour):
    return [c / 255 for c in colour]


def slope(colours, top, bottom):
    gradient = cairo.LinearGradient(0, top, 0, bottom)
    gradient.add_color_stop_rgb(0, *share(colours[0]))
    gradient.add_color_stop_rgb(1, *share(colours[1]))
    return gradient


def rounded(context, x, y, width, height, radius):
    context.new_sub_path()
    for cx, cy, quarter in ((x + width - radius, y + radius, -1), (x + width - radius, y + height - radius, 0),
                            (x + radius, y + height - radius, 1), (x + radius, y + radius, 2)):
        context.arc(cx, cy, radius, quarter * math.pi / 2, (quarter + 1) * math.pi / 2)
    context.close_path()


def fill(context, source):
    if isinstance(source, cairo.Pattern):
        context.set_source(source)
    else:
        context.set_source_rgb(*share(source))
    context.fill()


def draw(context, detailed):
    rounded(context, 3, 9, 58, 46, 8)
    fill(context, RIM)
    rounded(context, 4.5, 10.5, 55, 43, 6.8)
    fill(context, slope(PLATE, 10, 54))

    rounded(context, 9, 15, 46, 13, 2.5)
    fill(context, slope(GLASS, 15, 28))
    levels = (5, 8, 6, 9, 4) if detailed else (6, 9)
    step = 3 if detailed else 7
    for i, level in enumerate(levels):
        context.rectangle(12 + i * step, 26 - level, step - (1 if detailed else 2), level)
    fill(context, BAR)
    if detailed:
        for y, width in ((18.5, 22), (23, 14)):
            rounded(context, 30, y, width, 1.8, 0.9)
        fill(context, BAR)

    rounded(context, 9, 33, 28, 15, 3)
    fill(context, slope(KEY, 33, 48))
    context.move_to(19, 35.8)
    context.line_to(29.5, 40.5)
    context.line_to(19, 45.2)
    context.close_path()
    fill(context, (255, 255, 255))

    context.arc(47, 40.5, 8, 0, 2 * math.pi)
    fill(context, slope(KNOB, 32, 49))
    if detailed:
        context.arc(50.2, 36.4, 1.8, 0, 2 * math.pi)
        fill(context, LIGHT)


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else PROJECT / "packaging" / "icons"
    folder.mkdir(parents=True, exist_ok=True)
    with cairo.SVGSurface(str(folder / "corvane.svg"), SIDE, SIDE) as surface:
        surface.set_document_unit(cairo.SVGUnit.PX)
        draw(cairo.Context(surface), True)
    for size in SIZES:
        surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, size, size)
        context = cairo.Context(surface)
        context.scale(size / SIDE, size / SIDE)
        draw(context, size >= DETAIL)
        surface.write_to_png(str(folder / f"corvane-{size}.png"))


if __name__ == "__main__":
    main()
