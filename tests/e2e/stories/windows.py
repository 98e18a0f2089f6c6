# SPDX-License-Identifier: GPL-3.0-or-later
"""The play-list editor and the settings dialog, by mouse and by keyboard alone."""

import shutil

from harness import PROJECT
from harness.expect import check, equal, steady, wait
from harness.media import picture, tone
from harness.player import AUTO_LAMP, DISPLAY_RECORD, EDITOR, PLAY, QUICK_LAMP, read_profile
from harness.story import story
from screen import read_skin

SONGS = {"first.wav": 440, "second.wav": 554, "third.wav": 698}
SECONDS = 1.4
PAGE, LIST = 3, 7  # as they are shown
LIST_FILE = "FILE26.INI"
MOST_TABS = 30


def home_with_songs(stage):
    """A home folder whose folder "music" holds the songs; returns it."""
    home = stage.folder / "home"
    (home / "music").mkdir(parents=True)
    for name, hz in SONGS.items():
        tone(home / "music" / name, hz, SECONDS)
    (home / "music" / "cover.txt").write_text("no sound")
    return home


def nodes(stage, **wanted):
    return stage.accessibility.find(stage.player.process.pid, **wanted)


def node(stage, **wanted):
    return stage.accessibility.wait_for(stage.player.process.pid, **wanted)


def items(stage, list_name):
    """The entries of a list box: what stands below it in the tree."""
    found, inside = [], None
    for entry in stage.accessibility.nodes(stage.player.process.pid):
        if inside is not None:
            if entry["depth"] <= inside:
                break
            found.append(entry["name"])
        elif entry["role"] == "list" and entry["name"] == list_name and entry.shown:
            inside = entry["depth"]
    return found


def open_editor(stage, home, **environment):
    stage.player.start(HOME=str(home), **environment)
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    wait("the panel is hidden", lambda: stage.player.find_panel() is None)


def settings_place(player):
    """A place of the display where no text stands."""
    x, y, _, _ = player.place(DISPLAY_RECORD)
    return x + 44, y + 21


def open_settings(stage):
    """By a click on the display."""
    stage.desk.click(*settings_place(stage.player))
    node(stage, name="Top Window")


def close_by(stage, caption):
    stage.player.press_control(caption)
    stage.player.wait_for_panel()


def step_number(stage, bar, times):
    """Presses the right arrow of a number's scroll bar."""
    x, y, width, height = node(stage, name=bar, role="slider")["place"]
    for _ in range(times):
        stage.desk.click(x + width * 3 // 4, y + height // 2)


def tab_to(stage, name):
    """Presses Tab until the control of that name has the focus."""
    focused = stage.accessibility.focused(stage.player.process.pid)
    for _ in range(MOST_TABS):
        if any(each.replace("&", "") == name for _, each, _ in focused):
            return
        focused = stage.player.press_tab(focused)
    check(False, f"{name} is not reached by Tab")


def hear_the_list(stage, since):
    last = list(SONGS.values())[-1]
    stage.sound.wait_for(last, 10)
    stage.sound.wait_for_silence(5, lasting=0.6)
    stage.sound.expect_order(SONGS.values(), since)


def check_saved(stage, name):
    stored = read_profile(stage.player.folder / LIST_FILE)
    equal(stored.get("LISTNAME"), name, "stored name")
    equal([stored[f"LIST{i:03}"].split("|")[0] for i in range(3)], sorted(SONGS), "stored entries")
    equal([stored["LIST003"], stored["LIST255"]], ["|", "|"], "unused entries")


# EDIT-56: A whole list is made, named, saved, played and played again after a restart
@story("editor: by mouse a list is made, named, saved on page 3 list 7, played and played again after a restart")
def make_a_list_by_mouse(stage):
    home = home_with_songs(stage)
    open_editor(stage, home)
    step_number(stage, "Page number", PAGE - 1)
    node(stage, name=f"Page {PAGE}")
    step_number(stage, "List number", LIST - 1)
    node(stage, name=f"File {LIST}")
    stage.desk.click(*node(stage, name="music", role="list item").middle, times=2)
    wait("the songs alone in the file box", lambda: items(stage, "FILE LIST") == sorted(SONGS))
    stage.player.press_control("Add All")
    wait("the songs in the play list", lambda: items(stage, "PLAY LIST") == sorted(SONGS))
    stage.desk.click(*node(stage, name="List name", role="text").middle)
    stage.desk.type("Morning")
    stage.player.press_control("Save")
    stage.player.wait_for_box(f"PLAY PAGE {PAGE} LIST {LIST} Save OK?")
    check(not (stage.player.folder / LIST_FILE).exists(), "saved before the question was answered")
    stage.desk.key("Return")
    wait("the list's file", lambda: (stage.player.folder / LIST_FILE).exists())
    check_saved(stage, "Morning")
    close_by(stage, "OK")
    equal((stage.player.setting("PAGENUM"), stage.player.setting("FILENUM")), ("2", "6"), "stored place")
    began = stage.sound.now()
    stage.player.press(PLAY)
    hear_the_list(stage, began)
    stage.player.power_off()
    stage.player.settings(**{**read_profile(stage.player.folder / "KADO.INI"), "AUTOPLAY": "ON"})
    began = stage.sound.now()
    stage.player.start()
    hear_the_list(stage, began)


# EDIT-56
@story("editor: by keyboard alone a list is made, named, saved and taken")
def make_a_list_by_keyboard(stage):
    open_editor(stage, home_with_songs(stage))
    tab_to(stage, "Page number")
    stage.desk.key(*["Right"] * (PAGE - 1))
    node(stage, name=f"Page {PAGE}")
    tab_to(stage, "List number")
    stage.desk.key(*["Right"] * (LIST - 1))
    node(stage, name=f"File {LIST}")
    tab_to(stage, "DIR")
    stage.desk.type("music")
    stage.desk.key("Return")
    wait("the songs in the file box", lambda: items(stage, "FILE LIST") == sorted(SONGS))
    tab_to(stage, "FILE LIST")
    stage.desk.key("ctrl+a")
    tab_to(stage, "Add")
    stage.desk.key("space")
    wait("the songs in the play list", lambda: items(stage, "PLAY LIST") == sorted(SONGS))
    tab_to(stage, "List name")
    stage.desk.type("Evening")
    tab_to(stage, "Save")
    stage.desk.key("space")
    stage.player.wait_for_box("Save OK?")
    stage.desk.key("Return")
    wait("the list's file", lambda: (stage.player.folder / LIST_FILE).exists())
    check_saved(stage, "Evening")
    tab_to(stage, "OK")
    stage.desk.key("Return")
    stage.player.wait_for_panel()
    began = stage.sound.now()
    stage.player.key("z")
    hear_the_list(stage, began)


# EDIT-46
@story("editor: Cancel and Escape leave list and settings as they were")
def cancel_the_editor(stage):
    home = home_with_songs(stage)
    kept = tone(stage.media / "kept.wav", 880, 3)
    stage.player.save_list([kept])
    open_editor(stage, home)
    stage.player.press_control("Clear")
    wait("an empty play list", lambda: not items(stage, "PLAY LIST"))
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    check(not (stage.player.folder / "KADO.INI").exists(), "settings were written")
    stage.player.press(PLAY)
    stage.sound.wait_for(880)


# EDIT-48
@story("editor: entries are deleted, double-clicked in and out, and the numbers wrap")
def edit_entries(stage):
    open_editor(stage, home_with_songs(stage))
    stage.desk.click(*node(stage, name="music", role="list item").middle, times=2)
    for name in ("second.wav", "first.wav"):
        stage.desk.click(*node(stage, name=name, role="list item").middle, times=2)
    wait("two entries", lambda: items(stage, "PLAY LIST") == ["second.wav", "first.wav"])
    x, y, _, _ = node(stage, name="PLAY LIST", role="list")["place"]
    stage.desk.click(x + 30, y + 12, times=2)
    wait("one entry", lambda: items(stage, "PLAY LIST") == ["first.wav"])
    stage.desk.click(x + 30, y + 12)
    stage.player.press_control("Delete")
    wait("no entry", lambda: not items(stage, "PLAY LIST"))
    bar_x, bar_y, bar_width, bar_height = node(stage, name="List number", role="slider")["place"]
    stage.desk.click(bar_x + bar_width // 4, bar_y + bar_height // 2)
    node(stage, name="File 10")
    step_number(stage, "List number", 1)
    node(stage, name="File 1")


# LIST-32, EDIT-26
@story("editor: a save that cannot be written leaves the old list whole")
def save_into_nothing(stage):
    home = home_with_songs(stage)
    stage.player.save_list([home / "music" / "first.wav"], name="Old")
    before = (stage.player.folder / "FILE00.INI").read_bytes()
    open_editor(stage, home)
    stage.player.press_control("Clear")
    away = stage.folder / "away"
    stage.player.folder.rename(away)  # root may write anywhere: only a folder that is gone refuses it
    stage.player.press_control("Save")
    stage.player.wait_for_box("Save OK?")
    stage.desk.key("Return")
    wait("the question is gone", lambda: not nodes(stage, holding="Save OK?"))
    away.rename(stage.player.folder)
    equal((stage.player.folder / "FILE00.INI").read_bytes(), before, "the stored list")
    check(stage.player.running(), "the program has ended")


# DIAL-30: The lamps of auto play and quick play follow
# DIAL-34: What was stored is in force at once and after a restart
@story("settings: keys, delay, window mode and lamps are stored and in force at once and after a restart")
def change_settings(stage):
    songs = [tone(stage.media / name, hz, 6) for name, hz in SONGS.items()]
    stage.player.start(*songs)
    open_settings(stage)
    for field, text in (("PLAY_Click", "q"), ("STOP_Click", "Q"), ("Delay Time", "0x7")):
        stage.desk.click(*node(stage, name=field, role="text").middle, times=2)
        stage.desk.key("ctrl+a")
        stage.desk.type(text)
    stage.player.press_control("Main Window", "radio button")
    stage.player.press_control("Quick Play", "check box")
    close_by(stage, "OK")
    wait("the quick lamp", lambda: stage.player.lamp_lit(QUICK_LAMP))
    stored = {key: stage.player.setting(key) for key in ("PLAY_Click", "STOP_Click", "DELAYTIME", "WINDOWPOS", "QUICK", "AUTOPLAY")}
    equal(stored, {"PLAY_Click": "q", "STOP_Click": "Q", "DELAYTIME": "07", "WINDOWPOS": "1", "QUICK": "ON", "AUTOPLAY": "OFF"}, "stored")
    for restarted in (False, True):
        if restarted:
            stage.player.power_off()
            stage.player.start(*songs)
        wait("it stays above other windows", lambda: "ABOVE" in stage.session.run(["xprop", "-id", str(stage.player.window.id), "_NET_WM_STATE"]))
        stage.player.key("z")
        steady("silence after the old key", lambda: stage.sound.pitch_now() == 0, 0.4)
        stage.player.key("q")
        stage.sound.wait_for(440)
        stage.player.key("Q")
        stage.sound.wait_for_silence()


# DIAL-33: With auto play on either button then plays, Cancel too
@story("settings: Auto Start plays when the dialog closes and at the next start")
def auto_start(stage):
    songs = [tone(stage.media / name, hz, 6) for name, hz in SONGS.items()]
    stage.player.save_list(songs)
    stage.player.start()
    open_settings(stage)
    stage.player.press_control("Auto Start", "check box")
    close_by(stage, "OK")
    stage.sound.wait_for(440)
    wait("the auto lamp", lambda: stage.player.lamp_lit(AUTO_LAMP))
    stage.player.power_off()
    stage.player.start()
    stage.sound.wait_for(440)


# SET-56: What was written and is not read again in the run counts from the next start
# DIAL-08: Both skin lists hold the .BMP and .CSV files of PANELSET, and their texts are the names in force
# DIAL-23: The skin is worn from the next start
@story("settings: another skin is found, stored and worn at the next start")
def another_skin(stage):
    folder = stage.player.folder / "PANELSET"
    for kind in ("BMP", "CSV"):
        shutil.copy(PROJECT / "tests" / "data" / "skins" / f"ODD.{kind}", folder)
    stage.player.start()
    open_settings(stage)
    for name in ("ODD.BMP", "ODD.CSV"):
        node(stage, name=name, role="list item")
    name_skin(stage, "ODD.BMP", "ODD.CSV")
    close_by(stage, "OK")
    equal((stage.player.setting("BITMAPFILE"), stage.player.setting("TEXTFILE")), ("ODD.BMP", "ODD.CSV"), "stored skin")
    stage.player.power_off()
    stage.player.skin = read_skin(folder / "ODD.CSV")
    stage.player.start()


# DIAL-28: Another device shows the restart notice of three lines once, then AUXTYPE is written, and the running player
#     keeps its device
@story("settings: another volume device gives the restart notice; Cancel stores nothing")
def restart_notice(stage):
    stage.player.start()
    open_settings(stage)
    stage.player.press_control("Sub Window", "radio button")
    close_by(stage, "Cancel")
    check(not (stage.player.folder / "KADO.INI").exists(), "Cancel wrote settings")
    open_settings(stage)
    stage.desk.click(*node(stage, name="WAVE OUT", role="combo box").middle)
    stage.desk.key("Up", "Return")
    stage.player.press_control("OK")
    stage.player.wait_for_text("サウンド出力の設定が変更されました。")
    stage.desk.key("Return")
    stage.player.wait_for_panel()
    equal(stage.player.setting("AUXTYPE"), "-2", "stored device")


# DIAL-36: Tab reaches each field once, Enter takes and Escape leaves
@story("settings: by keyboard alone a key is changed and Enter takes it")
def settings_by_keyboard(stage):
    song = tone(stage.media / "song.wav", 440, 6)
    stage.player.start(song)
    open_settings(stage)
    tab_to(stage, "PLAY_Click")
    stage.desk.type("w")
    stage.desk.key("Return")
    stage.player.wait_for_panel()
    stage.player.key("w")
    stage.sound.wait_for(440)


# DIAL-04: It does not open while something plays
# BTN-13
@story("settings: the display opens nothing while something plays")
def no_settings_while_playing(stage):
    stage.player.start(tone(stage.media / "song.wav", 440, 6))
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    x, y, _, _ = stage.player.place(DISPLAY_RECORD)
    stage.desk.click(x + 44, y + 21)
    steady("only the panel", lambda: len(stage.player.windows()) == 1, 0.6)


def name_skin(stage, bitmap, text):
    """Types the names of a skin's two files into the open settings."""
    for label, name in (("Bitmap File", bitmap), ("Text File", text)):
        x, y, width, height = node(stage, name=label, role="label")["place"]
        stage.desk.click(x + width + 60, y + height // 2)
        stage.desk.key("ctrl+a")
        stage.desk.type(name)


@story("settings: a skin pair that cannot be shown is told in one box, the dialog stays, and the next start works")
def unfit_skin(stage):
    folder = stage.player.folder / "PANELSET"
    shutil.copy(PROJECT / "tests" / "data" / "skins" / "ODD.BMP", folder)  # too small for the default's parts
    stage.player.start()
    open_settings(stage)
    stage.player.press_control("Quick Play", "check box")
    for bitmap, text, wrong in (("ODD.BMP", "DEFAULT.CSV", "this part does not lie inside the bitmap"),
                                ("DEFUALT.BMP", "DEFAULT.CSV", f"{folder / 'DEFUALT.BMP'} Not found!!")):
        name_skin(stage, bitmap, text)
        stage.player.press_control("OK")
        stage.player.wait_for_box(wrong)
        stage.leave_picture(bitmap)
        equal(len(stage.player.boxes()), 1, "boxes")
        stage.desk.key("Return")
        stage.player.wait_for_no_box()
        node(stage, name="Top Window")
        check(not (stage.player.folder / "KADO.INI").exists(), "settings were stored")
    name_skin(stage, "DEFAULT.BMP", "DEFAULT.CSV")
    close_by(stage, "OK")
    equal((stage.player.setting("BITMAPFILE"), stage.player.setting("QUICK")), ("DEFAULT.BMP", "ON"), "stored")
    equal(stage.player.power_off(), 0, "exit code")
    stage.player.start()
    equal(stage.player.power_off(), 0, "exit code")


def interval_field(stage):
    """The editor's combo box for the interval; its name is what stands in it."""
    return wait("the interval", lambda: [each for each in nodes(stage, role="combo box") if each["label"] == "INTERVAL"])[0]


def type_interval(stage, text, leaves=True):
    """Types it and leaves the field."""
    x, y, _, height = interval_field(stage)["place"]
    stage.desk.click(x + 12, y + height // 2)
    stage.desk.key("ctrl+a")
    stage.desk.type(text)
    if leaves:
        stage.desk.key("Tab")


@story("editor: a typed interval counts from OK on, is held in its range, and is shown when the editor opens again")
def typed_intervals(stage):
    home = home_with_songs(stage)
    stage.player.settings(INTERVAL=30)
    open_editor(stage, home)
    for typed, kept in (("40000", "32767"), ("-3", "0"), ("20", "20"), ("2", "2")):
        type_interval(stage, typed)
        close_by(stage, "OK")
        equal(stage.player.setting("INTERVAL"), kept, f"what is stored of {typed}")
        stage.player.press(EDITOR)
        node(stage, name="PLAY LIST", role="list")
        wait(f"{kept} in the field", lambda kept=kept: interval_field(stage)["name"] == kept)
    stage.leave_picture("shown")
    for number, colour in enumerate(("#C83232", "#3250C8")):
        picture(home / "music" / f"view{number}.bmp", colour)
    close_by(stage, "Cancel")
    another = stage.player.start_another("--open", *(str(home / "music" / f"view{number}.bmp") for number in (0, 1)))
    middle = stage.desk.screen.width // 2, stage.desk.screen.height // 2
    stage.desk.wait_for_colour(*middle, "#C83232", 15)
    stage.desk.wait_for_colour(*middle, "#3250C8", 5)  # after the two seconds that were typed, not the thirty of the start
    equal(another.wait(10), 0, "exit code of the second start")
    equal(stage.player.power_off(), 0, "exit code")
