# SPDX-License-Identifier: GPL-3.0-or-later
"""The default skin, described once: where everything is, what it is made of, how it looks in each state."""

from dataclasses import dataclass

import glyphs
import materials as m
from raster import Canvas, box
from sheet import Record, colour_field

WIDTH, HEIGHT = 480, 150


@dataclass(frozen=True)
class Palette:
    chassis: tuple = ("#5A6067", "#42474D", "#33373C", "#2A2D31")
    brush: float = 0.035
    edge: str = "#08090A"
    bezel: str = "#050607"
    glass: tuple = ("#0D141B", "#081018", "#060B10")
    key: tuple = ("#666C74", "#4B5057", "#3A3E44")
    key_down: tuple = ("#1D2023", "#2A2E32", "#34383D")
    knob: tuple = ("#1E2023", "#7A8189", "#2B2E33", "#A2A9B1")
    ink: str = "#D5DBE1"
    accent: str = "#52CCF5"
    warm: str = "#FFB44A"
    green: str = "#86F0A0"
    red: str = "#FF6A55"
    ghost: str = "#2A4350"


PAL = Palette()

GLASS = (12, 10, 344, 72)
DISPLAY = (56, 13, 297, 50)
INDICATOR = (18, 17, 35, 45)
SIGNS = {34: (158, 65, 62, 13, "AUTO", PAL.warm), 36: (223, 65, 62, 13, "QUICK", PAL.green), 38: (288, 65, 62, 13, "REPEAT", PAL.accent)}
SLIDER = (14, 91, 340, 7)
KNOB = (385, 40, 68, 68)
BADGE = (368, 12, 56, 14)
LEGEND = (396, 121, 46, 14)
LEVELS = {25: (2, 3, 4, 3, 2), 26: (5, 8, 6, 4, 3), 27: (3, 5, 7, 9, 6)}


@dataclass(frozen=True)
class Button:
    label: str
    normal: int  # record of the normal picture
    pressed: int  # record of the pressed picture, 0 without one
    rect: tuple
    glow: str = PAL.accent


ROW, TALL = 108, 30
BUTTONS = (
    Button("Previous", 13, 14, (12, ROW, 42, TALL)),
    Button("Play", 8, 9, (56, ROW, 56, TALL)),
    Button("Pause", 10, 11, (114, ROW, 42, TALL)),
    Button("Stop", 12, 0, (158, ROW, 42, TALL)),
    Button("Next", 15, 16, (202, ROW, 42, TALL)),
    Button("Repeat", 5, 6, (256, ROW, 32, TALL)),
    Button("Shuffle", 7, 0, (290, ROW, 32, TALL)),
    Button("Play list", 17, 18, (324, ROW, 32, TALL)),
    Button("Minimise", 4, 0, (430, 10, 18, 18)),
    Button("Power", 2, 3, (451, 10, 18, 18), PAL.red),
    Button("Volume down", 19, 0, (370, 118, 24, 20)),
    Button("Volume up", 20, 0, (444, 118, 24, 20)),
)

# Text fields: record, name, left, top, width, height, colour. The program draws the texts itself.
TEXTS = (
    (32, "Display", 60, 15, 290, 16, "#9BD6EA"),
    (33, "Title", 60, 38, 206, 18, "#EAF8FF"),
    (31, "Time", 272, 33, 80, 28, "#7FE2FF"),
    (30, "File number", 60, 64, 26, 15, "#9BD6EA"),
    (28, "Of", 86, 64, 7, 15, "#4F7F92"),
    (29, "Total", 95, 64, 26, 15, "#9BD6EA"),
)


def _symbol(canvas, name, cx, cy):
    """The masks of a key's symbol."""
    fill, line = (lambda p: canvas.shape(p, pad=7)), (lambda p, w: canvas.shape(p, pad=7, stroke=w))
    g = glyphs
    return {
        "Previous": lambda: [fill(g.step(cx, cy, False))],
        "Play": lambda: [fill(g.play(cx, cy))],
        "Pause": lambda: [fill(g.pause(cx, cy))],
        "Stop": lambda: [fill(g.stop(cx, cy))],
        "Next": lambda: [fill(g.step(cx, cy, True))],
        "Repeat": lambda: [line(g.loop_lines(cx, cy), 1.8), fill(g.loop_heads(cx, cy))],
        "Shuffle": lambda: [line(g.cross_lines(cx, cy), 1.8), fill(g.cross_heads(cx, cy))],
        "Play list": lambda: [fill(g.listing(cx, cy))],
        "Minimise": lambda: [fill(g.underline(cx, cy))],
        "Power": lambda: [line(g.power_lines(cx, cy), 1.5)],
        "Volume down": lambda: [fill(g.minus(cx, cy))],
        "Volume up": lambda: [fill(g.plus(cx, cy))],
    }[name]()


def draw_button(canvas, button, pressed):
    x, y, w, h = button.rect
    round_key = w == h
    m.key(canvas, PAL, button.rect, w / 2 if round_key else 3.5, pressed, button.glow)
    cx, cy = x + w // 2, y + h // 2 + (1 if pressed else 0)
    masks = _symbol(canvas, button.label, cx, cy)
    if pressed:
        m.glowing(canvas, masks, button.glow)
    else:
        m.printed(canvas, masks, PAL.ink)


def background(resolution):
    """The plate with everything that never changes: glass, channel, scale, the keys' holes."""
    canvas = Canvas(WIDTH, HEIGHT, resolution)
    m.chassis(canvas, PAL)
    m.groove(canvas, 362, 10, HEIGHT - 10)
    m.glass(canvas, PAL, *GLASS, 5)
    x, y, w, h = DISPLAY
    canvas.paint(canvas.shape(box(x - 1, 18, 1, 42), pad=1), PAL.ghost, 0.7)
    canvas.paint(canvas.shape(box(18, 63, GLASS[2] - 12, 1), pad=1), PAL.ghost, 0.7)
    m.slot(canvas, PAL, *SLIDER)
    kx, ky, kw, _ = KNOB
    m.knob_seat(canvas, PAL, kx + kw / 2, ky + kw / 2, kw / 2)
    for b in BUTTONS:
        bx, by, bw, bh = b.rect
        canvas.paint(m.recess(canvas, bx, by, bw, bh, bw / 2 if bw == bh else 3.5), "#070809")
    return canvas


def _decorations():
    """(record, label, rect, draw) of everything that is neither key nor text; the first of a group is its rest."""
    bx, by, bw, bh = BADGE
    yield 22, "Badge", BADGE, lambda c: m.inlaid(c, "CORVANE", bx + bw / 2, by + bh / 2, 6.0, 3.0, 1.15)
    lx, ly, lw, lh = LEGEND
    yield 23, "Volume legend", LEGEND, lambda c: m.screened(c, "VOLUME", lx + lw / 2, ly + lh / 2, 5.0, PAL.ink, 2.2, 0.9, 0.75)
    kx, ky, kw, kh = KNOB
    yield 24, "Volume knob", KNOB, lambda c: m.knob(c, PAL, kx + kw / 2, ky + kh / 2, kw / 2)
    for number, levels in LEVELS.items():
        yield number, f"Playing {number - 24}", INDICATOR, lambda c, v=levels: m.bars(c, PAL, INDICATOR, v)
    for number, (*rect, word, colour) in SIGNS.items():
        for lit in (False, True):
            label = f"{word.capitalize()} lamp {'on' if lit else 'off'}"
            yield number + lit, label, tuple(rect), lambda c, r=rect, t=word, k=colour, on=lit: m.sign(c, r, t, k, on)


AT_REST = {22, 23, 24, 25, 34, 36, 38} | {b.normal for b in BUTTONS}


def _parts():
    """Every drawn part: (record, label, rect, draw)."""
    yield from _decorations()
    for b in BUTTONS:
        yield b.normal, b.label, b.rect, lambda c, b=b: draw_button(c, b, False)
        if b.pressed:
            yield b.pressed, b.label + " pressed", b.rect, lambda c, b=b: draw_button(c, b, True)


def _cut(ground, rect, draw):
    """The picture of `rect` after `draw(canvas)` on a copy of the background."""
    canvas = ground.copy()
    draw(canvas)
    x, y, w, h = (n * canvas.resolution for n in rect)
    return canvas.finished()[y : y + h, x : x + w].copy()


def records(resolution=1):
    """All records, in the order of their numbers.

    Record 0 shows the whole panel at rest, so that the opening animation ends on what the panel then
    looks like; the cells of everything at rest lie in its picture. Record 1 shows the empty plate.
    """
    ground = background(resolution)
    whole = ground.copy()
    out = []
    for number, label, rect, draw in _parts():
        if number in AT_REST:
            draw(whole)
            out.append(Record(label, number, *rect, inside=0))
        else:
            out.append(Record(label, number, *rect, picture=_cut(ground, rect, draw)))
    out.append(Record("Panel", 0, 0, 0, WIDTH, HEIGHT, picture=whole.finished()))
    out.append(Record("Background", 1, 0, 0, WIDTH, HEIGHT, picture=ground.finished()))
    out.append(Record("Display glass", 21, *DISPLAY, inside=1))
    for number, name, x, y, w, h, colour in TEXTS:
        out.append(Record(name, number, x, y, w, h, colour_field(colour), inside=1))
    out.append(Record("Seek slider", 40, *SLIDER, colour_field(PAL.accent), inside=1))
    return sorted(out, key=lambda r: r.number)
