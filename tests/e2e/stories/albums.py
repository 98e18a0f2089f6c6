# SPDX-License-Identifier: GPL-3.0-or-later
"""Albums as people have them: each format by its usual encoder, with tags and a cover, in folders whose names have dots, blanks,
Japanese and emoji; one file with a sheet; pictures of cameras. Nothing that Debian has writes APE and DSF: those are our own."""

import struct
import subprocess
import wave

import numpy as np
from PIL import Image

from harness.ape import write_ape
from harness.drops import FileManager, open_by_player
from harness.expect import SLACK, check, equal, steady, wait
from harness.media import encode, steps, tone
from harness.player import NEXT, PLAY
from harness.signs import told, told_surely, wait_for_told
from harness.story import story
from stories.tags import Shown, frame

ARTIST, ALBUM = "夜の 🎺 Café", "Vol. 2 (live) ☕"
SECONDS = round(20 * max(1, SLACK / 5))  # of each song: longer than anybody looks at it
FIRST_HZ = 330
COVER, RED, BLUE = (300, 300), "#C03030", "#3030C0"
DSD_RATE = 2822400
DSD_BLOCK = 4096


def run(*words):
    subprocess.run([str(word) for word in words], check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, timeout=60)


def tag_words(title, form):
    """Each tag as an encoder wants it."""
    return [form.format(name=name, value=value) for name, value in
            (("title", title), ("artist", ARTIST), ("album", ALBUM), ("tracknumber", "3"))]


def by_flac(plain, path, title, cover):
    ogg = ["--ogg"] if path.suffix == ".oga" else []
    run("flac", "-f", "-s", *ogg, f"--picture={cover}", *tag_words(title, "--tag={name}={value}"), "-o", path, plain)


def by_oggenc(plain, path, title, _):
    run("oggenc", "-Q", "-t", title, "-a", ARTIST, "-l", ALBUM, "-N", 3, "-o", path, plain)


def by_opusenc(plain, path, title, cover):
    run("opusenc", "--quiet", "--title", title, "--artist", ARTIST, "--album", ALBUM, "--tracknumber", 3, "--picture", cover, plain, path)


def by_lame(plain, path, title, cover):
    run("lame", "--silent", "--id3v2-utf16", "--tt", title, "--ta", ARTIST, "--tl", ALBUM, "--tn", 3, "--ti", cover, plain, path)


def by_wavpack(plain, path, title, cover):
    tags = [word for each in (f"Title={title}", f"Artist={ARTIST}", f"Album={ALBUM}", "Track=3") for word in ("-w", each)]
    run("wavpack", "-q", "-y", *tags, "--write-binary-tag", f"Cover Art (Front)=@{cover}", plain, "-o", path)


def by_mpcenc(plain, path, title, _):
    run("mpcenc", "--silent", "--overwrite", "--title", title, "--artist", ARTIST, "--album", ALBUM, "--track", 3, plain, path)


def by_ffmpeg(*options, inside=False):
    def make(plain, path, title, cover):
        tags = [word for each in (f"title={title}", f"artist={ARTIST}", f"album={ALBUM}", "track=3") for word in ("-metadata", each)]
        picture = ["-i", str(cover), "-map", "0", "-map", "1", "-c:v", "copy", "-disposition:v", "attached_pic"] if inside else []
        encode(["-i", str(plain), *picture, *options, *tags], path)

    return make


def by_our_ape(plain, path, title, _):
    with wave.open(str(plain)) as sound:
        samples = np.frombuffer(sound.readframes(sound.getnframes()), "<i2")[::sound.getnchannels()]
        write_ape(path, samples, sound.getframerate())
    tags = {"Title": title, "Artist": ARTIST, "Album": ALBUM, "Track": "3"}
    items = b"".join(struct.pack("<II", len(value.encode()), 0) + name.encode() + b"\0" + value.encode() for name, value in tags.items())
    with open(path, "ab") as out:
        out.write(items + b"APETAGEX" + struct.pack("<IIII8x", 2000, len(items) + 32, len(tags), 0))


def write_dsf(_, path, title, hz):
    """A tone in bits, by a modulator of the first order, with a tag behind it."""
    count = DSD_BLOCK * 8 * 128
    level = 0.4 * np.sin(2 * np.pi * hz * np.arange(count) / DSD_RATE)
    # What has been handed out of the sum so far, each bit 1 or -1.
    whole = np.floor((np.cumsum(level) + np.arange(1, count + 1)) / 2)
    bits = np.diff(whole, prepend=0).astype(np.uint8)
    block = np.packbits(bits, bitorder="little").reshape(-1, DSD_BLOCK)
    data = np.stack((block, block), axis=1).tobytes()
    frames = b"".join(frame(name, b"\1" + text.encode("utf-16")) for name, text in
                      ((b"TIT2", title), (b"TPE1", ARTIST), (b"TALB", ALBUM), (b"TRCK", "3")))
    tag = b"ID3\3\0\0" + bytes(len(frames) >> shift & 127 for shift in (21, 14, 7, 0)) + frames
    head = 28 + 52 + 12
    path.write_bytes(struct.pack("<4sQQQ", b"DSD ", 28, head + len(data) + len(tag), head + len(data)) +
                     struct.pack("<4sQIIIIIIQII", b"fmt ", 52, 1, 0, 2, 2, DSD_RATE, 1, count, DSD_BLOCK, 0) +
                     struct.pack("<4sQ", b"data", 12 + len(data)) + data + tag)


# How each is made, and whether a cover that is found is inside; else the one beside is shown (the libraries find none in OGA).
CODERS = {"flac": (by_flac, True), "ogg": (by_oggenc, False), "oga": (by_flac, False), "opus": (by_opusenc, True),
          "m4a": (by_ffmpeg(inside=True), True), "m4b": (by_ffmpeg("-f", "ipod", inside=True), True), "aac": (by_ffmpeg("-write_id3v2", "1"), False),
          "wma": (by_ffmpeg(), False), "ape": (by_our_ape, False), "wv": (by_wavpack, True), "mpc": (by_mpcenc, False),
          "tta": (by_ffmpeg(), False), "mka": (by_ffmpeg(), False), "dsf": (write_dsf, False), "mp3": (by_lame, True)}


def songs_of(folder):
    """A song of each format, {path: (title, hertz, whether it has a cover inside)}."""
    plain, cover = folder.parent / "plain.wav", folder.parent / "inside.jpg"
    Image.new("RGB", COVER, RED).save(cover)
    Image.new("RGB", COVER, BLUE).save(folder / "cover.jpg")
    songs = {}
    for number, (ending, (make, inside)) in enumerate(CODERS.items()):
        hz = FIRST_HZ * 1.08**number
        path = folder / f"{number + 1}. Song.No {number} (夜 🎵).{ending}"
        title = f"{ending.upper()} 夜に駆ける 🌙 no. {number}"
        tone(plain, hz, SECONDS)
        make(plain, path, title, hz if ending == "dsf" else cover)
        songs[path] = title, hz, inside
    return songs


# KIND-23, KIND-25, LIST-57, TEXT-04
@story("albums: a song, a list and a film of today, each opened from a file manager: it plays at once, with artist and title")
def opened_by_a_double_click(stage):
    plain = tone(stage.media / "plain.wav", 440, SECONDS)
    song, films, lists = (stage.media / name for name in ("My.Songs", "films", "lists"))
    for folder in (song, films, lists):
        folder.mkdir()
    tags = ["-metadata", "title=夜に駆ける", "-metadata", f"artist={ARTIST}"]
    encode(["-i", str(plain), *tags], song / "My.Song (live).flac")
    encode(["-i", str(tone(stage.media / "other.wav", 554, SECONDS)), "-metadata", "title=Of a list", "-metadata", f"artist={ARTIST}"],
           stage.media / "b.side.ogg")
    (lists / "a.list.m3u8").write_text("#EXTM3U\n../b.side.ogg\n", encoding="utf-8")
    encode(["-f", "lavfi", "-i", f"testsrc2=s=320x240:r=25:d={SECONDS}", "-i", str(tone(stage.media / "third.wav", 698, SECONDS)),
            "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "aac", "-metadata", "title=A film",
            "-metadata", f"artist={ARTIST}"], films / "VID_2026.11.22 (1).mp4")
    open_by_player(stage, "audio/flac", "audio/x-mpegurl", "application/vnd.apple.mpegurl", "video/mp4")
    stage.player.start("--open")
    shown = Shown(stage)
    for folder, hz, title in ((song, 440, "夜に駆ける"), (lists, 554, "Of a list"), (films, 698, "A film")):
        with FileManager(stage, folder) as files:
            files.open_all()
            stage.sound.wait_for(hz, 15)  # the file manager starts a program first
            shown.wait_for_title(f"{title} - {ARTIST}")
    stage.leave_picture("film")
    equal(stage.player.power_off(), 0, "exit code")


def cover_shown(shown):
    """The colour in the middle of the cover that the media interface names."""
    path = shown.cover()
    if path is None:
        return None
    try:
        with Image.open(path) as held:
            red, _, blue = held.convert("RGB").getpixel((150, 150))
    except OSError:
        return None  # of the song before, and gone by now
    return RED if red > blue else BLUE


# KIND-23, KIND-24, KIND-25, TEXT-04, TEXT-11, TEXT-13, LIST-60
@story("albums: a folder of an album in each format, by its usual encoder: opened, each is heard, and title, artist and cover are shown")
def album_of_each_format(stage):
    folder = stage.media / "My.Music ガンマ" / "Vol. 2 (live) 🎺"
    folder.mkdir(parents=True)
    songs = songs_of(folder)
    stage.player.start("--open", folder)
    shown = Shown(stage)
    stage.desk.rest()
    for number, (path, (title, hz, inside)) in enumerate(songs.items(), 1):
        if number > 1:
            stage.player.press(NEXT)
            stage.desk.rest()
        stage.sound.wait_for(hz)
        shown.wait_for_title(f"{title} - {ARTIST}")
        kind = path.suffix[1:].upper()
        wait_for_told(stage, "Display", f"{kind} File Now On Play" if kind == "MP3" else f"{kind} Now On Play")
        wait_for_told(stage, "FileNo", f"{number:03}")
        shown.wait_for("xesam:album", ALBUM)
        equal(shown.metadata()["xesam:trackNumber"], 3, f"number on the album of {path.name}")
        wait(f"the cover of {path.name}", lambda wanted=RED if inside else BLUE: cover_shown(shown) == wanted)
        stage.leave_picture(path.suffix[1:])
    equal(told_surely(stage, "Total FileNo"), str(len(songs)), "songs")
    equal(stage.player.boxes(), [], "boxes")
    equal(stage.player.power_off(), 0, "exit code")


TONES = (440, 554, 698)
TRACK_SECONDS = round(12 * max(1, SLACK / 5))


def place_of(number):
    minutes, seconds = divmod(number * TRACK_SECONDS, 60)
    return f"{minutes:02}:{seconds:02}:00"


def sheet_over(folder, ending):
    """One file of three tones, and the sheet that says where they begin."""
    folder.mkdir(parents=True)
    plain = steps(folder.parent / "all.wav", TONES, TRACK_SECONDS)
    name = f"The.Album (all).{ending}"
    encode(["-i", str(plain)], folder / name)
    tracks = "".join(f'  TRACK {number + 1:02} AUDIO\n    TITLE "Part no. {number + 1}"\n'
                     f"    INDEX 01 {place_of(number)}\n" for number in range(len(TONES)))
    sheet = folder / "The.Album.cue"
    sheet.write_text(f'PERFORMER "{ARTIST}"\nFILE "{name}" WAVE\n{tracks}', encoding="utf-8")
    return sheet


def hear_tracks(stage):
    wait_for_told(stage, "Total FileNo", "3")
    for number, hz in enumerate(TONES, 1):
        stage.sound.wait_for(hz, 12)
        wait_for_told(stage, "FileNo", f"{number:03}")
        wait_for_told(stage, "Tittle", f"Part no. {number} - {ARTIST}")
        if number < len(TONES):
            stage.player.press(NEXT)


# LIST-57, LIST-62, TEXT-15
@story("albums: the sheet over one FLAC, MP3, Opus or M4A file is an album of tracks, opened and dropped; a plain start refuses it")
def sheet_over_a_sound(stage):
    for ending in ("flac", "mp3", "opus", "m4a"):
        sheet = sheet_over(stage.media / f"{ending} an.album", ending)
        stage.player.start("--open", sheet)
        hear_tracks(stage)
        equal(stage.player.boxes(), [], f"boxes, {ending}")
        equal(stage.player.power_off(), 0, f"exit code, {ending}")
    stage.player.start(sheet)
    steady("an empty list", lambda: told(stage, "Total FileNo") in ("", None), 0.5)
    equal(stage.player.power_off(), 0, "exit code")
    other = tone(stage.media / "other.wav", 880, 60)
    with FileManager(stage, sheet.parent) as files:  # the sheet and its file
        for ways, count in (((), "0"), (("--open",), "4")):
            stage.player.start(*ways, other)
            wait_for_told(stage, "Total FileNo", "1")
            files.drag_all_to(*stage.player.button(PLAY))
            wait_for_told(stage, "Total FileNo", count)
            equal(stage.player.power_off(), 0, "exit code")


PHOTOS = {"avif": lambda plain, path: run("avifenc", "--lossless", plain, path),
          "heic": lambda plain, path: run("heif-enc", "-L", "-o", path, plain),
          "jxl": lambda plain, path: run("cjxl", "--quiet", "-d", "0", plain, path)}


def lacking_types(stage):
    """The types that the player says it has no decoder of."""
    told_by_about = stage.session.run([str(stage.player.program), "--about"])
    line = next(line for line in told_by_about.splitlines() if line.startswith("Types without a decoder"))
    return line.partition(":")[2].replace(" ", "").split(",")


# KIND-24, KIND-26
@story("albums: AVIF, HEIC and JXL are shown where the system decodes them; where it does not, --about and the start's box say so")
def photos(stage):
    plain = stage.media / "plain.png"
    Image.new("RGB", (320, 240), RED).save(plain)
    lacking = lacking_types(stage)
    song = tone(stage.media / "song.wav", 440, 60)
    for ending, make in PHOTOS.items():
        path = stage.media / f"IMG 0001.edited.{ending}"
        make(plain, path)
        refused = ending.upper() in lacking
        stage.player.start("--open", path, panel=not refused)
        if refused:
            stage.player.wait_for_box(f"nothing on this machine decodes {ending.upper()}")
            stage.leave_picture(f"{ending}_refused")
            stage.desk.key("Return")
            stage.player.wait_for_panel()
            equal(stage.player.boxes(), [], "boxes")
            entries = told_surely(stage, "Total FileNo")
            check(entries in ("", "0"), f"entries: {entries!r}")
        else:
            wait_for_told(stage, "Display", f"{ending.upper()} IMAGE")
            stage.desk.wait_for_colour(stage.desk.screen.width // 2, stage.desk.screen.height // 2, RED)
        equal(stage.player.start_another("--open", song).wait(10), 0, "exit code of the second start")
        stage.sound.wait_for(440)
        equal(stage.player.power_off(), 0, f"exit code, {ending}")
