# SPDX-License-Identifier: GPL-3.0-or-later
"""The default skin: brushed graphite, dark glass, satin keys."""

from dataclasses import dataclass

import materials as m
from raster import box
from skin import Skin, settings_hint, symbol


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
    rim: tuple = ("#7C8289", "#FFFFFF")
    seat: tuple = ("#131518", "#24272B")
    inlay: tuple = ("#F2F5F8", "#A9B0B8")
    ink: str = "#D5DBE1"
    accent: str = "#52CCF5"
    warm: str = "#FFB44A"
    green: str = "#86F0A0"
    red: str = "#FF6A55"
    ghost: str = "#2A4350"


ROW, TALL = 108, 30


class DefaultSkin(Skin):
    NAME = "DEFAULT"
    WIDTH, HEIGHT = 480, 150
    PAL = Palette()
    GLASS = (12, 10, 344, 72)
    DISPLAY = (56, 13, 297, 50)
    INDICATOR = (18, 17, 35, 45)
    SIGNS = {34: (158, 65, 62, 13, "AUTO", PAL.warm), 36: (223, 65, 62, 13, "QUICK", PAL.green), 38: (288, 65, 62, 13, "REPEAT", PAL.accent)}
    SLIDER = (14, 91, 340, 7)
    KNOB = (385, 40, 68, 68)
    BADGE = (368, 12, 56, 14)
    LEGEND = (396, 121, 46, 14)
    KEYS = {
        "Previous": (12, ROW, 42, TALL),
        "Play": (56, ROW, 56, TALL),
        "Pause": (114, ROW, 42, TALL),
        "Stop": (158, ROW, 42, TALL),
        "Next": (202, ROW, 42, TALL),
        "Repeat": (256, ROW, 32, TALL),
        "Shuffle": (290, ROW, 32, TALL),
        "Play list": (324, ROW, 32, TALL),
        "Minimise": (430, 10, 18, 18),
        "Power": (451, 10, 18, 18),
        "Volume down": (370, 118, 24, 20),
        "Volume up": (444, 118, 24, 20),
    }
    TEXTS = (
        (32, "Display", 60, 15, 270, 16, "#9BD6EA"),
        (33, "Title", 60, 38, 206, 18, "#EAF8FF"),
        (31, "Time", 272, 33, 80, 28, "#7FE2FF"),
        (30, "File number", 60, 64, 26, 15, "#9BD6EA"),
        (28, "Of", 86, 64, 7, 15, "#4F7F92"),
        (29, "Total", 95, 64, 26, 15, "#9BD6EA"),
    )

    def plate(self, canvas):
        """Glass, channel, scale, the keys' holes."""
        pal = self.PAL
        m.chassis(canvas, pal)
        m.groove(canvas, 362, 10, self.HEIGHT - 10)
        m.glass(canvas, pal, *self.GLASS, 5)
        x = self.DISPLAY[0]
        canvas.paint(canvas.shape(box(x - 1, 18, 1, 42), pad=1), pal.ghost, 0.7)
        canvas.paint(canvas.shape(box(18, 63, self.GLASS[2] - 12, 1), pad=1), pal.ghost, 0.7)
        settings_hint(canvas, 342, 24, pal.accent, 0.4)
        m.slot(canvas, pal, *self.SLIDER)
        kx, ky, kw, _ = self.KNOB
        m.knob_seat(canvas, pal, kx + kw / 2, ky + kw / 2, kw / 2)
        for bx, by, bw, bh in self.KEYS.values():
            canvas.paint(m.recess(canvas, bx, by, bw, bh, bw / 2 if bw == bh else 3.5), "#070809")

    def button(self, canvas, button, pressed):
        x, y, w, h = button.rect
        m.key(canvas, self.PAL, button.rect, w / 2 if w == h else 3.5, pressed, button.glow)
        masks = symbol(canvas, button.label, x + w // 2, y + h // 2 + (1 if pressed else 0))
        if pressed:
            m.glowing(canvas, masks, button.glow)
        else:
            m.printed(canvas, masks, self.PAL.ink)

    def badge(self, canvas):
        x, y, w, h = self.BADGE
        m.inlaid(canvas, self.PAL, "CORVANE", x + w / 2, y + h / 2, 6.0, 3.0, 1.15)

    def legend(self, canvas):
        x, y, w, h = self.LEGEND
        m.screened(canvas, "VOLUME", x + w / 2, y + h / 2, 5.0, self.PAL.ink, 2.2, 0.9, 0.75)
