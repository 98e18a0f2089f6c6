#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Decodes every sample and compares it with NOTES.txt: notes, colours, sizes, lengths.

Needs numpy, Pillow and ffmpeg; MIDI files need fluidsynth and a General MIDI sound set (--soundfont).
Usage: verify.py [--soundfont FILE] [FOLDER]. Ends with 1 and a line for each difference.
"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

import numpy as np
from PIL import Image

RATE = 44100
FOLDER_LIMIT, FILE_LIMIT = 900 * 1024, 300 * 1024  # bytes
PITCH_TOLERANCE = 0.02  # a part of the frequency; a semitone is 0.059
COLOUR_TOLERANCE = 10  # of 255; encoders and colour matrices round


def read_notes(path):
    """The three kinds of lines: {file: [(hz, start, length)]}, {file: (size, areas)}, {file: fields}."""
    sounds, pictures, videos = {}, {}, {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        head, body = line.split(": ", 1)
        if head.startswith("picture "):
            size, *areas = body.split()
            cells = [re.match(r"(#\w+)@(\d+),(\d+),(\d+),(\d+)$", a).groups() for a in areas]
            pictures[head.split()[1]] = (size, [(c, tuple(map(int, r))) for c, *r in cells])
        elif head.startswith("video "):
            shown, patch = body.split(" patch ")
            size, rate, *colours = shown.split()
            seconds = [re.match(r"(#\w+)@(\d+)-1$", c).group(1) for c in colours]
            videos[head.split()[1]] = (size, int(rate), seconds, tuple(map(int, patch.split(","))))
        else:
            parts = [re.match(r"([\d.]+)@([\d.]+)-([\d.]+)$", n).groups() for n in body.split()]
            sounds[head] = [tuple(map(float, p)) for p in parts]
    return sounds, pictures, videos


def render_midi(path, soundfont):
    """Raw stereo samples of a MIDI file, with RIFF wrapping taken off: fluidsynth reads plain files only."""
    data = path.read_bytes()
    with tempfile.NamedTemporaryFile(suffix=".mid") as plain:
        plain.write(data[20:] if data[:4] == b"RIFF" else data)
        plain.flush()
        command = ["fluidsynth", "-ni", "-q", "-R", "0", "-C", "0", "-r", str(RATE), "-T", "raw", "-F", "-", soundfont, plain.name]
        return subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout


def decode_sound(path, soundfont):
    """The file's sound as mono samples at RATE."""
    if path.suffix in (".mid", ".rmi"):
        return np.frombuffer(render_midi(path, soundfont), "<i2").reshape(-1, 2).mean(axis=1) / 32768.0
    command = ["ffmpeg", "-v", "error", "-i", str(path), "-f", "f32le", "-ac", "1", "-ar", str(RATE), "-"]
    return np.frombuffer(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout, "<f4")


def pitch(samples):
    """The frequency in hertz of the strongest tone."""
    size = 1 << 17
    spectrum = np.abs(np.fft.rfft(samples * np.hanning(len(samples)), size))
    low = round(150 * size / RATE)
    return (low + np.argmax(spectrum[low : round(3000 * size / RATE)])) * RATE / size


def check_sound(path, notes, soundfont):
    samples = decode_sound(path, soundfont)
    for hz, start, length in notes:
        inner = samples[round((start + 0.2 * length) * RATE) : round((start + 0.8 * length) * RATE)]
        if len(inner) < 1000 or np.sqrt(np.mean(inner**2)) < 0.02:
            yield f"{path.name}: silent at {start:.2f} s"
        elif abs(pitch(inner) / hz - 1) > PITCH_TOLERANCE:
            yield f"{path.name}: {pitch(inner):.1f} Hz at {start:.2f} s, expected {hz:.1f}"
    if path.suffix in (".mid", ".rmi"):
        return
    loud = np.flatnonzero(np.abs(samples) > 0.02)
    onset = loud[0] / RATE - notes[0][1]
    if abs(onset) > 0.03:
        yield f"{path.name}: the first note is {onset * 1000:.0f} ms off"


def far(pixels, colour):
    wanted = [int(colour[i : i + 2], 16) for i in (1, 3, 5)]
    return np.abs(pixels.reshape(-1, 3).astype(int) - wanted).max() > COLOUR_TOLERANCE


def check_picture(path, size, areas):
    image = np.asarray(Image.open(path).convert("RGB"))
    if f"{image.shape[1]}x{image.shape[0]}" != size:
        yield f"{path.name}: {image.shape[1]}x{image.shape[0]}, expected {size}"
    for colour, (x, y, w, h) in areas:
        if far(image[y : y + h, x : x + w], colour):
            yield f"{path.name}: not {colour} at {x},{y},{w},{h}"


def check_video(path, size, rate, seconds, patch):
    w, h = map(int, size.split("x"))
    command = ["ffmpeg", "-v", "error", "-i", str(path), "-f", "rawvideo", "-pix_fmt", "rgb24", "-"]
    raw = subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout
    frames = np.frombuffer(raw[: len(raw) // (w * h * 3) * (w * h * 3)], np.uint8).reshape(-1, h, w, 3)
    if abs(len(frames) - rate * len(seconds)) > 1:
        yield f"{path.name}: {len(frames)} frames, expected {rate * len(seconds)}"
        return
    x, y, pw, ph = patch
    for second, colour in enumerate(seconds):
        for frame in (second * rate + 1, second * rate + rate - 2):
            if far(frames[frame, y : y + ph, x : x + pw], colour):
                yield f"{path.name}: frame {frame} is not {colour}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--soundfont", default="/usr/share/sounds/sf2/TimGM6mb.sf2")
    parser.add_argument("folder", nargs="?", default=pathlib.Path(__file__).resolve().parents[2] / "samples", type=pathlib.Path)
    options = parser.parse_args()
    sounds, pictures, videos = read_notes(options.folder / "NOTES.txt")
    faults = []
    for name, notes in sounds.items():
        faults += check_sound(options.folder / name, notes, options.soundfont)
    for name, entry in pictures.items():
        faults += check_picture(options.folder / name, *entry)
    for name, entry in videos.items():
        faults += check_video(options.folder / name, *entry)
    sizes = {p.name: p.stat().st_size for p in options.folder.iterdir()}
    faults += [f"{n}: {s} bytes, more than {FILE_LIMIT}" for n, s in sizes.items() if s > FILE_LIMIT]
    if sum(sizes.values()) > FOLDER_LIMIT:
        faults.append(f"all samples: {sum(sizes.values())} bytes, more than {FOLDER_LIMIT}")
    print("\n".join(faults) or f"{len(sounds)} sounds, {len(pictures)} pictures and {len(videos)} videos are as noted")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
