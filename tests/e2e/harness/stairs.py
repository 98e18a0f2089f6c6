# SPDX-License-Identifier: GPL-3.0-or-later
"""A list with a file of every kind, each with a tone of its own for each of its seconds, and a movie's colours likewise: what is
heard and seen tells which file it is and where it stands."""

import dataclasses
import pathlib
import struct

from PIL import Image

from .expect import wait
from .media import disc, encode, picture, picture_rate, steps, sweep_samples
from .signs import all_told, middle_of_screen

SECONDS = 8  # of each
RATIO = 1.08  # from one second's tone to the next one's
SAME = 0.02  # a part of the frequency
LOOKS = 12  # that differ are told of a failure
NOTE = 85  # the sequence's first; its notes are semitones
NOTES_A_SECOND = 5
OCARINA, TICKS = 79, 480
SHADES = ("#28D228", "#D22828", "#2828D2", "#D2D228", "#D228D2", "#28D2D2", "#7D2828", "#28287D")  # a movie's, one a second
VIOLET = "#8232B4"


@dataclasses.dataclass
class Stair:
    """One entry of the list. tones: one a second; colours: what stands in the screen's middle, one a second or one alone."""

    path: pathlib.Path
    kind: str
    tones: tuple = ()
    colours: tuple = ()


def tones_from(hz, ratio=RATIO):
    return tuple(hz * ratio**second for second in range(SECONDS))


def write_sequence(path, first_note):
    """A MIDI file that goes up a semitone a second. A note that began before a place is not heard from there: they are short."""
    track = b"\0\xff\x51\x03" + (1_000_000 // NOTES_A_SECOND).to_bytes(3, "big") + bytes((0, 0xC0, OCARINA))
    for number in range(SECONDS * NOTES_A_SECOND):
        note = first_note + number // NOTES_A_SECOND
        track += bytes((0, 0x90, note, 112, 0x80 | TICKS >> 7, TICKS & 0x7F, 0x80, note, 64))
    track += b"\0\xff\x2f\0"
    path.write_bytes(b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS) + b"MTrk" + struct.pack(">I", len(track)) + track)
    return path


def write_movie(path, tones, size=(320, 240)):
    """AVI with motion JPEG and PCM: every frame is a key frame."""
    sound = steps(path.with_name(f"{path.stem}_sound.wav"), tones)
    stills = path.with_name(f"{path.stem}_stills")
    stills.mkdir()
    for second, colour in enumerate([*SHADES, SHADES[-1]]):  # the very last one is shown for a frame only
        Image.new("RGB", size, colour).save(stills / f"{second:02}.png")
    encode(["-framerate", "1", "-i", str(stills / "%02d.png"), "-i", str(sound), "-vf", f"fps={picture_rate(path)}", "-t", str(SECONDS),
            "-c:v", "mjpeg", "-q:v", "2", "-c:a", "pcm_s16le"], path)
    return path


def write_tracks(folder, *all_tones):
    """A disc image with a stair on each track; returns (cue, track paths)."""
    sheet, tracks = disc(folder, [440] * len(all_tones), SECONDS)
    (folder / "disc.bin").write_bytes(b"".join(sweep_samples(tones, 1) for tones in all_tones))
    return sheet, tracks


def one_of_each(folder):
    """The list: a sound, a movie, a track, a picture, a sequence; returns ([Stair], environment)."""
    sound, track, film, notes = tones_from(180), tones_from(325), tones_from(600), tones_from(440 * 2 ** ((NOTE - 69) / 12), 2 ** (1 / 12))
    sheet, tracks = write_tracks(folder, track)
    return [Stair(steps(folder / "song.wav", sound), "Sound File Now On Play", sound),
            Stair(write_movie(folder / "film.avi", film), "Video File Now On Play", film, SHADES),
            Stair(tracks[0], "CD Audio Now On Play", track),
            Stair(picture(folder / "still.bmp", VIOLET), "BMP IMAGE", (), (VIOLET,)),
            Stair(write_sequence(folder / "score.mid", NOTE), "MIDI File Now On Play", notes)], {"CORVANE_CDROM": str(sheet)}


def second_of(stair, hz):
    """Which of its seconds has that tone, None when none has."""
    return next((second for second, tone in enumerate(stair.tones) if hz and abs(hz / tone - 1) < SAME), None)


def second_seen(stage, stair):
    """Which of its colours stands in the screen's middle, None when none does."""
    return next((second for second, colour in enumerate(stair.colours) if stage.desk.shows(*middle_of_screen(stage), colour)), None)


def wait_for_stair(stage, stairs, number, least=0, most=SECONDS, seconds=8):
    """Until file `number` (from 1) is told by the panel, heard and seen, at a second from least to most; returns the second."""
    stair = stairs[number - 1]
    looked = []

    def found():
        place = second_of(stair, stage.sound.pitch_now()) if stair.tones else 0
        seen = second_seen(stage, stair) if stair.colours else None
        right = place is not None and least <= place <= most and bool(stair.colours) == (seen is not None)
        # To read the labels takes long on a busy machine: meanwhile a second goes by that was not looked at.
        labels = all_told(stage) if right or not looked else {}
        now = [labels.get("FileNo"), labels.get("Display"), place, seen]
        looked[:] = [*looked, *([now] if looked[-1:] != [now] else [])][-LOOKS:]
        return right and now[:2] == [f"{number:03}", stair.kind] and place + 1

    try:
        return wait("it", found, seconds) - 1
    except AssertionError:
        raise AssertionError(f"{stair.path.name}, number {number}, second {least} to {most}, not within {seconds:g} s: {looked}") from None
