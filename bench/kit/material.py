# SPDX-License-Identifier: GPL-3.0-or-later
"""The files that are played: made once, kept in build/bench/media."""

import struct

import numpy as np
from PIL import Image

from harness.media import SECTOR_BYTES, encode, write_disc, write_wave

from .senses import LEFT, RATE

MEDIA_SECONDS = 45
PHOTO_SIZE = 4000, 3000  # 12 megapixels
PHOTO_COLOURS = ((200, 40, 40), (40, 160, 70), (50, 80, 200), (200, 180, 50))
MOVIE_COLOURS = (50, 160, 70), (190, 60, 50)
TICKS = 480  # a quarter note, at the usual 120 a minute half a second
ORGAN = 16


def one_sided(side, seconds, level=0.4):
    """A tone in one channel that begins and ends abruptly, so that its first and last sample are loud."""
    time = np.arange(int(seconds * RATE)) / RATE
    samples = np.zeros((len(time), 2), "<i2")
    samples[:, side] = (np.sign(np.sin(2 * np.pi * (440 + 220 * side) * time + 0.3)) * level * 32767).astype("<i2")
    return samples.tobytes()


def variable_length(value):
    out = [value & 127]
    while value := value >> 7:
        out.insert(0, value & 127 | 128)
    return bytes(out)


def write_midi(path, events):
    """Events are (tick, bytes), in order; the last one is the end."""
    track, last = b"", 0
    for tick, message in [*events, (events[-1][0], b"\xff\x2f\x00")]:
        track += variable_length(tick - last) + message
        last = tick
    path.write_bytes(b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS) + b"MTrk" + struct.pack(">I", len(track)) + track)
    return path


def one_sided_midi(path, side, seconds):
    pan = 0 if side == LEFT else 127
    end = int(seconds * 2 * TICKS)
    dry = [(0, bytes([0xB0, control, 0])) for control in (91, 93)]
    return write_midi(path, [(0, bytes([0xC0, ORGAN])), (0, bytes([0xB0, 10, pan])), *dry,
                             (0, bytes([0xB0, 7, 127])), (0, bytes([0x90, 69, 127])), (end, bytes([0x80, 69, 0]))])


def made_up_midi(path, seconds, programs, notes):
    """Each channel changes its notes twice a second."""
    events = [(0, bytes([0xC0 | channel, program])) for channel, program in enumerate(programs)]
    for beat in range(int(seconds * 2)):
        for channel in range(len(programs)):
            for note in notes:
                pitch = note + (beat * 5 + channel * 7) % 24
                events.append((beat * TICKS, bytes([0x90 | channel, pitch, 90])))
                events.append((beat * TICKS + TICKS - 10, bytes([0x80 | channel, pitch, 0])))
    return write_midi(path, sorted(events, key=lambda event: event[0]))


def photo(path, colour, seed):
    """A photograph's worth of detail with a block of one colour in the middle."""
    width, height = PHOTO_SIZE
    random = np.random.default_rng(seed)
    coarse = Image.fromarray(random.integers(0, 255, (height // 20, width // 20, 3), np.uint8))
    pixels = np.asarray(coarse.resize(PHOTO_SIZE, Image.BICUBIC)).astype(np.int16)
    pixels += random.integers(-12, 12, pixels.shape, np.int16)
    pixels[height // 4 : height * 3 // 4, width // 4 : width * 3 // 4] = colour
    Image.fromarray(pixels.clip(0, 255).astype(np.uint8)).save(path, quality=88)


def sided(folder):
    """Short and long tones of each side, as WAV, MP3 and MIDI."""
    for side, name in enumerate(("left", "right")):
        for length, seconds in (("short", 1.2), ("long", MEDIA_SECONDS)):
            stem = folder / f"{name}_{length}"
            write_wave(stem.with_suffix(".wav"), one_sided(side, seconds))
            encode(["-i", f"{stem}.wav", "-b:a", "192k", "-joint_stereo", "0"], stem.with_suffix(".mp3"))
            one_sided_midi(stem.with_suffix(".mid"), side, seconds)


def movie_sources(size, seconds):
    return ["-f", "lavfi", "-i", f"testsrc2=s={size}:r=25:d={seconds}", "-f", "lavfi", "-i",
            f"sine=frequency=523:duration={seconds}:sample_rate={RATE}", "-ac", "2"]


def movies(folder):
    avi = ["-c:v", "mpeg4", "-b:v", "2M", "-c:a", "libmp3lame"]
    encode([*movie_sources("640x480", MEDIA_SECONDS), *avi], folder / "small.avi")
    mov = ["-c:v", "libx264", "-preset", "ultrafast", "-b:v", "4M", "-pix_fmt", "yuv420p", "-c:a", "aac"]
    encode([*movie_sources("1280x720", MEDIA_SECONDS), *mov], folder / "large.mov")
    for name, (red, green, blue) in zip(("plain.avi", "other.avi"), MOVIE_COLOURS):
        encode(["-f", "lavfi", "-i", f"color=0x{red:02X}{green:02X}{blue:02X}:s=640x480:r=25:d=20",
                *movie_sources("64x64", 20)[4:], *avi], folder / name)


def music(folder):
    """A chord with moving partials and some noise: a coder has work with it."""
    time = np.arange(MEDIA_SECONDS * RATE) / RATE
    mono = sum(np.sin(2 * np.pi * hz * time + 3 * np.sin(2 * np.pi * hz / 100 * time)) for hz in (220, 277, 330, 440, 1760, 5000))
    mono = mono / 12 + np.random.default_rng(1).normal(0, 0.02, len(time))
    samples = np.repeat((mono * 32767).clip(-32768, 32767).astype("<i2"), 2).tobytes()
    write_wave(folder / "music.wav", samples)
    encode(["-i", str(folder / "music.wav"), "-b:a", "192k"], folder / "music.mp3")
    made_up_midi(folder / "music.mid", MEDIA_SECONDS, (0, 24, 33, 48, 56, 65, 73, 80), (48, 52, 55))  # 24 notes at a time
    made_up_midi(folder / "tune.mid", MEDIA_SECONDS, (0, 33, 48, 73), (48,))  # 4 notes at a time
    (folder / "disc").mkdir(exist_ok=True)
    write_disc(folder / "disc", [samples[: len(samples) // SECTOR_BYTES * SECTOR_BYTES]])


def make(folder):
    """Makes what is not there yet."""
    done = folder / "complete"
    if done.exists():
        return folder
    folder.mkdir(parents=True, exist_ok=True)
    sided(folder)
    music(folder)
    movies(folder)
    for number, colour in enumerate(PHOTO_COLOURS):
        photo(folder / f"photo{number}.jpg", colour, number)
    done.touch()
    return folder
