# SPDX-License-Identifier: GPL-3.0-or-later
"""Two hundred changes of file in the real program: nothing grows."""

import pathlib

from harness.expect import check, wait
from harness.player import PLAY, REPEAT, STOP
from harness.story import story
from stories.mixed import mixed_list

CHANGES = 200
WARM_UP = 60  # every kind was opened several times: libraries, caches and worker threads are there
GROWTH_KB = 4 * 1024  # heap noise; a lost window or picture of each change would be far more


def own_kb(process):
    """Memory that is not a file's: what other processes share or give back does not change it."""
    for line in pathlib.Path(f"/proc/{process}/smaps_rollup").read_text().splitlines():
        if line.startswith("Anonymous:"):
            return int(line.split()[1])
    raise AssertionError("no such line")


def handles(process):
    return len(list(pathlib.Path(f"/proc/{process}/fd").iterdir()))


def threads(process):
    return len(list(pathlib.Path(f"/proc/{process}/task").iterdir()))


def held_when_still(stage):
    """Own memory in kB, handles and threads once it is stopped and nothing of the last files is being given back."""
    process = stage.player.process.pid
    stage.player.press(STOP)
    wait("only the panel", lambda: len(stage.player.windows()) == 1, 5)
    seen = []

    def still():
        seen.append((own_kb(process), handles(process), threads(process)))
        return len(seen) > 5 and len(set(seen[-5:])) == 1

    wait("memory that stands still", still, 10, 0.2)
    return seen[-1]


@story("endurance: two hundred changes of file of every kind leave memory, handles and threads flat")
def two_hundred_changes(stage):
    paths, _, _, environment = mixed_list(stage)
    stage.player.settings(INTERVAL=60, DELAYTIME=30)
    stage.player.save_list(paths)
    stage.player.start(**environment)
    stage.player.press(REPEAT)
    stage.player.press(PLAY)
    for change in range(1, CHANGES + 1):
        stage.player.key("period")
        wait(f"one window at most beside the panel at change {change}", lambda: len(stage.player.windows()) <= 2, 5)
        if change == WARM_UP:
            warm = held_when_still(stage)
            stage.player.press(PLAY)
    grown = [after - before for after, before in zip(held_when_still(stage), warm)]
    check(grown[0] <= GROWTH_KB and grown[1] <= 8 and grown[2] <= 4, f"kB, handles and threads grown by {grown} since change {WARM_UP}")
