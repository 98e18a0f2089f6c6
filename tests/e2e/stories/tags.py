# SPDX-License-Identifier: GPL-3.0-or-later
"""Texts of tags on the display and in the media interface, loudness by tags, and albums without a seam: with the conveniences,
and the same files without them."""

import pathlib
import struct
import urllib.parse
import wave
import zlib

import numpy as np
from PIL import Image

from harness.bus import PLAYER, PROPERTIES, AnswerWatch, Bus
from harness.expect import SLACK, check, equal, steady, wait
from harness.in_time import Starved
from harness.media import disc, encode, movie, tone
from harness.player import NEXT, STOP
from harness.sound import BLOCK, QUIET, RATE
from harness.story import story
from hostile.parts import bomb
from gi.repository import GLib

HZ, LEVEL = 441, 0.4
LEVEL_SECONDS = 0.5  # over which a loudness is taken
STARVED = 0.2  # seconds that what makes the sound was held by the machine: less is no gap
MOST_PHASE = 0.35  # radians by which a tone may jump: a millisecond is 2.8


class Shown:
    """What the display and the media interface say of the file that plays."""

    def __init__(self, stage):
        self.stage = stage
        self.bus = Bus(stage.session)

    def title(self):
        return self.stage.accessibility.labels(self.stage.player.process.pid).get("Tittle", [0, "", 0])[1]

    def wait_for_title(self, title):
        wait(f"the title {title!r}", lambda: self.title() == title)

    def metadata(self):
        # The panel shows itself, and its texts, before its media interface.
        wait("the media interface", lambda: self.bus.state()[0], 10)
        return self.bus.call("Get", GLib.Variant("(ss)", (PLAYER, "Metadata")), PROPERTIES)[0]

    def wait_for(self, key, value):
        wait(f"{key} {value!r}", lambda: self.metadata().get(key) == value)

    def cover(self):
        """The picture that the media interface names; None: it names none."""
        address = self.metadata().get("mpris:artUrl")
        return pathlib.Path(urllib.parse.unquote(address.removeprefix("file://"))) if address else None


def tagged(path, tags, hz=HZ, seconds=20, cover=None):
    """A sound with tags, and a picture inside."""
    plain = tone(path.with_suffix(".wav"), hz, seconds)
    inputs = ["-i", str(plain)]
    if cover:
        inputs += ["-i", str(cover), "-map", "0", "-map", "1", "-c:v", "copy", "-disposition:v", "attached_pic"]
    for key, value in tags.items():
        inputs += ["-metadata", f"{key}={value}"]
    encode(inputs, path)
    plain.unlink()
    return path


LONG_ARABIC = " ".join(["يا مسافر وحدك وفايتني"] * 9)


def album(folder, cover):
    return [
        tagged(folder / "one.mp3", {"title": "夜に駆ける", "artist": "ヨアソビ", "album": "本", "track": "3/9"}, cover=cover),
        tagged(folder / "two.mp3", {"title": "يا مسافر وحدك", "artist": "عبد الوهاب"}),
        tagged(folder / "three.mp3", {"title": "Party 🎉 people 👩‍🎤", "artist": "The 🐝s"}),
        tagged(folder / "four.mp3", {"title": "A title that goes on and on " * 9, "artist": "Somebody"}),
        tagged(folder / "longer.mp3", {"title": LONG_ARABIC, "artist": "عبد الوهاب"}),
        tagged(folder / "five.mp3", {"artist": "Only an artist"}),
    ]


# TEXT-04, TEXT-11
@story("texts: title and artist of the tags stand on the display and in the media interface, with the cover")
def texts_of_tags(stage):
    picture = stage.media / "inside.png"
    Image.new("RGB", (300, 300), "#c03030").save(picture)
    files = album(stage.media, picture)
    stage.player.start("--open", *map(str, files))
    shown = Shown(stage)
    shown.wait_for_title("夜に駆ける - ヨアソビ")
    shown.wait_for("xesam:artist", ["ヨアソビ"])
    metadata = shown.metadata()
    equal(metadata["xesam:title"], "夜に駆ける", "the title")
    equal((metadata["xesam:album"], metadata["xesam:trackNumber"]), ("本", 3), "album and number")
    cover = shown.cover()
    with Image.open(cover) as held:
        equal((held.size, held.convert("RGB").getpixel((9, 9))), ((300, 300), (0xC0, 0x30, 0x30)), "the cover")
    equal(cover.stat().st_mode & 0o777, 0o600, "who may read it")
    stage.leave_picture("japanese")
    for name, title in (("arabic", "يا مسافر وحدك - عبد الوهاب"), ("emoji", "Party 🎉 people 👩‍🎤 - The 🐝s"),
                        ("long", ("A title that goes on and on " * 9).strip() + " - Somebody"), ("long_arabic", f"{LONG_ARABIC} - عبد الوهاب"), ("name", "five")):
        stage.player.press(NEXT)
        shown.wait_for_title(title)
        equal(shown.cover(), None, "a cover of a file without one")
        stage.desk.rest()
        stage.leave_picture(name)
    shown.wait_for("xesam:artist", ["Only an artist"])
    stage.player.stop()
    check(not cover.exists(), "the cover stays behind the player's end")


# TEXT-05
@story("texts: a plain start shows names, and reads no tags")
def names_without(stage):
    picture = stage.media / "inside.png"
    Image.new("RGB", (300, 300), "#c03030").save(picture)
    files = album(stage.media, picture)[:1]
    stage.player.settings(AUTOPLAY="ON")
    stage.player.start(*files)
    stage.sound.wait_for(HZ, 12)
    shown = Shown(stage)
    wait("the media interface", lambda: shown.bus.state()[0] == "Playing", 10)
    steady("the name", lambda: shown.title() == "one", 1.5)
    metadata = shown.metadata()
    equal(metadata["xesam:title"], "one", "the title")
    check(not {"xesam:artist", "xesam:album", "mpris:artUrl"} & set(metadata), f"told {sorted(metadata)}")
    equal(metadata["xesam:trackNumber"], 1, "the number")


# TEXT-13, TEXT-15
@story("texts: a cover beside the file, the tracks of a sheet, and the switch in the settings file")
def texts_beside(stage):
    folder = stage.media / "album"
    folder.mkdir()
    song = tagged(folder / "song.mp3", {"title": "Song"})
    Image.new("RGB", (200, 200), "#3030c0").save(folder / "cover.jpg")
    sheet, tracks = disc(stage.media, [440, 660], 8)
    text = sheet.read_text().replace("  TRACK 01", 'TITLE "The Disc"\nPERFORMER "The Band"\n  TRACK 01')
    sheet.write_text(text.replace("    INDEX 01 00:00:00", '    TITLE "First"\n    INDEX 01 00:00:00'))
    stage.player.start("--open", str(song), str(tracks[0]))
    shown = Shown(stage)
    shown.wait_for_title("Song")
    wait("the cover beside", lambda: shown.cover() == folder / "cover.jpg")
    stage.player.press(NEXT)
    shown.wait_for_title("First - The Band")
    shown.wait_for("xesam:album", "The Disc")
    stage.player.stop()
    (stage.player.folder / "KADO.INI").write_text("[CONVENIENCES]\r\nTEXTS=OFF\r\n", encoding="utf-8")
    stage.player.start("--open", str(song))
    stage.sound.wait_for(HZ, 12)
    steady("the name", lambda: shown.title() == "song", 1)


def frame(name, data):
    return name + struct.pack(">I", len(data)) + bytes(2) + data


def with_frames(path, frames, sound):
    """A sound behind a tag of such frames."""
    size = bytes(len(frames) >> shift & 127 for shift in (21, 14, 7, 0))
    path.write_bytes(b"ID3\3\0\0" + size + frames + sound)
    return path


def large_png():
    """The head of a picture of 500 megapixels."""
    return b"\x89PNG\r\n\x1a\n" + struct.pack(">I4sII", 13, b"IHDR", 25_000, 20_000) + bytes(2000)


def bomb_png():
    """A few kilobytes that unpack to 400 MB, of a picture that says it is small."""
    packed = bomb(400 << 20)

    def part(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    return b"\x89PNG\r\n\x1a\n" + part(b"IHDR", struct.pack(">II5B", 64, 64, 8, 2, 0, 0, 0)) + part(b"zTXt", b"x\0\0" + packed) + part(b"IDAT", packed) + part(b"IEND", b"")


# TEXT-02, TEXT-13, TEXT-14
@story("texts: tags that strangers made end quickly, and the panel answers meanwhile")
def hostile_tags(stage):
    sound = tone(stage.media / "plain.mp3", HZ, 60).read_bytes()  # none ends by itself
    title, artist = frame(b"TIT2", b"\0The title"), frame(b"TPE1", b"\0Somebody")
    crowd = b"".join(frame(b"TXXX", f"\0name{number}\0value".encode()) for number in range(15_000 if stage.watch.command else 300_000))  # reading ends in time
    files = {
        "crowd": (title + crowd, "The title"),
        "large": (frame(b"TXXX", b"\0x\0" + b"y" * 40_000_000) + title, "large"),
        "picture": (frame(b"APIC", b"\0image/png\0\3\0" + large_png()) + title, "The title"),
        "pictures": (title + (frame(b"APIC", b"\0image/png\0\3\0" + large_png()) + frame(b"APIC", b"\0-->\0\3\0file:///dev/zero")) * 400, "The title"),
        "lying": (title + frame(b"APIC", b"\0image/jpeg\0\3\0\xff\xd8\xff\xe0" + b"\xff" * 6_000_000), "The title"),
        "bomb": (title + frame(b"APIC", b"\0image/png\0\3\0" + bomb_png()), "The title"),
        "bytes": (frame(b"TIT2", b"\0" + "夜の歌".encode("cp932")) + artist, "夜の歌 - Somebody"),
        "turned": (frame(b"TIT2", b"\1" + "\u202egpj\x07.exe\n".encode("utf-16")) + artist, "gpj.exe - Somebody"),
        "longest": (frame(b"TIT2", b"\0" + b"x" * 1_000_000), "x" * 300 + "…"),
    }
    (stage.media / "cover.jpg").write_bytes(large_png())
    paths = [with_frames(stage.media / f"{name}.mp3", frames, sound) for name, (frames, _) in files.items()]
    with AnswerWatch(stage.session) as answers:
        stage.player.start("--open", *map(str, paths))
        shown = Shown(stage)
        for number, (name, (_, title_shown)) in enumerate(files.items()):
            if number:
                stage.player.press(NEXT)
            shown.wait_for_title(title_shown)
            wait("its address", lambda: shown.metadata()["xesam:url"].endswith(f"{name}.mp3"))
            if name != "bomb":  # by its head it is as small as covers are
                equal(shown.cover(), None, f"cover of {name}")
        slowest, asked = answers.take()
    check(asked > 5 and slowest < 1.5 * SLACK, f"the slowest of {asked} answers took {slowest:.1f} s")


def loudness(stage):
    """Of what is heard now: 1 is the tone as it was made, but for the coder, which may take a twentieth off."""
    samples = stage.sound.samples(stage.sound.now() - LEVEL_SECONDS)
    blocks = samples[: len(samples) // BLOCK * BLOCK].reshape(-1, BLOCK)
    sounding = blocks[np.abs(blocks).max(axis=1) >= QUIET]  # without what a busy machine drops
    return np.sqrt(np.mean(sounding**2)) / (LEVEL / np.sqrt(2)) if len(sounding) else 0.0


def hear_level(stage, what, wanted):
    """Until the tone is so loud and stays so: where a sound begins, every lower level passes by."""
    def is_so():
        return abs(loudness(stage) / wanted - 1) < 0.08

    wait(f"{what}: {wanted}", is_so)
    steady(f"{what}: {wanted}", is_so, LEVEL_SECONDS)


# LOUD-06, LOUD-08
@story("loudness: gains of the tags are heard with the conveniences, and not without")
def loudness_of_tags(stage):
    songs = [tagged(stage.media / name, {"REPLAYGAIN_TRACK_GAIN": gain, "REPLAYGAIN_TRACK_PEAK": "0.4"})
             for name, gain in (("b.mp3", "-12.04 dB"), ("a.mp3", "+6.02 dB"))]
    stage.player.start("--open", *map(str, songs))
    stage.sound.wait_for(HZ, 12)
    hear_level(stage, "a quarter of it", 0.25)
    stage.player.press(NEXT)
    hear_level(stage, "twice as loud", 2)
    stage.player.press(STOP)
    stage.sound.wait_for_silence()
    stage.player.stop()
    stage.player.settings(AUTOPLAY="ON")
    stage.player.start(songs[0])
    stage.sound.wait_for(HZ, 12)
    hear_level(stage, "as it was made", 1)


def opus_with_gain(path, steps):
    """A sound whose tags tell an R128 gain, in steps of 1/256 decibel."""
    plain = tone(path.with_suffix(".wav"), HZ, 20)
    encode(["-i", str(plain), "-c:a", "libopus", "-b:a", "160k", "-metadata", f"R128_TRACK_GAIN={steps}"], path)
    plain.unlink()
    return path


# LOUD-02, LOUD-03, LOUD-07
@story("loudness: what would clip is held, an R128 gain counts from its own level, and an album played through has its own gain")
def loudness_held_and_of_albums(stage):
    loud = tagged(stage.media / "loud.mp3", {"REPLAYGAIN_TRACK_GAIN": "+20 dB", "REPLAYGAIN_TRACK_PEAK": "0.5"})
    r128 = opus_with_gain(stage.media / "broadcast.opus", -2821)  # 11.02 decibels down, from a level 5 higher
    folder = stage.media / "al.bum"
    folder.mkdir()
    both = {"REPLAYGAIN_TRACK_GAIN": "-12.04 dB", "REPLAYGAIN_TRACK_PEAK": "0.4",
            "REPLAYGAIN_ALBUM_GAIN": "-6.02 dB", "REPLAYGAIN_ALBUM_PEAK": "0.4"}
    songs = [tagged(folder / f"{number}.mp3", both) for number in (1, 2)]
    stage.player.start("--open", loud, r128, *songs)
    for what, wanted in (("what its peak leaves", 2), ("an R128 gain", 0.5), ("the album's gain", 0.5), ("the album's gain", 0.5)):
        hear_level(stage, what, wanted)
        stage.player.press(NEXT)
    stage.player.stop()
    stage.player.start("--open", songs[1], loud, songs[0])
    hear_level(stage, "the track's gain", 0.25)


# TEXT-04, TEXT-09
@story("texts: a movie's title and artist stand on the display, and its name where it tells none")
def texts_of_movies(stage):
    named, plain = stage.media / "VID_0001.trip.mp4", movie(stage.media / "VID_0002.trip.mkv", "#32A046", HZ, 90)
    encode(["-i", str(plain), "-metadata", "title=An der Küste 🌊", "-metadata", "artist=海の人"], named)
    stage.player.settings(DELAYTIME=30)
    stage.player.start("--open", named, plain)
    shown = Shown(stage)
    shown.wait_for_title("An der Küste 🌊 - 海の人")
    shown.wait_for("xesam:title", "An der Küste 🌊")
    stage.player.press(NEXT)
    shown.wait_for_title("VID_0002.trip")


def cut_tone(folder, cuts, ending, *coder, rate=RATE):
    """One long tone, cut into tracks that are coded each by itself."""
    time = np.arange(cuts[-1]) / rate
    samples = np.repeat((np.sin(2 * np.pi * HZ * time) * LEVEL * 32767).astype("<i2"), 2)
    files = []
    for number, (first, end) in enumerate(zip(cuts, cuts[1:]), 1):
        plain = folder / f"{number}.wav"
        with wave.open(str(plain), "wb") as out:
            out.setnchannels(2)
            out.setsampwidth(2)
            out.setframerate(rate)
            out.writeframes(samples[2 * first : 2 * end].tobytes())
        files.append(folder / f"{number}.{ending}")
        encode(["-i", str(plain), *coder], files[-1])
        plain.unlink()
    return files


def jumps(samples):
    """Where the tone's phase goes on in another way: [(seconds, radians)], by windows of a hundredth of a second."""
    window = RATE // 100
    count = len(samples) // window
    turn = np.exp(-2j * np.pi * HZ * np.arange(count * window) / RATE)
    found = (samples[: count * window] * turn).reshape(count, window).mean(axis=1)
    steps = np.angle(found[1:] / found[:-1])
    return [(float(at / 100), float(step)) for at, step in enumerate(steps) if abs(step) > MOST_PHASE]


def closed(samples, seconds):
    """Without the gaps of no more than so many seconds that a busy machine left, which are nothing at all: the tone goes on behind
    each; and where they were."""
    silent = np.flatnonzero(np.diff(np.concatenate(([0], samples == 0, [0]))))
    parts, last = [], 0
    for begin, end in zip(silent[::2], silent[1::2]):
        if RATE // 500 <= end - begin <= seconds * RATE and begin and end < len(samples):
            parts, last = [*parts, samples[last:begin]], end
    return np.concatenate([*parts, samples[last:]]), np.cumsum([len(part) for part in parts])


def play_album(stage, ending, *coder, rate=RATE):
    """Plays a tone in three tracks; returns the jumps in all that was heard of it but its edges."""
    files = cut_tone(stage.media, [0, 100_001, 231_234, 350_000], ending, *coder, rate=rate)
    whole = 350_000 * RATE // rate
    stage.player.start("--open", *map(str, files))
    with Starved(stage) as starved:
        began = stage.sound.wait_for(HZ, 12)
        stage.sound.wait_for_silence(20)
    samples, gaps = stage.sound.samples(began - 1), []
    if starved.seconds > STARVED:
        samples, gaps = closed(samples, starved.seconds)
    sounding = np.flatnonzero(np.abs(samples) > LEVEL / 4)
    first, last = sounding[0], sounding[-1]
    longest = int(np.diff(sounding).max())
    check(longest < RATE // 200, f"a gap of {longest} samples")
    # The server may swallow some milliseconds where a stream begins.
    more = len(gaps) * RATE // 200  # what rings at the edges of a gap
    check(-more <= whole - (last - first) < RATE // 20, f"{last - first} samples were heard of {whole}")
    begin = first + RATE // 20
    at_gaps = [(gap - begin) / RATE for gap in gaps]
    return [(at, step) for at, step in jumps(samples[begin : last - RATE // 20]) if not any(abs(at - gap) < 0.03 for gap in at_gaps)]


# LOUD-05
# LOUD-09: The next track of an album is open before it is wanted, and follows without a seam
@story("loudness: an album of MP3 plays without a seam")
def no_seam_of_mp3(stage):
    equal(play_album(stage, "mp3", "-b:a", "192k"), [], "jumps of the tone")


# LOUD-05, LOUD-09
@story("loudness: an album of Opus plays without a seam")
def no_seam_of_opus(stage):
    equal(play_album(stage, "opus", "-c:a", "libopus", "-b:a", "160k", rate=48_000), [], "jumps of the tone")


# LOUD-05, LOUD-09
@story("loudness: an album of AAC plays without a seam, and with one where its ends are not kept")
def no_seam_of_aac(stage):
    coder = ("m4a", "-c:a", "aac", "-b:a", "256k")
    equal(play_album(stage, *coder), [], "jumps of the tone")
    stage.player.stop()
    (stage.player.folder / "KADO.INI").write_text("[CONVENIENCES]\r\nLOUDNESS=OFF\r\n", encoding="utf-8")
    stage.sound.begin()
    check(play_album(stage, *coder), "the list of edits rounds each end, and the tone does not jump there")
