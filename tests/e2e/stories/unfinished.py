# SPDX-License-Identifier: GPL-3.0-or-later
"""Films of which a part is missing or still to come: they play as far as they go, and the list goes on."""

import contextlib
import threading

from harness.expect import wait
from harness.in_time import in_time
from harness.media import encode, tone
from harness.signs import wait_for_told
from harness.stairs import SECONDS, SHADES, Stair, second_seen, tones_from, wait_for_stair, write_movie
from harness.story import story

PART = 0.55  # of a file's bytes; the seconds below stand well before and well behind it
WITHIN, BEHIND = 3, 6
NEXT_HZ = 1500
PATIENCE = 2 * SECONDS  # the start is waited for as well
KINDS = {"mov": "Quick Time File Now On Play", "mpg": "Mpeg File Now On Play"}
CODECS = {"avi": ["-c", "copy"], "mkv": ["-c", "copy"], "mov": ["-c:v", "mjpeg", "-q:v", "2", "-c:a", "pcm_s16le", "-movflags", "faststart"],
          "mp4": ["-c:v", "mpeg4", "-q:v", "2", "-g", "5", "-c:a", "aac", "-movflags", "faststart"],
          "mpg": ["-c:v", "mpeg2video", "-q:v", "2", "-g", "5", "-c:a", "mp2"],
          "webm": ["-c:v", "libvpx", "-deadline", "realtime", "-cpu-used", "8", "-g", "5", "-c:a", "libopus"]}


def stair_of(stage, kind):
    """A film of that kind, whole, with a tone and a colour for each second."""
    made = stage.media / "made.avi"
    tones = tones_from(600)
    folder = stage.media / "whole"
    if not made.exists():
        folder.mkdir()
        write_movie(made, tones)
    path = folder / f"film.{kind}"
    encode(["-i", str(made), *CODECS[kind]], path)
    return Stair(path, KINDS.get(kind, "Video File Now On Play"), tones, SHADES)


def play(stage, path):
    stage.player.settings(DELAYTIME=30, CONVENIENCES="ON")
    stage.player.save_list([path, tone(stage.media / "next.wav", NEXT_HZ, 3)])
    stage.player.start()
    stage.player.key("z")


def wait_for_second(stage, stair, second):
    """Until the film is seen and heard at that second, or, by a watch under which looks are seldom, near it."""
    near = 2 if stage.watch.command else 0
    wait_for_stair(stage, [stair], 1, max(0, second - near), second + (near and 1), PATIENCE)


def check_heard(stage, stair, second):
    """The next file, and before it, however seldom was looked meanwhile, that second of the film."""
    stage.sound.wait_for(NEXT_HZ, PATIENCE)
    wait_for_told(stage, "FileNo", "002")
    stage.sound.expect_order([stair.tones[second]])


def play_cut(stage, kind):
    stair = stair_of(stage, kind)
    path = stage.media / f"cut.{kind}"
    data = stair.path.read_bytes()
    path.write_bytes(data[: int(len(data) * PART)])
    play(stage, path)
    wait_for_second(stage, stair, WITHIN)
    check_heard(stage, stair, WITHIN)


# MEDIA-83: A film whose end is missing plays as far as it goes, and the next file follows
@story("unfinished: an AVI film whose end is missing plays as far as it goes, and the next file follows")
def cut_avi(stage):
    play_cut(stage, "avi")


for each in CODECS:
    if each != "avi":
        story(f"unfinished: a {each.upper()} film whose end is missing plays as far as it goes, and the next file follows")(
            lambda stage, kind=each: play_cut(stage, kind))


@contextlib.contextmanager
def touched_again(path):
    """Meanwhile a file is written to all the time, as far as its time tells."""
    stop = threading.Event()

    def touch():
        while not stop.wait(0.1):
            path.touch()

    toucher = threading.Thread(target=touch)
    toucher.start()
    try:
        yield
    finally:
        stop.set()
        toucher.join()


def play_growing(stage, kind):
    stair = stair_of(stage, kind)
    path = stage.media / f"growing.{kind}"
    data = stair.path.read_bytes()
    half = int(len(data) * PART)
    path.write_bytes(data[:half])
    with touched_again(path):  # as by who writes on
        play(stage, path)
        wait_for_second(stage, stair, 1)
        with open(path, "ab") as file:
            file.write(data[half:])
    wait_for_second(stage, stair, BEHIND)
    check_heard(stage, stair, BEHIND)


for each in ("mkv", "mpg"):
    story(f"unfinished: a {each.upper()} film that is still being written plays on into what came meanwhile")(
        lambda stage, kind=each: play_growing(stage, kind))


# MEDIA-84: A film that is still being written plays on into what came since it was opened; what is written to without
#    becoming longer ends
@story("unfinished: a film that is touched again and again and never becomes longer ends all the same, and stop is not held up")
def touched(stage):
    stair = stair_of(stage, "avi")
    with touched_again(stair.path):
        play(stage, stair.path)
        wait_for_second(stage, stair, BEHIND)
        check_heard(stage, stair, BEHIND)
        for key in "c", "comma", "z":
            stage.player.key(key)
        wait_for_second(stage, stair, 1)
        with in_time(stage, "to stop", 1):
            stage.player.key("c")
            wait("its picture goes", lambda: second_seen(stage, stair) is None, 5)
        wait("its window goes", lambda: len(stage.player.windows()) == 1)
