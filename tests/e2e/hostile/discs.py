# SPDX-License-Identifier: GPL-3.0-or-later
"""Sheets and images of discs that lie: a folder each, and the track in it that is opened."""

import functools
import os

from .parts import link, with_hole
from .sounds import form, wave

SECTOR = 2352


def sheet(*lines, file='FILE "disc.bin" BINARY'):
    return "\r\n".join((file, *lines)).encode() + b"\r\n"


def track(number, *places, kind="AUDIO"):
    return (f"  TRACK {number:02} {kind}", *(f"    INDEX {index:02} {time}" for index, time in places))


def times(count):
    return [line for n in range(count) for line in track(n + 1, (1, f"00:{n // 75:02}:{n % 75:02}"))]


def disc(text, image=bytes(SECTOR * 300), name="disc.bin", number=2, more=()):
    """A writer of a folder's sheet, image and track, given the track's path."""

    def write(path):
        folder = path.parent
        (folder / "disc.cue").write_bytes(text)
        for each, content in ((name, image), *more):
            if callable(content):
                content(folder / each)
            elif content is not None:
                (folder / each).write_bytes(content)
        path.write_bytes(b"")

    write.number = number
    return write


def pipe(path):
    os.mkfifo(path)


@functools.cache
def files():
    two = (*track(1, (1, "00:00:00")), *track(2, (1, "00:02:00")))
    other = [f'FILE "{name}" BINARY' for name in ("../disc.bin", "/dev/zero", "..\\..\\disc.bin", "disc.cue", ".", "")]
    return [
        ("tracks_99", disc(sheet(*times(99)))), ("tracks_200", disc(sheet(*times(200)))), ("tracks_none", disc(sheet())),
        ("track_twice", disc(sheet(*track(2, (1, "00:00:00")), *track(2, (1, "00:01:00"))))),
        ("back", disc(sheet(*track(1, (1, "09:00:00")), *track(2, (1, "00:00:01"))))),
        ("far", disc(sheet(*track(1, (1, "00:00:00")), *track(2, (1, "99999:59:74"))))),
        ("huge_times", disc(sheet(*track(1, (1, "00:00:00")), *track(2, (1, "9" * 400 + ":00:00"))))),
        ("odd_times", disc(sheet(*track(1, (1, "00:99:99")), *track(2, (1, "-1:-1:-1"))))),
        ("pregap_most", disc(sheet("  TRACK 01 AUDIO", "    PREGAP 999:59:74", "    INDEX 01 00:00:00", *track(2, (1, "00:01:00"))))),
        ("indexes", disc(sheet(*track(1, (1, "00:00:00")), *track(2, *[(n, "00:01:%02d" % (n % 75)) for n in range(1, 100)])))),
        ("index_none", disc(sheet("  TRACK 01 AUDIO", "  TRACK 02 AUDIO"))),
        ("track_before_file", disc(b"TRACK 01 AUDIO\r\nINDEX 01 00:00:00\r\n" + sheet(*two))),
        ("data", disc(sheet(*track(1, (1, "00:00:00"), kind="MODE1/2048"), *track(2, (1, "00:02:00"))))),
        ("cdg", disc(sheet(*track(1, (1, "00:00:00"), kind="CDG"), *track(2, (1, "00:02:00"), kind="MODE9/65535")))),
        ("empty_image", disc(sheet(*two), b"")), ("no_image", disc(sheet(*two), None)),
        ("odd_image", disc(sheet(*two), bytes(SECTOR * 150 + 7))), ("hole", disc(sheet(*two), with_hole(b"", 1 << 62))),
        ("itself", disc(sheet(*two, file='FILE "disc.cue" BINARY'), None)), ("linked", disc(sheet(*two), link("disc.bin"))),
        ("device", disc(sheet(*two), link("/dev/zero"))),
        ("pipe", disc(sheet(*two), pipe)), ("folder", disc(sheet(*two), lambda path: path.mkdir())),
        ("elsewhere", disc("\r\n".join(line for name in other for line in (name, *two)).encode())),
        ("files_500", disc("\r\n".join(line for n in range(500) for line in (f'FILE "{n}.bin" BINARY', *track(1 + n % 99, (1, "00:00:00")))).encode())),
        ("wave", disc(sheet(*two, file='FILE "disc.wav" WAVE'), wave(form(rate=0xFFFFFFFF)), "disc.wav")),
        ("wave_lies", disc(sheet(*two, file='FILE "disc.wav" WAVE'), wave(form(), size=0xFFFFFFFF), "disc.wav")),
        ("wave_of_noise", disc(sheet(*two, file='FILE "disc.mp3" MP3'), b"\xff\xfb" * 200_000, "disc.mp3")),
        ("motorola", disc(sheet(*two, file="FILE disc.bin MOTOROLA"))),
        ("long_lines", disc(b"REM " + b"x" * 60_000 + b"\r\n" + sheet(*two))),
        ("too_long", disc(b"REM x\r\n" * 20_000 + sheet(*two))), ("no_ends", disc(sheet(*two).replace(b"\r\n", b"\0"))),
        ("quotes", disc(b'FILE "disc.bin BINARY\r\nTITLE "' + b'"' * 900 + sheet(*two))),
        ("titles", disc(sheet('TITLE "<b>%s%n&amp;\u202e</b>"', *two))),
        ("utf16", disc(sheet(*two).decode().encode("utf-16"))), ("bytes", disc(bytes(range(256)) * 200)),
        ("sheets_100", disc(sheet(*two), more=[(f"disc{n}.cue", sheet(*two)) for n in range(100)])),
        ("sheet_link", disc(b"", more=[("a.cue", link("/dev/zero")), ("b.cue", link("b.cue")), ("c.cue", pipe)])),
        ("track_none", disc(sheet(*two), number=0)), ("track_past", disc(sheet(*two), number=99)),
        ("toc", disc(b"CD_DA\nTRACK AUDIO\nFILE \"disc.bin\" 0\n", more=[("disc.toc", b'CD_DA\nTRACK AUDIO\nDATAFILE "/dev/zero"\n'), ("disc.ccd", b"[CloneCD]\nVersion=3\n"), ("disc.nrg", b"NER5" + b"\xff" * 8)])),
    ]
