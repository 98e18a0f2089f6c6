# SPDX-License-Identifier: GPL-3.0-or-later
"""The program's processes that a story starts: what watches their memory, and how each of them ended."""

import functools
import os
import pathlib
import shutil
import signal
import subprocess

from session import poll

from .expect import SLACK

END_SECONDS = 8  # from the ask to end until a process has ended
CORE_SECONDS = 20  # until one that was told to leave a core has done so
MALLOC_CHECKER = "libc_malloc_debug.so.0"


class NoWatch:
    """Memory is not watched: what is measured is what a user has."""

    command = ()
    confines = True  # what the kernel is told to refuse, it refuses

    def environment(self, wanted, folder):
        """What is added to the variables that a story wants for the program. folder: where a watch may leave its reports."""
        return {}

    def found(self, folder):
        """What was found wrong in all processes that had this folder; empty when nothing was."""
        return ""


class HeapWatch(NoWatch):
    """glibc's own checks: its allocator looks at what surrounds a block at each call and ends the process when it was
    written over or freed twice; what is given out and taken back is filled, so that a use of it shows."""

    def __init__(self, program):
        self._possible = not is_sanitized(program)  # a sanitizer has an allocator of its own

    def environment(self, wanted, folder):
        if not self._possible:
            return {}
        loaded = " ".join(filter(None, (wanted.get("LD_PRELOAD"), MALLOC_CHECKER)))
        return {"MALLOC_PERTURB_": "165", "GLIBC_TUNABLES": "glibc.malloc.check=3", "LD_PRELOAD": loaded}

    def found(self, folder):
        """What a sanitized program said is kept behind the beginning of a name that CORVANE_REPORTS tells, a file a process:
        confined as it is, it can write no report there itself."""
        kept = os.environ.get("CORVANE_REPORTS")
        if kept and not self._possible:
            for log in folder.glob("program*.log"):
                shutil.copy(log, ".".join((kept, *folder.parts[-3:], log.stem)))  # the session's name tells runs apart
        return ""


@functools.cache
def is_sanitized(program):
    data = pathlib.Path(program).read_bytes()
    return b"__asan_init" in data or b"__tsan_init" in data


class Run:
    """One process of the program; its messages go to a file."""

    def __init__(self, process, log):
        self.process = process
        self.log = log
        self.may_end_with = {0}  # codes
        self.may_end_with_when_asked = set()  # besides
        self.killed = False

    def kill(self):
        """By the story itself: how it ends says nothing."""
        self.killed = True
        self.signal(signal.SIGKILL)
        self.process.wait()

    def signal(self, sign):
        """To it and to what it started."""
        try:
            os.killpg(self.process.pid, sign)
        except ProcessLookupError:
            pass

    def end(self):
        """Asks it to end if it still runs, as the system does at a logout; returns what was wrong with its end."""
        wrong, expected = "", self.may_end_with
        if self.process.poll() is None:
            expected = expected | self.may_end_with_when_asked
            self.signal(signal.SIGTERM)
            self.signal(signal.SIGCONT)
            if not poll(lambda: self.process.poll() is not None, END_SECONDS * SLACK):
                wrong = f"a process did not end within {END_SECONDS * SLACK:g} s of being asked to"
                self.signal(signal.SIGQUIT)  # leaves a core that tells where it hung
                poll(lambda: self.process.poll() is not None, CORE_SECONDS)
        code = self.process.poll()
        self.signal(signal.SIGKILL)
        self.process.wait()
        self.log.close()
        if self.killed or wrong:
            return wrong
        return "" if code in expected else f"a process ended with {told_code(code)}"


def told_code(code):
    return f"code {code}" if code >= 0 else f"signal {-code} ({signal.Signals(-code).name})"


class Runs:
    """All processes of the program in one story; their folder is where they work and where a core lies."""

    def __init__(self, session, watch, folder):
        self._session = session
        self._watch = watch
        self.folder = folder
        self.folder.mkdir(parents=True, exist_ok=True)
        self._runs = []

    def start(self, command, environment, under=(), cwd=None):
        """under: a command that becomes the program. cwd: where it works, if not in the folder."""
        log = open(self.folder / f"program{len(self._runs)}.log", "wb")
        watched = self._watch.environment(environment, self.folder)
        process = self._session.popen([*map(str, (*under, *self._watch.command, *command))], stdin=subprocess.DEVNULL,
                                      stdout=log, stderr=log, cwd=cwd or self.folder, env={**environment, **watched})
        self._runs.append(Run(process, log))
        return self._runs[-1]

    def end(self):
        """Ends what still runs; returns what was wrong, with any of them, from the first on."""
        wrong = [run.end() for run in self._runs]
        if any(self.folder.glob("core*")):
            wrong.append("a core was left")
        return [text for text in (*wrong, self._watch.found(self.folder)) if text]

    def log(self):
        return "".join(pathlib.Path(run.log.name).read_text(errors="replace") for run in self._runs)

    def keep_proof(self, folder, program):
        """Copies messages and reports, and what a crash left with the place where it happened."""
        for file in self.folder.iterdir():
            if file.name.startswith("core"):
                # Most of it are holes, for the stacks of threads.
                subprocess.run(["cp", "--sparse=always", file, folder], check=True)
                file.unlink()
                write_backtrace(program, folder / file.name)
            elif file.is_file():
                shutil.copy(file, folder)


def write_backtrace(program, core):
    if shutil.which("gdb"):
        told = subprocess.run(["gdb", "-batch", "-ex", "thread apply all bt 40", str(program), str(core)], check=False,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, errors="replace", timeout=120)
        core.with_name(f"{core.name}.txt").write_text(told.stdout + told.stderr)
