# SPDX-License-Identifier: GPL-3.0-or-later
"""Lists of other players, sheets of discs and folders, opened and dropped by hand, and lists of thousands of entries."""

import os
import pathlib
import re
import socket

from harness.drops import FileManager
from harness.expect import SLACK, check, equal, steady, wait
from harness.media import disc, tone
from harness.player import NEXT, PLAY, PREVIOUS, REPEAT, read_profile
from harness.signs import told, told_surely, wait_for_told
from harness.sound import same_pitch
from harness.story import story
from stories.media_keys import started
from stories.windows import close_by, open_editor

TONES = (440, 554, 698)
SECONDS = 30
TRACK_SECONDS = round(5 * max(1, SLACK / 5))  # heard from its beginning
NEXT_SECONDS = 15  # until the next one is heard, with the one before
MANY = 9999


def album(folder):
    """Files and sub-folders whose names have dots and blanks; a list of each kind that names them in the order of TONES."""
    (folder / "disc 2.b").mkdir(parents=True)
    paths = [tone(folder / "2. first.wav", TONES[0], SECONDS), tone(folder / "10 - zweites é.wav", TONES[1], SECONDS),
             tone(folder / "disc 2.b" / "夜の歌.wav", TONES[2], SECONDS)]
    return paths


def lists_of(folder, paths):
    names = [str(path.relative_to(folder)) for path in paths]
    first, second, third = names
    tracks = "".join(f"<track><location>{path.as_uri()}</location></track>" for path in paths)
    lists = {
        "utf8.m3u8": "\ufeff#EXTM3U\r\n#EXTINF:1,x\r\n" + "\r\n".join(["./" + first, second, third.replace("/", "\\")]),
        "utf16.m3u": "\r".join(names),
        "numbered.pls": f"[playlist]\nFile3={third}\nFile1={first}\nFile2={paths[1].as_uri()}\nNumberOfEntries=3\n",
        "tracks.xspf": f"<?xml version='1.0'?><playlist><trackList>{tracks}</trackList></playlist>",
        "entries.asx": "".join(f'<Entry><Ref HREF="{name}"></Entry>' for name in names),
    }
    made = []
    for name, text in lists.items():
        made.append(folder.parent / "lists" / name)
        made[-1].parent.mkdir(exist_ok=True)
        made[-1].write_bytes(text.encode("utf-16" if name.startswith("utf16") else "utf-8"))
    for path in made[0].parent.iterdir():
        path.rename(folder / path.name)
    return [folder / path.name for path in made]


def hear_in_order(stage, tones):
    for number, hz in enumerate(tones, 1):
        stage.sound.wait_for(hz)
        wait_for_told(stage, "FileNo", f"{number:03}")
        if number < len(tones):
            stage.player.press(NEXT)


# LIST-57
@story("lists: lists of other players behind --open play their entries; a plain start takes none")
def opened(stage):
    folder = stage.media / "al.bum"
    for path in lists_of(folder, album(folder)):
        stage.player.start("--open", path)
        wait_for_told(stage, "Total FileNo", "3")
        hear_in_order(stage, TONES)
        equal(stage.player.power_off(), 0, f"exit code, {path.name}")
    stage.player.start(path)
    steady("an empty list", lambda: told(stage, "Total FileNo") in ("", None), 0.5)
    stage.player.press(PLAY)
    steady("silence", lambda: stage.sound.pitch_now() == 0, 0.5)
    equal(stage.player.power_off(), 0, "exit code")


# LIST-57, LIST-60
@story("lists: with the conveniences switched on for good, a list and a folder named to a plain start become their entries")
def named_to_a_plain_start(stage):
    folder = stage.media / "al.bum"
    path = lists_of(folder, album(folder))[0]
    stage.player.settings(CONVENIENCES="ON")
    for named in (path, folder):
        stage.player.start(named)
        wait_for_told(stage, "Total FileNo", "3")
        stage.player.press(PLAY)
        hear_in_order(stage, TONES)
        equal(stage.player.power_off(), 0, f"exit code, {named.name}")


# LIST-60
@story("lists: a folder behind --open is its files in natural order, then its folders'; a second start hands it over")
def a_folder(stage):
    folder = stage.media / "al.bum"
    album(folder)
    stage.player.start("--open", tone(stage.media / "other.wav", 880, SECONDS))
    stage.sound.wait_for(880)
    equal(stage.player.start_another("--open", folder).wait(10), 0, "exit code of the second start")
    wait_for_told(stage, "Total FileNo", "3")
    hear_in_order(stage, TONES)
    equal(told_surely(stage, "Tittle"), "夜の歌", "title")
    equal(stage.player.power_off(), 0, "exit code")


# LIST-57, LIST-60
@story("lists: a list and a folder dropped from a file manager become their entries; a plain player takes neither")
def dropped(stage):
    folder = stage.media / "songs"
    album(folder / "in" / "al.bum")
    (folder / "z.m3u").write_text("in/al.bum/2. first.wav\n", encoding="utf-8")
    stage.player.start("--open", tone(stage.media / "other.wav", 880, SECONDS))
    stage.sound.wait_for(880)
    with FileManager(stage, folder) as files:
        files.drag_all_to(*stage.player.button(PLAY))
        wait_for_told(stage, "Total FileNo", "4")
        equal(stage.player.power_off(), 0, "exit code")
        stage.player.start(tone(stage.media / "third.wav", 880, SECONDS))
        wait_for_told(stage, "Total FileNo", "1")
        files.drag_all_to(*stage.player.button(PLAY))
        wait_for_told(stage, "Total FileNo", "0")
    equal(stage.player.power_off(), 0, "exit code")


# LIST-57, LIST-58
@story("lists: one opened by media keys plays what is here, and a box tells of what leads to the network")
def by_the_bus(stage):
    folder = stage.media / "al.bum"
    paths = album(folder)
    mixed = folder / "mixed.m3u"
    mixed.write_text(f"https://example.org/a.mp3\n{paths[1].name}\nhttp://example.org/b.mp3\n", encoding="utf-8")
    remote = started(stage, "--open", tone(stage.media / "other.wav", 880, SECONDS))
    remote.ctl("open", mixed.as_uri())
    stage.sound.wait_for(TONES[1])
    stage.player.wait_for_box("2 entries left out, because they lead to the network")
    stage.leave_picture("left out")
    stage.desk.key("Return")
    stage.player.wait_for_no_box()
    wait_for_told(stage, "Total FileNo", "1")
    equal(stage.player.power_off(), 0, "exit code")
    remote = started(stage, tone(stage.media / "plain.wav", 880, SECONDS))
    check("NotSupported" in remote.call("OpenUri", f"string:{mixed.as_uri()}"), "a plain player opened a list")
    equal(stage.player.power_off(), 0, "exit code")


# LIST-62
@story("lists: the sheet of a disc behind --open is its tracks, with their titles")
def a_sheet(stage):
    folder = stage.media / "d.isc"
    folder.mkdir()
    sheet, _ = disc(folder, TONES, TRACK_SECONDS)
    text = sheet.read_text()
    for number in range(1, 4):
        text = text.replace(f"TRACK {number:02} AUDIO", f'TRACK {number:02} AUDIO\n    TITLE "Title. No {number}"')
    sheet.write_text(text)
    stage.player.start("--open", sheet)
    wait_for_told(stage, "Total FileNo", "3")
    wait_for_told(stage, "Tittle", "Title. No 1")
    stage.sound.wait_for(TONES[0])
    wait_for_told(stage, "Display", "CD Audio Now On Play")
    for hz in TONES[1:]:
        stage.sound.wait_for(hz, NEXT_SECONDS)
    wait_for_told(stage, "Tittle", "Title. No 3")
    equal(stage.player.power_off(), 0, "exit code")


# MEDIA-77
@story("lists: a sheet plays the sounds that lie beside it, where they were coded anew or written in other letters")
def a_sheet_of_other_files(stage):
    folder = stage.media / "album"
    folder.mkdir()
    for name, hz in zip(("One.flac", "TWO.WAV", "Trois.mp3"), TONES):
        tone(folder / name, hz, TRACK_SECONDS)
    (folder / "album.cue").write_text("".join(
        f'FILE "{name}" WAVE\n  TRACK {number:02} AUDIO\n    INDEX 01 00:00:00\n'
        for number, name in enumerate(("One.wav", "two.wav", "Trois.wav"), 1)))
    began = stage.sound.now()
    stage.player.start("--open", folder / "album.cue")
    wait_for_told(stage, "Total FileNo", "3")
    for hz in TONES[1:]:
        stage.sound.wait_for(hz, NEXT_SECONDS)
    stage.sound.expect_order(TONES[:-1], began)
    equal(stage.player.power_off(), 0, "exit code")


# LIST-43
@story("lists: 9,999 entries play from the first to the last, and number and total are shown whole")
def long_list(stage):
    paths = [tone(stage.media / f"{name}.wav", hz, SECONDS) for name, hz in zip(("a", "b"), TONES)]
    path = stage.media / "long.m3u"
    path.write_text("\n".join([paths[0].name] * (MANY - 1) + [paths[1].name] * 2) + "\n")
    stage.player.start("--open", path)
    wait_for_told(stage, "Total FileNo", str(MANY))
    stage.sound.wait_for(TONES[0])
    stage.player.press(REPEAT)
    # With repeat on, two quick presses of previous step from the first entry to the last.
    stage.desk.click(*stage.player.button(PREVIOUS), times=2)
    stage.sound.wait_for(TONES[1])
    wait_for_told(stage, "FileNo", str(MANY))
    stage.leave_picture("four digits")
    equal(stage.player.power_off(), 0, "exit code")
    stage.player.start(paths[0])
    wait_for_told(stage, "Total FileNo", "1")
    equal(stage.player.power_off(), 0, "exit code")


# LIST-43, LIST-44
@story("lists: a stored list of 300 is 256 on a plain start, which keeps the others when its editor saves")
def stored_rest(stage):
    path = tone(stage.media / "a.wav", TONES[0], SECONDS)
    stored = stage.player.folder / "FILE00.INI"
    stored.write_text("[FILELIST]\r\nLISTNAME=Long\r\n" + "".join(f"LIST{i:03}=a{i}.wav|{path}\r\n" for i in range(300)))
    before = read_profile(stored)
    open_editor(stage, stage.media)
    stage.player.press_control("Save")
    stage.player.wait_for_box("Save OK?")
    changed = stored.stat().st_mtime_ns
    stage.desk.key("Return")
    wait("the saved file", lambda: stored.stat().st_mtime_ns != changed)
    equal(read_profile(stored), before, "the stored list")
    close_by(stage, "OK")
    wait_for_told(stage, "Total FileNo", "256")
    equal(stage.player.power_off(), 0, "exit code")
    stage.player.start("--open")
    wait_for_told(stage, "Total FileNo", "300")
    equal(stage.player.power_off(), 0, "exit code")


def hostile(folder):
    """Lists, sheets and folders that lead to themselves, to too much or to what is no file: what is opened, each."""
    folder.mkdir()
    million = "a.mp3\n" * 1_000_000
    nested = "".join(f"<track><location>{'../' * 2000}a.mp3</location></track>" for _ in range(300))
    entities = "<!DOCTYPE x [<!ENTITY a 'aaaaaaaaaa'>" + "".join(f"<!ENTITY {b} '{f'&{a};' * 10}'>" for a, b in zip("abcdefgh", "bcdefghi")) + "]>"
    texts = {
        "self.m3u": "self.m3u\n./self.m3u\n" * 5000,
        "x.m3u": "y.pls\n" * 500, "y.pls": "".join(f"File{i}=x.m3u\n" for i in range(500)),
        "million.m3u8": million, "million.pls": "".join(f"File{i}=gone{i}.wav\n" for i in range(200_000)),
        "devices.m3u": "/dev/zero\n/dev/urandom\n/proc/self/mem\n/proc/kcore\nfifo.wav\n/dev/zero.wav\nfile:///dev/stdin\n",
        "cut.xspf": "<playlist><trackList><track><location>a" + "&#x4e00;" * 20000,
        "deep.xspf": nested, "entities.xspf": entities + "<track><location>&i;.wav</location></track>",
        "open.asx": "<asx>" + "<entry><ref href=\"" * 50000, "marks.asx": "<" * 500_000,
        "numbered.pls": "[playlist]\nNumberOfEntries=2147483648\nFile2147483648=a.wav\nFile4294967297=b.wav\nFile-1=c.wav\nVersion=99999999999\n",
        "odd.m3u": "\x1b]0;owned\x07\x1b[2J.wav\n\u202egnp.wav\n<img src=x>.m3u\n" + "x" * 4090 + ".pls\n" + "é\u0301" * 2000 + ".m3u8\n%1b%5b2J%00.wav\n",
        "numbers.cue": "FILE \"a.wav\" WAVE\n" + "TRACK 99 AUDIO\nINDEX 01 99:99:99\n" * 500,
        "noise.m3u": "\0\x01\x7f" * 100_000,
    }
    for name, text in texts.items():
        (folder / name).write_text(text)
    with open(folder / "long.m3u", "wb") as long:
        for _ in range(100):
            long.write(b"/gone/song.mp3\n" * 70_000)
    with open(folder / "one_line.m3u", "wb") as long:
        for _ in range(100):
            long.write(b"/gone/song" * 100_000)
    with open(folder / "hole.xspf", "wb") as hole:
        hole.truncate(1 << 40)
    os.mkfifo(folder / "fifo.wav")
    special = [folder / f"{name}.m3u" for name in ("pipe", "zero", "terminal", "itself", "memory", "directory", "socket")]
    os.mkfifo(special[0])
    for path, place in zip(special[1:5], ("/dev/zero", "/dev/tty", "itself.m3u", "/proc/self/mem")):
        path.symlink_to(place)
    special[5].mkdir()
    with socket.socket(socket.AF_UNIX) as bound:
        bound.bind(os.path.relpath(special[6]))
    loop = folder / "loop"
    loop.mkdir()
    (loop / "again").symlink_to("..")
    (loop / "self").symlink_to(".")
    (loop / "root").symlink_to("/dev")
    deep = folder / "deep"
    inner = deep
    for number in range(60):
        inner = inner / f"{number}"
    inner.mkdir(parents=True)
    return [*(folder / name for name in texts), folder / "long.m3u", folder / "one_line.m3u", folder / "hole.xspf", *special, loop, deep]


# LIST-52, LIST-59, LIST-61
@story("lists: hostile lists and folders end soon, and a good file plays behind each")
def hostile_lists(stage):
    good = tone(stage.media / "good.wav", 440, 60)
    stage.player.start("--open", good)
    stage.sound.wait_for(440)
    for path in hostile(stage.media / "host.ile"):
        equal(stage.player.start_another("--open", path).wait(20), 0, f"exit code of the start with {path.name}")
        equal(stage.player.start_another("--open", good).wait(20), 0, f"exit code of the start behind {path.name}")

        def plays():
            if stage.player.boxes():
                stage.desk.key("Return")
            return told(stage, "Total FileNo") == "1" and same_pitch(stage.sound.pitch_now(), 440) and not stage.player.boxes()

        wait(f"the good file behind {path.name}", plays, 20)
    status = pathlib.Path(f"/proc/{stage.player.process.pid}/status").read_text()
    most = int(re.search(r"VmHWM:\s+(\d+)", status)[1]) // 1024
    check(most < 400 or stage.watch.command, f"{most} MB were used")
    equal(stage.player.power_off(), 0, "exit code")
