# SPDX-License-Identifier: GPL-3.0-or-later
"""The Windows program on the private desktop, under Wine."""

import signal
import time

from wine import Wine, windows_path

from .expect import check, wait
from .player import Player
from .running import NoWatch
from .story import Theatre

# No message of a signal reaches the program: the system ends its process. Whatever else ends it is its own doing.
BY_A_SIGNAL = {-signal.SIGTERM}
STANDS_SECONDS = 0.5
FIRST_START_SECONDS = 60  # the desktop of a new server comes up with the first program


class WinePlayer(Player):
    """As Player: paths in lists are those that Windows knows."""

    def save_list(self, paths, number=0, name=""):
        lines = ["[FILELIST]", f"LISTNAME={name}"]
        lines += [f"LIST{index:03}={path.name}|{windows_path(path)}" for index, path in enumerate(paths)]
        (self.folder / f"FILE{number:02}.INI").write_text("\r\n".join(lines) + "\r\n", encoding="utf-8")

    def environment(self):
        """Of a start that has to do with this player's folder."""
        return {**self.stage.theatre.wine.environment, "CORVANE_FOLDER": windows_path(self.folder)}

    def start(self, *arguments, panel=True, **environment):
        self._run = self._start(arguments, {"CORVANE_SCALE": "1", **environment})
        self.process = self._run.process
        if panel:
            self.wait_for_panel(FIRST_START_SECONDS)

    def wait_for_panel(self, seconds=FIRST_START_SECONDS):
        """The panel has stood for a while: the last picture of the opening, which takes no click, stands as it does."""
        seen = []

        def stands():
            check(self.running(), f"the program ended with code {self.process.poll()}")
            now = self.find_panel()
            if not seen or not now or now.id != seen[0].id:
                seen[:] = [now, time.monotonic()] if now else []
            return now if seen and time.monotonic() - seen[1] >= STANDS_SECONDS else None

        self.window = wait("the panel at its place", stands, seconds)
        return self.window

    def start_another(self, *arguments, **environment):
        return self._start(arguments, environment).process

    def _start(self, arguments, environment):
        wine = self.stage.theatre.wine
        run = self._runs.start(wine.command(self.program, *arguments),
                               {**self.environment(), **environment}, cwd=self.folder)
        run.may_end_with_when_asked = BY_A_SIGNAL
        return run


class WineTheatre(Theatre):
    make_player = WinePlayer
    accessible = False

    def __init__(self, program, proofs):
        super().__init__(program, proofs, watch=NoWatch())

    def __enter__(self):
        super().__enter__()
        self.wine = Wine(self.session.environment).start()
        return self

    def __exit__(self, *details):
        self.wine.stop()
        super().__exit__(*details)
