# SPDX-License-Identifier: GPL-3.0-or-later
"""Two hundred changes of file in the real program: nothing grows."""

import pathlib

from harness.expect import StoryFailure, check, wait
from harness.player import PLAY, REPEAT, STOP
from harness.story import story
from stories.mixed import mixed_list

CHANGES = 200
WARM_UP = 60  # every kind was opened several times: libraries, caches and worker threads are there
GROWTH_KB = 12 * 1024  # heap noise; a lost window or picture of each change would be far more


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


@story("endurance: two hundred changes of file of every kind leave memory, handles and threads flat")
def two_hundred_changes(stage):
    paths, _, _, environment = mixed_list(stage)
    stage.player.settings(INTERVAL=60, DELAYTIME=30)
    stage.player.save_list(paths)
    stage.player.start(**environment)
    process = stage.player.process.pid
    stage.player.press(REPEAT)
    stage.player.press(PLAY)
    warm = None
    for change in range(1, CHANGES + 1):
        stage.player.key("period")
        wait(f"one window at most beside the panel at change {change}", lambda: len(stage.player.windows()) <= 2, 5)
        if change == WARM_UP:
            warm = (own_kb(process), handles(process), threads(process))
    check(stage.player.running(), "it ended")
    memory, open_handles, running_threads = warm
    grown = []

    def flat():
        grown[:] = [own_kb(process) - memory, handles(process) - open_handles, threads(process) - running_threads]
        return grown[0] <= GROWTH_KB and grown[1] <= 8 and grown[2] <= 4

    try:
        wait("flat", flat, 10)
    except StoryFailure:
        raise StoryFailure(f"kB, handles and threads grown by {grown} since change {WARM_UP}") from None
    stage.player.press(STOP)
    wait("only the panel", lambda: len(stage.player.windows()) == 1, 5)
