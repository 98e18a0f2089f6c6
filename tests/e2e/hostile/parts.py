# SPDX-License-Identifier: GPL-3.0-or-later
"""Bytes of which several kinds of file are built, and sizes that are lies."""

import os
import random
import struct
import zlib

MOST_32 = 0xFFFFFFFF
HALF_32 = 0x80000000


def noise(seed, size):
    """The same bytes for the same seed."""
    return random.Random(seed).randbytes(size)


def little(*values):
    """16-bit numbers where a value is (value, 2), one byte where (value, 1), else 32 bits; low byte first."""
    return b"".join((v[0] if isinstance(v, tuple) else v).to_bytes(v[1] if isinstance(v, tuple) else 4, "little") for v in values)


def chunk(name, content=b"", size=None):
    """Of a RIFF file; size: what it says of itself."""
    return name + struct.pack("<I", len(content) if size is None else size) + content + b"\0" * (len(content) % 2)


def riff(kind, *chunks, size=None, name=b"RIFF"):
    content = kind + b"".join(chunks)
    return name + struct.pack("<I", len(content) if size is None else size) + content


def block(name, content=b"", size=None):
    """Of an IFF file, high byte first."""
    return name + struct.pack(">I", len(content) if size is None else size) + content + b"\0" * (len(content) % 2)


def atom(name, *contents, size=None, wide=False):
    """Of a QuickTime file; its size counts the head."""
    content = b"".join(contents)
    if wide:
        return struct.pack(">I", 1) + name + struct.pack(">Q", len(content) + 16 if size is None else size) + content
    return struct.pack(">I", len(content) + 8 if size is None else size) + name + content


def nested(depth, head, content=b""):
    """So many in one another; head(size): the beginning of one that holds so many bytes."""
    parts, size = [content], len(content)
    for _ in range(depth):
        parts.append(head(size))
        size += len(parts[-1])
    return b"".join(reversed(parts))


def bomb(size, value=0):
    """Compressed, a thousandth of what it becomes."""
    packer = zlib.compressobj(9)
    piece = bytes([value]) * (1 << 20)
    parts = [packer.compress(piece) for _ in range(size >> 20)]
    return b"".join(parts) + packer.flush()


def with_hole(start, size, end=b""):
    """A writer of a file that is nearly all hole; as large as the file system has it."""

    def write(path):
        with open(path, "wb") as out:
            out.write(start)
            most = size
            while True:
                try:
                    out.truncate(most)
                    break
                except OSError:
                    most //= 2
            out.seek(most - len(end))
            out.write(end)

    return write


def link(target):
    def write(path):
        os.symlink(target, path)

    return write


def variable_length(number):
    """As MIDI and others count: seven bits a byte, the highest first."""
    parts = [number & 0x7F]
    while number := number >> 7:
        parts.append(number & 0x7F | 0x80)
    return bytes(reversed(parts))
