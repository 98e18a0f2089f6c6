# SPDX-License-Identifier: GPL-3.0-or-later
"""What a busy machine adds to a time that is measured: threads that could run and have no processor."""

import os
import pathlib
import threading


def waited(task):
    """Seconds for which a thread of "PROCESS" or "PROCESS/task/THREAD" has been ready and waited for a processor since it began;
    None when it is gone, or the system does not tell."""
    try:
        return int(pathlib.Path(f"/proc/{task}/schedstat").read_text().split()[1]) / 1e9
    except (OSError, IndexError, ValueError):
        return None


class Lateness:
    """From now on: how long the first threads of some processes, and the thread that makes this, waited for a processor. Who asks
    a process and waits for its answer waits for all of that besides."""

    def __init__(self, *processes):
        self._tasks = [f"{os.getpid()}/task/{threading.get_native_id()}", *map(str, processes)]
        self._began = [waited(task) for task in self._tasks]
        self._last = list(self._began)

    def seconds(self):
        """Also for one that has ended meanwhile, up to the last time that it was asked for."""
        self._last = [before if (now := waited(task)) is None else now for task, before in zip(self._tasks, self._last)]
        return sum(last - began for last, began in zip(self._last, self._began) if began is not None)
