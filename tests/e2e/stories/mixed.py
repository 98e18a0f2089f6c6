# SPDX-License-Identifier: GPL-3.0-or-later
"""Every kind in one list, heard, seen and told by the panel's texts; movies and pictures while they play."""

import dataclasses
import pathlib
import time

from harness import PROJECT
from harness.expect import check, equal, steady, wait
from harness.in_time import Held
from harness.media import disc, movie, picture, tone
from harness.panel_watch import PanelWatch, Standing, table
from harness.player import NEXT, PAUSE, PLAY, STOP
from harness.signs import wait_for_entry
from harness.sound import read_notes
from harness.story import story

RED, GREEN, BLUE, YELLOW, VIOLET, ORANGE = "#C83232", "#32A046", "#3250C8", "#C8B432", "#8232B4", "#D8782A"
BLACK = "#000000"
SECONDS = 3.2  # of each sound and movie: long enough for the time to count
PICTURE_SECONDS = 3
DISC_TONES = (622, 831)
# What is heard is known to half a window of the analysis (0.05 s), what is drawn to a look and the time of drawing it.
CHANGE = 0.25  # seconds in which sound, picture and texts go from one file to the next
EARLY, LATE = 0.3, 0.5  # seconds that the time may be ahead of what is heard, or behind; together less than the second it tells
MOVIE_STEP = 0.25  # seconds between two times of a movie
BAR_ERROR = 0.15  # seconds
LONGEST_GAP = 0.2  # seconds of a sound that a busy machine may drop


@dataclasses.dataclass
class Entry:
    """A file of the list: what it is told to be, what is heard, what is seen, the length that the panel's bar
    stands for, and how long each of its tones is heard."""

    path: pathlib.Path
    kind: str
    tones: tuple = ()
    colour: str | None = None
    length: float = SECONDS
    sounding: float | None = SECONDS  # seconds; None: notes that are not counted

    @property
    def counts_plainly(self):
        """A movie's time is plain seconds with a fraction; any other's is minutes and whole seconds."""
        return bool(self.tones and self.colour)


def mixed_list(stage, seconds=SECONDS):
    """Twelve files of every kind, the sounds and movies so long; returns ([Entry], environment)."""
    sheet, tracks = disc(stage.media, DISC_TONES, seconds + 1)
    chime = stage.media / "chime.mid"
    chime.symlink_to(PROJECT / "samples" / "chime.mid")
    notes = read_notes(PROJECT / "samples" / "NOTES.txt")["chime.mid"]
    _, last, length = notes[-1]

    def sound(name, kind, hz):
        return Entry(tone(stage.media / name, hz, seconds), kind, (hz,), None, seconds, seconds)

    def film(name, kind, colour, hz):  # its length is told in whole seconds
        return Entry(movie(stage.media / name, colour, hz, seconds), kind, (hz,), colour, round(seconds), seconds)

    def still(name, kind, colour):
        return Entry(picture(stage.media / name, colour), kind, (), colour, PICTURE_SECONDS)

    def track(number):  # its length and its time are whole seconds
        return Entry(tracks[number], "CD Audio Now On Play", (DISC_TONES[number],), None, int(seconds + 1), seconds + 1)

    entries = [
        sound("one.wav", "Sound File Now On Play", 440), still("two.bmp", "BMP IMAGE", RED),
        film("three.avi", "Video File Now On Play", GREEN, 700), sound("four.mp3", "MP3 File Now On Play", 554),
        still("five.jpg", "JPG IMAGE", BLUE), track(0),
        Entry(chime, "MIDI File Now On Play", tuple(hz for hz, _, _ in notes), None, last + length, None),
        film("seven.mov", "Quick Time File Now On Play", YELLOW, 932), still("eight.gif", "GIF IMAGE", VIOLET),
        sound("nine.au", "Sound File Now On Play", 494), film("ten.mpg", "Mpeg File Now On Play", ORANGE, 370), track(1),
    ]
    return entries, {"CORVANE_CDROM": str(sheet)}


def told_between(watch, standings, begin, end):
    """What stood there between two times, less the change from file to file at both: [(what, first, last)]."""
    late = watch.held(begin - CHANGE, begin + 4 * CHANGE)
    parts = [(s.what, s.overlap(begin + CHANGE + late, end - CHANGE)) for s in standings]
    return [(what, *part) for what, part in parts if part]


def seconds_of(text):
    minutes, _, seconds = text.rpartition(":")
    return int(minutes or 0) * 60 + float(seconds)


def check_texts(watch, number, entry, begin, end, in_all):
    """From begin to end, when a file was heard or seen, the panel says what it is, where it stands and how far that is."""
    check(end - begin > 4 * CHANGE, f"file {number} was heard or seen for {end - begin:.2f} s only")
    texts = watch.texts()
    for name, wanted in (("FileNo", f"{number:03}"), ("Tittle", entry.path.stem), ("Display", entry.kind),
                         ("Total FileNo", f"{in_all}")):
        equal({what for what, _, _ in told_between(watch, texts[name], begin, end)}, {wanted}, f"{name} while file {number} plays")
    times = told_between(watch, texts["Time"], begin, end)
    step = MOVIE_STEP if entry.counts_plainly else 1
    for text, first, last in times:
        equal(":" not in text, entry.counts_plainly, f"{text}, the time of file {number}, is plain seconds")
        told = seconds_of(text)
        stood = f"{text} stood there from {first - begin:.2f} to {last - begin:.2f} s of file {number}"
        late = LATE + watch.held(begin + told + step - CHANGE, last)
        check(told - EARLY <= first - begin and last - begin <= told + step + late, stood)
    check(times and times[-1][2] - times[0][1] > (end - begin) / 2, f"the time of file {number}: {times}")
    check_bar(watch, number, entry, times)


def check_bar(watch, number, entry, times):
    """The slider's bar stands where the time says, of the file's length."""
    bar = watch.bar()
    for text, first, last in times:
        for part in (s for s in bar if s.overlap(first, last) and s.last - s.first > BAR_ERROR):
            position = part.what * entry.length - seconds_of(text)
            check(-BAR_ERROR <= position <= 1 + BAR_ERROR,
                  f"file {number}: the bar at {part.what:.2f} of {entry.length} s, the time {text}")


def leave_trace(stage, watch, tones, colours):
    """Leaves what was heard, seen and told, to be read."""
    heard = [Standing(t.hz, watch.clock(t.start), watch.clock(t.end)) for t in tones]
    stage.leave_text("panel", table(watch, heard, colours))


# DISP-11, KIND-05, KIND-18, OPEN-16, OPEN-18, TIME-08, MCI-07, MCI-08, MOVIE-20, MOVIE-21, IMG-03
@story("mixed list: twelve files of every kind are heard, seen and told by the panel in order")
def every_kind(stage):
    entries, environment = mixed_list(stage)
    stage.player.settings(INTERVAL=PICTURE_SECONDS, DELAYTIME=200)
    stage.player.save_list([entry.path for entry in entries])
    stage.player.start(**environment)
    with PanelWatch(stage) as watch:
        stage.player.press(PLAY)
        stage.desk.rest()
        stage.sound.wait_for(DISC_TONES[-1], 90)
        stage.sound.wait_for_silence(10, lasting=1.0)
    wanted = [entry.colour for entry in entries if entry.colour]
    colours = [s for s in watch.middle(wanted) if s.what]
    leave_trace(stage, watch, stage.sound.tones(), colours)
    equal([s.what for s in colours], wanted, "colours seen")
    expected = [(hz, entry.sounding) for entry in entries for hz in entry.tones]
    sounds, shown = iter(stage.sound.expect_exactly(expected, longest_gap=LONGEST_GAP)), iter(colours)
    for number, entry in enumerate(entries, 1):
        sounding = [next(sounds) for _ in entry.tones]
        if sounding:
            check_texts(watch, number, entry, watch.clock(sounding[0].start), watch.clock(sounding[-1].end), len(entries))
        if entry.colour:
            standing = next(shown)
            check_texts(watch, number, entry, standing.first, standing.last, len(entries))
    stage.player.wait_for_no_window("Window|three|seven|ten")
    check(stage.player.find_panel() is not None, "the panel is gone")


# MOVE-13
@story("mixed list: next goes through every kind and leaves no window behind")
def next_through_every_kind(stage):
    entries, environment = mixed_list(stage)
    stage.player.settings(INTERVAL=60, DELAYTIME=50)
    stage.player.save_list([entry.path for entry in entries])
    stage.player.start(**environment)
    stage.player.press(PLAY)
    wait_for_entry(stage, 1, entries[0])
    for number, entry in enumerate(entries[1:], 2):
        stage.player.press(NEXT)
        wait_for_entry(stage, number, entry)
    stage.player.press(STOP)
    wait("only the panel", lambda: len(stage.player.windows()) == 1, 3)
    stage.sound.wait_for_silence()


# MOVE-06, IMG-04
@story("pictures: a slide show changes at its interval, and pausing holds the picture")
def slide_show(stage):
    colours = (RED, GREEN, BLUE)
    files = [picture(stage.media / f"{number}.bmp", colour) for number, colour in enumerate(colours)]
    middle = stage.desk.screen.width // 2, stage.desk.screen.height // 2
    stage.player.settings(INTERVAL=2)
    stage.player.start(*files)
    stage.player.press(PLAY)
    stage.desk.wait_for_colour(*middle, RED)
    began, late = time.monotonic(), Held(stage.player)
    stage.desk.wait_for_colour(*middle, GREEN, 8)
    shown, late = time.monotonic() - began, late.seconds()
    check(1.6 - late < shown < 2.6 + late, f"the first picture was shown {shown:.2f} s, the player held for {late:.2f} s")
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


# MOVIE-16
@story("movies: a double-click leaves the play state alone and minimises")
def double_click(stage):
    film = movie(stage.media / "film.avi", GREEN, 700, 30)
    stage.player.settings(DELAYTIME=50)
    stage.player.start(film)
    stage.player.press(PLAY)
    stage.sound.wait_for(700)
    window = media_window(stage)
    stage.desk.wait_for_colour(*window.middle, GREEN)
    stage.desk.click(*window.middle, times=2)
    wait("the movie is minimised", lambda: len(stage.player.windows()) == 1)
    stage.sound.expect_steady(700, 1)


# MOVIE-28
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


# MOVIE-12
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
