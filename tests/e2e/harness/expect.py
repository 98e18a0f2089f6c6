# SPDX-License-Identifier: GPL-3.0-or-later
"""Conditions with a deadline."""

import os
import time

SLACK = float(os.environ.get("CORVANE_SLACK", "1"))  # deadlines are so many times as long, for a program under a sanitizer
NOTICED_SECONDS = 0.05  # by which a pause is longer than it should be: less is every machine's


class StoryFailure(AssertionError):
    """What was expected did not happen."""


class StorySkipped(Exception):
    """The story cannot do its work on this machine; the text says why."""


def wait(what, condition, seconds=5.0, pause=0.03):
    """Polls until condition() is true and returns its value; after the deadline the story fails, naming `what`. The deadline
    moves by what a pause took longer than it should: so long the machine let nobody look."""
    seconds *= SLACK
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        now = time.monotonic()
        if now >= deadline:
            raise StoryFailure(f"not within {seconds:g} s: {what}")
        time.sleep(pause)
        late = time.monotonic() - now - pause
        if late > NOTICED_SECONDS:
            deadline += late


def steady(what, condition, seconds, pause=0.05):
    """The condition stays true for so long."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not condition():
            raise StoryFailure(f"did not last {seconds:g} s: {what}")
        time.sleep(pause)


def standing(what, look, seconds=5.0, looks=4, pause=0.12):
    """Polls until so many looks in a row find the same, not None; returns it: what was done before has been done."""
    seen = []

    def stands():
        seen.append(look())
        return seen[-1] is not None and seen[-looks:].count(seen[-1]) == looks

    wait(f"{what} stands", stands, seconds, pause)
    return seen[-1]


def check(condition, what):
    if not condition:
        raise StoryFailure(what)


def skip(why):
    raise StorySkipped(why)


def equal(actual, expected, what):
    if actual != expected:
        raise StoryFailure(f"{what}: {actual!r}, expected {expected!r}")
