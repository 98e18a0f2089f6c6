# SPDX-License-Identifier: GPL-3.0-or-later
"""A drive that is pulled out while a file on it plays: reads fail, names are gone. The calls to one folder fail by a library of
the tests (tests/stall/), loaded before the system's own."""

from harness.expect import check, equal, steady
from harness.media import disc, movie, picture, tone
from harness.player import PLAY, STOP
from harness.signs import media_windows, middle_of_screen, wait_for_told
from harness.story import story
from stories.stalled import AT_ONCE, SLACK, WORK, Drive, check_panel, within

GOOD = 440  # hertz of the file on another drive
LONG = 60
COLOURS = ("#C83232", "#32A046", "#3250C8")
UNREADABLE = 10  # seconds of a disc: so much may be scratched
WAYS = ("gone", "dead")  # names are not there, or belong to no device


def start(stage, drive, *shown, **settings):
    """A list of what lies on the drive, and a sound that lies elsewhere."""
    good = tone(stage.media / "good.wav", GOOD, 15)
    stage.player.settings(**{"DELAYTIME": 30, **settings})
    stage.player.save_list([*shown, good])
    stage.player.start(**drive.environment)
    stage.player.press(PLAY)
    stage.desk.rest()


def pull_out_and_hear_the_next(stage, drive, way, seconds):
    """What plays ends like a file that is cut off, within so many seconds: the next file follows, and the panel answers."""
    drive.stall(way)
    check_panel(stage)
    stage.sound.wait_for(GOOD, seconds + AT_ONCE + SLACK)
    wait_for_told(stage, "FileNo", "002")
    check_panel(stage)
    equal(media_windows(stage), [], "windows beside the panel")
    stage.player.press(STOP)


def check_first_is_told(stage, path):
    """What lay on the drive is told to be gone when it is played again."""
    stage.player.key("comma")
    wait_for_told(stage, "FileNo", "001")
    stage.player.press(PLAY)
    stage.player.wait_for_box(f"{path} Can't open!!")
    stage.player.press_control("Ignore")
    stage.sound.wait_for(GOOD, AT_ONCE + SLACK)
    equal(stage.player.power_off(), 0, "exit code")


def play_and_pull_out(stage, make, hz, ways=WAYS, seconds=0):
    drive = Drive(stage)
    path = make(drive.folder)
    for way in ways:
        start(stage, drive, path)
        stage.sound.wait_for(hz, AT_ONCE + SLACK)
        try:
            pull_out_and_hear_the_next(stage, drive, way, seconds)
            check_first_is_told(stage, path)
        finally:
            drive.answer()


# FAULT-25: A drive that is pulled out while it plays: what plays ends like a file that is cut off, a picture stays,
#     files on other drives follow, those on it are told by their box; the panel answers
@story("faults: a drive is pulled out while a sound on it plays: the sound ends, the next file on another drive plays")
def sound_pulled_out(stage):
    play_and_pull_out(stage, lambda folder: tone(folder / "song.wav", 700, LONG), 700)


# FAULT-25
@story("faults: a drive is pulled out while a movie on it plays: the movie ends, the next file on another drive plays")
def movie_pulled_out(stage):
    play_and_pull_out(stage, lambda folder: movie(folder / "movie.avi", COLOURS[1], 554, LONG), 554, WAYS[1:])


# FAULT-25
@story("faults: a drive is pulled out while a disc image on it plays: the track ends, the next file on another drive plays")
def disc_pulled_out(stage):
    play_and_pull_out(stage, lambda folder: disc(folder, [622], LONG)[1][0], 622, WAYS[:1], UNREADABLE)


# FAULT-25
@story("faults: a drive is pulled out while its pictures are shown: the shown one stays, the next is told by a box, others play")
def pictures_pulled_out(stage):
    drive = Drive(stage)
    shown = [picture(drive.folder / f"{number}.bmp", colour) for number, colour in enumerate(COLOURS)]
    for way in WAYS:
        start(stage, drive, *shown, INTERVAL=4)
        stage.desk.wait_for_colour(*middle_of_screen(stage), COLOURS[0])
        drive.stall(way)
        try:
            steady("the picture that is shown", lambda: stage.desk.shows(*middle_of_screen(stage), COLOURS[0]), 1)
            for path in shown[1:]:
                stage.player.wait_for_box(f"{path} Can't open!!")
                stage.player.press_control("Ignore")
            stage.sound.wait_for(GOOD, AT_ONCE + SLACK)
            check_panel(stage)
            equal(media_windows(stage), [], "windows beside the panel")
            equal(stage.player.power_off(), 0, "exit code")
        finally:
            drive.answer()


# FAULT-20
@story("faults: a disc image's drive stops answering while it plays: it is silent and after ten seconds ended, stop and the end are quick")
def disc_stalls(stage):
    drive = Drive(stage)
    track = disc(drive.folder, [622], LONG)[1][0]
    start(stage, drive, track)
    try:
        stage.sound.wait_for(622, AT_ONCE + SLACK)
        drive.stall("read")
        silent = stage.sound.wait_for_silence(AT_ONCE + SLACK)
        check_panel(stage)
        heard = stage.sound.wait_for(GOOD, WORK + SLACK)
        check(WORK - AT_ONCE <= heard - silent, f"the next file began {heard - silent:.1f} s behind the silence")
        drive.answer()
        stage.player.press(STOP)
        stage.player.key("comma")
        wait_for_told(stage, "FileNo", "001")
        stage.player.press(PLAY)
        stage.sound.wait_for(622, AT_ONCE + SLACK)
        drive.stall("read")
        stage.sound.wait_for_silence(AT_ONCE + SLACK)
        with within("the stop and the end", AT_ONCE + SLACK):
            stage.player.press(STOP)
            check_panel(stage)
            equal(stage.player.power_off(), 0, "exit code")
    finally:
        drive.switch.unlink(missing_ok=True)
