#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Sorts the reports of ThreadSanitizer: races.py FILE...

A suppression of the sanitizer hides every report with a frame of a library anywhere in its stacks, and below everything
of ours there is a frame of Qt. So nothing is suppressed while the program runs; here a report is a library's own only
when both of its accesses (all of its locks) were made by code of the libraries in tests/races.txt themselves, not by
code of ours. Their synchronising by futexes of their own is not seen by the sanitizer, as they are not built for it.
The same goes for what a library's own thread, on which nothing of ours runs, hands over to us. Where the sanitizer has
lost one of the stacks, the access counts as that of whoever allocated or frees the memory.

Prints what is left, one report in short for each place, then "N reports: N ours, N of libraries (how many of which)".
Ends with 1 when one is ours or cannot be told.
"""

import collections
import pathlib
import re
import sys
from typing import NamedTuple

KNOWN = pathlib.Path(__file__).with_name("races.txt")
REPORT = re.compile(r"^WARNING: ThreadSanitizer: (.*?) \(pid=\d+\)\n(.*?)^SUMMARY:.*?$", re.M | re.S)
FRAME = re.compile(r"^    #\d+ (.*) \((\S+?)\+0x[0-9a-f]+\)")
THREAD = re.compile(r"^  Thread (T\d+) '([^']*)'", re.M)
SANITIZER = ("libtsan.so", "libc.so")  # made what it did for who called it
LIBRARY = re.compile(r"^(lib|ld-)[\w+.-]+\.so")
FREES = re.compile(r"free|operator delete")
STANDARD_HEADERS = re.compile(r" /usr/include/(c\+\+|x86_64-linux-gnu/c\+\+)/")
QT_HEADERS = re.compile(r" /usr/include/\S*/qt6/")
QT = "libQt6Core"  # what its headers do inside of our code is its own


class Access(NamedTuple):
    head: str  # "Write of size 8 ... by thread T1"
    frames: list  # (what, module), innermost first


def accesses(kind, body):
    """The stacks that say who did it: two accesses of a race; every lock of an order; else the first stack."""
    found = []
    for part in body.split("\n\n"):
        lines = part.splitlines()
        heads = [line for line in lines if line.startswith("  ") and not line.startswith("    ")]
        frames = [match.groups() for match in map(FRAME.match, lines) if match]
        found.append(Access(heads[0].strip() if heads else kind, frames))
    if kind.startswith("data race") or kind.startswith("heap-use"):
        return [a for a in found if re.search(r"(read|write) of size", a.head, re.I)]
    if kind.startswith("lock-order"):
        return [a for a in found if re.search(r"acquired here|previously acquired", a.head)]
    return found[:1]


def owner(body):
    """Who has the memory that a report is about: who allocated or frees it; "" when that is ours or not told."""
    part = next((part for part in body.split("\n\n") if part.lstrip().startswith("Location is heap block")), "")
    allocated = Access("", [match.groups() for match in map(FRAME.match, part.splitlines()) if match])
    freed = [access for access in accesses("data race", body) if access.frames and FREES.match(access.frames[0][0])]
    return next((who for who in map(maker, [allocated, *freed]) if who is not None), "")


def maker(access):
    """The library that made the access, "" for code of ours, None when it cannot be told."""
    frames = [f for f in access.frames if not f[1].startswith(SANITIZER)]
    if frames and access.frames[0][0].startswith("operator new") and QT_HEADERS.search(frames[0][0]):
        return QT  # made for a call that it queues
    while frames and STANDARD_HEADERS.search(frames[0][0]):
        frames = frames[1:]
    if not frames:
        return None
    what, module = frames[0]
    if LIBRARY.match(module):
        return module
    return QT if QT_HEADERS.search(what) and access.head.lower().startswith(("atomic", "previous atomic")) else ""


class Known(NamedTuple):
    libraries: list
    threads: list
    lenders: list  # (function that calls ours, library whose memory it shows)


def read_known():
    words = [line.split() for line in KNOWN.read_text(encoding="utf-8").splitlines() if line and not line.startswith("#")]
    named = {kind: [tuple(rest) for word, *rest in words if word == kind] for kind in ("library", "thread", "lends")}
    return Known([name for name, in named["library"]], [name for name, in named["thread"]], named["lends"])


def handed_over(kind, body, known):
    """The known thread of a library that made one of the accesses by itself."""
    names = dict(THREAD.findall(body))
    for access in accesses(kind, body):
        thread = re.search(r"by thread (T\d+)", access.head)
        name = names.get(thread.group(1)) if thread else None
        if name in known.threads and access.frames and all(LIBRARY.match(module) for _, module in access.frames):
            return name
    return None


def lent(kind, body, known):
    """The library whose memory ours looked at, called by it under its lock."""
    both = accesses(kind, body)
    for ours, theirs in (both, reversed(both)) if len(both) == 2 else ():
        for function, library in known.lenders:
            called = any(what.startswith(function) for what, _ in ours.frames)
            if called and re.search(r"\bread\b", ours.head, re.I) and (maker(theirs) or "").startswith(library):
                return library
    return None


def library_of(kind, body, known):
    """Which known libraries it happened between; None when code of ours or an unknown one took part."""
    makers = [maker(access) if access.frames else owner(body) for access in accesses(kind, body)]
    names = [next((name for name in known.libraries if each and each.startswith(name)), None) for each in makers]
    if names and all(names):
        return " and ".join(sorted(set(names)))
    return handed_over(kind, body, known) or lent(kind, body, known) if kind.startswith("data race") else None


def short(kind, body):
    lines = [kind]
    for access in accesses(kind, body):
        lines += [f"  {access.head}", *(f"    {what} ({module})" for what, module in access.frames[:6])]
    return "\n".join(lines)


def place_of(kind, body):
    return kind, tuple(tuple(what for what, _ in access.frames[:3]) for access in accesses(kind, body))


def sort(texts):
    """Reports of ours, by their place; how many of each pair of libraries."""
    known, ours, theirs = read_known(), {}, collections.Counter()
    for text in texts:
        for kind, body in REPORT.findall(text):
            library = library_of(kind, body, known)
            if library is None:
                ours.setdefault(place_of(kind, body), []).append(short(kind, body))
            else:
                theirs[library] += 1
    return ours, theirs


def main():
    files = [pathlib.Path(name) for name in sys.argv[1:]]
    ours, theirs = sort(file.read_text(errors="replace") for file in files)
    for told in ours.values():
        print(f"{len(told)} times: {told[0]}\n")
    count, hidden = sum(map(len, ours.values())), sum(theirs.values())
    listed = ", ".join(f"{number} {name}" for name, number in theirs.most_common())
    print(f"{count + hidden} reports: {count} ours, {hidden} of libraries" + (f" ({listed})" if listed else ""))
    return 1 if ours else 0


if __name__ == "__main__":
    sys.exit(main())
