#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Puts square PNG pictures into one Windows icon: icon.py ICON PNG..."""

import pathlib
import struct
import sys


def size_of(png):
    """Width and height stand at a fixed place of every PNG."""
    if png[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("not a PNG")
    return struct.unpack(">II", png[16:24])


def icon(pictures):
    head = struct.pack("<HHH", 0, 1, len(pictures))
    place = len(head) + 16 * len(pictures)
    entries = b""
    for png in pictures:
        width, height = size_of(png)
        entries += struct.pack("<BBBBHHII", width % 256, height % 256, 0, 0, 1, 32, len(png), place)  # 256 is written as 0
        place += len(png)
    return head + entries + b"".join(pictures)


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_bytes(icon([pathlib.Path(name).read_bytes() for name in sys.argv[2:]]))
