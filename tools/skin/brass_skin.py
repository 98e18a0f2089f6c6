# SPDX-License-Identifier: GPL-3.0-or-later
"""The brass skin: the front of an old hi-fi receiver, brushed brass between walnut cheeks, amber light."""

from dataclasses import dataclass

import materials as m
import numpy as np
from raster import box, rgb
from skin import Skin, settings_hint, symbol


@dataclass(frozen=True)
class Palette:
    chassis: tuple = ("#DCC08A", "#C7A668", "#B39152", "#9C7B42")
    brush: float = 0.04
    edge: str = "#1B0F06"
    bezel: str = "#0D0703"
    glass: tuple = ("#23150A", "#1A0F06", "#120A04")
    key: tuple = ("#FBF1DA", "#EBDCB8", "#CDB98C")
    key_down: tuple = ("#4A3518", "#5B4321", "#6B5029")
    knob: tuple = ("#2A1A0A", "#80602F", "#9A7836", "#FFF0C0")
    rim: tuple = ("#8A6A32", "#FFF6DC")
    seat: tuple = ("#1C1008", "#3A2610")
    inlay: tuple = ("#2B1A0C", "#4A2F16")
    ink: str = "#38230F"
    accent: str = "#FFB04A"
    warm: str = "#FF7B45"
    green: str = "#E8DC6A"
    red: str = "#FF5A3C"
    ghost: str = "#5A3D1A"


CHEEK = 15  # width of the wood at either side
ROW, TALL = 122, 34


def wood(canvas, rect, seed):
    """Walnut with upright grain and rounded edges."""
    x, y, w, h = rect
    board = canvas.shape(box(*rect), pad=0)
    px, py = canvas.grid(board)
    bend = 2.2 * np.sin(py * 0.021 + seed) + 0.8 * np.sin(py * 0.063 + 2.3 * seed)
    across = px - x + bend
    grain = 0.5 + 0.24 * np.sin(across * 0.9 + seed) + 0.14 * np.sin(across * 2.3 + 1.7 * seed) + 0.10 * np.sin(across * 5.1 + 0.02 * py)
    rows = np.random.default_rng(round(seed * 100))
    pores = rows.standard_normal((-(-board.a.shape[0] // 120) + 1, board.a.shape[1] // 5 + 1))
    fine = np.repeat(np.repeat(pores, 120, axis=0), 5, axis=1)[: board.a.shape[0], : board.a.shape[1]]
    t = np.clip(grain + 0.05 * fine, 0, 1)[..., None].astype(np.float32)
    canvas.paint(board, rgb("#3A1C0B") + (rgb("#8E5429") - rgb("#3A1C0B")) * t)
    curve = 1.12 - 0.5 * ((px - x - 0.42 * w) / w) ** 2 * 2.4 + 0 * py
    canvas.scale_by(board, curve.astype(np.float32))
    canvas.light(canvas.shape(box(x, y + 1, w, 1), pad=0), "#FFDDB0", 0.35)
    canvas.shade(canvas.shape(box(x, y + h - 2, w, 1), pad=0), 0.45)


class BrassSkin(Skin):
    NAME = "BRASS"
    WIDTH, HEIGHT = 520, 170
    PAL = Palette()
    LEAST_WIDTHS = {32: 230, 33: 180, 31: 80, 40: 200}
    GLASS = (28, 12, 340, 84)
    DISPLAY = (74, 16, 289, 54)
    INDICATOR = (35, 20, 35, 50)
    LEVELS = {25: (2, 3, 4, 3, 2), 26: (6, 9, 7, 4, 3), 27: (3, 6, 8, 10, 6)}
    SIGNS = {34: (170, 76, 62, 13, "AUTO", PAL.warm), 36: (235, 76, 62, 13, "QUICK", PAL.green), 38: (300, 76, 62, 13, "REPEAT", PAL.accent)}
    SLIDER = (30, 105, 336, 6)
    KNOB = (398, 34, 88, 88)
    BADGE = (386, 12, 66, 14)
    LEGEND = (418, 141, 48, 14)
    KEYS = {
        "Previous": (28, ROW, 42, TALL),
        "Play": (72, ROW, 56, TALL),
        "Pause": (130, ROW, 42, TALL),
        "Stop": (174, ROW, 42, TALL),
        "Next": (218, ROW, 42, TALL),
        "Repeat": (272, ROW, 30, TALL),
        "Shuffle": (304, ROW, 30, TALL),
        "Play list": (336, ROW, 30, TALL),
        "Minimise": (458, 10, 18, 18),
        "Power": (480, 10, 18, 18),
        "Volume down": (390, 138, 26, 20),
        "Volume up": (468, 138, 26, 20),
    }
    TEXTS = (
        (32, "Display", 80, 17, 262, 17, "#E0AE6A"),
        (33, "Title", 80, 42, 186, 20, "#FFF1D8"),
        (31, "Time", 270, 38, 90, 30, "#FFC368"),
        (30, "File number", 80, 74, 28, 16, "#E0AE6A"),
        (28, "Of", 108, 74, 7, 16, "#8A6636"),
        (29, "Total", 117, 74, 28, 16, "#E0AE6A"),
    )

    def plate(self, canvas):
        pal, w, h = self.PAL, self.WIDTH, self.HEIGHT
        m.chassis(canvas, pal)
        for x, seed in ((0, 1.3), (w - CHEEK, 4.1)):
            wood(canvas, (x, 0, CHEEK, h), seed)
        for x, y, bw, bh in ((0, 0, w, 1), (0, h - 1, w, 1), (0, 0, 1, h), (w - 1, 0, 1, h), (CHEEK, 0, 1, h), (w - CHEEK - 1, 0, 1, h)):
            canvas.paint(canvas.shape(box(x, y, bw, bh), pad=0), pal.edge)
        canvas.shade(canvas.shape(box(CHEEK + 1, 1, 4, h - 2), pad=3).blur(1.8), 0.35)
        canvas.shade(canvas.shape(box(w - CHEEK - 5, 1, 4, h - 2), pad=3).blur(1.8), 0.35)
        m.groove(canvas, 378, 12, h - 12)
        m.glass(canvas, pal, *self.GLASS, 6)
        canvas.paint(canvas.shape(box(73, 20, 1, 48), pad=1), pal.ghost, 0.8)
        canvas.paint(canvas.shape(box(36, 72, 325, 1), pad=1), pal.ghost, 0.8)
        settings_hint(canvas, 353, 26, pal.accent, 0.5)
        m.slot(canvas, pal, *self.SLIDER)
        kx, ky, kw, _ = self.KNOB
        m.knob_seat(canvas, pal, kx + kw / 2, ky + kw / 2, kw / 2)
        for bx, by, bw, bh in self.KEYS.values():
            canvas.paint(m.recess(canvas, bx, by, bw, bh, bw / 2 if bw == bh else 4), "#1A0F06")

    def button(self, canvas, button, pressed):
        x, y, w, h = button.rect
        m.key(canvas, self.PAL, button.rect, w / 2 if w == h else 4, pressed, button.glow)
        masks = symbol(canvas, button.label, x + w // 2, y + h // 2 + (1 if pressed else 0))
        if pressed:
            m.glowing(canvas, masks, button.glow)
            return
        for mask in masks:
            canvas.light(mask.shift(0, 1), "#FFFFFF", 0.45)
        for mask in masks:
            canvas.paint(mask, self.PAL.ink)

    def badge(self, canvas):
        x, y, w, h = self.BADGE
        m.inlaid(canvas, self.PAL, "CORVANE", x + w / 2, y + h / 2, 6.6, 3.6, 1.2)

    def legend(self, canvas):
        x, y, w, h = self.LEGEND
        m.screened(canvas, "VOLUME", x + w / 2, y + h / 2, 5.2, self.PAL.ink, 2.2, 1.0, 0.9)
