# SPDX-License-Identifier: GPL-3.0-or-later
"""Every kind in one list, heard and seen; movies and pictures at every zoom."""

import time

from harness import PROJECT
from harness.expect import StoryFailure, check, equal, steady, wait
from harness.media import disc, movie, picture, tone
from harness.player import NEXT, PAUSE, PLAY, STOP
from harness.sound import read_notes, same_pitch
from harness.story import story

RED, GREEN, BLUE, YELLOW, VIOLET, ORANGE = "#C83232", "#32A046", "#3250C8", "#C8B432", "#8232B4", "#D8782A"
BLACK = "#000000"
SECONDS = 1.6  # of each sound and movie
PICTURE_SECONDS = 2
DISC_TONES = (622, 831)


def mixed_list(stage):
    """Twelve files of every kind; returns (paths, what is heard, what is seen, environment)."""
    sheet, tracks = disc(stage.media, DISC_TONES, SECONDS + 1)
    chime = stage.media / "chime.mid"
    chime.symlink_to(PROJECT / "samples" / "chime.mid")
    notes = [hz for hz, _, _ in read_notes(PROJECT / "samples" / "NOTES.txt")["chime.mid"]]
    entries = [
        (tone(stage.media / "one.wav", 440, SECONDS), [440], None),
        (picture(stage.media / "two.bmp", RED), [], RED),
        (movie(stage.media / "three.avi", GREEN, 700, SECONDS), [700], GREEN),
        (tone(stage.media / "four.mp3", 554, SECONDS), [554], None),
        (picture(stage.media / "five.jpg", BLUE), [], BLUE),
        (tracks[0], [DISC_TONES[0]], None),
        (chime, notes, None),
        (movie(stage.media / "seven.mov", YELLOW, 932, SECONDS), [932], YELLOW),
        (picture(stage.media / "eight.gif", VIOLET), [], VIOLET),
        (tone(stage.media / "nine.au", 494, SECONDS), [494], None),
        (movie(stage.media / "ten.mpg", ORANGE, 370, SECONDS), [370], ORANGE),
        (tracks[1], [DISC_TONES[1]], None),
    ]
    heard = [hz for _, tones, _ in entries for hz in tones]
    seen = [colour for _, _, colour in entries if colour]
    return [path for path, _, _ in entries], heard, seen, {"CORVANE_CDROM": str(sheet)}


def watch_colours(stage, colours, until, seconds):
    """Which of the colours stood in the middle of the screen, in order, each once as long as it stays."""
    middle = stage.desk.screen.width // 2, stage.desk.screen.height // 2
    seen = []

    def look():
        for colour in colours:
            if stage.desk.shows(*middle, colour):
                if not seen or seen[-1] != colour:
                    seen.append(colour)
        return until(seen)

    try:
        wait("the list's end", look, seconds)
    except StoryFailure as failure:
        heard = ", ".join(str(t) for t in stage.sound.tones())
        raise StoryFailure(f"{failure}; seen {seen}; heard {heard}") from None
    return seen


@story("mixed list: twelve files of every kind are heard and seen in order")
def every_kind(stage):
    paths, heard, seen, environment = mixed_list(stage)
    stage.player.settings(AUTOPLAY="ON", INTERVAL=PICTURE_SECONDS, DELAYTIME=200)
    stage.player.save_list(paths)
    stage.player.start(**environment)
    shown = watch_colours(stage, set(seen), lambda so_far: len(so_far) >= len(seen) and same_pitch(stage.sound.pitch_now(), heard[-1]), 60)
    equal(shown, seen, "colours seen")
    stage.sound.wait_for_silence(6, lasting=1.0)
    stage.sound.expect_order(heard)
    stage.player.wait_for_no_window("Window|three|seven|ten")
    check(stage.player.find_panel() is not None, "the panel is gone")


@story("mixed list: next goes through every kind and leaves no window behind")
def next_through_every_kind(stage):
    paths, _, _, environment = mixed_list(stage)
    stage.player.settings(INTERVAL=60, DELAYTIME=50)
    stage.player.save_list(paths)
    stage.player.start(**environment)
    stage.player.press(PLAY)
    for number in range(2, len(paths) + 1):
        stage.player.press(NEXT)
        wait(f"one window at most beside the panel at file {number}", lambda: len(stage.player.windows()) <= 2, 3)
    stage.player.press(STOP)
    wait("only the panel", lambda: len(stage.player.windows()) == 1, 3)
    stage.sound.wait_for_silence()


@story("pictures: a slide show changes at its interval, and pausing holds the picture")
def slide_show(stage):
    colours = (RED, GREEN, BLUE)
    files = [picture(stage.media / f"{number}.bmp", colour) for number, colour in enumerate(colours)]
    middle = stage.desk.screen.width // 2, stage.desk.screen.height // 2
    stage.player.settings(INTERVAL=2)
    stage.player.start(*files)
    stage.player.press(PLAY)
    stage.desk.wait_for_colour(*middle, RED)
    began = time.monotonic()
    stage.desk.wait_for_colour(*middle, GREEN, 4)
    shown = time.monotonic() - began
    check(1.6 < shown < 2.6, f"the first picture was shown {shown:.2f} s")
    stage.player.press(PAUSE)
    steady("the paused picture", lambda: stage.desk.shows(*middle, GREEN), 2.6)
    stage.player.press(PLAY)
    stage.desk.wait_for_colour(*middle, BLUE, 4)
    wait("the picture goes at the list's end", lambda: len(stage.player.windows()) == 1, 6)


def media_window(stage):
    """The one window beside the panel, once there is one."""
    def others():
        return [w for w in stage.player.windows() if w.id != stage.player.window.id]

    return wait("a media window", others, 6)[0]


@story("movies: a double-click leaves the play state alone and minimises")
def double_click(stage):
    film = movie(stage.media / "film.avi", GREEN, 700, 12)
    stage.player.settings(DELAYTIME=50)
    stage.player.start(film)
    stage.player.press(PLAY)
    stage.sound.wait_for(700)
    window = media_window(stage)
    stage.desk.wait_for_colour(*window.middle, GREEN)
    stage.desk.click(*window.middle, times=2)
    wait("the movie is minimised", lambda: len(stage.player.windows()) == 1)
    steady("the movie's sound", lambda: stage.sound.pitch_now() > 0, 1)


@story("movies: dragging its picture moves the window")
def drag_movie(stage):
    film = movie(stage.media / "film.avi", GREEN, 700, 12)
    stage.player.settings(DELAYTIME=50)
    stage.player.start(film)
    stage.player.press(PLAY)
    window = media_window(stage)
    stage.desk.wait_for_colour(*window.middle, GREEN)
    x, y = window.middle
    stage.desk.drag((x, y), (x - 200, y - 150), steps=50)

    def moved():  # less the way that makes a press a drag
        now = media_window(stage)
        return abs(now.x - window.x + 200) <= 16 and abs(now.y - window.y + 150) <= 16

    wait("the movie at its new place", moved)


@story("movies: full screen shows nothing else and its keys still command")
def full_screen(stage):
    film = movie(stage.media / "film.avi", YELLOW, 700, 12)
    stage.player.settings(DELAYTIME=50, MOVIEZOOM=5)
    stage.player.start(film)
    stage.player.press(PLAY)
    screen = stage.desk.screen
    for x, y in ((screen.width // 2, screen.height // 2), (10, 10), (screen.width - 10, screen.height - 10)):
        stage.desk.wait_for_colour(x, y, YELLOW)
    stage.desk.key("c")
    wait("only the panel", lambda: len(stage.player.windows()) == 1)
    stage.sound.wait_for_silence()
