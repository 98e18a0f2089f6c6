# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads what a private X server shows, straight out of its frame buffer file, and the windows on it."""

import mmap
import re
import struct
import subprocess
import zlib


class Screen:
    """The frame buffer of an Xvfb started with -fbdir: an XWD file, 32 bits a pixel. The pointer is drawn into it."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self._map = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self._map[:100])
        self.width, self.height = header[4], header[5]
        self._stride = header[12]
        self._start = header[0] + 12 * header[19]
        if header[11] != 32:
            raise ValueError(f"{header[11]} bits a pixel")

    def rows(self, x=0, y=0, width=None, height=None):
        """The area's pixels, one bytes object a row: blue, green, red, unused. Parts outside the screen are left out."""
        left, top = max(0, x), max(0, y)
        right = min(self.width, x + (self.width if width is None else width))
        bottom = min(self.height, y + (self.height if height is None else height))
        offset = self._start + 4 * left
        return [self._map[offset + line * self._stride : offset + line * self._stride + 4 * max(0, right - left)]
                for line in range(top, bottom)]

    def pixels(self, x=0, y=0, width=None, height=None):
        return b"".join(self.rows(x, y, width, height))

    def save(self, path, x=0, y=0, width=None, height=None):
        """Writes the area as a PNG file."""
        lines = []
        rows = self.rows(x, y, width, height)
        for row in rows:
            line = bytearray(len(row) // 4 * 3)
            line[0::3], line[1::3], line[2::3] = row[2::4], row[1::4], row[0::4]
            lines.append(b"\0" + bytes(line))
        write_png(path, len(rows[0]) // 4, len(rows), b"".join(lines))


def write_png(path, width, height, lines):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines, 6)) + chunk(b"IEND", b""))


def visible_windows(session, pid):
    """The windows that a process shows: {window id: (x, y, width, height)}, pixels on the screen."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid)], env=session.environment,
                           capture_output=True, text=True, check=False).stdout.split()
    windows = {}
    for window in found:
        answer = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window], env=session.environment,
                                capture_output=True, text=True, check=False).stdout
        values = dict(re.findall(r"(\w+)=(-?\d+)", answer))
        if "HEIGHT" in values:
            windows[int(window)] = tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))
    return windows


def read_skin(path):
    """A skin's records: {record number: (left, top, clip x, clip y, width, height, use)}. The panel's first record and the
    last one of every other number count."""
    records = {}
    for line in path.read_text(encoding="utf-8", errors="replace").splitlines():
        fields = [field.strip().strip('"') for field in line.split(",")]
        if len(fields) == 9 and re.fullmatch(r"-?\d+", fields[1]):
            numbers = [int(float(field)) for field in fields[2:8]]
            if fields[1] != "0" or 0 not in records:
                records[int(fields[1])] = (*numbers, fields[8])
    return records
