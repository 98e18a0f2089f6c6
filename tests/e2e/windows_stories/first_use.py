# SPDX-License-Identifier: GPL-3.0-or-later
"""The Windows program under Wine: seen, heard and used as a person would."""

import re
import shutil

from harness import PROJECT
from harness.expect import check, equal, steady, wait
from harness.looks import wait_for_exact_panel
from harness.media import movie, picture, steps, tone
from harness.player import AUTO_LAMP, EDITOR, PLAY, STOP, read_profile
from harness.story import story

RED, GREEN, BLUE = "#C83232", "#32A046", "#3250C8"
# Controls of the editor, as its kept text names them.
ADD_ALL, LIST_NAME, SAVE, OK = "cmdFileList(3)", "txtListName", "cmdFileList(1)", "cmdFileList(6)"
LAYOUT = (PROJECT / "tests" / "data" / "forms" / "editor.txt").read_text(encoding="utf-8").splitlines()


def laid_out(name):
    """Left, top, width, height of a control or, as the first, of the form, in the units of its text."""
    line = next(line for line in LAYOUT if line.startswith(f"{name} kind "))
    return [int(number) for number in re.search(r" at (-?\d+),(-?\d+) (\d+)x(\d+)", line).groups()]


def click_in_editor(stage, window, name):
    """Clicks the middle of a control; the editor may be larger than it was laid out."""
    told = stage.session.run(["xwininfo", "-id", str(window.id)])  # inside the frame, unlike other tools
    left, top = (int(re.search(rf"Absolute upper-left {axis}:\s+(-?\d+)", told)[1]) for axis in "XY")
    x, y, control_width, control_height = laid_out(name)
    width, height = laid_out("frmFileList")[2:]
    stage.desk.click(left + (x + control_width // 2) * window.width // width,
                     top + (y + control_height // 2) * window.height // height)


def answer_box(stage, key):
    """Waits for a box beside the panel, which is hidden or not, and answers it by a key."""
    panel = stage.player.window.id
    box = wait("a box", lambda: [w for w in stage.player.windows("^Corvane$") if w.id != panel], 10)[0]
    stage.desk.focus(box)
    stage.desk.key(key)
    wait("no box", lambda: not any(w.id == box.id for w in stage.player.windows("^Corvane$")), 5)


# WIN-01: The panel stands pixel by pixel as its skin says
@story("windows: the panel stands pixel by pixel as the skin says")
def pixel_exact(stage):
    stage.player.start()
    stage.desk.rest()
    wait_for_exact_panel(stage)
    equal(stage.player.power_off(), 0, "exit code")


# WIN-03
@story("windows: keys play, pause, go on, step and stop")
def keys(stage):
    player = stage.player
    player.save_list([steps(stage.media / "one.wav", [440, 660], 3.0), tone(stage.media / "two.wav", 880, 4)])
    player.start()
    steady("silence", lambda: stage.sound.pitch_now() == 0, 0.5)
    player.key("z")
    stage.sound.wait_for(440, 10)
    player.key("x")
    stage.sound.wait_for_silence()
    player.key("z")
    stage.sound.wait_for(660, 10)
    player.key("period")
    stage.sound.wait_for(880, 10)
    player.key("c")
    stage.sound.wait_for_silence()
    player.key("shift+p")
    equal(player.wait_for_end(15), 0, "exit code")


# WIN-30: Sounds, pictures and movies of one list follow each other
@story("windows: sounds, pictures and a movie of one list follow each other")
def mixed(stage):
    player = stage.player
    player.settings(AUTOPLAY="ON", INTERVAL=3)
    player.save_list([tone(stage.media / "one.wav", 440, 2), picture(stage.media / "two.bmp", RED),
                      tone(stage.media / "three.mp3", 554, 2), picture(stage.media / "four.jpg", BLUE),
                      movie(stage.media / "five.avi", GREEN, 700, 3)])
    player.start()
    middle = stage.desk.screen.width // 2, stage.desk.screen.height // 2
    stage.sound.wait_for(440, 15)
    stage.desk.wait_for_colour(*middle, RED, 15)
    stage.sound.wait_for(554, 15)
    stage.desk.wait_for_colour(*middle, BLUE, 15)
    stage.desk.wait_for_colour(*middle, GREEN, 20)
    stage.sound.wait_for(700, 10)


# WIN-31: The editor finds and stores files by paths of Windows, in lines that end with CR LF
@story("windows: the editor saves a list of what it found, which then plays")
def editor(stage):
    player = stage.player
    home = stage.theatre.wine.home()
    song = tone(home / "story_song.wav", 523, 4)
    try:
        player.start()
        player.press(EDITOR)
        window = player.wait_for_window("Play List", 15)
        stage.desk.wait_until_still(window.x, window.y, *window.size, seconds=10)
        click_in_editor(stage, window, ADD_ALL)
        stage.desk.rest()
        stage.leave_picture("editor")
        click_in_editor(stage, window, LIST_NAME)
        stage.desk.type("Evening")
        click_in_editor(stage, window, SAVE)
        answer_box(stage, "Return")
        stored = player.folder / "FILE00.INI"
        wait("the list is stored", lambda: read_profile(stored).get("LISTNAME") == "Evening", 10)
        entry = read_profile(stored)["LIST000"]
        equal(entry, f"story_song.wav|C:\\users\\{home.name}\\story_song.wav", "the stored entry")
        check(stored.read_bytes().count(b"\r\n") == stored.read_bytes().count(b"\n"), "lines end with CR LF")
        click_in_editor(stage, window, OK)
        player.wait_for_no_window("Play List", 10)
        player.wait_for_panel()
        player.press(PLAY)
        stage.sound.wait_for(523, 10)
        player.press(STOP)
        stage.sound.wait_for_silence()
    finally:
        song.unlink()


# WIN-75: A dialog that is made larger or smaller is drawn as a whole
@story("windows: the editor made larger shows all its controls, and made smaller again looks as before")
def resized(stage):
    player = stage.player
    folder = stage.media / "album"
    folder.mkdir(parents=True)
    player.settings(CONVENIENCES="ON")
    player.save_list([tone(folder / "one.wav", 440, 3), tone(folder / "two.mp3", 554, 4), picture(folder / "red.bmp", RED)])
    player.start()
    player.press(EDITOR)
    window = player.wait_for_window("Play List", 15)
    stage.desk.tool("windowmove", "--sync", window.id, 0, 20)
    stage.desk.rest()

    def seen():
        now = player.wait_for_window("Play List", 15)
        stage.desk.wait_until_still(now.x, now.y, *now.size, seconds=10)
        return stage.desk.area(now.x, now.y, *now.size)

    before = seen()
    height, width = before.shape[:2]
    stage.desk.tool("windowsize", window.id, 1200, 800)
    wait("it is larger", lambda: player.wait_for_window("Play List", 15).size[0] > width + 200)
    larger = seen()
    stage.leave_picture("larger")
    for name, part in {"the status line": larger[-60:, :200], "the last buttons": larger[-120:, -110:]}.items():
        check((part.max(axis=2) < 110).sum() > 40, f"{name} shows no text")
    stage.desk.tool("windowsize", window.id, width, height)
    wait("it looks as before", lambda: (now := seen()).shape == before.shape and (now != before).any(axis=2).sum() == 0, 15)
    stage.leave_picture("as_before")


# WIN-32: Settings are kept for the next start
@story("windows: settings are kept and in force at the next start")
def settings(stage):
    player = stage.player
    player.save_list([tone(stage.media / "one.wav", 587, 6)])
    player.start()
    player.desk.click(*player.middle(21))
    window = player.wait_for_window("Custom Setup", 15)
    stage.desk.wait_until_still(window.x, window.y, *window.size, seconds=10)
    stage.leave_picture("settings")
    stage.desk.key("alt+a")  # Auto Start
    stage.desk.key("Return")
    wait("the setting is stored", lambda: player.setting("AUTOPLAY") == "ON", 10)
    player.wait_for_no_window("Custom Setup", 10)
    player.wait_for_panel()
    equal(player.power_off(), 0, "exit code")
    player.start()
    stage.sound.wait_for(587, 15)
    check(player.lamp_lit(AUTO_LAMP), "the auto lamp is not lit")


# WIN-33: Boxes wait for their answer
@story("windows: a missing file's box waits for its answer; help and menu do no harm")
def boxes(stage):
    player = stage.player
    player.save_list([stage.media / "gone.wav", tone(stage.media / "two.wav", 494, 5)])
    player.start()
    player.press(PLAY)
    answer_box(stage, "alt+i")  # Ignore: the next file
    stage.sound.wait_for(494, 10)
    player.press(STOP)
    stage.desk.click(*player.middle(1), button=3)
    stage.desk.key("Escape")
    equal(player.power_off(), 0, "exit code")


# WIN-34: A second start on the same folder hands its files over and ends
@story("windows: a second start hands its files over and ends; a skin that is missing is told")
def second_start(stage):
    player = stage.player
    song = tone(stage.media / "song.wav", 784, 5)
    player.start()
    second = player.start_another("--open", song)
    equal(second.wait(30), 0, "the second start's exit code")
    player.press(PLAY)
    stage.sound.wait_for(784, 10)
    equal(player.power_off(), 0, "exit code")
    shutil.rmtree(player.folder / "PANELSET")
    player.start(panel=False)
    box = wait("a box", lambda: player.windows("^Corvane$"), 15)[0]
    stage.desk.focus(box)
    stage.desk.key("Return")
    player.wait_for_end(15)
