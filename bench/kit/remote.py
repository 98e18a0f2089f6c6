# SPDX-License-Identifier: GPL-3.0-or-later
"""How long next takes from a remote control (the media interface of the message bus) to the sound, beside other players."""

import contextlib

from harness.bus import NAME as OURS
from harness.bus import Bus
from harness.expect import wait

from .peers import Vlc
from .response import alternate
from .senses import Ear
from .stage import wait_quietly
from .table import milliseconds, ratio

KINDS = "wav", "mp3", "flac", "mid"
PREFIX = "org.mpris.MediaPlayer2."
MOST_MS = 10


@contextlib.contextmanager
def ours(stage, files):
    with stage.player(files, AUTOPLAY="ON"):
        yield OURS


@contextlib.contextmanager
def audacious(stage, files):
    with stage.audacious(*files, window=True):
        yield PREFIX + "audacious"


@contextlib.contextmanager
def vlc(stage, files):
    with Vlc(stage).open("--extraintf=dbus", "--no-random", *files):
        yield PREFIX + "vlc"


def sided(stage, kind):
    """One file that sounds on the left, one on the right."""
    for side in ("left", "right"):
        stage.add_flac(f"{side}_long")
    return stage.files(f"left_long.{kind}", f"right_long.{kind}")


def waits_of(stage, plays, kind, rounds):
    """Seconds from each command to the new sound."""
    bus = Bus(stage.session)
    try:
        with Ear(stage.session) as ear, plays(stage, sided(stage, kind) * rounds) as name:
            ear.wait_for_sound(0)
            wait("it is on the bus", lambda: bus.has(name), 10)
            wait_quietly(1)
            return alternate(stage, ear, rounds, lambda: bus.tell("Next", name=name))
    finally:
        bus.close()


def remote_figures(stage):
    rounds = stage.runs * 2
    for kind in KINDS:
        others = {"audacious": audacious, "vlc": vlc} if kind != "mid" else {}
        mine = waits_of(stage, ours, kind, rounds)
        yield milliseconds(f"next by the media interface, {kind.upper()}", mine, MOST_MS, "from the bus to the sound")
        for name, plays in others.items():
            theirs = waits_of(stage, plays, kind, rounds)
            yield milliseconds(f"next by the media interface, {kind.upper()}, {name}", theirs, None, "reference")
            yield ratio(f"next by the media interface, {kind.upper()}, beside {name}", mine, theirs)
