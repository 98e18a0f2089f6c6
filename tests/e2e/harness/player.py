# SPDX-License-Identifier: GPL-3.0-or-later
"""The program under test: its folder, its panel, its controls."""

import re
import shutil
import time

import numpy as np

from screen import read_skin
from session import poll

from . import PROJECT
from .expect import SLACK, StoryFailure, check, wait
from .lateness import waited
from .running import END_SECONDS, NoWatch, Runs

POWER, MINIMISE, REPEAT, SHUFFLE, PLAY, PAUSE, STOP, PREVIOUS, NEXT, EDITOR, VOLUME_DOWN, VOLUME_UP = range(12)
BUTTON_RECORDS = (2, 4, 5, 7, 8, 10, 12, 13, 15, 17, 19, 20)  # the record that places each button
DISPLAY_RECORD, KNOB_RECORD, SLIDER_RECORD = 21, 24, 40
TOTAL_RECORD, NUMBER_RECORD, TIME_RECORD, KIND_RECORD, TITLE_RECORD = 29, 30, 31, 32, 33
REPEAT_LAMP, AUTO_LAMP, QUICK_LAMP = (38, 39), (34, 35), (36, 37)  # records of the pictures: off, on
START_SECONDS = 15
KEYBOARD_SECONDS = 1
OPENING_SECONDS = 0.25  # its last picture stands no longer


class Player:
    def __init__(self, stage, program, folder):
        self.stage = stage
        self.desk = stage.desk
        self.program = program
        self.folder = folder
        self.process = None
        self._run = None
        self._runs = Runs(stage.session, getattr(stage, "watch", NoWatch()), folder.with_name(f"{folder.name}_runs"))
        self.scale = 1  # pixels of the screen to one of the skin
        self.window = None  # the panel's
        self._opened = 0  # the process whose panel was seen behind its opening
        folder.mkdir(parents=True)
        shutil.copytree(PROJECT / "PANELSET", folder / "PANELSET")
        self.skin = read_skin(folder / "PANELSET" / "DEFAULT.CSV")

    # What lies in its folder.

    def settings(self, **values):
        """Writes the settings file."""
        lines = ["[KADO]", *(f"{key}={value}" for key, value in values.items())]
        (self.folder / "KADO.INI").write_text("\r\n".join(lines) + "\r\n", encoding="utf-8")

    def setting(self, key):
        """A stored setting; None when it is missing."""
        return read_profile(self.folder / "KADO.INI").get(key.upper())

    def save_list(self, paths, number=0, name=""):
        """Writes a stored play list; number is page times ten and list."""
        lines = ["[FILELIST]", f"LISTNAME={name}"]
        lines += [f"LIST{index:03}={path.name}|{path}" for index, path in enumerate(paths)]
        (self.folder / f"FILE{number:02}.INI").write_text("\r\n".join(lines) + "\r\n", encoding="utf-8")

    # Its life.

    def start(self, *arguments, panel=True, under=(), **environment):
        """Starts it with its sound on; waits for the panel to stand where it opens, unless told otherwise.
        under: a command that becomes the program, such as "env -u NAME"."""
        self._run = self._runs.start([self.program, *arguments],
                                     {"CORVANE_FOLDER": str(self.folder), "CORVANE_SCALE": "1", **environment}, under)
        self.process = self._run.process
        if panel:
            self.wait_for_panel()

    def start_another(self, *arguments, folder=None, **environment):
        """One more process beside it, on the same folder unless told otherwise; its end is looked at like the first one's."""
        folder = folder or self.folder
        process = self._runs.start([self.program, *arguments], {"CORVANE_FOLDER": str(folder), **environment}).process
        patiently = process.wait
        process.wait = lambda timeout=None: patiently(timeout and timeout * SLACK)
        return process

    def wait_for_panel(self, seconds=START_SECONDS):
        """The last picture of the opening stands there as well: the panel is what is still there at the next look and, behind an
        opening, longer than that picture stands, with what the program waited for a processor meanwhile."""
        before, since, held = [], time.monotonic(), 0.0
        opened = self._opened == self.process.pid

        def stands():
            nonlocal since, held
            check(self.running(), f"the program ended with code {self.process.poll()}: {self.log()[-300:]}")
            before.append(self.find_panel())
            if not before[-1] or before[-2:-1] != before[-1:]:
                since, held = time.monotonic(), waited(self.process.pid) or 0.0
                return None
            lasts = 0.0 if opened else OPENING_SECONDS * SLACK + (waited(self.process.pid) or 0.0) - held
            return before[-1] if time.monotonic() - since >= lasts else None

        self.window = wait("the panel at its place", stands, seconds)
        self._opened = self.process.pid
        return self.window

    def find_panel(self):
        """The window of the panel's size at the place where it opens."""
        width, height = self.scaled(self.skin[0][4:6])
        place = (self.desk.screen.width - width) * 9 // 10, (self.desk.screen.height - height) * 9 // 10
        found = [w for w in self.windows() if w.size == (width, height) and max(abs(w.x - place[0]), abs(w.y - place[1])) <= 1]
        return found[0] if len(found) == 1 else None

    def windows(self, name=None):
        return self.desk.windows(pid=self.process.pid, name=name)

    def wait_for_window(self, name, seconds=6.0):
        """The first visible window whose title matches."""
        return wait(f"a window {name}", lambda: self.windows(name), seconds)[0]

    def wait_for_no_window(self, name, seconds=6.0):
        wait(f"no window {name}", lambda: not self.windows(name), seconds)

    def boxes(self):
        """Message boxes: windows of the program's name beside the panel."""
        panel = self.window.id if self.window else self.find_panel() and self.find_panel().id
        return [w for w in self.windows("^Corvane$") if w.id != panel]

    def wait_for_box(self, text, seconds=8.0):
        """Until a message box is up and says the text. The window manager gives it the keyboard a moment after it is seen, unless
        another program has it."""
        wait(f"a box that says {text!r}", self.boxes, seconds)
        self.wait_for_text(text)
        poll(lambda: self.desk.focused() in [box.id for box in self.boxes()], KEYBOARD_SECONDS)

    def wait_for_no_box(self):
        wait("no box", lambda: not self.boxes())
        self.texts()  # its window goes first; only who answers has left its loop, which keeps keys and clicks from the panel

    def wait_for_keyboard(self):
        """Until a window beside the panel has the keyboard: the tree tells of a dialog before the window manager gives it that."""
        wait("a dialog has the keyboard", lambda: self.desk.focused() in [w.id for w in self.windows() if w.id != self.window.id])

    def running(self):
        return self.process is not None and self.process.poll() is None

    def wait_for_end(self, seconds=END_SECONDS):
        """Until the process has ended; returns its exit code."""
        wait("the program ends", lambda: not self.running(), seconds)
        return self.process.returncode

    def power_off(self):
        """By the power button; returns the exit code."""
        self.press(POWER)
        return self.wait_for_end()

    def may_end_with(self, *codes):
        """The running one ends with one of these codes, not with 0."""
        self._run.may_end_with = set(codes)

    def kill(self):
        """Without a word, as a power failure does."""
        self._run.kill()

    def stop(self):
        """Ends what still runs. Fails when any process that was started ended by a signal, with another code than it should,
        or not in time."""
        wrong = self._runs.end()
        if wrong:
            raise StoryFailure("; ".join(dict.fromkeys(wrong)))

    @property
    def runs_folder(self):
        """Where its processes work and leave what they say."""
        return self._runs.folder

    def log(self):
        return self._runs.log()

    def keep_proof(self, folder):
        """What all its processes said, and what a crash left."""
        self._runs.keep_proof(folder, self.program)

    # Its panel.

    def place(self, record):
        """Rectangle of a record's element on the screen: x, y, width, height."""
        left, top, width, height = self.scaled([self.skin[record][each] for each in (0, 1, 4, 5)])
        return self.window.x + left, self.window.y + top, width, height

    def scaled(self, places):
        return tuple(round(place * self.scale) for place in places)

    def middle(self, record):
        x, y, width, height = self.place(record)
        return x + width // 2, y + height // 2

    def button(self, index):
        """Middle of a button of the panel."""
        return self.middle(BUTTON_RECORDS[index])

    def press(self, index):
        self.desk.click(*self.button(index))

    def hold(self, index, milliseconds, button=1):
        self.desk.hold(*self.button(index), milliseconds, button)

    def slider(self, fraction):
        """A point of the slider."""
        x, y, width, height = self.place(SLIDER_RECORD)
        return x + round(width * fraction), y + height // 2

    def slider_fraction(self):
        """How much of the slider is filled, by its colour."""
        x, y, width, height = self.place(SLIDER_RECORD)
        row = self.desk.area(x, y + height // 2, width, 1)[0]
        return float(np.mean(np.abs(row - self.slider_colour()).max(axis=1) <= 40))

    def slider_colour(self):
        value = self.skin[SLIDER_RECORD][6]
        number = int(value[2:], 16) if value.upper().startswith("&H") else int(value)
        return np.array([number & 255, number >> 8 & 255, number >> 16 & 255])

    def key(self, *keys):
        """Types keys into the panel."""
        self.desk.focus(self.window)
        self.desk.key(*keys)

    def look(self, record):
        """Pixels of an element's place, now."""
        return self.desk.area(*self.place(record))

    def cell(self, record):
        """Pixels of a record's picture in the skin's bitmap."""
        _, _, x, y, width, height, _ = self.skin[record]
        return self.bitmap()[y : y + height, x : x + width]

    def bitmap(self):
        from PIL import Image

        return np.asarray(Image.open(self.folder / "PANELSET" / "DEFAULT.BMP").convert("RGB")).astype(int)

    def lamp_lit(self, lamp):
        off, on = lamp
        shown = self.look(off)
        return bool(np.abs(shown - self.cell(on)).sum() < np.abs(shown - self.cell(off)).sum())

    # What assistive programs are told.

    def texts(self):
        """Names and texts of everything shown: [(role, name, text)]; empty when the tree cannot be read."""
        nodes = self.stage.accessibility.nodes(self.process.pid)
        return [(n["role"], n["name"], n.get("text", "")) for n in nodes if n.shown]

    def wait_for_text(self, text, seconds=5.0):
        """Until some shown control's name or text holds the text."""
        return self.stage.accessibility.wait_for(self.process.pid, seconds, holding=text)

    def press_tab(self, before=None):
        """Presses Tab, until another control is told to have the focus: one that is pressed before would be one too many. before:
        what has it, where that is known; returns what has it then."""
        ask = self.stage.accessibility.focused
        before = before or ask(self.process.pid)
        self.desk.key("Tab")
        return wait("another control has the focus", lambda: (now := ask(self.process.pid)) != before and now)

    def press_control(self, name, role="push button"):
        """Clicks the middle of a native control by its caption."""
        self.desk.click(*self.stage.accessibility.wait_for(self.process.pid, name=name, role=role).middle)


def read_profile(path):
    """The keys of an INI file, whatever their section, in capitals; the first one of a name counts."""
    values = {}
    if path.exists():
        for line in path.read_text(encoding="utf-8", errors="surrogateescape").splitlines():
            key, separator, value = line.partition("=")
            if separator and not line.startswith(";"):
                values.setdefault(key.strip().upper(), value.strip())
    return values


def sink_volume(session):
    """Left and right volume of the sink, 0 to 65536."""
    answer = session.run(["pactl", "get-sink-volume", "nul"])
    return tuple(int(word) for word in re.findall(r":\s+(\d+) /", answer))


def set_sink_volume(session, *volumes):
    session.run(["pactl", "set-sink-volume", "nul", *map(str, volumes)])
