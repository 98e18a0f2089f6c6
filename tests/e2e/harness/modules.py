# SPDX-License-Identifier: GPL-3.0-or-later
"""Modules that sound one sample, a sine, for two and a half seconds or, before a slow program, longer: each by its ending, as small
as its format allows."""

import struct

import numpy as np

from .expect import SLACK

ROWS, TICKS = 64, 2 * round(min(max(1, SLACK / 2), 10))  # of the one pattern; of a row, a fiftieth of a second each
CYCLE = 32  # samples
WAVE = np.round(np.sin(2 * np.pi * np.arange(CYCLE) / CYCLE) * 100).astype(np.int8)
XM_HZ, XM_NOTE = 8363, 49  # samples a second of its C-4


def rows(note):
    """Packed rows of one channel: the note, then nothing; each ends with 0."""
    return note + bytes(ROWS)


def mod(hz, title):
    """Its notes are semitones: one is of 692.7 hertz, the highest of 980."""
    period = round(7093789.2 / 2 / (hz * CYCLE))
    sample = b"sine".ljust(22, b"\0") + struct.pack(">HBBHH", CYCLE // 2, 0, 64, 0, CYCLE // 2)
    none = bytes(22) + struct.pack(">HBBHH", 0, 0, 0, 0, 1)
    note = struct.pack(">HH", period, 0x1F00 | TICKS)
    pattern = note + bytes(16 * ROWS - len(note))
    return title.ljust(20, b"\0") + sample + none * 30 + bytes([1, 127]) + bytes(128) + b"M.K." + pattern + WAVE.tobytes()


def s3m(hz, title):
    pattern = rows(bytes((32, 0x40, 1)))
    head = title.ljust(28, b"\0") + struct.pack("<BBHHHHHHH4sBBBBBB8xH", 0x1A, 16, 0, 2, 1, 1, 0, 0x1320, 2, b"SCRM",
                                                  64, TICKS, 125, 0xB0, 0, 0, 0) + b"\0" + b"\xff" * 31
    instrument, packed, wave = 8, 16, 40  # places in units of 16 bytes
    tables = bytes((0, 255)) + struct.pack("<HH", instrument, packed)
    sample = struct.pack("<B12sBHIIIBBBBI12x28s4s", 1, b"sine", 0, wave, CYCLE, 0, CYCLE, 64, 0, 0, 1, round(hz * CYCLE), b"sine", b"SCRS")
    made = (head + tables).ljust(16 * instrument, b"\0") + sample
    made = made.ljust(16 * packed, b"\0") + struct.pack("<H", len(pattern) + 2) + pattern
    return made.ljust(16 * wave, b"\0") + (WAVE.astype(int) + 128).astype(np.uint8).tobytes()


def xm(hz, title):
    above = 12 * np.log2(hz * CYCLE / XM_HZ)  # semitones, which are fine-tuned in 1/128
    semitones = round(above)
    pattern = bytes((0x83, XM_NOTE, 1)) + b"\x80" * (ROWS - 1)
    head = b"Extended Module: " + title.ljust(20) + b"\x1a" + b"none".ljust(20)
    head += struct.pack("<HIHHHHHHHH256x", 0x0104, 276, 1, 0, 1, 1, 1, 1, TICKS, 125)
    instrument = struct.pack("<I22sBHI", 263, b"sine", 0, 1, 40).ljust(263, b"\0")
    sample = struct.pack("<IIIBbBBbB22s", CYCLE, 0, CYCLE, 64, round((above - semitones) * 128), 1, 128, semitones, 0, b"sine")
    steps = np.diff(WAVE.astype(int), prepend=0).astype(np.int8).tobytes()
    return head + struct.pack("<IBHH", 9, 0, ROWS, len(pattern)) + pattern + instrument + sample + steps


def it(hz, title):
    pattern = rows(bytes((129, 3, 60, 1)))
    head = b"IMPM" + title.ljust(26, b"\0") + struct.pack("<HHHHHHHHHBBBBBBHII", 0, 2, 0, 1, 1, 0x0214, 0x0200, 1, 0,
                                                            128, 48, TICKS, 125, 128, 0, 0, 0, 0) + b"\x20" + b"\xa0" * 63 + b"\x40" * 64
    sample_at = len(head) + 2 + 8
    pattern_at = sample_at + 80
    wave_at = pattern_at + 8 + len(pattern)
    sample = struct.pack("<4s12sBBBB26sBBIIIIIII4x", b"IMPS", b"sine", 0, 64, 17, 64, b"sine", 1, 32, CYCLE, 0, CYCLE,
                         round(hz * CYCLE), 0, 0, wave_at)
    packed = struct.pack("<HH4x", len(pattern), ROWS) + pattern
    return head + bytes((0, 255)) + struct.pack("<II", sample_at, pattern_at) + sample + packed + WAVE.tobytes()


MAKERS = {".mod": mod, ".s3m": s3m, ".xm": xm, ".it": it}


def write_module(path, hz):
    """Its title is the file's name."""
    path.write_bytes(MAKERS[path.suffix](hz, path.stem.encode()))
    return path
