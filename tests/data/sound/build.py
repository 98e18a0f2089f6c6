#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the sound files of the tests: three seconds, a new note every quarter of a second, in many formats.

The first half is noisy, so that files of variable rate have a rate that really varies. Needs ffmpeg.
"""

import math
import pathlib
import random
import struct
import subprocess
import wave

HERE = pathlib.Path(__file__).parent
RATE = 22050
SECONDS = 3

# name: arguments of ffmpeg
FILES = {
    "pcm.wav": "-ar 8000 -c:a pcm_s16le",
    "float.wav": "-ar 8000 -c:a pcm_f32le",
    "ima.wav": "-c:a adpcm_ima_wav",
    "ms.wav": "-c:a adpcm_ms",
    "cbr_bare.mp3": "-c:a libmp3lame -b:a 32k -write_xing 0 -id3v2_version 0",
    "vbr_bare.mp3": "-c:a libmp3lame -q:a 7 -write_xing 0 -id3v2_version 0",
    "vbr_headed.mp3": "-c:a libmp3lame -q:a 7",
    "tone.mp2": "-ar 24000 -c:a mp2 -b:a 48k",
    "tone.au": "-ar 8000 -c:a pcm_mulaw -f au",
    "tone.snd": "-ar 8000 -c:a pcm_s16be -f au",
    "tone.aiff": "-ar 8000 -c:a pcm_s16be",
    "tone.aifc": "-ar 8000 -c:a pcm_mulaw -f aiff",
    "tone.ra": "-ar 8000 -c:a real_144 -f rm",
    "tone.rm": "-ar 32000 -c:a ac3 -b:a 48k -f rm",
    "tone.flac": "-ar 8000 -c:a flac",
    "tone.ogg": "-c:a libvorbis -q:a 0",
    "tone.opus": "-c:a libopus -b:a 24k",
    "tone.m4a": "-c:a aac -b:a 32k",
    "tone.aac": "-c:a aac -b:a 32k -f adts",
}


def master() -> bytes:
    noise = random.Random(7)
    phase = 0.0
    samples = bytearray()
    for i in range(RATE * SECONDS):
        note = i * 4 // RATE
        phase += 2 * math.pi * 330 * 2 ** (note / 8) / RATE
        value = 0.5 * math.sin(phase)
        if i < RATE * SECONDS // 2:
            value += 0.08 * noise.uniform(-1, 1)
        samples += struct.pack("<h", int(value * 32000))
    return bytes(samples)


def old_real_audio(version: int, frames: bytes) -> bytes:
    """The containers before RealMedia, which nothing writes any more, around frames of the first codec."""
    texts = b"".join(bytes([len(text)]) + text for text in (b"tone", b"", b"", b""))
    if version == 3:
        rest = bytes(8) + struct.pack(">HI", len(frames) * 60 // SECONDS, len(frames)) + texts + b"\0\4lpcJ"
        return b".ra\xfd" + struct.pack(">HH", 3, len(rest)) + rest + frames
    rest = struct.pack(">HI", 0, 20) + bytes(12) + struct.pack(">HHHH", 1, 20, 20, 0)  # flavour, frame, its packing
    rest += struct.pack(">HHHH", 8000, 0, 16, 1) + b"\4Int0\4lpcJ" + bytes(3) + texts
    return b".ra\xfd" + struct.pack(">HH4sIHI", 4, 0, b".ra4", len(frames), 4, len(rest)) + rest + frames


def main() -> None:
    source = HERE / "master.tmp.wav"
    with wave.open(str(source), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(master())
    for name, arguments in FILES.items():
        command = ["ffmpeg", "-v", "error", "-y", "-i", str(source), "-map_metadata", "-1", "-fflags", "+bitexact"]
        subprocess.run([*command, *arguments.split(), str(HERE / name)], check=True)
    raw = HERE / "frames.tmp"
    command = ["ffmpeg", "-v", "error", "-y", "-i", str(source), "-ar", "8000", "-c:a", "real_144", "-f", "u8", str(raw)]
    subprocess.run(command, check=True)
    for version in (3, 4):
        (HERE / f"version{version}.ra").write_bytes(old_real_audio(version, raw.read_bytes()))
    raw.unlink()
    source.unlink()


if __name__ == "__main__":
    main()
