# SPDX-License-Identifier: GPL-3.0-or-later
"""A drive that stops answering: whatever is asked of it, the panel goes on. The calls to one folder are held by a library
of the tests (tests/stall/), loaded before the system's own."""

import contextlib
import os
import time

from harness import expect
from harness.expect import check, equal, wait
from harness.media import movie, picture, tone
from harness.player import NEXT, PLAY, REPEAT, REPEAT_LAMP, STOP
from harness.story import story
from stories.confined import about_lines

NO_ANSWER = "The drive does not answer."
AT_ONCE = 3  # seconds: a busy machine
LOOK, WORK = 2, 10  # seconds after which a drive counts as not answering, for the panel and in a worker
SLACK = 5


class Drive:
    """A folder that stops answering and comes back."""

    def __init__(self, stage):
        self.folder = stage.media / "drive"
        self.folder.mkdir()
        self.switch = stage.folder / "switch"
        library = stage.theatre.program.parent / "tests" / "libcorvane_stall.so"
        check(library.exists(), f"{library} is not built")
        self.environment = {"LD_PRELOAD": str(library), "CORVANE_STALL_FOLDER": str(self.folder),
                            "CORVANE_STALL_SWITCH": str(self.switch)}

    def stall(self, word):
        self.switch.write_text(word)

    def answer(self):
        self.switch.unlink()


def check_panel(stage):
    """The panel answers: its repeat lamp goes on and off."""
    lit = stage.player.lamp_lit(REPEAT_LAMP)
    for wanted in (not lit, lit):
        stage.player.press(REPEAT)
        wait("the panel answers", lambda: stage.player.lamp_lit(REPEAT_LAMP) == wanted, AT_ONCE)


def wait_for_box(stage, texts, seconds):
    """Until a box says one of the texts; answers it with its first button."""
    wait(f"a box that says one of {texts}", stage.player.boxes, seconds)
    wait(f"{texts}", lambda: any(stage.accessibility.find(stage.player.process.pid, holding=text) for text in texts))


def answer_box(stage):
    stage.desk.key("Escape")
    stage.player.wait_for_no_box()


@contextlib.contextmanager
def within(what, seconds):
    began = time.monotonic()
    yield
    check(time.monotonic() - began < seconds * expect.SLACK, f"{what} took {time.monotonic() - began:.1f} s")


def play_alone(stage, drive, path, word, seconds):
    """Plays a list of one file on the drive that has just stopped answering, up to its box; then it answers again."""
    stage.player.save_list([path, stage.media / "good.wav"])
    stage.player.start(**drive.environment)
    drive.stall(word)
    try:
        stage.player.press(PLAY)
        wait_for_box(stage, [NO_ANSWER, "Can't open!!"], seconds + SLACK)
        answer_box(stage)
        check_panel(stage)
        stage.player.press(NEXT)  # stopped: the next entry is chosen
        stage.player.press(PLAY)
        stage.sound.wait_for(440, AT_ONCE + SLACK)
        stage.player.press(STOP)
        with within("the end", AT_ONCE + SLACK):
            equal(stage.player.power_off(), 0, "exit code")
    finally:
        drive.answer()


def on_a_drive(stage):
    drive = Drive(stage)
    tone(stage.media / "good.wav", 440, 5)
    return drive


# FAULT-19
@story("faults: a sound on a drive that does not answer is told by a box in time, and the next file plays")
def sound_on_a_stalled_drive(stage):
    drive = on_a_drive(stage)
    song = tone(drive.folder / "song.wav", 700, 5)
    play_alone(stage, drive, song, "read", WORK)
    play_alone(stage, drive, song, "all", LOOK)


# FAULT-19
@story("faults: a picture on a drive that does not answer is told by a box in time, and the next file plays")
def picture_on_a_stalled_drive(stage):
    drive = on_a_drive(stage)
    shown = picture(drive.folder / "picture.bmp", "#C83232")
    play_alone(stage, drive, shown, "read", LOOK)
    play_alone(stage, drive, shown, "open", LOOK)


# FAULT-19
@story("faults: a movie on a drive that does not answer is told by a box in time, and the next file plays")
def movie_on_a_stalled_drive(stage):
    drive = on_a_drive(stage)
    shown = movie(drive.folder / "movie.avi", "#32A046", 700, 3)
    play_alone(stage, drive, shown, "read", WORK)
    play_alone(stage, drive, shown, "open", WORK)


# FAULT-20: A drive that stops answering while it plays: the panel answers, next goes on, stop and the end are quick
@story("faults: a drive that stops answering while it plays: the panel answers, next goes on, stop and the end are quick")
def drive_stalls_while_it_plays(stage):
    drive = on_a_drive(stage)
    song = tone(drive.folder / "song.wav", 700, 60)
    shown = movie(drive.folder / "movie.avi", "#32A046", 554, 60)
    stage.player.settings(DELAYTIME=30)
    stage.player.save_list([song, stage.media / "good.wav", shown])
    stage.player.start(**drive.environment)
    stage.player.press(PLAY)
    stage.sound.wait_for(700)
    drive.stall("read")
    stage.sound.wait_for_silence(AT_ONCE + SLACK)
    check_panel(stage)
    stage.player.press(NEXT)
    stage.sound.wait_for(440, AT_ONCE + SLACK)
    stage.player.press(STOP)
    drive.answer()
    stage.player.press(NEXT)
    stage.player.press(PLAY)
    stage.sound.wait_for(554, SLACK + SLACK)
    drive.stall("read")
    stage.sound.wait_for_silence(AT_ONCE + SLACK)  # what was read ahead is used up: a read waits for the drive
    check_panel(stage)
    stage.player.press(STOP)
    check_panel(stage)
    stage.player.press(PLAY)  # the read that was given up has not come back: nothing more is asked
    wait_for_box(stage, ["Can't open!!"], LOOK + SLACK)
    answer_box(stage)
    drive.answer()
    stage.player.press(REPEAT)
    stage.player.press(REPEAT)
    drive.stall("read")
    stage.player.press(PLAY)  # its opening waits for the drive
    check_panel(stage)
    with within("the end", AT_ONCE + SLACK):
        equal(stage.player.power_off(), 0, "exit code")


# FAULT-22: Pipes and devices in a list are refused at once
@story("faults: pipes in a list are refused by a box at once")
def pipes_in_a_list(stage):
    tone(stage.media / "good.wav", 440, 3)
    pipes = [stage.media / name for name in ("pipe.wav", "pipe.avi", "pipe.jpg", "pipe.mid")]
    for pipe in pipes:
        os.mkfifo(pipe)
    stage.player.save_list([*pipes, stage.media / "good.wav"])
    stage.player.start()
    for pipe in pipes:
        stage.player.press(PLAY)
        stage.player.wait_for_box(f"{pipe} Can't open!!", AT_ONCE + SLACK)
        said = stage.player.wait_for_text(f"{pipe} Can't open!!")["name"]
        check(said.endswith("Can't open!!"), f"it was opened: {said!r}")
        answer_box(stage)
        stage.player.press(NEXT)
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")


@story("faults: a list that is a link to a drive that does not answer holds back neither the start nor --about")
def list_on_a_stalled_drive(stage):
    drive = Drive(stage)
    (drive.folder / "list").write_text("[FILELIST]\r\n")
    os.symlink(drive.folder / "list", stage.player.folder / "FILE57.INI")
    drive.stall("all")
    try:
        with within("--about", LOOK + SLACK):
            about_lines(stage, **drive.environment)
        with within("the start", LOOK + SLACK):
            stage.player.start(panel=False, **drive.environment)
            stage.player.wait_for_panel(LOOK + SLACK)
        check_panel(stage)
        with within("the end", AT_ONCE + SLACK):
            equal(stage.player.power_off(), 0, "exit code")
    finally:
        drive.answer()
