# SPDX-License-Identifier: GPL-3.0-or-later
"""Tones from a list of notes, and the sound files that need no encoder: wave, Sun audio, AIFF."""

import struct

import numpy as np

from table import frequency

ATTACK, RELEASE = 0.006, 0.018  # seconds; long enough not to click, short enough to see a note's edge
LEVEL = 0.5


def synthesize(notes, rate, seconds=None):
    """Mono samples in -1..1: nearly pure tones, so that their pitch can be measured."""
    if seconds is None:
        seconds = max(n.start + n.length for n in notes)
    out = np.zeros(round(seconds * rate))
    for n in notes:
        first, count = round(n.start * rate), round(n.length * rate)
        t = np.arange(count) / rate
        w = 2.0 * np.pi * frequency(n.note) * t
        tone = 0.9 * np.sin(w) + 0.08 * np.sin(2.0 * w) + 0.04 * np.sin(3.0 * w)
        edge = np.minimum(1.0, np.minimum(t / ATTACK, (n.length - t) / RELEASE))
        # A gentle fall makes the tones sound struck; the end stays loud enough to measure.
        out[first : first + count] += LEVEL * tone * np.clip(edge, 0.0, 1.0) * (0.55 + 0.45 * np.exp(-4.0 * t))
    return out


def _pcm16(samples, order):
    return np.round(np.clip(samples, -1.0, 1.0) * 32767.0).astype(order + "i2").tobytes()


def wave_bytes(samples, rate):
    """A 16-bit mono RIFF wave file."""
    data = _pcm16(samples, "<")
    head = b"fmt " + struct.pack("<IHHIIHH", 16, 1, 1, rate, rate * 2, 2, 16)
    body = b"WAVE" + head + b"data" + struct.pack("<I", len(data)) + data
    return b"RIFF" + struct.pack("<I", len(body)) + body


def _mu_law(samples):
    """ITU-T G.711 mu-law codes of samples in -1..1."""
    bias, clip = 0x84, 32635
    pcm = np.round(np.clip(samples, -1.0, 1.0) * 32767.0).astype(np.int32)
    sign = np.where(pcm < 0, 0x80, 0)
    magnitude = np.minimum(np.abs(pcm), clip) + bias
    exponent = np.clip(np.floor(np.log2(magnitude)).astype(np.int32) - 7, 0, 7)
    mantissa = (magnitude >> (exponent + 3)) & 0x0F
    return (~(sign | (exponent << 4) | mantissa) & 0xFF).astype(np.uint8).tobytes()


def au_bytes(samples, rate):
    """A Sun audio file, mono, mu-law."""
    data = _mu_law(samples)
    return struct.pack(">4sIIIII", b".snd", 24, len(data), 1, rate, 1) + data


def _extended(value):
    """An 80-bit big-endian float of a positive whole number, as AIFF writes its rate."""
    exponent = value.bit_length() - 1
    return struct.pack(">HQ", 16383 + exponent, value << (63 - exponent))


def aiff_bytes(samples, rate):
    """A 16-bit mono AIFF file."""
    data = _pcm16(samples, ">")
    common = b"COMM" + struct.pack(">IhIh", 18, 1, len(samples), 16) + _extended(rate)
    sound = b"SSND" + struct.pack(">III", len(data) + 8, 0, 0) + data
    body = b"AIFF" + common + sound
    return b"FORM" + struct.pack(">I", len(body)) + body
