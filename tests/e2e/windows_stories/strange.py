# SPDX-License-Identifier: GPL-3.0-or-later
"""What a stranger tries: odd names, long paths, folders that vanish, ends and starts at odd moments."""

import shutil

from harness.expect import check, equal, wait
from harness.media import tone
from harness.player import NEXT, PAUSE, PLAY
from harness.story import story
from wine import windows_path

LOW, HIGH = 440, 880
NAMES = ("100% %TEMP% & ^ 'song'.wav", " leading.wav", "#hash;semi, comma.wav", "[x] {y}! $HOME `z`.wav", "=@~+-_.wav",
         "UPPER.WAV", "\u6b4c \U0001f3b5 \u00e9.wav", "e\u0301 combining.wav", "\u05e9\u05d9\u05e8.wav", "--open.wav", "con man.wav", "n" * 200 + ".wav")


def start_with(player, *files):
    equal(player.start_another("--open", *(windows_path(each) for each in files)).wait(30), 0, "the other start's exit code")


@story("windows: files of odd names and far down are opened and heard")
def odd_names(stage):
    player = stage.player
    player.start()
    deep = stage.media
    for _ in range(6):
        deep = deep / ("d" * 60)
    deep.mkdir(parents=True)
    files = [stage.media / name for name in NAMES] + [deep / "far down.wav"]
    check(len(str(files[-1])) > 300, "a long path")
    for index, each in enumerate(files):
        hz = (LOW, HIGH)[index % 2]
        start_with(player, tone(each, hz, 30))
        if stage.sound.pitch_now() == 0:
            player.press(PLAY)
        stage.sound.wait_for(hz, 10)
    equal(player.power_off(), 0, "exit code")


@story("windows: the files of a start while a box is up come when it is answered")
def start_under_box(stage):
    player = stage.player
    player.save_list([stage.media / "gone.wav"])
    player.start()
    player.press(PLAY)
    box = wait("a box", player.boxes, 10)[0]
    start_with(player, tone(stage.media / "next.wav", LOW, 30))
    equal(player.start_another().wait(30), 0, "exit code of a start without files")
    check([each.id for each in player.boxes()] == [box.id], "the box still waits")
    stage.desk.focus(box)
    stage.desk.key("alt+a")
    wait("no box", lambda: not player.boxes(), 10)
    if stage.sound.pitch_now() == 0:
        player.press(PLAY)
    stage.sound.wait_for(LOW, 10)
    equal(player.power_off(), 0, "exit code")


@story("windows: a folder that vanishes while its list plays asks for what is gone")
def vanishing_folder(stage):
    player, folder = stage.player, stage.media / "drive"
    folder.mkdir()
    player.save_list([tone(folder / f"{name}.wav", hz, 30) for name, hz in (("one", LOW), ("two", HIGH))])
    player.start()
    player.press(PLAY)
    stage.sound.wait_for(LOW, 10)
    shutil.rmtree(folder)
    player.press(NEXT)
    box = wait("a box", player.boxes, 10)[0]
    stage.desk.focus(box)
    folder.mkdir()
    tone(folder / "two.wav", HIGH, 30)
    stage.desk.key("alt+r")
    stage.sound.wait_for(HIGH, 10)
    equal(player.power_off(), 0, "exit code")


@story("windows: a paused player is closed from outside, and so is one under a box")
def closed_from_outside(stage):
    player = stage.player
    player.save_list([tone(stage.media / "one.wav", LOW, 30)])
    player.start()
    player.press(PLAY)
    stage.sound.wait_for(LOW, 10)
    player.press(PAUSE)
    stage.sound.wait_for_silence()
    stage.session.run(["wmctrl", "-i", "-c", str(player.window.id)])
    equal(player.wait_for_end(15), 0, "exit code of the paused one")
    player.save_list([stage.media / "gone.wav"])
    player.start()
    player.press(PLAY)
    box = wait("a box", player.boxes, 10)[0]
    stage.session.run(["wmctrl", "-i", "-c", str(box.id)])  # as Abort
    wait("no box", lambda: not player.boxes(), 10)
    equal(player.power_off(), 0, "exit code of the other")
