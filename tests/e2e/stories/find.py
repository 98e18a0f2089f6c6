# SPDX-License-Identifier: GPL-3.0-or-later
"""The window that finds an entry of the list, by keys and mouse."""

import os
import re
import shutil

from harness.expect import check, equal, steady, wait
from harness.media import encode, tone
from harness.signs import told_surely, wait_for_told
from harness.story import story

SONGS = {"Björk Jóga": 440, "blur song": 554, "さくら": 698, "Air sexy": 880}


def start(stage, **settings):
    files = [tone(stage.media / f"{name.replace(' ', '_')}.wav", hz, 60) for name, hz in SONGS.items()]
    stage.player.settings(**settings)
    stage.player.save_list(files)
    stage.player.start()


def rows(stage):
    """The entries that are shown."""
    found, inside = [], None
    for entry in stage.accessibility.nodes(stage.player.process.pid):
        if inside is not None:
            if entry["depth"] <= inside:
                break
            found.append(entry["name"])
        elif entry["role"] == "list" and entry["name"] == "Found" and entry.shown:
            inside = entry["depth"]
    return found


def open_find(stage, key="ctrl+f"):
    stage.player.key(key)
    window = stage.player.wait_for_window("Find")
    wait("it has the keyboard", lambda: stage.desk.focused() == window.id)
    return window


# FIND-10, FIND-12, FIND-13
@story("find: Ctrl+F, a few letters without accents and Enter play the entry; arrows choose; Escape leaves everything as it is")
def by_keys(stage):
    start(stage, CONVENIENCES="ON")
    open_find(stage)
    wait("the whole list", lambda: len(rows(stage)) == len(SONGS))
    stage.leave_picture("whole_list")
    stage.desk.type("joga")
    wait("one entry", lambda: rows(stage) == ["001  Björk_Jóga"])
    stage.leave_picture("narrowed")
    stage.desk.key("Return")
    stage.player.wait_for_no_window("Find")
    stage.sound.wait_for(SONGS["Björk Jóga"])
    open_find(stage, "ctrl+j")
    wait("the whole list", lambda: len(rows(stage)) == len(SONGS))
    stage.desk.key("Down", "Down", "Return")
    stage.sound.wait_for(SONGS["さくら"])
    wait_for_told(stage, "FileNo", "003")
    open_find(stage)
    stage.desk.type("nothing")
    stage.player.wait_for_text("Nothing found")
    stage.desk.key("Return")
    steady("the window stays", lambda: stage.player.windows("Find"), 0.5)
    stage.desk.key("Escape")
    stage.player.wait_for_no_window("Find")
    equal(told_surely(stage, "FileNo"), "003", "the file that plays")
    wait("the panel has the keyboard", lambda: stage.desk.focused() == stage.player.window.id)


# FIND-15
@story("find: a double-click on an entry plays it")
def by_mouse(stage):
    start(stage, CONVENIENCES="ON")
    open_find(stage)
    entry = stage.accessibility.wait_for(stage.player.process.pid, name="002  blur_song", role="list item")
    stage.desk.click(*entry.middle, times=2)
    stage.sound.wait_for(SONGS["blur song"])
    stage.player.wait_for_no_window("Find")


# FIND-11
@story("find: on a plain start Ctrl+F opens nothing")
def plain(stage):
    start(stage)
    stage.player.key("ctrl+f", "ctrl+j")
    steady("no window", lambda: not stage.player.windows("Find"), 0.8)
    check(stage.player.running(), "the program has ended")


# FIND-27
@story("find: what is found by its tags shows them in front of its name, long ones and right-to-left ones too")
def by_tags(stage):
    tags = {"track01": ("Straße nach Süden", "Die Band"), "track02": ("שָׁלוֹם עולם", "Safed"), "track03": ("مُحَمَّد الأول", "Cairo"),
            "track04": ("Long " * 40 + "end", "Somebody")}
    plain = tone(stage.media / "plain.wav", 440, 5)
    files = []
    for name, (title, artist) in tags.items():
        files.append(stage.media / f"{name}.mp3")
        encode(["-i", str(plain), "-metadata", f"title={title}", "-metadata", f"artist={artist}"], files[-1])
    files.append(stage.media / "שיר ארוך.mp3")
    shutil.copy(files[0], files[-1])
    stage.player.settings(CONVENIENCES="ON")
    stage.player.save_list(files)
    stage.player.start()
    open_find(stage)
    for typed, names in {"strasse band": ["001  Straße nach Süden - Die Band  (track01)", "005  Straße nach Süden - Die Band  (שיר ארוך)"],
                         "safed": ["002  שָׁלוֹם עולם - Safed  (track02)"],
                         "cairo": ["003  مُحَمَّد الأول - Cairo  (track03)"],
                         "somebody": ["004  Long Long Long Long Long… - Somebody  (track04)"],
                         "track01": ["001  track01"]}.items():
        stage.desk.key("ctrl+a")
        stage.desk.type(typed)
        wait(f"{typed!r} finds {names}", lambda: rows(stage) == names)
        stage.leave_picture(f"by_tag_{names[0][:3]}_{len(names)}")
    stage.desk.key("Escape")


# FIND-21
@story("find: 9,999 files are found by their tags while they are still read, and a line tells how many are left")
def gathering(stage):
    plain = tone(stage.media / "plain.wav", 440, 1)
    last = stage.media / "last.mp3"
    encode(["-i", str(plain), "-metadata", "title=The very last"], last)
    files = [stage.media / f"{number:04}.wav" for number in range(9998)] + [last]
    for file in files[:-1]:
        os.link(plain, file)
    lister = stage.media / "all.m3u8"
    lister.write_text("".join(f"{file.name}\n" for file in files), encoding="utf-8")
    stage.player.settings(CONVENIENCES="ON")
    stage.player.start("--open", lister)
    wait_for_told(stage, "Total FileNo", "9999")
    open_find(stage)
    wait("it tells what is left", lambda: re.search(r"9999 files, tags of \d+ left", counted(stage)))
    stage.leave_picture("gathering")
    stage.desk.type("very last")
    wait("it is found when its turn comes", lambda: counted(stage) == "1 of 9999", 60)
    equal(rows(stage), ["9999  The very last  (last)"], "what was found")
    stage.leave_picture("gathered")


def counted(stage):
    """The last line of the window."""
    return next((word for word in stage.accessibility.words(stage.player.process.pid) if re.search(r"files|of \d|Nothing", word)), "")
