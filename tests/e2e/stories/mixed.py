# SPDX-License-Identifier: GPL-3.0-or-later
"""Every kind in one list, heard and seen; movies and pictures at every zoom."""

import time

from harness import PROJECT
from harness.expect import StoryFailure, check, equal, steady, wait
from harness.media import disc, encode, movie, picture, tone
from harness.player import NEXT, PAUSE, PLAY, STOP
from harness.sound import read_notes, same_pitch
from harness.story import story

RED, GREEN, BLUE, YELLOW, VIOLET, ORANGE = "#C83232", "#32A046", "#3250C8", "#C8B432", "#8232B4", "#D8782A"
BLACK = "#000000"
SECONDS = 1.6  # of each sound and movie
PICTURE_SECONDS = 2
DISC_TONES = (622, 831)
EDGE, INSIDE = "#E8E8E8", "#205080"


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


def picture_zooms(screen):
    """Size of a 320 by 240 picture's window at each zoom."""
    sizes = {0: (320, 240), 1: (640, 480)}
    for zoom, share in ((2, 0.25), (3, 0.5), (4, 0.707), (5, 1.0)):
        factor = min(screen.width * share / 320, screen.height * share / 240)
        sizes[zoom] = (320 * factor, 240 * factor)
    return sizes


def movie_zooms(screen):
    """Size of a 320 by 240 movie's window at each zoom; the shares of the screen leave out the control's border."""
    sizes = picture_zooms(screen)
    return {zoom: (width, 238 * width / 320 if zoom in (2, 3, 4) else height) for zoom, (width, height) in sizes.items()}


def media_window(stage):
    """The one window beside the panel, once there is one."""
    def others():
        return [w for w in stage.player.windows() if w.id != stage.player.window.id]

    return wait("a media window", others, 6)[0]


def check_size(window, expected, screen, what):
    check(all(abs(actual - wanted) <= 2 for actual, wanted in zip(window.size, expected)), f"{what}: {window.size}, expected {expected}")
    off = max(abs(window.x - (screen.width - window.width) / 2), abs(window.y - (screen.height - window.height) / 2))
    check(off <= 2, f"{what}: {off} pixels off the middle")


@story("pictures: each of the six zooms has its size in the middle of the screen")
def zoomed_pictures(stage):
    shown = picture(stage.media / "plain.bmp", GREEN)
    for zoom, size in picture_zooms(stage.desk.screen).items():
        stage.player.settings(IMAGEZOOM=zoom)
        stage.player.start(shown)
        stage.player.press(PLAY)
        window = media_window(stage)
        check_size(window, size, stage.desk.screen, f"zoom {zoom}")
        for x, y in ((3, 3), (window.width - 4, 3), (3, window.height - 4), (window.width - 4, window.height - 4)):
            stage.desk.wait_for_colour(window.x + x, window.y + y, GREEN)
        stage.player.key("P")
        stage.player.wait_for_end()


@story("movies: each of the six zooms shows the whole picture")
def zoomed_movies(stage):
    framed = stage.media / "framed.avi"
    encode(["-f", "lavfi", "-i", f"color=0x{INSIDE[1:]}:s=320x240:r=15:d=20,drawbox=t=12:color=0x{EDGE[1:]}", "-c:v", "mjpeg",
            "-q:v", "2"], framed)
    sizes = movie_zooms(stage.desk.screen)
    for zoom in range(6):
        stage.player.settings(MOVIEZOOM=zoom, DELAYTIME=50)
        stage.player.start(framed)
        stage.player.press(PLAY)
        middle = stage.desk.screen.width // 2, stage.desk.screen.height // 2
        stage.desk.wait_for_colour(*middle, INSIDE)
        width, height = sizes[zoom]
        left, top = (stage.desk.screen.width - width) / 2, (stage.desk.screen.height - height) / 2
        if zoom < 5:
            check_size(media_window(stage), (width, height), stage.desk.screen, f"zoom {zoom}")
        edge = 12 * width / 320 / 2
        for x, y in ((left + edge, middle[1]), (left + width - edge, middle[1]), (middle[0], top + edge),
                     (middle[0], top + height - edge)):
            stage.desk.wait_for_colour(x, y, EDGE)
        stage.desk.key("P")
        stage.player.wait_for_end()


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
