# SPDX-License-Identifier: GPL-3.0-or-later
"""The first use, from an empty folder to the second start, in one go as a person would."""

from harness.drops import FileManager
from harness.expect import check, equal, steady, wait
from harness.media import steps
from harness.player import (AUTO_LAMP, EDITOR, NEXT, PAUSE, PLAY, QUICK_LAMP, REPEAT, REPEAT_LAMP, STOP, VOLUME_DOWN, sink_volume)
from harness.signs import told_surely, wait_for_told
from harness.story import story
from stories.windows import close_by, items, node, open_settings

# Each song is a stair of its own: what sounds tells which song it is, and where it stands.
STEP_SECONDS = 3  # longer than a busy machine keeps anybody from looking
SONGS = {f"{name}.wav": [round(220 * scale * 1.12**step) for step in range(8)]
         for name, scale in (("lark", 1.0), ("reed", 1.04), ("tide", 1.08))}
EMPTY_TOTALS = ("000", "0", "")


def put_songs(folder):
    folder.mkdir(parents=True)
    for name, stair in SONGS.items():
        steps(folder / name, stair, STEP_SECONDS)
    (folder / "cover.txt").write_text("no sound")


def place_of(stage):
    """(song, step) that sounds now, None when it is none of them."""
    hz = stage.sound.pitch_now()
    return next(((name, number) for name, stair in SONGS.items() for number, step in enumerate(stair) if abs(hz / step - 1) < 0.01), None)


def wait_for_song(stage, name, least=0, most=7):
    return wait(f"{name}, step {least} to {most}",
                lambda: (now := place_of(stage)) and now[0] == name and least <= now[1] <= most and now[1] + 1) - 1


def check_empty(stage):
    """An empty list: nothing is shown of one, and play does nothing."""
    total = told_surely(stage, "Total FileNo")
    check(total in EMPTY_TOTALS, f"the total is {total!r}")
    stage.player.press(PLAY)
    steady("silence", lambda: stage.sound.pitch_now() == 0, 0.5)
    equal(len(stage.player.windows()), 1, "windows")


def drop_songs(stage):
    """Drops the songs on the panel; returns their names in the order of the list."""
    with FileManager(stage, stage.media / "dropped") as files:
        files.drag_all_to(*stage.player.button(PLAY))
        wait_for_told(stage, "Total FileNo", str(len(SONGS)))
    order = []
    for number in range(1, len(SONGS) + 1):  # stopped, next shows the entries
        wait_for_told(stage, "FileNo", f"{number:03}")
        order.append(f"{told_surely(stage, 'Tittle')}.wav")
        if number < len(SONGS):
            stage.player.press(NEXT)
    equal(sorted(order), sorted(SONGS), "entries of the list")
    stage.player.key("comma", "comma")
    wait_for_told(stage, "FileNo", "001")
    return order


def play_by_hand(stage, order):
    """Play, pause, go on, seek, next, volume, repeat, stop."""
    stage.player.press(PLAY)
    stood = wait_for_song(stage, order[0], 1)
    stage.player.press(PAUSE)
    stage.sound.wait_for_silence()
    stage.player.press(PLAY)
    wait_for_song(stage, order[0], stood, stood + 1)
    stage.desk.drag(stage.player.slider(0.2), stage.player.slider(0.8))
    wait_for_song(stage, order[0], 6, 6)
    stage.player.press(NEXT)
    wait_for_song(stage, order[1], 0, 1)
    wait_for_told(stage, "FileNo", "002")
    before = sink_volume(stage.session)[0]
    for _ in range(3):
        stage.player.press(VOLUME_DOWN)
    wait("a lower volume", lambda: abs(before - sink_volume(stage.session)[0] - 3 * 65535 / 15) < 600)
    stage.player.press(REPEAT)
    wait("the repeat lamp", lambda: stage.player.lamp_lit(REPEAT_LAMP))
    stage.player.press(STOP)
    stage.sound.wait_for_silence()


def make_a_list(stage):
    """In the editor: two of the folder's songs, named and saved."""
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    equal(items(stage, "PLAY LIST"), [], "entries of the stored list, which no drop changes")
    stage.desk.click(*node(stage, name="music", role="list item").middle, times=2)
    for name in ("tide.wav", "lark.wav"):
        stage.desk.click(*node(stage, name=name, role="list item").middle, times=2)
    wait("two entries", lambda: items(stage, "PLAY LIST") == ["tide.wav", "lark.wav"])
    stage.desk.click(*node(stage, name="List name", role="text").middle)
    stage.desk.type("Evening")
    stage.player.press_control("Save")
    stage.player.wait_for_box("Save OK?")
    stage.desk.key("Return")
    wait("the list's file", lambda: (stage.player.folder / "FILE00.INI").exists())
    close_by(stage, "OK")


def check_list(stage):
    """The panel shows the saved list from its first entry."""
    for name, text in (("Total FileNo", "2"), ("FileNo", "001"), ("Tittle", "tide")):
        wait_for_told(stage, name, text)


# START-46: A first use, from an empty folder over a drop, the buttons, the editor and the settings to the second start:
#     everything is as it was left
@story("first use: from an empty folder to the second start everything is as a person left it")
def first_use(stage):
    home = stage.folder / "home"
    put_songs(stage.media / "dropped")
    put_songs(home / "music")
    found = sink_volume(stage.session)
    stage.player.start(HOME=str(home))
    equal(sorted(path.name for path in stage.player.folder.iterdir()), ["PANELSET"], "files before the first use")
    check_empty(stage)
    play_by_hand(stage, drop_songs(stage))
    make_a_list(stage)
    check_list(stage)
    stage.player.press(PLAY)
    wait_for_song(stage, "tide.wav")
    stage.player.press(STOP)
    stage.sound.wait_for_silence()
    open_settings(stage)
    stage.player.press_control("Quick Play", "check box")
    close_by(stage, "OK")
    wait("the quick lamp", lambda: stage.player.lamp_lit(QUICK_LAMP))
    equal(stage.player.power_off(), 0, "exit code")
    wait("the volume found at the start", lambda: sink_volume(stage.session) == found, 3)
    stored = {path.name: path.read_bytes() for path in stage.player.folder.glob("*.INI")}
    stage.player.start(HOME=str(home))
    check_list(stage)
    wait("the lamp of quick play, not that of auto play", lambda: stage.player.lamp_lit(QUICK_LAMP) and not stage.player.lamp_lit(AUTO_LAMP))
    stage.player.press(PLAY)
    wait_for_song(stage, "tide.wav")
    stage.player.press(NEXT)
    wait_for_song(stage, "lark.wav")
    equal(stage.player.power_off(), 0, "exit code")
    equal({path.name: path.read_bytes() for path in stage.player.folder.glob("*.INI")}, stored, "what is stored")
