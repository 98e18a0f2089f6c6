# SPDX-License-Identifier: GPL-3.0-or-later
"""The pictures and the movie frames, drawn as vector shapes."""

import math

import cairo
import numpy as np

from table import MOVIE_SECONDS, MOVIE_SIZE, PICTURE_SIZE


def rgb(text):
    """(r, g, b) in 0..1 of a "#RRGGBB" text."""
    return tuple(int(text[i : i + 2], 16) / 255.0 for i in (1, 3, 5))


def _canvas(size, colour):
    surface = cairo.ImageSurface(cairo.FORMAT_RGB24, *size)
    ctx = cairo.Context(surface)
    ctx.set_source_rgb(*rgb(colour))
    ctx.paint()
    return surface, ctx


def pixels(surface):
    """The surface as a height x width x 3 array of red, green, blue bytes."""
    w, h = surface.get_width(), surface.get_height()
    data = np.frombuffer(surface.get_data(), np.uint8).reshape(h, surface.get_stride() // 4, 4)
    return data[:, :w, 2::-1].copy()


def _fill(ctx, colour, alpha=1.0):
    ctx.set_source_rgba(*rgb(colour), alpha)
    ctx.fill()


def _disc(ctx, x, y, r, colour, alpha=1.0):
    ctx.arc(x, y, r, 0, 2 * math.pi)
    _fill(ctx, colour, alpha)


def _polygon(ctx, points, colour, alpha=1.0):
    ctx.move_to(*points[0])
    for p in points[1:]:
        ctx.line_to(*p)
    ctx.close_path()
    _fill(ctx, colour, alpha)


def _ridge(ctx, base, waves, colour):
    """A hill line across the picture: the base height and waves of (amplitude, period, shift)."""
    w, h = PICTURE_SIZE
    ctx.move_to(0, h)
    for x in range(0, w + 4, 4):
        ctx.line_to(x, base - sum(a * math.sin((x + s) * 2 * math.pi / p) for a, p, s in waves))
    ctx.line_to(w, h)
    ctx.close_path()
    _fill(ctx, colour)


def hills():
    surface, ctx = _canvas(PICTURE_SIZE, "#8CC8EC")
    _disc(ctx, 252, 52, 38, "#FFF3B8", 0.5)
    _disc(ctx, 252, 52, 27, "#FFD84A")
    for x, y, s in ((110, 52, 1.0), (170, 84, 0.7), (40, 92, 0.8)):
        for dx, dy, r in ((-20, 4, 11), (-5, -4, 15), (13, 1, 12), (26, 6, 8)):
            _disc(ctx, x + dx * s, y + dy * s, r * s, "#FFFFFF")
        ctx.rectangle(x - 20 * s, y + 4 * s, 46 * s, 11 * s)
        _fill(ctx, "#FFFFFF")
    _ridge(ctx, 148, ((12, 190, 20), (6, 70, 5)), "#7FB08A")
    _ridge(ctx, 168, ((14, 230, 120), (4, 60, 0)), "#5FA35C")
    _ridge(ctx, 184, ((8, 320, 0),), "#3E8E41")
    _ridge(ctx, 214, ((26, 420, 180),), "#2A6A36")
    # A house with its path, and three firs.
    _polygon(ctx, ((196, 186), (206, 186), (188, 240), (150, 240)), "#D9C38A")
    ctx.rectangle(178, 160, 40, 26)
    _fill(ctx, "#F6EBD6")
    _polygon(ctx, ((172, 161), (198, 140), (224, 161)), "#B5483A")
    ctx.rectangle(195, 170, 10, 16)
    _fill(ctx, "#7A4A2C")
    for x in (183, 208):
        ctx.rectangle(x, 167, 7, 7)
        _fill(ctx, "#5A88B0")
    for x, y, s in ((112, 190, 1.0), (132, 196, 0.8), (92, 184, 0.7)):
        ctx.rectangle(x - 2 * s, y, 4 * s, 8 * s)
        _fill(ctx, "#5C3B22")
        for k in range(3):
            top = y - 38 * s + k * 11 * s
            _polygon(ctx, ((x, top), (x - (8 + 3 * k) * s, top + 16 * s), (x + (8 + 3 * k) * s, top + 16 * s)), "#1F5A30")
    return surface


def sunset():
    surface, ctx = _canvas(PICTURE_SIZE, "#5A2A4E")
    for y, colour in ((34, "#8C3A52"), (60, "#C4543F"), (86, "#F2803A"), (130, "#F9A94E")):
        ctx.rectangle(0, y, 320, 150 - y)
        _fill(ctx, colour)
    _disc(ctx, 160, 104, 40, "#FFC766", 0.6)
    _disc(ctx, 160, 104, 30, "#FFE08A")
    ctx.rectangle(0, 140, 320, 100)
    _fill(ctx, "#2C5478")
    ctx.rectangle(0, 184, 320, 56)
    _fill(ctx, "#1E3A5C")
    for k in range(9):
        half = 34 - 2.6 * k + (4 if k % 2 else 0)
        ctx.rectangle(160 - half, 143 + 5 * k, 2 * half, 2)
        _fill(ctx, "#FFD27A", 0.9 - 0.07 * k)
    # A boat under sail.
    _polygon(ctx, ((214, 176), (286, 176), (272, 192), (226, 192)), "#3B2030")
    ctx.rectangle(249, 102, 2.5, 74)
    _fill(ctx, "#3B2030")
    _polygon(ctx, ((253, 104), (253, 170), (286, 170)), "#F7EDE2")
    _polygon(ctx, ((247, 112), (247, 170), (220, 170)), "#E3C9B8")
    for x, y, s in ((80, 52, 9), (104, 66, 7), (62, 74, 6)):
        ctx.set_source_rgb(*rgb("#2A1428"))
        ctx.set_line_width(1.8)
        ctx.arc(x - s, y + s * 0.6, s, -math.pi * 0.75, -math.pi * 0.15)
        ctx.stroke()
        ctx.arc(x + s, y + s * 0.6, s, -math.pi * 0.85, -math.pi * 0.25)
        ctx.stroke()
    return surface


def _tower(ctx, x, y, w, colour, light):
    ctx.rectangle(x, y, w, 216 - y)
    _fill(ctx, colour)
    for row, wy in enumerate(range(y + 10, 206, 14)):
        for col, wx in enumerate(range(x + 6, x + w - 8, 11)):
            if (row * 7 + col * 5 + x) % 3:
                ctx.rectangle(wx, wy, 5, 7)
                _fill(ctx, light)


def city():
    surface, ctx = _canvas(PICTURE_SIZE, "#141C3C")
    for k in range(46):
        x, y = (k * 73 + 11) % 316, (k * 41 + 17) % 104
        if not (x < 62 and y < 42) and not (228 < x < 288 and y < 72):
            ctx.rectangle(x, y, 1 + (k % 5 == 0), 1 + (k % 5 == 0))
            _fill(ctx, "#C8D0F0")
    _disc(ctx, 258, 42, 22, "#F4EEC8")
    for x, y, r in ((249, 30, 3), (267, 56, 4), (245, 52, 2)):
        _disc(ctx, x, y, r, "#DCD4A4")
    for x, y, w in ((0, 132, 44), (96, 98, 40), (182, 116, 50), (276, 104, 44)):
        _tower(ctx, x, y, w, "#202A4C", "#58648C")
    for x, y, w, light in ((28, 158, 30, "#F2C94C"), (56, 112, 34, "#F2C94C"), (130, 138, 46, "#F28C4C"), (220, 92, 36, "#F2C94C"), (250, 150, 44, "#F28C4C")):
        _tower(ctx, x, y, w, "#2C3658", light)
    ctx.rectangle(60, 118, 12, 8)
    _fill(ctx, "#2C3658")
    ctx.rectangle(237, 70, 2, 22)
    _fill(ctx, "#2C3658")
    _disc(ctx, 238, 70, 2.5, "#E24A4A")
    ctx.rectangle(0, 214, 320, 26)
    _fill(ctx, "#0C1020")
    for x in range(100, 320, 30):
        ctx.rectangle(x, 226, 16, 2)
        _fill(ctx, "#8C8660")
    return surface


DRAWINGS = {"hills.bmp": hills, "sunset.jpg": sunset, "city.gif": city}


def movie_frame(movie, index):
    """Frame `index` of a movie: the second's colour, its number in a dial that runs once around a second."""
    w, h = MOVIE_SIZE
    seconds = index / movie.frames
    whole = min(int(seconds), MOVIE_SECONDS - 1)
    surface, ctx = _canvas(MOVIE_SIZE, movie.colours[whole])
    cx, cy, r = w / 2, h / 2 - 8, 70
    _disc(ctx, cx, cy, r + 6, "#000000", 0.25)
    ctx.move_to(cx, cy)
    ctx.arc(cx, cy, r, -math.pi / 2, -math.pi / 2 + 2 * math.pi * (seconds - whole + 1.0 / movie.frames))
    ctx.close_path()
    _fill(ctx, "#FFFFFF", 0.28)
    ctx.set_source_rgb(1, 1, 1)
    ctx.set_line_width(3)
    ctx.arc(cx, cy, r, 0, 2 * math.pi)
    ctx.stroke()
    _numeral(ctx, whole + 1, cx, cy)
    ctx.rectangle(20, h - 26, w - 40, 8)
    _fill(ctx, "#000000", 0.35)
    ctx.rectangle(20, h - 26, (w - 40) * seconds / MOVIE_SECONDS, 8)
    _fill(ctx, "#FFFFFF", 0.9)
    _disc(ctx, 20 + (w - 40) * seconds / MOVIE_SECONDS, h - 22, 9, "#FFFFFF")
    return surface


# The numerals as strokes on a grid of 0..2 by 0..4, so that no font is needed.
_STROKES = {
    1: ((0.4, 1), (1.2, 0), (1.2, 4)),
    2: ((0, 1), (0.3, 0.2), (1, 0), (1.7, 0.2), (2, 1), (1.6, 2), (0, 4), (2, 4)),
    3: ((0, 0), (2, 0), (0.9, 1.6), (1.7, 1.9), (2, 2.8), (1.6, 3.7), (0.8, 4), (0, 3.5)),
    4: ((1.5, 4), (1.5, 0), (0, 2.8), (2.1, 2.8)),
    5: ((1.9, 0), (0.3, 0), (0.1, 1.8), (1.1, 1.5), (1.9, 2), (2, 3), (1.4, 3.9), (0.6, 4), (0, 3.6)),
}


def _numeral(ctx, digit, cx, cy):
    scale = 20
    points = _STROKES[digit]
    ctx.set_source_rgb(1, 1, 1)
    ctx.set_line_width(10)
    ctx.set_line_cap(cairo.LINE_CAP_ROUND)
    ctx.set_line_join(cairo.LINE_JOIN_ROUND)
    for i, (x, y) in enumerate(points):
        (ctx.line_to if i else ctx.move_to)(cx + (x - 1) * scale, cy + (y - 2) * scale)
    ctx.stroke()
