# SPDX-License-Identifier: GPL-3.0-or-later
"""A plain skin for tests that uses every record in another way than the default skin does.

Each cell is one flat colour inside a frame of another, with a dark mark in its upper left corner; no two
records share a colour, so a test can tell from one pixel which cell it shows, and which way round.
"""

import numpy as np

from sheet import UNUSED, Record

WIDTH, HEIGHT = 300, 200
FIRST_LIKE = 100  # a second line for an element has the colours of its record number plus this
BLANK = (255, 0, 255)  # between the cells: nothing of it may ever be seen
MARK = (0, 0, 0)


def fill(number):
    """The colour of a record's cell."""
    n = number % FIRST_LIKE + (44 if number >= FIRST_LIKE else 0)
    return 36 + 4 * n, 235 - 4 * n, (n * 67) % 181 + 40


def frame(number):
    """The colour of the line around a record's cell."""
    r, g, b = fill(number)
    return g, 255 - b, 255 - r


def flat(number, width, height):
    """The cell of a record."""
    out = np.full((height, width, 3), frame(number), np.uint8)
    out[1:-1, 1:-1] = fill(number)
    out[1:3, 1:4] = MARK
    return out


# Lines in the order of the file: (label, record, left, top, width, height, field 9, colour number or None).
# Two lines for one button lie apart: the later one places it. What overlaps shows the order of painting.
_LINES = (
    ("Seek slider, over the display", 40, 20, 44, 120, 6, "Yellow"),
    ("Lamp 15, alight", 39, 7, 7, 9, 12, "1"),
    ("Lamp 15, dark", 38, 262, 30, 9, 12, "1"),
    ("Title", 33, 24, 52, 130, 14, "puce"),
    ("Power, pressed", 3, 270, 170, 22, 14, "1"),
    ("Knob", 24, 200, 60, 41, 33, "on"),
    ("Previous, pressed", 14, 10, 150, 30, 18, "1"),
    ("Previous", 13, 12, 152, 30, 18, "1"),
    ("Record above the range", 41, 0, 0, 299, 199, "1"),
    ("Panel", 0, 5, 6, WIDTH, HEIGHT, UNUSED),
    ("Next", 15, 50, 150, 27, 18, "2"),
    ("Next, pressed", 16, 48, 148, 27, 18, "1"),
    ("Minimise", 4, 240, 6, 16, 12, "1"),
    ("Power", 2, 272, 6, 22, 14, "1"),
    ("Repeat, on", 6, 90, 150, 18, 24, "1"),
    ("Repeat", 5, 92, 146, 18, 24, "1"),
    ("Shuffle", 7, 116, 140, 24, 18, "1"),
    ("Second panel", 0, 0, 0, 200, 100, "1"),
    ("Play, pressed", 9, 150, 100, 40, 40, "1"),
    ("Play", 8, 146, 104, 40, 40, "1"),
    ("Pause", 10, 10, 104, 33, 21, "1"),
    ("Pause, pressed", 11, 14, 100, 33, 21, "1"),
    ("Stop", 12, 60, 110, 21, 33, "1"),
    ("Background", 1, 33, 44, WIDTH, HEIGHT, "1"),
    ("Play list, pressed", 18, 234, 84, 26, 20, "1"),
    ("Play list, on the knob's corner", 17, 230, 80, 26, 20, "1"),
    ("Volume up", 20, 262, 60, 12, 20, "1"),
    ("Volume down", 19, 262, 84, 12, 20, "1"),
    ("Record below the range", -1, 0, 0, 299, 199, "1"),
    ("Display picture", 21, 12, 10, 150, 50, "1"),
    ("Image 8, under the display", 23, 150, 20, 30, 30, "1"),
    ("Image 7", 22, 100, 70, 20, 20, UNUSED),
    ("Playing 3", 27, 0, 0, 14, 26, "1"),
    ("Playing 2", 26, 0, 0, 14, 26, "1"),
    ("Playing 1", 25, 190, 12, 14, 26, "1"),
    ("File number", 30, 24, 14, 30, 13, "&HFF"),
    ("Total", 29, 66, 14, 30, 13, "white"),
    ("Of", 28, 56, 14, 8, 13, UNUSED),
    ("Time", 31, 104, 14, 50, 24, "65280"),
    ("Display", 32, 24, 29, 78, 13, "&h00ff8000"),
    ("Lamp 9, alight", 35, 0, 0, 13, 9, UNUSED),
    ("Lamp 9, dark", 34, 214, 30, 13, 9, "1"),
    ("Lamp 12, alight", 37, 1, 1, 11, 11, "1"),
    ("Lamp 12, dark", 36, 240, 30, 11, 11, "1"),
    ("Minimise, hidden again", 4, 240, 6, 16, 12, UNUSED),
    ("Shuffle, moved", 107, 118, 164, 24, 18, "1"),
)

_NEVER_CUT = frozenset(("Record above the range", "Record below the range", "Second panel"))
_NO_PICTURE = frozenset((28, 29, 30, 31, 32, 33, 40))


def records():
    """All lines in the order of the file; the cell of a second line for an element is coloured anew."""
    out = []
    for label, number, left, top, width, height, use in _LINES:
        record = Record(label, number % FIRST_LIKE if number > 0 else number, left, top, width, height, use)
        if record.number in _NO_PICTURE:
            record.clip = (left, top)
        elif use == UNUSED or label in _NEVER_CUT:
            # Far outside the bitmap: cutting these would fail.
            record.clip = (9000, 9000)
        else:
            record.picture = flat(number, width, height)
        out.append(record)
    return out


def csv_text(lines, heading):
    """Headings at the start and between, fields in quotes, blanks before numbers, no end after the last line."""
    out = [heading]
    for i, line in enumerate(lines):
        if i and i % 11 == 0:
            out.append('"What, again",Number,x,y,"clip, x","clip, y",w,h,"0"')
        label, rest = line.rsplit(",", 8)[0], line.rsplit(",", 8)[1:]
        if i % 3 == 1 and not label.startswith('"'):
            label = f'"{label}"'
        if i % 4 == 2:
            rest[-1] = f'"{rest[-1]}"'
        out.append(f"{label},{', '.join(rest) if i % 5 == 3 else ','.join(rest)}")
    return "\r\n".join(out).encode("ascii")
