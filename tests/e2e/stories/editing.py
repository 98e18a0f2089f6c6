# SPDX-License-Identifier: GPL-3.0-or-later
"""The editor's own ways with a list, and the page of conveniences: by mouse and by keys."""

import os

from harness.expect import SLACK, check, equal, wait
from harness.media import disc, movie, picture, tone
from harness.player import EDITOR, read_profile
from harness.signs import wait_for_told
from harness.story import story
from stories.tags import tagged
from stories.windows import items, node, nodes, open_settings, step_number, tab_to

NAMES = ["01 one.wav", "02 two.wav", "10 ten.wav", "夜明け.wav"]


def home_with_list(stage):
    """A home folder whose songs are the stored list, the last one first, and a picture behind them; returns it."""
    home = stage.folder / "home"
    (home / "music").mkdir(parents=True)
    paths = [home / "music" / name for name in reversed(NAMES)]
    for seconds, path in enumerate(paths, 1):
        tone(path, 440, seconds)
    paths.append(picture(home / "music" / "cover.bmp", (200, 80, 40)))
    stage.player.save_list(paths, name="Morning")
    return home


def editor_with_list(stage, *arguments, **environment):
    home = home_with_list(stage)
    stage.player.start(*arguments, HOME=str(home), **environment)
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    shows(stage, [*reversed(NAMES), "cover.bmp"])


def shows(stage, names):
    wait(f"the list is {names}", lambda: items(stage, "PLAY LIST") == list(names))


def status(stage, text, seconds=5.0):
    wait(f"the last line says {text}", lambda: nodes(stage, name=text, role="label"), seconds)


def row(stage, name):
    """The middle of an entry of the play list."""
    x = node(stage, name="PLAY LIST", role="list")["place"][0]
    return wait(f"the entry {name}", lambda: [n.middle for n in nodes(stage, name=name, role="list item") if n["place"][0] >= x])[0]


def choose(stage, list_name, entry):
    stage.desk.click(*node(stage, name=list_name, role="combo box").middle)
    stage.desk.click(*node(stage, name=entry, role="list item").middle)


# EDIT-104
@story("editing: Shift and Ctrl held while the mouse clicks select several entries")
def select_several(stage):
    editor_with_list(stage)
    listed = [*reversed(NAMES), "cover.bmp"]

    def selected():
        x = node(stage, name="PLAY LIST", role="list")["place"][0]
        return [n["name"] for n in nodes(stage, role="list item") if n["place"][0] >= x and "selected" in n["states"]]

    for held, name, wanted in (("", listed[0], listed[:1]), ("shift", listed[3], listed[:4]), ("ctrl", listed[1], [listed[0], *listed[2:4]])):
        keys = (["keydown", held], ["keyup", held]) if held else ([], [])
        x, y = row(stage, name)
        stage.desk.tool(*keys[0], "mousemove", int(x), int(y), "click", 1, *keys[1])
        wait(f"{held} selects {wanted}", lambda wanted=wanted: selected() == wanted)
    stage.leave_picture("several")
    stage.player.press_control("Cancel")


# EDIT-73, EDIT-77, EDIT-79, EDIT-80
@story("editing: by mouse a list is sorted, dragged, searched and taken back, and the last line tells its state")
def edit_by_mouse(stage):
    editor_with_list(stage)
    status(stage, "5 files, 0:10")
    choose(stage, "Sort by", "Name")
    shows(stage, [*NAMES[:3], "cover.bmp", NAMES[3]])
    status(stage, "● 5 files, 0:10, not saved")
    start, end = row(stage, NAMES[0]), row(stage, "cover.bmp")
    stage.desk.drag(start, (end[0], end[1] + 2), release=False)
    stage.leave_picture("dragged")
    stage.desk.tool("mouseup", "1")
    shows(stage, [*NAMES[1:3], "cover.bmp", NAMES[0], NAMES[3]])
    stage.desk.click(*node(stage, name="Find", role="text").middle)
    stage.desk.type("TEN")
    wait("the entry is found", lambda: any("selected" in n["states"] for n in nodes(stage, name=NAMES[2])))
    stage.leave_picture("editor")
    for _ in range(2):
        stage.player.press_control("Undo")
    shows(stage, [*reversed(NAMES), "cover.bmp"])
    status(stage, "5 files, 0:10")
    stage.player.press_control("Cancel")
    stage.player.wait_for_panel()


# EDIT-73, EDIT-74, EDIT-75, EDIT-78
@story("editing: by keys alone entries are removed, moved, found and brought back")
def edit_by_keys(stage):
    editor_with_list(stage)
    tab_to(stage, "PLAY LIST")
    stage.desk.key("Down", "Up", "alt+Down", "alt+Down")
    shows(stage, [NAMES[2], NAMES[1], NAMES[3], NAMES[0], "cover.bmp"])
    stage.desk.key("Delete", "Delete")
    shows(stage, [NAMES[2], NAMES[1], "cover.bmp"])
    stage.desk.key("ctrl+z", "ctrl+z", "ctrl+z")
    shows(stage, [NAMES[2], NAMES[3], NAMES[1], NAMES[0], "cover.bmp"])
    stage.desk.key("ctrl+y")
    shows(stage, [NAMES[2], NAMES[1], NAMES[3], NAMES[0], "cover.bmp"])
    stage.desk.key("ctrl+f")
    stage.desk.type("two")
    stage.desk.key("Return")
    wait("the entry is found", lambda: any("selected" in n["states"] for n in nodes(stage, name=NAMES[1])))
    check(nodes(stage, name="PLAY LIST", role="list"), "Enter in the field closed the editor")


# EDIT-82, EDIT-83
@story("editing: unsaved changes are asked about where the player was started from the desktop, and not on a plain start")
def lose_changes(stage):
    editor_with_list(stage)
    stage.player.press_control("Clear")
    shows(stage, [])
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    stage.player.power_off()
    stage.player.start("--open", HOME=str(stage.folder / "home"))
    stage.player.press(EDITOR)
    shows(stage, [*reversed(NAMES), "cover.bmp"])
    stage.player.press_control("Clear")
    shows(stage, [])
    step_number(stage, "List number", 1)
    stage.player.wait_for_box("PLAY PAGE 1 LIST 1 is not saved. Lose its changes?")
    stage.leave_picture("question")
    stage.desk.key("Escape")
    stage.player.wait_for_no_box()
    node(stage, name="File 1")
    status(stage, "● 0 files, not saved")
    stage.desk.key("Escape")
    stage.player.wait_for_box("PLAY PAGE 1 LIST 1 is not saved. Lose its changes?")
    stage.desk.key("Return")
    stage.player.wait_for_panel()


# EDIT-84
@story("editing: a list is exported for other players")
def export(stage):
    editor_with_list(stage)
    stage.player.press_control("Export…")
    stage.player.wait_for_box("Export 5 files to")
    stage.desk.key("Return")
    written = stage.player.folder / "Morning.m3u8"
    wait("the exported list", lambda: written.exists() and (stage.player.folder / "Morning.xspf").exists())
    lines = written.read_text().splitlines()
    equal(lines[0], "#EXTM3U", "first line")
    equal([line for line in lines if not line.startswith("#")],
          [str(stage.folder / "home" / "music" / name) for name in [*reversed(NAMES), "cover.bmp"]], "paths")


# EDIT-108
@story("editing: the tracks of a disc's sheet are exported as the sheet, and the exported list plays them")
def export_tracks(stage):
    folder = stage.media / "album"
    folder.mkdir()
    sheet, _ = disc(folder, (440, 660), round(5 * max(1, SLACK / 5)))
    stage.player.settings(CONVENIENCES="ON")
    stage.player.save_list([sheet / "Track01.cda", sheet / "Track02.cda"], name="Disc")
    stage.player.start()
    wait_for_told(stage, "Total FileNo", "2")
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    stage.player.press_control("Export…")
    stage.player.wait_for_box("Export 2 files to")
    stage.leave_picture("question")
    stage.desk.key("Return")
    written = stage.player.folder / "Disc.m3u8"
    wait("the exported list", lambda: written.exists() and (stage.player.folder / "Disc.xspf").exists())
    equal([line for line in written.read_text().splitlines() if not line.startswith("#")], [str(sheet)], "paths")
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    equal(stage.player.power_off(), 0, "exit code")
    for name in ("Disc.m3u8", "Disc.xspf"):
        began = stage.sound.now()
        stage.player.start("--open", stage.player.folder / name)
        wait_for_told(stage, "Total FileNo", "2")
        stage.sound.wait_for(660, 15)
        stage.sound.expect_order([440], began)
        equal(stage.player.power_off(), 0, f"exit code after {name}")


# DIAL-39, DIAL-40, DIAL-41, DIAL-42
@story("conveniences: the page More… shows what is in force, writes what was changed, and goes back to as started")
def the_page_of_conveniences(stage):
    stage.player.start()
    open_settings(stage)
    stage.player.press_control("More…")
    node(stage, name="FIND: Ctrl+F finds an entry of the list", role="check box")
    stage.leave_picture("page")
    boxes = [n for n in nodes(stage, role="check box") if ": " in n["name"]]
    equal(len(boxes), 10, "boxes")
    check(not any("checked" in n["states"] for n in boxes), "a plain start shows one of them as on")
    tab_to(stage, "FIND: Ctrl+F finds an entry of the list")
    stage.desk.key("space")
    stage.desk.key("Return")
    wait("the page has gone", lambda: not nodes(stage, name="As started"))
    wait("the key is written", lambda: (stage.player.folder / "KADO.INI").exists())
    equal(read_profile(stage.player.folder / "KADO.INI"), {"FIND": "ON"}, "what was written")
    stage.player.press_control("More…")
    node(stage, name="As started")
    boxes = [n for n in nodes(stage, role="check box") if ": " in n["name"]]
    equal([n["name"][:4] for n in boxes if "checked" in n["states"]], ["FIND"], "what is on")
    stage.desk.click(*node(stage, name="More…").middle)  # on the dialog behind the page: that stays in front
    stage.desk.rest()
    stage.player.press_control("As started")
    stage.desk.click(*wait("the page's OK", lambda: [n.middle for n in nodes(stage, name="OK") if "enabled" in n["states"]])[0])
    wait("the key has gone", lambda: not read_profile(stage.player.folder / "KADO.INI"))
    stage.player.press_control("Cancel")
    stage.player.wait_for_panel()


# EDIT-80
@story("editing: lengths of sounds and movies are added up, and what says nothing certain counts as unknown")
def add_up_lengths(stage):
    folder = stage.media
    (folder / "folder.wav").mkdir()
    os.mkfifo(folder / "pipe.wav")
    (folder / "noise.mp3").write_bytes(bytes(range(7, 207)) * 999)
    (folder / "empty.wav").write_bytes(b"")
    (folder / "text.mpg").write_text("#EXTM3U\nhttp://127.0.0.1:1/x\n")
    unknown = [folder / name for name in ("folder.wav", "pipe.wav", "noise.mp3", "empty.wav", "text.mpg", "gone.avi")]
    known = [tone(folder / "three.wav", 440, 3), movie(folder / "two.avi", "#0050a0", 440, 2),
             movie(folder / "four.mpg", "#0050a0", 440, 4), picture(folder / "none.bmp", (9, 9, 9))]
    stage.player.save_list([*known, *unknown])
    stage.player.start()
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    status(stage, "10 files, 0:09, 6 of unknown length", 15)


def editor_window(stage):
    return stage.player.wait_for_window("Play List$")


def widen(stage, width):
    """Makes the editor so wide, at the screen's left edge."""
    window = editor_window(stage)
    stage.desk.tool("windowmove", window.id, 0, 0, "windowsize", window.id, width, window.height)
    wait(f"the editor is {width} wide", lambda: abs(editor_window(stage).width - width) < 4)


def shows_colour(stage, name, colour):
    """That colour is seen in front of an entry's name."""
    left, top, width, height = node(stage, name=name, role="list item")["place"]
    pixels = stage.desk.area(left, top, min(width, 48), height)
    return any(max(abs(int(a) - b) for a, b in zip(pixel, colour)) < 12 for line in pixels for pixel in line)


# EDIT-93, EDIT-95, EDIT-99
@story("editing: pictures are seen small in front of their names, and what cannot be shown holds none of them up")
def small_pictures(stage):
    folder = stage.media
    drawing = folder / "drawing.svg"
    drawing.write_text("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' height='9' fill='#00f'/></svg>")
    (folder / "noise.png").write_bytes(b"\x89PNG\r\n\x1a\n" + bytes(range(256)) * 99)
    (folder / "empty.jpg").write_bytes(b"")
    os.mkfifo(folder / "pipe.gif")
    (folder / "folder.bmp").mkdir()
    huge = folder / "huge.bmp"
    huge.write_bytes(b"BM" + (54).to_bytes(12, "little") + (40).to_bytes(4, "little") + (900_000).to_bytes(4, "little") * 2
                     + (1).to_bytes(2, "little") + (24).to_bytes(2, "little") + bytes(24))
    hostile = [huge, folder / "pipe.gif", folder / "noise.png", folder / "empty.jpg", folder / "folder.bmp", folder / "gone.png", drawing]
    good = [picture(folder / "red.png", (208, 32, 32), (1600, 1200)), picture(folder / "green.bmp", (32, 160, 32), (60, 240)),
            picture(folder / "blue.jpg", (32, 64, 208), (3000, 200))]
    stage.player.save_list([tone(folder / "song.wav", 440, 1), *hostile, *good])
    stage.player.start("--open")
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    for name, colour in (("red.png", (208, 32, 32)), ("green.bmp", (32, 160, 32)), ("blue.jpg", (32, 64, 208))):
        wait(f"the picture of {name} is seen", lambda n=name, c=colour: shows_colour(stage, n, c), 15)
    check(not shows_colour(stage, "song.wav", (208, 32, 32)), "a song shows a picture")
    stage.leave_picture("pictures")
    stage.player.press_control("Cancel")
    stage.player.wait_for_panel()


# EDIT-90, EDIT-91, EDIT-100
@story("editing: a wide window shows what the files say of themselves, and a narrow one their names alone")
def columns(stage):
    folder = stage.media
    song = folder / "one.flac"
    tagged(song, {"title": "夜明け Blues", "artist": "Somebody", "album": "Mornings"}, seconds=3)
    stage.player.save_list([song, tone(folder / "plain.wav", 440, 2)])
    stage.player.start("--open")
    stage.player.press(EDITOR)
    shows(stage, ["one.flac", "plain.wav"])
    check(not nodes(stage, name="TITLE", role="label"), "a narrow window shows columns")
    widen(stage, 1270)
    node(stage, name="TITLE", role="label")
    shows(stage, ["one.flac, 夜明け Blues, 0:03", "plain.wav, 0:02"])
    stage.leave_picture("columns")
    widen(stage, 900)
    shows(stage, ["one.flac", "plain.wav"])
    stage.player.press_control("Cancel")
    stage.player.wait_for_panel()
