# SPDX-License-Identifier: GPL-3.0-or-later
"""Standard MIDI files of one melody, plain and wrapped in RIFF."""

import struct

TICKS = 480  # a quarter note
OCARINA = 79  # the nearest to a pure tone that every General MIDI sound set has


def _variable(value):
    out = [value & 0x7F]
    while value > 0x7F:
        value >>= 7
        out.append((value & 0x7F) | 0x80)
    return bytes(reversed(out))


def _tempo(seconds_a_beat):
    return b"\xff\x51\x03" + struct.pack(">I", round(seconds_a_beat * 1e6))[1:]


def midi_bytes(notes, title):
    """A format 0 file: every note is one quarter, and the tempo follows the notes' lengths."""
    track = _variable(0) + b"\xff\x03" + _variable(len(title)) + title.encode("ascii")
    track += _variable(0) + bytes((0xC0, OCARINA))
    length = None
    for n in notes:
        if n.length != length:
            length = n.length
            track += _variable(0) + _tempo(length)
        track += _variable(0) + bytes((0x90, n.note, 112))
        track += _variable(TICKS) + bytes((0x80, n.note, 64))
    track += _variable(0) + b"\xff\x2f\x00"
    return b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS) + b"MTrk" + struct.pack(">I", len(track)) + track


def rmi_bytes(notes, title):
    """The same inside a RIFF file of the form RMID."""
    data = midi_bytes(notes, title)
    chunk = b"data" + struct.pack("<I", len(data)) + data + b"\0" * (len(data) & 1)
    return b"RIFF" + struct.pack("<I", len(chunk) + 4) + b"RMID" + chunk
