# SPDX-License-Identifier: GPL-3.0-or-later
"""Recognises which file of a list is open: by what the panel tells, by ear and by eye, all at one time."""

import collections

from .expect import StoryFailure, equal, wait
from .sound import same_pitch

Entry = collections.namedtuple("Entry", "path kind tones colour")  # of a list: see lacking()
NEXT_SECONDS = 8  # for the next file to be heard or seen: a busy machine


def all_told(stage):
    """The texts of the panel's labels, which are read at one time; empty when they cannot be read."""
    return {name: text for name, (_, text, _) in stage.accessibility.labels(stage.player.process.pid).items()}


def told(stage, name):
    """The text of a label of the panel ("FileNo", "Tittle", "Display", "Time", "Total FileNo"), None when it cannot be read."""
    return all_told(stage).get(name)


def told_surely(stage, name):
    """The same, and not None: a program that a busy machine keeps waiting is asked until it answers."""
    return wait(f"{name} can be read", lambda: stage.accessibility.labels(stage.player.process.pid).get(name))[1]


def wait_for_told(stage, name, text, seconds=NEXT_SECONDS):
    """Until a label says that text."""
    wait(f"{name} says {text!r}", lambda: told(stage, name) == text, seconds)


def media_windows(stage):
    """The windows beside the panel."""
    return [w for w in stage.player.windows() if w.id != stage.player.window.id]


def middle_of_screen(stage):
    return stage.desk.screen.width // 2, stage.desk.screen.height // 2


def lacking(stage, number, entry):
    """What is not yet as it must be while that entry of the list plays; an empty text when all is.
    entry: kind (the panel's text), tones (hertz, one of them sounds), colour ("#RRGGBB" in the screen's middle, or None). What is
    looked at soonest comes first: on a busy machine the rest takes long."""
    if entry.colour and not stage.desk.shows(*middle_of_screen(stage), entry.colour):
        return f"the screen's middle is {stage.desk.colour(*middle_of_screen(stage))}, not {entry.colour}"
    hz = stage.sound.pitch_now()
    if entry.tones and not any(same_pitch(hz, tone) for tone in entry.tones):
        return f"{hz:.0f} Hz is heard, not {entry.tones}"
    if hz and not entry.tones:
        return f"{hz:.0f} Hz is heard, no sound is wanted"
    labels = all_told(stage)
    for name, wanted in (("FileNo", f"{number:03}"), ("Display", entry.kind), ("Tittle", entry.path.stem)):
        if (now := labels.get(name)) != wanted:
            return f"{name} says {now!r}, not {wanted!r}"
    if (count := len(media_windows(stage))) != (1 if entry.colour else 0):
        return f"{count} windows beside the panel"
    return ""


def wait_for_entry(stage, number, entry, seconds=NEXT_SECONDS):
    """Until that entry (number from 1) is told by the panel, heard and seen."""
    reasons = []

    def complete():
        reasons.append(lacking(stage, number, entry))
        return not reasons[-1]

    try:
        wait("its signs", complete, seconds)
    except StoryFailure:
        raise StoryFailure(f"file {number} ({entry.path.name}) not within {seconds:g} s: {reasons[-1]}") from None


def play_through(stage, entries):
    """Until each entry of the list that plays has been told with its title, heard and seen, in order, and the list's end; no box was
    put up."""
    stage.desk.rest()
    for number, entry in enumerate(entries, 1):
        wait_for_entry(stage, number, entry)
    wait_for_told(stage, "FileNo", "001")
    stage.sound.wait_for_silence()
    equal(stage.player.boxes(), [], "boxes")
