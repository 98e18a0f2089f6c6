# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the sounds, pictures, movies and discs that stories play: one tone and one colour each, so that each is recognised."""

import subprocess
import wave

import numpy as np
from PIL import Image

from .expect import SLACK
from .sound import RATE

SECTOR_BYTES = 2352
SECTORS_A_SECOND = 75
PICTURES_A_SECOND = 25
FEW_PICTURES_A_SECOND = 5  # under a checker: more would leave a slow program's panel no time to answer
FIXED_RATES = (".mpg", ".mpeg", ".m1v", ".mpv", ".vob", ".ts", ".m2ts", ".mts")  # kinds that have no such rate


def tone_samples(hz, seconds, level=0.4):
    """Stereo samples with soft ends, so that nothing clicks."""
    time = np.arange(int(seconds * RATE)) / RATE
    ramp = np.minimum(1, np.minimum(time, seconds - time) / 0.005)
    mono = (np.sin(2 * np.pi * hz * time) * ramp * level * 32767).astype("<i2")
    return np.repeat(mono, 2).tobytes()


def sweep_samples(frequencies, seconds_each):
    return b"".join(tone_samples(hz, seconds_each) for hz in frequencies)


def write_wave(path, data):
    with wave.open(str(path), "wb") as out:
        out.setnchannels(2)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(data)
    return path


def tone(path, hz, seconds):
    """A WAV file, or another kind by its extension (encoded)."""
    if path.suffix == ".wav":
        return write_wave(path, tone_samples(hz, seconds))
    plain = path.with_name(f"{path.stem}_plain.wav")
    tone(plain, hz, seconds)
    encode(["-i", str(plain)], path)
    plain.unlink()
    return path


def steps(path, frequencies, seconds_each=1.0):
    """A WAV file with one tone after the other: where it stands can be heard."""
    return write_wave(path, sweep_samples(frequencies, seconds_each))


def picture(path, colour, size=(320, 240)):
    Image.new("RGB", size, colour).save(path)
    return path


def picture_rate(path):
    """Of a movie of that name, pictures a second."""
    return PICTURES_A_SECOND if SLACK == 1 or path.suffix in FIXED_RATES else FEW_PICTURES_A_SECOND


def movie(path, colour, hz, seconds, size=(320, 240)):
    """A movie of one colour and one tone; AVI with motion JPEG and PCM, else the extension's usual codecs."""
    codecs = ["-c:v", "mjpeg", "-q:v", "2", "-c:a", "pcm_s16le"] if path.suffix == ".avi" else []
    encode(["-f", "lavfi", "-i", f"color=0x{colour[1:]}:s={size[0]}x{size[1]}:r={picture_rate(path)}:d={seconds}",
            "-f", "lavfi", "-i", f"sine=frequency={hz}:duration={seconds}:sample_rate={RATE}", *codecs], path)
    return path


def disc(folder, tones, seconds):
    """A disc image of audio tracks, one tone each, and the track files that stand for it; returns (cue, track paths)."""
    return write_disc(folder, [tone_samples(hz, seconds) for hz in tones])


def write_disc(folder, sounds):
    """The same, of the samples of each track."""
    sheet = [f'FILE "disc.bin" BINARY']
    with open(folder / "disc.bin", "wb") as image:
        for number, samples in enumerate(sounds, 1):
            start = image.tell() // SECTOR_BYTES
            minute, rest = divmod(start, 60 * SECTORS_A_SECOND)
            second, frame = divmod(rest, SECTORS_A_SECOND)
            sheet += [f"  TRACK {number:02} AUDIO", f"    INDEX 01 {minute:02}:{second:02}:{frame:02}"]
            image.write(samples)
    (folder / "disc.cue").write_text("\n".join(sheet) + "\n")
    tracks = [folder / f"Track{number:02}.cda" for number in range(1, len(sounds) + 1)]
    for track in tracks:
        track.write_bytes(b"")
    return folder / "disc.cue", tracks


def encode(inputs, path):
    command = ["ffmpeg", "-v", "error", "-y", *inputs, str(path)]
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL, timeout=60 * SLACK)
