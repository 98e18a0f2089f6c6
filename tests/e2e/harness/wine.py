# SPDX-License-Identifier: GPL-3.0-or-later
"""The Windows program on the private desktop, under Wine."""

import subprocess

from wine import Wine, windows_path

from .player import Player
from .story import Theatre

FIRST_START_SECONDS = 60  # the desktop of a new server comes up with the first program


class WinePlayer(Player):
    """As Player: paths in lists are those that Windows knows."""

    def save_list(self, paths, number=0, name=""):
        lines = ["[FILELIST]", f"LISTNAME={name}"]
        lines += [f"LIST{index:03}={path.name}|{windows_path(path)}" for index, path in enumerate(paths)]
        (self.folder / f"FILE{number:02}.INI").write_text("\r\n".join(lines) + "\r\n", encoding="utf-8")

    def start(self, *arguments, panel=True, **environment):
        log = open(self.stage.folder / f"program{len(self._outputs)}.log", "wb")
        self._outputs.append(log)
        wine = self.stage.theatre.wine
        self.process = self.stage.session.popen(
            wine.command(self.program, *arguments), stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd=self.folder,
            env={**wine.environment, "CORVANE_FOLDER": windows_path(self.folder), "CORVANE_SCALE": "1", **environment})
        if panel:
            self.wait_for_panel(FIRST_START_SECONDS)


class WineTheatre(Theatre):
    make_player = WinePlayer
    accessible = False

    def __enter__(self):
        super().__enter__()
        self.wine = Wine(self.session.environment).start()
        return self

    def __exit__(self, *details):
        self.wine.stop()
        super().__exit__(*details)
