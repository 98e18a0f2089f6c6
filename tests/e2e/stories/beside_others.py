# SPDX-License-Identifier: GPL-3.0-or-later
"""Beside other programs: who types elsewhere is left alone, names are shown as text, the screen stays lit."""

import os
import threading

from harness.expect import check, equal, steady, wait
from harness.media import movie, picture, tone
from harness.others import OtherProgram
from harness.player import EDITOR, PLAY, STOP
from harness.signs import media_windows, middle_of_screen
from harness.story import story

GREEN, VIOLET, ORANGE = "#32A046", "#8232B4", "#E69628"
SLIDE = 5  # seconds, in which another program has started and taken the keyboard


@story("beside others: a slide show and a movie that come while another program is typed into leave it the keyboard")
def typing_elsewhere(stage):
    pictures = [picture(stage.media / "first.bmp", GREEN), picture(stage.media / "second.bmp", VIOLET)]
    film = movie(stage.media / "film.avi", ORANGE, 500, 6)
    stage.player.settings(INTERVAL=SLIDE, IMAGEHIDE="ON", DELAYTIME=30)
    stage.player.start(*pictures, film)
    stage.player.press(PLAY)
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
    with OtherProgram(stage) as other:
        for colour in (VIOLET, ORANGE):
            stage.desk.wait_for_colour(*middle_of_screen(stage), colour, 10)
            steady("the other program has the keyboard", other.has_keyboard, 0.6)
            stage.desk.key("P")
        wait("its keys", lambda: [key for key in other.keys() if "Shift" not in key] == ["P", "P"])
    equal(stage.player.power_off(), 0, "exit code")


# COM-28
@story("beside others: a box that comes by itself is seen and leaves the other program the keyboard, until it is clicked")
def box_beside(stage):
    slides = [picture(stage.media / f"slide{number}.bmp", colour) for number, colour in enumerate((GREEN, VIOLET, ORANGE, GREEN))]
    stage.player.settings(INTERVAL=SLIDE, IMAGEHIDE="ON")
    stage.player.start(*slides)
    for gone in slides[1], slides[2]:
        gone.unlink()
    stage.player.press(PLAY)
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
    with OtherProgram(stage) as other:
        stage.player.wait_for_box("slide1.bmp Can't open!!")
        steady("the other program has the keyboard", other.has_keyboard, 0.6)
        stage.desk.key("Escape", "p")
        wait("its keys", lambda: other.keys() == ["Escape", "p"])
        box = one_box(stage)
        check(stage.desk.stacking()[-1] == box.id, "the box lies behind another window")
        stage.leave_picture("beside")
        stage.desk.click(box.x + box.width // 2, box.y + 8)
        wait("the box has the keyboard", lambda: stage.desk.focused() == box.id)
        other.take_keyboard()
        stage.player.press(STOP)  # the panel is shut: whoever wants it is shown what is in its way
        wait("the box has the keyboard again", lambda: stage.desk.focused() == box.id)
        stage.desk.key("Tab", "Tab", "space")  # Ignore
        stage.player.wait_for_box("slide2.bmp Can't open!!")
        equal(other.keys(), ["Escape", "p"], "what the other program was typed")
        stage.desk.click(*one_box(stage).middle)
        wait("a box has the keyboard", lambda: stage.desk.focused() in [w.id for w in stage.player.boxes()])
        stage.desk.key("Escape")
        stage.player.wait_for_no_box()
    equal(stage.player.power_off(), 0, "exit code")


@story("beside others: a box that another program keeps waiting comes with a second start, and goes when the panel is to close")
def box_called(stage):
    slides = [picture(stage.media / f"slide{number}.bmp", colour) for number, colour in enumerate((GREEN, VIOLET))]
    stage.player.settings(INTERVAL=SLIDE, IMAGEHIDE="ON")
    stage.player.start(*slides)
    slides[1].unlink()
    stage.player.press(PLAY)
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
    with OtherProgram(stage) as other:
        stage.player.wait_for_box("slide1.bmp Can't open!!")
        check(other.has_keyboard(), "the box took the keyboard")
        box = one_box(stage)
        equal(stage.player.start_another().wait(10), 0, "exit code of the second start")
        wait("the box has the keyboard", lambda: stage.desk.focused() == box.id)
        other.take_keyboard()
        stage.session.run(["wmctrl", "-i", "-c", hex(stage.player.window.id)])
        equal(stage.player.wait_for_end(), 0, "exit code")


def one_box(stage):
    found = stage.player.boxes()
    equal(len(found), 1, "boxes")
    return found[0]


@story("beside others: a window that the user opens has the keyboard")
def opened_by_hand(stage):
    stage.player.settings(INTERVAL=0)
    stage.player.start(picture(stage.media / "first.bmp", GREEN))
    with OtherProgram(stage):
        stage.player.press(PLAY)  # the click gives the panel the keyboard first
        stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
        window = wait("the picture's window", lambda: media_windows(stage))[0]
        wait("it has the keyboard", lambda: stage.desk.focused() == window.id)


class Lure:
    """A pipe in the place of a file that mark-up names: whoever opens it is noticed."""

    def __init__(self, path):
        self.taken = False
        os.mkfifo(path)
        # A writer waits until somebody reads.
        self._path = path
        self._thread = threading.Thread(target=self._wait, daemon=True)
        self._thread.start()

    def _wait(self):
        descriptor = os.open(self._path, os.O_WRONLY)
        self.taken = True
        os.close(descriptor)

    def let_go(self):
        """Ends the waiting by reading itself."""
        reader = os.open(self._path, os.O_RDONLY | os.O_NONBLOCK)
        self._thread.join(5)
        os.close(reader)


@story("beside others: a name that looks like mark-up is shown as it is, and the file it names is not opened")
def names_are_text(stage):
    home = stage.folder / "home"
    home.mkdir()
    lure = Lure(stage.folder / "lure")
    name = "<img src=lure> a name that is long enough to be cut.wav"
    song = tone(home / name, 440, 30)
    stage.player.start("--open", str(song), under=("env", "-C", stage.folder), HOME=str(home))
    title = stage.player.place(33)
    stage.desk.move(title[0] + 20, title[1] + title[3] // 2)
    stage.player.wait_for_text("<img src=lure", 5)
    wait("the tip", lambda: len(stage.player.windows()) > 1)
    stage.leave_picture("tip")
    stage.player.press(STOP)  # opened files play at once
    song.rename(home / "elsewhere.wav")
    stage.player.press(PLAY)
    stage.player.wait_for_box("<img src=lure")
    stage.leave_picture("box")
    stage.desk.key("Escape")
    stage.player.wait_for_no_box()
    (home / "elsewhere.wav").rename(song)
    stage.player.press(EDITOR)
    row = stage.accessibility.wait_for(stage.player.process.pid, holding="<img src=lure", role="list item")
    stage.desk.move(*row.middle)
    wait("the tip", lambda: len(stage.player.windows()) > 1)
    stage.leave_picture("editor")
    check(not lure.taken, "the file that a name names was opened")
    lure.let_go()


# COM-29
@story("beside others: names with line breaks, turned writing, ampersands and two hundred letters fit their boxes")
def odd_names(stage):
    names = ["two\nlines.wav", "song\u202e3pm.wav", "R&B & <b>soul<b>.wav", "w" * 200 + ".wav"]
    songs = [tone(stage.media / name, 440, 30) for name in names]
    stage.player.start("--open", *map(str, songs))
    stage.player.press(STOP)  # opened files play at once
    for song in songs:
        song.unlink()
    stage.player.press(PLAY)
    for number in range(len(songs)):
        box = wait("a box", stage.player.boxes)[0]
        if number == 0:
            stage.player.wait_for_text("two lines.wav Can't open!!")  # its lines are its own
        stage.leave_picture(f"box{number}")
        check(box.x >= 0 and box.y >= 0 and box.x + box.width <= stage.desk.screen.width
              and box.y + box.height <= stage.desk.screen.height, f"the box of {names[number]!r} leaves the screen: {box}")
        stage.desk.key("Tab", "Tab", "space")  # Ignore
        wait("that box is answered", lambda: all(w.id != box.id for w in stage.player.boxes()))
    check(stage.player.running(), "the program has ended")
