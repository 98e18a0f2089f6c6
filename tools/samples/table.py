# SPDX-License-Identifier: GPL-3.0-or-later
"""What every sample contains: the note table, the movies' colours, the pictures' flat areas.

Every sounding file has a motif of its own, told apart from all others by the order of its notes. Notes
are named by their MIDI number; times are in seconds. Sound files sound from their first sample to their
last, so that the pause a player makes between two files can be measured.
"""

from dataclasses import dataclass

A4, A4_HZ = 69, 440.0


def frequency(note):
    """The frequency in hertz of a MIDI note number in equal temperament."""
    return A4_HZ * 2.0 ** ((note - A4) / 12.0)


@dataclass(frozen=True)
class Note:
    note: int  # MIDI note number
    start: float  # seconds
    length: float  # seconds


def _line(notes, length, start=0.0):
    return [Note(n, start + i * length, length) for i, n in enumerate(notes)]


def _beeps(notes):
    """One beep at every full second, half a second long: the movies change colour with it."""
    return [Note(n, float(i), 0.5) for i, n in enumerate(notes)]


def _echo():
    """The motif at 120 beats a minute, then again at 150: the file changes its tempo on the way."""
    return _line([79, 72, 76], 0.5) + _line([79, 72, 76], 0.4, 1.5)


SOUNDS = {
    "chime.mid": _line([72, 76, 79, 84], 0.5) + _line([72, 76, 79, 84], 0.5, 2.0),
    "echo.rmi": _echo(),
    "scale.wav": _line([69, 71, 73, 76], 0.5) + _line([69, 71, 73, 76], 0.5, 2.0),
    "waltz.mp3": _line([79, 74, 71], 0.6) + _line([79, 74, 71], 0.6, 1.8),
    "bells.mp2": _line([76, 72, 74, 67], 0.5) + _line([76, 72, 74, 67], 0.5, 2.0),
    "horn.au": _line([65, 70, 65, 77], 0.4) + _line([65, 70, 65, 77], 0.4, 1.6),
    "steps.aiff": _line([67, 70, 75], 0.5) + _line([67, 70, 75], 0.5, 1.5),
}

MOVIE_SECONDS = 5


@dataclass(frozen=True)
class Movie:
    frames: int  # frames a second
    colours: tuple  # "#RRGGBB", one for each second
    notes: tuple  # empty: a silent movie
    codec: tuple  # the encoder's arguments


MOVIES = {
    "colours.avi": Movie(
        15,
        ("#B83A3A", "#3A8F4A", "#3A55B8", "#B8A23A", "#7A3A9E"),
        tuple(_beeps([81, 76, 81, 84, 69])),
        ("-c:v", "mpeg4", "-vtag", "XVID", "-q:v", "4", "-g", "15", "-c:a", "libmp3lame", "-b:a", "64k", "-ar", "44100"),
    ),
    "bars.mpg": Movie(
        25,
        ("#2E7D8C", "#C8742A", "#4E8C2E", "#8C2E5E", "#3C4A78"),
        tuple(_beeps([70, 74, 77, 74, 70])),
        ("-c:v", "mpeg1video", "-q:v", "6", "-g", "12", "-bf", "2", "-c:a", "mp2", "-b:a", "64k", "-ar", "44100", "-f", "mpeg"),
    ),
    "clip.mov": Movie(
        12,
        ("#8C6A2E", "#2E5E8C", "#8C2E2E", "#2E8C6A", "#5E2E8C"),
        tuple(_beeps([84, 79, 76, 79, 72])),
        ("-c:v", "mpeg4", "-q:v", "4", "-g", "12", "-c:a", "adpcm_ima_qt", "-ar", "22050", "-f", "mov"),
    ),
    "silent.m1v": Movie(
        25,
        ("#586874", "#A85A3C", "#3C8C84", "#746C2E", "#2E3C74"),
        (),
        ("-c:v", "mpeg1video", "-q:v", "8", "-g", "12", "-bf", "2", "-f", "mpeg1video"),
    ),
}

MOVIE_SIZE = (320, 240)
# A corner of every frame that nothing moves through: what NOTES.txt promises about its colour holds here.
MOVIE_PATCH = (8, 8, 40, 40)

PICTURE_SIZE = (320, 240)

# Flat areas of each picture as x, y, width, height, for a reader of NOTES.txt to compare.
PICTURES = {
    "hills.bmp": (
        ("#8CC8EC", (8, 8, 60, 40)),
        ("#FFD84A", (240, 40, 24, 24)),
        ("#3E8E41", (80, 208, 50, 12)),
        ("#2A6A36", (272, 222, 40, 14)),
    ),
    "sunset.jpg": (
        ("#F2803A", (8, 96, 48, 24)),
        ("#FFE08A", (148, 92, 24, 24)),
        ("#1E3A5C", (8, 200, 60, 32)),
        ("#5A2A4E", (8, 8, 60, 20)),
    ),
    "city.gif": (
        ("#141C3C", (8, 8, 50, 30)),
        ("#F4EEC8", (250, 34, 16, 16)),
        ("#2C3658", (60, 118, 12, 8)),
        ("#0C1020", (8, 222, 80, 14)),
    ),
}
