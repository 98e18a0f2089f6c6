# SPDX-License-Identifier: GPL-3.0-or-later
"""Sounds whose heads lie: WAV, AIFF, AU and what may stand behind their names."""

import functools
import math
import struct

from .parts import HALF_32, MOST_32, block, chunk, little, nested, noise, riff, with_hole

GUID = b"\x00\x00\x10\x00\x80\x00\x00\xaa\x008\x9bq"
SAMPLES = b"".join(struct.pack("<hh", *[round(12000 * math.sin(n / 9))] * 2) for n in range(22050))


def form(tag=1, channels=2, rate=44100, a_second=176400, align=4, bits=16, extra=b""):
    return chunk(b"fmt ", struct.pack("<HHIIHH", tag, channels, rate, a_second, align, bits) + extra)


def wave(head, *before, data=SAMPLES, size=None, whole=None):
    return riff(b"WAVE", head, *before, chunk(b"data", data, size), size=whole)


def tagged(tag, seed, channels=2, align=4, bits=16, extra=b""):
    """Noise as a codec's data."""
    return wave(form(tag, channels, 44100, 16000, align, bits, struct.pack("<H", len(extra)) + extra), data=noise(seed, 60000))


def waves():
    whole_numbers = form() + chunk(b"fact", little(MOST_32))
    loops = chunk(b"smpl", little(*[MOST_32] * 7, 1 << 24, MOST_32) + bytes(24))
    cues = chunk(b"cue ", little(HALF_32) + noise("cue", 24 * 40))
    floats = struct.pack("<f", math.nan) * 4000 + struct.pack("<f", math.inf) * 4000 + struct.pack("<f", -3e38) * 4000
    doubles = struct.pack("<d", math.nan) * 4000 + struct.pack("<d", 1e308) * 4000
    long_list = nested(20000, lambda size: b"LIST" + struct.pack("<I", size + 4) + b"INFO")
    many = riff(b"WAVE", form(), chunk(b"junk") * 200000, chunk(b"data", SAMPLES))
    id3 = chunk(b"id3 ", b"ID3\4\0\0\x7f\x7f\x7f\x7f" + bytes(64))
    return [
        ("rate_none.wav", wave(form(rate=0))), ("rate_most.wav", wave(form(rate=MOST_32, a_second=MOST_32))),
        ("rate_negative.wav", wave(form(rate=HALF_32))), ("rate_one.wav", wave(form(rate=1, a_second=4))),
        ("channels_none.wav", wave(form(channels=0))), ("channels_most.wav", wave(form(channels=65535))),
        ("channels_300.wav", wave(form(channels=300, align=600, a_second=600 * 44100))),
        ("align_none.wav", wave(form(align=0))), ("align_most.wav", wave(form(align=65535))),
        ("bits_none.wav", wave(form(bits=0))), ("bits_most.wav", wave(form(bits=65535))), ("bits_seven.wav", wave(form(bits=7))),
        ("second_none.wav", wave(form(a_second=0))), ("size_none.wav", wave(form(), size=0, whole=0)),
        ("size_most.wav", wave(form(), size=MOST_32, whole=MOST_32)), ("size_negative.wav", wave(form(), size=HALF_32)),
        ("size_most_nothing.wav", wave(form(), data=b"", size=MOST_32)), ("no_data.wav", riff(b"WAVE", form())),
        ("no_form.wav", riff(b"WAVE", chunk(b"data", SAMPLES))),
        ("data_before_form.wav", riff(b"WAVE", chunk(b"data", SAMPLES), form())),
        ("two_forms.wav", wave(form(), form(channels=1, rate=8000, align=1, bits=8))),
        ("form_of_two.wav", riff(b"WAVE", chunk(b"fmt ", b"\1\0"), chunk(b"data", SAMPLES))),
        ("form_huge.wav", riff(b"WAVE", chunk(b"fmt ", bytes(40), 0x10000000), chunk(b"data", SAMPLES))),
        ("lists_in_lists.wav", riff(b"WAVE", form(), long_list, chunk(b"data", SAMPLES))), ("chunks_200000.wav", many),
        ("facts_and_loops.wav", wave(whole_numbers, loops, cues)), ("id3_inside.wav", wave(form(), id3)),
        ("floats_nan.wav", wave(form(3, bits=32, align=8, a_second=352800), data=floats)),
        ("doubles_most.wav", wave(form(3, bits=64, align=16, a_second=705600), data=doubles)),
        ("adpcm_align_one.wav", tagged(2, 1, align=1, bits=4, extra=bytes(32))),
        ("adpcm_coefficients.wav", tagged(2, 2, align=1024, bits=4, extra=struct.pack("<HH", 2, 65535) + noise(3, 60))),
        ("ima_align_most.wav", tagged(0x11, 4, align=65535, bits=4, extra=struct.pack("<H", 65535))),
        ("mp3_noise.wav", tagged(0x55, 5, extra=bytes(12))), ("aac_noise.wav", tagged(0xFF, 6, extra=b"\xff\xff\xff\xff")),
        ("flac_noise.wav", tagged(0xF1AC, 7)), ("vorbis_noise.wav", tagged(0x674F, 8, extra=noise(9, 200))),
        ("atrac_noise.wav", tagged(0x270, 10, align=192, extra=noise(11, 14))),
        ("wma_noise.wav", tagged(0x161, 12, extra=noise(13, 10))),
        ("ac3_noise.wav", tagged(0x2000, 14)), ("gsm_noise.wav", tagged(0x31, 15, 1, 65, 0, struct.pack("<H", 320))),
        ("extensible_lies.wav", wave(form(0xFFFE, extra=struct.pack("<HHI", 65535, 99, MOST_32) + b"\x01\x00\x00\x00" + GUID))),
        ("rf64.wav", riff(b"WAVE", chunk(b"ds64", struct.pack("<QQQI", 1 << 63, 1 << 63, 1 << 63, MOST_32)), form(),
                          chunk(b"data", SAMPLES, MOST_32), name=b"RF64", size=MOST_32)),
        ("hole.wav", with_hole(wave(form(), data=b"", size=0xFFFFFFF0), 1 << 62)),
        ("riff_in_riff.wav", nested(3000, lambda size: b"RIFF" + struct.pack("<I", size + 4) + b"WAVE", wave(form()))),
    ]


def common(channels=2, frames=22050, bits=16, rate=b"\x40\x0e\xac\x44\0\0\0\0\0\0", more=b""):
    return block(b"COMM", struct.pack(">HIH", channels & 0xFFFF, frames & MOST_32, bits & 0xFFFF) + rate + more)


def aiff(*blocks, kind=b"AIFF", data=SAMPLES, offset=0, size=0):
    content = b"".join(blocks) + block(b"SSND", struct.pack(">II", offset, size) + data)
    return block(b"FORM", kind + content)


def aiffs():
    plain = common()
    return [
        ("rate_none.aiff", aiff(common(rate=bytes(10)))), ("rate_nan.aif", aiff(common(rate=b"\x7f\xff\xc0\0\0\0\0\0\0\0"))),
        ("rate_infinite.aiff", aiff(common(rate=b"\x7f\xff\x80\0\0\0\0\0\0\0"))),
        ("rate_negative.aif", aiff(common(rate=b"\xc0\x0e\xac\x44\0\0\0\0\0\0"))),
        ("rate_4000.aiff", aiff(common(rate=b"\x7f\xfe\xff\xff\xff\xff\xff\xff\xff\xff"))),
        ("channels_none.aiff", aiff(common(channels=0))), ("channels_most.aif", aiff(common(channels=65535))),
        ("bits_none.aiff", aiff(common(bits=0))), ("bits_most.aif", aiff(common(bits=65535))),
        ("frames_most.aiff", aiff(common(frames=MOST_32))), ("offset_most.aif", aiff(plain, offset=MOST_32, size=MOST_32)),
        ("no_common.aiff", aiff()), ("short_common.aif", aiff(block(b"COMM", b"\0\2"))),
        ("unknown.aifc", aiff(common(more=b"xxxx\xffname"), kind=b"AIFC")),
        ("ima.aifc", aiff(common(more=b"ima4\0\0"), kind=b"AIFC", data=noise("ima", 30000))),
        ("qdm2.aifc", aiff(common(more=b"QDM2\0\0"), block(b"wave", noise("wave", 300)), kind=b"AIFC", data=noise("qdm", 30000))),
        ("marks.aiff", aiff(plain, block(b"MARK", b"\xff\xff" + noise("mark", 4000)))),
        ("forms_in_forms.aiff", nested(20000, lambda size: b"FORM" + struct.pack(">I", size + 4) + b"AIFF", aiff(plain))),
        ("comments.aif", aiff(plain, block(b"ANNO", b"x" * 30, MOST_32))),
    ]


def au(offset=24, size=len(SAMPLES), encoding=3, rate=44100, channels=2, rest=SAMPLES):
    return b".snd" + struct.pack(">6I", offset, size, encoding, rate, channels, 0)[:20] + rest


def suns():
    return [
        ("offset_none.au", au(0)), ("offset_most.au", au(MOST_32)), ("size_most.snd", au(size=MOST_32)),
        ("rate_none.au", au(rate=0)),
        ("rate_most.snd", au(rate=MOST_32)), ("channels_none.au", au(channels=0)), ("channels_most.snd", au(channels=MOST_32)),
        ("encoding_none.au", au(encoding=0)), ("encoding_g723.au", au(encoding=26)), ("encoding_double.snd", au(encoding=7)),
        ("notes.au", au(offset=200_000_000, rest=b"n" * 500)), ("only_head.snd", au(rest=b"")),
    ]


@functools.cache
def files():
    return [*waves(), *aiffs(), *suns()]
