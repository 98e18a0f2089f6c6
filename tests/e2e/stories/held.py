# SPDX-License-Identifier: GPL-3.0-or-later
"""Windows held by the mouse: the grabbed point stays under the pointer."""

from harness.expect import steady, wait
from harness.media import movie, picture, tone
from harness.others import no_window_manager
from harness.player import PLAY, TITLE_RECORD
from harness.signs import media_windows
from harness.story import story
from stories.windows import node, settings_place

WAYS = ((-60, -50), (-9, 0), (0, 7), (-240, -170), (150, 90), (1, -3))  # to the right and down, pixels
FAR = 10  # pixels along both directions together, from which a press is a drag: the system's
GREEN, VIOLET = "#32A046", "#8232B4"


def place(stage, window):
    return next(((w.x, w.y) for w in stage.player.windows() if w.id == window.id), None)


def check_drags(stage, what, window, grab, at_once, ways=WAYS):
    """Drags the window by a point of it, several times; each time it stands where the pointer has taken it, while the
    button is held and afterwards. at_once: from the first pixel on."""
    expected = place(stage, window)
    for way in ways:
        start = expected[0] + grab[0], expected[1] + grab[1]
        if at_once or abs(way[0]) + abs(way[1]) >= FAR:
            expected = expected[0] + way[0], expected[1] + way[1]
        end = start[0] + way[0], start[1] + way[1]
        stage.desk.drag(start, end, steps=8, release=False)
        wait(f"{what} by {way} at {expected} while it is held, it is at {place(stage, window)}",
             lambda: place(stage, window) == expected)
        stage.desk.tool("mouseup", 1)
        steady(f"{what} by {way} at {expected}", lambda: place(stage, window) == expected, 0.3)


def drag_panel(stage, scale):
    stage.player.scale = scale
    stage.player.start(CORVANE_SCALE=str(scale))
    free = stage.player.scaled((400, 123))
    check_drags(stage, f"the panel at {scale}", stage.player.window, free, at_once=True)
    stage.player.window.x, stage.player.window.y = place(stage, stage.player.window)
    stage.player.power_off()


@story("held: the panel is dragged by the grabbed point from the press on, with and without a window manager")
def hold_panel(stage):
    for scale in (1, 1.5):
        drag_panel(stage, scale)
    with no_window_manager(stage):
        for scale in (1, 1.5):
            drag_panel(stage, scale)


def drag_media(stage, scale):
    files = [stage.media / "film.avi", stage.media / "still.bmp"]
    if not files[0].exists():
        movie(files[0], GREEN, 700, 60)
        picture(files[1], VIOLET)
    for file, colour in zip(files, (GREEN, VIOLET)):
        stage.player.settings(INTERVAL=0, DELAYTIME=30)
        stage.player.scale = scale
        stage.player.start(file, CORVANE_SCALE=str(scale))
        stage.player.press(PLAY)
        window = wait(f"the window of {file.name}", lambda: media_windows(stage))[0]
        stage.desk.wait_for_colour(*window.middle, colour)
        window = media_windows(stage)[0]
        check_drags(stage, f"{file.name} at {scale}", window, (window.width // 3, window.height // 2), at_once=False)
        stage.player.power_off()


@story("held: a movie's and a picture's window are dragged by the grabbed point, with and without a window manager")
def hold_media(stage):
    drag_media(stage, 1)
    drag_media(stage, 1.5)
    with no_window_manager(stage):
        drag_media(stage, 1)


@story("held: the display's free glass drags the panel as its texts do, and a short way there is a click that opens the settings")
def hold_display(stage):
    stage.player.start(tone(stage.media / "a long enough name.wav", 440, 5))
    far = [way for way in WAYS if abs(way[0]) + abs(way[1]) >= FAR]
    glass, title = settings_place(stage.player), stage.player.place(TITLE_RECORD)
    opened = stage.player.window.x, stage.player.window.y
    for what, (x, y) in (("its free glass", glass), ("a text on it", (title[0] + 20, title[1] + title[3] // 2))):
        grab = x - opened[0], y - opened[1]
        check_drags(stage, f"the panel by {what}", stage.player.window, grab, at_once=True, ways=far)
        steady("the panel alone", lambda: [w.id for w in stage.player.windows()] == [stage.player.window.id], 0.3)
    stage.player.window.x, stage.player.window.y = place(stage, stage.player.window)
    x, y = settings_place(stage.player)
    stage.desk.drag((x, y), (x + 3, y + 2))
    node(stage, name="Top Window")
