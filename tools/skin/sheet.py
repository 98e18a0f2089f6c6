# SPDX-License-Identifier: GPL-3.0-or-later
"""Skin records, and the sheet: the bitmap that holds every picture and the CSV that names the cells."""

import struct
from dataclasses import dataclass, field

import numpy as np

USED, UNUSED = "1", "0"


@dataclass
class Record:
    """One line of the CSV.

    A record brings its own `picture`, an array of bytes (height x width x 3) at the sheet's resolution, or
    its cell lies in the whole-panel picture of the record `inside`, at its own place. Texts and the
    slider show no picture, but their cells are cut as well and have to be there.
    """

    label: str
    number: int
    left: int
    top: int
    width: int
    height: int
    use: str = USED
    picture: np.ndarray = field(default=None, repr=False)
    inside: int = None
    clip: tuple = None  # x and y of the cell in the sheet, in panel pixels; given by the packer


def colour_field(text):
    """The &H form of a "#RRGGBB" colour: red in the low byte."""
    return "&H" + (text[5:7] + text[3:5] + text[1:3]).upper()


class Sheet:
    """Places pictures in rows below each other, left to right, the tallest first; equal ones only once."""

    GAP = 1  # panel pixels between cells, so that a scaled cell never takes up its neighbour

    def __init__(self, width, resolution=1):
        self.width, self.resolution = width, resolution
        self.cells = []  # (x, y, picture), in panel pixels

    def _rows(self, pictures, top):
        x, y, row = 0, top, 0
        for picture in pictures:
            h, w = (n // self.resolution for n in picture.shape[:2])
            if x and x + w > self.width:
                x, y, row = 0, y + row + self.GAP, 0
            self.cells.append((x, y, picture))
            x, row = x + w + self.GAP, max(row, h)
        return y + row

    def pack(self, records):
        """Places the pictures and gives every record its clip."""
        distinct = {}
        for r in records:
            if r.picture is not None:
                distinct.setdefault((r.picture.shape, r.picture.tobytes()), r.picture)
        order = sorted(distinct, key=lambda k: (-k[0][0], -k[0][1]))
        self.height = self._rows([distinct[k] for k in order], 0)
        at = {(p.shape, p.tobytes()): (x, y) for x, y, p in self.cells}
        for r in records:
            if r.picture is not None:
                r.clip = at[(r.picture.shape, r.picture.tobytes())]
        whole = {r.number: r for r in records if r.picture is not None}
        for r in records:
            if r.inside is not None:
                outer = whole[r.inside]
                r.clip = (outer.clip[0] + r.left - outer.left, outer.clip[1] + r.top - outer.top)

    def image(self, blank=(0, 0, 0)):
        n = self.resolution
        out = np.full((self.height * n, self.width * n, 3), blank, np.uint8)
        for x, y, picture in self.cells:
            out[y * n : y * n + picture.shape[0], x * n : x * n + picture.shape[1]] = picture
        return out


def bmp_bytes(pixels):
    """An uncompressed 24-bit Windows bitmap of an array height x width x 3."""
    h, w, _ = pixels.shape
    row = (w * 3 + 3) & ~3
    body = np.zeros((h, row), np.uint8)
    body[:, : w * 3] = pixels[::-1, :, ::-1].reshape(h, w * 3)
    info = struct.pack("<IiiHHIIiiII", 40, w, h, 1, 24, 0, row * h, 2835, 2835, 0, 0)
    return b"BM" + struct.pack("<IHHI", 54 + row * h, 0, 0, 54) + info + body.tobytes()


def indexed_bmp_bytes(pixels):
    """An uncompressed 8-bit Windows bitmap, for pictures of at most 256 colours."""
    h, w, _ = pixels.shape
    colours, index = np.unique(pixels.reshape(-1, 3), axis=0, return_inverse=True)
    row = (w + 3) & ~3
    body = np.zeros((h, row), np.uint8)
    body[:, :w] = index.reshape(h, w)[::-1]
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in colours.tolist())
    offset = 54 + len(table)
    info = struct.pack("<IiiHHIIiiII", 40, w, h, 1, 8, 0, row * h, 2835, 2835, len(colours), 0)
    return b"BM" + struct.pack("<IHHI", offset + row * h, 0, 0, offset) + info + table + body.tobytes()


HEADING = "Element,Record,Left,Top,Clip X,Clip Y,Width,Height,Use"


def csv_line(record):
    x, y = record.clip
    label = f'"{record.label}"' if "," in record.label else record.label
    return f"{label},{record.number},{record.left},{record.top},{x},{y},{record.width},{record.height},{record.use}"


def csv_bytes(records, heading=HEADING):
    """Lines end with CR LF, as skin authors' spreadsheets write them."""
    return ("\r\n".join([heading, *map(csv_line, records)]) + "\r\n").encode("ascii")
