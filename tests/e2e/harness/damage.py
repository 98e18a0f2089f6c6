# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes damaged media files of good ones: bytes flipped, cut, swapped, wiped, told wrong. The same seed, the same files."""

import random

from . import PROJECT

SEED = 20
TONES = PROJECT / "tests" / "data" / "sound"


def good_files():
    """One of each kind that can be opened."""
    samples = [path for path in sorted((PROJECT / "samples").iterdir()) if path.suffix not in ("", ".txt")]
    return [*samples, *(TONES / f"tone.{kind}" for kind in ("ra", "rm", "snd"))]


def flip(data, chance):
    """Some bits anywhere."""
    for _ in range(chance.choice((1, 8, 64, 512))):
        data[chance.randrange(len(data))] ^= 1 << chance.randrange(8)
    return data


def flip_head(data, chance):
    """Some bytes where a file tells what it is and how long."""
    for _ in range(chance.randrange(1, 12)):
        data[chance.randrange(min(len(data), 128))] = chance.choice((0, 1, 0x7F, 0x80, 0xFF, chance.randrange(256)))
    return data


def cut_end(data, chance):
    return data[: chance.randrange(len(data))]


def cut_out(data, chance):
    begin = chance.randrange(len(data))
    return data[:begin] + data[begin + chance.randrange(1, max(2, len(data) // 4)):]


def swap(data, chance):
    """Two stretches change places."""
    size = chance.randrange(1, max(2, min(4096, len(data) // 3)))
    first, second = sorted((chance.randrange(len(data) - size + 1), chance.randrange(len(data) - size + 1)))
    if second - first < size:
        return data[size:] + data[:size]
    return (data[:first] + data[second:second + size] + data[first + size:second] + data[first:first + size]
            + data[second + size:])


def wipe(data, chance):
    """A stretch of one value."""
    begin = chance.randrange(len(data))
    end = min(len(data), begin + chance.randrange(1, max(2, len(data) // 2)))
    return data[:begin] + bytes([chance.choice((0, 0xFF))]) * (end - begin) + data[end:]


def huge_number(data, chance):
    """Four bytes of the head say the most that they can."""
    begin = chance.randrange(max(1, min(len(data), 96) - 4))
    data[begin:begin + 4] = chance.choice((b"\xff\xff\xff\xff", b"\x7f\xff\xff\xff", b"\xff\xff\xff\x7f", b"\0\0\0\0"))
    return data


WAYS = (flip, flip_head, cut_end, cut_out, swap, wipe, huge_number)


def damaged_files(folder, count):
    """Writes so many, every kind and every way in turn; returns (path to open, what it was and what was done)."""
    chance = random.Random(SEED)
    sources = [*good_files(), None]  # None: a disc image
    made = []
    for number in range(count):
        source = sources[number % len(sources)]
        way = WAYS[(number // len(sources) + number) % len(WAYS)]
        if source is None:
            made.append((damaged_disc(folder / f"disc{number:03}", way, chance, number), f"cue {way.__name__}"))
            continue
        path = folder / f"d{number:03}{source.suffix}"
        path.write_bytes(bytes(way(bytearray(source.read_bytes()), chance)))
        made.append((path, f"{source.name} {way.__name__}"))
    return made


def damaged_disc(folder, way, chance, number):
    """A folder with a damaged sheet beside an image, and a track file to open."""
    folder.mkdir()
    sheet = "\n".join(['FILE "disc.bin" BINARY', "  TRACK 01 AUDIO", "    INDEX 01 00:00:00", "  TRACK 02 AUDIO",
                       "    INDEX 00 00:01:00", "    INDEX 01 00:01:10", ""]).encode()
    (folder / "disc.cue").write_bytes(bytes(way(bytearray(sheet), chance)))
    (folder / "disc.bin").write_bytes(bytes(2352 * 200))
    track = folder / f"d{number:03}Track02.cda"
    track.write_bytes(b"")
    return track
