# SPDX-License-Identifier: GPL-3.0-or-later
"""Movies that the graphics driver shows, here by software, beside those that are painted: each looks the same."""

import pathlib

import numpy as np
from PIL import Image

from harness.expect import check, steady, wait
from harness.media import encode, picture, tone
from harness.others import OtherProgram
from harness.signs import middle_of_screen, told_surely
from harness.story import story

from .carried import go_through_tracks, save_frames, show_upright
from .zooms import INSIDE, check_whole, film, fitted, go_from_window_to_window, media_window, movie_window, power_off_by_key, start_and_play

DRIVERS = ("swrast_dri", "libgallium", "libEGL_mesa", "libGLX_mesa", "libLLVM")  # parts of the names of what draws by software
DIFFERS = 40  # what two scalers make of an edge
SHOWN_SECONDS = 15  # for the first frame: what draws by software is made while it starts


def driver_parts(stage):
    """Which parts of a driver the program has loaded."""
    maps = pathlib.Path(f"/proc/{stage.player.process.pid}/maps").read_text()
    return [part for part in DRIVERS if part in maps]


def seen_at(stage, shown, size, zoom, **settings):
    """The screen with the movie at a zoom, once it stands still, and where the movie is on it."""
    screen = stage.desk.screen
    start_and_play(stage, shown, MOVIEZOOM=zoom, DELAYTIME=50, **settings)
    place = (0, 0, screen.width, screen.height)
    if zoom < 5:
        window = media_window(stage, movie_window(screen, size, zoom))
        place = (window.x, window.y, *window.size)
    stage.desk.wait_for_colour(screen.width * 0.48, screen.height * 0.48, INSIDE, SHOWN_SECONDS)
    area = stage.desk.wait_until_still(*place)
    return area, place


# MOVIE-48: A movie that the graphics driver shows looks as one that is painted: zooms, windows, texts, scale
@story("graphics: at each of the six zooms a movie looks the same, painted or shown by the driver")
def both_ways(stage):
    for shown, size, frame in (film(stage.media / "small.avi", (320, 240)), film(stage.media / "broad.mov", (640, 272))):
        for zoom in range(6):
            areas = {}
            for way in ("OFF", "ON"):
                what = f"{shown.name} at zoom {zoom}, graphics {way}"
                areas[way], place = seen_at(stage, shown, size, zoom, GRAPHICS=way)
                stage.leave_picture(f"{shown.stem}_zoom{zoom}_{way}")
                check(bool(driver_parts(stage)) == (way == "ON"), f"{what}: of the driver {driver_parts(stage)} is loaded")
                inner, scale = fitted(size, place[2:])
                check_whole(areas[way], inner, scale, frame, what)
                power_off_by_key(stage)
            differs = np.abs(areas["ON"].astype(int) - areas["OFF"].astype(int)).max(axis=2) > DIFFERS
            share = differs.mean()
            check(share < 0.02, f"{shown.name} at zoom {zoom}: {share:.1%} of the pixels differ")


BLUE, RED, TONE = "#2040A0", "#C03020", 523
SIZE = (640, 360)


def two_halves(stage, seconds=40):
    """A film with a sound that is blue in its first half and red in its second."""
    path = stage.media / "film.mov"
    half = seconds // 2
    encode(["-f", "lavfi", "-i", f"color=0x{BLUE[1:]}:s={SIZE[0]}x{SIZE[1]}:r=25:d={half}",
            "-f", "lavfi", "-i", f"color=0x{RED[1:]}:s={SIZE[0]}x{SIZE[1]}:r=25:d={half}",
            "-f", "lavfi", "-i", f"sine=frequency={TONE}:duration={seconds}", "-filter_complex", "[0][1]concat=n=2:v=1[v]", "-map", "[v]",
            "-map", "2", "-c:v", "mpeg4", "-q:v", "2", "-g", "25", "-c:a", "aac"], path)
    return path


class BadDriver:
    """A driver that goes wrong at the start, or in the middle once it is told."""

    def __init__(self, stage, path, wrong, **settings):
        library = stage.theatre.program.parent / "tests" / "libcorvane_driver.so"
        check(library.exists(), f"{library} is not built")
        self.sign = stage.folder / "wrong"
        self.sign.unlink(missing_ok=True)
        stage.player.settings(DELAYTIME=30, GRAPHICS="ON", **settings)
        stage.player.start(path, LD_PRELOAD=str(library), CORVANE_DRIVER=wrong, CORVANE_DRIVER_SIGN=str(self.sign))
        stage.player.key("z")

    def goes_wrong(self):
        self.sign.touch()


def seconds_played(stage):
    return float(told_surely(stage, "Time") or 0)


def check_no_box(stage):
    """One that came up would stay; a movie's window that is just being made bears the program's name for a moment."""
    wait("no box came up", lambda: not stage.player.boxes(), 1)


def check_painted(stage, what):
    """The movie goes on as those that are painted do."""
    before = seconds_played(stage)
    wait(f"{what}: it goes on", lambda: seconds_played(stage) > before + 1, 10)
    stage.sound.wait_for(TONE)
    check_no_box(stage)


# MOVIE-49: A driver that does not start, fails or hangs is left: the movie goes on painted where it was, without a box
@story("graphics: a driver that refuses to start, or hangs as it starts, is done without")
def refuses(stage):
    path = two_halves(stage)
    for wrong in ("refuses", "hangs at once"):
        BadDriver(stage, path, wrong)
        stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE, SHOWN_SECONDS)
        check_painted(stage, wrong)
        power_off_by_key(stage)


# MOVIE-49
@story("graphics: a driver that is lost or hangs in the middle leaves the movie playing, painted, where it was, without a box")
def lost_in_the_middle(stage):
    path = two_halves(stage)
    for wrong in ("lost", "hangs"):
        driver = BadDriver(stage, path, wrong, CONVENIENCES="ON")
        stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE, SHOWN_SECONDS)
        wait("two seconds of it", lambda: seconds_played(stage) > 2)
        before = seconds_played(stage)
        driver.goes_wrong()
        wait("it goes on", lambda: seconds_played(stage) > before + 5, 20)
        check_painted(stage, wrong)
        # The frames that are seen are those of now.
        stage.player.key("Right", "Right", "Right")
        stage.desk.wait_for_colour(*middle_of_screen(stage), RED, seconds=30)
        stage.leave_picture(wrong)
        power_off_by_key(stage)


# MOVIE-49
@story("graphics: a driver that is lost while the movie is paused leaves it paused at its place")
def lost_while_paused(stage):
    path = two_halves(stage)
    driver = BadDriver(stage, path, "lost", CONVENIENCES="ON")
    stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE, SHOWN_SECONDS)
    wait("a second of it", lambda: seconds_played(stage) > 1)
    stage.player.key("x")
    stage.sound.wait_for_silence()
    paused = seconds_played(stage)
    stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE)
    driver.goes_wrong()
    stage.player.key("ctrl+t")  # what it says is to be drawn
    steady("it stays there", lambda: abs(seconds_played(stage) - paused) < 0.3, 2.0)
    stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE)
    check_no_box(stage)
    stage.player.key("z")
    wait("it goes on", lambda: seconds_played(stage) > paused + 1, 10)
    stage.sound.wait_for(TONE)


# MOVIE-39, MOVIE-42, MOVIE-43, MOVIE-48
@story("graphics: subtitles and the texts that say which stand on a movie that the driver shows, and go again")
def tracks(stage):
    go_through_tracks(stage, GRAPHICS="ON")


# MOVIE-38, MOVIE-48
@story("graphics: Ctrl+I saves the frame of a movie that the driver shows")
def frames(stage):
    save_frames(stage, GRAPHICS="ON")


# MOVIE-12, MOVIE-48
@story("graphics: from the whole screen to a picture's window and back to the whole screen, and then to nothing")
def whole_screen(stage):
    go_from_window_to_window(stage, GRAPHICS="ON")


# MOVIE-48
@story("graphics: a paused movie is seen again when its window was covered, minimised, or went and came back")
def uncovered(stage):
    shown, size, frame = film(stage.media / "small.avi", (320, 240))
    screen = stage.desk.screen
    start_and_play(stage, shown, MOVIEZOOM=1, DELAYTIME=50, GRAPHICS="ON", CONVENIENCES="ON")
    window = media_window(stage, (640, 480))
    stage.desk.wait_for_colour(screen.width * 0.48, screen.height * 0.48, INSIDE, SHOWN_SECONDS)
    stage.player.key("x")

    def is_whole(what):
        stage.desk.wait_for_colour(screen.width * 0.48, screen.height * 0.48, INSIDE)
        area = stage.desk.wait_until_still(window.x, window.y, *window.size)
        check_whole(area, (0, 0, *window.size), 2, frame, what)

    is_whole("paused")
    with OtherProgram(stage) as other:
        stage.desk.tool("windowmove", "--sync", other.window.id, window.x + 200, window.y + 150)
        wait("it is covered", lambda: not stage.desk.shows(window.x + 250, window.y + 200, INSIDE))
    is_whole("uncovered")
    for number in range(3):
        stage.desk.tool("windowminimize", window.id)
        wait("it is minimised", lambda: not stage.desk.shows(screen.width * 0.48, screen.height * 0.48, INSIDE))
        stage.desk.tool("windowmap", window.id)
        is_whole(f"restored {number}")
    stage.player.key("ctrl+t")  # there are none, and a text says so
    wait("the text", lambda: (stage.desk.area(window.x + 16, window.y + 16, 300, 40).min(axis=2) > 220).sum() > 60)
    stage.leave_picture("text")


# MOVIE-48
@story("graphics: with one and a half screen pixels to one, a movie looks the same both ways")
def scaled(stage):
    shown, size, _ = film(stage.media / "small.avi", (320, 240))
    areas = {}
    for way in ("OFF", "ON"):
        stage.player.settings(MOVIEZOOM=0, DELAYTIME=50, GRAPHICS=way)
        stage.player.scale = 1.5
        stage.player.start(shown, CORVANE_SCALE="1.5")
        stage.player.key("z")
        stage.desk.rest()
        screen = stage.desk.screen
        window = media_window(stage, (480, 360))
        stage.desk.wait_for_colour(screen.width * 0.48, screen.height * 0.48, INSIDE, SHOWN_SECONDS)
        areas[way] = stage.desk.wait_until_still(window.x, window.y, *window.size)
        stage.leave_picture(way)
        power_off_by_key(stage)
    differs = np.abs(areas["ON"].astype(int) - areas["OFF"].astype(int)).max(axis=2) > DIFFERS
    check(differs.mean() < 0.02, f"{differs.mean():.1%} of the pixels differ")


# MOVIE-50: Nothing of a driver is loaded before a movie is due that it shows
@story("graphics: nothing of the driver is loaded by the start, a sound or a picture, and by a movie only where it is chosen")
def not_before(stage):
    sound, still = tone(stage.media / "tone.wav", 440, 20), picture(stage.media / "still.bmp", "#32A046", (200, 100))
    shown, _, _ = film(stage.media / "small.avi", (320, 240))
    for way, settings in (("without a card", {}), ("chosen", {"GRAPHICS": "ON"})):
        stage.player.settings(DELAYTIME=30, INTERVAL=60, **settings)
        stage.player.start(still, sound, still, still, shown)
        check(not driver_parts(stage), f"{way}, at the start: {driver_parts(stage)}")
        stage.player.key("z")
        stage.desk.wait_for_colour(*middle_of_screen(stage), "#32A046")
        check(not driver_parts(stage), f"{way}, with a picture: {driver_parts(stage)}")
        stage.player.key("period")
        stage.sound.wait_for(440)
        check(not driver_parts(stage), f"{way}, with a sound: {driver_parts(stage)}")
        stage.player.key("period")
        stage.desk.wait_for_colour(*middle_of_screen(stage), "#32A046")
        stage.player.key("period", "period")
        stage.desk.wait_for_colour(*middle_of_screen(stage), INSIDE, SHOWN_SECONDS)
        check(bool(driver_parts(stage)) == bool(settings), f"{way}, with a movie: {driver_parts(stage)}")
        power_off_by_key(stage)


# MEDIA-74, MOVIE-48
@story("graphics: a film that was taken upright by a phone is shown upright by the driver, and saved so")
def upright(stage):
    pictures = stage.media / "Bilder"
    pictures.mkdir()
    (stage.media / "user-dirs.dirs").write_text(f'XDG_PICTURES_DIR="{pictures}"\n')
    show_upright(stage, {"XDG_CONFIG_HOME": str(stage.media)}, GRAPHICS="ON")
    stage.player.key("x", "ctrl+i")
    wait("the frame", lambda: len(list(pictures.iterdir())) == 1)

    def colours():
        try:
            saved = Image.open(next(pictures.iterdir())).convert("RGB")
        except OSError:
            return None
        across, down = saved.size
        places = ((across // 4, down // 4), (across * 3 // 4, down // 4), (across // 4, down * 3 // 4))
        return saved.size, [tuple(saved.getpixel(place)) for place in places]
    size, (first, beside, below) = wait("a whole picture", colours)
    check(size[0] < size[1], f"the frame is {size}")
    check(np.abs(np.subtract(first, beside)).max() < 20 < np.abs(np.subtract(first, below)).max(), f"saved: {first}, {beside}, {below}")
