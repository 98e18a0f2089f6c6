# SPDX-License-Identifier: GPL-3.0-or-later
"""Sounds in streams and what stands around them: MP3 and MP2 with tags that lie, and the four kinds that any sound may bear."""

import functools
import struct

from .parts import HALF_32, MOST_32, block, bomb, noise, variable_length, with_hole


def frame(bit_rate=9, rate=0, layer=1, mode=0, fill=0, version=3, size=417):
    """Of MPEG sound, 128 kbit/s unless told otherwise."""
    head = 0xFFE00000 | version << 19 | layer << 17 | 1 << 16 | bit_rate << 12 | rate << 10 | mode << 6
    return struct.pack(">I", head) + bytes([fill]) * (size - 4)


def safe(size):
    return bytes(size >> shift & 0x7F for shift in (21, 14, 7, 0))


def id3(*frames, version=4, flags=0, size=None):
    content = b"".join(frames)
    return b"ID3" + bytes((version, 0, flags)) + safe(len(content) if size is None else size) + content


def tag(name, content, size=None, flags=0, version=4):
    told = len(content) if size is None else size
    return name + (safe(told) if version == 4 else struct.pack(">I", told & MOST_32)) + struct.pack(">H", flags) + content


def ape(items, count, size):
    return items + b"APETAGEX" + struct.pack("<IIII", 2000, size & MOST_32, count, 0) + bytes(8)


def xing(frames=MOST_32, size=MOST_32, delay=b"\xff\xff\xff"):
    first = bytearray(frame())
    first[36:36 + 16] = b"Xing" + struct.pack(">III", 7, frames, size)
    first[177 - 8:177] = delay + bytes(5)
    return bytes(first)


SOUND = frame() * 80
PICTURE = b"\0image/jpeg\0\3\0"


def mpeg_sounds():
    chapters = [tag(b"CHAP", b"c%d\0" % n + struct.pack(">IIII", n, n + 1, MOST_32, MOST_32)) for n in range(30000)]
    texts = [tag(b"TXXX", b"\3k%d\0v" % n) for n in range(60000)]
    packed = tag(b"APIC", struct.pack(">I", 1 << 30) + bomb(64 << 20), flags=9)
    return [
        ("tag_256_mb.mp3", id3(size=0x0FFFFFFF) + SOUND), ("tag_hole.mp3", with_hole(id3(size=200 << 20), 210 << 20, SOUND)),
        ("cover_hole.mp3", with_hole(id3(tag(b"APIC", PICTURE, 150 << 20), size=160 << 20), 170 << 20, SOUND)),
        ("cover_lies.mp3", id3(tag(b"APIC", PICTURE, 0x0FFFFFFF)) + SOUND), ("cover_packed.mp3", id3(packed) + SOUND),
        ("texts_60000.mp3", id3(*texts) + SOUND), ("chapters_30000.mp3", id3(*chapters) + SOUND),
        ("tags_in_tags.mp3", id3(size=40) * 3000 + SOUND), ("tag_old.mp3", id3(b"TT2\xff\xff\xff\0x" * 50, version=2) + SOUND),
        ("tag_unsynchronised.mp3", id3(tag(b"TIT2", b"\1\xff\xfe" + b"\xff\0" * 3000, version=3), version=3, flags=0x80) + SOUND),
        ("tag_extended.mp3", id3(b"\x7f\x7f\x7f\x7f" + bytes(60), flags=0x40) + SOUND),
        ("frame_of_2_gb.mp3", id3(tag(b"PRIV", b"x" * 30, HALF_32, version=3), version=3) + SOUND),
        ("private_lies.mp3", id3(tag(b"PRIV", b"com.apple.streaming.transportStreamTimestamp\0" + b"\xff" * 8)) + SOUND),
        ("gain_lies.mp3", id3(tag(b"TXXX", b"\3replaygain_track_gain\0+99999999999 dB")) + SOUND),
        ("ape_items.mp3", SOUND + ape(b"", MOST_32, MOST_32)),
        ("ape_item.mp3", SOUND + ape(struct.pack("<II", MOST_32, 0) + b"k\0", 65536, 42)),
        ("old_tags.mp3", SOUND + (b"TAG" + b"\xff" * 125) * 5000), ("xing_most.mp3", xing() + SOUND),
        ("xing_none.mp3", xing(0, 0, bytes(3)) + SOUND), ("xing_alone.mp3", xing()),
        ("free_format.mp3", frame(bit_rate=0) * 50), ("bad_rates.mp3", frame(bit_rate=15) * 40 + frame(rate=3) * 40 + SOUND),
        ("layers_in_turn.mp3", b"".join(frame(layer=1 + n % 3, rate=n % 3, version=2 + n % 2, mode=n % 4) for n in range(300))),
        ("all_ones.mp3", b"\xff" * 300000), ("syncs.mp3", b"\xff\xfb" * 150000), ("one_frame.mp3", frame()),
        ("reservoir.mp3", frame(fill=0xFF) * 200), ("nothing.mp3", b""), ("one_byte.mp3", b"\xff"),
        ("layers_in_turn.mp2", b"".join(frame(layer=1 + n % 3, mode=n % 4) for n in range(300))),
        ("noise_in_frames.mp2", b"".join(frame(layer=2)[:4] + noise(n, 413) for n in range(200))),
        ("free_format.mp2", frame(bit_rate=0, layer=2) * 60), ("tag_256_mb.mp2", id3(size=0x0FFFFFFF) + frame(layer=2) * 60),
    ]


def real(*objects):
    return b".RMF" + struct.pack(">IHII", 18, 1, 0, len(objects)) + b"".join(objects)


def real_object(name, content, size=None):
    return name + struct.pack(">IH", len(content) + 10 if size is None else size, 0) + content


def stream(number, size=50):
    names = b"\x00" + b"\x14audio/x-pn-realaudio"
    kind = b".ra\xfd\0\x05\0\0" + noise(number, size)
    return real_object(b"MDPR", struct.pack(">H", number & 0xFFFF) + b"\xff" * 28 + names + struct.pack(">I", len(kind)) + kind)


def old_real(version, rest):
    return b".ra\xfd" + struct.pack(">H", version) + rest


def page(serial, sequence, segments, flags=0, content=b"", granule=b"\xff" * 8):
    return b"OggS\0" + bytes([flags]) + granule + struct.pack("<III", serial & MOST_32, sequence, 0) + bytes([len(segments)]) + bytes(segments) + content


def flac(rate=44100, smallest=16, kind_and_size=b"\x84", comments=b""):
    facts = struct.pack(">HH", smallest, smallest) + bytes(6) + (rate << 44 | 1 << 41 | 15 << 36 | (1 << 36) - 1).to_bytes(8, "big") + bytes(16)
    return b"fLaC\0\0\0\x22" + facts + comments + kind_and_size + b"\xff\xff\xff" + b"\xff\xf8\xc9\x18" + noise("flac", 3000)


def element(name, content, size=None):
    """Of a Matroska file; size: the bytes that tell it."""
    return name + (struct.pack(">Q", len(content) | 1 << 56) if size is None else size) + content


def matroska(*inside, kind=b"matroska"):
    return element(b"\x1aE\xdf\xa3", element(b"\x42\x82", kind)) + element(b"\x18S\x80g", b"".join(inside), b"\x01" + b"\xff" * 7)


def others():
    indexes = real_object(b"INDX", struct.pack(">IHI", MOST_32, 0, 18))
    streams = [page(n, 0, [30], 2, b"\x01vorbis" + bytes(4) + b"\2\x44\xac\0\0" + bytes(14)) for n in range(12000)]
    attached = element(b"\x19A\xa4i", element(b"\x61\xa7", element(b"\x46\x6e", b"../../x.ttf") + element(b"\x46\x5c", bytes(9), b"\x08\x7f\xff\xff\xff")))
    tracks = b"".join(element(b"\xae", element(b"\xd7", struct.pack(">H", n & 0xFFFF)) + element(b"\x83", b"\2") + element(b"\x86", b"A_OPUS")) for n in range(5000))
    asf = bytes.fromhex("3026b2758e66cf11a6d900aa0062ce6c")
    lyrics = b"".join(variable_length(n) for n in range(2000))
    return [
        ("streams.ra", real(*[stream(n) for n in range(6000)])),
        ("index_loops.rm", real(real_object(b"PROP", b"\xff" * 40), stream(0), indexes)),
        ("object_of_none.rm", real(real_object(b"MDPR", bytes(60), 0) * 50)),
        ("object_of_most.rmm", real(real_object(b"CONT", b"\xff" * 60, MOST_32))),
        ("version_3.ra", old_real(3, b"\xff" * 400)), ("version_4.ra", old_real(4, noise("ra4", 900))),
        ("version_5.rm", old_real(5, b"\0" * 900)),
        ("addresses.ram", b"http://127.0.0.1:9/a.rm\nfile:///dev/zero\npnm://127.0.0.1/x\n--stop--\n" * 2000),
        ("itself.ram", b"file:itself.ram\n" * 100),
        ("words.rmm", b"<smil><body><par><audio src='file:///dev/zero'/></par></body></smil>" * 400),
        ("ogg_streams.ra", b"".join(streams)), ("ogg_empty_segments.ram", page(1, 0, [0] * 255, 2) * 500),
        ("ogg_granules.rm", b"".join(page(7, n, [20], 2 if n == 0 else 0, noise(n, 20), noise(n + 9, 8)) for n in range(4000))),
        ("flac_rate_none.ra", flac(rate=0)), ("flac_block_none.ram", flac(smallest=0)),
        ("flac_cover.rm", flac(comments=b"\x06\xff\xff\xff" + bytes(60))),
        ("flac_comments.rmm", flac(comments=b"\x04\0\0\x0c" + struct.pack("<I", 0) + struct.pack("<I", MOST_32) + bytes(4))),
        ("matroska_attached.rm", matroska(attached)), ("matroska_tracks.ra", matroska(element(b"\x16T\xaek", tracks))),
        ("matroska_depth.rmm", matroska(b"".join(b"\x16T\xaek\x01" + b"\xff" * 7 for _ in range(4000)))),
        ("asf_objects.ra", asf + struct.pack("<QI", 1 << 63, MOST_32) + b"\1\2" + noise("asf", 3000)),
        ("caf.ram", b"caff\0\1\0\0desc" + struct.pack(">Qd", 32, float("nan")) + b"lpcm" + b"\xff" * 20 + b"data" + struct.pack(">q", -1) + lyrics),
        ("wavpack.rmm", b"wvpk" + struct.pack("<I", 0xFFFFFFF0) + noise("wv", 3000)),
        ("tta.rm", b"TTA1" + struct.pack("<HHHII", 1, 65535, 65535, MOST_32, MOST_32) + bytes(4) + noise(5, 2000)),
        ("ape.ra", b"MAC " + struct.pack("<HH", 3990, 0) + struct.pack("<6I", 52, 24, MOST_32, MOST_32, MOST_32, 0) + noise("mac", 3000)),
        ("voc.ram", b"Creative Video File\x1a\x1a\0\x0a\x01\x29\x11".replace(b"Video", b"Voice") + b"\6\0\0\0" * 20000 + b"\7\0\0\0" * 20000),
        ("svx.rmm", block(b"FORM", b"8SVX" + block(b"VHDR", b"\xff" * 20) + block(b"BODY", bytes(3000), MOST_32))),
        ("adts.rm", b"".join(b"\xff\xf1\x50\x80\x00\x1f\xfc" for _ in range(20000))), ("amr.ra", b"#!AMR\n" + b"\x7c" * 40000),
    ]


@functools.cache
def files():
    return [*mpeg_sounds(), *others()]
