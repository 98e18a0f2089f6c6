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
SOUND_MEMORY_MB = 40
RENDERING_SHARE = 2
LONG_SECONDS = 30  # once over so long says as much as several times over less
# What is played, the file, other programs to compare with and how many times their processor time is the most.
PLAYED = (("MP3", "music.mp3", ("mpv", "audacious"), 1.2), ("WAV", "music.wav", ("mpv",), 1.2),
          ("MIDI", "music.mid", ("fluidsynth",), 0.5), ("MIDI, 4 notes", "tune.mid", ("fluidsynth",), 0.5),
          ("disc image", "disc/Track01.cda", (), None), ("640x480 AVI", "small.avi", ("mpv",), 1.2),
          ("720p MOV", "large.mov", ("mpv",), 1.2), ("picture", "photo0.jpg", (), None))


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
    idle, playing = [], {name: [] for name, *_ in PLAYED}
    bare, theirs, audacious = [], [], []
    for _ in range(stage.runs):
        with stage.player(rest=SETTLE_SECONDS) as player:
            idle.append(memory(player.process.pid))
        with stage.process([stage.tools / "bare_window"]) as process:
            wait_quietly(1)
            bare.append(memory(process.pid))
        for name, file, *_ in PLAYED:
            with stage.player(stage.files(file), AUTOPLAY="ON", rest=SETTLE_SECONDS) as player:
                playing[name].append(memory(player.process.pid))
        with stage.mpv(stage.media / "music.mp3") as mpv:
            wait_quietly(SETTLE_SECONDS)
            theirs.append(memory(mpv.pid))
        with stage.audacious(stage.media / "music.mp3") as process:
            wait_quietly(SETTLE_SECONDS)
            audacious.append(memory(process.pid))
    yield Figure("memory (PSS), idle", idle, "MB", 20)
    yield Figure("memory (PSS), bare window of the tool kit", bare, "MB", None, "reference")
    for name, file, *_ in PLAYED:
        is_sound = not file.endswith((".avi", ".mov", ".jpg"))
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


def other_share(stage, other, file):
    """Another program's share, playing the same file."""
    path = stage.media / file
    plays = {"mpv": stage.mpv, "audacious": stage.audacious,
             "fluidsynth": lambda it: stage.process(["fluidsynth", "-ni", "-a", "pulseaudio", SOUNDFONT, it])}
    with plays[other](path) as process:
        wait_quietly(SETTLE_SECONDS)
        return share_of(stage, process.pid)


def processor_figures(stage):
    shares = {}
    for name, file, others, most in PLAYED:
        ours, theirs = [], {other: [] for other in others}
        for _ in range(1 if stage.seconds >= LONG_SECONDS else stage.runs):
            ours.append(playing_share(stage, file))
            for other in others:
                theirs[other].append(other_share(stage, other, file))
        shares[name] = ours
        yield Figure(f"processor, {name}", ours, "% of a core")
        for other in others:
            note = "reference, without a window" if other == "audacious" else "reference"
            yield Figure(f"processor, {name}, {other}", theirs[other], "% of a core", None, note)
            yield ratio(f"processor, {name}, beside {other}", ours, theirs[other], None if other == "audacious" else most)
    rendering = [midi - wave for midi, wave in zip(shares["MIDI, 4 notes"], shares["WAV"])]
    yield Figure("processor, rendering 4 notes", rendering, "% of a core", RENDERING_SHARE, "MIDI, 4 notes, without what a WAV takes")


def music_cost(stage, pid):
    """Seconds of processor in 30 and wake-ups a second, of a player and of the sound server for it."""
    server = stage.sound_server()
    before = [(processor_seconds(each), wake_ups(each)) for each in (pid, server)]
    wait_quietly(stage.seconds)
    after = [(processor_seconds(each), wake_ups(each)) for each in (pid, server)]
    spent = [(now[0] - then[0], now[1] - then[1]) for now, then in zip(after, before)]
    return [(seconds / stage.seconds * LONG_SECONDS, woken / stage.seconds) for seconds, woken in spent]


def music_figures(stage):
    """What an hour of music costs a battery: each player with its window, and what the sound server does for it."""
    stage.add_flac()
    for name, file in (("MP3", "music.mp3"), ("WAV", "music.wav"), ("FLAC", "music.flac")):
        ours, theirs = [], []
        for _ in range(stage.runs):
            with stage.player(stage.files(file), AUTOPLAY="ON", CONVENIENCES="ON", rest=2 * SETTLE_SECONDS) as player:
                ours.append(music_cost(stage, player.process.pid))
            with stage.audacious(stage.media / file, window=True) as process:
                wait_quietly(2 * SETTLE_SECONDS)
                theirs.append(music_cost(stage, process.pid))
        for at, (what, unit) in enumerate((("processor", "s in 30"), ("wake-ups", "a second"))):
            both = [[sum(part[at] for part in run) for run in runs] for runs in (ours, theirs)]
            yield Figure(f"{what}, {name}, player and sound server", both[0], unit)
            yield Figure(f"{what}, {name}, the sound server's part", [run[1][at] for run in ours], unit)
            yield Figure(f"{what}, {name}, audacious and sound server", both[1], unit, None, "reference")
            yield ratio(f"{what}, {name}, both beside audacious", *both, 1)
