# SPDX-License-Identifier: GPL-3.0-or-later
"""Two hundred changes of file in the real program: each is told, heard or seen, and nothing grows."""

import pathlib

from harness.expect import check, equal, wait
from harness.player import NUMBER_RECORD, PLAY, REPEAT, REPEAT_LAMP, STOP
from harness.signs import wait_for_entry
from harness.story import story
from stories.mixed import mixed_list

WARM_UP = 60  # changes; every kind was opened several times: libraries, caches and worker threads are there
SECONDS = 15.2  # of each sound and movie: none is over before it is looked for
HALF = 108  # changes; whole rounds of the list, so that it is the same file behind which is measured
# Of each half: a lost window or picture of each change would be far more. A thread that gets a heap of its own for the first
# time, on a busy machine, is a step of some 5 MB, once.
GROWTH_KB = 2 * 1024


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


def held_after(stage, entries, changes, numbers):
    """So many presses of the key for next, each one's file awaited; returns what is held then, stopped.
    numbers: how each number is drawn, {place: pixels}."""
    stage.player.press(PLAY)
    for change in changes:
        place = change % len(entries)
        stage.player.key("period")
        wait_for_entry(stage, place + 1, entries[place])
        drawn = stage.player.look(NUMBER_RECORD).tobytes()
        check(numbers.setdefault(place, drawn) == drawn, f"number {place + 1} is drawn otherwise at change {change}")
    return held_when_still(stage)


# FAULT-16: Changes of file leave memory, handles and threads flat
# MOVE-45
@story("endurance: two hundred changes of file of every kind leave memory, handles and threads flat")
def two_hundred_changes(stage):
    entries, environment = mixed_list(stage, SECONDS)
    stage.player.settings(INTERVAL=60, DELAYTIME=30)
    stage.player.save_list([entry.path for entry in entries])
    stage.player.start(**environment)
    stage.player.press(REPEAT)
    wait("the repeat lamp", lambda: stage.player.lamp_lit(REPEAT_LAMP))
    numbers, held = {}, []
    for begin, end in ((0, WARM_UP), (WARM_UP, WARM_UP + HALF), (WARM_UP + HALF, WARM_UP + 2 * HALF)):
        held.append(held_after(stage, entries, range(begin + 1, end + 1), numbers))
    equal(len(set(numbers.values())), len(entries), "numbers that are drawn each in its own way")
    check(stage.player.lamp_lit(REPEAT_LAMP), "the repeat lamp is dark")
    first, second = ([after - before for after, before in zip(held[part + 1], held[part])] for part in range(2))
    grown = f"kB, handles and threads grown by {first}, then by {second}"
    print(f"     {grown}", flush=True)
    check(min(first[0], second[0]) <= GROWTH_KB, grown)
    check(first[1] + second[1] <= 8 and first[2] + second[2] <= 4, grown)
