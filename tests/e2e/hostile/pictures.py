# SPDX-License-Identifier: GPL-3.0-or-later
"""Pictures beyond those of the stories "pictures: hostile ones …": PNG, GIF, BMP and JPEG, whatever their name says."""

import functools
import io
import struct
import zlib

from PIL import Image

from stories.hostile_pictures import bitmap, chunk, gif, png

from .parts import HALF_32, MOST_32, bomb, nested, noise, with_hole

DATA = zlib.compress(bytes(8 * 25), 9)
MARK = b"\x89PNG\r\n\x1a\n"


def facts(width=8, height=8, depth=8, kind=2, packing=0, filtering=0, lacing=0):
    return chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, depth, kind, packing, filtering, lacing))


def pieces(*chunks):
    return MARK + b"".join(chunks) + chunk(b"IEND", b"")


def data(content=DATA):
    return chunk(b"IDAT", content)


def pngs():
    text = b"".join(chunk(b"tEXt", b"k%d\0v" % n) for n in range(60_000))
    moving = chunk(b"acTL", struct.pack(">II", MOST_32, 0))
    frame = chunk(b"fcTL", struct.pack(">IIIIIHHBB", 0, 8, 8, 0, 0, 0, 0, 0, 0))
    part = chunk(b"fcTL", struct.pack(">IIIIIHHBB", 1, MOST_32, MOST_32, MOST_32, MOST_32, 0, 0, 9, 9)) + chunk(b"fdAT", struct.pack(">I", 2) + DATA)
    return [
        ("texts_60000.gif", pieces(facts(), text, data())),
        ("profile_bomb.bmp", pieces(facts(), chunk(b"iCCP", b"p\0\0" + bomb(256 << 20)), data())),
        ("text_bomb.jpg", pieces(facts(), chunk(b"iTXt", b"k\0\1\0\0\0" + bomb(256 << 20)), data())),
        ("moving.gif", pieces(facts(), moving, frame, data(), part * 3000)), ("sides_none.bmp", pieces(facts(0, 0), data())),
        ("sides_most.jpg", pieces(facts(MOST_32, MOST_32), data())), ("sides_31.gif", pieces(facts(2**31 - 1, 1), data())),
        ("depth_odd.bmp", pieces(facts(depth=7), data())), ("kind_odd.jpg", pieces(facts(kind=5), data())),
        ("laced_bomb.gif", pieces(facts(30000, 1300, 1, 0, lacing=1), data(bomb(8 << 20)))),
        ("packing.bmp", pieces(facts(packing=9, filtering=9, lacing=9), data())),
        ("filters.jpg", pieces(facts(64, 64), data(zlib.compress(b"\xff" * 193 * 64)))),
        ("no_palette.gif", pieces(facts(kind=3), data())),
        ("palette_odd.bmp", pieces(facts(kind=3), chunk(b"PLTE", bytes(7)), data())),
        ("palette_most.jpg", pieces(facts(kind=3), chunk(b"PLTE", bytes(3 * 4096)), chunk(b"tRNS", bytes(5000)), data())),
        ("facts_twice.gif", pieces(facts(), facts(4000, 4000), data())), ("no_data.bmp", pieces(facts())),
        ("data_empty.jpg", pieces(facts(), data(b"") * 60_000, data())),
        ("data_bytes.gif", pieces(facts(), *[data(DATA[n:n + 1]) for n in range(len(DATA))])),
        ("chunk_most.bmp", MARK + facts() + struct.pack(">I", 0x7FFFFFFF) + b"IDAT" + DATA),
        ("chunk_negative.jpg", MARK + facts() + struct.pack(">I", MOST_32) + b"tEXt" + bytes(50)),
        ("checks_wrong.gif", MARK + facts()[:-4] + b"xxxx" + data()),
        ("gamma_none.bmp", pieces(facts(), chunk(b"gAMA", bytes(4)), chunk(b"cHRM", bytes(32)), data())),
        ("density_most.jpg", pieces(facts(), chunk(b"pHYs", b"\xff" * 8 + b"\1"), data())),
        ("wide_bomb.gif", png(39000, 1000, 16, 6, b"", bytes(39_000 * 80))),
    ]


def lzw(rest=b"\2\2\x44\1\0", width=40, height=30, palette=0x80, colours=b"\0\0\0\xff\xff\xff", back=0, left=0, top=0, local=0):
    return b"GIF89a" + struct.pack("<HHBBB", width, height, palette, back, 0) + colours + b"," + struct.pack("<HHHHB", left, top, width, height, local) + rest + b";"


def blocks(content):
    return b"".join(bytes([len(part)]) + part for part in (content[n:n + 255] for n in range(0, len(content), 255))) + b"\0"


def gifs():
    comments = b"!\xfe" + blocks(b"c" * 900_000)
    return [
        ("no_pictures.gif", gif(40, 30, 0)), ("code_size_none.gif", lzw(b"\0" + blocks(noise("z", 500)))),
        ("code_size_most.gif", lzw(b"\xff" + blocks(noise("y", 500)))),
        ("code_size_twelve.gif", lzw(b"\x0c" + blocks(noise("x", 5000)))),
        ("codes_first.gif", lzw(b"\2" + blocks(b"\xff" * 4000))), ("clears.gif", lzw(b"\2" + blocks(b"\x24\x49\x92" * 300_000))),
        ("bomb.gif", lzw(b"\x08" + blocks(b"\x00\x01\x04\x18\x50\xc0" * 60_000), 8000, 5000)),
        ("no_end.gif", lzw(b"\2\xff" + bytes(40))[:-1]),
        ("palette_cut.gif", lzw(palette=0xF7, colours=bytes(20))), ("back_most.gif", lzw(back=255)),
        ("outside.gif", lzw(left=65535, top=65535)), ("sides_none.gif", lzw(width=0, height=0)),
        ("extensions.gif", b"GIF89a" + struct.pack("<HHBBB", 40, 30, 0, 0, 0) + b"!\xff\0" * 200_000 + b";"),
        ("comments.gif", b"GIF89a" + struct.pack("<HHBBB", 40, 30, 0, 0, 0) + comments * 3 + b";"),
        ("loops.gif", b"GIF89a" + struct.pack("<HHBBB", 40, 30, 0, 0, 0) + b"!\xff\x0bNETSCAPE2.0\3\1\xff\xff\0" * 9000 + b";"),
        ("old_mark.gif", b"GIF00z" + bytes(400)), ("separators.gif", b"GIF89a" + bytes(7) + b"," * 300_000),
        ("local_palettes.gif", b"GIF89a" + struct.pack("<HHBBB", 4000, 3000, 0, 0, 0) + (b"," + struct.pack("<HHHHB", 0, 0, 4000, 3000, 0x87) + bytes(768) + b"\2\1\x44\0") * 3000 + b";"),
    ]


def header(size=40, width=4, height=4, planes=1, bits=24, packing=0, image=0, colours=0, start=54, rest=b""):
    return b"BM" + struct.pack("<IIIIiiHHIIiiII", MOST_32, 0, start & MOST_32, size & MOST_32, width, height, planes, bits, packing, image, 0, 0, colours & MOST_32, 0) + rest


def bmps():
    back = b"\0\2\xff\xff" * 100_000
    return [
        ("palette_most.bmp", header(bits=8, colours=MOST_32, rest=bytes(2000))),
        ("palette_cut.bmp", header(bits=8, colours=256, rest=bytes(10))),
        ("palette_past.bmp", header(bits=1, colours=9, rest=bytes(400))), ("start_none.bmp", header(start=0, rest=bytes(64))),
        ("start_most.bmp", header(start=MOST_32, rest=bytes(64))), ("start_inside.bmp", header(start=20, rest=bytes(64))),
        ("size_none.bmp", header(size=0, rest=bytes(64))), ("size_most.bmp", header(size=MOST_32, rest=bytes(64))),
        ("size_odd.bmp", header(size=41, rest=bytes(64))),
        ("core.bmp", b"BM" + struct.pack("<IIIIHHHH", 0, 0, 26, 12, 65535, 65535, 1, 24)),
        ("bits_none.bmp", header(bits=0, packing=4, rest=bytes(64))), ("bits_odd.bmp", header(bits=3, rest=bytes(64))),
        ("bits_most.bmp", header(bits=65535, rest=bytes(64))), ("planes_most.bmp", header(planes=65535, rest=bytes(64))),
        ("top_down_most.bmp", header(height=-(2**31), width=1, bits=32, rest=bytes(64))),
        ("width_negative.bmp", header(width=-4, rest=bytes(64))),
        ("width_most.bmp", header(width=2**31 - 1, height=1, bits=1, rest=bytes(64))),
        ("runs_outside.bmp", bitmap(40, 40, 8, 1, bytes(1024) + back)),
        ("runs_back.bmp", bitmap(40, 40, 8, 1, bytes(1024) + b"\xff\1" * 400_000)),
        ("runs_of_four.bmp", bitmap(40, 40, 4, 2, bytes(64) + b"\0\xff" + noise("four", 100_000))),
        ("runs_wide.bmp", bitmap(39_000, 1000, 8, 1, bytes(1024) + b"\0\1" * 50)),
        ("runs_top_down.bmp", bitmap(40, -40, 8, 1, bytes(1024) + b"\0\1")),
        ("fields_none.bmp", header(packing=3, bits=32, rest=bytes(12 + 64))),
        ("fields_most.bmp", header(packing=3, bits=16, rest=b"\xff" * 12 + bytes(64))),
        ("fields_apart.bmp", header(packing=3, bits=32, rest=struct.pack("<III", 0x80000001, 0x40000002, 5) + noise("f", 64))),
        ("jpeg_inside.bmp", header(packing=4, bits=0, rest=jpeg())),
        ("png_inside.bmp", header(packing=5, bits=0, rest=png(8, 8, 8, 2, b"", bytes(200)))),
        ("array.bmp", b"BA" + struct.pack("<IIHH", 40, 14, 1, 1) * 5000),
        ("profile.bmp", header(size=124, rest=b"\xff" * 84 + bytes(64))),
    ]


@functools.cache
def jpeg(size=(64, 48), kind="RGB", **options):
    kept = io.BytesIO()
    Image.new(kind, size, 90 if kind == "L" else None).save(kept, "JPEG", **options)
    return kept.getvalue()


def changed(mark, at, content, source=None):
    """A good one with other bytes behind a mark."""
    whole = bytearray(source or jpeg())
    place = whole.index(b"\xff" + bytes([mark])) + 2 + at
    whole[place:place + len(content)] = content
    return bytes(whole)


def between(*segments):
    return jpeg()[:2] + b"".join(segments) + jpeg()[2:]


def segment(mark, content, size=None):
    return b"\xff" + bytes([mark]) + struct.pack(">H", (len(content) + 2 if size is None else size) & 0xFFFF) + content


def exif(entries, count=None, to_next=0):
    rows = b"".join(struct.pack("<HHII", *row) for row in entries)
    return segment(0xE1, b"Exif\0\0II*\0\x08\0\0\0" + struct.pack("<H", (len(entries) if count is None else count) & 0xFFFF) + rows + struct.pack("<I", to_next))


def jpegs():
    tables = segment(0xDB, b"".join(bytes([0x10 | n % 4]) + b"\xff" * 128 for n in range(60)))
    codes = segment(0xC4, b"\0" + b"\xff" * 16 + bytes(4000))
    loop = exif([(0x8769, 4, 1, 8), (0x8769, 4, 1, 8), (0x0112, 3, 1, 6)], to_next=8)
    scan = jpeg(progressive=True)
    end = scan.rfind(b"\xff\xda")
    return [
        ("sampling_none.jpg", changed(0xC0, 9, b"\0")), ("sampling_most.jpeg", changed(0xC0, 9, b"\xff")),
        ("sampling_thin.jpg", changed(0xC0, 9, b"\x41\0\2\x14")), ("parts_none.jpeg", changed(0xC0, 7, b"\0")),
        ("parts_most.jpg", changed(0xC0, 7, b"\xff")),
        ("bits_twelve.jpeg", changed(0xC0, 2, b"\x0c")), ("bits_none.jpg", changed(0xC0, 2, b"\0")),
        ("sides_none.jpeg", changed(0xC0, 3, bytes(4))), ("sides_most.jpg", changed(0xC0, 3, b"\xff\xff\xff\xff")),
        ("height_later.jpeg", changed(0xC0, 3, b"\0\0") + segment(0xDC, b"\xff\xff")),
        ("arithmetic.jpg", changed(0xC0, -1, b"\xc9")), ("lossless.jpeg", changed(0xC0, -1, b"\xc3")),
        ("hierarchical.jpg", changed(0xC0, -1, b"\xc5")), ("four_inks.jpg", jpeg(kind="CMYK")),
        ("four_inks_turned.jpeg", jpeg(kind="CMYK")[:2] + segment(0xEE, b"Adobe\0\x64\xff\xff\xff\xff\xff") + jpeg(kind="CMYK")[2:]),
        ("restarts.jpg", between(segment(0xDD, b"\xff\xff"), segment(0xDD, b"\0\1")) + b"\xff\xd0" * 60_000),
        ("restarts_one.jpeg", between(segment(0xDD, b"\0\1"))), ("tables.jpg", between(*[tables] * 300)),
        ("codes.jpeg", between(codes)), ("codes_overfull.jpg", between(segment(0xC4, b"\0" + b"\2" * 16 + bytes(32)))),
        ("exif_loop.jpg", between(loop)), ("exif_turns.jpeg", between(*[exif([(0x0112, 3, 1, n)]) for n in range(20)])),
        ("exif_count.jpg", between(exif([], 65535))),
        ("exif_offsets.jpeg", between(exif([(0x0112, 3, MOST_32, MOST_32), (0x0112, 3, 1, 8)], to_next=MOST_32))),
        ("exif_most.jpg", between(exif([(n, 2, MOST_32, HALF_32) for n in range(5000)]))),
        ("comments.jpeg", between(*[segment(0xFE, b"x" * 65000)] * 200)), ("segment_none.jpg", between(segment(0xE5, b"", 0))),
        ("segment_one.jpeg", between(segment(0xE5, b"", 1))), ("marks.jpg", jpeg()[:2] + b"\xff" * 400_000 + jpeg()[2:]),
        ("starts.jpeg", b"\xff\xd8" * 100_000 + jpeg()),
        ("no_end.jpg", jpeg()[:-40]), ("no_scan.jpeg", jpeg()[:jpeg().index(b"\xff\xda")]),
        ("profile_parts.jpg", between(*[segment(0xE2, b"ICC_PROFILE\0" + bytes((n & 255, 255)) + b"\xff" * 3000) for n in range(255)])),
        ("scan_parts.jpeg", changed(0xDA, 2, b"\4\1\0\2\1\3\1\4\0")),
        ("scan_again.jpg", scan[:-2] + scan[end:-2] * 3000 + b"\xff\xd9"),
        ("hole_in_scan.jpeg", with_hole(jpeg()[:-2], 250 << 20)),
        ("thumb_in_thumb.jpg", nested(300, lambda size: b"\xff\xd8\xff\xe1" + struct.pack(">H", min(size + 16, 65535)) + b"Exif\0\0II*\0\0\0\0\0", jpeg())),
    ]


@functools.cache
def files():
    return [*pngs(), *gifs(), *bmps(), *jpegs()]
