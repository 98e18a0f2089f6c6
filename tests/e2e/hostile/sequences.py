# SPDX-License-Identifier: GPL-3.0-or-later
"""MIDI files that do not end, run too fast or hold too much, and RIFF files that say they hold one."""

import functools
import struct

from .parts import HALF_32, MOST_32, bomb, chunk, nested, noise, riff, variable_length

END = b"\0\xff\x2f\0"
NOTES = b"".join(bytes((0, 0x90, 60 + n % 12, 100, 96, 0x80, 60 + n % 12, 0)) for n in range(8))
MOST_DELTA = b"\xff\xff\xff\x7f"


def head(kind=0, tracks=1, division=96, size=6, rest=b""):
    return b"MThd" + struct.pack(">IHHH", size, kind, tracks, division & 0xFFFF) + rest


def track(content=NOTES, end=END, size=None):
    whole = content + end
    return b"MTrk" + struct.pack(">I", len(whole) if size is None else size) + whole


def plain(content=NOTES, **of_head):
    return head(**of_head) + track(content)


def rmi(data, size=None, whole=None):
    return riff(b"RMID", chunk(b"data", data, size), size=whole)


def sequences():
    crowd = b"".join(bytes((0, 0x90 | n % 16, n % 128, 1 + n % 127)) for n in range(250_000))
    tempi = b"".join(b"\1\xff\x51\3" + noise(n, 3) for n in range(60_000))
    pressures = b"\0\xd0\x40" + b"\0\x40" * 400_000
    return [
        ("tracks_most.mid", head(1, 65535) + track()), ("tracks_none.mid", head(1, 0) + track()),
        ("tracks_real.mid", head(1, 65535) + track(b"") * 65535),
        ("kind_2.mid", head(2, 400) + track() * 400), ("kind_most.mid", plain(kind=65535)),
        ("division_none.mid", plain(division=0)),
        ("division_frames_none.mid", plain(division=0x8000)), ("division_frames.mid", plain(division=0x80FF)),
        ("division_most.mid", plain(division=0x7FFF)),
        ("division_negative.mid", plain(division=0xFF00)), ("tempo_none.mid", plain(b"\0\xff\x51\3\0\0\0" + NOTES)),
        ("tempo_one.mid", plain(b"\0\xff\x51\3\0\0\1" + NOTES, division=0x7FFF)),
        ("tempo_most.mid", plain(b"\0\xff\x51\3\xff\xff\xff" + NOTES, division=1)),
        ("tempo_long.mid", plain(b"\0\xff\x51\x7f" + bytes(127) + NOTES)),
        ("tempi_60000.mid", plain(tempi + NOTES)), ("meta_2_28.mid", plain(b"\0\xff\1\xff\xff\xff\x7f" + NOTES)),
        ("length_endless.mid", plain(b"\0\xff\1" + b"\xff" * 400 + NOTES)),
        ("running_first.mid", plain(b"\0\x40\x40" * 50)),
        ("running_cut.mid", head() + track(b"\0\x90" + b"\x3c\x40\0" * 3000, b"", MOST_32)),
        ("running_after_meta.mid", plain(b"\0\x90\x3c\x40\0\xff\1\1x\0\x3c\x40")),
        ("system_open.mid", plain(b"\0\xf0\x81\0" + bytes(100))),
        ("system_2_28.mid", plain(b"\0\xf0\xff\xff\xff\x7f" + bytes(100))),
        ("system_bytes.mid", plain(b"".join(bytes((0, 0xF1 + n % 14)) for n in range(4000)))),
        ("track_most.mid", head() + track(size=MOST_32)), ("track_negative.mid", head() + track(size=HALF_32)),
        ("track_none.mid", head() + track(size=0)),
        ("head_most.mid", head(size=MOST_32) + track()), ("head_none.mid", head(size=0) + track()), ("head_alone.mid", head()),
        ("head_long.mid", head(size=60000, rest=bytes(60000 - 6)) + track()), ("heads_3000.mid", head() * 3000 + track()),
        ("heads_in_track.mid", head() + track(head() * 2000)),
        ("deltas_most.mid", plain((MOST_DELTA + b"\x90\x3c\x40") * 400)), ("crowd.mid", plain(crowd)),
        ("pressures.mid", plain(pressures)), ("no_end.mid", head() + track(end=b"")),
        ("after_end.mid", head() + track(END * 3000 + NOTES)),
        ("high_data.mid", plain(b"\0\x90\xff\xff\0\xc0\xff\0\xe0\xff\xff")),
        ("programs.mid", plain(b"".join(bytes((0, 0xB0 | n % 16, 0, n % 128, 0, 0xC0 | n % 16, n % 128, 0, 0x90 | n % 16, 60, 90)) for n in range(20000)))),
        ("controllers.mid", plain(b"".join(bytes((0, 0xB0 | n % 16, n % 128, n * 7 % 128)) for n in range(100_000)))),
        ("noise.mid", head() + track(noise("mid", 60000))),
        ("names.mid", plain(b"".join(b"\0\xff\3" + variable_length(20000) + b"n" * 20000 for _ in range(100)))),
        ("packed.mid", bomb(1 << 20)),
    ]


def wrapped():
    good = plain()
    return [
        ("in_itself.rmi", nested(5000, lambda size: b"RIFF" + struct.pack("<I", size + 12) + b"RMIDdata" + struct.pack("<I", size), good)),
        ("data_most.rmi", rmi(good, MOST_32)),
        ("data_none.rmi", rmi(good, 0)), ("data_negative.rmi", rmi(good, HALF_32)), ("whole_most.rmi", rmi(good, whole=MOST_32)),
        ("no_data.rmi", riff(b"RMID")),
        ("wave_in_data.rmi", rmi(riff(b"WAVE", chunk(b"data", bytes(400))))),
        ("two_data.rmi", riff(b"RMID", chunk(b"data", b"x"), chunk(b"data", good))),
        ("odd_size.rmi", riff(b"RMID", chunk(b"DISP", b"abc"), chunk(b"data", good + b"x"))),
        ("chunks.rmi", riff(b"RMID", chunk(b"LIST") * 100_000, chunk(b"data", good))),
        ("dls.rmi", riff(b"RMID", chunk(b"data", good), riff(b"DLS ", chunk(b"colh", b"\xff" * 4), nested(3000, lambda size: b"LIST" + struct.pack("<I", size + 4) + b"lins")))),
        ("big_endian.rmi", b"RIFX" + struct.pack(">I", len(good) + 12) + b"RMIDdata" + struct.pack(">I", len(good)) + good),
        ("cut.rmi", rmi(good)[:21]),
    ]


@functools.cache
def files():
    return [*sequences(), *wrapped()]
