# SPDX-License-Identifier: GPL-3.0-or-later
"""Drags files out of a real file manager, and opens them from it."""

import subprocess

import numpy as np

from session import end_process

from . import PROJECT
from .expect import wait

ENTRY = "corvane.desktop"
HOMES = {"XDG_DATA_HOME": ".local/share", "XDG_CONFIG_HOME": ".config"}
FOLDER_VIEW_TOP = 90  # pixels of menus and tool bars above the files
ADDRESS_TOP, ADDRESS_TEXT = 25, 250  # middle of the address line; a point of its text
PLACE = 20, 40  # where its window goes, left of the panel
SIZE = 560, 420


def open_by_player(stage, *types):
    """Makes the program under test, with the story's folder, the one that file managers open files of these types with: by
    the entry that is installed, but for the program's path."""
    entry = (PROJECT / "packaging" / ENTRY).read_text(encoding="utf-8")
    command = f"env CORVANE_FOLDER={stage.player.folder} CORVANE_SCALE=1 {stage.player.program} "
    chosen = "\n".join(["[Default Applications]", *(f"{each}={ENTRY}" for each in types)])
    for folder, name, text in ((f"{HOMES['XDG_DATA_HOME']}/applications", ENTRY, entry.replace("Exec=corvane ", f"Exec={command}")),
                               (HOMES["XDG_CONFIG_HOME"], "mimeapps.list", chosen)):
        (stage.folder / folder).mkdir(parents=True, exist_ok=True)
        (stage.folder / folder / name).write_text(text + "\n", encoding="utf-8")
    # As an installation does: else it is offered only where the system has another program for the type.
    subprocess.run(["update-desktop-database", str(stage.folder / HOMES["XDG_DATA_HOME"] / "applications")], check=True, timeout=60)


class FileManager:
    """PCManFM showing one folder; as a context manager it ends with the block."""

    def __init__(self, stage, folder):
        self.stage = stage
        self.desk = stage.desk
        environment = {"HOME": str(stage.folder), **{name: str(stage.folder / place) for name, place in HOMES.items()}}
        self._process = stage.session.popen(["pcmanfm", "--no-desktop", str(folder)], env=environment,
                                            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.window = wait("the file manager", lambda: self.desk.windows(name=f"^{folder.name}"), 15)[0]
        self.desk.tool("windowsize", "--sync", self.window.id, *SIZE, check=False)
        self.desk.tool("windowmove", self.window.id, *PLACE)
        self.window = wait("the file manager at its place", self._placed)
        self.desk.wait_until_still(*self._view())

    def __enter__(self):
        return self

    def __exit__(self, *_):
        end_process(self._process)

    def _placed(self):
        found = [w for w in self.desk.windows(pid=self._process.pid) if w.id == self.window.id]
        return found[0] if found and abs(found[0].x - PLACE[0]) < 20 else None

    def _view(self):
        return self.window.x, self.window.y + FOLDER_VIEW_TOP, self.window.width, self.window.height - FOLDER_VIEW_TOP - 30

    def first_file(self):
        """Selects everything and returns a point of the first file: where the picture changes first."""
        view = self._view()
        self.desk.click(view[0] + view[2] - 30, view[1] + view[3] - 20)  # a free place: takes the focus; a clock at the pointer is seen
        before = self.desk.wait_until_still(*view)
        seen = []

        def selected():
            """Files that came up only now are not: who has selected all changes nothing by doing so once more."""
            self.desk.key("ctrl+a")
            seen.append(self.desk.wait_until_still(*view))
            return len(seen) > 1 and np.array_equal(*seen[-2:]) and self._changed(before, seen[-1], view)

        return wait("the selected files", selected, 15)

    def _changed(self, before, now, view):
        rows, columns = np.nonzero(np.abs(now - before).sum(axis=2) > 60)
        if not len(rows):
            return None
        first = rows < rows.min() + 40
        nearest = columns[first] < columns[first].min() + 60
        return view[0] + int(np.median(columns[first][nearest])), view[1] + int(np.median(rows[first][nearest]))

    def open_all(self):
        """Selects every file of the folder and opens them with the program that is theirs, by the menu's first entry."""
        self.first_file()
        before = self.desk.wait_until_still(*self._view())
        self.desk.key("Menu")
        wait("the files' menu", lambda: np.abs(self.desk.wait_until_still(*self._view()) - before).max() > 60)
        self.desk.key("Down", "Return")

    def drag_all_to(self, x, y, shift=False):
        """Drags every file of the folder to a point of the screen and lets go there; with Shift held then, or without."""
        from_x, from_y = self.first_file()
        self.desk.drag((from_x, from_y), (x, y), steps=25, pause=0.03, release=False)
        held = ["keydown", "Shift_L", "sleep", 0.2] if shift else []
        self.desk.tool(*held, "sleep", 0.2, "mousemove", int(x) + 1, int(y), "sleep", 0.2, "mouseup", 1, *(["sleep", 0.3, "keyup", "Shift_L"] if shift else []))

    def drag_text_to(self, x, y):
        """Drags the text of its address line, selected, to a point of the screen and lets go there: a text, no file."""
        self.desk.click(self.window.x + self.window.width // 2, self.window.y + ADDRESS_TOP)
        self.desk.key("ctrl+l")
        self.desk.wait_until_still(self.window.x, self.window.y, self.window.width, FOLDER_VIEW_TOP)
        from_x, from_y = self.window.x + ADDRESS_TEXT, self.window.y + ADDRESS_TOP
        self.desk.drag((from_x, from_y), (x, y), steps=25, pause=0.03, release=False)
        self.desk.tool("sleep", 0.2, "mousemove", int(x) + 1, int(y), "sleep", 0.2, "mouseup", 1)
