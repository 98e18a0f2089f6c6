# SPDX-License-Identifier: GPL-3.0-or-later
"""How long a person waits: for the panel, for a sound, for silence, for a picture."""

import shutil
import time

import numpy as np

from harness.player import REPEAT_LAMP

from .material import MOVIE_COLOURS, PHOTO_COLOURS
from .senses import LEFT, LOUD, RATE, RIGHT, Ear
from .stage import wait_quietly
from .table import milliseconds, ratio

FIRST_FRAMES = 0, 0, 400, 260  # where the opening's first windows are; nothing else is there
FRAME_MS = 17
KEYS = {"play": "z", "pause": "x", "next": ".", "repeat": "R", "power off": "P"}


def start_figures(stage):
    frames, openings, bare = [], [], []
    for run in range(stage.runs + 1):
        frame, end = opening(stage)
        reference = bare_start(stage)
        if run:  # the first one read the program from the disc
            frames.append(frame)
            openings.append(end - frame)
            bare.append(reference)
    yield milliseconds("start to first frame of the opening", frames, 60, "warm")
    yield milliseconds("start to first frame, bare window of the tool kit", bare, None, "reference")
    yield ratio("start to first frame, beside the bare window", frames, bare)
    yield milliseconds("opening, first frame to full size", openings, 165, "stated as about 150")


def opening(stage):
    """Seconds from the start to the first frame, and to the panel's full size."""
    player = stage.new_player()
    width, height = player.skin[0][4:6]
    try:
        stage.eyes.watch(*FIRST_FRAMES)
        wait_quietly(0.3)  # what went before may still be leaving the screen
        began = time.monotonic()
        player.start(panel=False)
        frame = stage.eyes.wait_for_change(began, "the first frame")
        full = stage.eyes.wait_for_size(began, width, height)
        player.wait_for_panel()
        return frame - began, full - began
    finally:
        stage.eyes.unwatch()
        player.stop()
        shutil.rmtree(player.folder, ignore_errors=True)


def bare_start(stage):
    stage.eyes.watch(*FIRST_FRAMES)
    wait_quietly(0.3)
    began = time.monotonic()
    with stage.process([stage.tools / "bare_window"]):
        frame = stage.eyes.wait_for_change(began, "the bare window")
    stage.eyes.unwatch()
    return frame - began


def end_figures(stage):
    for name, files in (("idle", ()), ("playing MP3", ("left_long.mp3",)), ("playing AVI", ("plain.avi",))):
        waits = []
        for _ in range(stage.runs):
            with stage.player(stage.files(*files), AUTOPLAY="ON" if files else "OFF", rest=1) as player:
                began = stage.eyes.press(KEYS["power off"])
                player.process.wait(10)
                waits.append(time.monotonic() - began)
        yield milliseconds(f"power off to the end of the process, {name}", waits, None)


def first_sound_figures(stage):
    for kind in ("wav", "mp3", "mid"):
        waits = []
        for run in range(stage.runs + 1):
            player = stage.new_player(stage.files(f"left_long.{kind}"), AUTOPLAY="ON")
            width, height = player.skin[0][4:6]
            try:
                with Ear(stage.session) as ear:
                    began = time.monotonic()
                    player.start(panel=False)
                    full = stage.eyes.wait_for_size(began, width, height)
                    heard = ear.wait_for_sound(began)
            finally:
                player.stop()
                shutil.rmtree(player.folder, ignore_errors=True)
            if run:
                waits.append(heard - full)
        yield milliseconds(f"end of opening to first sound, {kind.upper()}", waits, 50, "AUTOPLAY, full size to sound")


def gaps_in(samples):
    """Seconds between the end of each file, heard on one side, and the begin of the next one on the other side."""
    ends = []
    for side in (LEFT, RIGHT):
        loud = np.flatnonzero(samples[:, side] > LOUD)
        parts = np.split(loud, np.flatnonzero(np.diff(loud) > 0.3 * RATE) + 1)
        ends += [(part[0], part[-1]) for part in parts if len(part)]
    ends.sort()
    return [(later[0] - earlier[1] - 1) / RATE for earlier, later in zip(ends, ends[1:])]


def gap_figures(stage):
    for first, second in (("wav", "wav"), ("mp3", "mp3"), ("mid", "mid"), ("mp3", "mid"), ("mid", "wav")):
        pairs = stage.files(f"left_short.{first}", f"right_short.{second}") * max(2, stage.runs // 2)
        with Ear(stage.session) as ear:
            began = time.monotonic()
            with stage.player(pairs, AUTOPLAY="ON"):
                ear.wait_for_sound(began)
                ear.wait_for_silence(began, 0.8, 1.5 * len(pairs) + 10)
                samples, _ = ear.channels(began)
        gaps = gaps_in(samples)[:: 1 if first == second else 2]
        yield milliseconds(f"gap between files, {first.upper()} to {second.upper()}", gaps, 30)


def alternate(stage, ear, rounds, command):
    """Goes on from file to file, left and right by turns; seconds from each command to the new sound."""
    waits = []
    for number in range(rounds):
        side = RIGHT if number % 2 == 0 else LEFT
        at = command()
        waits.append(ear.wait_for_sound(at, side) - at)
        wait_quietly(0.3)
    return waits


def next_figures(stage):
    rounds = stage.runs * 2
    for kind in ("wav", "mp3", "mid"):
        pairs = stage.files(f"left_long.{kind}", f"right_long.{kind}") * rounds
        with Ear(stage.session) as ear, stage.player(pairs, AUTOPLAY="ON", rest=0.5):
            waits = alternate(stage, ear, rounds, lambda: stage.eyes.press(KEYS["next"]))
        name = f"next file, key to sound, {kind.upper()}"
        if kind == "mid":  # which mpv does not play
            yield milliseconds(name, waits)
            continue
        with Ear(stage.session) as ear, stage.mpv(*pairs) as mpv:
            ear.wait_for_sound(0)
            wait_quietly(0.5)
            theirs = alternate(stage, ear, rounds, lambda: mpv.say("playlist-next"))
        yield milliseconds(name, waits, np.median(theirs) * 1000 + FRAME_MS, "target: mpv's and one frame")
        yield milliseconds(f"next file, {kind.upper()}, mpv", theirs, None, "reference, steered by its socket")


def stop_and_go(ear, rounds, pause, play):
    """Seconds to silence and to sound again, by turns."""
    silences, sounds = [], []
    for _ in range(rounds):
        at = pause()
        silences.append(ear.wait_for_silence(at) - at)
        at = play()
        sounds.append(ear.wait_for_sound(at) - at)
        wait_quietly(0.3)
    return silences, sounds


def pause_figures(stage):
    rounds = stage.runs * 2
    press = stage.eyes.press
    with Ear(stage.session) as ear, stage.player(stage.files("left_long.mp3"), AUTOPLAY="ON", rest=0.5):
        silences, sounds = stop_and_go(ear, rounds, lambda: press(KEYS["pause"]), lambda: press(KEYS["play"]))
    with Ear(stage.session) as ear, stage.mpv(stage.media / "left_long.mp3") as mpv:
        ear.wait_for_sound(0)
        wait_quietly(0.5)
        say = mpv.say
        theirs = stop_and_go(ear, rounds, lambda: say("set_property", "pause", True), lambda: say("set_property", "pause", False))
    for name, ours, reference in (("pause to silence", silences, theirs[0]), ("play again to sound", sounds, theirs[1])):
        yield milliseconds(f"{name}, key, MP3", ours, np.median(reference) * 1000 + FRAME_MS, "target: mpv's and one frame")
        yield milliseconds(f"{name}, mpv", reference, None, "reference, steered by its socket")


def repaint_figures(stage):
    with stage.player(stage.files("left_long.wav"), rest=1) as player:
        stage.eyes.watch(*player.place(REPEAT_LAMP[0]))
        waits = []
        for _ in range(stage.runs * 4):
            at = stage.eyes.press(KEYS["repeat"])
            waits.append(stage.eyes.wait_for_change(at, "the repeat lamp") - at)
            wait_quietly(0.15)
        stage.eyes.unwatch()
    yield milliseconds("key to repaint", waits, FRAME_MS, "repeat lamp")


def watch_middle(stage):
    stage.eyes.watch(stage.desk.screen.width // 2 - 8, stage.desk.screen.height // 2 - 8, 16, 16)


def look_through(stage, **settings):
    """Seconds from the key to each of the pictures."""
    waits = []
    names = [f"photo{number}.jpg" for number in range(len(PHOTO_COLOURS))]
    with stage.player(stage.files(*names), rest=1, **settings):
        watch_middle(stage)
        for number, colour in enumerate(PHOTO_COLOURS):
            at = stage.eyes.press(KEYS["next" if number else "play"])
            waits.append(stage.eyes.wait_for_colour(at, colour, f"picture {number}") - at)
            wait_quietly(1)  # a look at it; the next one is decoded meanwhile
        stage.eyes.unwatch()
    return waits


def picture_at_start(stage):
    """Seconds from the panel's full size to the picture that the list begins with."""
    player = stage.new_player(stage.files("photo0.jpg"), AUTOPLAY="ON")
    width, height = player.skin[0][4:6]
    try:
        watch_middle(stage)
        began = time.monotonic()
        player.start(panel=False)
        full = stage.eyes.wait_for_size(began, width, height)
        return stage.eyes.wait_for_colour(began, PHOTO_COLOURS[0], "the picture") - full
    finally:
        stage.eyes.unwatch()
        player.stop()
        shutil.rmtree(player.folder, ignore_errors=True)


def picture_figures(stage):
    first, kept, new = [], [], []
    starts = [picture_at_start(stage) for _ in range(stage.runs + 1)][1:]
    yield milliseconds("end of opening to first picture, 12 megapixels", starts, 20, "AUTOPLAY, full size to shown")
    for _ in range(stage.runs):
        waits = look_through(stage, IMAGEHIDE="OFF")
        first.append(waits[0])
        kept += waits[1:]
        new += look_through(stage, IMAGEHIDE="ON")[1:]
    yield milliseconds("first picture, 12 megapixels, key to shown", first, 150)
    yield milliseconds("next picture, key to shown, window kept", kept, 10, "decoded ahead")
    yield milliseconds("next picture, key to shown, new window", new, None, "decoded ahead; the window manager shows a window")


def own_movies(stage):
    """Seconds from the key to the first frame of the first movie since the start, and of the next one."""
    with stage.player(stage.files("plain.avi", "other.avi"), rest=1):
        watch_middle(stage)
        waits = []
        for key, colour in (("play", MOVIE_COLOURS[0]), ("next", MOVIE_COLOURS[1])):
            at = stage.eyes.press(KEYS[key])
            waits.append(stage.eyes.wait_for_colour(at, colour, "the movie") - at)
            wait_quietly(1)
        stage.eyes.unwatch()
    return waits


def mpv_movies(stage):
    """The same with mpv, whose window stands already."""
    place = "--geometry=640x480+{}+{}".format(stage.desk.screen.width // 2 - 320, stage.desk.screen.height // 2 - 240)
    with stage.mpv("--idle", "--force-window=yes", place) as mpv:
        wait_quietly(1)
        watch_middle(stage)
        waits = []
        for name, colour in (("plain.avi", MOVIE_COLOURS[0]), ("other.avi", MOVIE_COLOURS[1])):
            at = mpv.say("loadfile", str(stage.media / name))
            waits.append(stage.eyes.wait_for_colour(at, colour, "mpv's movie") - at)
            wait_quietly(1)
        stage.eyes.unwatch()
    return waits


def movie_figures(stage):
    ours, theirs = [], []
    for _ in range(stage.runs):
        ours.append(own_movies(stage))
        theirs.append(mpv_movies(stage))
    for number, which in enumerate(("first movie", "next movie")):
        mine, mpv = ([waits[number] for waits in all_waits] for all_waits in (ours, theirs))
        yield milliseconds(f"{which}, key to first frame", mine, None, "640x480 AVI")
        yield milliseconds(f"{which}, command to first frame, mpv", mpv, None, "reference; its window stands already")
        yield ratio(f"{which}, first frame beside mpv", mine, mpv)
