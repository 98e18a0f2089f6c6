# SPDX-License-Identifier: GPL-3.0-or-later
"""Brings hostile files to a running player, each followed by a good one, and looks at what they do to it."""

import os
import pathlib
import time

from harness.bus import AnswerWatch, Bus, address_of
from harness.dragging import Dragging
from harness.expect import SLACK, StoryFailure, check, wait
from harness.running import is_sanitized
from harness.signs import middle_of_screen

from .others import TYPES

ANSWER_SECONDS = 2.0
GOOD_SECONDS = 12  # from the act until the good file plays
HANDED_OVER_SECONDS = 10
MOST_MEGABYTES = 400
LOOK_SECONDS = 0.3
AGAIN_SECONDS = 1.0
PAUSE = 0.02
LIST_ENTRY_BYTES = 500
HAND_SETTINGS = {"INTERVAL": 0, "DELAYTIME": 0}


class Attack:
    """One running player under attack; as a context manager. goods: [(path, "#RRGGBB" in the screen's middle or None)], by turns.
    look: seconds for which one that opens is left alone."""

    def __init__(self, stage, goods, look=LOOK_SECONDS):
        self.stage, self.player = stage, stage.player
        self.goods = goods
        self.slowest, self.most = (0.0, ""), (0.0, "")
        self.look = look
        self.met = self.boxed = self.passed = 0  # inputs; those that a box told, those that were seen neither so nor open
        self.failures = []
        self._measured = not is_sanitized(stage.player.program) and not stage.watch.command

    def __enter__(self):
        self.bus, self.x = Bus(self.stage.session), Dragging(self.stage.session)
        self.watch = AnswerWatch(self.stage.session).__enter__()
        return self

    def __exit__(self, *_):
        self.watch.__exit__()
        self.x.close()
        self.bus.close()

    def told(self, what, ways):
        """What became of them, in a line. ways: {name: how many}."""
        return (f"{what}: {', '.join(f'{count} by {way}' for way, count in ways.items())}; {self.boxed} told by a box, {self.passed} by nothing; "
                f"slowest answer {self.slowest[0]:.2f} s ({self.slowest[1]}), most memory {self.most[0]:.0f} MB ({self.most[1]})")

    # The ways.

    def by_list(self, files):
        """A stored list of all of them is loaded by a start and played through."""
        return self._in_order([each for each in files if can_be_stored(each.path)], "in a list", self._load)

    def by_start(self, files):
        """All of them on the command line of a start that finds none running, which plays them."""
        return self._in_order([each for each in files if is_taken(each.path)], "at a start", lambda paths: self._start("--open", *paths))

    def _load(self, paths):
        write_list(self.player.folder / "FILE00.INI", paths)
        self._start()

    def _in_order(self, files, way, begin):
        goods = [self._good(number) for number in range(len(files))]
        paths = [path for each, good in zip(files, goods) for path in (each.path, good[0])]
        begin(paths)
        order = {}
        for number, path in enumerate(paths):
            order.setdefault(address_of(path), []).append(number)
        for number, each in enumerate(files):
            if number == 0 and way == "at a start":
                bring = lambda: None  # noqa: E731: it plays already
            else:
                bring = self._play if number == 0 or self.bus.state()[0] == "Stopped" else self._next
            self._meet(f"{each.name!r} of {each.group} {way}", each.path, goods[number], number, bring, order)
        self._end()
        return len(files)

    def by_hand_over(self, files):
        """Each on the command line of a start that finds the player running."""
        return self._each(files, "handed over", self._hand_over)

    def by_drop(self, files):
        """Each dropped by another program."""
        return self._each(files, "dropped", self._drop)

    def _each(self, files, way, bring):
        self._start()
        for number, each in enumerate(files):
            good = self._good(number)
            self._meet(f"{each.name!r} of {each.group} {way}", each.path, good, number, lambda path=each.path, good=good: bring([path, good[0]]))
        self._end()
        return len(files)

    def _good(self, number):
        """Never the same one twice in a row: one that plays was begun behind the file before it."""
        return self.goods[number % len(self.goods)]

    def _start(self, *arguments):
        self.player.start(*arguments)
        wait("the player on the bus", lambda: self.bus.state()[0], 10)

    def _end(self):
        """Each story's end looks at the exit codes."""
        if self._running():
            self._ignore_boxes()
            self.player.power_off()

    def _running(self):
        return self.player.running()

    def _play(self):
        self._key("z")

    def _next(self):
        self._key("period")

    def _key(self, *names):
        self.x.key(self.player.window.id, *names)

    def _hand_over(self, paths):
        handing = self.player.start_another("--open", *paths)
        wait("it is handed over", lambda: handing.poll() is not None, HANDED_OVER_SECONDS)

    def _drop(self, paths):
        self._stop()
        text = "".join(f"{address_of(path)}\r\n" for path in paths).encode()
        check(self.x.drop(self.player.window, self.player.button(4), {"text/uri-list": text}), "the panel takes a drop")
        self._key("z")

    def _stop(self):
        """Pressed again where another window took the key."""

        def stopped():
            if self.bus.state()[0] == "Stopped":
                return True
            self._ignore_boxes()
            self._key("c")
            return False

        wait("stop is answered", stopped, ANSWER_SECONDS, 0.1)

    # What happens then.

    def _meet(self, what, bad, good, number, bring, order=None):
        """Brings it; goes on from there to the good file, as a person does, and measures."""
        self.met += 1
        if self._measured:
            pathlib.Path(f"/proc/{self.player.process.pid}/clear_refs").write_text("5")  # the peak begins anew
        self.watch.take()
        try:
            bring()
            self._go_on(address_of(bad), good, number, order)
            seconds = self.watch.slowest()
            self.slowest = max(self.slowest, (seconds, what))
            check(seconds < ANSWER_SECONDS * SLACK, f"an answer took {seconds:.1f} s")
            if self._measured:
                peak = self._peak()
                self.most = max(self.most, (peak, what))
                check(peak < MOST_MEGABYTES, f"{peak:.0f} MB")
        except (StoryFailure, OSError) as failure:
            gone = "" if self._running() else f" (it ended with {self.player.process.poll()})"
            self.failures.append(f"{what}: {failure}{gone}")
            if self._running():
                self._ignore_boxes()
            else:
                self.player.window = None
                self._start()

    def _go_on(self, bad, good, number, order):
        """Leaves the bad one alone for a while once it is open, ignores what boxes say of it, and steps to the good one."""
        address, colour = address_of(good[0]), good[1]
        begin = acted = time.monotonic()
        opened = touched = None
        while True:
            now = time.monotonic()
            check(self._running(), f"the program ended with code {self.player.process.poll()}")
            check(now - begin < (GOOD_SECONDS + self.look) * SLACK, f"the good file does not play: {self.bus.state()}, boxes {self._boxes()}")
            if self._ignore_boxes():
                self.boxed += opened != -1
                opened = opened or -1
                continue
            status, at, position = self.bus.state()
            if at == address and status == "Playing" and (colour or position > 0):
                self.passed += opened is None
                return self._see_it_play(colour, address)
            late = now - acted > AGAIN_SECONDS * SLACK
            if at == bad and status == "Playing" and opened is None:
                opened = now
            if at == bad and status == "Playing" and touched is None and now - opened > self.look * SLACK:
                touched = acted = now
                self._touch(number)
            elif late and (at != bad or touched or status == "Stopped" or opened == -1):
                acted = now
                self._step(status, self._way(at, bad, address, number, order), opened)
            time.sleep(PAUSE)

    def _way(self, at, bad, good, number, order):
        """How far the good file is from what is open; None: not in this list."""
        if at in (bad, good):
            return at == bad
        if order is None or at not in order:
            return None
        return 2 * number + 1 - min(order[at], key=lambda place: abs(2 * number + 1 - place))

    def _step(self, status, way, opened):
        """Where a key was lost, or the bad file went by itself while the key came."""
        if way is None:
            self._key(*("c", "z") if status == "Playing" else "z")
            return
        if way == 1 and not opened and status != "Playing":
            way = 0  # it has not been begun yet
        self._key("c", *["period" if way > 0 else "comma"] * abs(way), "z")  # stopped, each step is one file

    def _touch(self, number):
        """Something that a person does with an open file, and next."""
        way = number % 4
        if way == 1:
            self._key("x", "z")
        elif way == 2:
            self.stage.desk.click(*self.player.slider(0.6))
        elif way == 3:
            self._key("c")
            wait("stop is answered", lambda: self.bus.state()[0] == "Stopped" or self._boxes(), ANSWER_SECONDS)
            self._key("period", "z")
            return
        self._next()

    def watch_a_while(self):
        """Lets it go on for a moment; boxes are ignored."""
        end = time.monotonic() + self.look * SLACK
        while time.monotonic() < end:
            self._ignore_boxes()
            time.sleep(PAUSE)

    def _see_it_play(self, colour, address):
        if colour:
            self.stage.desk.wait_for_colour(*middle_of_screen(self.stage), colour)
            return
        seen = []

        def runs():
            status, at, position = self.bus.state()
            seen.append(position)
            return status == "Playing" and at == address and position > seen[0]

        wait("its time runs", runs, 4)

    def _boxes(self):
        return [window for window, title in self.x.windows(self.player.process.pid) if title == "Corvane" and window != self.player.window.id]

    def _ignore_boxes(self):
        boxes = self._boxes()
        for box in boxes:
            wait("the box goes", lambda: self._ignored(box), ANSWER_SECONDS * 2)
        return bool(boxes)

    def _ignored(self, box):
        """Pressed again where the box did not have the keyboard yet."""
        self.x.key(box, "Tab", "Tab", "space")
        end = time.monotonic() + ANSWER_SECONDS * SLACK / 2
        while box in self._boxes():
            if time.monotonic() > end:
                return False
            time.sleep(PAUSE)
        return True

    def _peak(self):
        status = pathlib.Path(f"/proc/{self.player.process.pid}/status").read_text()
        return int(next(line.split()[1] for line in status.splitlines() if line.startswith("VmHWM"))) / 1024


def can_be_stored(path):
    """A list holds a line a file."""
    name = os.fsencode(path)
    return not any(mark in name for mark in b"\r\n\0") and len(name) + 20 < LIST_ENTRY_BYTES and name == name.strip()


def is_taken(path):
    """By a drop or a start: a file of a kind that is played; its type is what follows the first dot."""
    return path.is_file() and path.name.partition(".")[2].lower() in TYPES


def write_list(file, paths):
    lines = [b"[FILELIST]", b"LISTNAME=hostile"]
    for index, path in enumerate(paths):
        title = os.fsencode(path.name).replace(b"|", b"_")
        if len(title) + len(os.fsencode(path)) > LIST_ENTRY_BYTES:
            title = title[-12:]
        lines.append(b"LIST%03d=%b|%b" % (index, title, os.fsencode(path)))
    file.write_bytes(b"\r\n".join(lines) + b"\r\n")
