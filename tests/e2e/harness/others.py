# SPDX-License-Identifier: GPL-3.0-or-later
"""Other programs on the private desktop: one whose window has the keyboard, and a desktop without a window manager."""

import contextlib
import re
import subprocess

from session import end_process

from .expect import wait


class OtherProgram:
    """A program with a window that says which keys it is given; as a context manager it ends with the block."""

    def __init__(self, stage, name="neighbour"):
        self.stage = stage
        self._log = open(stage.folder / f"{name}.log", "w+")
        self._process = stage.session.popen(["xev", "-name", name, "-geometry", "300x120+10+10"], stdin=subprocess.DEVNULL,
                                            stdout=self._log, stderr=subprocess.DEVNULL)
        self.window = wait("the other program", lambda: stage.desk.windows(name=f"^{name}$"), 10)[0]
        self.take_keyboard()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        end_process(self._process)
        self._log.close()

    def take_keyboard(self):
        self.stage.desk.tool("windowactivate", "--sync", self.window.id)
        wait("the other program has the keyboard", self.has_keyboard)

    def has_keyboard(self):
        return self.stage.desk.focused() == self.window.id

    def keys(self):
        """The characters that were typed into it so far."""
        self._log.flush()
        with open(self._log.name) as told:
            events = told.read().split("\n\n")
        presses = [event for event in events if event.lstrip().startswith("KeyPress")]
        return [match.group(1) for event in presses if (match := re.search(r"keysym 0x[0-9a-f]+, (\w+)", event))]


@contextlib.contextmanager
def no_window_manager(stage):
    """Inside the block nobody manages the windows."""

    def managed():
        answer = subprocess.run(["wmctrl", "-m"], env=stage.session.environment, capture_output=True, text=True, check=False)
        return "Openbox" in answer.stdout

    stage.session.run(["openbox", "--exit"])
    wait("no window manager", lambda: not managed())
    try:
        yield
    finally:
        stage.session.popen(["openbox", "--sm-disable"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)
        wait("the window manager again", managed)
