# SPDX-License-Identifier: GPL-3.0-or-later
"""What lies in the player's own folder, as somebody else might hand it out: lists, settings, skins. Each is a name and a function
that writes it, given the folder."""

import functools
import os

from . import pictures
from .parts import noise, with_hole

LIST, SETTINGS, SKIN, SHEET, RESUME = "FILE00.INI", "KADO.INI", "DEFAULT.BMP", "DEFAULT.CSV", "RESUME.INI"


def bytes_at(name, content):
    """content: bytes, or a function that writes at a path."""

    def write(folder):
        place = folder / name
        place.unlink(missing_ok=True)
        if callable(content):
            content(place)
        else:
            place.write_bytes(content)

    return write


def lines(section, rows):
    return f"[{section}]\r\n".encode() + b"\r\n".join(rows) + b"\r\n"


def entries(*rows):
    return lines("FILELIST", [b"LISTNAME=x", *(b"LIST%03d=%b" % (number, row) for number, row in enumerate(rows))])


def kinds_of_place():
    """What has the file's name and is none."""
    return [("device", lambda place: os.symlink("/dev/zero", place)), ("pipe", os.mkfifo), ("folder", os.mkdir), ("itself", lambda place: os.symlink(place.name, place)), ("memory", lambda place: os.symlink("/proc/self/mem", place)),
            ("hole", with_hole(b"[", 1 << 40)), ("nowhere", lambda place: os.symlink("/nowhere/x", place))]


def contents(section, key):
    """What any reader of such files may meet."""
    head = f"[{section}]\r\n{key}=".encode()
    return [
        ("empty", b""), ("noise", noise(section, 60_000)), ("zeros", bytes(60_000)),
        ("wide", (head + b"x").decode().encode("utf-16")), ("marked", b"\xef\xbb\xbf" + head + b"x"),
        ("no_ends", head + b"x" * 3_000_000), ("returns", head.replace(b"\n", b"") + b"a|b\r" * 9000),
        ("brackets", b"[" * 300_000), ("equals", b"=" * 300_000 + b"\r\n" + b"=\r\n" * 100_000),
        ("sections", f"[{section}]\r\n".encode() * 200_000), ("keys", head + b"1\r\n" + f"{key}=2\r\n".encode() * 200_000),
        ("cut", head[:-3]), ("nul", head + b"\0a|b\0\r\n"), ("notes", b";" + head * 50_000),
    ]


def lists():
    odd = entries(b"a|/dev/zero", b"b|/proc/self/mem", b"c|/dev/tty", b"d|", b"e|relative.wav", b"f|../../x.wav", b"g|file:///x.wav", b"h|http://127.0.0.1:9/x.wav", b"i|-.wav", b"j|" + b"\xff\xfe.wav", b"k|/" + b"a/" * 240 + b".wav", b"l|\\\\host\\x.wav", b"m|c:\\x.wav")
    shown = entries(*[title + b".wav|/x.wav" for title in (b"<b>x</b>", b"\xe2\x80\xaegnp", b"%s%n", b"\x1b[2J", b"\xff" * 400, "あ".encode() * 160, b"&x&&y", b"a\xcc\x81" * 150, b"\t\t", b"\x7f\x01")])
    return [
        *((name, bytes_at(LIST, content)) for name, content in contents("FILELIST", "LIST000")),
        *((name, bytes_at(LIST, write)) for name, write in kinds_of_place()), ("places", bytes_at(LIST, odd)),
        ("titles", bytes_at(LIST, shown)), ("entries_5000", bytes_at(LIST, entries(*[b"x.wav|/x.wav"] * 5000))),
        ("long_entries", bytes_at(LIST, entries(*[b"x" * 9000 + b".wav|/" + b"y" * 9000] * 256))),
        ("bars", bytes_at(LIST, entries(b"|" * 400, b"a" + b"|" * 400))),
        ("commas", bytes_at(LIST, entries(b"a" + b"," * 400, b","))),
        ("numbers", bytes_at(LIST, lines("FILELIST", [b"LIST-01=a|/a.wav", b"LIST99999999999=a|/a.wav", b"LIST000 =a|/a.wav", b" LIST001= a|/a.wav"]))),
        ("no_dots", bytes_at(LIST, entries(b"title|/no/dot", b"x|/", b"y|.", b"z|..", b"t|//"))),
    ]


def with_conveniences(name, content):
    """Read by a player that has them on alone."""
    write = bytes_at(name, content)

    def write_both(folder):
        bytes_at(SETTINGS, lines("KADO", [b"CONVENIENCES=ON"]))(folder)
        write(folder)

    return write_both


def resumes():
    """What goes on at the next start, and the entries behind the 256th one."""

    def kept(*rows, entry=b"0", at=b"1000", places=()):
        listed = [b"%s%d=%s" % (key, number, row) for number, row in enumerate(rows) for key in (b"TITLE", b"PATH")]
        placed = [b"%d=%s" % (number, place) for number, place in enumerate(places)]
        return lines("RESUME", [b"ENTRY=" + entry, b"OPENAT=" + at]) + lines("PLACES", placed) + lines("LIST", listed)

    numbers = (b"-1", b"2147483647", b"-2147483648", b"99999999999999999999", b"1e9", b"nan", b"&HFFFFFFFF", b"")
    odd = (b"/dev/zero", b"/proc/self/mem", b"/dev/tty", b"x", b"..", b"//", b"\x1b]0;x\x07", b"\xe2\x80\xaegnp.wav", b"\xff\xfe.wav", b"/" + b"a/" * 15_000 + b".wav", b"x" * 200_000 + b".wav", b"http://127.0.0.1:9/x.mp3", b"|", b"<img src=/x>.wav")
    return [
        *((f"{name}", with_conveniences(RESUME, content)) for name, content in contents("RESUME", "ENTRY")),
        *((f"list_{name}", with_conveniences(RESUME, content)) for name, content in contents("LIST", "PATH0")),
        *((name, with_conveniences(RESUME, write)) for name, write in kinds_of_place()),
        *((f"entry_{n}", with_conveniences(RESUME, kept(b"/a.wav", b"/b.wav", entry=number))) for n, number in enumerate(numbers)),
        *((f"at_{n}", with_conveniences(RESUME, kept(b"/a.wav", at=number, places=[number + b"|/a.wav"] * 3))) for n, number in enumerate(numbers)),
        *((f"path_{n}", with_conveniences(RESUME, kept(path, path))) for n, path in enumerate(odd)),
        ("crowd", with_conveniences(RESUME, kept(*[b"/a.wav"] * 200_000, entry=b"9998"))),
        ("places", with_conveniences(RESUME, kept(b"/a.wav", places=[b"5|" + b"/x" * 9000] * 400))),
        ("large", with_conveniences(RESUME, kept(*[b"/" + b"x" * 30_000] * 260))),
        ("too_large", with_conveniences(RESUME, kept(*[b"/" + b"x" * 30_000] * 9999))),
        ("behind_256", with_conveniences(LIST, entries(*[b"a.wav|/a.wav"] * 256, *(title + b".wav|" + path for title, path in zip(odd, odd[1:]))))),
        ("behind_9999", with_conveniences(LIST, entries(*[b"a.wav|/a.wav"] * 12_000) + b"LIST99999=a|/a.wav\r\nLIST256=b|/b.wav\r\n")),
        ("twice", with_conveniences(LIST, entries(*[b"a.wav|/a.wav"] * 300) + b"LIST256=b.wav|/b.wav\r\n" * 100_000)),
    ]


NUMBERS = ("WINDOWPOS", "DELAYTIME", "AUXTYPE", "PATTERN", "MOVIEZOOM", "IMAGEZOOM", "INTERVAL", "FILENUM", "PAGENUM")
KEYS = ("POWER_Click", "MIN_Click", "REPEAT_Click", "SHUFFLE_Click", "PLAY_Click", "PAUSE_Click", "STOP_Click", "PREV_Click", "NEXT_Click", "VOLUME_Up", "VOLUME_Down")


def settings():
    def all_numbers(text):
        return bytes_at(SETTINGS, lines("KADO", [f"{key}={text}".encode() for key in NUMBERS]))

    def skin_of(name):
        return bytes_at(SETTINGS, lines("KADO", [b"BITMAPFILE=" + name, b"TEXTFILE=" + name]))

    return [
        *((name, bytes_at(SETTINGS, content)) for name, content in contents("KADO", "INTERVAL")),
        *((name, bytes_at(SETTINGS, write)) for name, write in kinds_of_place()),
        *((f"numbers_{n}", all_numbers(text)) for n, text in enumerate(("-1", "-32768", "32767", "65536", "99999999999999999999", "1e999", "-1e999", "nan", "inf", "&HFFFFFFFF", "&O7777777777777", "0.5", "--1", "1" * 400, "٣", "0x10", "1,5"))),
        ("keys_same", bytes_at(SETTINGS, lines("KADO", [f"{key}=P".encode() for key in KEYS]))),
        ("keys_odd", bytes_at(SETTINGS, lines("KADO", [key.encode() + b"=" + mark for key, mark in zip(KEYS, (b"\x01", b"\x7f", b"\xff", b"\xe2\x80\xae", b"\x1b", b" ", b"\t", b"=", b"[", b"&", b"\xf0\x9f\x92\xa9"))]))),
        *((f"skin_{n}", skin_of(name)) for n, name in enumerate((b"../../../../etc/hostname", b"/dev/zero", b"..", b".", b"", b"x" * 500, b"\xff\xfe", b"<b>%s%n", b"\xe2\x80\xaePMB", b"a\\..\\b", b"PANELSET", b"~", b"DEFAULT.BMP/"))),
    ]


def sheets():
    """The text of a skin."""
    good = "Panel,0,0,0,0,0,480,150,1\r\n"

    def record(number, *fields):
        return f"x,{number},{','.join(map(str, fields))}\r\n"

    def whole(*rows):
        return bytes_at("PANELSET/" + SHEET, (good + "".join(rows)).encode("utf-8", "surrogateescape"))

    def panel(*sides):
        return bytes_at("PANELSET/" + SHEET, f"Panel,0,0,0,0,0,{sides[0]},{sides[1]},1\r\n".encode())

    return [
        *((f"text_{name}", bytes_at("PANELSET/" + SHEET, content)) for name, content in contents("PANEL", "x")),
        *((f"text_{name}", bytes_at("PANELSET/" + SHEET, write)) for name, write in kinds_of_place()),
        *((f"panel_{n}", panel(*sides)) for n, sides in enumerate(((0, 0), (1, 1), (-1, -1), (65535, 65535), (2**31 - 1, 2**31 - 1), (-(2**31), 5), (99999999999, 1), (30000, 30000), (480, 1)))),
        *((f"places_{n}", whole(*[record(number, value, value, value, value, value, value, 1) for number in range(1, 41)])) for n, value in enumerate((0, -1, 1, 30000, 2**31 - 1, -(2**31), 10**30, "nan", "1e9"))),
        ("outside", whole(*[record(number, 470, 140, 0, 0, 40, 40, 1) for number in range(1, 41)])),
        ("numbers", whole(*[record(number, 1, 1, 1, 1, 9, 9, 1) for number in (-1, 41, 65536, 10**20, "1e3", "&H5")])),
        ("colours", whole(*[record(number, 1, 1, 1, 1, 90, 9, "&HFFFFFFFFFFFF") for number in range(28, 41)])),
        ("records_100000", whole(*[record(2 + n % 39, n % 400, n % 100, 0, 0, 20, 20, 1) for n in range(100_000)])),
        ("quotes", whole('"' * 300_000)), ("quoted", whole(*[f'"x""{"y" * 5000}",2,"1","1","1","1","9","9","1"\r\n'] * 200)),
        ("commas", whole("," * 500_000)), ("used_not", whole(*[record(number, 0, 0, 0, 0, 0, 0, 0) for number in range(1, 41)])),
    ]


def bitmaps():
    """The picture of a skin."""
    found = [(name, content) for name, content in pictures.files() if name.endswith(".bmp")]
    return [*((f"picture_{name}", bytes_at("PANELSET/" + SKIN, content)) for name, content in found), *((f"picture_{name}", bytes_at("PANELSET/" + SKIN, write)) for name, write in kinds_of_place()),
            ("dense_odd", bytes_at("PANELSET/DEFAULT@2X.BMP", pictures.bitmap(7, 7, 24, rest=bytes(200)))), ("dense_noise", bytes_at("PANELSET/DEFAULT@2X.BMP", noise("dense", 900)))]


@functools.cache
def all_of(kind):
    return {"lists": lists, "settings": settings, "resumes": resumes, "skins": lambda: [*sheets(), *bitmaps()]}[kind]()
