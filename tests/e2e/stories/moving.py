# SPDX-License-Identifier: GPL-3.0-or-later
"""Pictures that move: seen frame by frame, held, hidden, and hostile ones beside a panel that goes on."""

import time

from PIL import Image

from harness.bus import Bus
from harness.expect import SLACK, check, steady, wait
from harness.in_time import in_time
from harness.media import picture
from harness.player import NEXT, PAUSE, PLAY
from harness.signs import middle_of_screen, wait_for_told
from harness.story import story

RED, GREEN, BLUE, GREY = "#C83232", "#32A046", "#3250C8", "#808080"
SIZE = 320, 240


def moving(path, colours, ms=150, loop=0, size=SIZE):
    frames = [Image.new("RGB", size, colour) for colour in colours]
    more = {"lossless": True} if path.suffix == ".webp" else {}
    frames[0].save(path, save_all=True, append_images=frames[1:], duration=ms, loop=loop, **more)
    return path


def start(stage, *files, **settings):
    stage.player.settings(**{"INTERVAL": 0, "CONVENIENCES": "ON", **settings})
    stage.player.save_list(files)
    stage.player.start()
    stage.player.press(PLAY)


def sees(stage, colours, seconds=8):
    """Each of the colours is seen within the time."""
    place = middle_of_screen(stage)
    left, deadline = set(colours), time.monotonic() + seconds * SLACK
    while left and time.monotonic() < deadline:
        left -= {colour for colour in left if stage.desk.shows(*place, colour)}
    check(not left, f"not seen: {sorted(left)}")


# ANIM-08
@story("moving: GIF and WEBP pictures move by themselves, and stand while they are held")
def moves(stage):
    files = [moving(stage.media / name, (RED, GREEN, BLUE), loop=0) for name in ("a.gif", "b.webp")]
    start(stage, *files, picture(stage.media / "c.jpg", GREY))
    place = middle_of_screen(stage)
    bus = Bus(stage.session)
    for number in range(len(files)):
        sees(stage, (RED, GREEN, BLUE))
        for colour in (GREEN, BLUE):
            stage.desk.wait_for_colour(*place, colour)
            stage.leave_picture(f"{files[number].stem}-{colour[1:]}")
        stage.player.press(PAUSE)
        wait("it is held", lambda: bus.state()[0] == "Paused")
        stage.desk.wait_until_still(*place, 5, 5)
        held = next(colour for colour in (RED, GREEN, BLUE) if stage.desk.shows(*place, colour))
        steady("a held picture stands", lambda held=held: stage.desk.shows(*place, held), 1)
        stage.player.press(PLAY)
        sees(stage, (RED, GREEN, BLUE))
        stage.player.press(NEXT)
        wait_for_told(stage, "FileNo", f"{number + 2:03}")
    stage.desk.wait_for_colour(*place, GREY)
    steady("a still one stands", lambda: stage.desk.shows(*place, GREY), 0.6)
    bus.close()


# ANIM-04
@story("moving: a picture that comes once stops at its last frame, and is asked for nothing any more")
def ends(stage):
    # The library that writes them says nothing of loops where none is asked for: once.
    frames = [Image.new("RGB", SIZE, colour) for colour in (RED, GREEN)]
    frames[0].save(stage.media / "once.gif", save_all=True, append_images=frames[1:], duration=200)
    start(stage, stage.media / "once.gif")
    place = middle_of_screen(stage)
    stage.desk.wait_for_colour(*place, GREEN)
    steady("the last frame stays", lambda: stage.desk.shows(*place, GREEN), 1)


# ANIM-09
@story("moving: in a plain start, and with an interval, the first frame stands")
def stands(stage):
    path = moving(stage.media / "a.gif", (RED, GREEN, BLUE))
    place = middle_of_screen(stage)
    for settings in ({"CONVENIENCES": "OFF"}, {"INTERVAL": 30}):
        start(stage, path, **settings)
        stage.desk.wait_for_colour(*place, RED)
        steady(f"the first one stands: {settings}", lambda: stage.desk.shows(*place, RED), 1)
        stage.player.stop()


# ANIM-12
@story("moving: a flood of large frames leaves the panel its keys")
def flood(stage):
    many = [RED, GREEN] * 40
    start(stage, moving(stage.media / "flood.gif", many, ms=0, size=(1600, 1200)), picture(stage.media / "c.jpg", GREY), IMAGEZOOM=5)
    sees(stage, (RED, GREEN))
    with in_time(stage, "the next one", 2):
        stage.player.key("period")
        wait("the next one", lambda: stage.desk.shows(*middle_of_screen(stage), GREY), 10)
