# SPDX-License-Identifier: GPL-3.0-or-later
"""The slim skin: one bar of black glass with lit symbols, for the edge of a screen."""

from dataclasses import dataclass

import glyphs
import materials as m
import numpy as np
from raster import box, mix, rgb, vertical
from skin import Skin, settings_hint, symbol


@dataclass(frozen=True)
class Palette:
    body: tuple = ("#23272C", "#15181C", "#0E1013", "#0A0B0D")
    edge: str = "#000000"
    brush: float = 0.012
    bezel: str = "#020303"
    glass: tuple = ("#0B1611", "#07110C", "#050C08")
    knob: tuple = ("#0E1012", "#4A5057", "#15181B", "#5D646C")
    rim: tuple = ("#2B2F34", "#8D959E")
    seat: tuple = ("#050607", "#15171A")
    inlay: tuple = ("#9AA4AD", "#5E6870")
    ink: str = "#C3CDD6"
    accent: str = "#63E6A4"
    warm: str = "#FFC65C"
    green: str = "#9BE7FF"
    red: str = "#FF6A55"
    ghost: str = "#1F3A2D"


UPPER, LOWER = (6, 25), (34, 20)  # top and height of the two rows of keys


class SlimSkin(Skin):
    NAME = "SLIM"
    WIDTH, HEIGHT = 511, 60
    PAL = Palette()
    LEAST_WIDTHS = {32: 150, 33: 120, 31: 66, 40: 170}
    GLASS = (6, 5, 270, 38)
    DISPLAY = (46, 8, 227, 32)
    INDICATOR = (9, 8, 35, 32)
    LEVELS = {25: (1, 2, 3, 2, 1), 26: (4, 6, 5, 3, 2), 27: (2, 4, 5, 6, 4)}
    SIGNS = {34: (190, 46, 15, 11, "A", PAL.warm), 36: (207, 46, 15, 11, "Q", PAL.green), 38: (224, 46, 15, 11, "R", PAL.accent)}
    SLIDER = (9, 49, 172, 5)
    KNOB = (436, 9, 42, 42)
    BADGE = (242, 46, 35, 11)
    LEGEND = (424, 46, 11, 11)
    KEYS = {
        "Previous": (284, UPPER[0], 24, UPPER[1]),
        "Play": (310, UPPER[0], 30, UPPER[1]),
        "Pause": (342, UPPER[0], 24, UPPER[1]),
        "Stop": (368, UPPER[0], 24, UPPER[1]),
        "Next": (394, UPPER[0], 24, UPPER[1]),
        "Repeat": (284, LOWER[0], 26, LOWER[1]),
        "Shuffle": (312, LOWER[0], 26, LOWER[1]),
        "Play list": (340, LOWER[0], 26, LOWER[1]),
        "Volume down": (368, LOWER[0], 24, LOWER[1]),
        "Volume up": (394, LOWER[0], 24, LOWER[1]),
        "Minimise": (488, 11, 16, 16),
        "Power": (488, 33, 16, 16),
    }
    TEXTS = (
        (32, "Display", 50, 26, 150, 13, "#7FBF9F"),
        (33, "Title", 50, 8, 126, 17, "#E9FFF3"),
        (31, "Time", 178, 8, 70, 18, "#7DF5B8"),
        (30, "File number", 202, 26, 20, 13, "#7FBF9F"),
        (28, "Of", 222, 26, 6, 13, "#4C7A62"),
        (29, "Total", 228, 26, 22, 13, "#7FBF9F"),
    )

    def plate(self, canvas):
        pal, w, h = self.PAL, self.WIDTH, self.HEIGHT
        body = canvas.shape(box(0, 0, w, h), pad=0)
        canvas.paint(body, vertical(0, h, *pal.body))
        gloss = canvas.shape(box(1, 1, w - 2, 0.44 * h), pad=0)
        gx, gy = canvas.grid(gloss)
        light = 0.05 + 0.08 * np.exp(-(((gx - 0.66 * w + gy) / (0.2 * w)) ** 2))
        canvas.light(gloss.times((light * (1 - 0.5 * gy / h)).astype(np.float32)), "#DDE8F5", 1.0)
        for rect, colour, alpha in (
            ((0, 0, w, 1), pal.edge, 1.0), ((0, h - 1, w, 1), pal.edge, 1.0), ((0, 0, 1, h), pal.edge, 1.0), ((w - 1, 0, 1, h), pal.edge, 1.0),
            ((1, 1, w - 2, 1), "#FFFFFF", 0.28), ((1, 1, 1, h - 2), "#FFFFFF", 0.07), ((w - 2, 1, 1, h - 2), "#FFFFFF", 0.07),
        ):
            canvas.paint(canvas.shape(box(*rect), pad=0), colour, alpha)
        m.glass(canvas, pal, *self.GLASS, 4)
        canvas.paint(canvas.shape(box(45, 9, 1, 30), pad=1), pal.ghost, 0.8)
        settings_hint(canvas, 262, 24, pal.accent, 0.45)
        m.slot(canvas, pal, *self.SLIDER)
        kx, ky, kw, _ = self.KNOB
        m.knob_seat(canvas, pal, kx + kw / 2, ky + kw / 2, kw / 2, 5.5)
        for x in (279, 421, 483):
            m.groove(canvas, x, 7, h - 7)

    def button(self, canvas, button, pressed):
        """A field of the glass with a lit symbol; pressed, the field glows."""
        x, y, w, h = button.rect
        radius = w / 2 if w == h else 3
        field = canvas.shape(box(x + 0.5, y + 0.5, w - 1, h - 1, radius - 0.5), pad=3)
        ring = canvas.shape(box(x + 1, y + 1, w - 2, h - 2, radius - 1), pad=2, stroke=1.0)
        masks = symbol(canvas, button.label, x + w // 2, y + h // 2)
        if not pressed:
            canvas.paint(field, vertical(y, y + h, "#2A2F35", "#1A1D21"), 0.9)
            canvas.light(ring, "#FFFFFF", 0.16 if w == h else 0.07)
            canvas.light(field.times(field.shift(0, 0.9).outside()), "#FFFFFF", 0.16)
            canvas.shade(field.times(field.shift(0, -0.9).outside()), 0.5)
            for mask in masks:
                canvas.light(mask.blur(1.6), self.PAL.ink, 0.10)
                canvas.paint(mask, self.PAL.ink)
            return
        canvas.paint(field, vertical(y, y + h, "#07090A", "#101315"))
        px, py = canvas.grid(field)
        glow = np.exp(-(((px - x - w / 2) / (0.55 * w)) ** 2) - (((py - y - 0.6 * h) / (0.55 * h)) ** 2))
        canvas.light(field.times(glow.astype(np.float32)), button.glow, 0.34)
        canvas.paint(ring, button.glow, 0.75)
        m.glowing(canvas, masks, button.glow)

    def badge(self, canvas):
        x, y, w, h = self.BADGE
        m.screened(canvas, "CORVANE", x + w / 2, y + h / 2, 4.6, self.PAL.inlay[0], 2.0, 0.8, 0.85)

    def legend(self, canvas):
        x, y, w, h = self.LEGEND
        canvas.paint(canvas.shape(glyphs.speaker(x + w / 2, y + h / 2), pad=1), self.PAL.inlay[0], 0.8)

    def sign(self, canvas, rect, word, colour, lit):
        """One letter in a small frame."""
        x, y, w, h = rect
        field = canvas.shape(box(x + 0.5, y + 0.5, w - 1, h - 1, 2.5), pad=1)
        letter = canvas.shape(glyphs.lettering(word, x + w / 2, y + h / 2, 5.5), pad=3, stroke=1.1)
        if lit:
            canvas.paint(field, colour, 0.9)
            canvas.paint(letter, "#0A0D0B")
            return
        canvas.paint(field, mix(rgb(colour), rgb("#0A0B0D"), 0.86), 0.9)
        canvas.paint(letter, colour, 0.38)
