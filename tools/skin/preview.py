#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Composes a skin as the player shows it and writes pictures of several states to look at.

Needs Pillow. Usage: preview.py BITMAP CSV FOLDER [--font FILE] [--numbers]. Reads nothing but the two skin files.
--numbers writes the manual's drawings instead: panel.png with the numbers of the parts and records.png with those
of the records. They are laid out for the default skin.
"""

import argparse
import csv
import math
import pathlib

from PIL import Image, ImageDraw, ImageFont

import callouts

NAMES = {"BLACK": 0, "RED": 255, "GREEN": 65280, "YELLOW": 65535, "BLUE": 16711680, "MAGENTA": 16711935, "CYAN": 16776960, "WHITE": 16777215}
BUTTONS = {0: (2, 3), 1: (4, 4), 2: (5, 6), 3: (7, 7), 4: (8, 9), 5: (10, 11), 6: (12, 12), 7: (13, 14), 8: (15, 16), 9: (17, 18), 10: (19, 19), 11: (20, 20)}
LAMPS = {34: "auto", 36: "quick", 38: "repeat"}
TEXTS = {28: "of", 29: "total", 30: "number", 31: "time", 32: "display", 33: "title"}

IDLE = {"of": "/", "total": "012", "number": "001", "time": "00:00", "display": "26/11/21 PM 03:42", "title": "Chime", "knob": 7, "slider": 0.0}
STATES = {
    "stopped": {**IDLE, "display": "Corvane  Ver 100  Multimedia player"},
    "playing": {**IDLE, "display": "Quick Time File Now On Play", "title": "An evening at the harbour", "time": "02:48", "number": "007", "total": "256", "knob": 11, "slider": 0.42, "phase": 26, "lit": ("auto", "repeat"), "pressed": (2,)},
    "pressed": {**IDLE, "knob": 15, "slider": 1.0, "phase": 27, "lit": ("auto", "quick", "repeat"), "pressed": tuple(BUTTONS), "time": "12.48", "title": "海辺の夕暮れ"},
    "silent": {**IDLE, "knob": 0, "number": "000", "total": "000", "title": ""},
}


def read_records(path):
    """The last line of each record; of a pair of button records, the later one places both."""
    out = {}
    with open(path, newline="", encoding="utf-8") as f:
        for row in csv.reader(f, skipinitialspace=True):
            if len(row) == 9 and row[1].lstrip("-").isdigit():
                number = int(row[1])
                if number or 0 not in out:
                    out.pop(number, None)
                    out[number] = [*map(int, row[2:8]), row[8].strip()]
    order = list(out)
    for pair in BUTTONS.values():
        placing = max((n for n in pair if n in out), key=order.index, default=None)
        for n in pair:
            if n in out:
                out[n][:2] = out[placing][:2]
    return out


def colour(text):
    value = NAMES.get(text.upper())
    if value is None:
        value = int(text[2:], 16) if text.upper().startswith("&H") else int(text) if text.isdigit() else 0
    return value & 255, value >> 8 & 255, value >> 16 & 255


class Composer:
    def __init__(self, bitmap, records, font):
        self.bitmap, self.records, self.font = bitmap, records, font

    def cell(self, picture, number, at=None):
        left, top, x, y, w, h, use = self.records.get(number, (0,) * 6 + ("0",))
        if use != "0":
            left, top = self.records[at][:2] if at is not None else (left, top)
            picture.paste(self.bitmap.crop((x, y, x + w, y + h)), (left, top))

    def compose(self, state, scale):
        width, height = self.records[0][4:6]
        picture = Image.new("RGB", (width, height))
        _, _, x, y, w, h, use = self.records[1]
        if use != "0":
            picture.paste(self.bitmap.crop((x, y, x + w, y + h)), (0, 0))
        for number in (22, 23, 24):
            self.cell(picture, number)
        self.cell(picture, state.get("phase", 25), 25)
        for number, name in LAMPS.items():
            self.cell(picture, number + (name in state.get("lit", ())), number)
        self.cell(picture, 21)
        left, top, _, _, w, h, use = self.records[40]
        if use != "0" and state["slider"] > 0:
            ImageDraw.Draw(picture).rectangle((left, top, left + round(w * state["slider"]) - 1, top + h - 1), colour(use))
        for index, pair in BUTTONS.items():
            self.cell(picture, pair[index in state.get("pressed", ())])
        picture = picture.resize((round(width * scale), round(height * scale)), Image.Resampling.BICUBIC)
        draw = ImageDraw.Draw(picture)
        for number, name in TEXTS.items():
            self.text(draw, number, state[name], scale)
        self.dot(picture, state["knob"], scale)
        return picture

    def text(self, draw, number, text, scale):
        left, top, _, _, w, h, use = self.records[number]
        if use == "0":
            return
        font = ImageFont.truetype(self.font, round(h * 0.75 * scale))
        if draw.textlength(text, font) > w * scale:
            while text and draw.textlength(text + "\u2026", font) > w * scale:
                text = text[:-1]
            text += "\u2026"
        draw.text((left * scale, (top + h / 2) * scale), text, colour(use), font, anchor="lm")

    def dot(self, picture, level, scale, oversample=8):
        """The level's round mark, six pixels across, drawn smoothly."""
        left, top, _, _, w, h, use = self.records[24]
        if use == "0":
            return
        radius = min(w, h) / 2 - 7
        angle = math.radians(225 - 18 * level)
        x, y = left + w / 2 + radius * math.cos(angle), top + h / 2 - radius * math.sin(angle)
        mask = Image.new("L", (picture.width * oversample // 2, picture.height * oversample // 2))
        k = scale * oversample / 2
        ImageDraw.Draw(mask).ellipse(((x - 3) * k, (y - 3) * k, (x + 3) * k, (y + 3) * k), 255)
        picture.paste((0xE8, 0xF8, 0xFF), (0, 0), mask.resize(picture.size, Image.Resampling.BOX))


def write_numbered(composer, folder):
    panel = composer.compose({**STATES["playing"], "pressed": ()}, callouts.SCALE)
    places = {n: (x, y, w, h) for n, (x, y, _, _, w, h, _) in composer.records.items()}
    callouts.manual_drawing(panel, places).save(folder / "panel.png")
    callouts.record_drawing(panel, places).save(folder / "records.png")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bitmap")
    parser.add_argument("csv")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--font", default="/usr/share/fonts/truetype/vlgothic/VL-PGothic-Regular.ttf")
    parser.add_argument("--numbers", action="store_true")
    options = parser.parse_args()
    options.folder.mkdir(parents=True, exist_ok=True)
    records = read_records(options.csv)
    composer = Composer(Image.open(options.bitmap).convert("RGB"), records, options.font)
    if options.numbers:
        write_numbered(composer, options.folder)
        return
    for scale in (1, 1.5, 2):
        for name, state in STATES.items():
            composer.compose(state, scale).save(options.folder / f"{name}-{scale}x.png")


if __name__ == "__main__":
    main()
