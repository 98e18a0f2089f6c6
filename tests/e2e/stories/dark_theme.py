# SPDX-License-Identifier: GPL-3.0-or-later
"""The dialogs under a dark theme of the desktop."""

from harness.expect import wait
from harness.media import picture, tone
from harness.player import EDITOR
from harness.story import story
from stories.editing import choose, shows, shows_colour, widen
from stories.find import open_find
from stories.tags import tagged
from stories.windows import node, open_settings

# A theme as the desktop's settings have it; the tool kit reads it when it is told which desktop this is.
COLOURS = {"Window": ("42,46,50", "252,252,252"), "View": ("27,30,32", "252,252,252"), "Button": ("49,54,59", "252,252,252"),
           "Selection": ("61,174,233", "252,252,252"), "Tooltip": ("49,54,59", "252,252,252")}


def dark_desktop(home):
    """The environment of a program on a dark desktop."""
    (home / ".config").mkdir(parents=True, exist_ok=True)
    lines = [f"[Colors:{part}]\nBackgroundNormal={back}\nBackgroundAlternate={back}\nForegroundNormal={front}\n"
             for part, (back, front) in COLOURS.items()]
    (home / ".config" / "kdeglobals").write_text("\n".join(lines))
    return {"HOME": str(home), "XDG_CONFIG_HOME": str(home / ".config"), "XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "KDE_FULL_SESSION": "true"}


def brightness(stage, place):
    """The darkest and the brightest pixel of a place, 0 to 255."""
    pixels = stage.desk.area(*place).mean(axis=2)
    return pixels.min(), pixels.max()


def check_read(stage, name, role, bright=180):
    """A text that is bright on dark, once it is drawn: the tree tells of it before."""
    def read():
        darkest, brightest = brightness(stage, node(stage, name=name, role=role)["place"])
        return darkest < 80 and brightest > bright

    wait(f"{name} can be read", read)


# EDIT-101: Under a dark theme of the desktop every text of the dialogs is bright on dark
@story("editing: under a dark theme every text of the editor, the finder and the page of conveniences is read")
def dark_dialogs(stage):
    home = stage.folder / "home"
    environment = dark_desktop(home)
    song = home / "Music" / "Café del Mar (live).flac"
    song.parent.mkdir()
    tagged(song, {"title": "夜明け Blues", "artist": "Somebody with a long name", "album": "Mornings"}, seconds=3)
    stage.player.save_list([song, tone(song.parent / "plain.wav", 440, 2), picture(song.parent / "red.png", (208, 32, 32)),
                            song.parent / "gone.png"], name="Evening")
    stage.player.start("--open", **environment)
    stage.player.press(EDITOR)
    wait("the small picture", lambda: shows_colour(stage, "red.png", (208, 32, 32)))
    stage.leave_picture("editor")
    widen(stage, 1270)
    shows(stage, [f"{song.name}, 夜明け Blues, 0:03", "plain.wav, 0:02", "red.png", "gone.png"])
    for name, role in (("TITLE", "label"), ("PLAY LIST", "label"), ("plain.wav, 0:02", "list item"), ("Add All", "push button"),
                       ("4 files, 0:05", "label")):
        check_read(stage, name, role)
    check_read(stage, "Find", "text", bright=120)  # the hint
    choose(stage, "Sort by", "Path")
    stage.leave_picture("wide")
    stage.player.press_control("Cancel")
    stage.player.wait_for_box("PLAY PAGE 1 LIST 1 is not saved. Lose its changes?")
    stage.leave_picture("question")
    stage.desk.key("Return")
    stage.player.wait_for_panel()
    open_find(stage)
    node(stage, name="002  plain", role="list item")
    stage.leave_picture("find")
    stage.desk.key("Escape")
    stage.player.wait_for_no_window("Find")
    open_settings(stage)
    stage.player.press_control("More…")
    check_read(stage, "FIND: Ctrl+F finds an entry of the list", "check box")
    stage.leave_picture("page")
