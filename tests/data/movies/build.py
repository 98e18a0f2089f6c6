#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the movies of the tests: a card with a colour in each corner, small and short, with what movies carry besides.

Needs ffmpeg 5 (later ones have another option that turns films).
"""

import pathlib
import subprocess

HERE = pathlib.Path(__file__).parent
SECONDS = 3
# Left and right above, left and right below.
CARD = ("color=0xD02020:s=48x32:r=10:d={0}[a];color=0x20B020:s=48x32:r=10:d={0}[b];color=0x2030D0:s=48x32:r=10:d={0}[c];"
        "color=0xD0C020:s=48x32:r=10:d={0}[d];[a][b]hstack[e];[c][d]hstack[f];[e][f]vstack").format(SECONDS)
H264 = ["-c:v", "libx264", "-pix_fmt", "yuv420p", "-crf", "12"]

SUBTITLES = """1
00:00:00,000 --> 00:00:03,000
{0}
"""
CHAPTERS = """;FFMETADATA1
[CHAPTER]
TIMEBASE=1/1000
START=0
END=1000
title=One
[CHAPTER]
TIMEBASE=1/1000
START=1000
END=2000
title=二番
[CHAPTER]
TIMEBASE=1/1000
START=2000
END=3000
title=
"""


def ffmpeg(*arguments):
    subprocess.run(["ffmpeg", "-y", "-v", "error", "-bitexact", *map(str, arguments)], check=True)


def turned(made):
    ffmpeg("-f", "lavfi", "-i", CARD, *H264, made / "upright.mp4")
    for degrees in (90, 180, 270):  # clockwise; the tool counts the other way round
        ffmpeg("-i", made / "upright.mp4", "-c", "copy", "-metadata:s:v:0", f"rotate={360 - degrees}", HERE / f"turned{degrees}.mp4")
    ffmpeg("-f", "lavfi", "-i", CARD + ",setsar=2/1", *H264, HERE / "wide_pixels.mp4")


def interlaced():
    """The lines of one moment are white, those of the next one black."""
    lines = "nullsrc=s=96x64:r=20:d=3,geq=lum='if(mod(N,2),16,235)':cb=128:cr=128,tinterlace=interleave_top,setfield=tff"
    ffmpeg("-f", "lavfi", "-i", lines, *H264, "-flags", "+ildct+ilme", "-x264opts", "tff=1", HERE / "interlaced.mp4")


def bright():
    """Of more light than a screen has (ST 2084): on the left the signal of 50 candelas, on the right that of 1,000."""
    ffmpeg("-f", "lavfi", "-i", "nullsrc=s=96x64:r=10:d=1,geq=lum='if(lt(X,48),112,181)':cb=128:cr=128", *H264, "-colorspace", "bt2020nc",
           "-color_primaries", "bt2020", "-color_trc", "smpte2084", HERE / "bright.mp4")


def laden(made):
    """Two tracks of sound, two of subtitles, three chapters and a cover."""
    for name, text in (("one.srt", "ABC"), ("two.srt", "字幕")):
        (made / name).write_text(SUBTITLES.format(text), encoding="utf-8")
    (made / "chapters.txt").write_text(CHAPTERS, encoding="utf-8")
    ffmpeg("-f", "lavfi", "-i", "color=red:s=64x64", "-frames:v", 1, made / "cover.jpg")
    ffmpeg("-f", "lavfi", "-i", CARD, "-f", "lavfi", "-i", f"sine=440:d={SECONDS}", "-f", "lavfi", "-i", f"sine=880:d={SECONDS}",
           "-i", made / "one.srt", "-i", made / "two.srt", "-i", made / "chapters.txt", "-map", 0, "-map", 1, "-map", 2, "-map", 3,
           "-map", 4, "-map_metadata", 5, *H264, "-c:a", "libvorbis", "-c:s", "srt", "-attach", made / "cover.jpg",
           "-metadata:s:t", "mimetype=image/jpeg", "-metadata:s:a:0", "language=eng", "-metadata:s:a:1", "language=jpn",
           "-metadata:s:a:1", "title=日本語", "-metadata:s:s:0", "language=eng", "-metadata:s:s:1", "title=Second",
           HERE / "laden.mkv")
    ffmpeg("-f", "lavfi", "-i", "sine=440:d=2", "-i", made / "cover.jpg", "-map", 0, "-map", 1, "-c:a", "aac", "-c:v", "copy",
           "-disposition:v", "attached_pic", HERE / "song.mp4")


def main():
    made = HERE / "made"
    made.mkdir(exist_ok=True)
    turned(made)
    interlaced()
    bright()
    laden(made)
    for path in made.iterdir():
        path.unlink()
    made.rmdir()


if __name__ == "__main__":
    main()
