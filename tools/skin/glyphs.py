# SPDX-License-Identifier: GPL-3.0-or-later
"""The symbols on the keys and the engraved letters, as vector paths around a centre."""

import math

# Letters as lines on a grid 4 wide and 6 high, so that no font has to be installed.
_LETTERS = {
    "A": (4.2, [[(0, 6), (2.1, 0), (4.2, 6)], [(0.8, 4), (3.4, 4)]]),
    "C": (4, [[(4, 1), (3, 0), (1, 0), (0, 1), (0, 5), (1, 6), (3, 6), (4, 5)]]),
    "E": (3.4, [[(3.4, 0), (0, 0), (0, 6), (3.4, 6)], [(0, 3), (2.8, 3)]]),
    "I": (0, [[(0, 0), (0, 6)]]),
    "K": (3.8, [[(0, 0), (0, 6)], [(3.8, 0), (0, 3.6)], [(1.3, 2.5), (3.8, 6)]]),
    "L": (3.2, [[(0, 0), (0, 6), (3.2, 6)]]),
    "M": (5, [[(0, 6), (0, 0), (2.5, 4), (5, 0), (5, 6)]]),
    "N": (4, [[(0, 6), (0, 0), (4, 6), (4, 0)]]),
    "O": (4.2, [[(1.1, 0), (3.1, 0), (4.2, 1.1), (4.2, 4.9), (3.1, 6), (1.1, 6), (0, 4.9), (0, 1.1), (1.1, 0)]]),
    "P": (3.8, [[(0, 6), (0, 0), (2.8, 0), (3.8, 0.9), (3.8, 2.5), (2.8, 3.4), (0, 3.4)]]),
    "Q": (4.2, [[(1.1, 0), (3.1, 0), (4.2, 1.1), (4.2, 4.9), (3.1, 6), (1.1, 6), (0, 4.9), (0, 1.1), (1.1, 0)], [(2.6, 4.4), (4.4, 6.3)]]),
    "R": (3.9, [[(0, 6), (0, 0), (2.8, 0), (3.8, 0.9), (3.8, 2.4), (2.8, 3.3), (0, 3.3)], [(2, 3.3), (3.9, 6)]]),
    "T": (4, [[(0, 0), (4, 0)], [(2, 0), (2, 6)]]),
    "U": (4, [[(0, 0), (0, 4.9), (1.1, 6), (2.9, 6), (4, 4.9), (4, 0)]]),
    "V": (4.2, [[(0, 0), (2.1, 6), (4.2, 0)]]),
}


def lettering(text, cx, cy, height, spacing=2.0):
    """Stroked capitals centred on (cx, cy). `height` in panel pixels, `spacing` in grid units."""
    unit = height / 6.0
    width = sum(_LETTERS[ch][0] for ch in text) + spacing * (len(text) - 1)

    def path(ctx):
        x = cx - width * unit / 2
        for ch in text:
            advance, lines = _LETTERS[ch]
            for line in lines:
                for i, (gx, gy) in enumerate(line):
                    (ctx.line_to if i else ctx.move_to)(x + gx * unit, cy + (gy - 3) * unit)
            x += (advance + spacing) * unit

    return path


def _polygon(ctx, points):
    for i, p in enumerate(points):
        (ctx.line_to if i else ctx.move_to)(*p)
    ctx.close_path()


def play(cx, cy):
    def path(ctx):
        _polygon(ctx, ((cx - 4.5, cy - 6.5), (cx + 7, cy), (cx - 4.5, cy + 6.5)))

    return path


def pause(cx, cy):
    def path(ctx):
        ctx.rectangle(cx - 5, cy - 6, 3, 12)
        ctx.rectangle(cx + 2, cy - 6, 3, 12)

    return path


def stop(cx, cy):
    def path(ctx):
        ctx.rectangle(cx - 5, cy - 5, 10, 10)

    return path


def step(cx, cy, forward):
    """Two triangles against a bar: next, or mirrored, previous."""
    d = 1 if forward else -1

    def path(ctx):
        for shift in (-7.5, -0.5):
            x = cx + d * shift
            _polygon(ctx, ((x, cy - 5), (x + d * 7, cy), (x, cy + 5)))
        left = cx + 6.5 if forward else cx - 8.5
        ctx.rectangle(left, cy - 5, 2, 10)

    return path


def loop_lines(cx, cy):
    """Two bent arrows' shafts, to be stroked: repeat."""

    def path(ctx):
        ctx.move_to(cx - 6, cy + 0.5)
        ctx.line_to(cx - 6, cy - 0.8)
        ctx.arc(cx - 3.6, cy - 1.4, 2.4, math.pi, 1.5 * math.pi)
        ctx.line_to(cx + 4, cy - 3.8)
        ctx.move_to(cx + 6, cy - 0.5)
        ctx.line_to(cx + 6, cy + 0.8)
        ctx.arc(cx + 3.6, cy + 1.4, 2.4, 0, 0.5 * math.pi)
        ctx.line_to(cx - 4, cy + 3.8)

    return path


def loop_heads(cx, cy):
    def path(ctx):
        _polygon(ctx, ((cx + 3, cy - 7), (cx + 7, cy - 3.8), (cx + 3, cy - 0.6)))
        _polygon(ctx, ((cx - 3, cy + 7), (cx - 7, cy + 3.8), (cx - 3, cy + 0.6)))

    return path


def cross_lines(cx, cy):
    """Two crossing shafts, to be stroked: shuffle."""

    def path(ctx):
        for d in (1, -1):
            ctx.move_to(cx - 7, cy - d * 3.5)
            ctx.line_to(cx - 4.4, cy - d * 3.5)
            ctx.curve_to(cx - 1, cy - d * 3.5, cx - 1, cy + d * 3.5, cx + 2.6, cy + d * 3.5)
            ctx.line_to(cx + 4, cy + d * 3.5)

    return path


def cross_heads(cx, cy):
    def path(ctx):
        for d in (1, -1):
            y = cy + d * 3.5
            _polygon(ctx, ((cx + 3.5, y - 2.8), (cx + 7.5, y), (cx + 3.5, y + 2.8)))

    return path


def listing(cx, cy):
    """Three entries of a list."""

    def path(ctx):
        for row in (-5, -1, 3):
            ctx.rectangle(cx - 7, cy + row, 2, 2)
            ctx.rectangle(cx - 3, cy + row, 10, 2)

    return path


def minus(cx, cy):
    def path(ctx):
        ctx.rectangle(cx - 4, cy - 1, 8, 2)

    return path


def plus(cx, cy):
    def path(ctx):
        ctx.rectangle(cx - 4, cy - 1, 8, 2)
        ctx.rectangle(cx - 1, cy - 4, 2, 3)
        ctx.rectangle(cx - 1, cy + 1, 2, 3)

    return path


def power_lines(cx, cy):
    """The open ring and the bar, to be stroked."""

    def path(ctx):
        ctx.arc(cx, cy + 0.4, 3.6, -0.29 * math.pi, 1.29 * math.pi)
        ctx.move_to(cx, cy - 4.4)
        ctx.line_to(cx, cy - 0.6)

    return path


def underline(cx, cy):
    """The bar of the minimise symbol."""

    def path(ctx):
        ctx.rectangle(cx - 3.5, cy + 1.5, 7, 2)

    return path


def faders(cx, cy):
    """Three faders: settings."""

    def path(ctx):
        for row, knob in ((-3.5, 2), (-0.5, -2), (2.5, 1)):
            ctx.rectangle(cx - 5, cy + row, 10, 1)
            ctx.rectangle(cx + knob - 1, cy + row - 1, 2, 3)

    return path


def speaker(cx, cy):
    """A loudspeaker's outline, filled."""

    def path(ctx):
        _polygon(ctx, ((cx - 4, cy - 1.5), (cx - 2, cy - 1.5), (cx + 1, cy - 4), (cx + 1, cy + 4), (cx - 2, cy + 1.5), (cx - 4, cy + 1.5)))
        ctx.rectangle(cx + 2.5, cy - 2, 1, 4)

    return path
