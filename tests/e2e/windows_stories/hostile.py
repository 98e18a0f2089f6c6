# SPDX-License-Identifier: GPL-3.0-or-later
"""Files and names that were made to freeze, to bloat or to mislead the player, each by a list and by another start: the panel
answers, memory stays, a good file plays behind each, and it ends in order."""

import os
import pathlib
import struct
import time
import zlib

import numpy as np
from PIL import Image

from harness.expect import StoryFailure, check, equal, wait
from harness.media import tone
from harness.player import NUMBER_RECORD, TITLE_RECORD
from harness.story import story
from wine import windows_path

ANSWER_SECONDS = 2.0
# Wine's decoders spin over this one for good.
SPUN = {"deep.mov"}
LOOK_SECONDS = 0.4  # for a box, or for what the file does
HANDED_OVER_SECONDS = 20
MOST_MEGABYTES = 400
TONES = 440, 660


def riff(kind, *chunks):
    body = kind + b"".join(name + struct.pack("<I", len(content)) + content for name, content in chunks)
    return b"RIFF" + struct.pack("<I", len(body)) + body


def wave(channels, rate, align, bits, claimed):
    form = struct.pack("<HHIIHH", 1, channels, rate, rate * align & 0xFFFFFFFF, align, bits)
    return b"RIFF\xff\xff\xff\xffWAVEfmt \x10\0\0\0" + form + b"data" + struct.pack("<I", claimed) + bytes(2000)


def chunk(name, content):
    return struct.pack(">I", len(content)) + name + content + struct.pack(">I", zlib.crc32(name + content))


def png(width, height, between=b""):
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) + between +
            chunk(b"IDAT", zlib.compress(bytes(100_000), 9)) + chunk(b"IEND", b""))


def layers(path, size, times, claimed=None):
    """A progressive JPEG whose last layer comes again and again, and which says to be of another size."""
    Image.new("L", size, 128).save(path, "JPEG", progressive=True)
    whole = path.read_bytes()
    last, frame = whole.rfind(b"\xff\xda"), whole.find(b"\xff\xc2")
    if claimed:
        whole = whole[:frame + 5] + struct.pack(">HH", claimed[1], claimed[0]) + whole[frame + 9:]
    path.write_bytes(whole[:-2] + whole[last:-2] * times + b"\xff\xd9")


def midi(tracks, division, events):
    return (b"MThd\0\0\0\x06\0\x01" + struct.pack(">HH", tracks, division) + b"MTrk" + struct.pack(">I", len(events)) + events)


def contents():
    """What lies in files: name, bytes."""
    much = zlib.compress(bytes(8_000_000), 9)
    return {
        "no_channels.wav": wave(0, 44100, 0, 16, 2000), "all_channels.wav": wave(65535, 44100, 65535, 16, 2000),
        "no_rate.wav": wave(2, 0, 4, 16, 2000), "no_align.wav": wave(2, 44100, 0, 16, 0xFFFFFFF0),
        "endless.wav": wave(2, 1, 4, 32, 0xFFFFFFFF), "chunks.wav": riff(b"WAVE", *[(b"LIST", b"")] * 200_000),
        "tag.mp3": b"ID3\x04\0\0\x7f\x7f\x7f\x7f" + b"\xff\xfb\x90\0" * 100, "sync.mp3": b"\xff" * 300_000,
        "one.mp3": b"\xff", "frames.mp3": b"\xff\xfb\x90\0" * 200_000,
        "tracks.mid": midi(65535, 96, b"\0\xff\x2f\0"), "no_time.mid": midi(1, 0, b"\0\x90\x40\x40\x83\x60\x80\x40\0\0\xff\x2f\0"),
        "far.mid": midi(1, 1, b"\xff\xff\xff\x7f\x90\x40\x40" * 20_000), "endless.rmi": b"RIFF\xff\xff\xff\xffRMIDdata\xff\xff\xff\xff",
        "lists.avi": b"RIFF\xff\xff\xff\xffAVI " + b"LIST\xff\xff\xff\xffhdrl" * 50_000,
        "loop.mov": b"\0\0\0\0moov" * 1000, "deep.mov": b"".join(struct.pack(">I", 8 * (4000 - i)) + b"moov" for i in range(4000)),
        "packs.mpg": b"\0\0\1\xba" * 100_000, "noise.mpg": b"\0\0\1\xb3" + os.urandom(100_000),
        "address.wmv": b'<asx version="3"><entry><ref href="http://127.0.0.1:9/a.wmv"/></entry></asx>',
        "page.mp3": b"#EXTM3U\r\nhttp://127.0.0.1:9/a.mp3\r\n", "broken.cda": b"RIFF\x24\0\0\0CDDAfmt " + b"\xff" * 28,
        "large.png": png(30000, 30000), "sides.png": png(0x7FFFFFFF, 1), "much.png": png(4, 4, chunk(b"zTXt", b"k\0\0" + much) * 100),
        "large.gif": png(30000, 30000), "much.gif": png(4, 4, chunk(b"zTXt", b"k\0\0" + much) * 100),
        "screen.gif": b"GIF89a\xff\xff\xff\xff\x80\0\0\0\0\0\xff\xff\xff,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;",
        "pictures.gif": b"GIF89a\x10\0\x10\0\x80\0\0\0\0\0\xff\xff\xff" + b",\0\0\0\0\1\0\1\0\0\2\2\x44\1\0" * 100_000 + b";",
        "sides.bmp": b"BM" + struct.pack("<IIIIiiHHI", 0, 0, 54, 40, 2**31 - 1, -(2**31), 1, 32, 0) + bytes(20),
        "runs.bmp": b"BM" + struct.pack("<IIIIiiHHI", 0, 0, 1078, 40, 6000, 6000, 1, 8, 1) + bytes(1044) + b"\0\2\xff\0" * 500_000,
        "empty.wav": b"", "empty.jpg": b"", "empty.avi": b"",
    }


def hostile_files(folder):
    """What lies there, and names that lead elsewhere: [path as Windows writes it]."""
    for name, content in contents().items():
        (folder / name).write_bytes(content)
    layers(folder / "layers.jpg", (4000, 3000), 1000)
    layers(folder / "slow.jpg", (3000, 2000), 95)
    layers(folder / "huge.jpg", (800, 600), 1, (16000, 12500))
    with open(folder / "hole.jpg", "wb") as out:
        out.write(b"\xff\xd8\xff\xe0\0\x10JFIF")
        out.truncate(250 << 20)
    os.mkfifo(folder / "fifo.wav")
    (folder / "folder.mp3").mkdir()
    (folder / "zero.wav").symlink_to("/dev/zero")
    found = [windows_path(path) for path in sorted(folder.iterdir())]
    odd = windows_path(tone(folder / "odd.wav", 880, 2))
    here = windows_path(folder)
    devices = [f"{here}\\{name}" for name in ("CON.wav", "NUL.mp3", "aux.mid", "COM1.avi", "lpt1 .jpg", "NUL", "PRN.x.wav")]
    elsewhere = ["\\\\.\\pipe\\corvane.wav", "\\\\?\\pipe\\corvane.mp3", "\\\\192.0.2.1\\music\\a.mp3", "//192.0.2.1/music/a.jpg",
                 "\\\\?\\UNC\\192.0.2.1\\music\\a.avi", "\\\\?\\GLOBALROOT\\Device\\Null.wav", "\\\\.\\C:\\a.wav", "\\??\\C:\\a.wav",
                 "http://127.0.0.1:9/a.mp3", f"{odd}:stream.wav", f"{odd}::$DATA", f"{odd}.", f"{odd} ", f"{here}\\*.wav",
                 f"{here}\\?.wav", f"{here}\\..\\..\\..\\..\\..\\..\\a.wav", f"{here}\\" + "d" * 120 + "\\" + "e" * 120 + "\\a.wav",
                 f"{here}\\\u202evaw.exe.wav", f"{here}\\a\tb.wav"]
    return found + devices + elsewhere


class Hands:
    """Plays one file after the other, and measures how soon the panel answers."""

    def __init__(self, stage):
        self.stage, self.player = stage, stage.player
        self.slowest = 0.0, ""
        self.boxed = 0
        self.heaviest = 0.0, ""

    def weigh(self, name):
        """Fails where this file took the memory that none may take."""
        peak = peak_megabytes(self.stage)
        if peak > self.heaviest[0]:
            self.heaviest = peak, name
        check(peak < MOST_MEGABYTES, f"{peak:.0f} MB")

    def number(self):
        return self.player.look(NUMBER_RECORD)

    def answered(self, name, act):
        """Acts, and waits for the panel's answer: another number, or a box. True: another number."""
        before, begun = self.number(), time.monotonic()
        act()
        wait("the panel's answer", lambda: self.moved(before) or self.box(), ANSWER_SECONDS)
        self.slowest = max(self.slowest, (time.monotonic() - begun, name))
        return self.moved(before)

    def moved(self, before):
        """Another number stands on the panel; a box that lies over it shows none."""
        return np.abs(self.number() - before).max() > 60 and not self.box()

    def box(self):
        boxes = self.player.boxes()
        return boxes[0] if boxes else None

    def ignore(self, box):
        """Also a box that only tells, as of a folder that holds nothing."""
        self.boxed += 1
        self.stage.desk.focus(box)
        self.stage.desk.key("alt+i")
        try:
            wait("the box goes", lambda: all(each.id != box.id for each in self.player.boxes()), LOOK_SECONDS)
        except StoryFailure:
            self.close(box)

    def close(self, box):
        self.stage.desk.focus(box)
        self.stage.desk.key("Return")
        wait("the box goes", lambda: all(each.id != box.id for each in self.player.boxes()), ANSWER_SECONDS)

    def leave(self, name):
        """From a hostile file to the one behind it: by its box, where there is one, or by Next."""
        before = self.number()
        try:
            box = wait("a box", self.box, LOOK_SECONDS)
        except StoryFailure:
            box = None
        if box is None and self.answered(name, lambda: self.player.key("period")):
            return
        box = box or self.box()  # it came just then
        if box:
            self.answered(name, lambda: self.ignore(box))
        wait("the number of the file behind it", lambda: self.moved(before), ANSWER_SECONDS)

    def hear(self, hz):
        if self.stage.sound.pitch_now() == 0:
            self.player.key("z")
        self.stage.sound.wait_for(hz, 10)


def peak_megabytes(stage):
    status = pathlib.Path(f"/proc/{stage.player.process.pid}/status").read_text()
    return int(next(line.split()[1] for line in status.splitlines() if line.startswith("VmHWM"))) / 1024


def good_files(stage):
    return [tone(stage.folder / f"good{hz}.wav", hz, 60) for hz in TONES]


def finish(stage, hands, files, way):
    told = (f"{len(files)} files by {way}, {hands.boxed} told by a box; slowest answer {hands.slowest[0]:.2f} s ({hands.slowest[1]}), "
            f"most memory {hands.heaviest[0]:.0f} MB ({hands.heaviest[1]})")
    print(f"     {told}", flush=True)
    stage.leave_text("hostile", told + "\n")
    equal(stage.player.power_off(), 0, "exit code")


# WIN-60: Hostile files and names hold nothing up, and a good file follows each
@story("windows: hostile files and names of a list hold nothing up, and a good file follows each")
def by_list(stage):
    player, goods = stage.player, good_files(stage)
    files = hostile_files(stage.media)
    check(len(files) >= 60, f"{len(files)} files")
    entries = [entry for index, each in enumerate(files) for entry in (each, windows_path(goods[index % 2]))]
    lines = [f"LIST{index:03}=entry{index}|{entry}" for index, entry in enumerate(entries)]
    (player.folder / "FILE00.INI").write_text("\r\n".join(["[FILELIST]", "LISTNAME=", *lines]) + "\r\n", encoding="utf-8")
    player.settings(INTERVAL=0, DELAYTIME=0)
    player.start()
    hands = Hands(stage)
    for index, each in enumerate(files):
        try:
            player.key("z")
            hands.leave(each)
            hands.hear(TONES[index % 2])
            hands.weigh(each)
            player.key("c")
            stage.sound.wait_for_silence()
            if index + 1 < len(files):
                hands.answered(each, lambda: player.key("period"))
        except StoryFailure as failure:
            raise StoryFailure(f"{index} {each}: {failure}") from failure
    finish(stage, hands, files, "list")


# WIN-60
@story("windows: hostile files and names handed over by another start hold nothing up, and a good file follows each")
def by_hand_over(stage):
    player, goods = stage.player, good_files(stage)
    files = [each for each in hostile_files(stage.media) if each.rpartition("\\")[2] not in SPUN]
    player.settings(INTERVAL=0, DELAYTIME=0)
    player.start("--open")  # by the ways of the starts that hand over: one list of kinds
    hands, left_out = Hands(stage), 0
    for index, each in enumerate(files):
        try:
            before = player.look(TITLE_RECORD)
            other = player.start_another("--open", each, windows_path(goods[index % 2]))
            equal(other.wait(HANDED_OVER_SECONDS), 0, "the other start's exit code")
            wait("the title of the next list", lambda: np.abs(player.look(TITLE_RECORD) - before).max() > 60, ANSWER_SECONDS)
            if player.log().count(": left out, because") > left_out:
                left_out = player.log().count(": left out, because")
                hands.close(wait("the box that tells of it", hands.box, ANSWER_SECONDS))
            else:
                hands.leave(each)
            hands.hear(TONES[index % 2])
            hands.weigh(each)
        except StoryFailure as failure:
            raise StoryFailure(f"{index} {each}: {failure}") from failure
    check(left_out >= 15, f"{left_out} are left out")
    finish(stage, hands, files, "another start")

