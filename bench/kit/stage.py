# SPDX-License-Identifier: GPL-3.0-or-later
"""The private desktop that is measured on, and the programs started on it."""

import contextlib
import json
import shutil
import socket
import subprocess
import time

from harness.desk import Desk
from harness.expect import wait
from harness.player import Player, set_sink_volume
from session import Session, end_process

from . import WORKPLACE, material
from .senses import Eyes

SCREEN = "1920x1200"


class Stage:
    def __init__(self, tools, program, runs, seconds):
        self.tools = tools
        self.program = program
        self.runs = runs  # of each figure
        self.seconds = seconds  # for which processor time is counted
        self.session = Session(SCREEN, sound_in_shared_memory=True)  # as users have it
        self._started = 0

    def __enter__(self):
        self.session.__enter__()
        try:
            self.folder = self.session.folder
            self.media = self.folder / "media"  # no dot in its path
            self.media.symlink_to(material.make(WORKPLACE / "media"))
            self.desk = Desk(self.session)
            self.desk.rest()
            set_sink_volume(self.session, 65536)
            self.eyes = Eyes(self.session, self.tools / "x_watch")
        except BaseException:
            self.session.stop()
            raise
        return self

    def __exit__(self, *_):
        self.eyes.stop()
        self.session.stop()

    def files(self, *names):
        return [self.media / name for name in names]

    def add_flac(self, name="music"):
        if not (self.media / f"{name}.flac").exists():
            material.encode(["-i", str(self.media / f"{name}.wav")], self.media / f"{name}.flac")

    def sound_server(self):
        return self.session.pid_of("pulseaudio")

    def new_player(self, files=(), **settings):
        """A player with a folder of its own, not started yet."""
        self._started += 1
        player = Player(self, self.program, self.folder / f"player{self._started}")
        player.settings(DELAYTIME=1, **settings)
        if files:
            player.save_list(files)
        return player

    @contextlib.contextmanager
    def player(self, files=(), rest=0.0, **settings):
        """A running player with its panel up and the keys on it."""
        player = self.new_player(files, **settings)
        try:
            player.start()
            self.desk.focus(player.window)
            if rest:
                wait_quietly(rest)
            yield player
        finally:
            player.stop()
            shutil.rmtree(player.folder, ignore_errors=True)

    @contextlib.contextmanager
    def process(self, command, **options):
        """Any other program inside the session."""
        process = self.session.popen([str(word) for word in command], stdin=subprocess.DEVNULL,
                                     stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)
        try:
            yield process
        finally:
            end_process(process)

    @contextlib.contextmanager
    def mpv(self, *arguments):
        """mpv without settings of its own, steered through its socket."""
        self._started += 1
        path = self.folder / f"mpv{self._started}"
        command = ["mpv", "--no-config", "--no-terminal", "--ao=pulse", "--vo=x11", f"--input-ipc-server={path}", *arguments]
        with self.process(command) as process:
            wait("mpv answers", path.exists, 10)
            yield Mpv(process, path)

    @contextlib.contextmanager
    def audacious(self, *paths, window=False):
        """audacious without settings of its own, and without a window unless it shall have one, playing these files."""
        self._started += 1
        settings = self.folder / f"audacious{self._started}"
        with self.process(["audacious", *([] if window else ["-H"]), *paths], env={"XDG_CONFIG_HOME": str(settings)}) as process:
            wait("audacious plays", lambda: "Corked: no" in self.session.run(["pactl", "list", "sink-inputs"]), 10)
            yield process


class Mpv:
    def __init__(self, process, path):
        self.pid = process.pid
        self._socket = socket.socket(socket.AF_UNIX)
        wait("mpv listens", lambda: self._socket.connect_ex(str(path)) == 0, 10)

    def say(self, *words):
        """Sends a command; returns when it was sent."""
        line = json.dumps({"command": words}).encode() + b"\n"
        at = time.monotonic()
        self._socket.sendall(line)
        return at


def wait_quietly(seconds):
    """A measured stretch of time."""
    time.sleep(seconds)
