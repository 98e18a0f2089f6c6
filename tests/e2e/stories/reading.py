# SPDX-License-Identifier: GPL-3.0-or-later
"""Folders that take long to read: the panel goes on, tells how far it has come, and can be told to leave it."""

import time

from harness.expect import SLACK, check, equal, steady, wait
from harness.in_time import in_time
from harness.media import tone
from harness.player import STOP
from harness.signs import told, wait_for_told
from harness.story import story
from stories.stalled import Drive, check_panel

OWN, INSIDE = 880, 440  # Hz: what plays, and what the folder holds
GIVEN_UP = 10  # seconds after which a folder counts as not answering


def begin(stage):
    """Plays a file; a folder beside it holds two more and, below, a drive that can stop answering."""
    drive = Drive(stage)
    tone(stage.media / "1.wav", INSIDE, 30)
    (drive.folder / "inside").mkdir()
    tone(drive.folder / "inside" / "2.wav", INSIDE, 30)
    other = tone(stage.folder / "other.wav", OWN, 60)
    stage.player.start("--open", other, **drive.environment)
    stage.sound.wait_for(OWN)
    return drive


def reads(stage):
    return (told(stage, "Display") or "").startswith("Reading…")


def give(stage):
    second = stage.player.start_another("--open", stage.media)
    wait("the display tells of the reading", lambda: reads(stage), 15)  # until it is given up, whatever the second start does
    equal(second.wait(10), 0, "exit code of the second start")


# DROP-28, DROP-22, DROP-23, DROP-24, DROP-26, DROP-27
@story("reading: a folder whose drive hangs leaves the panel alone; Escape, Stop and power off give it up; the rest comes")
def on_a_drive_that_hangs(stage):
    drive = begin(stage)
    before = told(stage, "Display")
    drive.stall("all")
    give(stage)
    stage.leave_picture("reading")
    check_panel(stage)
    stage.player.key("Escape")
    wait("what stood there", lambda: told(stage, "Display") == before)
    stage.sound.wait_for(OWN)
    equal(told(stage, "Total FileNo"), "1", "entries behind Escape")
    give(stage)
    stage.player.press(STOP)
    wait("the reading is given up", lambda: not reads(stage))
    wait("silence", lambda: stage.sound.pitch_now() == 0)
    equal(told(stage, "Total FileNo"), "1", "entries behind Stop")
    give(stage)
    drive.answer()
    stage.sound.wait_for(INSIDE, GIVEN_UP + 8)
    wait("an end of the reading", lambda: not reads(stage))
    check(told(stage, "Total FileNo") in ("1", "2"), "what answered in time is the list")
    drive.stall("all")
    give(stage)
    with in_time(stage, "power off", 3):
        equal(stage.player.power_off(), 0, "exit code")
    drive.answer()


# DROP-28, DROP-27
@story("reading: 20,000 files in folders that link to themselves are the list soon, at a start and handed over")
def many_files(stage):
    songs = stage.media / "songs"
    for part in range(4):
        folder = songs / f"part {part}"
        folder.mkdir(parents=True)
        (folder / "again").symlink_to(songs)
        for number in range(5000):
            (folder / f"{number}.mp3").touch()
    first = tone(songs / "1.wav", INSIDE, 60)
    began = time.monotonic()
    stage.player.start("--open", songs)
    stage.sound.wait_for(INSIDE)
    wait_for_told(stage, "Total FileNo", "9999")
    check(time.monotonic() - began < 20 * SLACK, "the list came late")
    stage.player.press(STOP)
    equal(stage.player.start_another("--open", first).wait(10), 0, "exit code of the second start")
    wait_for_told(stage, "Total FileNo", "1")
    equal(stage.player.start_another("--open", songs).wait(10), 0, "exit code of the third start")
    wait_for_told(stage, "Total FileNo", "9999")
    stage.sound.wait_for(INSIDE)
    equal(stage.player.power_off(), 0, "exit code")


# DROP-27
@story("reading: a plain start reads no folder, and takes its files at once as ever")
def plain(stage):
    tone(stage.media / "1.wav", INSIDE, 30)
    stage.player.start(stage.media)
    steady("an empty list", lambda: told(stage, "Total FileNo") in ("", None), 0.5)
    check(not reads(stage), "a plain start reads a folder")
    equal(stage.player.power_off(), 0, "exit code")
