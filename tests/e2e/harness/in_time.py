# SPDX-License-Identifier: GPL-3.0-or-later
"""Limits of time that are the player's alone: not what it waited for a processor meanwhile, nor what the tools take that press and look."""

import contextlib
import pathlib
import threading
import time

from .expect import SLACK, check
from .lateness import waited

LOOK_PAUSE = 0.01  # seconds
TOOLS = 4  # are started to press a button, and to look at the windows


class Held:
    """How long a player's first thread has had work and no processor since this was made; also of one that has ended meanwhile, and
    of one that was started."""

    def __init__(self, player):
        self._player = player
        self._began = {player.process: waited(player.process.pid) or 0.0} if player.process else {}
        self._last = dict(self._began)
        self._done = threading.Event()
        self._looks = threading.Thread(target=self._look, daemon=True)
        self._looks.start()

    def _look(self):
        while not self._done.wait(LOOK_PAUSE):
            process = self._player.process
            now = process and waited(process.pid)
            if now:
                self._last[process] = now

    def seconds(self):
        """Until now; nothing more is counted."""
        self._done.set()
        self._looks.join()
        return max((last - self._began.get(process, 0.0) for process, last in self._last.items()), default=0.0)


class Starved:
    """How long what makes the sound, a thread of the player or of the sound server, had work and no processor, or the whole machine
    stood still, which a look that comes late tells; as a context manager. Where that is longer than what is sounded ahead a gap is
    heard."""

    WINDOW = 1.0  # seconds: more than is sounded ahead, and than is let out at a time

    def __init__(self, stage):
        self._pids = stage.player.process.pid, stage.session.pid_of("pulseaudio")
        self._seen = []  # (when, {thread: seconds waited so far}) of each look of the last window
        self.seconds = 0.0  # the most in a window
        self._done = threading.Event()
        self._looks = threading.Thread(target=self._look, daemon=True)

    def __enter__(self):
        self._looks.start()
        return self

    def __exit__(self, *_):
        self._done.set()
        self._looks.join()

    def _look(self):
        late, looked = 0.0, time.monotonic()
        while not self._done.wait(LOOK_PAUSE):
            now = time.monotonic()
            late, looked = late + now - looked - LOOK_PAUSE, now
            tasks = [task for pid in self._pids for task in pathlib.Path(f"/proc/{pid}/task").glob("*")]
            self._seen.append((now, {"looks": late, **{task.name: waited(f"{task.parts[2]}/task/{task.name}") or 0.0 for task in tasks}}))
            while len(self._seen) > 2 and now - self._seen[0][0] > self.WINDOW:
                self._seen.pop(0)
            before, last = self._seen[0][1], self._seen[-1][1]
            self.seconds = max([self.seconds, *(last[each] - before[each] for each in last if each in before)])


@contextlib.contextmanager
def in_time(stage, what, seconds):
    """The player does what is done inside within so many seconds of its own."""
    held, began = Held(stage.player), time.monotonic()
    try:
        yield
        taken = time.monotonic() - began
    finally:
        late = held.seconds()
    began = time.monotonic()
    stage.desk.focused()
    tools = TOOLS * (time.monotonic() - began)
    check(taken - late - tools < seconds * SLACK,
          f"{what} took {taken:.1f} s, of which the player waited {late:.1f} s for a processor, and tools took about {tools:.1f} s")
