# SPDX-License-Identifier: GPL-3.0-or-later
"""Mouse, keyboard, windows and pixels of the private desktop."""

import dataclasses
import re
import subprocess

import numpy as np

from screen import Screen

from .expect import wait

HANDS = ("mousemove", "mousedown", "mouseup", "click", "key", "keydown", "keyup", "type")  # of xdotool's commands
WENT = "BadWindow"
COLOUR_TOLERANCE = 26  # of 255; decoders, scaling and colour matrices round


@dataclasses.dataclass
class Window:
    id: int
    name: str
    x: int
    y: int
    width: int
    height: int

    @property
    def size(self):
        return self.width, self.height

    @property
    def middle(self):
        return self.x + self.width // 2, self.y + self.height // 2


class Desk:
    def __init__(self, session):
        self.session = session
        self.screen = Screen(session.framebuffer)

    def tool(self, *arguments, check=True):
        """One xdotool call; several of its commands may follow each other, `sleep` among them."""
        words = list(map(str, arguments))
        if words[0] == "mousemove" and self.session.hands:
            # No hand presses in the very moment in which it arrives, and no compositor counts on it.
            words = [*self.session.before_moves, *words[:3], "sleep", "0.05", *words[3:]]
        words.insert(0, "xdotool")
        environment = {**self.session.environment, **(self.session.hands if any(each in HANDS for each in arguments) else {})}
        done = subprocess.run(words, env=environment, check=check, capture_output=True, text=True, timeout=60)
        if words[1] == "search" and WENT in done.stderr:
            return self.tool(*arguments, check=check)  # a window went while they were looked through: nothing was listed
        return done.stdout

    # Windows.

    def windows(self, pid=None, name=None):
        """Visible windows of a process or of a name (a regular expression)."""
        chosen = ["--pid", pid] if pid else ["--name", name or "."]
        ids = self.tool("search", "--onlyvisible", *chosen, check=False).split()
        found = []
        for window in ids:
            answer = self.tool("getwindowgeometry", "--shell", window, check=False)
            values = {key: int(value) for key, value in re.findall(r"(\w+)=(-?\d+)", answer)}
            if "HEIGHT" not in values:
                continue
            title = self.tool("getwindowname", window, check=False).strip()
            if pid is None or name is None or re.search(name, title):
                found.append(Window(int(window), title, values["X"], values["Y"], values["WIDTH"], values["HEIGHT"]))
        return found

    def focus(self, window):
        self.tool("windowfocus", "--sync", window.id, check=False)

    def wait_for_keyboard(self, window):
        """Until the keys go to that window: it is seen a moment before."""
        wait(f"{window.name or window.id} has the keyboard", lambda: self.focused() == window.id)

    def focused(self):
        answer = self.tool("getwindowfocus", check=False).strip()
        return int(answer) if answer.isdigit() else 0

    def stacking(self):
        """Ids of the managed windows, bottom to top."""
        answer = self.session.run(["xprop", "-root", "_NET_CLIENT_LIST_STACKING"])
        return [int(word, 16) for word in re.findall(r"0x[0-9a-f]+", answer)]

    # Hands.

    def move(self, x, y):
        self.tool("mousemove", int(x), int(y))

    def lying_at(self, x, y):
        """The frame of the window that takes a click there; the pointer is there then."""
        return int(re.search(r"window:(\d+)", self.tool("mousemove", int(x), int(y), "getmouselocation"))[1])

    def click(self, x, y, button=1, times=1):
        self.tool("mousemove", int(x), int(y), *["click", button] * times)

    def hold(self, x, y, milliseconds, button=1):
        """Presses for a length of time that xdotool measures itself."""
        self.tool("mousemove", int(x), int(y), "mousedown", button, "sleep", milliseconds / 1000, "mouseup", button)

    def drag(self, start, end, steps=12, button=1, pause=0.02, release=True):
        """Presses, moves step by step and releases, as a hand does."""
        words = ["mousemove", int(start[0]), int(start[1]), "mousedown", button, "sleep", 0.05]
        for step in range(1, steps + 1):
            x, y = (start[i] + (end[i] - start[i]) * step / steps for i in (0, 1))
            words += ["mousemove", round(x), round(y), "sleep", pause]
        self.tool(*words, *(["mouseup", button] if release else []))

    def key(self, *keys):
        """Presses and releases keys by their X names, one after the other."""
        self.tool("key", "--clearmodifiers", "--delay", 20, *keys)

    def type(self, text):
        self.tool("type", "--clearmodifiers", "--delay", 15, "--", text)

    def rest(self):
        """Puts the pointer into the corner, out of every picture."""
        self.move(self.screen.width - 1, 0)

    # Eyes.

    def area(self, x=0, y=0, width=None, height=None):
        """Pixels as an array of height by width by red, green, blue."""
        rows = self.screen.rows(x, y, width, height)
        flat = np.frombuffer(b"".join(rows), np.uint8)
        return flat.reshape(len(rows), -1, 4)[:, :, 2::-1].astype(int)

    def colour(self, x, y):
        """Mean colour of the 5 by 5 pixels around a point."""
        return self.area(int(x) - 2, int(y) - 2, 5, 5).reshape(-1, 3).mean(axis=0)

    def shows(self, x, y, colour, tolerance=COLOUR_TOLERANCE):
        """Is the colour "#RRGGBB" there?"""
        return bool(np.abs(self.colour(x, y) - rgb(colour)).max() <= tolerance)

    def wait_for_colour(self, x, y, colour, seconds=5.0):
        wait(f"{colour} at {int(x)},{int(y)}", lambda: self.shows(x, y, colour), seconds)

    def wait_until_still(self, x, y, width, height, lasting=6, seconds=5.0):
        """Until an area stands still for `lasting` looks in a row; returns it."""
        seen = []

        def still():
            seen.append(self.screen.pixels(x, y, width, height))
            return len(seen) >= lasting and len(set(seen[-lasting:])) == 1

        wait("a picture that stands still", still, seconds, 0.04)
        return self.area(x, y, width, height)

    def save(self, path):
        self.screen.save(path)


def rgb(colour):
    return np.array([int(colour[i : i + 2], 16) for i in (1, 3, 5)])
