# SPDX-License-Identifier: GPL-3.0-or-later
"""The types of today, named and laid out as people do, started the desktop's way; and what a plain start says to the same."""

from PIL import Image

from harness.drops import FileManager
from harness.expect import SLACK, check, equal
from harness.media import encode, movie, tone
from harness.modules import write_module
from harness.player import PLAY
from harness.signs import Entry, play_through, told, wait_for_told
from harness.story import story

LONGER = max(1, SLACK / 2)  # each is looked at while it plays
SECONDS = 2.4 * LONGER
SOUNDS = {"flac": [], "ogg": ["-c:a", "libvorbis"], "oga": ["-c:a", "flac", "-f", "ogg"], "opus": ["-c:a", "libopus"], "m4a": [],
          "m4b": ["-c:a", "aac", "-f", "ipod"], "aac": [], "wma": [], "wv": [], "tta": [], "mka": []}
MOVIES = {"mp4": [], "m4v": ["-f", "mp4"], "mkv": [], "webm": ["-c:v", "libvpx", "-deadline", "realtime"], "wmv": [],
          "flv": ["-ar", "44100"], "ogv": [], "ts": [], "m2ts": ["-f", "mpegts"], "mts": ["-f", "mpegts"], "vob": [],
          "3gp": ["-c:v", "h263", "-s", "352x288", "-c:a", "aac"], "3g2": ["-c:v", "mpeg4", "-c:a", "aac"], "divx": ["-f", "avi"]}
MODULES = ("mod", "s3m", "xm", "it")
PICTURES = ("png", "webp", "tif", "TIFF", "ico", "svg")
COLOURS = ("#C83232", "#32A046", "#3250C8")
FIRST_HZ, MODULE_HZ = 300, 692.7


def picture_of(path, colour):
    if path.suffix == ".svg":
        path.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="320" height="240"><rect width="320" height="240" fill="{colour}"/></svg>')
    elif path.suffix == ".ico":
        Image.new("RGB", (256, 256), colour).save(path, sizes=[(16, 16), (256, 256)])
    else:
        Image.new("RGB", (320, 240), colour).save(path, **({"lossless": True} if path.suffix == ".webp" else {}))
    return path


def entries_of(folder):
    plain, made = folder / "plain.wav", []
    for number, (ending, options) in enumerate(SOUNDS.items()):
        hz = FIRST_HZ * 1.06**number
        path = folder / f"My.Song No.{number} (live).{ending}"
        encode(["-i", str(tone(plain, hz, SECONDS)), *options], path)
        made.append(Entry(path, f"{ending.upper()} Now On Play", (hz,), None))
    for number, ending in enumerate(MODULES):
        hz = MODULE_HZ * 1.12**number
        made.append(Entry(write_module(folder / f"a.tune.{ending}", hz), f"{ending.upper()} Now On Play", (hz,), None))
    for number, (ending, options) in enumerate(MOVIES.items()):
        hz, colour = FIRST_HZ * 1.06 ** (len(SOUNDS) + number), COLOURS[number % 3]
        path = folder / f"映画 v1.{number} 🎬.{ending}"
        encode(["-i", str(movie(folder / "source.avi", colour, hz, SECONDS, (640, 480))), *options], path)
        made.append(Entry(path, "Video File Now On Play", (hz,), colour))
    for number, ending in enumerate(PICTURES):
        colour = COLOURS[number % 3]
        made.append(Entry(picture_of(folder / f"p.{number}.{ending}", colour), f"{ending.upper()} IMAGE", (), colour))
    return made


def folder_of_today(stage):
    folder = stage.media / "My.Music ガンマ"
    folder.mkdir()
    return folder


# KIND-23, KIND-24, KIND-25
@story("today: started the desktop's way, every type of today is told, heard or seen, by the last dot of its name")
def types_of_today(stage):
    entries = entries_of(folder_of_today(stage))
    stage.player.settings(DELAYTIME=30, INTERVAL=round(3 * LONGER))
    stage.player.start("--open", *[entry.path for entry in entries])
    play_through(stage, entries)
    equal(stage.player.power_off(), 0, "exit code")


# SET-67
@story("today: what is off in the settings file is off, however the player was started, and on the same way")
def by_the_settings_file(stage):
    folder = folder_of_today(stage)
    song, plain = folder / "a.b.mp3", stage.media / "plain.mp3"
    tone(song, 440, 20)
    tone(plain, 660, 20)
    (stage.player.folder / "KADO.INI").write_text("[CONVENIENCES]\nNAMES=OFF\nRESUME=OFF\n")
    stage.player.start("--open", song, plain)
    stage.sound.wait_for(660)
    equal((told(stage, "Total FileNo"), told(stage, "Tittle")), ("1", "plain"), "the list without NAMES")
    stage.player.wait_for_box("a.b.mp3: left out")
    stage.desk.tool("windowfocus", "--sync", stage.player.boxes()[0].id)
    stage.desk.key("Return")
    stage.player.wait_for_no_box()
    equal(stage.player.power_off(), 0, "exit code")
    (stage.player.folder / "KADO.INI").write_text("[KADO]\nCONVENIENCES=ON\nAUTOPLAY=ON\n[CONVENIENCES]\nRESUME=OFF\n")
    stage.player.save_list([song])
    stage.player.start()
    stage.sound.wait_for(440)
    equal(told(stage, "Tittle"), "a.b", "the title with NAMES")
    equal(stage.player.power_off(), 0, "exit code")


def album(stage):
    """A folder with one song whose name has two dots."""
    folder = stage.media / "album"
    folder.mkdir()
    tone(folder / "a.b.mp3", 440, 20)
    return folder


# DROP-18, DROP-19, DROP-20, KIND-23
@story("today: the same drop is refused by a plain start and played by the desktop's; with Shift it is added")
def both_ways_of_starting(stage):
    folder, notes = album(stage), stage.media / "notes"
    notes.mkdir()
    (notes / "readme.txt").write_text("nothing to play")
    first = tone(stage.media / "first.wav", 660, 120)  # longer than the file managers take
    stage.player.start(first)
    stage.player.press(PLAY)
    stage.sound.wait_for(660)
    with FileManager(stage, folder) as files:
        files.drag_all_to(*stage.player.button(PLAY))
        wait_for_told(stage, "Total FileNo", "0")
    stage.sound.expect_steady(660, 0.8)
    equal(stage.player.power_off(), 0, "exit code of the plain start")

    stage.player.start("--open", first)
    stage.sound.wait_for(660)
    with FileManager(stage, notes) as files:
        files.drag_all_to(*stage.player.button(PLAY))
        stage.player.wait_for_box("readme.txt: left out, because it is none of the kinds that are played")
        stage.leave_picture("refused")
        stage.desk.tool("windowfocus", "--sync", stage.player.boxes()[0].id)  # it came beside another program
        stage.desk.key("Return")
        stage.player.wait_for_no_box()
        equal(told(stage, "Total FileNo"), "1", "entries after a drop of nothing")
    with FileManager(stage, folder) as files:
        files.drag_all_to(*stage.player.button(PLAY), shift=True)
        wait_for_told(stage, "Total FileNo", "2")
        stage.sound.expect_steady(660, 0.8)
        files.drag_all_to(*stage.player.button(PLAY))
        stage.sound.wait_for(440)
    equal((told(stage, "Total FileNo"), told(stage, "Tittle")), ("1", "a.b"), "the list of the drop")
    check((folder / "a.b.mp3").exists(), "the file was moved away")
    equal(stage.player.power_off(), 0, "exit code")
