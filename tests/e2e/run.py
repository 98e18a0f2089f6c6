#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plays the end-to-end stories against a built program: run.py [--workers N] [--windows] [--file NAME] PROGRAM [PATTERN...].

Prints one line a story, "PASS name (seconds)", "SKIP name: why" where this machine cannot play it, or "FAIL name: why", and
ends with 1 when one failed. Each is played once: what fails has failed, and so has a story in which a process of the
program ended badly or not at all. --file: of that file's stories. CORVANE_STORIES names patterns as well. A failed story leaves its screen, its sound, the program's messages and what a crash
left (the core, and gdb's account of it where there is one) in build/e2e/. --windows: the program is a Windows one; the
stories of windows_stories/ are played, under Wine. --session KIND: those of session_stories/ or sound_stories/, in a session of that kind
(harness/sessions.py). --memory: the program runs under valgrind, as tests/memcheck has it.
"""

import argparse
import functools
import importlib
import multiprocessing
import os
import pathlib
import queue
import resource
import signal
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

from harness import PROJECT  # noqa: E402
from harness.expect import StorySkipped  # noqa: E402
from harness.story import STORIES, Theatre  # noqa: E402
from session import SessionError  # noqa: E402

PROOFS = PROJECT / "build" / "e2e"
CORE_BYTES = 1 << 30
WORKERS = min((os.cpu_count() or 1) + 1, 4)  # a story waits most of its time: for sounds that end, for clocks


def load_stories(folder):
    for file in sorted((HERE / folder).glob("*.py")):
        importlib.import_module(f"{folder}.{file.stem}")


def outcome(theatre, told):
    """PASS, SKIP or FAIL, and why."""
    try:
        why = theatre.play(told)
    except StorySkipped as skipped:
        return "SKIP", str(skipped)
    return ("FAIL", why) if why else ("PASS", "")


def work(theatre_kind, program, names, results):
    """One worker: a private desktop of its own, on which it plays what is left."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    known = {told.name: told for told in STORIES}
    try:
        with theatre_kind(program, PROOFS) as theatre:
            while True:
                name = names.get()
                if name is None:
                    break
                began = time.monotonic()
                told = outcome(theatre, known[name])
                results.put((name, time.monotonic() - began, *told))
    except Exception as error:  # noqa: BLE001: what ends a worker is told as a failure
        results.put(("private desktop", 0.0, "FAIL", str(error) if isinstance(error, SessionError) else f"{type(error).__name__}: {error}"))
    finally:
        results.put(None)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--workers", type=int, default=WORKERS)
    parser.add_argument("--list", action="store_true", help="only names the stories")
    parser.add_argument("--file", default="", help="only stories of this file of stories/")
    parser.add_argument("--windows", action="store_true")
    parser.add_argument("--session", metavar="KIND")
    parser.add_argument("--memory", action="store_true")
    parser.add_argument("--without", action="append", default=[], metavar="BEGIN", help="leaves out the stories whose names begin so")
    parser.add_argument("program", nargs="?", default=PROJECT / "build" / "release" / "corvane", type=pathlib.Path)
    parser.add_argument("patterns", nargs="*")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    resource.setrlimit(resource.RLIMIT_CORE, (CORE_BYTES, resource.getrlimit(resource.RLIMIT_CORE)[1]))
    theatre_kind = Theatre
    if options.memory:
        from harness.memcheck import Memcheck

        theatre_kind = functools.partial(Theatre, watch=Memcheck(PROOFS.with_name("memory")))
    if options.windows:
        from harness.wine import WineTheatre as theatre_kind

        options.workers = 1  # they share a prefix
    if options.session:
        from harness.sessions import KINDS, SessionTheatre

        theatre_kind = functools.partial(SessionTheatre, KINDS[options.session])
    folder = "windows_stories" if options.windows else KINDS[options.session].stories if options.session else "stories"
    load_stories(folder)
    patterns = options.patterns or os.environ.get("CORVANE_STORIES", "").splitlines()
    idle = [begin for begin in options.without if not any(told.name.startswith(begin) for told in STORIES)]
    if idle:
        print(f"FAIL no story's name begins with one of {idle}")
        return 1
    of_file = [told for told in STORIES if not options.file or told.play.__module__ == f"{folder}.{options.file}"]
    chosen = [told.name for told in of_file if (not patterns or any(each in told.name for each in patterns))
              and not told.name.startswith(tuple(options.without))]
    if options.list:
        print("\n".join(chosen))
        return 0
    if not chosen and (options.patterns or not of_file):
        print(f"FAIL no story's name holds one of {options.patterns}")
        return 1

    names, results = multiprocessing.Queue(), multiprocessing.Queue()
    for name in chosen:
        names.put(name)
    workers = [multiprocessing.Process(target=work, args=(theatre_kind, options.program, names, results))
               for _ in range(min(options.workers, len(chosen)))]
    for _ in workers:
        names.put(None)
    left, failed, told = len(workers), 0, 0
    try:
        for worker in workers:
            worker.start()
        while left:
            result = next_result(results, workers)
            if result is None:
                left -= 1
                continue
            name, seconds, word, why = result
            told += 1
            failed += word == "FAIL"
            print(f"{word} {name}: {why}" if why else f"{word} {name} ({seconds:.1f} s)", flush=True)
    finally:
        for worker in workers:
            if left and worker.is_alive():
                worker.terminate()
            worker.join(10)
    if told < len(chosen):
        codes = ", ".join(str(worker.exitcode) for worker in workers)
        print(f"FAIL stories that were not told: {len(chosen) - told}; the workers ended with {codes}")
        failed += 1
    return 1 if failed else 0


def next_result(results, workers):
    """What a worker says next; None also for one that died without a word."""
    while True:
        try:
            return results.get(timeout=1)
        except queue.Empty:
            if not any(worker.is_alive() for worker in workers):
                return None


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
