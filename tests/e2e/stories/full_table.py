# SPDX-License-Identifier: GPL-3.0-or-later
"""No file descriptor is left: each file is answered by a box, windows come up all the same, and with room all is as before."""

import contextlib
import os
import pathlib
import re
import subprocess
import time

from harness import PROJECT
from harness.expect import check, equal, wait
from harness.media import disc, movie, picture, tone
from harness.player import EDITOR, NEXT, PLAY, PREVIOUS, REPEAT, REPEAT_LAMP, STOP
from harness.signs import media_windows, told, told_surely
from harness.story import story
from stories.windows import close_by, node, open_settings

AT_ONCE = 3  # seconds: a busy machine
PLAYS = 8


def limit(stage, count):
    """How many files the running player may have open."""
    subprocess.run(["prlimit", f"--pid={stage.player.process.pid}", f"--nofile={count}:"], check=True)


def first_beyond(stage):
    """The lowest number of a descriptor above all that it has open, once it opens and closes none for a while in which it answers."""
    quiet = 0.3
    known = since = None

    def settled():
        nonlocal known, since
        answered = bool(stage.player.texts())
        now = {int(entry.name) for entry in pathlib.Path(f"/proc/{stage.player.process.pid}/fd").iterdir()}
        if now != known or not answered:
            known, since = now, time.monotonic()
        return time.monotonic() - since >= quiet

    wait("what it has open settles", settled, PLAYS)
    return 1 + max(known)


def check_panel(stage, box_may_come=False):
    """box_may_come: one that tells of the last file keeps a press from the panel, which is pressed again."""

    def answers(wanted):
        if box_may_come and stage.player.boxes():
            answer_box(stage)
            if stage.player.lamp_lit(REPEAT_LAMP) != wanted:
                stage.player.press(REPEAT)
        return stage.player.lamp_lit(REPEAT_LAMP) == wanted

    lit = stage.player.lamp_lit(REPEAT_LAMP)
    for wanted in (not lit, lit):
        stage.player.press(REPEAT)
        wait("the panel answers", lambda: answers(wanted), AT_ONCE)


def answer_box(stage):
    stage.desk.key("Escape")
    stage.player.wait_for_no_box()


def one_of_each(stage):
    """Files of each kind, each with what tells that it plays."""
    chime = stage.media / "chime.mid"
    chime.symlink_to(PROJECT / "samples" / "chime.mid")
    disc(stage.media, [880], 3)

    def heard(hz):
        return lambda: stage.sound.wait_for(hz, PLAYS)

    def shown():
        wait("its window", lambda: media_windows(stage), PLAYS)

    def runs():
        wait("its time", lambda: told(stage, "Time") not in (None, "", "00:00"), PLAYS)

    return {tone(stage.media / "song.wav", 500, 20): heard(500), tone(stage.media / "song.mp3", 600, 20): heard(600),
            movie(stage.media / "movie.avi", "#32A046", 700, 20): heard(700), picture(stage.media / "picture.bmp", "#C83232"): shown,
            picture(stage.media / "picture.jpg", "#C83232"): shown, chime: runs, stage.media / "Track01.cda": heard(880)}


def each_is_told_by_a_box(stage, files):
    for _ in files:
        entry = told_surely(stage, "FileNo")
        stage.player.press(PLAY)
        wait(f"a box for file {entry}", stage.player.boxes, AT_ONCE)
        stage.player.wait_for_text("Can't open!!")
        stage.leave_picture(f"box_{entry}")
        answer_box(stage)
        check_panel(stage)
        stage.player.press(NEXT)


def each_plays_or_is_told(stage, files):
    """With room for some of what it takes: what becomes of each is not said, but the panel answers."""
    for _ in files:
        stage.player.press(PLAY)
        with contextlib.suppress(AssertionError):
            wait("a box", stage.player.boxes, 0.7)
        if stage.player.boxes():
            answer_box(stage)
        check_panel(stage, box_may_come=True)
        stage.player.press(STOP)
        stage.player.press(NEXT)


def back_to_the_first(stage, files):
    for _ in files:
        stage.player.press(PREVIOUS)
    wait("the first file", lambda: told(stage, "FileNo") == "001")


def windows_come_up(stage):
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    close_by(stage, "Cancel")
    open_settings(stage)
    close_by(stage, "Cancel")
    check_panel(stage)


@story("faults: with no file descriptor left each file is told by a box, windows come up, and with room again all play")
def no_descriptor_left(stage):
    files = one_of_each(stage)
    stage.player.settings(DELAYTIME=30)
    stage.player.save_list([*files, stage.media / "last.wav"])
    stage.player.start()
    limit(stage, first_beyond(stage))
    each_is_told_by_a_box(stage, files)
    windows_come_up(stage)
    equal(stage.player.start_another("--open", next(iter(files))).wait(10), 0, "the second start's exit code")
    check_panel(stage)
    back_to_the_first(stage, files)
    limit(stage, 1024)
    for file, plays in files.items():
        stage.player.press(PLAY)
        plays()
        equal(stage.player.boxes(), [], f"boxes for {file.name}")
        stage.player.press(STOP)
        stage.player.press(NEXT)
    equal(stage.player.power_off(), 0, "exit code")


@story("faults: with few file descriptors left, or fewer than are open, the panel answers whatever is opened")
def few_descriptors_left(stage):
    files = one_of_each(stage)
    stage.player.save_list([*files, stage.media / "last.wav"])
    stage.player.start()
    beyond = first_beyond(stage)
    for count in (12, beyond + 1, beyond + 2, beyond + 4):
        limit(stage, count)
        each_plays_or_is_told(stage, files)
        limit(stage, 1024)
        back_to_the_first(stage, files)
    stage.player.press(PLAY)
    stage.sound.wait_for(500, PLAYS)
    equal(stage.player.power_off(), 0, "exit code")


@story("faults: a start that may open too few files says so; a low limit that it may raise is raised")
def low_limit_at_the_start(stage):
    song = tone(stage.media / "song.wav", 440, 20)
    for count in (12, 20, 32, 44):
        stage.player.start(song, panel=False, under=["prlimit", f"--nofile={count}:{count}"])
        stage.player.may_end_with(1)
        equal(stage.player.wait_for_end(), 1, f"exit code with {count}")
    equal(stage.player.log().count("too few files"), 4, "messages")
    stage.player.start(song, under=["prlimit", "--nofile=40:"])
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")


@story("faults: with its standard streams closed it plays, and nothing is written where they were")
def closed_streams(stage):
    song = tone(stage.media / "song.wav", 440, 20)
    stage.player.start(song, under=["sh", "-c", 'exec "$@" 0<&- 1>&- 2>&-', "sh"])
    for stream in (0, 1, 2):
        place = pathlib.Path(f"/proc/{stage.player.process.pid}")
        equal(os.readlink(place / "fd" / str(stream)), "/dev/null", f"what is at {stream}")
        flags = re.search(r"flags:\s*([0-7]+)", (place / "fdinfo" / str(stream)).read_text())
        equal(int(flags[1], 8) & os.O_ACCMODE, os.O_RDWR, f"how {stream} is open")
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    check(not stage.player.boxes(), "a box")
    equal(stage.player.power_off(), 0, "exit code")
