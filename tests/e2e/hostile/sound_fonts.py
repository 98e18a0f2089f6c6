# SPDX-License-Identifier: GPL-3.0-or-later
"""Soundfonts: honest ones, and ones that a small file unpacks to gigabytes or one note to hundreds of thousands of voices."""

import struct
import subprocess

PACKED, PLAIN = 0x11, 1
RATE = 44100
FRAMES_OF_A_TONE = RATE


def chunk(name, data):
    return name + struct.pack("<I", len(data)) + data


def record(name, layout, *values):
    return struct.pack("<20s" + layout, name, *values)


def vorbis(source, quality=2):
    """What ffmpeg makes of a source of its own, packed."""
    return subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", source, "-ac", "1", "-ar", str(RATE), "-c:a", "libvorbis",
                           "-q:a", str(quality), "-f", "ogg", "-"], check=True, stdout=subprocess.PIPE, timeout=120).stdout


def generators(*pairs):
    return b"".join(struct.pack("<HH", *pair) for pair in pairs)


def font(sounds, major=3, layers=1, instrument_layers=1, kind=PACKED):
    """A soundfont of one preset with one instrument, which has `instrument_layers` layers for each of the sounds and is
    named `layers` times. Sounds are bytes that lie one behind the other, or (begin, end) in what the ones before it are."""
    data, heads = b"", b""
    for sound in sounds:
        begin, end = sound if isinstance(sound, tuple) else (len(data), len(data) + len(sound))
        if not isinstance(sound, tuple):
            data += sound
        unit = 1 if kind == PACKED else 2
        heads += record(b"sound", "IIIIIBbHH", begin // unit, end // unit, 0, 0, RATE, 69, 0, 0, kind)
    count = len(sounds) * instrument_layers
    bags = b"".join(struct.pack("<HH", i, 0) for i in range(count + 1))
    inner = b"".join(generators((53, i % len(sounds))) for i in range(count)) + generators((0, 0))
    outer = b"".join(struct.pack("<HH", i, 0) for i in range(layers + 1))
    tables = chunk(b"phdr", record(b"preset", "HHHIII", 0, 0, 0, 0, 0, 0) + record(b"EOP", "HHHIII", 0, 0, layers, 0, 0, 0))
    tables += chunk(b"pbag", outer) + chunk(b"pmod", bytes(10)) + chunk(b"pgen", generators((41, 0)) * layers + generators((0, 0)))
    tables += chunk(b"inst", record(b"instrument", "H", 0) + record(b"EOI", "H", count))
    tables += chunk(b"ibag", bags) + chunk(b"imod", bytes(10)) + chunk(b"igen", inner)
    tables += chunk(b"shdr", heads + record(b"EOS", "IIIIIBbHH", *[0] * 9))
    info = chunk(b"ifil", struct.pack("<HH", major, 1)) + chunk(b"isng", b"EMU8000\0") + chunk(b"INAM", b"sounds\0\0")
    data += bytes(len(data) % 2)
    body = b"sfbk" + chunk(b"LIST", b"INFO" + info) + chunk(b"LIST", b"sdta" + chunk(b"smpl", data)) + chunk(b"LIST", b"pdta" + tables)
    return chunk(b"RIFF", body)
