# SPDX-License-Identifier: GPL-3.0-or-later
"""The paper skin: a light card with ink and one red, nearly flat."""

from dataclasses import dataclass

import glyphs
import materials as m
import numpy as np
from raster import box, disc, vertical
from skin import Skin, settings_hint, symbol


@dataclass(frozen=True)
class Palette:
    paper: tuple = ("#FBF8F1", "#F6F2E8", "#F1ECDF")
    card: str = "#FFFDF8"
    line: str = "#CFC6B4"
    ink: str = "#26323D"
    faint: str = "#B9B09F"
    accent: str = "#D9472B"
    red: str = "#D9472B"
    knob: tuple = ("#3A4855", "#222D37", "#4A5966")


ROW, TALL = 150, 32


class PaperSkin(Skin):
    NAME = "PAPER"
    WIDTH, HEIGHT = 220, 266
    PAL = Palette()
    LEAST_WIDTHS = {32: 170, 33: 170, 31: 70, 40: 180}
    DISPLAY = (12, 37, 196, 45)
    INDICATOR = (16, 89, 35, 20)
    LEVELS = {25: (1, 1, 2, 1, 1), 26: (2, 4, 3, 2, 1), 27: (1, 2, 3, 4, 3)}
    SIGNS = {34: (16, 128, 58, 13, "AUTO", PAL.accent), 36: (81, 128, 58, 13, "QUICK", PAL.accent), 38: (146, 128, 58, 13, "REPEAT", PAL.accent)}
    SLIDER = (16, 116, 188, 5)
    KNOB = (83, 197, 54, 54)
    BADGE = (14, 11, 74, 14)
    LEGEND = (162, 218, 42, 12)
    KEYS = {
        "Previous": (16, ROW, 34, TALL),
        "Play": (52, ROW, 46, TALL),
        "Pause": (100, ROW, 34, TALL),
        "Stop": (136, ROW, 33, TALL),
        "Next": (171, ROW, 33, TALL),
        "Repeat": (16, 191, 42, 21),
        "Shuffle": (16, 213, 42, 21),
        "Play list": (16, 235, 42, 21),
        "Minimise": (166, 9, 18, 18),
        "Power": (187, 9, 18, 18),
        "Volume up": (162, 191, 42, 21),
        "Volume down": (162, 235, 42, 21),
    }
    TEXTS = (
        (32, "Display", 16, 63, 172, 14, "#7A7265"),
        (33, "Title", 16, 40, 172, 21, "#1D2730"),
        (31, "Time", 130, 84, 78, 28, "#D9472B"),
        (30, "File number", 58, 91, 26, 16, "#4A5560"),
        (28, "Of", 84, 91, 7, 16, "#B0A796"),
        (29, "Total", 93, 91, 28, 16, "#4A5560"),
    )

    def plate(self, canvas):
        pal, w, h = self.PAL, self.WIDTH, self.HEIGHT
        sheet = canvas.shape(box(0, 0, w, h), pad=0)
        canvas.paint(sheet, vertical(0, h, *pal.paper))
        m.brush(canvas, sheet, 0.005, 3, 11)
        canvas.paint(canvas.shape(box(0.5, 0.5, w - 1, h - 1), pad=0, stroke=1.0), "#A79E8C")
        canvas.paint(canvas.shape(box(1, 1, w - 2, 1), pad=0), "#FFFFFF", 0.9)
        canvas.paint(canvas.shape(box(1, h - 2, w - 2, 1), pad=0), "#DCD4C4", 0.9)
        canvas.paint(canvas.shape(box(14, 33, 32, 2), pad=0), pal.accent)
        canvas.paint(canvas.shape(box(46, 33, 160, 1), pad=0), pal.line)
        canvas.paint(canvas.shape(box(14, 83, 192, 1), pad=0), pal.line, 0.7)
        settings_hint(canvas, 199, 59, pal.faint, 0.95)
        x, y, sw, sh = self.SLIDER
        channel = canvas.shape(box(x, y, sw, sh), pad=2)
        canvas.paint(channel, "#E2DACA")
        canvas.shade(channel.times(channel.shift(0, 1).outside()), 0.14)
        self._scale(canvas)

    def _scale(self, canvas):
        """The knob's shadow and a ring of dots."""
        kx, ky, kw, _ = self.KNOB
        cx, cy, r = kx + kw / 2, ky + kw / 2, kw / 2
        canvas.shade(canvas.shape(disc(cx, cy + 3, r - 1), pad=10).blur(2.4), 0.30)
        for level in range(16):
            angle = np.radians(225.0 - 18.0 * level)
            end = level in (0, 15)
            dot = canvas.shape(disc(cx + (r + 6) * np.cos(angle), cy - (r + 6) * np.sin(angle), 1.5 if end else 0.9), pad=1)
            canvas.paint(dot, self.PAL.accent if level == 15 else self.PAL.ink, 1.0 if end else 0.75)

    def button(self, canvas, button, pressed):
        """A card on the paper; pressed, a red stamp."""
        pal = self.PAL
        x, y, w, h = button.rect
        radius = w / 2 if w == h else 4
        face = canvas.shape(box(x + 1, y + 1, w - 2, h - 3, radius - 1), pad=3)
        if w == h:
            face = canvas.shape(disc(x + w / 2, y + h / 2, w / 2 - 1), pad=3)
        masks = symbol(canvas, button.label, x + w // 2, y + h // 2 - (0 if w == h else 1) + (1 if pressed else 0))
        if pressed:
            canvas.paint(face, pal.accent)
            canvas.shade(face.times(face.shift(0, 1.6).blur(1.0).outside()), 0.30)
            for mask in masks:
                canvas.paint(mask, pal.card)
            return
        canvas.shade(face.shift(0, 1.3).blur(0.8), 0.24)
        canvas.paint(face, "#BDB4A2")
        inner = canvas.shape(disc(x + w / 2, y + h / 2, w / 2 - 2) if w == h else box(x + 2, y + 2, w - 4, h - 5, radius - 2), pad=3)
        canvas.paint(inner, vertical(y, y + h, pal.card, "#F7F2E7"))
        for mask in masks:
            canvas.paint(mask, pal.ink)

    def badge(self, canvas):
        x, y, w, h = self.BADGE
        m.screened(canvas, "CORVANE", x + w / 2, y + h / 2, 7.0, self.PAL.ink, 3.6, 1.3, 1.0)

    def legend(self, canvas):
        x, y, w, h = self.LEGEND
        m.screened(canvas, "VOLUME", x + w / 2, y + h / 2, 4.6, self.PAL.ink, 2.0, 0.9, 0.75)

    def knob(self, canvas, cx, cy, r):
        pal = self.PAL
        canvas.paint(canvas.shape(disc(cx, cy, r - 0.5)), vertical(cy - r, cy + r, "#55636F", "#161E25"))
        canvas.paint(canvas.shape(disc(cx, cy, r - 1.5)), vertical(cy - r, cy + r, pal.knob[0], pal.knob[1]))
        cap = canvas.shape(disc(cx, cy, r - 12))
        canvas.shade(cap.shift(0, 1.2).blur(1.2), 0.35)
        canvas.paint(cap, vertical(cy - r + 12, cy + r - 12, pal.knob[2], pal.knob[0]))
        canvas.light(cap.times(cap.shift(0, 0.8).outside()), "#FFFFFF", 0.22)

    def indicator(self, canvas, levels):
        """Columns of inked squares."""
        x, y, _, h = self.INDICATOR
        for column, level in enumerate(levels):
            for row in range(h // 5):
                cell = canvas.shape(box(x + 1 + column * 7, y + h - 4 - row * 5, 5, 3), pad=1)
                if row < level:
                    canvas.paint(cell, self.PAL.accent if row == h // 5 - 1 else self.PAL.ink)
                else:
                    canvas.paint(cell, self.PAL.line, 0.45)

    def sign(self, canvas, rect, word, colour, lit):
        x, y, w, h = rect
        letters = canvas.shape(glyphs.lettering(word, x + w / 2, y + h / 2, 5, 2.4), pad=2, stroke=1.0)
        if lit:
            canvas.paint(canvas.shape(box(x + 1, y + 0.5, w - 2, h - 1, 2.5), pad=1), colour)
            canvas.paint(letters, self.PAL.card)
            return
        canvas.paint(canvas.shape(box(x + 1.5, y + 1, w - 3, h - 2, 2.5), pad=1, stroke=1.0), self.PAL.line)
        canvas.paint(letters, self.PAL.faint)
