# SPDX-License-Identifier: GPL-3.0-or-later
"""The ways on which something may be gone while a tool kit or a library still holds it, short and without a measure of
time: what tests/memcheck plays under a memory checker for ./check."""

import shutil

from harness import PROJECT
from harness.drops import FileManager
from harness.expect import check, equal, wait
from harness.media import disc, movie, picture, tone
from harness.player import EDITOR, NEXT, PAUSE, PLAY, POWER, PREVIOUS, REPEAT, STOP
from harness.signs import media_windows, told, wait_for_told
from harness.story import story
from screen import read_skin
from stories.dropped import editor_aside
from stories.hand import open_menu
from stories.windows import close_by, home_with_songs, items, name_skin, node, open_editor, open_settings

LONG = 120  # seconds of what must not end by itself under a slow checker
SOUND, TRACK = "Sound File Now On Play", "CD Audio Now On Play"
MOVIE, MPEG = "Video File Now On Play", "Mpeg File Now On Play"
TOO_SMALL = "Stop Position too Small!"


def long_song(stage, name="song.wav", hz=440):
    return tone(stage.media / name, hz, LONG)


def play(stage, kind):
    stage.player.press(PLAY)
    wait_for_told(stage, "Display", kind, 15)


def pause(stage):
    """Until the time stands."""
    stage.player.press(PAUSE)
    looks = []

    def stands():
        looks.append(told(stage, "Time"))
        return looks[-1] and looks[-4:].count(looks[-1]) == 4

    wait("the time stands", stands, 10, 0.4)


def answer_box(stage, text, key="Return"):
    stage.player.wait_for_box(text)
    stage.desk.key(key)
    stage.player.wait_for_no_box()


def menu_is_gone(stage):
    wait("the menu goes", lambda: len(stage.player.windows()) == 1)


def end(stage):
    equal(stage.player.power_off(), 0, "exit code")


@story("memory: entries of the menu by keyboard, with a box, the help window and the end")
def menu_by_keyboard(stage):
    stage.player.start(long_song(stage))
    play(stage, SOUND)
    pause(stage)
    open_menu(stage)
    stage.desk.key("Down", "Down", "Down", "Right", "Return")  # Play Custom: Start Position
    menu_is_gone(stage)
    open_menu(stage)
    stage.desk.key("Down", "Down", "Down", "Right", "Down", "Return")  # Stop Position, at the same place
    answer_box(stage, TOO_SMALL)
    open_menu(stage)
    stage.desk.key("Up", "Up", "Return")  # Help
    manual = stage.player.wait_for_window("Help")
    stage.desk.focus(manual)
    stage.desk.key("Escape")
    stage.player.wait_for_no_window("Help")
    open_menu(stage)
    stage.desk.key("Up", "Return")  # Power OFF
    equal(stage.player.wait_for_end(), 0, "exit code")


PLAY_MODE, PLAY_CUSTOM, POWER_OFF = 0.21, 0.36, 0.93  # how far down an entry lies in its menu
START_POSITION, STOP_POSITION, SHUFFLE_ENTRY = 0.1, 0.28, 0.75


def choose(stage, *places):
    """By the right button and a click into each menu that comes up."""
    known = {window.id for window in stage.player.windows()}
    stage.desk.click(*stage.player.button(PLAY), button=3)
    for place in places:
        menu = wait("the menu", lambda: [w for w in stage.player.windows() if w.id not in known])[0]
        known.add(menu.id)
        stage.desk.click(menu.middle[0], menu.y + menu.height * place)


@story("memory: entries of the menu by mouse, with a box and the end")
def menu_by_mouse(stage):
    stage.player.start(long_song(stage))
    play(stage, SOUND)
    pause(stage)
    choose(stage, PLAY_CUSTOM, START_POSITION)
    menu_is_gone(stage)
    choose(stage, PLAY_CUSTOM, STOP_POSITION)
    answer_box(stage, TOO_SMALL)
    choose(stage, PLAY_MODE, SHUFFLE_ENTRY)
    menu_is_gone(stage)
    choose(stage, POWER_OFF)
    equal(stage.player.wait_for_end(), 0, "exit code")


@story("memory: in the editor entries are added, taken out and saved behind a box, and its window goes by each way")
def editor(stage):
    open_editor(stage, home_with_songs(stage))
    stage.desk.click(*node(stage, name="music", role="list item").middle, times=2)
    wait("the songs in the file box", lambda: len(items(stage, "FILE LIST")) == 3)
    stage.player.press_control("Add All")
    wait("the songs in the play list", lambda: len(items(stage, "PLAY LIST")) == 3)
    stage.desk.click(*node(stage, name="second.wav", role="list item").middle, times=2)
    stage.player.press_control("Save")
    stage.player.wait_for_box("Save OK?")
    stage.desk.key("Return")
    wait("the list's file", lambda: (stage.player.folder / "FILE00.INI").exists())
    stage.player.press_control("Clear")
    wait("an empty play list", lambda: not items(stage, "PLAY LIST"))
    close_by(stage, "Cancel")
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    end(stage)


@story("memory: the settings take another skin, refuse one that cannot be shown, and close by each way")
def settings(stage):
    for kind in ("BMP", "CSV"):
        shutil.copy(PROJECT / "tests" / "data" / "skins" / f"ODD.{kind}", stage.player.folder / "PANELSET")
    stage.player.start()
    open_settings(stage)
    close_by(stage, "Cancel")
    open_settings(stage)
    for bitmap, told_wrong in (("ODD.BMP", "this part does not lie inside the bitmap"), ("NONE.BMP", "NONE.BMP Not found!!")):
        name_skin(stage, bitmap, "DEFAULT.CSV")
        stage.player.press_control("OK")
        answer_box(stage, told_wrong)
        node(stage, name="Top Window")
    name_skin(stage, "ODD.BMP", "ODD.CSV")
    close_by(stage, "OK")
    equal(stage.player.setting("BITMAPFILE"), "ODD.BMP", "stored skin")
    open_settings(stage)
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    end(stage)
    stage.player.skin = read_skin(stage.player.folder / "PANELSET" / "ODD.CSV")
    stage.player.start()
    end(stage)


@story("memory: files are dropped on the panel and on the editor, and are played")
def drops(stage):
    folder = stage.media / "dropped"
    folder.mkdir()
    for number in (1, 2):
        long_song(stage, f"dropped/song{number}.wav", 440 * number)
    stage.player.start()
    with FileManager(stage, folder) as files:
        files.drag_all_to(*stage.player.button(PLAY))
        wait_for_told(stage, "Total FileNo", "2", 15)
        stage.player.press(EDITOR)
        node(stage, name="PLAY LIST", role="list")
        before = len(items(stage, "PLAY LIST"))
        files.drag_all_to(*editor_aside(stage).middle)
        wait("what was dropped is in the editor's list", lambda: len(items(stage, "PLAY LIST")) == before + 2, 15)
        stage.desk.focus(stage.player.wait_for_window("Play List"))
        stage.desk.key("Escape")  # its buttons hang over the screen's edge
        stage.player.wait_for_panel()
    play(stage, SOUND)
    end(stage)


@story("memory: each kind of sound file, with a place set and a place heard again")
def sounds(stage):
    songs = [tone(stage.media / f"song.{kind}", 440, 20) for kind in ("wav", "mp3", "au", "aiff", "mp2")]
    stage.player.start(*songs)
    stage.player.press(PLAY)
    for number, _ in enumerate(songs, 1):
        wait_for_told(stage, "FileNo", f"{number:03}", 15)
        wait("it plays", lambda: "Now On Play" in (told(stage, "Display") or ""), 15)
        stage.desk.click(*stage.player.slider(0.6))
        stage.player.press(PAUSE)
        stage.player.press(PLAY)
        stage.player.press(NEXT)
    end(stage)


@story("memory: sequences")
def sequences(stage):
    songs = []
    for name in ("chime.mid", "echo.rmi"):
        songs.append(stage.media / name)
        shutil.copy(PROJECT / "samples" / name, songs[-1])
    stage.player.start(*songs)
    stage.player.press(REPEAT)
    stage.player.press(PLAY)
    for number in (1, 2, 1):
        wait_for_told(stage, "FileNo", f"{number:03}", 15)
        wait("it plays", lambda: "Now On Play" in (told(stage, "Display") or ""), 20)
        stage.desk.click(*stage.player.slider(0.3))
        stage.player.press(NEXT)
    stage.player.press(STOP)
    end(stage)


@story("memory: tracks of a disc image")
def tracks(stage):
    _, paths = disc(stage.media, (440, 880), 20)
    stage.player.start(*paths)
    play(stage, TRACK)
    stage.desk.click(*stage.player.slider(0.5))
    stage.player.press(NEXT)
    wait_for_told(stage, "FileNo", "002", 15)
    pause(stage)
    stage.player.press(PLAY)
    stage.player.press(STOP)
    end(stage)


@story("memory: movies, with their window shown, paused, stepped, minimised and closed")
def movies(stage):
    films = [movie(stage.media / name, "#3250C8", 440, 20) for name in ("one.avi", "two.mpg")]
    stage.player.settings(DELAYTIME=1)
    stage.player.start(*films)
    play(stage, MOVIE)
    window = wait("its window", lambda: media_windows(stage), 20)[0]
    pause(stage)
    stage.player.press(NEXT)  # a second forward
    stage.player.press(PLAY)
    stage.desk.click(*window.middle, times=2)
    stage.player.press(STOP)
    wait("no window", lambda: not media_windows(stage), 15)
    stage.player.press(NEXT)
    wait_for_told(stage, "FileNo", "002", 15)
    play(stage, MPEG)
    wait("its window", lambda: media_windows(stage), 20)
    end(stage)


@story("memory: pictures of each kind, stepped through and closed")
def pictures(stage):
    shown = [picture(stage.media / f"still{number}.{kind}", "#C83232") for number, kind in enumerate(("bmp", "gif", "jpg"), 1)]
    stage.player.settings(INTERVAL=LONG)
    stage.player.start(*shown)
    stage.player.press(PLAY)
    for number, _ in enumerate(shown, 1):
        wait_for_told(stage, "FileNo", f"{number:03}", 15)
        wait("its window", lambda: media_windows(stage), 20)
        if number < len(shown):
            stage.player.press(NEXT)
    stage.player.press(PREVIOUS)
    stage.player.press(STOP)
    wait("no window", lambda: not media_windows(stage), 15)
    end(stage)


@story("memory: a second start hands its files over, and one without files ends")
def second_start(stage):
    stage.player.start(long_song(stage))
    play(stage, SOUND)
    other = long_song(stage, "other.wav", 880)
    equal(stage.player.start_another("--open", other, other).wait(60), 0, "exit code of the second start")
    wait_for_told(stage, "Total FileNo", "2", 15)
    equal(stage.player.start_another().wait(60), 0, "exit code of the third start")
    check(stage.player.running(), "the first one has ended")
    end(stage)


@story("memory: it ends while stopped, while it plays and while it is paused")
def ends(stage):
    song = long_song(stage)
    stage.player.start(song)
    end(stage)
    stage.player.start(song)
    play(stage, SOUND)
    end(stage)
    stage.player.start(song)
    play(stage, SOUND)
    pause(stage)
    end(stage)


@story("memory: it ends while a box is up and while a movie opens")
def ends_with_a_box(stage):
    stage.player.save_list([stage.media / "gone.wav"])
    stage.player.start()
    stage.player.press(PLAY)
    stage.player.wait_for_box("Can't open!!")
    stage.player.process.terminate()
    equal(stage.player.wait_for_end(), 0, "exit code")
    stage.player.settings(DELAYTIME=1)
    stage.player.save_list([movie(stage.media / "one.avi", "#3250C8", 440, 5)])
    stage.player.start()
    stage.player.press(PLAY)
    stage.player.press(POWER)
    equal(stage.player.wait_for_end(), 0, "exit code")
