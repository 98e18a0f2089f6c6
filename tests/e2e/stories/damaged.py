# SPDX-License-Identifier: GPL-3.0-or-later
"""Damaged files of every kind, opened one after the other in one running program: a box or silence, nothing else."""

import os

import numpy as np

from harness.damage import damaged_files
from harness.expect import StoryFailure, check, wait
from harness.player import TITLE_RECORD
from harness.story import story

COUNT = int(os.environ.get("CORVANE_DAMAGED", "40"))  # the long form takes more
HANDED_OVER_SECONDS = 30  # for a start of the program that only passes a name on, under a sanitizer, too
ALIVE_SECONDS = 20  # for the panel to show the next name: what hangs does not
OPENED_SECONDS = float(os.environ.get("CORVANE_DAMAGED_SECONDS", "0.4"))  # a file is left open for so long


def dismiss(stage):
    """Answers boxes that are up; returns how many."""
    boxes = stage.player.boxes()
    for box in boxes:
        stage.desk.focus(box)
        stage.desk.key("Return")
    return len(boxes)


def open_in_running(stage, path):
    """As a file manager does: the list becomes this file, the panel shows its name."""
    before = stage.player.look(TITLE_RECORD)
    handing = stage.player.start_another("--open", path)
    wait("the name is handed over", lambda: handing.poll() is not None, HANDED_OVER_SECONDS)

    def shown():
        check(stage.player.running(), f"the program ended with code {stage.player.process.poll()}")
        dismiss(stage)
        return np.abs(stage.player.look(TITLE_RECORD) - before).max() > 60

    wait("the next name", shown, ALIVE_SECONDS)


def play_a_while(stage):
    """Presses play and looks on; returns whether a box came."""
    boxes = 0

    def looked_on():
        nonlocal boxes
        boxes += dismiss(stage)
        check(stage.player.running(), f"the program ended with code {stage.player.process.poll()}")
        return False

    stage.player.key("z")
    try:
        wait("nothing more", looked_on, OPENED_SECONDS, 0.1)
    except StoryFailure as failure:
        if "nothing more" not in str(failure):
            raise
    wait("no box is left", lambda: dismiss(stage) == 0, ALIVE_SECONDS)
    stage.player.key("c")
    return boxes > 0


# OPEN-54: Damaged files of every kind give a box or silence and never end the program
@story("damage: damaged files of every kind are opened with a box or in silence")
def damaged_media(stage):
    files = damaged_files(stage.media, COUNT)
    stage.player.settings(INTERVAL=60, DELAYTIME=30)
    stage.player.start()
    boxes, opened = 0, ""
    try:
        for path, opened in files:
            open_in_running(stage, path)
            boxes += play_a_while(stage)
    except StoryFailure as failure:
        raise StoryFailure(f"{path.name} ({opened}): {failure}; {stage.player.log()[-400:]}") from failure
    check(boxes > 0, "some damage is told")
    print(f"     {len(files)} damaged files, {boxes} told by a box", flush=True)
    check(stage.player.power_off() == 0, "it ends as it should")
