# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes sounds as APE files (version 3.99, "fast"), for which no system has an encoder: one channel of 16 bits."""

import struct
import zlib

VERSION, FAST, NO_WAVE_HEADER = 3990, 1000, 32
FRAME = 73728 * 4  # samples
TOP, BOTTOM, SHIFT = 1 << 31, 1 << 23, 23
# Of 65,536: where the range of each small symbol begins. One of width 1 for each symbol behind them.
BEGINS = (0, 19578, 36160, 48417, 56323, 60899, 63265, 64435, 64971, 65232, 65351, 65416, 65447, 65466, 65476, 65482, 65485,
          65488, 65490, 65491, 65492, 65493)
ESCAPE = 63


class RangeCoder:
    """Its first byte means nothing."""

    def __init__(self):
        self.low, self.range, self.last, self.waiting, self.out = 0, TOP, 0, 0, bytearray()

    def _give(self, carry):
        self.out.append((self.last + carry) & 0xFF)
        self.out += (b"\0" if carry else b"\xff") * self.waiting
        self.waiting = 0

    def _normalise(self):
        while self.range <= BOTTOM:
            if self.low < 0xFF << SHIFT or self.low & TOP:
                self._give(1 if self.low & TOP else 0)
                self.last = self.low >> SHIFT & 0xFF
            else:
                self.waiting += 1
            self.range <<= 8
            self.low = self.low << 8 & (TOP - 1)

    def put(self, begin, width, total):
        self._normalise()
        part = self.range // total
        self.low += part * begin
        self.range = part * width

    def finish(self):
        self._normalise()
        end = (self.low >> SHIFT) + 1
        self._give(1 if end > 0xFF else 0)
        self.out += bytes([end & 0xFF, 0, 0, 0, 0, 0])
        return bytes(self.out)


class Values:
    """Whole numbers, the small ones in few bits; how small is learnt from those before."""

    def __init__(self):
        self.coder, self.k, self.sum = RangeCoder(), 10, 16 << 10

    def put(self, value):
        x = 2 * value - 1 if value > 0 else -2 * value
        pivot = max(self.sum >> 5, 1)
        many, rest = divmod(x, pivot)
        if many < len(BEGINS) - 1:
            self.coder.put(BEGINS[many], BEGINS[many + 1] - BEGINS[many], 1 << 16)
        else:
            self.coder.put((1 << 16) - 1 - ESCAPE + min(many, ESCAPE), 1, 1 << 16)
        if many >= ESCAPE:
            self.coder.put(many >> 16, 1, 1 << 16)
            self.coder.put(many & 0xFFFF, 1, 1 << 16)
        assert pivot < 1 << 16, "16 bits need no more"
        self.coder.put(rest, 1, pivot)
        self.sum += (x + 1) // 2 - (self.sum + 16 >> 5)
        if self.sum < (1 << self.k + 4 if self.k else 0):
            self.k -= 1
        elif self.sum >= 1 << self.k + 5:
            self.k += 1


def sign(value):
    return (value < 0) - (value > 0)


def frame(samples):
    """What the prediction, which learns from its errors, leaves of each sample."""
    values, factors = Values(), [360, 317, -109, 98]
    past, signs = [0] * 4, [0] * 4  # the sample before, and the last steps between such
    before, last = 0, 0
    for sample in samples:
        past = [last, last - past[0], *past[1:3]]
        signs = [sign(past[0]), sign(past[1]), *signs[1:3]]
        now = sample - (before * 31 >> 5)
        error = now - (sum(a * b for a, b in zip(past, factors)) >> 10)
        values.put(error)
        factors = [factor + each * sign(error) for factor, each in zip(factors, signs)]
        before, last = sample, now
    check = zlib.crc32(struct.pack(f"<{len(samples)}h", *samples)) >> 1
    coded = struct.pack(">I", check) + values.coder.finish()
    coded += bytes(-len(coded) % 4)
    words = len(coded) // 4
    return struct.pack(f"<{words}I", *struct.unpack(f">{words}I", coded))


def write_ape(path, samples, rate):
    """samples: whole numbers of 16 bits."""
    samples = [int(each) for each in samples]
    parts = [samples[at:at + FRAME] for at in range(0, len(samples), FRAME)]
    frames = [frame(part) for part in parts]
    begin = 52 + 24 + 4 * len(frames)
    places = [begin + sum(len(each) for each in frames[:number]) for number in range(len(frames))]
    path.write_bytes(b"MAC " + struct.pack("<HHIIIIIII16x", VERSION, 0, 52, 24, 4 * len(frames), 0, sum(map(len, frames)), 0, 0) +
                     struct.pack("<HHIIIHHI", FAST, NO_WAVE_HEADER, FRAME, len(parts[-1]), len(frames), 16, 1, rate) +
                     struct.pack(f"<{len(places)}I", *places) + b"".join(frames))
    return path
