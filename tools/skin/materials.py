# SPDX-License-Identifier: GPL-3.0-or-later
"""What the panel is made of: brushed metal, dark glass, satin keys, glowing signs, a turned knob."""

import numpy as np

import glyphs
from raster import SUPERSAMPLE, box, disc, mix, rgb, vertical

LIGHT = "#FFFFFF"


def _streaks(canvas, mask, length, seed):
    """Horizontal brush marks, mean 0, about -1..1: random rows smeared over `length` panel pixels."""
    rows = np.random.default_rng(seed)
    n = SUPERSAMPLE
    h = -(-mask.a.shape[0] // n) + 1
    w = -(-mask.a.shape[1] // n) + 1
    reach = max(1, round(length * canvas.resolution))
    noise = rows.standard_normal((h, w + 2 * reach))
    total = np.cumsum(noise, axis=1)
    smooth = (total[:, 2 * reach :] - total[:, : -2 * reach]) / np.sqrt(2 * reach)
    fine = rows.standard_normal((h, w))
    marks = 0.8 * smooth[:, :w] + 0.25 * fine
    cells = np.repeat(np.repeat(marks, n, axis=0), n, axis=1)
    return cells[: mask.a.shape[0], : mask.a.shape[1]].astype(np.float32)


def brush(canvas, mask, strength, length=60, seed=7):
    canvas.scale_by(mask, 1.0 + strength * _streaks(canvas, mask, length, seed))


def rim(canvas, mask, strength_top, strength_bottom, width=1.0):
    """A lit upper edge and a dark lower edge inside a shape."""
    canvas.light(mask.times(mask.shift(0, width).outside()), LIGHT, strength_top)
    canvas.shade(mask.times(mask.shift(0, -width).outside()), strength_bottom)


def chassis(canvas, pal):
    """The whole panel: a milled plate with lit and dark edges."""
    w, h = canvas.width, canvas.height
    body = canvas.shape(box(0, 0, w, h), pad=0)
    canvas.paint(body, vertical(0, h, *pal.chassis))
    x, y = canvas.grid(body)
    sheen = 0.16 * np.exp(-(((x - 0.27 * w + 0.35 * y) / (0.22 * w)) ** 2)) + 0.10 * np.exp(-(((x - 0.84 * w + 0.35 * y) / (0.13 * w)) ** 2))
    canvas.scale_by(body, (0.94 + sheen).astype(np.float32))
    brush(canvas, body, pal.brush)
    for inset, colour, top, side, bottom in ((0, pal.edge, 1.0, 1.0, 1.0), (1, LIGHT, 0.38, 0.10, 0.0), (2, LIGHT, 0.08, 0.03, 0.0)):
        i = inset
        canvas.paint(canvas.shape(box(i, i, w - 2 * i, 1), pad=0), colour, top)
        canvas.paint(canvas.shape(box(i, i + 1, 1, h - 2 * i - 2), pad=0), colour, side)
        canvas.paint(canvas.shape(box(w - 1 - i, i + 1, 1, h - 2 * i - 2), pad=0), colour, side)
        canvas.paint(canvas.shape(box(i, h - 1 - i, w - 2 * i, 1), pad=0), colour, bottom)
    canvas.shade(canvas.shape(box(1, h - 3, w - 2, 2), pad=0), 0.35)


def recess(canvas, x, y, w, h, r, depth=1.0):
    """A hole milled into the plate: dark lip above, light caught by the lip below."""
    canvas.shade(canvas.shape(box(x - 1, y - 1, w + 2, h + 2, r + 1)), 0.25 * depth)
    canvas.light(canvas.shape(box(x, y + 1.4, w, h, r)), LIGHT, 0.30 * depth)
    return canvas.shape(box(x, y, w, h, r))


def groove(canvas, x, y0, y1):
    """A vertical line cut into the plate."""
    canvas.shade(canvas.shape(box(x, y0, 1, y1 - y0), pad=1), 0.6)
    canvas.light(canvas.shape(box(x + 1, y0, 1, y1 - y0), pad=1), LIGHT, 0.16)


def glass(canvas, pal, x, y, w, h, r):
    """A pane of dark glass behind a dark bezel, with a reflection across its upper part."""
    hole = recess(canvas, x, y, w, h, r)
    canvas.paint(hole, pal.bezel)
    pane = canvas.shape(box(x + 2, y + 2, w - 4, h - 4, max(0, r - 2)))
    canvas.paint(pane, vertical(y + 2, y + h - 2, *pal.glass))
    px, py = canvas.grid(pane)
    glow = np.exp(-(((px - x - 0.5 * w) / (0.42 * w)) ** 2) - (((py - y - 0.55 * h) / (0.5 * h)) ** 2))
    canvas.light(pane.times(glow.astype(np.float32)), pal.accent, 0.07)
    canvas.shade(pane.times(pane.shift(0, 2).blur(1.6).outside()), 0.7)

    def sweep(ctx):
        ctx.move_to(x + 2, y + 2)
        ctx.line_to(x + w - 2, y + 2)
        ctx.line_to(x + w - 2, y + 0.20 * h)
        ctx.curve_to(x + 0.7 * w, y + 0.34 * h, x + 0.3 * w, y + 0.40 * h, x + 2, y + 0.52 * h)
        ctx.close_path()

    reflection = canvas.shape(sweep, pad=0)
    ry = canvas.grid(reflection)[1]
    fade = np.clip(1.1 - (ry - y) / (0.6 * h), 0, 1) * np.ones_like(reflection.a)
    inside = np.zeros_like(reflection.a)
    _place(inside, reflection, pane)
    canvas.light(reflection.times(fade.astype(np.float32)).times(inside), "#DCEBFF", 0.075)


def _place(target, where, mask):
    """Copies the part of `mask` that overlaps the rectangle of `where` into an array of that rectangle."""
    x0, y0 = max(where.x, mask.x), max(where.y, mask.y)
    x1 = min(where.x + where.a.shape[1], mask.x + mask.a.shape[1])
    y1 = min(where.y + where.a.shape[0], mask.y + mask.a.shape[0])
    target[y0 - where.y : y1 - where.y, x0 - where.x : x1 - where.x] = mask.a[y0 - mask.y : y1 - mask.y, x0 - mask.x : x1 - mask.x]


def slot(canvas, pal, x, y, w, h):
    """The seek bar's channel: `x, y, w, h` is the bar itself, the channel is a pixel larger all round."""
    hole = recess(canvas, x - 1, y - 1, w + 2, h + 2, 1.5)
    canvas.paint(hole, vertical(y - 1, y + h + 1, "#050607", "#12161B"))
    for k in range(1, 8):
        tick = canvas.shape(box(x + round(w * k / 8), y + h - 2, 1, 2), pad=1)
        canvas.paint(tick, pal.ghost, 0.9)


def key(canvas, pal, rect, radius, pressed, lit=None):
    """A satin key in its hole, filling `rect`; pressed it lies a pixel deeper, in its own shadow.

    `lit` is the colour of light that shines up around a pressed key.
    """
    x, y, w, h = rect
    hole = canvas.shape(box(x, y, w, h, radius))
    canvas.paint(hole, "#070809")
    if not pressed:
        cap = canvas.shape(box(x + 1, y + 1, w - 2, h - 2.5, radius - 1))
        canvas.paint(cap, vertical(y + 1, y + h - 1, *pal.key))
        brush(canvas, cap, pal.brush * 0.7, 30, 3 + int(x))
        canvas.light(cap.times(cap.shift(0, 1).outside()), LIGHT, 0.34)
        canvas.light(cap.times(cap.shift(0, 2).outside()).blur(0.5), LIGHT, 0.05)
        canvas.shade(cap.times(cap.shift(0, -1).outside()), 0.55)
        canvas.light(cap.times(cap.shift(1, 0).outside()), LIGHT, 0.08)
        canvas.shade(cap.times(cap.shift(-1, 0).outside()), 0.25)
        return
    cap = canvas.shape(box(x + 1.5, y + 2, w - 3, h - 3, radius - 1))
    canvas.paint(cap, vertical(y + 1, y + h - 1, *pal.key_down))
    brush(canvas, cap, pal.brush * 0.5, 30, 3 + int(x))
    if lit is not None:
        px, py = canvas.grid(cap)
        glow = np.exp(-(((px - x - w / 2) / (0.45 * w)) ** 2) - (((py - y - h) / (0.62 * h)) ** 2))
        canvas.light(cap.times(glow.astype(np.float32)), lit, 0.30)
    canvas.shade(cap.times(cap.shift(0, 2.5).blur(1.8).outside()), 0.72)
    canvas.shade(cap.times(cap.shift(1.5, 0).blur(1.2).outside()), 0.35)
    canvas.light(cap.times(cap.shift(0, -0.8).outside()), LIGHT, 0.14)


def printed(canvas, masks, colour):
    """A symbol printed on a key, with the thin shadow of its ink's edge."""
    for m in masks:
        canvas.shade(m.shift(0, -1), 0.45)
    for m in masks:
        canvas.paint(m, colour)


def glowing(canvas, masks, colour, halo=0.55):
    """A symbol lit from behind."""
    for m in masks:
        canvas.light(m.blur(2.2), colour, halo * 1.4)
        canvas.light(m.blur(0.9), colour, halo * 0.7)
    for m in masks:
        canvas.paint(m, mix(rgb(colour), rgb("#FFFFFF"), 0.45))


def inlaid(canvas, pal, text, cx, cy, height, spacing=2.0, width=1.0):
    """Bright metal letters set into the plate."""
    cut = canvas.shape(glyphs.lettering(text, cx, cy, height, spacing), pad=3, stroke=width)
    canvas.shade(cut.shift(0, -0.7), 0.6)
    canvas.light(cut.shift(0, 0.8), LIGHT, 0.10)
    canvas.paint(cut, vertical(cy - height / 2, cy + height / 2, *pal.inlay))


def screened(canvas, text, cx, cy, height, colour, spacing=2.0, width=0.9, alpha=0.9):
    """Letters printed on the plate."""
    canvas.paint(canvas.shape(glyphs.lettering(text, cx, cy, height, spacing), stroke=width), colour, alpha)


def sign(canvas, rect, text, colour, lit):
    """A sign in the display: an outlined word, nearly dark, or alight."""
    x, y, w, h = rect
    frame = canvas.shape(box(x + 1.5, y + 1.5, w - 3, h - 3, 2.5), pad=1.5, stroke=1.0)
    field = canvas.shape(box(x + 1.5, y + 1.5, w - 3, h - 3, 2.5), pad=1.5)
    word = canvas.shape(glyphs.lettering(text, x + w / 2, y + h / 2, 5, 2.4), pad=4, stroke=1.0)
    if not lit:
        canvas.paint(frame, colour, 0.17)
        canvas.paint(word, colour, 0.24)
        return
    canvas.light(field, colour, 0.24)
    canvas.light(field.blur(1.0), colour, 0.12)
    canvas.paint(frame, colour, 0.95)
    canvas.light(word.blur(1.6), colour, 0.6)
    canvas.paint(word, mix(rgb(colour), rgb(LIGHT), 0.55))


def bars(canvas, pal, rect, levels):
    """Columns of segments, `levels` of them alight in each, the upper ones in the warning colour."""
    x, y, _, h = rect
    rows = h // 5
    for column, level in enumerate(levels):
        for row in range(rows):
            cell = canvas.shape(box(x + 1 + column * 7, y + h - 4 - row * 5, 5, 3), pad=3)
            colour = pal.warm if row >= rows - 2 else pal.accent
            if row < level:
                canvas.light(cell.blur(1.2), colour, 0.45)
                canvas.paint(cell, mix(rgb(colour), rgb(LIGHT), 0.12))
            else:
                canvas.paint(cell, colour, 0.11)


def knob_seat(canvas, pal, cx, cy, r, reach=8.0):
    """Scale, hollow and cast shadow of a knob of radius r; the scale's lines end `reach` outside it."""
    hollow = canvas.shape(disc(cx, cy, r + 3), pad=10)
    canvas.light(canvas.shape(disc(cx, cy + 1.2, r + 3.2), pad=10), LIGHT, 0.16)
    canvas.paint(hollow, vertical(cy - r, cy + r, *pal.seat))
    canvas.shade(canvas.shape(disc(cx, cy + 7, r - 1), pad=16).blur(4.0), 0.75)
    for level in range(16):
        angle = np.radians(225.0 - 18.0 * level)
        major = level in (0, 15)
        inner, outer = r + reach - 2.5, r + reach + (1.5 if major else 0.0)

        def tick(ctx, a=angle, r0=inner, r1=outer):
            ctx.move_to(cx + r0 * np.cos(a), cy - r0 * np.sin(a))
            ctx.line_to(cx + r1 * np.cos(a), cy - r1 * np.sin(a))

        canvas.paint(canvas.shape(tick, pad=1, stroke=1.3 if major else 1.0), pal.ink, 1.0 if major else 0.8)


def _turned(canvas, mask, cx, cy, dark, bright, phase, contrast):
    """The light on a turned metal face: bright and dark sectors and the tool's rings."""
    x, y = canvas.grid(mask)
    angle = np.arctan2(y - cy, x - cx)
    radius = np.hypot(x - cx, y - cy)
    lobes = 0.5 + 0.5 * np.cos(2 * (angle - phase))
    lobes = 0.62 * lobes**3 + 0.38 * (0.5 + 0.5 * np.cos(3 * (angle + 0.9))) ** 4
    rings = 0.03 * np.sin(radius * 4.3) + 0.02 * np.sin(radius * 7.1 + 1.0)
    t = np.clip(contrast * lobes + rings + 0.12, 0, 1)[..., None]
    canvas.paint(mask, rgb(dark) + (rgb(bright) - rgb(dark)) * t.astype(np.float32))


def knob(canvas, pal, cx, cy, r):
    """A turned knob with a ridged bright edge and a track, around which the level's dot moves."""
    edge = canvas.shape(disc(cx, cy, r - 0.5))
    _turned(canvas, edge, cx, cy, *pal.rim, -0.9, 1.2)
    x, y = canvas.grid(edge)
    angle = np.arctan2(y - cy, x - cx)
    canvas.scale_by(edge, (0.88 + 0.12 * np.cos(angle * 72)).astype(np.float32))
    canvas.shade(edge.times(edge.shift(0, -1.5).blur(0.8).outside()), 0.45)
    canvas.shade(canvas.shape(disc(cx, cy, r - 2.9)), 0.8)
    face = canvas.shape(disc(cx, cy, r - 3.5))
    _turned(canvas, face, cx, cy, pal.knob[0], pal.knob[1], -0.9, 0.8)
    canvas.light(face.times(face.shift(0, 0.8).outside()), LIGHT, 0.35)
    track = r - 11.5
    canvas.shade(canvas.shape(disc(cx, cy + 0.6, track + 0.9)), 0.55)
    cap = canvas.shape(disc(cx, cy, track))
    _turned(canvas, cap, cx, cy, pal.knob[2], pal.knob[3], -0.9, 0.85)
    canvas.light(cap.times(cap.shift(0, 0.9).blur(0.4).outside()), LIGHT, 0.42)
    canvas.shade(cap.times(cap.shift(0, -1.0).blur(0.5).outside()), 0.5)
