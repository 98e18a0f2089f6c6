# SPDX-License-Identifier: GPL-3.0-or-later
"""Files of another kind behind each type of name, and files of several kinds at once."""

import functools
import io
import tarfile
import zipfile
import zlib

from harness import PROJECT

from . import movies, pictures, sequences, sounds, streams
from .parts import bomb, noise

TYPES = ("cda", "bmp", "jpeg", "jpg", "gif", "avi", "mov", "qt", "mid", "rmi", "mpg", "mpv", "mp2", "wav", "mp3", "m1v", "mpeg", "ra",
         "rm", "ram", "rmm", "snd", "au", "aif", "aifc", "aiff")


def archive():
    kept = io.BytesIO()
    with zipfile.ZipFile(kept, "w", zipfile.ZIP_DEFLATED) as out:
        out.writestr("../../made.wav", bytes(20 << 20))
    return kept.getvalue()


def tape():
    kept = io.BytesIO()
    with tarfile.open(fileobj=kept, mode="w") as out:
        out.addfile(tarfile.TarInfo("../../made"))
    return kept.getvalue()


def sources():
    """Content by turns: no type of name gets its own."""
    svg = b"<?xml version='1.0'?><!DOCTYPE s [<!ENTITY x SYSTEM 'file:///etc/hostname'>]><svg xmlns='http://www.w3.org/2000/svg'><text>&x;</text></svg>"
    return [
        sounds.wave(sounds.form()), movies.avi(), pictures.jpeg(), sequences.plain(), streams.SOUND, movies.quick(),
        (PROJECT / "samples" / "city.gif").read_bytes(), (PROJECT / "samples" / "bars.mpg").read_bytes(),
        sounds.aiff(sounds.common()),
        b"\x7fELF\2\1\1" + noise("elf", 4000), b"MZ" + noise("exe", 4000), archive(), tape(), b"%PDF-1.7\n" + noise("pdf", 2000),
        svg, b"#!/bin/sh\ntouch made\n", b"\x1f\x8b\x08" + noise("gz", 2000), bomb(16 << 20), b"<html><script>" + b"x" * 9000,
        b"\xfe\xff" + "text".encode("utf-16-be") * 900,
        b"\0\0\0\x20ftypheic" + noise("heic", 3000), b"RIFF\xff\xff\xff\x7fWEBPVP8L" + noise("webp", 3000),
        b"II*\0\x08\0\0\0\xff\xff" + noise("tiff", 3000), b"8BPS\0\1" + noise("psd", 3000),
        b"\0\0\1\0\xff\xff" + noise("ico", 3000), b"/* XPM */\nstatic char *x[] = {\"99999999 99999999 2 1\"," + b"\"a\"," * 900,
        b"P6 99999999 99999999 255\n" + noise("ppm", 3000), b"v/1\x01" + noise("exr", 3000),
        b"\0\0\0\x0cjP  \r\n\x87\n" + noise("jp2", 3000), b"SQLite format 3\0" + noise("sql", 3000),
    ]


def disguised():
    content = sources()
    own = {"wav": 0, "avi": 1, "jpg": 2, "jpeg": 2, "mid": 3, "rmi": 3, "mp3": 4, "mov": 5, "qt": 5, "gif": 6, "mpg": 7, "mpeg": 7, "aiff": 8, "aif": 8}
    found = []
    for number, kind in enumerate(TYPES):
        for step in (0, 11):
            at = (number * 7 + step) % len(content)
            at = (at + 1) % len(content) if own.get(kind) == at else at
            found.append((f"disguised{step}_{number}.{kind}", content[at]))
    return found


def mixed():
    """Of two kinds at once."""
    gif = (PROJECT / "samples" / "city.gif").read_bytes()
    wave, movie = sounds.wave(sounds.form()), movies.quick()
    return [
        ("gif_and_zip.gif", gif + archive()), ("jpeg_and_movie.jpg", pictures.jpeg() + movie),
        ("wave_and_mp3.wav", wave + streams.SOUND * 3), ("mp3_and_wave.mp3", streams.id3(size=len(wave)) + wave + streams.SOUND),
        ("midi_and_riff.mid", sequences.plain() + wave),
        ("movie_and_script.mov", b"\0\0\0\x24ftypqt  #!/bin/sh\ntouch made\n" + movie),
        ("bitmap_and_script.bmp", b"BM=1;/*" + noise("bm", 60) + b"*/alert(1)"),
        ("sound_of_avi.rmi", b"RIFF" + movies.avi()[4:8] + b"RMID" + movies.avi()[12:]),
        ("gif_of_script.gif", b"GIF89a/*" + bytes(60) + b"*/=1;" + zlib.compress(bytes(900))),
        ("au_and_midi.au", sounds.au(offset=60, rest=sequences.plain() + wave)),
    ]


@functools.cache
def files():
    return [*disguised(), *mixed()]
