# SPDX-License-Identifier: GPL-3.0-or-later
"""Today's ways of the mouse and the keys: with the convenience, and the same acts on a plain start."""

import time

import numpy as np

from harness.expect import SLACK, check, equal, standing, steady, wait
from harness.media import movie, picture, steps
from harness.player import DISPLAY_RECORD, KNOB_RECORD, SLIDER_RECORD, TIME_RECORD, VOLUME_DOWN, sink_volume
from harness.signs import media_windows, middle_of_screen, told, wait_for_told
from harness.story import story

TONES = (400, 500, 630, 800, 1000, 1250)  # each for ten seconds
EACH = 10
FILM_SECONDS = round(60 * max(1, SLACK / 2))  # longer than anybody looks at it
GREEN, VIOLET = "#32A046", "#8232B4"
WHEEL_AWAY, WHEEL_BACK = 4, 5
LEVELS = 15
TURN_AFTER, TURN_EVERY = 0.4, 0.12  # seconds of a volume button that is held


def start_sound(stage, **settings):
    song = stage.media / "stairs.wav"
    if not song.exists():
        steps(song, TONES, EACH)
    stage.player.settings(**settings)
    stage.player.start(song)
    stage.player.key("z")
    return stage.sound.wait_for(TONES[0])


def take_keyboard(stage):
    """A click gives the keyboard to the one window beside the panel."""
    stage.desk.click(*middle_of_screen(stage))
    stage.desk.wait_for_keyboard(media_windows(stage)[0])


def time_told(stage):
    """Seconds, of "mm:ss"."""
    minutes, _, seconds = (told(stage, "Time") or "0:0").partition(":")
    return int(minutes) * 60 + int(seconds)


def press_slider(stage, share):
    stage.desk.click(*stage.player.slider(share))


# HAND-01, HAND-06
@story("hands: a press on the slider goes there and plays on, the wheel over it goes five seconds; on a plain start neither does")
def slider(stage):
    start_sound(stage, CONVENIENCES="ON")
    press_slider(stage, 0.75)
    stage.sound.wait_for(TONES[4])
    wait("the time", lambda: 44 <= time_told(stage) <= 48)
    stage.desk.click(*stage.player.slider(0.2), WHEEL_BACK, times=4)
    stage.sound.wait_for(TONES[2])
    stage.desk.click(*stage.player.slider(0.2), WHEEL_AWAY, times=5)
    stage.sound.wait_for(TONES[5])
    stage.player.power_off()
    began = start_sound(stage)
    press_slider(stage, 0.75)
    stage.desk.click(*stage.player.slider(0.75), WHEEL_AWAY, times=4)
    steady("the time that has been heard", lambda: time_told(stage) < stage.sound.now() - began + 4, 1.0)


# HAND-05, HAND-09
@story("hands: the wheel over panel and knob and a held button turn the volume; on a plain start the wheel does nothing")
def volume(stage):
    start_sound(stage, CONVENIENCES="ON")
    full = sink_volume(stage.session)[0]
    stage.desk.click(*stage.player.middle(KNOB_RECORD), WHEEL_BACK, times=3)
    wait("a softer output", lambda: sink_volume(stage.session)[0] < full)
    stage.desk.click(*stage.player.middle(DISPLAY_RECORD), WHEEL_AWAY, times=3)
    wait("the volume as before", lambda: abs(sink_volume(stage.session)[0] - full) < 700)
    pressed = time.monotonic()
    stage.player.hold(VOLUME_DOWN, 1500)
    most = 3 + (time.monotonic() - pressed - TURN_AFTER) / TURN_EVERY
    held = standing("the volume after the release", lambda: sink_volume(stage.session)[0], looks=8)
    levels = (full - held) / full * LEVELS
    check(4 < levels < most, f"{levels:.1f} levels softer, expected five at least and {most:.1f} at most")
    stage.player.power_off()
    start_sound(stage)
    before = sink_volume(stage.session)[0]
    stage.desk.click(*stage.player.middle(KNOB_RECORD), WHEEL_BACK, times=3)
    steady("the volume", lambda: sink_volume(stage.session)[0] == before, 0.6)


# HAND-08
@story("hands: a tip over the slider tells the time under the pointer, another one at another place")
def tip(stage):
    start_sound(stage, CONVENIENCES="ON")
    texts = []
    for share in (0.5, 0.25):
        x, y = stage.player.slider(share)
        stage.desk.rest()
        wait("no tip", lambda: not media_windows(stage))
        stage.desk.move(x - 3, y)
        stage.desk.move(x, y)
        window = wait("a tip", lambda: media_windows(stage), 4)[0]
        stage.leave_picture(f"tip_{int(share * 100)}")
        place = window.x, window.y, window.width, window.height
        wait("the tip's text", lambda: stage.desk.area(*place).std() > 0)
        texts.append(stage.desk.wait_until_still(*place))
    check(texts[0].shape != texts[1].shape or np.abs(texts[0] - texts[1]).max() > 60, "both tips say the same")


# HAND-11, HAND-12
@story("hands: a click on the time shows elapsed, left and total; stopped it opens the settings, as a plain start does")
def time_label(stage):
    start_sound(stage, CONVENIENCES="ON")
    wait("some seconds", lambda: time_told(stage) >= 2)
    stage.player.key("x")
    stage.sound.wait_for_silence()
    stage.desk.click(*stage.player.middle(TIME_RECORD))
    wait("the time that is left", lambda: (told(stage, "Time") or "").startswith("-0:5"))
    stage.leave_picture("left")
    stage.desk.click(*stage.player.middle(TIME_RECORD))
    wait_for_told(stage, "Time", "1:00")
    stage.desk.click(*stage.player.middle(TIME_RECORD))
    wait("the time that has gone", lambda: (told(stage, "Time") or "").startswith("00:0"))
    stage.player.key("c")
    wait_for_told(stage, "Time", "")
    stage.desk.click(*stage.player.middle(TIME_RECORD))
    stage.player.wait_for_text("Top Window")
    stage.player.press_control("Cancel")
    stage.player.wait_for_panel()
    stage.player.power_off()
    start_sound(stage)
    stage.desk.click(*stage.player.middle(TIME_RECORD))
    steady("the time", lambda: (told(stage, "Time") or "").startswith("00:"), 0.6)


def start_movie(stage, **settings):
    film = stage.media / "film.avi"
    if not film.exists():
        movie(film, GREEN, 700, FILM_SECONDS)
    stage.player.settings(DELAYTIME=30, **settings)
    stage.player.start(film)
    stage.player.key("z")
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)


def is_whole(stage):
    """The movie's colour reaches near the screen's left and right edges."""
    return all(stage.desk.shows(x, stage.desk.screen.height // 2, GREEN) for x in (20, stage.desk.screen.width - 20))


def movie_seconds(stage):
    return float(told(stage, "Time") or 0)


# HAND-20, HAND-21
@story("hands: F11 and a double-click take a movie to the whole screen, Escape and they leave it, and it plays on")
def whole_screen(stage):
    start_movie(stage, CONVENIENCES="ON")
    middle = middle_of_screen(stage)
    take_keyboard(stage)
    for enter, leave in (("F11", "F11"), ("F11", "Escape"), (None, "Escape"), (None, None)):
        for key, wanted in ((enter, True), (leave, False)):
            if key:
                stage.desk.key(key)
            else:
                stage.desk.click(*middle, times=2)
            wait(f"the whole screen: {wanted}", lambda: is_whole(stage) == wanted)
            if wanted:
                stage.leave_picture(f"whole_by_{key}")
            before = movie_seconds(stage)
            wait("it plays on", lambda: movie_seconds(stage) > before)
    stage.desk.rest()
    stage.desk.wait_for_colour(*middle, GREEN)
    equal(len(media_windows(stage)), 1, "windows beside the panel")


# HAND-20, HAND-21, FIND-10, FIND-17
@story("hands: over a movie that fills the screen the window that finds an entry opens by Ctrl+F, is seen and plays; Escape leaves the screen")
def find_over_whole_screen(stage):
    songs = [steps(stage.media / "stairs.wav", TONES, EACH)]
    film = movie(stage.media / "film.avi", GREEN, 700, FILM_SECONDS)
    stage.player.settings(DELAYTIME=30)
    stage.player.start("--open", film, *songs)
    middle = middle_of_screen(stage)
    stage.desk.wait_for_colour(*middle, GREEN)
    stage.desk.click(*middle, times=2)
    wait("the whole screen", lambda: is_whole(stage))
    stage.desk.key("ctrl+f")
    window = stage.player.wait_for_window("Find")
    stage.desk.wait_for_keyboard(window)
    wait("it is seen", lambda: not stage.desk.shows(window.x + 12, window.y + 12, GREEN))
    stage.leave_picture("find")
    check(is_whole(stage), "the movie does not fill the screen any more")
    stage.desk.key("Escape")
    stage.player.wait_for_no_window("Find")
    check(is_whole(stage), "Escape of the window went to the movie as well")
    wait("the movie has the keyboard", lambda: stage.desk.focused() in [each.id for each in media_windows(stage)])
    stage.desk.key("ctrl+j")
    stage.desk.wait_for_keyboard(stage.player.wait_for_window("Find"))
    stage.desk.type("stairs")
    stage.desk.key("Return")
    stage.sound.wait_for(TONES[0])
    wait_for_told(stage, "FileNo", "002")
    wait("no movie on the screen", lambda: not stage.desk.shows(*middle, GREEN))


# HAND-30
@story("hands: on a plain start F11, Escape, arrows and the wheel do nothing to a movie, and a double-click minimises it")
def plain_movie(stage):
    start_movie(stage)
    middle = middle_of_screen(stage)
    take_keyboard(stage)
    stage.desk.key("F11", "Right", "Right", "Right", "Right", "Right", "Right", "Escape")
    stage.desk.click(*middle, WHEEL_AWAY, times=6)
    steady("a movie in its window", lambda: not is_whole(stage) and movie_seconds(stage) < 25, 0.6)
    stage.desk.click(*middle, times=2)
    wait("it is minimised", lambda: not stage.desk.shows(*middle, GREEN))


# HAND-27
@story("hands: Left and Right and the wheel go five seconds through a movie")
def seek_movie(stage):
    start_movie(stage, CONVENIENCES="ON")
    stage.player.key("x")
    stage.sound.wait_for_silence()
    before = float(standing("the time while paused", lambda: told(stage, "Time")))
    middle = middle_of_screen(stage)
    take_keyboard(stage)
    stage.desk.key("Right", "Right", "Right", "Left")
    wait("ten seconds on", lambda: abs(movie_seconds(stage) - before - 10) < 0.5)
    stage.desk.click(*middle, WHEEL_AWAY, times=4)
    wait("thirty seconds on", lambda: abs(movie_seconds(stage) - before - 30) < 0.5)


# HAND-26, HAND-28
@story("hands: in a picture's window Right shows the next picture, F11 enlarges it to the screen, Escape takes it back")
def pictures(stage):
    picture(stage.media / "green.bmp", GREEN)
    picture(stage.media / "violet.bmp", VIOLET, (320, 200))
    stage.player.settings(CONVENIENCES="ON")
    stage.player.start(stage.media / "green.bmp", stage.media / "violet.bmp")
    stage.player.key("z")
    middle = middle_of_screen(stage)
    stage.desk.wait_for_colour(*middle, GREEN)
    take_keyboard(stage)
    stage.desk.rest()
    stage.desk.key("F11")
    wait("the whole screen", lambda: is_whole(stage))
    stage.leave_picture("whole")
    stage.desk.key("Right")
    stage.desk.wait_for_colour(*middle, VIOLET)
    stage.desk.wait_for_colour(20, middle[1], VIOLET)
    stage.desk.key("Escape")
    wait("its own size", lambda: not stage.desk.shows(20, middle[1], VIOLET))
    stage.desk.wait_for_colour(*middle, VIOLET)
    stage.desk.key("Left")
    stage.desk.wait_for_colour(*middle, GREEN)
