# SPDX-License-Identifier: GPL-3.0-or-later
"""Pictures that were made to freeze or to bloat the player: the panel answers, memory stays, a good picture follows."""

import base64
import os
import pathlib
import struct
import time
import zlib

from PIL import Image, ImageDraw

from harness.expect import SLACK, StoryFailure, check, equal, wait
from harness.lateness import Lateness
from harness.media import picture
from harness.player import PLAY
from harness.signs import media_windows, middle_of_screen, told, told_surely, wait_for_told
from harness.story import story

ANSWER_SECONDS = 2.0
MOST_LATE = 2.0  # seconds of an answer that may be the machine's
SETTLED_SECONDS = 30  # for a hostile picture to be refused or shown: meanwhile the panel answers
MOST_MEGABYTES = 400
GREEN, BLUE = "#32A046", "#2846C8"


def chunk(name, content):
    return struct.pack(">I", len(content)) + name + content + struct.pack(">I", zlib.crc32(name + content))


def png(width, height, depth, kind, between=b"", raw=b""):
    header = struct.pack(">IIBBBBB", width, height, depth, kind, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + between + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


def layers(path, size, times):
    """A progressive JPEG whose last layer comes again and again."""
    Image.new("L", size, 128).save(path, "JPEG", progressive=True)
    whole = path.read_bytes()
    last = whole.rfind(b"\xff\xda")
    path.write_bytes(whole[:-2] + whole[last:-2] * times + b"\xff\xd9")
    return path


def hole(path, start, size):
    with open(path, "wb") as out:
        out.write(start)
        out.truncate(size)
    return path


def bitmap(width, height, bits, compression=0, rest=b""):
    return (b"BM" + struct.pack("<IIIIiiHHI", 0, 0, 54, 40, width, height, 1, bits, compression) + bytes(20) + rest)


def gif(width, height, pictures, inner=(1, 1)):
    dot = b"\x21\xf9\x04" + bytes(5) + b"," + struct.pack("<HHHH", 0, 0, *inner) + b"\0\2\2\x44\1\0"
    return b"GIF89a" + struct.pack("<HH", width, height) + b"\x80\0\0\0\0\0\xff\xff\xff" + dot * pictures + b";"


def hostile_files(folder):
    """Written one by one; none is large on the disk."""
    much = zlib.compress(bytes(7_900_000), 9)
    texts = b"".join(chunk(b"zTXt", b"key\0\0" + much) for _ in range(150))

    def of(name, content):
        (folder / name).write_bytes(content)
        return folder / name

    return [
        layers(folder / "layers.jpg", (4000, 3000), 1000),
        layers(folder / "slow.jpg", (7000, 5000), 95),
        hole(folder / "hole.jpg", b"\xff\xd8\xff\xe0\0\x10JFIF", 20 << 30),
        hole(folder / "small_hole.jpg", b"\xff\xd8\xff\xe0\0\x10JFIF", 255 << 20),
        hole(folder / "hole.bmp", bitmap(30000, 20000, 32), 54 + 30000 * 20000 * 4),
        of("sides.bmp", bitmap(2**31 - 1, -(2**31), 32)),
        of("negative.bmp", bitmap(-4, 4, 24, rest=bytes(48))),
        of("endless_runs.bmp", bitmap(6000, 6000, 8, 1, bytes(1024) + b"\0\2\xff\0" * 1_000_000)),
        of("screen.gif", gif(65535, 65535, 1)),
        of("pictures.gif", gif(40, 30, 100_000)),
        of("wide.gif", gif(65535, 600, 1, (65535, 600))),
        of("texts.gif", png(8, 8, 8, 0, texts + chunk(b"iCCP", b"x\0\0" + much), bytes(72))),
        of("sixteen.gif", png(7000, 5500, 16, 6, b"", bytes(200_000_000 // 100))),
    ]


def peak_megabytes(stage):
    status = pathlib.Path(f"/proc/{stage.player.process.pid}/status").read_text()
    return int(next(line.split()[1] for line in status.splitlines() if line.startswith("VmHWM"))) / 1024


def go_on_from_a_box(stage):
    """Ignores a file that cannot be opened; returns whether a box was up."""
    boxes = stage.player.boxes()
    for box in boxes:
        stage.desk.focus(box)
        stage.desk.key("Return")
    return bool(boxes)


def answered(stage, what, act, condition):
    """Acts, and waits for the panel's answer; returns the seconds that it took, less what the machine let the panel, and who asks
    it, wait for a processor."""
    act()
    lateness = Lateness(stage.player.process.pid)
    begin = time.monotonic()

    def taken():
        return time.monotonic() - begin - min(lateness.seconds(), MOST_LATE)

    def in_time():
        if condition():
            return True
        check(taken() < ANSWER_SECONDS * SLACK, f"the panel does not answer within {ANSWER_SECONDS:g} s: {what}")
        return False

    wait(f"the panel answers: {what}", in_time, ANSWER_SECONDS + MOST_LATE)
    return taken()


# PIC-28
@story("pictures: hostile ones never hold the panel, and a good one follows")
def hostile(stage):
    each_and_a_good_one(stage, hostile_files(stage.media), INTERVAL=0, IMAGEHIDE="ON")


# PIC-81, PIC-82
@story("pictures: hostile drawings, endless ones among them, never hold the panel, and a good picture follows")
def hostile_drawings(stage):
    each_and_a_good_one(stage, drawings(stage.media), INTERVAL=0, IMAGEHIDE="ON", CONVENIENCES="ON")


def drawings(folder):
    """Some never end within a minute; some name themselves, other files, or parts of each other in a circle."""
    names = 'xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink"'
    os.mkfifo(folder / "pipe")

    def of(name, content, before=""):
        path = folder / f"{name}.svg"
        path.write_text(f'{before}<svg {names} width="1000" height="1000">{content}</svg>')
        return path

    def image(address):
        return f'<image width="1000" height="1000" xlink:href="{address}"/>'

    corners = "".join(f" L {i * 7919 % 1000} {i * 104729 % 1000}" for i in range(100_000))
    steps = "".join(f'<g id="a{i}">' + f'<use xlink:href="#a{i - 1}"/>' * 10 + "</g>" for i in range(1, 12))
    entities = '<!ENTITY e0 "aaaaaaaaaa">' + "".join(f'<!ENTITY e{i} "{f"&e{i - 1};" * 10}">' for i in range(1, 12))
    return [
        of("itself", image(folder / "itself.svg")),
        of("pipe", image(folder / "pipe")),
        of("endless", image("/dev/zero") + '<rect width="9" height="9"/>'),
        of("nested", image("data:image/png;base64," + base64.b64encode(f"<svg {names}>{image(folder / 'itself.svg')}</svg>".encode()).decode())),
        of("style", "", f'<?xml-stylesheet type="text/css" href="{folder / "pipe"}"?>'),
        of("circle_of_uses", '<g id="a"><use xlink:href="#b"/></g><g id="b"><use xlink:href="#a"/></g>'),
        of("many_uses", f'<defs><g id="a0"><rect width="900" height="900" fill-opacity="0.1"/></g>{steps}</defs><use xlink:href="#a11"/>'),
        of("entities", "<text>&e11;</text>", f"<!DOCTYPE svg [{entities}]>"),
        of("deep", "<g>" * 200_000 + "</g>" * 200_000),
        of("circles", '<circle cx="500" cy="500" r="490" fill-opacity="0.01"/>' * 100_000),
        of("many", "<g/>" * 5_000_000),
        of("corners", f'<path fill-rule="evenodd" d="M0 0{corners}z"/>'),
        of("strokes", f'<path fill="none" stroke="#000" stroke-width="200" stroke-linejoin="round" d="M0 0{corners}z"/>'),
    ]


def each_and_a_good_one(stage, files, **settings):
    """Plays, stops and plays each; a good picture behind each is shown."""
    player = stage.player
    player.settings(**settings)
    good = picture(stage.media / "good.bmp", GREEN)
    slowest = 0.0
    player.start(*[path for each in files for path in (each, good)])
    panel = stage.desk.lying_at(*player.button(PLAY))
    for index, each in enumerate(files):
        try:
            number = f"{2 * index + 1:03}"
            wait_for_told(stage, "FileNo", number)
            slowest = max(slowest, answered(stage, "play", lambda: player.press(PLAY), lambda: told(stage, "Display") == each.suffix[1:].upper() + " IMAGE"))
            # Without waiting for what becomes of it: stop, and play again.
            if not player.boxes():
                slowest = max(slowest, answered(stage, "stop", lambda: player.key("c"), lambda: told(stage, "Time") == ""))
                wait("the panel is not covered", lambda: player.boxes() or stage.desk.lying_at(*player.button(PLAY)) == panel)
                player.press(PLAY)
            settle(stage, each)
            player.key("c")
            wait("it is stopped", lambda: not media_windows(stage))
            if told_surely(stage, "FileNo") == number:
                player.key("period")
            wait_for_told(stage, "FileNo", f"{2 * index + 2:03}")
            player.press(PLAY)
            stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
            player.key("c")
            wait("the good picture goes", lambda: not media_windows(stage))
            if index + 1 < len(files):
                player.key("period")
        except StoryFailure as failure:
            raise StoryFailure(f"{each.name}: {failure}") from failure
    peak = peak_megabytes(stage)
    stage.leave_text("hostile_pictures", f"slowest answer {slowest:.2f} s, most memory {peak:.0f} MB, {len(files)} files\n")
    check(peak < MOST_MEGABYTES or stage.watch.command, f"{peak:.0f} MB")
    equal(player.power_off(), 0, "exit code")


def settle(stage, path):
    """Until it is shown or told; the panel answers all the time."""

    def done():
        check(stage.player.running(), f"the program ended with code {stage.player.process.poll()}")
        return go_on_from_a_box(stage) or bool(media_windows(stage))

    wait(f"{path.name} is shown or told", done, SETTLED_SECONDS, 0.1)
    wait("no box is left", lambda: not go_on_from_a_box(stage))


@story("pictures: one that takes long is passed by next, the kept one stays up, and the end does not wait for it")
def passed(stage):
    player = stage.player
    player.settings(INTERVAL=60, IMAGEHIDE="OFF")
    first = picture(stage.media / "first.bmp", GREEN)
    slow = layers(stage.media / "slow.jpg", (8000, 5000), 98)
    last = picture(stage.media / "last.bmp", BLUE, (500, 300))
    player.start(first, slow, last, slow)
    player.press(PLAY)
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
    answered(stage, "next", lambda: player.key("period"), lambda: told(stage, "FileNo") == "002")
    equal(len(media_windows(stage)), 1, "windows beside the panel, the kept one")
    check(stage.desk.shows(*middle_of_screen(stage), GREEN), "the kept picture stays up")
    stage.leave_picture("kept_while_the_next_is_decoded")
    answered(stage, "next again", lambda: player.key("period"), lambda: told(stage, "FileNo") == "003")
    stage.desk.wait_for_colour(*middle_of_screen(stage), BLUE)
    stage.leave_picture("the_next_one_at_its_own_size")
    player.key("period")
    wait_for_told(stage, "FileNo", "004")
    begin = time.monotonic()
    equal(player.power_off(), 0, "exit code")
    check(time.monotonic() - begin < 6, "the end does not wait")


def sized(path, colour, size):
    """A picture with a frame, so that a wrong size or place is seen."""
    image = Image.new("RGB", size, colour)
    ImageDraw.Draw(image).rectangle((0, 0, size[0] - 1, size[1] - 1), outline="#FFFFFF", width=6)
    image.save(path, quality=92)
    return path


@story("pictures: one of 200 megapixels is shown reduced, upright, and the next one is there at once")
def two_hundred(stage):
    player = stage.player
    player.settings(INTERVAL=0, IMAGEZOOM=3, IMAGEHIDE="OFF")
    large = stage.media / "large.jpg"
    image = Image.radial_gradient("L").resize((16320, 12240))
    ImageDraw.Draw(image).rectangle((0, 0, 4000, 3000), fill=255)
    image.save(large, quality=60)
    del image
    second = sized(stage.media / "second.jpg", "#C06020", (900, 300))
    player.start(large, second)
    player.press(PLAY)
    width, height = stage.desk.screen.width // 2, stage.desk.screen.width // 2 * 3 // 4
    wait("half the screen", lambda: [w.size for w in media_windows(stage)] == [(width, height)], 30)
    x, y = middle_of_screen(stage)
    stage.desk.wait_for_colour(x - width // 2 + 20, y - height // 2 + 20, "#FFFFFF")
    stage.leave_picture("two_hundred_megapixels")
    check(peak_megabytes(stage) < MOST_MEGABYTES or stage.watch.command, f"{peak_megabytes(stage):.0f} MB")
    answered(stage, "next", lambda: player.key("period"), lambda: [w.size for w in media_windows(stage)] == [(width, width // 3)])
    stage.leave_picture("the_next_one")
    equal(player.power_off(), 0, "exit code")


# IMG-24
@story("pictures: a minimised one stays minimised through a slide show")
def minimised(stage):
    player = stage.player
    player.settings(INTERVAL=5, IMAGEHIDE="OFF")
    files = [sized(stage.media / f"{i}.bmp", colour, (320 + 60 * i, 240)) for i, colour in enumerate((GREEN, BLUE, "#C06020", "#606060"))]
    player.start(*files)
    player.press(PLAY)
    middle = middle_of_screen(stage)
    stage.desk.wait_for_colour(*middle, GREEN)
    stage.desk.click(*middle, times=2)
    wait("it is minimised", lambda: not media_windows(stage))
    seen = []
    wait("the third slide", lambda: (seen.extend(media_windows(stage)), told(stage, "FileNo") == "003")[1], 25, 0.02)
    equal(seen, [], "windows that popped up")
    player.key("x")
    stage.desk.rest()
    equal(media_windows(stage), [], "windows while it is paused")
    player.key("z", "x")  # shown, and held before the next slide comes
    wait("play shows it again", lambda: [w.size for w in media_windows(stage)] == [(440, 240)])
    equal([w.middle for w in media_windows(stage)], [middle], "its middle")
    stage.desk.wait_for_colour(*middle, "#C06020")
    stage.leave_picture("restored")
    equal(player.power_off(), 0, "exit code")
