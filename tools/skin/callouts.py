# SPDX-License-Identifier: GPL-3.0-or-later
"""Drawings of a panel whose parts carry numbers: the manual's, and the skin authors' with the record numbers."""

from dataclasses import dataclass

from PIL import Image, ImageDraw, ImageFont

PAPER, LINE, TAG, TEXT = "#FFFFFF", "#E8590C", "#C2410C", "#FFFFFF"
SCALE = 1.25  # picture pixels to a panel pixel
MARGIN = 40  # picture pixels around the panel
TAG_HEIGHT, GAP, OVERSAMPLE = 20, 4, 3
FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"


@dataclass
class Callout:
    """A number beside the panel and the line to its part; `at` is the panel pixel it points to."""

    text: str
    side: str  # "top", "bottom", "left" or "right"
    at: tuple


def part(rect, text, side, where=(0.5, 0.5)):
    x, y, w, h = rect
    return Callout(text, side, (x + w * where[0], y + h * where[1]))


def spread(wanted, sizes, low, high):
    """Centres as near to `wanted` (rising) as they can be without touching, inside low..high."""
    centres = []
    edge = low
    for centre, size in zip(wanted, sizes):
        centres.append(max(centre, edge + size / 2))
        edge = centres[-1] + size / 2 + GAP
    edge = high
    for i in reversed(range(len(centres))):
        centres[i] = min(centres[i], edge - sizes[i] / 2)
        edge = centres[i] - sizes[i] / 2 - GAP
    return centres


class Drawing:
    def __init__(self, panel):
        """`panel`: the composed panel, SCALE times its size."""
        k = OVERSAMPLE
        self.panel = panel
        size = (panel.width + 2 * MARGIN, panel.height + 2 * MARGIN)
        self.picture = Image.new("RGB", size, PAPER)
        self.picture.paste(panel, (MARGIN, MARGIN))
        self.picture = self.picture.resize((size[0] * k, size[1] * k), Image.Resampling.LANCZOS)
        self.draw = ImageDraw.Draw(self.picture)
        self.font = ImageFont.truetype(FONT, 11 * k)

    def _tag_width(self, text):
        return max(TAG_HEIGHT, self.draw.textlength(text, self.font) / OVERSAMPLE + 10)

    def _line(self, points, width):
        self.draw.line([(x * OVERSAMPLE, y * OVERSAMPLE) for x, y in points], LINE, round(width * OVERSAMPLE), joint="curve")

    def _pill(self, cx, cy, text):
        w, k = self._tag_width(text), OVERSAMPLE
        box = [(cx - w / 2) * k, (cy - TAG_HEIGHT / 2) * k, (cx + w / 2) * k, (cy + TAG_HEIGHT / 2) * k]
        self.draw.rounded_rectangle(box, TAG_HEIGHT / 2 * k, TAG)
        self.draw.text((cx * k, cy * k), text, TEXT, self.font, anchor="mm")

    def add(self, callouts):
        w, h = self.picture.width / OVERSAMPLE, self.picture.height / OVERSAMPLE
        near = TAG_HEIGHT / 2 + 3
        tags = []
        for side in ("top", "bottom", "left", "right"):
            across = side in ("top", "bottom")
            here = sorted((c for c in callouts if c.side == side), key=lambda c: c.at[0 if across else 1])
            ends = [(MARGIN + c.at[0] * SCALE, MARGIN + c.at[1] * SCALE) for c in here]
            sizes = [self._tag_width(c.text) if across else TAG_HEIGHT for c in here]
            centres = spread([e[0 if across else 1] for e in ends], sizes, 2, (w if across else h) - 2)
            for c, end, centre in zip(here, ends, centres):
                if across:
                    tag = (centre, near if side == "top" else h - near)
                else:
                    half = self._tag_width(c.text) / 2 + 3
                    tag = (half if side == "left" else w - half, centre)
                self._line([tag, end], 1.3)
                r = 2.4
                self.draw.ellipse([(end[0] - r) * OVERSAMPLE, (end[1] - r) * OVERSAMPLE, (end[0] + r) * OVERSAMPLE, (end[1] + r) * OVERSAMPLE], LINE)
                tags.append((*tag, c.text))
        for tag in tags:
            self._pill(*tag)

    def outline(self, rect):
        x, y, w, h = (n * SCALE * OVERSAMPLE for n in rect)
        m = MARGIN * OVERSAMPLE
        self.draw.rectangle([m + x, m + y, m + x + w - 1, m + y + h - 1], outline=LINE, width=OVERSAMPLE)

    def save(self, path):
        out = self.picture.resize((self.picture.width // OVERSAMPLE, self.picture.height // OVERSAMPLE), Image.Resampling.BOX)
        out.quantize(200, Image.Quantize.MEDIANCUT, dither=Image.Dither.NONE).save(path, optimize=True)


# The manual's numbers: record, side, point of the part that the line goes to.
MANUAL_PARTS = (
    (25, "top", (0.5, 0.25)),
    (32, "top", (0.2, 0.2)),
    (33, "top", (0.97, 0.5)),
    (31, "top", (0.6, 0.35)),
    (30, "left", (0.1, 0.5)),
    (40, "left", (0.04, 0.5)),
    (34, "top", (0.06, 0.2)),
    (36, "top", (0.06, 0.2)),
    (38, "right", (0.96, 0.6)),
    (4, "top", (0.5, 0.5)),
    (2, "top", (0.5, 0.5)),
    (24, "right", (0.75, 0.4)),
    (13, "bottom", (0.5, 0.8)),
    (8, "bottom", (0.5, 0.8)),
    (10, "bottom", (0.5, 0.8)),
    (12, "bottom", (0.5, 0.8)),
    (15, "bottom", (0.5, 0.8)),
    (5, "bottom", (0.5, 0.85)),
    (7, "bottom", (0.5, 0.85)),
    (17, "bottom", (0.5, 0.85)),
    (19, "bottom", (0.5, 0.85)),
    (20, "bottom", (0.5, 0.85)),
)

# The skin authors' drawing: text of the tag, record whose place it points to, side, point.
RECORD_PARTS = (
    ("25 26 27", 25, "top", (0.5, 0.2)),
    ("21", 21, "top", (0.3, 0.02)),
    ("32", 32, "top", (0.97, 0.4)),
    ("33", 33, "top", (0.9, 0.5)),
    ("31", 31, "top", (0.8, 0.3)),
    ("22", 22, "top", (0.3, 0.5)),
    ("4", 4, "top", (0.5, 0.5)),
    ("2 3", 2, "top", (0.5, 0.5)),
    ("30", 30, "left", (0.1, 0.5)),
    ("40", 40, "left", (0.03, 0.5)),
    ("1", 1, "left", (0.008, 0.9)),
    ("24", 24, "right", (0.8, 0.5)),
    ("20", 20, "right", (0.8, 0.5)),
    ("13 14", 13, "bottom", (0.5, 0.85)),
    ("28", 28, "bottom", (0.5, 0.7)),
    ("29", 29, "bottom", (0.4, 0.7)),
    ("8 9", 8, "bottom", (0.2, 0.85)),
    ("10 11", 10, "bottom", (0.5, 0.85)),
    ("12", 12, "bottom", (0.3, 0.85)),
    ("34 35", 34, "bottom", (0.5, 0.7)),
    ("15 16", 15, "bottom", (0.5, 0.85)),
    ("36 37", 36, "bottom", (0.5, 0.7)),
    ("5 6", 5, "bottom", (0.5, 0.85)),
    ("7", 7, "bottom", (0.4, 0.85)),
    ("38 39", 38, "bottom", (0.2, 0.7)),
    ("17 18", 17, "bottom", (0.7, 0.85)),
    ("19", 19, "bottom", (0.5, 0.85)),
    ("23", 23, "bottom", (0.5, 0.7)),
)


def manual_drawing(panel, places):
    """The panel with the manual's numbers, 1 and up. `places`: a record's rectangle by its number."""
    drawing = Drawing(panel)
    drawing.add([part(places[n], str(i), side, where) for i, (n, side, where) in enumerate(MANUAL_PARTS, 1)])
    return drawing


def record_drawing(panel, places):
    """The panel with the numbers of its records and the frames of its text fields."""
    drawing = Drawing(panel)
    for n in (21, *range(28, 34), 40):
        drawing.outline(places[n])
    drawing.add([part(places[n], text, side, where) for text, n, side, where in RECORD_PARTS])
    return drawing
