# SPDX-License-Identifier: GPL-3.0-or-later
"""What all skins share: their parts, how a part is cut out of the panel, and the records that come of it.

A skin is a class that gives the places of its parts and draws each of them. Rectangles are left, top, width and
height in panel pixels.
"""

from dataclasses import dataclass

import glyphs
import materials as m
from raster import Canvas
from sheet import Record, colour_field


@dataclass(frozen=True)
class Button:
    label: str
    normal: int  # record of the normal picture
    pressed: int  # record of the pressed picture, 0 without one
    rect: tuple
    glow: str


# Label, record of the normal and of the pressed picture, in the order of the drawing.
_COMMANDS = (
    ("Previous", 13, 14),
    ("Play", 8, 9),
    ("Pause", 10, 11),
    ("Stop", 12, 0),
    ("Next", 15, 16),
    ("Repeat", 5, 6),
    ("Shuffle", 7, 0),
    ("Play list", 17, 18),
    ("Minimise", 4, 0),
    ("Power", 2, 3),
    ("Volume down", 19, 0),
    ("Volume up", 20, 0),
)


def symbol(canvas, name, cx, cy):
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


class Skin:
    NAME = ""
    WIDTH = HEIGHT = 0
    PAL = None
    KEYS = {}  # rectangle by command
    SIGNS = {}  # rectangle, word and colour by record: 34, 36, 38
    LEVELS = {25: (2, 3, 4, 3, 2), 26: (5, 8, 6, 4, 3), 27: (3, 5, 7, 9, 6)}
    TEXTS = ()  # record, name, rectangle, colour; the program draws the texts itself
    LEAST_WIDTHS = {32: 230, 33: 200, 31: 70, 40: 200}  # panel pixels

    def buttons(self):
        for label, normal, pressed in _COMMANDS:
            yield Button(label, normal, pressed, self.KEYS[label], self.PAL.red if label == "Power" else self.PAL.accent)

    # What a skin draws.

    def plate(self, canvas):
        """Everything that never changes."""
        raise NotImplementedError

    def button(self, canvas, button, pressed):
        raise NotImplementedError

    def badge(self, canvas):
        raise NotImplementedError

    def legend(self, canvas):
        raise NotImplementedError

    def knob(self, canvas, cx, cy, r):
        m.knob(canvas, self.PAL, cx, cy, r)

    def indicator(self, canvas, levels):
        m.bars(canvas, self.PAL, self.INDICATOR, levels)

    def sign(self, canvas, rect, word, colour, lit):
        m.sign(canvas, rect, word, colour, lit)

    # What comes of it.

    def background(self, resolution=1):
        canvas = Canvas(self.WIDTH, self.HEIGHT, resolution)
        self.plate(canvas)
        return canvas

    def _parts(self):
        """Every drawn part: (record, label, rect, draw, whether it is seen at rest)."""
        yield 22, "Badge", self.BADGE, self.badge, True
        yield 23, "Volume legend", self.LEGEND, self.legend, True
        kx, ky, kw, kh = self.KNOB
        yield 24, "Volume knob", self.KNOB, lambda c: self.knob(c, kx + kw / 2, ky + kh / 2, kw / 2), True
        for number, levels in self.LEVELS.items():
            yield number, f"Playing {number - 24}", self.INDICATOR, lambda c, v=levels: self.indicator(c, v), number == 25
        for number, (*rect, word, colour) in self.SIGNS.items():
            for lit in (False, True):
                label = f"{word.capitalize()} lamp {'on' if lit else 'off'}"
                yield number + lit, label, tuple(rect), lambda c, r=rect, t=word, k=colour, on=lit: self.sign(c, r, t, k, on), not lit
        for b in self.buttons():
            yield b.normal, b.label, b.rect, lambda c, b=b: self.button(c, b, False), True
            if b.pressed:
                yield b.pressed, b.label + " pressed", b.rect, lambda c, b=b: self.button(c, b, True), False

    def records(self, resolution=1):
        """All records, in the order of their numbers.

        Record 0 shows the whole panel at rest, so that the opening animation ends on what the panel then
        looks like; the cells of everything at rest lie in its picture. Record 1 shows the empty plate.
        """
        ground = self.background(resolution)
        whole = ground.copy()
        out = []
        for number, label, rect, draw, at_rest in self._parts():
            if at_rest:
                draw(whole)
                out.append(Record(label, number, *rect, inside=0))
            else:
                out.append(Record(label, number, *rect, picture=_cut(ground, rect, draw)))
        out.append(Record("Panel", 0, 0, 0, self.WIDTH, self.HEIGHT, picture=whole.finished()))
        out.append(Record("Background", 1, 0, 0, self.WIDTH, self.HEIGHT, picture=ground.finished()))
        out.append(Record("Display glass", 21, *self.DISPLAY, inside=1))
        for number, name, *rect, colour in self.TEXTS:
            out.append(Record(name, number, *rect, colour_field(colour), inside=1))
        out.append(Record("Seek slider", 40, *self.SLIDER, colour_field(self.PAL.accent), inside=1))
        return sorted(out, key=lambda r: r.number)


def _cut(ground, rect, draw):
    """The picture of `rect` after `draw(canvas)` on a copy of the background."""
    canvas = ground.copy()
    draw(canvas)
    x, y, w, h = (n * canvas.resolution for n in rect)
    return canvas.finished()[y : y + h, x : x + w].copy()


def settings_hint(canvas, cx, cy, colour, alpha):
    """A small mark on the free part of the display: a click there opens the settings."""
    canvas.paint(canvas.shape(glyphs.faders(cx, cy), pad=2), colour, alpha)
