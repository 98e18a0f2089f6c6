#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the files in samples/ from the tables and drawings beside this script.

Needs numpy, pycairo, Pillow and ffmpeg. Usage: build.py [FOLDER] (default: samples/ of this project).
"""

import pathlib
import subprocess
import sys

from PIL import Image

from drawings import DRAWINGS, movie_frame, pixels
from midi import midi_bytes, rmi_bytes
from table import MOVIE_PATCH, MOVIE_SECONDS, MOVIE_SIZE, MOVIES, PICTURES, PICTURE_SIZE, SOUNDS, frequency
from tones import aiff_bytes, au_bytes, synthesize, wave_bytes

NOTES_HEAD = """\
# What the samples sound and look like. SPDX-License-Identifier: CC0-1.0
# Written by tools/samples/build.py; read by the tests.
#
# FILE: FREQUENCY@START-LENGTH ...      notes in hertz and seconds, in order
# picture FILE: WxH COLOUR@X,Y,W,H ...  flat areas in pixels
# video FILE: WxH FPS COLOUR@START-LENGTH ... patch X,Y,W,H
#                                       the colour of the patch in each second
"""


def encode(arguments, feed=None):
    """Runs ffmpeg, single-threaded and without dates, so that equal input makes equal files."""
    head = ["ffmpeg", "-v", "error", "-y", "-nostdin"] if feed is None else ["ffmpeg", "-v", "error", "-y"]
    subprocess.run([*head, *arguments], input=feed, check=True)


def plain_sounds(folder):
    """The sound files written without an encoder."""
    makers = {
        "chime.mid": lambda n: midi_bytes(n, "Chime"),
        "echo.rmi": lambda n: rmi_bytes(n, "Echo"),
        "scale.wav": lambda n: wave_bytes(synthesize(n, 16000), 16000),
        "horn.au": lambda n: au_bytes(synthesize(n, 8000), 8000),
        "steps.aiff": lambda n: aiff_bytes(synthesize(n, 11025), 11025),
    }
    for name, make in makers.items():
        (folder / name).write_bytes(make(SOUNDS[name]))


def compressed_sounds(folder):
    for name, codec in (("waltz.mp3", "libmp3lame"), ("bells.mp2", "mp2")):
        feed = wave_bytes(synthesize(SOUNDS[name], 44100), 44100)
        encode(["-f", "wav", "-i", "-", "-bitexact", "-c:a", codec, "-b:a", "64k", str(folder / name)], feed)


def movie(folder, name):
    """Draws the frames and has them encoded with the movie's beeps, if it has any."""
    entry = MOVIES[name]
    size = "x".join(map(str, MOVIE_SIZE))
    frames = b"".join(pixels(movie_frame(entry, i)).tobytes() for i in range(entry.frames * MOVIE_SECONDS))
    source = ["-f", "rawvideo", "-pix_fmt", "rgb24", "-s", size, "-r", str(entry.frames), "-i", "-"]
    beeps = folder / (name + ".beeps")
    if entry.notes:
        beeps.write_bytes(wave_bytes(synthesize(entry.notes, 44100, MOVIE_SECONDS), 44100))
        source += ["-f", "wav", "-i", str(beeps)]
    options = ["-threads", "1", "-fflags", "+bitexact", "-flags:v", "+bitexact", "-flags:a", "+bitexact"]
    encode([*source, *options, "-pix_fmt", "yuv420p", *entry.codec, str(folder / name)], frames)
    beeps.unlink(missing_ok=True)


def picture(folder, name):
    image = Image.fromarray(pixels(DRAWINGS[name]()))
    if name.endswith(".jpg"):
        image.save(folder / name, quality=90, subsampling=0)
        return
    # 256 colours of the drawing's own: the flat areas come out exactly.
    image.quantize(256, Image.Quantize.MAXCOVERAGE, dither=Image.Dither.NONE).save(folder / name)


def note_lines():
    """The body of NOTES.txt."""
    every = dict(SOUNDS)
    every.update((name, m.notes) for name, m in MOVIES.items() if m.notes)
    for name, notes in every.items():
        yield name + ": " + " ".join(f"{frequency(n.note):.2f}@{n.start:.2f}-{n.length:.2f}" for n in notes)
    for name, areas in PICTURES.items():
        flat = " ".join(c + "@" + ",".join(map(str, a)) for c, a in areas)
        yield f"picture {name}: {PICTURE_SIZE[0]}x{PICTURE_SIZE[1]} {flat}"
    for name, m in MOVIES.items():
        shown = " ".join(f"{c}@{i}-1" for i, c in enumerate(m.colours))
        patch = ",".join(map(str, MOVIE_PATCH))
        yield f"video {name}: {MOVIE_SIZE[0]}x{MOVIE_SIZE[1]} {m.frames} {shown} patch {patch}"


def main():
    project = pathlib.Path(__file__).resolve().parents[2]
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else project / "samples"
    folder.mkdir(parents=True, exist_ok=True)
    plain_sounds(folder)
    compressed_sounds(folder)
    for name in MOVIES:
        movie(folder, name)
    for name in PICTURES:
        picture(folder, name)
    (folder / "NOTES.txt").write_text(NOTES_HEAD + "\n" + "\n".join(note_lines()) + "\n", encoding="utf-8")
    for path in sorted(folder.iterdir()):
        print(f"{path.stat().st_size:8d}  {path.name}")


if __name__ == "__main__":
    main()
