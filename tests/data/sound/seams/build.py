#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the albums of the tests: one long tone, cut into three tracks that are coded each by itself. Needs ffmpeg."""

import math
import pathlib
import struct
import subprocess
import wave

HERE = pathlib.Path(__file__).parent
RATE, HZ = 44100, 441
CUTS = [0, 20001, 41234, 66150]  # samples

# ending: arguments of ffmpeg
KINDS = {
    "mp3": "-c:a libmp3lame -q:a 6",
    "m4a": "-c:a aac -b:a 64k",
    "opus": "-c:a libopus -b:a 32k",
    "ogg": "-c:a libvorbis -q:a 2",
    "flac": "-c:a flac",
}


def box(kind, data):
    return struct.pack(">I4s", 8 + len(data), kind) + data


def grow(data, path, added):
    """Adds bytes at the end of the box with that path."""
    if not path:
        return data + added
    at = 4 if path[0] == b"ilst" else 0  # what holds that one has a version in front
    while True:
        size, kind = struct.unpack(">I4s", data[at : at + 8])
        if kind == path[0]:
            inner = grow(data[at + 8 : at + size], path[1:], added)
            return data[:at] + box(kind, inner) + data[at + size :]
        at += size


def whole_blocks(data, samples):
    """The table as those players write it: the last block is as long as the others."""
    data = bytearray(data)
    head = data.index(b"mdhd")
    data[head + 20 : head + 24] = struct.pack(">I", samples)
    times = data.index(b"stts")
    last = times + 12 + 8 * (struct.unpack(">I", data[times + 8 : times + 12])[0] - 1)
    data[last + 4 : last + 8] = struct.pack(">I", 1024)
    return bytes(data)


def with_coder_ends(path, samples):
    """States the ends as a tag, as players of music files do, in place of a list of edits."""
    before = 1024
    behind = -(before + samples) % 1024
    text = f" 00000000 {before:08X} {behind:08X} {samples:016X}" + " 00000000" * 8
    item = box(b"mean", bytes(4) + b"com.apple.iTunes") + box(b"name", bytes(4) + b"iTunSMPB")
    item += box(b"data", struct.pack(">II", 1, 0) + text.encode())
    path.write_bytes(grow(whole_blocks(path.read_bytes(), before + samples + behind), [b"moov", b"udta", b"meta", b"ilst"],
                          box(b"----", item)))


def encode(source, arguments, path):
    command = ["ffmpeg", "-v", "error", "-y", "-i", str(source), "-map_metadata", "-1", "-fflags", "+bitexact"]
    subprocess.run([*command, *arguments.split(), str(path)], check=True)


def main():
    source = HERE / "master.tmp.wav"
    for number in range(3):
        first, end = CUTS[number], CUTS[number + 1]
        with wave.open(str(source), "wb") as out:
            out.setnchannels(1)
            out.setsampwidth(2)
            out.setframerate(RATE)
            tone = (round(16000 * math.sin(2 * math.pi * HZ * i / RATE)) for i in range(first, end))
            out.writeframes(b"".join(struct.pack("<h", sample) for sample in tone))
        for ending, arguments in KINDS.items():
            encode(source, arguments, HERE / f"{number}.{ending}")
        tagged = HERE / f"tagged_{number}.m4a"
        encode(source, KINDS["m4a"] + " -use_editlist 0 -metadata title=x", tagged)
        with_coder_ends(tagged, end - first)
    source.unlink()


if __name__ == "__main__":
    main()
