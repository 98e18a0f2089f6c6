# SPDX-License-Identifier: GPL-3.0-or-later
"""The program under valgrind's memcheck: reads and writes where nothing of its own lies, uses of what was never set, frees
of what is not there, in it and in the libraries below it."""

import pathlib
import re
import xml.etree.ElementTree as ElementTree

from . import PROJECT
from .running import NoWatch

SUPPRESSIONS = PROJECT / "tests" / "memcheck.supp"
FRAMES = 40  # of a stack that are kept; what is suppressed names its first ones
SHOWN_FRAMES = 12
ERROR = re.compile(rb"<error>.*?</error>", re.S)  # a process that was killed leaves no whole document


class Memcheck(NoWatch):
    confines = False  # the checker knows the calls of neither filter

    def __init__(self, folder_of_reports):
        """Reports are copied there, one file a process, so that they outlive the story."""
        self._kept = pathlib.Path(folder_of_reports)
        self._kept.mkdir(parents=True, exist_ok=True)

    # What is lost at the end is not looked at. Threads take turns: without that one that waits may starve the others.
    command = ("valgrind", "--quiet", "--leak-check=no", "--xml=yes", "--xml-file=memcheck.%p.xml", f"--num-callers={FRAMES}",
               f"--suppressions={SUPPRESSIONS}", "--child-silent-after-fork=yes", "--fair-sched=try", "--error-limit=no")

    def environment(self, wanted, folder):
        # Regular expressions as machine code that is made while it runs look at what is set, but not to the checker.
        return {"QT_ENABLE_REGEXP_JIT": "0"}

    def found(self, folder):
        told = []
        for file in sorted(folder.glob("memcheck.*.xml")):
            errors = [error for error in ERROR.findall(file.read_bytes()) if b"<kind>Leak_" not in error]
            if errors:
                (self._kept / f"{folder.parent.name}-{file.name}").write_bytes(b"\n".join(errors))
            told += [as_text(ElementTree.fromstring(error)) for error in errors]
        if not told:
            return ""
        return f"the memory checker found {len(told)} places:\n" + "\n".join(told)


def as_text(error):
    """What it is and where, the innermost frame first."""
    what = error.findtext("what") or error.findtext("xwhat/text") or "?"
    lines = [f"{error.findtext('kind')}: {what}"]
    for number, stack in enumerate(error.findall("stack")):
        if number:
            notes = error.findall("auxwhat") + error.findall("xauxwhat/text")
            lines.append(f"   {notes[number - 1].text if number <= len(notes) else 'and'}")
        for frame in stack.findall("frame")[:SHOWN_FRAMES]:
            place = frame.findtext("fn") or pathlib.Path(frame.findtext("obj") or "?").name + " " + (frame.findtext("ip") or "")
            lines.append(f"      {place}")
    return "\n".join(lines)
