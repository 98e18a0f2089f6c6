#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plays a mixed list of every kind round and round for real minutes: long_run.py [--minutes N] [PROGRAM].

Prints a line a minute (own memory in MB, handles, threads), then "PASS name (figures)" or "FAIL name: why", and ends with
1 when it failed. The first minutes warm up; from then on the least memory of a minute, handles and threads stay flat.
"""

import argparse
import pathlib
import signal
import statistics
import sys
import time
from typing import NamedTuple

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

from harness import PROJECT  # noqa: E402
from harness.expect import StoryFailure, check, wait  # noqa: E402
from harness.player import NUMBER_RECORD, REPEAT  # noqa: E402
from harness.running import NoWatch  # noqa: E402
from harness.story import Stage, Theatre  # noqa: E402
import provenance  # noqa: E402
from session import SessionError  # noqa: E402
from stories.endurance import handles, own_kb, threads  # noqa: E402
from stories.mixed import mixed_list  # noqa: E402

WARM_UP_MINUTES = 2
COMPARED_MINUTES = 3  # at either end, by their median
GROWTH_KB, GROWTH_HANDLES, GROWTH_THREADS = 4 * 1024, 8, 4  # as for the two hundred changes of file
LOOK_SECONDS = 0.25
LEAST_FILES = 10  # begun in a minute: it goes round and round
PICTURE_SECONDS = 1


class Minute(NamedTuple):
    """What was held in one minute: the least memory (between two files), the most handles and threads; files begun."""

    own_kb: int
    handles: int
    threads: int
    files: int = 0


def watch_a_minute(stage):
    process, looks, numbers = stage.player.process.pid, [], []
    end = time.monotonic() + 60

    def over():
        check(stage.player.running(), f"the program ended with code {stage.player.process.poll()}")
        looks.append(Minute(own_kb(process), handles(process), threads(process)))
        number = stage.player.look(NUMBER_RECORD).tobytes()
        if numbers[-1:] != [number]:
            numbers.append(number)
        return time.monotonic() >= end

    wait("the minute is over", over, 120, LOOK_SECONDS)
    return Minute(min(look.own_kb for look in looks), max(look.handles for look in looks), max(look.threads for look in looks),
                  len(numbers))


def middle(minutes):
    return [statistics.median(values) for values in zip(*minutes)]


def play(stage, count):
    """Returns the figures in words; raises StoryFailure when something grew."""
    entries, environment = mixed_list(stage)
    stage.player.settings(AUTOPLAY="ON", INTERVAL=PICTURE_SECONDS, DELAYTIME=30)
    stage.player.save_list([entry.path for entry in entries])
    stage.player.start(**environment)
    stage.player.press(REPEAT)
    minutes = []
    for number in range(1, count + 1):
        minutes.append(watch_a_minute(stage))
        told = minutes[-1]
        print(f"     minute {number}: {told.own_kb / 1024:.1f} MB, {told.handles} handles, {told.threads} threads, {told.files} files", flush=True)
        check(told.files >= LEAST_FILES, "it no longer plays on")
        check(not stage.player.boxes(), "a box came up")
    stage.sound.wait_for(entries[0].tones[0], 60)  # it still plays
    first = middle(minutes[WARM_UP_MINUTES:WARM_UP_MINUTES + COMPARED_MINUTES])
    last = middle(minutes[-COMPARED_MINUTES:])
    grown = [after - before for before, after in zip(first, last)]
    figures = (f"{first[0] / 1024:.1f} to {last[0] / 1024:.1f} MB, {first[1]:.0f} to {last[1]:.0f} handles, "
               f"{first[2]:.0f} to {last[2]:.0f} threads")
    flat = grown[0] <= GROWTH_KB and grown[1] <= GROWTH_HANDLES and grown[2] <= GROWTH_THREADS
    check(flat, f"something grows: {figures}")
    check(stage.player.power_off() == 0, "it ends as it should")
    return figures


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--minutes", type=int, default=30)
    parser.add_argument("program", nargs="?", default=PROJECT / "build" / "release" / "corvane", type=pathlib.Path)
    options = parser.parse_args()
    if options.minutes < WARM_UP_MINUTES + 2 * COMPARED_MINUTES:
        parser.error(f"less than {WARM_UP_MINUTES + 2 * COMPARED_MINUTES} minutes say nothing")
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    name = f"long run: {options.minutes} minutes of a mixed list leave memory, handles and threads flat"
    try:
        with Theatre(options.program, PROJECT / "build" / "e2e", watch=NoWatch()) as theatre:
            stage = Stage(theatre, 1)
            try:
                print(f"PASS {name} ({play(stage, options.minutes)}; {provenance.told()})")
            finally:
                stage.close()
    except (StoryFailure, SessionError) as error:
        print(f"FAIL {name}: {error}")
        return 1
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
