# SPDX-License-Identifier: GPL-3.0-or-later
"""The windows in hand, wherever the window manager or the compositor puts them: seen on the screen, moved by the mouse."""

import time

import numpy as np

from harness.bus import OBJECT, Bus
from harness.drops import FileManager
from harness.expect import check, equal, skip, steady, wait
from harness.media import movie, picture, tone
from harness.others import OtherProgram
from harness.player import DISPLAY_RECORD, EDITOR, MINIMISE, PAUSE, PLAY, STOP
from harness.sessions import box_of, wait_for_box
from harness.signs import told, wait_for_told
from harness.story import story

GREEN, VIOLET = "#32A046", "#8232B4"
HZ, SECOND_HZ = 700, 554
MEDIA_SIZE = 320, 240
CLOSE = 2  # pixels
MENU_PIXELS = 2000  # that the menu changes at least


DRAG_ERROR = 24  # pixels: a compositor leaves out the way until it knows that it is a drag


def near(place, wanted, by=CLOSE):
    return all(abs(a - b) <= by for a, b in zip(place, wanted))


def nodes(stage, **wanted):
    return stage.accessibility.find(stage.player.process.pid, **wanted)


def free_place(stage):
    """A point of the panel by which it is dragged: on none of its controls."""
    window = stage.player.window
    return window.x + 6, window.y + window.height // 2


def song(stage, hz=HZ, name="song.wav"):
    return tone(stage.media / name, hz, 40)


def check_end(stage):
    equal(stage.player.power_off(), 0, "exit code")


# SESS-01: On every desktop the panel comes up whole, unscaled and uncovered; where windows place themselves, at its stated place
@story("start: the panel is seen whole, pixel by pixel, at its place where windows have one")
def start(stage):
    stage.player.start()
    stage.leave_picture("panel")
    wait(f"the panel equals its skin ({stage.player.differing()} pixels differ)", lambda: stage.player.differing() == 0)
    seen = stage.player.window
    if stage.session.kind.places:
        check(near((seen.x, seen.y), stage.player.stated_place()), f"it stands at {seen.x},{seen.y}, not at {stage.player.stated_place()}")
    check(0 <= seen.x <= stage.desk.screen.width - seen.width and 0 <= seen.y <= stage.desk.screen.height - seen.height, f"at {seen}")
    check_end(stage)


# SESS-02: On every desktop the panel's buttons play, pause and stop, and its keys reach it
@story("play: by the panel's buttons and by its keys")
def play(stage):
    stage.player.start(song(stage))
    stage.player.press(PLAY)
    stage.sound.wait_for(HZ)
    stage.player.press(PAUSE)
    stage.sound.wait_for_silence()
    stage.player.key("z")
    stage.sound.wait_for(HZ)
    stage.leave_picture("playing")
    stage.player.key("c")
    stage.sound.wait_for_silence()
    check_end(stage)


# SESS-03: On every desktop the panel follows the mouse that drags it, and its buttons work where it was let go
@story("drag: the panel goes with the mouse and works where it was left")
def drag(stage):
    stage.player.start(song(stage))
    begin = stage.player.window
    place = free_place(stage)
    way = (-(begin.x - 100), -(begin.y - 120))
    stage.desk.drag(place, (place[0] + way[0], place[1] + way[1]), steps=20)

    def there():
        seen = stage.player.find_panel()
        return seen if seen and near((seen.x, seen.y), (begin.x + way[0], begin.y + way[1]), DRAG_ERROR) else None

    stage.player.window = wait(f"the panel moved by {way} (it is at {stage.player.find_panel()})", there)
    stage.leave_picture("moved")
    stage.player.press(PLAY)
    stage.sound.wait_for(HZ)
    check_end(stage)


# SESS-04: Where windows can stay above others, the panel does in the window mode that asks for it
@story("on top: the panel stays over a window that is raised, where windows can")
def on_top(stage):
    if not stage.session.kind.above:
        skip("no window stays above others here")
    stage.player.settings(WINDOWPOS=1)
    stage.player.start()
    window = stage.player.window
    with OtherProgram(stage) as other:
        stage.desk.tool("windowmove", other.window.id, window.x - 20, window.y - 20, "windowactivate", other.window.id)
        stage.leave_picture("over")
        steady("the panel over the other window", lambda: stage.player.find_panel() is not None, 1.0)
    check_end(stage)


class Menu:
    """The menu that something opens, by what it changes on the screen beside the panel."""

    def __init__(self, stage, opens):
        self.desk = stage.desk
        self.desk.rest()
        self._before = self._without_panel(stage)
        self._stage = stage
        opens()
        wait("the menu", self.is_there)
        self.desk.rest()  # what is under the pointer would be chosen

    def _without_panel(self, stage):
        picture, window = self.desk.area(), stage.player.window
        picture[window.y : window.y + window.height, window.x : window.x + window.width] = 0
        return picture[40:]

    def is_there(self):
        return int((np.abs(self._without_panel(self._stage) - self._before).max(axis=2) > 40).sum()) > MENU_PIXELS

    def wait_for_end(self):
        wait("the menu goes", lambda: not self.is_there())


# SESS-05: On every desktop Alt opens the menu and the arrows choose in it
@story("menu: Alt opens it, the arrows and Return command")
def menu(stage):
    stage.player.start(song(stage))
    stage.player.press(PLAY)
    stage.sound.wait_for(HZ)
    shown = Menu(stage, lambda: stage.desk.key("alt"))
    stage.leave_picture("menu")
    stage.desk.key("Down", "Right", "Return")  # the first command that is offered while it plays: Pause
    stage.sound.wait_for_silence()
    shown.wait_for_end()
    window = stage.player.window
    shown = Menu(stage, lambda: stage.desk.click(window.x + 20, window.y + 8, button=3))
    stage.leave_picture("menu_by_mouse")
    stage.desk.key("Escape")
    shown.wait_for_end()
    check_end(stage)


def open_dialog(stage, opens, shown):
    """Until a control of it is there and the panel is hidden."""
    opens()
    wait(f"a control {shown}", lambda: nodes(stage, **shown), 10)
    wait("the panel is hidden", lambda: stage.player.find_panel() is None)


# SESS-06: On every desktop the editor opens with the keyboard in it, hides the panel, and gives it back where it was
@story("editor: opens, takes what is typed, and the panel comes back")
def editor(stage):
    home = stage.folder / "home"
    home.mkdir()
    song(stage)
    stage.player.start(stage.media / "song.wav", HOME=str(home))
    before = stage.player.window
    open_dialog(stage, lambda: stage.player.press(EDITOR), {"name": "PLAY LIST", "role": "list"})
    for _ in range(40):
        if any("focused" in n["states"] and n["name"].replace("&", "") == "List name" for n in nodes(stage)):
            break
        stage.desk.key("Tab")
    stage.desk.type("Morning")
    wait("what was typed", lambda: any(n.get("text") == "Morning" for n in nodes(stage)))
    stage.leave_picture("editor")
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    if stage.session.kind.places:
        check(near((stage.player.window.x, stage.player.window.y), (before.x, before.y)), f"the panel is back at {stage.player.window}, it was at {before}")
    check_end(stage)


# SESS-07: On every desktop the settings dialog opens and its button saves
@story("settings: a change is saved")
def settings(stage):
    stage.player.settings(QUICK="OFF")
    stage.player.start()
    x, y, _, _ = stage.player.place(DISPLAY_RECORD)
    open_dialog(stage, lambda: stage.desk.click(x + 44, y + 21), {"name": "Top Window"})
    stage.leave_picture("settings")
    pid = stage.player.process.pid
    stage.accessibility.act(pid, "Toggle", name="Quick Play")
    stage.accessibility.act(pid, "Press", name="OK")
    stage.player.wait_for_panel()
    equal(stage.player.setting("QUICK"), "ON", "stored")
    check_end(stage)


def media(stage, name, colour):
    path = stage.media / name
    return movie(path, colour, HZ, 40) if path.suffix == ".avi" else picture(path, colour)


def check_media_place(stage, box):
    """Where windows place themselves it is centred as stated."""
    place, filled = box
    check(near(place[2:], MEDIA_SIZE), f"its picture is {place[2:]}, not {MEDIA_SIZE}")
    check(filled > 0.99, f"only {filled:.0%} of it is seen")
    if stage.session.kind.places:
        wanted = [(side - own) // 2 for side, own in zip((stage.desk.screen.width, stage.desk.screen.height), MEDIA_SIZE)]
        check(near(place[:2], wanted), f"it stands at {place[:2]}, not at {wanted}")


# SESS-08: On every desktop a movie and a picture are seen whole, beside a panel that is seen too
@story("movie: is seen whole beside the panel, goes on, and goes")
def a_movie(stage):
    show_media(stage, media(stage, "film.avi", GREEN), GREEN)


@story("picture: is seen whole beside the panel, goes on, and goes")
def a_picture(stage):
    show_media(stage, media(stage, "still.bmp", VIOLET), VIOLET)


def show_media(stage, path, colour):
    stage.player.settings(INTERVAL=60)
    stage.player.start(path)
    stage.player.press(PLAY)
    wait_for_box(stage.desk, colour)
    time_before = told(stage, "Time")
    wait("its time goes on", lambda: told(stage, "Time") not in ("", None, time_before))
    stage.leave_picture("shown")
    check_media_place(stage, box_of(stage.desk, colour))
    stage.player.window = stage.player.find_panel()
    check(stage.player.window is not None, "the panel is not seen")
    stage.player.key("c")
    wait("the window goes", lambda: box_of(stage.desk, colour) is None)
    stage.player.wait_for_panel()
    check_end(stage)


# SESS-12: On every desktop a movie fills the whole screen where that is set, and leaves it
@story("movie: fills the whole screen and gives it back")
def whole_screen(stage):
    stage.player.settings(MOVIEZOOM=5)
    stage.player.start(media(stage, "film.avi", GREEN))
    stage.player.press(PLAY)
    screen = stage.desk.screen.width, stage.desk.screen.height

    def filled():
        found = box_of(stage.desk, GREEN)
        return found is not None and near(found[0][2:], screen, 8)  # as wide or as high: its shape is that of the screen

    wait(f"a movie over the whole screen ({box_of(stage.desk, GREEN)})", filled, 10)
    stage.leave_picture("whole")
    stage.player.key("c")
    wait("the movie goes", lambda: box_of(stage.desk, GREEN) is None)
    stage.player.wait_for_panel()
    check_end(stage)


# SESS-09: On every desktop files are dropped onto the panel from a file manager
@story("drop: files of a file manager become the list")
def drop(stage):
    if not stage.session.kind.places:
        skip("the file manager's window is known by its X11 alone, and no drag leads from there to a Wayland program")
    folder = stage.media / "dropped"
    folder.mkdir()
    for number in range(3):
        tone(folder / f"song{number}.wav", 440 + 100 * number, 5)
    stage.player.start()
    with FileManager(stage, folder) as files:
        stage.leave_picture("before")
        files.drag_all_to(*stage.player.button(PLAY))
        wait_for_told(stage, "Total FileNo", "3")
    stage.leave_picture("dropped")
    check_end(stage)


# SESS-10: On every desktop the panel comes back when it is asked for after it was minimised, and works
@story("minimise: the panel comes back when it is asked for")
def minimise(stage):
    stage.player.start(song(stage))
    stage.player.press(MINIMISE)
    since = time.monotonic()
    wait("it went, or stays as nothing here is minimised", lambda: stage.player.find_panel() is None or time.monotonic() - since > 1.5)
    stage.leave_picture("minimised")
    bus = Bus(stage.session)
    bus.call("Raise", interface="org.mpris.MediaPlayer2", path=OBJECT)
    stage.player.wait_for_panel()
    stage.desk.rest()  # KWin tells a window that came back under the pointer nothing of it until it has been elsewhere
    stage.player.press(PLAY)
    stage.sound.wait_for(HZ)
    bus.close()
    check_end(stage)


# SESS-11: On every desktop a question is put up with the keyboard in it
@story("box: a message box comes up and Return answers it")
def box(stage):
    broken = stage.media / "broken.bmp"
    broken.write_text("no picture")
    stage.player.start(broken)
    stage.player.press(PLAY)
    stage.player.wait_for_text("Can't open!!", 10)
    stage.desk.wait_until_still(0, 0, stage.desk.screen.width, stage.desk.screen.height)
    stage.leave_picture("box")
    stage.desk.key("Return")
    wait("the box goes", lambda: not nodes(stage, holding="Can't open!!"))
    check_end(stage)
