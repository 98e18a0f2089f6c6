# SPDX-License-Identifier: GPL-3.0-or-later
"""Files that are to fill the memory: tables, covers, frames and notes of hundreds of megabytes, all holes on the disk."""

import functools
import struct

from . import movies, sequences, sounds, streams
from .parts import MOST_32, atom, block, chunk, little, riff

MB = 1 << 20


def sparse(size, *pieces):
    """A writer of a file of holes with pieces at their places: (place, bytes)."""

    def write(path):
        with open(path, "wb") as out:
            out.truncate(size)
            for place, content in pieces:
                out.seek(place)
                out.write(content)

    return write


def then_hole(start, hole, end=b""):
    return sparse(len(start) + hole + len(end), (0, start), (len(start) + hole, end))


def flac_covers(count, each=15 * MB):
    """Covers in a row, each as large as a cover may be."""
    facts = streams.flac(kind_and_size=b"")[:4 + 4 + 34]
    head = struct.pack(">II", 3, 10) + b"image/jpeg" + struct.pack(">I", 0) + struct.pack(">5I", 1, 1, 24, 0, each - 42)
    pieces, at = [(0, facts)], len(facts)
    for number in range(count):
        last = 0x80 if number == count - 1 else 0
        pieces.append((at, bytes([6 | last]) + each.to_bytes(3, "big") + head))
        at += 4 + each
    pieces.append((at, streams.flac()[-3004:]))
    return sparse(at + 3004, *pieces)


def tables_of(name, element, count):
    """A QuickTime file whose table of that name is a hole; the rest of its tables are small."""
    tables = movies.good_tables()
    place = tables.index(name) - 4
    size = struct.unpack_from(">I", tables, place)[0]
    fixed = 20 if name == b"stsz" else 16
    table = struct.pack(">I", fixed + count * element) + name + bytes(4) + (bytes(4) if name == b"stsz" else b"") + struct.pack(">I", count)
    whole = movies.quick(movies.track(tables=tables[:place] + b"HERE" + tables[place + size:]))
    before, after = whole.split(b"HERE")
    more = fixed + count * element - 4
    # Each atom around it grows by as much.
    grown = bytearray(before)
    for outer in (b"moov", b"trak", b"mdia", b"minf", b"stbl"):
        at = before.rindex(outer) - 4
        struct.pack_into(">I", grown, at, min(struct.unpack_from(">I", grown, at)[0] + more, MOST_32))
    return sparse(len(grown) + more + 4 + len(after), (0, bytes(grown) + table), (len(grown) + more + 4, after))


def cover_atoms(count, each):
    """Covers of a QuickTime file."""
    data = struct.pack(">I", each + 16) + b"data" + struct.pack(">II", 13, 0)
    cover = struct.pack(">I", count * (each + 16) + 8) + b"covr"
    heads = [("ilst", len(cover) + count * (each + 16)), ]
    inner = heads[0][1] + 8
    listed = struct.pack(">I", inner) + b"ilst"
    handler = atom(b"hdlr", bytes(8) + b"mdir" + bytes(13))
    meta = struct.pack(">I", inner + 12 + len(handler)) + b"meta" + bytes(4) + handler
    udta = struct.pack(">I", inner + 20 + len(handler)) + b"udta"
    plain = movies.quick()
    moov = plain.index(b"moov") - 4
    grown = bytearray(plain)
    struct.pack_into(">I", grown, moov, struct.unpack_from(">I", plain, moov)[0] + inner + 20 + len(handler))
    start = bytes(grown) + udta + meta + listed + cover
    pieces = [(0, start)] + [(len(start) + n * (each + 16), data) for n in range(count)]
    return sparse(len(start) + count * (each + 16), *pieces)


def attachments(count, each):
    """Of a Matroska file, in front of a track."""
    size = lambda number: struct.pack(">Q", number | 1 << 56)  # noqa: E731
    name = streams.element(b"\x46\x6e", b"c.jpg") + streams.element(b"\x46\x60", b"image/jpeg") + streams.element(b"\x46\xae", b"\1")
    start = streams.element(b"\x1aE\xdf\xa3", streams.element(b"\x42\x82", b"matroska")) + b"\x18S\x80g\x01" + b"\xff" * 7
    whole = len(name) + 2 + 8 + each
    pieces, at = [(0, start + b"\x19A\xa4i" + size(count * (whole + 10)))], len(start) + 12
    for _ in range(count):
        pieces.append((at, b"\x61\xa7" + size(whole) + name + b"\x46\x5c" + size(each)))
        at += whole + 10
    track = streams.element(b"\xae", streams.element(b"\xd7", b"\1") + streams.element(b"\x83", b"\2") + streams.element(b"\x86", b"A_PCM/INT/LIT")
                            + streams.element(b"\xe1", streams.element(b"\xb5", struct.pack(">d", 44100)) + streams.element(b"\x62\x64", b"\x10")))
    end = streams.element(b"\x16T\xaek", track) + streams.element(b"\x1fC\xb6u", streams.element(b"\xe7", b"\0") + streams.element(b"\xa3", b"\x81\0\0\x80" + bytes(40_000)) * 40)
    return sparse(at + len(end), *pieces, (at, end))


def ogg_packet(pages):
    """One packet over many pages."""
    step = 27 + 255 + 65025
    return sparse(step * pages, *((n * step, streams.page(1, n, [255] * 255, 2 if n == 0 else 1, b"\x01vorbis" if n == 0 else b"")) for n in range(pages)))


def frames(count, each):
    """An AVI of large frames."""
    head = movies.avi(pictures=[])
    head = head[:-4 - 8] + b"LIST" + little(min(count * (each + 8) + 4, MOST_32)) + b"movi"
    return sparse(len(head) + count * (each + 8), (0, head), *((len(head) + n * (each + 8), b"00dc" + little(each)) for n in range(count)))


def late_frames(count, each):
    """An AVI that begins well."""
    plain = movies.avi()
    start = plain[:4] + little(MOST_32) + plain[8:]
    place = start.index(b"movi") - 4
    start = start[:place] + little(MOST_32) + start[place + 4:]
    return sparse(len(start) + count * (each + 8), (0, start), *((len(start) + n * (each + 8), b"00dc" + little(each)) for n in range(count)))


def late_blocks(count, each):
    """A Matroska file that begins well."""
    size = lambda number: struct.pack(">Q", number | 1 << 56)  # noqa: E731
    track = streams.element(b"\xae", streams.element(b"\xd7", b"\1") + streams.element(b"\x83", b"\2") + streams.element(b"\x86", b"A_PCM/INT/LIT")
                            + streams.element(b"\xe1", streams.element(b"\xb5", struct.pack(">d", 44100)) + streams.element(b"\x9f", b"\2") + streams.element(b"\x62\x64", b"\x10")))
    start = streams.element(b"\x1aE\xdf\xa3", streams.element(b"\x42\x82", b"matroska")) + b"\x18S\x80g\x01" + b"\xff" * 7 + streams.element(b"\x16T\xaek", track)
    blocks = b"".join(streams.element(b"\xa3", b"\x81" + struct.pack(">h", n * 100) + b"\x80" + sounds.SAMPLES[:17640]) for n in range(20))
    start += b"\x1fC\xb6u\x01" + b"\xff" * 7 + streams.element(b"\xe7", b"\0") + blocks
    return sparse(len(start) + count * (each + 9), (0, start), *((len(start) + n * (each + 9), b"\xa3" + size(each) + b"\x81\x08\0\x80") for n in range(count)))


def tag_of(name, inside, size):
    return then_hole(streams.id3(streams.tag(name, inside, size), size=size + 10), size - len(inside), streams.SOUND)


@functools.cache
def files():
    found = []
    for kind, plain in ((".wav", sounds.wave(sounds.form())), (".avi", movies.avi())):
        text = riff(b"INFO", chunk(b"INAM", b"", 900 * MB), name=b"LIST", size=900 * MB + 12)
        found += [(f"note_900_mb{kind}", then_hole(riff(plain[8:12], text, size=MOST_32), 900 * MB, plain[12:])),
                  (f"covers_100{kind}", flac_covers(100)), (f"covers_packed{kind}", cover_atoms(12, 200 * MB)),
                  (f"attachments_30{kind}", attachments(30, 100 * MB)), (f"attachment_2_gb{kind}", attachments(1, 2048 * MB)),
                  (f"packet_600_mb{kind}", ogg_packet(9600)), (f"frames_1_gb{kind}", frames(3, 1000 * MB)),
                  (f"frames_60_mb{kind}", frames(60, 60 * MB)),
                  (f"late_frames_1{kind}", late_frames(30, 1 * MB)), (f"late_frames_72{kind}", late_frames(30, 72 * MB)),
                  (f"late_frames_200{kind}", late_frames(30, 200 * MB)),
                  (f"late_blocks_72{kind}", late_blocks(30, 72 * MB)), (f"late_blocks_90{kind}", late_blocks(30, 90 * MB)),
                  (f"late_blocks_400{kind}", late_blocks(8, 400 * MB)),
                  (f"index_2_gb{kind}", then_hole(movies.avi(index=chunk(b"idx1", b"", 2048 * MB)), 2048 * MB))]
    for name, element in ((b"stsz", 4), (b"stts", 8), (b"stsc", 12), (b"stco", 4)):
        for kind in (".mov", ".aiff"):
            found.append((f"table_{name.decode()}{kind}", tables_of(name, element, 200 * MB)))
    return [
        *found, ("cover_255_mb.mp3", tag_of(b"APIC", streams.PICTURE, 255 * MB)),
        ("text_255_mb.mp3", tag_of(b"TXXX", b"\3k\0", 255 * MB)),
        ("private_255_mb.mp3", tag_of(b"PRIV", b"x\0", 255 * MB)),
        ("object_255_mb.mp3", tag_of(b"GEOB", b"\0a\0b\0c\0", 255 * MB)),
        ("bext.wav", then_hole(riff(b"WAVE", chunk(b"bext", b"", 900 * MB), size=MOST_32), 900 * MB, sounds.wave(sounds.form())[12:])),
        ("form_900_mb.wav", then_hole(riff(b"WAVE", chunk(b"fmt ", struct.pack("<HHIIHHH", 0x161, 2, 44100, 4, 4, 16, 65535), 900 * MB), size=MOST_32), 900 * MB)),
        ("notes.aiff", then_hole(b"FORM" + struct.pack(">I", MOST_32) + b"AIFF" + block(b"ANNO", b"", 900 * MB), 900 * MB, sounds.aiff(sounds.common())[12:])),
        ("cookie.aif", then_hole(b"caff\0\1\0\0" + b"desc" + struct.pack(">Qd4sIIIII", 32, 44100, b"alac", 0, 0, 4096, 2, 16) + b"kuki" + struct.pack(">Q", 900 * MB), 900 * MB)),
        ("packets.aifc", then_hole(b"caff\0\1\0\0" + b"desc" + struct.pack(">Qd4sIIIII", 32, 44100, b"alac", 0, 0, 4096, 2, 16) + b"pakt" + struct.pack(">QqqII", 900 * MB, 1 << 29, 1 << 40, 0, 0), 900 * MB)),
        ("seeks.ra", then_hole(b"TTA1" + struct.pack("<HHHII", 1, 2, 16, 44100, MOST_32) + bytes(4), 900 * MB)),
        ("seeks.rm", then_hole(b"MAC " + struct.pack("<HH", 3990, 0) + struct.pack("<11I", 52, 24, 900 * MB, 44, 0, 0, 0, 0, 0, 0, 0) + struct.pack("<HHIIIHHI", 2000, 0, 1, 1, 220 * MB, 16, 2, 44100), 900 * MB)),
        ("track_1_gb.mid", then_hole(sequences.head() + b"MTrk" + struct.pack(">I", 1 << 30), 1 << 30)),
        ("data_1_gb.rmi", then_hole(riff(b"RMID", chunk(b"data", b"", 1 << 30), size=MOST_32), 1 << 30, sequences.plain())),
        ("slice_2_gb.m1v", then_hole(movies.sequence() + movies.PICTURE + b"\0\0\1\1\xff", 2048 * MB)),
        ("stream_2_gb.mpg", then_hole(movies.pack(movies.stream(movies.sequence() + movies.PICTURE)), 2048 * MB)),
        ("parameters_1_gb.mpv", then_hole(b"\0\0\0\1\x67\x42\0\x1e\xff\xff", 1 << 30, b"\0\0\0\1\x68")),
        ("body_1_gb.snd", then_hole(block(b"FORM", b"8SVX" + block(b"VHDR", b"\xff" * 20) + block(b"ANNO", b"", 900 * MB), MOST_32), 900 * MB)),
    ]
