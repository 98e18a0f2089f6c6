# SPDX-License-Identifier: GPL-3.0-or-later
"""Movies and pictures at every zoom, measured on the screen; what was seen is left in the run's report."""

from PIL import Image, ImageDraw

from harness.desk import rgb
from harness.expect import SLACK, check, wait
from harness.media import encode, picture
from harness.player import PLAY
from harness.story import story

CORNERS = ("#D02020", "#20B020", "#2030D0", "#D0C020")  # left and right above, left and right below
FRAME, INSIDE = "#F0F0F0", "#205080"
SHARES = {2: 0.25, 3: 0.5, 4: 0.707, 5: 1.0}  # of the screen's width and height


def card(path, size):
    """A picture with a light frame and a coloured block in each corner; returns (path, size, width of the frame)."""
    width, height = size
    frame, block = max(4, height // 60), min(size) // 8
    image = Image.new("RGB", size, FRAME)
    draw = ImageDraw.Draw(image)
    draw.rectangle((frame, frame, width - 1 - frame, height - 1 - frame), fill=INSIDE)
    places = [(x, y) for y in (0, height - block) for x in (0, width - block)]
    for (x, y), colour in zip(places, CORNERS):
        draw.rectangle((x, y, x + block - 1, y + block - 1), fill=colour)
    image.save(path)
    return path, size, frame


SECONDS = round(20 * max(1, SLACK / 2))  # of a movie: longer than anybody looks at it
PICTURES_A_SECOND = 10 if SLACK == 1 else 2


def film(path, size, seconds=SECONDS):
    """A silent movie of a card, every pixel as it is in the card."""
    still, _, frame = card(path.with_suffix(".png"), size)
    codec = {".avi": ["-c:v", "rawvideo", "-pix_fmt", "bgr24"], ".mov": ["-c:v", "qtrle", "-pix_fmt", "rgb24"]}[path.suffix]
    encode(["-loop", "1", "-framerate", str(PICTURES_A_SECOND), "-t", str(seconds), "-i", str(still), *codec], path)
    return path, size, frame


def picture_extent(screen, size, zoom):
    """Width and height of a picture at a zoom."""
    if zoom < 2:
        return size[0] * (zoom + 1), size[1] * (zoom + 1)
    factor = min(screen.width * SHARES[zoom] / size[0], screen.height * SHARES[zoom] / size[1])
    return size[0] * factor, size[1] * factor


def movie_window(screen, size, zoom):
    """Width and height of a movie's window: at a share of the screen two rows of the movie less high."""
    width, height = picture_extent(screen, size, zoom)
    return (width, height * (size[1] - 2) / size[1]) if zoom in (2, 3, 4) else (width, height)


def media_window(stage, size):
    """The window beside the panel, once it has a size, to the pixel, in the middle of the screen."""
    screen = stage.desk.screen
    looked = []

    def stands():
        others = [w for w in stage.player.windows() if w.id != stage.player.window.id]
        looked[:] = [(w.x, w.y, *w.size) for w in others]
        if len(others) != 1:
            return None
        window = others[0]
        middle = [(whole - own) / 2 for whole, own in zip((screen.width, screen.height), size)]
        near = zip((window.x, window.y, window.width, window.height), (*middle, *size))
        return window if all(abs(actual - wanted) <= 0.5001 for actual, wanted in near) else None

    def failing():
        return f"a window of {size[0]:.2f} by {size[1]:.2f} in the middle (there are {looked})"

    try:
        return wait("the window", stands, 8)
    except AssertionError:
        raise AssertionError(failing()) from None


def run_of(pixels, colour):
    """How many pixels at the beginning of a line are nearer to a colour than to what lies inside the frame."""
    count = 0
    for pixel in pixels:
        if abs(pixel - rgb(colour)).sum() >= abs(pixel - rgb(INSIDE)).sum():
            break
        count += 1
    return count


def check_whole(area, place, scale, frame, what):
    """The card fills the place (left, top, width, height of the area, pixels): four corners, and its frame on every side."""
    left, top, width, height = place
    seen = area[top : top + height, left : left + width]
    for (y, x), colour in zip(((0, 0), (0, -1), (-1, 0), (-1, -1)), CORNERS):
        check(abs(seen[y, x] - rgb(colour)).max() <= 26, f"{what}: corner {y},{x} is {seen[y, x]}, expected {colour}")
    across, down = seen[height * 2 // 5], seen[:, width * 2 // 5]
    for side, line in (("left", across), ("right", across[::-1]), ("top", down), ("bottom", down[::-1])):
        shown = run_of(line, FRAME)
        check(abs(shown - frame * scale) < 1, f"{what}: {shown} pixels of the frame at the {side}, expected {frame * scale:.2f}")


def fitted(size, room):
    """Place of a picture fitted into the middle of a room, whole pixels: left, top, width, height; and its scale."""
    scale = min(room[0] / size[0], room[1] / size[1])
    width, height = (round(side * scale) for side in size)
    return (round((room[0] - size[0] * scale) / 2), round((room[1] - size[1] * scale) / 2), width, height), scale


def start_and_play(stage, shown, **settings):
    stage.player.settings(**settings)
    stage.player.start(shown)
    stage.player.press(PLAY)
    stage.desk.move(stage.desk.screen.width * 0.55, stage.desk.screen.height * 0.55)  # not where is measured


def power_off_by_key(stage):
    stage.desk.key("P")
    stage.player.wait_for_end()


# PIC-03, PIC-04, PIC-05, PIC-12
@story("pictures: each of the six zooms has its size in the middle of the screen")
def zoomed_pictures(stage):
    screen = stage.desk.screen
    for kind, size in (("gif", (300, 200)), ("bmp", (1900, 1400))):
        shown, _, frame = card(stage.media / f"card{size[0]}.{kind}", size)
        for zoom in range(6):
            extent = picture_extent(screen, size, zoom)
            if extent[0] > screen.width + 1 or extent[1] > screen.height + 1:
                continue  # those that hang over are panned, below
            what = f"{size[0]} by {size[1]} at zoom {zoom}"
            start_and_play(stage, shown, IMAGEZOOM=zoom)
            window = media_window(stage, extent)
            stage.desk.wait_for_colour(screen.width * 0.48, screen.height * 0.48, INSIDE)  # it is there before it is painted
            area = stage.desk.wait_until_still(window.x, window.y, *window.size)
            stage.leave_picture(f"{size[0]}_zoom{zoom}")
            check_whole(area, (0, 0, *window.size), extent[0] / size[0], frame, what)
            power_off_by_key(stage)


# PIC-11, IMG-13, IMG-14
@story("pictures: one larger than the screen hangs over it and is panned to its edges")
def larger_than_the_screen(stage):
    screen = stage.desk.screen
    shown, size, frame = card(stage.media / "large.bmp", (1700, 1200))
    for zoom, press, button in ((0, (), 2), (1, ("keydown", "Shift_L"), 1)):
        start_and_play(stage, shown, IMAGEZOOM=zoom)
        media_window(stage, (screen.width, screen.height))
        stage.desk.wait_for_colour(screen.width * 0.3, screen.height * 0.3, INSIDE)
        stage.leave_picture(f"zoom{zoom}")
        for number, (x, y) in enumerate(((1, 1), (-1, 1), (1, -1), (-1, -1))):
            begin = screen.width * (0.5 - 0.4 * x), screen.height * (0.5 - 0.4 * y)
            end = screen.width * (0.5 + 0.4 * x), screen.height * (0.5 + 0.4 * y)
            for _ in range(2 + 2 * zoom):  # further than it can go
                stage.desk.tool(*press) if press else None
                stage.desk.drag(begin, end, steps=8, button=button, pause=0.01)
                stage.desk.tool("keyup", "Shift_L")
            stage.desk.move(screen.width * 0.55, screen.height * 0.55)
            corner = (0 if x > 0 else screen.width - 1, 0 if y > 0 else screen.height - 1)
            wait(f"zoom {zoom}: corner {number} at the screen's", lambda: abs(stage.desk.area(*corner, 1, 1)[0, 0] - rgb(CORNERS[number])).max() <= 26)
            seen = stage.desk.wait_until_still(0, 0, screen.width, screen.height)
            stage.leave_picture(f"zoom{zoom}_corner{number}")
            across, down = seen[screen.height * 2 // 5][::x], seen[:, screen.width * 2 // 5][::y]
            for side, line in (("sideways", across), ("up and down", down)):
                lit = run_of(line, FRAME)
                check(lit == frame * (zoom + 1), f"zoom {zoom}, corner {number}, {side}: {lit} pixels of the frame")
        power_off_by_key(stage)


def check_control(stage, window, size, zoom, what):
    """At a share of the screen the control is as large as that share and hangs over the window's middle, a row of the movie
    lower. Only what lies under the window is painted: what tells its place is the tree of assistive programs."""
    if zoom not in (2, 3, 4):
        return
    screen = stage.desk.screen
    width, height = screen.width * SHARES[zoom], screen.height * SHARES[zoom]
    row = min(width / size[0], height / size[1])
    inner = movie_window(screen, size, zoom)
    wanted = window.x + (inner[0] - width) / 2, window.y + (inner[1] - height) / 2 + row, width, height
    found = []

    def stands():
        found[:] = stage.accessibility.wait_for(stage.player.process.pid, name="Movie")["place"]
        return all(abs(actual - expected) <= 1.5 for actual, expected in zip(found, wanted))

    try:
        wait("the control", stands)
    except AssertionError:
        raise AssertionError(f"{what}: the control is at {found}, not {wanted}") from None


# MOVIE-03, MOVIE-04, MOVIE-05, MOVIE-06
@story("movies: each of the six zooms shows the whole picture")
def zoomed_movies(stage):
    screen = stage.desk.screen
    for shown, size, frame in (film(stage.media / "small.avi", (320, 240)), film(stage.media / "broad.mov", (640, 272))):
        for zoom in range(6):
            start_and_play(stage, shown, MOVIEZOOM=zoom, DELAYTIME=50)
            room = (screen.width, screen.height)
            x = y = 0
            if zoom < 5:
                window = media_window(stage, movie_window(screen, size, zoom))
                x, y, room = window.x, window.y, window.size
                check_control(stage, window, size, zoom, f"{shown.name} at zoom {zoom}")
            stage.desk.wait_for_colour(screen.width * 0.48, screen.height * 0.48, INSIDE)
            area = stage.desk.wait_until_still(x, y, *room)
            stage.leave_picture(f"{shown.stem}_zoom{zoom}")
            place, scale = fitted(size, room)
            check_whole(area, place, scale, frame, f"{shown.name} at zoom {zoom}")
            beside = area.sum(axis=2)
            beside[place[1] : place[1] + place[3], place[0] : place[0] + place[2]] = 0
            check(not beside.any(), f"{shown.name} at zoom {zoom}: something is shown beside the picture")
            power_off_by_key(stage)


# MOVIE-12
@story("movies: from the whole screen to a picture's window and back to the whole screen, and then to nothing")
def full_screen_and_back(stage):
    go_from_window_to_window(stage)


def go_from_window_to_window(stage, **settings):
    screen = stage.desk.screen
    x, y = screen.width * 0.48, screen.height * 0.48
    shown, size, frame = film(stage.media / "small.avi", (320, 240))
    still = picture(stage.media / "still.bmp", CORNERS[0], (320, 240))
    place, scale = fitted(size, (screen.width, screen.height))
    stage.player.settings(MOVIEZOOM=5, DELAYTIME=50, IMAGEHIDE="OFF", **settings)
    stage.player.start(shown, still, shown)
    stage.player.press(PLAY)
    stage.desk.move(screen.width * 0.55, screen.height * 0.55)
    for number in range(2):
        stage.desk.wait_for_colour(x, y, INSIDE)
        area = stage.desk.wait_until_still(0, 0, screen.width, screen.height)
        stage.leave_picture(f"whole{number}")
        check_whole(area, place, scale, frame, "the whole screen")
        if number == 0:
            stage.desk.key("period")
            stage.desk.wait_for_colour(x, y, CORNERS[0])
            media_window(stage, (320, 240))
            stage.leave_picture("picture")
            stage.desk.key("period")
    stage.desk.key("c")
    wait("only the panel", lambda: [w.id for w in stage.player.windows()] == [stage.player.window.id])
