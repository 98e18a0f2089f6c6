# SPDX-License-Identifier: GPL-3.0-or-later
"""Places inside a file: double speed, steps of a second, a piece between two positions. Each second of what is played has a
tone and a colour of its own, so that what is heard and seen tells where it stands."""

import statistics
import time

from harness import ladder
from harness.expect import check, equal, standing, steady, wait
from harness.media import tone
from harness.panel_watch import PanelWatch, Standing, table
from harness.player import NEXT, PAUSE, PLAY, PREVIOUS, STOP
from harness.story import story

AFTER = 1500  # hertz of the file behind the ladder
HOLD_SECONDS, HOLD_BEGINS = 5.0, 0.75
RATE_ERROR = 0.1  # a part: the edges of seconds are known to 0.05 s each
SETTLED = 0.5  # seconds in which another rate has come to the screen and the ear
LOOK_BEHIND = 0.6  # seconds behind a stop: a movie looks four times a second where it stands, and what is decoded still sounds
HEAR_ERROR = 0.2  # seconds: a tone's ends are known to 0.05 each, a busy machine starts a sound late
PIECE_SECONDS = 3
START_POSITION, STOP_POSITION, CUSTOM_REPEAT = (), ("Down",), ("Up",)  # keys from the first entry of Play Custom


def middle(stage):
    return stage.desk.screen.width // 2, stage.desk.screen.height // 2


def time_text(stage):
    """What the panel's time says."""
    return stage.accessibility.labels(stage.player.process.pid).get("Time", [0, "", 0])[1]


def choose(stage, *keys):
    """Opens the menu by the right button, goes into Play Custom, and chooses there by keys."""
    def windows():
        return {w.id for w in stage.player.windows()}

    before = windows()
    stage.desk.click(stage.player.window.x + 200, stage.player.window.y + 30, button=3)
    wait("the menu", lambda: len(windows() - before) == 1)
    stage.desk.key("Down", "Down", "Down", "Right")
    wait("Play Custom", lambda: len(windows() - before) == 2)
    stage.desk.key(*keys, "Return")
    wait("the menu goes", lambda: not windows() - before)
    stage.desk.rest()


def pause_in(stage, second):
    """Pauses well inside that second of the ladder, so that no error of the ear makes another second of it; returns where it
    stands, by what was heard of it, in seconds."""
    def heard_enough():
        last = ladder.seconds_heard(stage.sound.tones(stage.sound.now() - 1.5))[-1:]
        return any(heard == second and end - begin >= 2 * HEAR_ERROR for heard, begin, end in last)

    wait(f"{2 * HEAR_ERROR} s of second {second}", heard_enough, 10)
    stage.player.press(PAUSE)
    silent = stage.sound.wait_for_silence()
    last, begin, end = ladder.seconds_heard(stage.sound.tones(0, silent + 0.2))[-1]
    return last + end - begin


def first_step(stage, paused):
    """Steps on from where a movie is paused, by what was heard, to the whole second that it tells then."""
    before = time_text(stage)
    stage.player.press(NEXT)
    second = int(wait("a whole second", lambda: (now := time_text(stage)) != before and now.isdigit() and now))
    nearest = {round(paused + error) for error in (-HEAR_ERROR, HEAR_ERROR)}  # near a half it may be either
    check(second - 1 in nearest, f"paused at {paused:.2f} it steps to {second}")
    return second


def leave_trace(stage, watch):
    """Leaves what was heard, seen and told, to be read."""
    heard = [Standing(t.hz, watch.clock(t.start), watch.clock(t.end)) for t in stage.sound.tones()]
    stage.leave_text("panel", table(watch, heard, [s for s in watch.middle(ladder.COLOURS) if s.what]))


def check_rate(what, points, begin, end, rate):
    """Between two times the position runs at a rate. points: [(when, position)]; on a busy machine some are seen late, which the
    middle one of all rates between those that lie far apart does not mind."""
    inside = [point for point in points if begin <= point[0] <= end]
    check(len(inside) >= 3, f"{what}: only {len(inside)} positions between {begin:.2f} and {end:.2f} of {points}")
    far = (inside[-1][0] - inside[0][0]) / 2
    measured = statistics.median((later - position) / (last - first) for first, position in inside for last, later in inside if last - first >= far)
    check(abs(measured / rate - 1) <= RATE_ERROR, f"{what}: rate {measured:.2f}, expected {rate}: {inside}")


# BTN-24, BTN-34, SEQ-27
@story("pieces: next held on a movie plays it at twice its speed until it is let go")
def double_speed(stage):
    stage.player.settings(DELAYTIME=50)
    stage.player.start(ladder.movie(stage.media / "film.avi"), tone(stage.media / "after.wav", AFTER, 4))
    with PanelWatch(stage) as watch:
        stage.player.press(PLAY)
        stage.sound.wait_for(ladder.TONES[1], 8)
        called = time.monotonic()
        stage.player.hold(NEXT, HOLD_SECONDS * 1000)
        returned = time.monotonic()
        stage.desk.rest()
        stage.sound.wait_for(ladder.TONES[16], 15)
    leave_trace(stage, watch)
    # The button went down at some time from the call to so long before the return, and up so long behind that.
    fast, slow = (returned - HOLD_SECONDS + HOLD_BEGINS + SETTLED, called + HOLD_SECONDS), (returned + SETTLED, returned + 60)
    seen = [(s.first, ladder.COLOURS.index(s.what)) for s in watch.middle(ladder.COLOURS) if s.what]
    heard = [(watch.clock(begin), second) for second, begin, _ in ladder.seconds_heard(stage.sound.tones())]
    told = [(s.first, float(s.what)) for s in watch.texts()["Time"] if s.what]
    for what, points in (("seen", seen), ("heard", heard), ("told", told)):
        check_rate(f"{what} while it was held", points, *fast, 2)
        check_rate(f"{what} afterwards", points, *slow, 1)
    # Where the lines of both rates meet is when the rate changed: behind the 750 ms of a hold, and at the release.
    during, after = (statistics.median(when - second / rate for when, second in seen if begin <= when <= end)
                     for (begin, end), rate in ((fast, 2), (slow, 1)))
    before = [when - second for when, second in seen if when <= called][-1]
    began, ended = 2 * during - before, 2 * during - after
    check(called + HOLD_BEGINS <= began + SETTLED / 2 and began <= returned - HOLD_SECONDS + HOLD_BEGINS + SETTLED,
          f"held from {called:.2f}, it ran twice as fast from {began:.2f}")
    check(called + HOLD_SECONDS - SETTLED / 2 <= ended <= returned + SETTLED,
          f"let go by {returned:.2f}, it ran twice as fast to {ended:.2f}")
    equal({s.what for s in watch.texts()["FileNo"]}, {"001"}, "files shown")


# MOVE-07, MOVE-17, MOVE-29
@story("pieces: while a movie is paused next and previous step one second, and its frame is shown")
def movie_steps(stage):
    stage.player.settings(DELAYTIME=50)
    stage.player.start(ladder.movie(stage.media / "film.avi"), tone(stage.media / "after.wav", AFTER, 4))
    stage.player.press(PLAY)
    paused = pause_in(stage, 2)
    told = float(standing("the time", lambda: time_text(stage) or None))
    check(abs(told - paused) < HEAR_ERROR, f"the time says {told}, heard up to {paused:.2f}")
    wait(f"the frame at {told}", lambda: stage.desk.shows(*middle(stage), ladder.COLOURS[int(told)]))

    def stands(second):
        return time_text(stage) == str(second) and stage.desk.shows(*middle(stage), ladder.COLOURS[second])

    def step(button, second):
        stage.player.press(button)
        wait(f"second {second} told and seen", lambda: stands(second))
        wait(f"the bar at second {second}", lambda: abs(stage.player.slider_fraction() - second / ladder.SECONDS) < 0.02)

    began = stage.sound.now()
    second = first_step(stage, paused)
    for _ in range(3):
        second += 1
        step(NEXT, second)
    while second > 0:
        second -= 1
        step(PREVIOUS, second)
    stage.player.press(PREVIOUS)  # none before the first
    steady("the first second", lambda: stands(0), 0.5)
    step(NEXT, 1)
    equal(stage.sound.tones(began), [], "heard while paused")
    began = stage.sound.now()
    stage.player.press(PLAY)
    stage.sound.wait_for(ladder.TONES[2])
    equal(ladder.second_of(stage.sound.first_tone(began).hz), 1, "second from which it went on")


def sound_file(stage):
    return ladder.sound(stage.media / "ladder.wav"), {}


def movie_file(stage):
    return ladder.movie(stage.media / "ladder.avi"), {}


def track_file(stage):
    sheet, tracks = ladder.track(stage.media, AFTER)
    return tracks[0], {"CORVANE_CDROM": str(sheet)}


def mark_piece(stage, movie):
    """Sets the start position in second 2 and the stop position three steps on; returns both, in seconds as they are kept."""
    start = pause_in(stage, 2)
    if movie:  # kept in whole seconds: a step goes to one
        start = first_step(stage, start)
    choose(stage, *START_POSITION)
    for _ in range(PIECE_SECONDS):
        before = wait("the time", lambda: time_text(stage))
        stage.player.press(NEXT)
        wait("the step", lambda: time_text(stage) not in ("", before))
    choose(stage, *STOP_POSITION)
    return start, start + PIECE_SECONDS


def check_pieces(heard, start, stops, at_least):
    """Each piece begins at the start and ends behind the stop (all behind the same one of `stops`), as soon as the position is
    looked at."""
    check(len(heard) >= at_least, f"{len(heard)} pieces heard, expected {at_least}: {heard}")
    for begin, end in heard:
        check(abs(begin - start) <= HEAR_ERROR, f"a piece begins at {begin:.2f}, expected {start:.2f}: {heard}")
    check(any(all(-HEAR_ERROR <= end - stop <= LOOK_BEHIND for _, end in heard) for stop in stops),
          f"pieces do not end behind {stops}: {heard}")


def play_piece(stage, make, movie=False, whole_stop=False):
    """A piece is marked, repeated three times, left when it is not to be repeated any more, and played alone from then on."""
    path, environment = make(stage)
    stage.player.settings(DELAYTIME=50)
    stage.player.start(path, tone(stage.media / "after.wav", AFTER, 8), **environment)
    stage.player.press(PLAY)
    start, stop = mark_piece(stage, movie)
    # The whole second of the stop, which near its edge the ear cannot tell from the next one.
    ends = sorted({int(stop + error) + 1 for error in (-HEAR_ERROR, HEAR_ERROR)}) if whole_stop else [stop]
    choose(stage, *CUSTOM_REPEAT)
    began = stage.sound.now()
    stage.player.press(PLAY)

    def rounds_heard():
        """By a second that is heard whole in each."""
        return [second for second, _, _ in ladder.seconds_heard(stage.sound.tones(began))].count(int(start) + 2)

    wait("three rounds", lambda: rounds_heard() >= 3, 25, 0.2)
    choose(stage, *CUSTOM_REPEAT)  # custom play goes on, without repeat
    stage.sound.wait_for(AFTER, 10)
    left = stage.sound.now()
    rounds = ladder.pieces(stage.sound.tones(began, left))
    if rounds[0][0] >= int(stop):  # what was left where the stop was set
        rounds.pop(0)
    check_pieces(rounds, start, ends, 3)

    stage.player.press(STOP)
    stage.sound.wait_for_silence()
    stage.player.press(PREVIOUS)
    began = stage.sound.now()
    stage.player.press(PLAY)
    stage.sound.wait_for(AFTER, 15)
    alone = ladder.pieces(stage.sound.tones(began))
    equal(len(alone), 1, "pieces of the file played alone")
    check_pieces(alone, start, ends, 1)


# OPEN-26, MCI-14, MCI-15, MENU-18, MENU-20, MENU-25, MENU-26
@story("pieces: a piece of a sound is repeated, and with repeat off played alone")
def piece_of_sound(stage):
    play_piece(stage, sound_file)


# MOVIE-10, MOVIE-23, MOVIE-24, MENU-18, MENU-20, MENU-26
@story("pieces: a piece of a movie is repeated, and with repeat off played alone")
def piece_of_movie(stage):
    play_piece(stage, movie_file, movie=True)


# OPEN-33, MCI-13, MCI-15, MCI-16, MENU-18, MENU-20, MENU-26
@story("pieces: a piece of a track is repeated, and with repeat off played alone")
def piece_of_track(stage):
    play_piece(stage, track_file, whole_stop=True)  # the stop's second itself is played
