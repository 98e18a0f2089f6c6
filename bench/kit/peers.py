# SPDX-License-Identifier: GPL-3.0-or-later
"""Long lists, beside other players of sounds on the same files, by turns: how long it takes from a start to the first sound, to find
and play one of thousands, and what the list takes of memory. All with their windows, without settings of their own."""

import contextlib
import os
import pathlib
import re
import shutil
import socket
import time

from harness.expect import StoryFailure, wait

from . import WORKPLACE
from .cost import memory
from .senses import LEFT, RIGHT, Ear
from .stage import wait_quietly
from .table import Figure, milliseconds, ratio

OPENED, ENTRIES, WANTED = 1000, 9999, 5000
PRESSES, PRESS_SECONDS = 40, 0.3
SETTLED_MB, SETTLE_LOOKS, LONGEST_SETTLE = 0.3, 4, 90  # memory stands still when it changes less in so many seconds


def names(stage):
    """The entries' files: links to one MP3 that sounds on the left, the wanted one to one that sounds on the right."""
    folder = stage.folder / "long"
    if not folder.exists():
        folder.mkdir()
        for number in range(1, ENTRIES + 1):
            side = "right" if number == WANTED else "left"
            os.link((WORKPLACE / "media" / f"{side}_long.mp3").resolve(), folder / f"song {number:04}.mp3")
        lines = "".join(f"song {number:04}.mp3\n" for number in range(1, ENTRIES + 1))
        (folder / "all.m3u").write_text(lines)
    return folder


class Ours:
    name = "ours"
    how = "Ctrl+F, the name, Enter"

    def __init__(self, stage):
        self.stage = stage

    @contextlib.contextmanager
    def open(self, *paths):
        player = self.stage.new_player()
        try:
            player.start("--open", *paths, panel=False)
            self.player = player
            yield player.process.pid
        finally:
            player.stop()
            shutil.rmtree(player.folder, ignore_errors=True)

    def play(self, wanted):
        self.stage.desk.focus(self.player.wait_for_panel())
        at = time.monotonic()
        self.stage.desk.key("ctrl+f")
        focus_on(self.stage, lambda: self.player.windows("Find"))
        find(self.stage, wanted)
        return at


class Other:
    """A program of the system's packages, with a home of its own that it finds empty."""

    command = ()

    def __init__(self, stage):
        self.stage = stage
        self.started = 0

    @contextlib.contextmanager
    def open(self, *paths):
        self.started += 1
        home = self.home = self.stage.folder / f"{self.name}{self.started}"
        home.mkdir()
        with self.stage.process([*self.command_in(home), *paths], env={"HOME": str(home), "XDG_CONFIG_HOME": str(home)}) as process:
            self.process = process
            yield process.pid
        shutil.rmtree(home, ignore_errors=True)

    def command_in(self, home):  # noqa: ARG002: another one needs it
        return self.command

    def windows(self, name=None):
        return self.stage.desk.windows(pid=self.process.pid, name=name)


class Audacious(Other):
    name = "audacious"
    command = ("audacious", "-Q")
    how = "Ctrl+F, the name, Enter"

    def play(self, wanted):
        focus_on(self.stage, lambda: self.windows("Audacious$"))
        at = time.monotonic()
        self.stage.desk.key("ctrl+f")
        find(self.stage, wanted)
        return at


class Qmmp(Other):
    """Takes a list in some names at a time, about twelve a second: it is not asked for one that it does not have."""

    name = "qmmp"
    command = ("qmmp",)
    how = "J, the name, Enter"

    def entries(self):
        return self.stage.session.run(["env", f"HOME={self.home}", f"XDG_CONFIG_HOME={self.home}", "qmmp", "--pl-dump", "1"]).count("song ")

    def play(self, wanted):
        if self.entries() < WANTED:
            return None
        focus_on(self.stage, lambda: self.windows("^Playlist"))
        at = time.monotonic()
        self.stage.desk.key("j")
        focus_on(self.stage, lambda: self.windows("^Jump"))
        find(self.stage, wanted)
        return at


class Vlc(Other):
    """Its window has no key that leads to its search. It refuses to be root, so that root starts a copy of its small first part that
    does not ask."""

    name = "vlc"
    how = "told the number by its socket"

    def command_in(self, home):
        program = pathlib.Path("/usr/bin/vlc")
        if os.geteuid() == 0:
            copy = home / "vlc"
            copy.write_bytes(program.read_bytes().replace(b"geteuid", b"getppid"))
            copy.chmod(0o755)
            program = copy
        self.socket = home / "rc"
        return [program, "--no-qt-privacy-ask", "--extraintf=oldrc", f"--rc-unix={self.socket}", "--rc-fake-tty"]

    def play(self, wanted):  # noqa: ARG002: it is told the number
        with socket.socket(socket.AF_UNIX) as remote:
            wait("it listens", lambda: remote.connect_ex(str(self.socket)) == 0, 10)
            at = time.monotonic()
            remote.sendall(f"goto {WANTED}\n".encode())
            wait_quietly(0.5)  # it stops listening to one that goes at once
        return at


def focus_on(stage, windows):
    found = wait("its window", windows, 20)
    stage.desk.focus(found[-1])
    wait("it has the keyboard", lambda: stage.desk.focused() == found[-1].id)


def find(stage, wanted):
    stage.desk.type(wanted)
    stage.desk.key("Return")


def heard_wanted(stage, ear, since):
    """When the wanted one was heard. Enter is pressed again where the list was not narrowed yet when it came."""
    for _ in range(PRESSES):
        try:
            return ear.wait_for_sound(since, RIGHT, PRESS_SECONDS)
        except StoryFailure:
            stage.desk.key("Return")
    return ear.wait_for_sound(since, RIGHT, PRESS_SECONDS)


def resident(pid):
    """Memory that it has in all, in the same unit: what others that run beside share does not make it less."""
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    return int(re.search(r"^Rss:\s+(\d+) kB", text, re.M).group(1)) / 1024


def settled(pid):
    """Memory when what is read about the entries has been read."""
    seen = []

    def still():
        seen.append(memory(pid))
        last = seen[-SETTLE_LOOKS:]
        return len(last) == SETTLE_LOOKS and max(last) - min(last) < SETTLED_MB

    wait("memory that stands still", still, LONGEST_SETTLE, 1)
    return seen[-1]


def peer_figures(stage):
    folder = names(stage)
    peers = [each(stage) for each in (Ours, Audacious, Qmmp, Vlc)]
    first, found, held, whole = ({peer.name: [] for peer in peers} for _ in range(4))
    entries = []  # of Qmmp's list
    opened = sorted(folder.glob("song*.mp3"))[:OPENED]
    for run in range(stage.runs + 1):
        for peer in peers:
            with Ear(stage.session) as ear:
                began = time.monotonic()
                with peer.open(*opened):
                    heard = ear.wait_for_sound(began, seconds=60)
            if not run:  # the first one read the program from the disc
                continue
            first[peer.name].append(heard - began)
            with Ear(stage.session) as ear, peer.open(folder / "all.m3u") as pid:
                ear.wait_for_sound(time.monotonic(), LEFT, 90)
                held[peer.name].append(settled(pid))
                whole[peer.name].append(resident(pid))
                if isinstance(peer, Qmmp):
                    entries.append(peer.entries())
                at = peer.play(f"song {WANTED}")
                if at is not None:
                    found[peer.name].append(heard_wanted(stage, ear, at) - at)
            wait_quietly(1)
    yield from beside(f"{OPENED} files opened, start to first sound", first, peers, lambda _: "window and all, from nothing")
    yield from beside(f"entry {WANTED} of {ENTRIES} found and played", found, peers, lambda peer: peer.how)
    yield Figure("entries in qmmp's list when its memory was read", entries, "entries", None, "it takes some at a time")
    for what, memories in (("PSS", held), ("resident", whole)):
        for peer in peers:
            yield Figure(f"memory ({what}), {ENTRIES} entries, {peer.name}", memories[peer.name], "MB", None, "playing MP3")
        for peer in peers[1:]:
            yield ratio(f"memory ({what}), {ENTRIES} entries, beside {peer.name}", memories["ours"], memories[peer.name])


def beside(what, waits, peers, note):
    measured = [peer for peer in peers if waits[peer.name]]
    for peer in measured:
        yield milliseconds(f"{what}, {peer.name}", waits[peer.name], None, note(peer))
    for peer in measured[1:]:
        yield ratio(f"{what}, beside {peer.name}", waits["ours"], waits[peer.name])
