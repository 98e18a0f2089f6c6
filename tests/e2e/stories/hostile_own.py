# SPDX-License-Identifier: GPL-3.0-or-later
"""Hostile lists, settings and skins: each start shows the panel, or says in a box why not, stays small, plays a good file, and ends
with 0."""

import os
import pathlib
import shutil

from gi.repository import GLib

from harness import PROJECT
from harness.bus import AnswerWatch, Bus, address_of
from harness.dragging import Dragging
from harness.expect import SLACK, StoryFailure, check, wait
from harness.media import tone
from harness.running import is_sanitized
from harness.story import story
from hostile.own import all_of

PART = int(os.environ.get("CORVANE_HOSTILE", "16"))  # every so many of each; 1: all
START_SECONDS = 12
ANSWER_SECONDS = 2.0
MOST_MEGABYTES = 400
ROOT = "org.mpris.MediaPlayer2"


class Starts:
    """One start after the other, each in the folder as it was shipped but for one thing."""

    def __init__(self, stage):
        self.stage, self.player = stage, stage.player
        self.good = tone(stage.media / "good.wav", 440, 60)
        self.bus, self.x = Bus(stage.session), Dragging(stage.session)
        self.slowest, self.most, self.boxed, self.failures = (0.0, ""), (0.0, ""), 0, []

    def attempt(self, name, write):
        folder = self.player.folder
        shutil.rmtree(folder)
        folder.mkdir()
        shutil.copytree(PROJECT / "PANELSET", folder / "PANELSET")
        write(folder)
        try:
            self.player.start(panel=False)
            if self._stands():
                self._plays(name)
                self.bus.call("Quit", interface=ROOT)
            self.player.wait_for_end()
            left = [path.name for path in folder.rglob(".corvane*")]
            check(not left, f"left behind: {left}")
        except (StoryFailure, GLib.Error) as failure:
            self.failures.append(f"{name}: {failure}")
            self.player.kill() if self.player.running() else None

    def _stands(self):
        """Until the panel is there; false: a box told why it cannot be, and it ended."""
        told = []

        def done():
            if not self.player.running() or self.bus.state()[0]:
                return True
            for window, _ in [each for each in self.x.windows(self.player.process.pid) if each[1] == "Corvane"]:
                told.append(window)
                self.x.key(window, "Return")
            return False

        wait("the panel, or a box", done, START_SECONDS, 0.1)
        self._measure("start")
        if self.player.running():
            return True
        self.boxed += 1
        check(told, "it ended without a word")
        return False

    def _plays(self, name):
        with AnswerWatch(self.stage.session) as watch:
            self.bus.call("OpenUri", GLib.Variant("(s)", (address_of(self.good),)))
            wait("the good file plays", lambda: self.bus.state()[1] == address_of(self.good) and self.bus.state()[2] > 0, 8)
            seconds = watch.slowest()
        check(seconds < ANSWER_SECONDS * SLACK, f"an answer took {seconds:.1f} s")
        self.slowest = max(self.slowest, (seconds, name))
        self._measure(name)

    def _measure(self, name):
        if not self.player.running() or is_sanitized(self.player.program) or self.stage.watch.command:
            return
        status = pathlib.Path(f"/proc/{self.player.process.pid}/status").read_text()
        peak = next((int(line.split()[1]) / 1024 for line in status.splitlines() if line.startswith("VmHWM")), 0)
        self.most = max(self.most, (peak, name))
        check(peak < MOST_MEGABYTES, f"{peak:.0f} MB")


def attack(stage, kind):
    starts = Starts(stage)
    chosen = all_of(kind)[1 % PART::PART]
    for name, write in chosen:
        starts.attempt(name, write)
    told = f"{len(chosen)} {kind}: {starts.boxed} told by a box; slowest answer {starts.slowest[0]:.2f} s ({starts.slowest[1]}), most memory {starts.most[0]:.0f} MB ({starts.most[1]})"
    print(f"     {told}", flush=True)
    stage.leave_text("hostile", "\n".join([told, *starts.failures]) + "\n")
    check(not starts.failures, f"{len(starts.failures)} of {len(chosen)}: " + "; ".join(starts.failures[:6]))


@story("hostile: lists of others end in a panel or a box, and a good file plays")
def lists(stage):
    attack(stage, "lists")


@story("hostile: settings of others end in a panel or a box, and a good file plays")
def settings(stage):
    attack(stage, "settings")


@story("hostile: what goes on at the next start and the ends of long lists, made by others, end in a panel or a box")
def resumes(stage):
    attack(stage, "resumes")


@story("hostile: skins of others end in a panel or a box, and a good file plays")
def skins(stage):
    attack(stage, "skins")
