# SPDX-License-Identifier: GPL-3.0-or-later
"""What a running player costs: memory, wake-ups, processor time, beside other programs on the same files."""

import os
import pathlib
import re

from .stage import wait_quietly
from .table import Figure, ratio

TICKS_A_SECOND = os.sysconf("SC_CLK_TCK")
SOUNDFONT = pathlib.Path("/usr/share/sounds/sf2/TimGM6mb.sf2")
SETTLE_SECONDS = 3
SOUND_MEMORY_MB = 45
PLAYED = (("MP3", "music.mp3"), ("MIDI", "music.mid"), ("640x480 AVI", "small.avi"), ("720p MOV", "large.mov"))


def memory(pid):
    """Proportional memory in units of 1024 squared bytes."""
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    return int(re.search(r"^Pss:\s+(\d+) kB", text, re.M).group(1)) / 1024


def processor_seconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / TICKS_A_SECOND


def wake_ups(pid):
    """Voluntary context switches of all threads."""
    total = 0
    for status in pathlib.Path(f"/proc/{pid}/task").glob("*/status"):
        total += int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", status.read_text(), re.M).group(1))
    return total


def memory_figures(stage):
    idle, playing = [], {name: [] for name, _ in PLAYED}
    bare, theirs, audacious = [], [], []
    for _ in range(stage.runs):
        with stage.player(rest=SETTLE_SECONDS) as player:
            idle.append(memory(player.process.pid))
        with stage.process([stage.tools / "bare_window"]) as process:
            wait_quietly(1)
            bare.append(memory(process.pid))
        for name, file in PLAYED:
            with stage.player(stage.files(file), AUTOPLAY="ON", rest=SETTLE_SECONDS) as player:
                playing[name].append(memory(player.process.pid))
        with stage.mpv(stage.media / "music.mp3") as mpv:
            wait_quietly(SETTLE_SECONDS)
            theirs.append(memory(mpv.pid))
        with stage.audacious(stage.media / "music.mp3") as process:
            wait_quietly(SETTLE_SECONDS)
            audacious.append(memory(process.pid))
    yield Figure("memory (PSS), idle", idle, "MB", 25)
    yield Figure("memory (PSS), bare window of the tool kit", bare, "MB", None, "reference")
    for name, file in PLAYED:
        is_sound = file.endswith((".mp3", ".mid"))
        yield Figure(f"memory (PSS), playing {name}", playing[name], "MB", SOUND_MEMORY_MB if is_sound else None)
    yield ratio("memory, playing MP3, beside mpv", playing["MP3"], theirs)
    yield ratio("memory, playing MP3, beside audacious", playing["MP3"], audacious)


def picture_memory(stage):
    values = []
    for _ in range(stage.runs):
        names = [f"photo{number}.jpg" for number in range(4)]
        with stage.player(stage.files(*names), AUTOPLAY="ON", rest=SETTLE_SECONDS) as player:
            values.append(memory(player.process.pid))
    yield Figure("memory (PSS), 12-megapixel pictures", values, "MB", 200, "one shown, one decoded ahead")


def idle_figures(stage):
    seconds = stage.seconds
    switches, share = [], []
    for _ in range(stage.runs):
        with stage.player(rest=SETTLE_SECONDS) as player:
            pid = player.process.pid
            before = wake_ups(pid), processor_seconds(pid)
            wait_quietly(seconds)
            switches.append((wake_ups(pid) - before[0]) / seconds)
            share.append((processor_seconds(pid) - before[1]) / seconds * 100)
    yield Figure("idle panel, wake-ups", switches, "a second", None, "the display's clock ticks once a second")
    yield Figure("idle panel, processor", share, "% of a core")


def playing_share(stage, file):
    with stage.player(stage.files(file), AUTOPLAY="ON", rest=SETTLE_SECONDS) as player:
        return share_of(stage, player.process.pid)


def share_of(stage, pid):
    before = processor_seconds(pid)
    wait_quietly(stage.seconds)
    return (processor_seconds(pid) - before) / stage.seconds * 100


def other_share(stage, file):
    """mpv's share, or for MIDI fluidsynth's."""
    path = stage.media / file
    if path.suffix == ".mid":
        with stage.process(["fluidsynth", "-ni", "-a", "pulseaudio", SOUNDFONT, path]) as process:
            wait_quietly(SETTLE_SECONDS)
            return share_of(stage, process.pid)
    with stage.mpv(path) as mpv:
        wait_quietly(SETTLE_SECONDS)
        return share_of(stage, mpv.pid)


def audacious_share(stage, file):
    with stage.audacious(stage.media / file) as process:
        wait_quietly(SETTLE_SECONDS)
        return share_of(stage, process.pid)


def processor_figures(stage):
    for name, file in PLAYED:
        ours, theirs, audacious = [], [], []
        for _ in range(stage.runs):
            ours.append(playing_share(stage, file))
            theirs.append(other_share(stage, file))
            if name == "MP3":
                audacious.append(audacious_share(stage, file))
        other, most = ("fluidsynth", 0.5) if name == "MIDI" else ("mpv", 1.2)
        yield Figure(f"processor, {name}", ours, "% of a core")
        yield Figure(f"processor, {name}, {other}", theirs, "% of a core", None, "reference")
        yield ratio(f"processor, {name}, beside {other}", ours, theirs, most)
        if audacious:
            yield Figure(f"processor, {name}, audacious", audacious, "% of a core", None, "reference, without a window")
            yield ratio(f"processor, {name}, beside audacious", ours, audacious)
