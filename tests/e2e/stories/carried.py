# SPDX-License-Identifier: GPL-3.0-or-later
"""What movies carry: films that were taken turned, subtitles, sounds, chapters, a saved frame."""

import shutil
import struct

import numpy as np
from PIL import Image

from harness.desk import rgb
from harness.expect import check, equal, steady, wait
from harness.media import encode
from harness.signs import middle_of_screen, told
from harness.story import story

BLUE, RED, ORANGE = "#2040A0", "#C03020", "#D87828"
TONES = (440, 880)
SIZE = (640, 360)
EXACT = 5  # of 255; the other matrix makes 13 or more
LETTER = 200  # pixels that are white
SUBTITLES = """1
00:00:00,000 --> 00:01:00,000
{0}
"""
CHAPTERS = ";FFMETADATA1\n" + "".join(
    f"[CHAPTER]\nTIMEBASE=1/1\nSTART={start}\nEND={start + 20}\ntitle={title}\n" for start, title in ((0, "One"), (20, "第二章"), (40, "Three")))


def film(stage):
    """A minute with two sounds, subtitles, chapters, and Japanese subtitles beside it."""
    path = stage.media / "film.mov"
    if path.exists():
        return path
    (stage.media / "inside.srt").write_text(SUBTITLES.format("Inside the file"), encoding="utf-8")
    (stage.media / "chapters.txt").write_text(CHAPTERS, encoding="utf-8")
    encode(["-f", "lavfi", "-i", f"color=0x{BLUE[1:]}:s={SIZE[0]}x{SIZE[1]}:r=10:d=60",
            *(word for hz in TONES for word in ("-f", "lavfi", "-i", f"sine=frequency={hz}:duration=60")),
            "-i", str(stage.media / "inside.srt"), "-i", str(stage.media / "chapters.txt"), "-map", "0", "-map", "1", "-map", "2",
            "-map", "3", "-map_metadata", "4", "-c:v", "mpeg4", "-q:v", "2", "-c:a", "aac", "-c:s", "mov_text",
            "-metadata:s:a:0", "language=eng", "-metadata:s:a:1", "language=jpn"], path)
    (stage.media / "film.srt").write_bytes(SUBTITLES.format("字幕は日本語です").encode("cp932"))
    return path


def start(stage, path, **settings):
    stage.player.settings(DELAYTIME=30, **settings)
    stage.player.start(path)
    stage.player.key("z")
    stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE)


def letters(stage, above):
    """White in the upper or the lower half of the movie's window."""
    screen = stage.desk.screen
    left, top = (screen.width - SIZE[0]) // 2, (screen.height - SIZE[1]) // 2
    half = stage.desk.area(left, top + (0 if above else SIZE[1] // 2), SIZE[0], SIZE[1] // 2)
    return int((np.asarray(half)[..., :3].min(axis=-1) > 220).sum()) > LETTER


# MOVIE-39, MOVIE-40, MOVIE-42, MOVIE-43
@story("carried: Ctrl+T shows subtitles inside the film, then the Japanese ones beside it, then none; Ctrl+A changes the sound; a text says which")
def tracks(stage):
    go_through_tracks(stage)


def wait_for_both(stage):
    """Until there are subtitles, and the text that says which was there: it goes after a while, whichever came first."""
    said = False

    def both():
        nonlocal said
        said = said or letters(stage, above=True)
        return said and letters(stage, above=False)

    wait("the text, and subtitles", both)


def go_through_tracks(stage, **settings):
    start(stage, film(stage), CONVENIENCES="ON", **settings)
    stage.sound.wait_for(TONES[0])
    check(not letters(stage, above=False), "subtitles that nobody asked for")
    for number in (1, 2):
        stage.player.key("ctrl+t")
        wait_for_both(stage)
        stage.leave_picture(f"subtitles_{number}")
        wait("the text goes", lambda: not letters(stage, above=True))
    stage.player.key("ctrl+t")
    wait("no subtitles", lambda: not letters(stage, above=False))
    stage.player.key("ctrl+a")
    stage.sound.wait_for(TONES[1])
    stage.leave_picture("sound")
    stage.player.key("ctrl+a")
    stage.sound.wait_for(TONES[0])


# MOVIE-40
@story("carried: on a plain start the keys for subtitles, sounds, chapters and frames do nothing")
def plain(stage):
    start(stage, film(stage))
    stage.sound.wait_for(TONES[0])
    stage.player.key("ctrl+t", "ctrl+a", "ctrl+Next", "ctrl+i")
    steady("the film alone", lambda: not letters(stage, True) and not letters(stage, False) and float(told(stage, "Time") or 0) < 19, 1.0)
    stage.sound.wait_for(TONES[0])


# MOVIE-41
@story("carried: Ctrl+PageDown and Ctrl+PageUp go through a film's chapters, also while it is paused")
def chapters(stage):
    start(stage, film(stage), CONVENIENCES="ON")
    stage.player.key("ctrl+Next")
    wait("its name", lambda: letters(stage, above=True))  # it goes after a while: looked for first
    stage.leave_picture("chapter")
    wait("the second chapter", lambda: 20 <= float(told(stage, "Time") or 0) < 26)
    stage.player.key("x", "ctrl+Next")
    wait("the third chapter", lambda: float(told(stage, "Time") or 0) == 40)
    stage.player.key("ctrl+Prior")
    wait("the second chapter", lambda: float(told(stage, "Time") or 0) == 20)


# MOVIE-38, MEDIA-80, MEDIA-78
@story("carried: Ctrl+I saves the frame where the desktop keeps pictures, never over another file, and says where")
def frame(stage):
    save_frames(stage)


def save_frames(stage, **settings):
    pictures = stage.media / "Bilder"
    pictures.mkdir()
    record = stage.media / "config"
    record.mkdir()
    (record / "user-dirs.dirs").write_text(f'XDG_PICTURES_DIR="{pictures}"\n')
    stage.player.settings(DELAYTIME=30, CONVENIENCES="ON", **settings)
    stage.player.start(film(stage), XDG_CONFIG_HOME=str(record))
    stage.player.key("z")
    stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE)
    stage.player.key("x", "ctrl+i")
    wait("the frame", lambda: len(list(pictures.iterdir())) == 1)
    wait("the text", lambda: letters(stage, above=True))
    stage.leave_picture("saved")
    wait("the text goes", lambda: not letters(stage, above=True))
    stage.player.key("ctrl+i")
    wait("another one", lambda: len(list(pictures.iterdir())) == 2)
    first, second = sorted(pictures.iterdir(), key=lambda path: len(path.name))
    check(first.name.startswith("film 00.00.0"), first.name)
    equal(second.name, first.stem + " (2).png", "the second one's name")

    def whole():
        try:
            pictures = [Image.open(path).convert("RGB") for path in (first, second)]
            return all(one.size == SIZE and abs(np.array(one.getpixel((320, 180))) - rgb(BLUE)).max() < 20 for one in pictures)
        except OSError:
            return False
    wait("whole pictures", whole)


def shown(stage, x, y):
    return next((colour for colour in (BLUE, RED) if stage.desk.shows(x, y, colour)), None)


def lain_on_its_side(film):
    """A film of one track with the matrix of a quarter turn, as a phone that is held upright writes it: no encoder of all
    systems is asked for it in the same words."""
    at = film.index(b"tkhd") + 4 + 40
    matrix = struct.pack(">9i", 0, -1 << 16, 0, 1 << 16, 0, 0, 0, 640 << 16, 1 << 30)
    return film[:at] + matrix + film[at + len(matrix):]


# MEDIA-74
@story("carried: a film that was taken upright by a phone is shown upright, in its window and on the whole screen")
def upright(stage):
    show_upright(stage, {})


def show_upright(stage, environment, **settings):
    plain_film = stage.media / "lying.mp4"
    encode([word for colour in (BLUE, RED) for word in ("-f", "lavfi", "-i", f"color=0x{colour[1:]}:s=240x320:r=10:d=20")] + [
            "-filter_complex", "[0][1]hstack", "-c:v", "mpeg4", "-q:v", "2"], plain_film)
    turned = stage.media / "phone.mov"
    turned.write_bytes(lain_on_its_side(plain_film.read_bytes()))
    stage.player.settings(DELAYTIME=30, CONVENIENCES="ON", **settings)
    stage.player.start(turned, **environment)
    stage.player.key("z")
    x, y = middle_of_screen(stage)
    for whole in (False, True):
        wait("one colour above, the other one below", lambda: {shown(stage, x, y - 100), shown(stage, x, y + 100)} == {BLUE, RED})
        equal(shown(stage, x - 100, y - 100), shown(stage, x + 100, y - 100), "left and right above")
        equal(shown(stage, x - 100, y + 100), shown(stage, x + 100, y + 100), "left and right below")
        equal(shown(stage, x, 30) is not None, whole, "as high as the screen")
        stage.leave_picture(f"upright_{whole}")
        stage.player.key("F11")
        wait("the other size", lambda: (shown(stage, x, 30) is None) == whole)


# MOVIE-44
@story("carried: what is named as subtitles and is none leaves the film playing")
def hostile(stage):
    other = stage.media / "other"
    other.mkdir()
    shutil.copy(film(stage), other / "film.mov")
    (other / "film.srt").write_bytes(b"#EXTM3U\n#EXTINF:1,-->\nhttp://127.0.0.1:9/x\n")
    (other / "film.ass").write_bytes(b"[Script Info]\n[Events]\nFormat: Start, End, Text\n" +
                                     b"Dialogue: 0:00:00.00,0:01:00.00,{\\fs99999999\\blur999999\\p9}m 0 0 l 99999999 99999999\n" * 2000)
    (other / "film.vtt").write_bytes(np.random.default_rng(5).bytes(200_000))
    start(stage, other / "film.mov", CONVENIENCES="ON")
    before = float(told(stage, "Time") or 0)
    for _ in range(3):
        stage.player.key("ctrl+t")
        wait("something is said", lambda: letters(stage, above=True))
        wait("it goes", lambda: not letters(stage, above=True))
    wait("it plays on", lambda: float(told(stage, "Time") or 0) > before + 3, 10)
    stage.leave_picture("hostile")


def drawn_subtitles(path, size, box, seconds):
    """Subtitles that are pictures, as discs of films have them (PGS): a white box from the beginning, taken away after so long."""
    left, top, width, height = box

    def segment(at, kind, data):
        return b"PG" + struct.pack(">IIBH", at * 90_000, 0, kind, len(data)) + data

    def composition(number, objects):
        return struct.pack(">HHBHBBBB", *size, 0x10, number, 0x80, 0, 0, len(objects)) + b"".join(objects)

    window = struct.pack(">BBHHHH", 1, 0, *box)
    line = b"\0" + struct.pack(">H", 0xC000 | width) + b"\1" + b"\0\0"
    drawing = struct.pack(">HBB", 0, 0, 0xC0) + (height * len(line) + 4).to_bytes(3, "big") + struct.pack(">HH", width, height) + line * height
    path.write_bytes(b"".join((
        segment(0, 0x16, composition(0, [struct.pack(">HBBHH", 0, 0, 0, left, top)])), segment(0, 0x17, window),
        segment(0, 0x14, struct.pack(">BB5B", 0, 0, 1, 235, 128, 128, 255)), segment(0, 0x15, drawing), segment(0, 0x80, b""),
        segment(seconds, 0x16, composition(1, [])), segment(seconds, 0x17, window), segment(seconds, 0x80, b""))))
    return path


# MOVIE-46: Subtitles that are pictures are shown where the film has them, and not without being asked for
@story("carried: subtitles that are pictures are shown in their place, small and on the whole screen")
def pictures_as_subtitles(stage):
    plain, path = stage.media / "plain.mkv", stage.media / "drawn.mkv"
    encode(["-f", "lavfi", "-i", f"color=0x{BLUE[1:]}:s={SIZE[0]}x{SIZE[1]}:r=10:d=60", "-c:v", "mpeg4", "-q:v", "2"], plain)
    subtitles = drawn_subtitles(stage.media / "drawn.sup", SIZE, (170, 300, 300, 40), 50)
    encode(["-i", str(plain), "-i", str(subtitles), "-map", "0", "-map", "1", "-c", "copy"], path)
    start(stage, path, CONVENIENCES="ON")
    x, y = middle_of_screen(stage)
    steady("no subtitles", lambda: not letters(stage, above=False), 0.5)
    stage.player.key("ctrl+t")
    stage.desk.wait_for_colour(x, y + 140, "#FFFFFF")
    stage.desk.wait_for_colour(x - 140, y + 130, "#FFFFFF")
    check(stage.desk.shows(x - 160, y + 140, BLUE), "what is beside it")
    stage.leave_picture("drawn_subtitles")
    stage.player.key("F11")
    stage.desk.wait_for_colour(x, y + 280, "#FFFFFF")
    stage.leave_picture("drawn_subtitles_whole")
    stage.player.key("F11")
    stage.player.key("ctrl+t")
    wait("no subtitles", lambda: stage.desk.shows(x, y + 140, BLUE))

def coloured(path, colour, matrix, full, size="320x240", more=()):
    """A film of one colour in that matrix and range, with its headers saying so."""
    reach = "pc" if full else "tv"
    encode(["-f", "lavfi", "-i", f"color=0x{colour[1:]}:s={size}:r=10:d=20,format=gbrp,scale=out_color_matrix={matrix}:out_range={reach},format=yuv420p",
            "-c:v", "libx264", "-qp", "4", "-colorspace", {"bt601": "smpte170m"}.get(matrix, matrix), "-color_range", reach, *more], path)
    return path


# MEDIA-86: The colours of a film are those that it was made of, whatever its matrix and its range
@story("carried: films of other colour spaces and ranges show the colours that they were made of")
def colour_spaces(stage):
    films = [coloured(stage.media / f"{matrix}_{full}.mp4", ORANGE, matrix, full)
             for matrix in ("bt601", "bt709") for full in (False, True)]
    stage.player.settings(DELAYTIME=30, CONVENIENCES="ON")
    stage.player.save_list(films)
    stage.player.start()
    stage.player.key("z")
    for number, path in enumerate(films, 1):
        wait(f"{path.name} is told", lambda: told(stage, "FileNo") == f"{number:03}")
        wait(f"the colour of {path.name}", lambda: stage.desk.shows(*middle_of_screen(stage), ORANGE, EXACT))
        stage.player.key("period")


# MEDIA-87: A film whose pixels are not square stands in the shape that it says
@story("carried: a film whose pixels are twice as wide as high is shown twice as wide")
def wide_pixels(stage):
    start(stage, coloured(stage.media / "wide.mp4", BLUE, "bt709", False, "320x240", ("-vf", "setsar=2")), CONVENIENCES="ON")
    x, y = middle_of_screen(stage)
    for across, down, seen in ((310, 0, True), (-310, 0, True), (330, 0, False), (0, 110, True), (0, -130, False)):
        equal(stage.desk.shows(x + across, y + down, BLUE), seen, f"the film {across} beside and {down} below the middle")
    stage.leave_picture("wide_pixels")

# The signal of so many candelas per square metre (ST 2084), and the grey that an ordinary screen shows for it.
BRIGHT = ((0, 0, 0), (10, 0.3019, 73), (50, 0.4403, 141), (1000, 0.7518, 255))


# MEDIA-88: A film of a high dynamic range is shown with an ordinary screen's light
@story("carried: a film of a high dynamic range is as bright as it was filmed, and its lights are white")
def high_range(stage):
    path, width = stage.media / "bright.mp4", SIZE[0] // len(BRIGHT)
    levels = [round(64 + 876 * signal) for _, signal, _ in BRIGHT]
    stripes = "+".join(f"{level}*eq(floor(X/{width}),{stripe})" for stripe, level in enumerate(levels))
    tags = ":".join(("log-level=none", "colorprim=bt2020", "transfer=smpte2084", "colormatrix=bt2020nc", "hdr10=1", "lossless=1",
                     "master-display=G(13250,34500)B(7500,3000)R(34000,16000)WP(15635,16450)L(10000000,50)"))
    encode(["-f", "lavfi", "-i", f"nullsrc=s={SIZE[0]}x{SIZE[1]}:r=5:d=20,format=yuv420p10le,geq=lum='{stripes}':cb=512:cr=512",
            "-c:v", "libx265", "-preset", "ultrafast", "-x265-params", tags], path)
    stage.player.settings(DELAYTIME=30, CONVENIENCES="ON")
    stage.player.start(path)
    stage.player.key("z")
    x, y = middle_of_screen(stage)
    for stripe, (light, _, grey) in enumerate(BRIGHT):
        wait(f"{light} candelas", lambda: stage.desk.shows(x - SIZE[0] / 2 + (stripe + 0.5) * width, y, "#" + 3 * f"{grey:02x}", EXACT))
    stage.leave_picture("high_range")
