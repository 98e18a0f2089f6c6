# SPDX-License-Identifier: GPL-3.0-or-later
"""What the core does inside the process, timed by core_bench."""

import shutil
import subprocess

from . import PROJECT, WORKPLACE
from .table import Figure

LONG_LIST_MS = 100  # the most for anything that a list of 9,999 entries asks for
TARGETS = {"settings read, 1 MB and 10,000 keys": 5, "20,000 files listed": 100, "editor opened on 20,000 files": 100,
           "list save, 9,999 entries": LONG_LIST_MS, "list load, 9,999 entries": LONG_LIST_MS, "shuffle, 9,999 entries": LONG_LIST_MS,
           "drop of 9,999 files": LONG_LIST_MS, "drop of a list of 9,999 entries": LONG_LIST_MS,
           "drop of a folder of 20,000 files": LONG_LIST_MS, "editor opened on 9,999 entries": LONG_LIST_MS}
NOTES = {"list save, 256 entries": "written beside, flushed, renamed", "editor opened on 20,000 files": "window and all, offscreen"}


def core_figures(stage):
    folder = WORKPLACE / "core"
    shutil.copytree(PROJECT / "PANELSET", folder / "PANELSET", dirs_exist_ok=True)
    command = [str(stage.tools / "core_bench"), str(folder), str(stage.runs * 4)]
    environment = {**stage.session.environment, "QT_QPA_PLATFORM": "offscreen"}
    answer = subprocess.run(command, env=environment, check=True, capture_output=True, text=True, timeout=300)
    for line in answer.stdout.splitlines():
        name, *values = line.split("\t")
        yield Figure(name, [float(value) for value in values], "ms", TARGETS.get(name), NOTES.get(name, ""))
