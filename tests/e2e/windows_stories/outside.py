# SPDX-License-Identifier: GPL-3.0-or-later
"""What is asked of the Windows program from outside: its end, its sight, its place, its menu."""

from harness.expect import equal, wait
from harness.media import tone
from harness.player import MINIMISE, PAUSE, PLAY, TITLE_RECORD
from harness.story import story
from wine import windows_path


# WIN-37
@story("windows: the end of the session ends the player in order")
def session_end(stage):
    player = stage.player
    player.save_list([tone(stage.media / "one.wav", 440, 20)])
    player.start()
    player.press(PLAY)
    stage.sound.wait_for(440, 10)
    stage.theatre.wine.run("wineboot", "-e")
    equal(player.wait_for_end(15), 0, "exit code")


# WIN-48
@story("windows: a second start without files shows the player that runs")
def second_start(stage):
    player = stage.player
    player.start()
    player.press(MINIMISE)
    wait("the panel is out of sight", lambda: not player.find_panel(), 10)
    equal(player.start_another().wait(30), 0, "the second start's exit code")
    panel = wait("the panel", player.find_panel, 10)
    wait("the panel has the focus", lambda: stage.desk.focused() == panel.id, 10)
    equal(player.power_off(), 0, "exit code")


# WIN-41
@story("windows: the panel goes with the hand that drags it")
def dragged(stage):
    player = stage.player
    player.start()
    before = player.window
    left, top = before.x + 400, before.y + before.height - 5
    stage.desk.drag((left, top), (left - 60, top - 50))
    player.window = wait("the panel has gone by just as much",
                         lambda: [w for w in player.windows("^Corvane$") if (w.x, w.y) == (before.x - 60, before.y - 50)],
                         10)[0]
    equal(player.power_off(), 0, "exit code")


PLAY_CUSTOM = ("Down",) * 3 + ("Right",)  # its first entry: Start Position


# WIN-52: A command of the menu may put up a box, again and again
@story("windows: an entry of the menu chosen by keyboard may put up a box, again and again")
def menu_command_with_box(stage):
    player = stage.player
    player.save_list([tone(stage.media / "one.wav", 440, 30)])
    player.start()
    player.press(PLAY)
    stage.sound.wait_for(440, 10)
    player.press(PAUSE)
    stage.sound.wait_for_silence()
    # The start position, then the stop position at the same place; at last by its own letter.
    for entry in (("Return",), ("Down", "Return"), ("Down", "Return"), ("p",)):
        open_menu(stage)
        stage.desk.key(*PLAY_CUSTOM, *entry)
        if entry != ("Return",):
            box = wait("a box", player.boxes, 10)[0]
            stage.desk.focus(box)
            stage.desk.key("Return")
        wait("the panel alone", lambda: len(player.windows()) == 1, 10)
    player.press(PLAY)
    stage.sound.wait_for(440, 10)
    equal(player.power_off(), 0, "exit code")


def open_menu(stage):
    stage.desk.click(*stage.player.middle(TITLE_RECORD), button=3)
    wait("the menu", lambda: len(stage.player.windows()) == 2, 10)


# WIN-57
@story("windows: what a start leaves out is told, and files dropped on the icon play")
def left_out_and_dropped(stage):
    player = stage.player
    player.start("--opne")
    for name in (windows_path(stage.media / "gone.wav"), "b.txt"):
        equal(player.start_another("--open", name).wait(30), 0, f"exit code of a start with {name}")
    for line in ("corvane: --opne: there is no such option", "gone.wav: left out, because there is no such file",
                 "b.txt: left out, because it is none of the kinds"):
        wait(f"a line with {line!r}", lambda line=line: line in player.log(), 5)
    named = player.start_another("one.wav")
    equal(named.wait(30), 0, "exit code of a start with a name")
    wait("that it is not taken", lambda: "takes no names but behind --open: one.wav" in player.log(), 5)
    # As the Explorer starts it: the whole paths and nothing else.
    song = tone(stage.media / "my own song.wav", 659, 5)
    equal(player.start_another(windows_path(song)).wait(30), 0, "exit code of a start by the icon")
    stage.sound.wait_for(659, 10)
    equal(player.power_off(), 0, "exit code")
    player.start(windows_path(song))
    stage.sound.wait_for(659, 10)
    equal(player.power_off(), 0, "exit code")
