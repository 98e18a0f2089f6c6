# SPDX-License-Identifier: GPL-3.0-or-later
"""The player without eyes and without a mouse: what assistive programs read, press and set, and the keyboard alone."""

import numpy as np

from harness.expect import check, equal, steady, wait
from harness.looks import wait_for_exact_panel
from harness.media import disc, steps, tone
from harness.player import PLAY, sink_volume
from harness.signs import told_surely
from harness.story import story
from stories.stalled import Drive

TONES = (440, 554, 698)
STAIRS = (392, 440, 494, 554, 622, 698, 784, 880, 988, 1109)
STAIR_SECONDS = 3  # of each: the tree is read several times while one sounds
BUTTON, SLIDER, LABEL = "push button", "slider", "label"
BUTTONS = ("Power OFF", "Min Button", "Repeat", "Shuffle", "Play", "Pause", "Stop", "Prev", "Next", "Program",
           "Volume Down", "Volume Up", "Costom Setup")
LABELS = ("Display", "Time", "Total FileNo", "FileNo", "Tittle", "Total")
EDITOR_CHOICES = ("DRIVE", "PATTERN", "MOVIE ZOOM", "IMAGE ZOOM", "INTERVAL")
EDITOR_LISTS = ("DIR", "FILE LIST", "PLAY LIST")
SETTINGS_FIELDS = ("POWER_Click", "MINBUTTON_Click", "REPEAT_Click", "SHUFFLE_Click", "PLAY_Click", "PAUSE_Click",
                   "STOP_Click", "PREV_Click", "NEXT_Click", "VOLUME_Up", "VOLUME_Down", "Delay Time")
MOST_TABS = 40


class Reader:
    """A screen reader and its user."""

    def __init__(self, stage):
        self.tree = stage.accessibility
        self.pid = stage.player.process.pid

    def node(self, name, role):
        return self.tree.wait_for(self.pid, name=name, role=role)

    def press(self, name):
        self.tree.act(self.pid, "Press", name=name, role=BUTTON)

    def text(self, label):
        return self.node(label, LABEL)["text"]

    def states(self, name, role=BUTTON):
        return self.node(name, role)["states"]

    def value(self, name):
        return self.node(name, SLIDER)["value"]

    def set(self, name, value):
        self.tree.set_value(self.pid, value, name=name, role=SLIDER)

    def events(self):
        return self.tree.events(self.pid)

    def focused(self):
        """Names and labels of the controls that have the focus: a choice bears its entry as its name."""
        found = [n for n in self.tree.find(self.pid) if "focused" in n["states"]]
        return [text.replace("&", "") for n in found for text in (n["name"], n["label"]) if text]


def songs(stage, seconds=6):
    return [tone(stage.media / f"song{number}.wav", hz, seconds) for number, hz in enumerate(TONES, 1)]


def screen_reader(stage, *files):
    stage.player.start(*files)
    return Reader(stage)


# ACC-01
@story("accessible: each control of the panel has its role, name, state, value and action")
def read_everything(stage):
    reader = screen_reader(stage, *songs(stage))
    reader.node(BUTTONS[-1], BUTTON)  # the panel stands there before its tree does
    shown = reader.tree.find(reader.pid)
    equal(sorted(n["name"] for n in shown if n["role"] == BUTTON), sorted(BUTTONS), "buttons")
    equal(sorted(n["name"] for n in shown if n["role"] == LABEL), sorted(LABELS), "labels")
    equal(sorted(n["name"] for n in shown if n["role"] == SLIDER), ["Slider", "Volume"], "sliders")
    equal(sorted(n["name"] for n in shown if n["role"] == "image"), ["Auto Play", "Quick Play", "Repeat"], "lamps")
    for entry in shown:
        if entry["role"] in (BUTTON, SLIDER):
            check({"enabled", "focusable"} <= set(entry["states"]), f"{entry['name']}: {entry['states']}")
            wanted = "Press" if entry["role"] == BUTTON else "Increase"
            check(wanted in entry["actions"], f"{entry['name']} offers {entry['actions']}")
    equal(reader.node("Volume", SLIDER)["range"], [0, 100], "range of the volume")
    equal([reader.text(each) for each in ("FileNo", "Total FileNo", "Tittle")], ["001", "3", "song1"], "texts")
    for name, record in (("Play", 8), ("Volume", 24), ("Slider", 40)):
        role = BUTTON if name == "Play" else SLIDER
        equal(tuple(reader.node(name, role)["place"]), stage.player.place(record), f"place of {name}")


# ACC-11: A list is played by what a screen reader offers alone
@story("accessible: a list is played by what a screen reader offers alone")
def play_by_reader(stage):
    stairs = steps(stage.media / "stairs.wav", STAIRS, STAIR_SECONDS)
    reader = screen_reader(stage, stairs, *songs(stage, 30)[1:])
    reader.press("Play")
    stage.sound.wait_for(STAIRS[0])
    wait("Play is told to be disabled", lambda: "enabled" not in reader.states("Play"))
    wait("the length", lambda: reader.node("Slider", SLIDER)["range"] == [0, len(STAIRS) * STAIR_SECONDS])

    reader.set("Slider", 7.2 * STAIR_SECONDS)
    stage.sound.wait_for(STAIRS[7])
    wait("the slider says where it stands", lambda: 7 * STAIR_SECONDS <= reader.value("Slider") <= len(STAIRS) * STAIR_SECONDS)
    reader.press("Pause")
    stage.sound.wait_for_silence()
    check("enabled" not in reader.states("Pause"), "Pause is enabled while paused")
    reader.press("Play")

    reader.press("Next")
    stage.sound.wait_for(TONES[1])
    wait("the second file's number", lambda: reader.text("FileNo") == "002")
    equal(reader.text("Tittle"), "song2", "title")

    reader.set("Volume", 40)
    wait("the volume that was set", lambda: max(sink_volume(stage.session)) < 30000)
    equal(reader.value("Volume"), 40, "volume")
    reader.tree.act(reader.pid, "Increase", name="Volume", role=SLIDER)
    wait("a step more", lambda: 46 < reader.value("Volume") < 47)
    reader.press("Volume Down")
    wait("a step less", lambda: reader.value("Volume") == 40)

    reader.press("Repeat")
    wait("Repeat is on", lambda: "checked" in reader.states("Repeat") and "checked" in reader.states("Repeat", "image"))

    reader.events()
    reader.tree.act(reader.pid, "ShowMenu", name="Corvane", role="frame")
    heard = []

    def menu_is_read():
        if not any(e[1] == "Play Command" for e in heard):
            stage.desk.key("Down")  # once the menu is up it has the keys
        heard.extend(e for e in reader.events() if e[0].startswith("object:state-changed:focused"))
        return any(e[1] == "Play Command" for e in heard)

    wait("the menu's first entry is told", menu_is_read, pause=0.3)
    stage.desk.key("Escape")

    reader.press("Stop")
    stage.sound.wait_for_silence()
    reader.press("Power OFF")
    equal(stage.player.wait_for_end(), 0, "exit code")


# ACC-02
@story("accessible: texts, buttons and the position are told when they change")
def hear_changes(stage):
    reader = screen_reader(stage, *songs(stage))
    reader.events()
    reader.press("Play")
    reader.press("Next")
    heard = []

    def told(kind, name, text=None):
        heard.extend(reader.events())
        return any(e[0].startswith(kind) and e[1] == name and text in (None, e[3]) for e in heard)

    for wanted in (("object:text-changed:insert", "FileNo", "002"), ("object:text-changed:insert", "Tittle", "song2"),
                   ("object:state-changed:enabled", "Play"), ("object:property-change:accessible-value", "Slider")):
        wait(f"told: {wanted}", lambda wanted=wanted: told(*wanted))


# ACC-01
@story("accessible: the time, which blinks while a disc is waited for, is found and read while it is away and afterwards")
def read_what_blinks(stage):
    drive = Drive(stage)
    sheet, _ = disc(drive.folder, TONES, 20)
    track = stage.media / "Track01.cda"
    track.write_bytes(b"")
    stage.player.start(track, CORVANE_CDROM=str(sheet), **drive.environment)
    reader = Reader(stage)
    reader.events()
    drive.stall("read")
    stage.player.press(PLAY)
    heard = []

    def told(shown):
        heard.extend(e for e in reader.events() if e[:2] == ["object:state-changed:showing", "Time"])
        return heard and heard[-1][2] == shown

    wait("told: the time is away", lambda: told(0))
    known = wait("the labels", lambda: reader.tree.labels(reader.pid))  # what is found now is asked from now on, as screen readers do
    equal(sorted(known), sorted(LABELS), "labels while the time is away")
    drive.answer()
    stage.sound.wait_for(TONES[0])
    wait("told: the time is there", lambda: told(1))
    check("showing" in reader.states("Time", LABEL), "the time is not shown")
    first = told_surely(stage, "Time")
    wait("the time goes on", lambda: told_surely(stage, "Time") > first)
    equal(stage.player.power_off(), 0, "exit code")


# ACC-08
@story("accessible: every command of the panel by the keyboard alone, with a ring only after Tab")
def keyboard_alone(stage):
    reader = screen_reader(stage, *songs(stage, 30))
    desk, window = stage.desk, stage.player.window
    desk.focus(window)

    def buttons():
        """The part of the panel where no text changes by itself."""
        x, y, _, height = stage.player.place(8)
        return desk.area(window.x, y, window.size[0], height)

    wait_for_exact_panel(stage)
    plain = buttons()
    wait("the panel has the focus", lambda: reader.focused() == ["Corvane"])
    desk.key("space", "Return", "Right")
    steady("no ring before Tab", lambda: stage.sound.pitch_now() == 0 and reader.focused() == ["Corvane"], 0.4)

    reached = []
    for _ in range(len(BUTTONS) + 2):
        stage.player.press_tab()
        reached.append(wait("a control that has the focus", lambda: [n for n in reader.focused() if n != "Corvane"])[0])
    equal(sorted(reached), sorted([*BUTTONS, "Slider", "Volume"]), "reached by Tab")
    desk.key("Tab", "Tab", "Tab")
    wait("the ring on a button", lambda: not np.array_equal(buttons(), plain))
    desk.key("Escape")
    wait("the ring goes", lambda: np.array_equal(buttons(), plain))

    def go_to(name):
        for _ in range(MOST_TABS):
            if name in reader.focused():
                return
            stage.player.press_tab()
        check(False, f"{name} is not reached by Tab")

    go_to("Play")
    desk.key("space")
    stage.sound.wait_for(TONES[0])
    go_to("Volume")
    desk.key("Home")
    wait("no volume", lambda: max(sink_volume(stage.session)) == 0)
    desk.key("End")
    wait("full volume", lambda: min(sink_volume(stage.session)) == 65536)
    go_to("Slider")
    desk.key("Right")
    wait("five seconds on", lambda: reader.value("Slider") >= 5)
    go_to("Stop")
    desk.key("Return")
    stage.sound.wait_for_silence()
    go_to("Costom Setup")
    desk.key("space")
    reader.tree.wait_for(reader.pid, name="Top Window")
    stage.player.wait_for_keyboard()
    desk.key("Escape")
    stage.player.wait_for_panel()
    desk.focus(stage.player.window)
    go_to("Program")
    desk.key("space")
    reader.tree.wait_for(reader.pid, name="PLAY LIST", role="list")
    stage.player.wait_for_keyboard()
    desk.key("Escape")
    stage.player.wait_for_panel()


# ACC-09: Fields of editor and settings are named by their labels
@story("accessible: the fields of editor and settings are named by their labels and reached by Tab")
def labels_of_dialogs(stage):
    reader = screen_reader(stage)
    reader.press("Program")
    reader.node("PLAY LIST", "list")
    stage.player.wait_for_keyboard()
    check_labels(reader, "combo box", EDITOR_CHOICES)
    check_tabs(stage, reader, [*EDITOR_CHOICES, *EDITOR_LISTS, "List name", "List number", "Page number", "Save", "Add", "Add All",
                               "Delete", "Clear", "OK", "Cancel"])
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    reader.press("Costom Setup")
    reader.node("POWER_Click", "text")
    stage.player.wait_for_keyboard()
    check_labels(reader, "text", SETTINGS_FIELDS)
    check_labels(reader, "combo box", ("Bitmap File", "Text File"))
    check_tabs(stage, reader, [*SETTINGS_FIELDS, "Bitmap File", "Text File", "Quick Play", "Auto Start", "OK", "Cancel"])


def check_labels(reader, role, labels):
    """Each of these labels belongs to a field of that role."""
    found = {n["label"].replace("&", "") for n in reader.tree.find(reader.pid, role=role)}
    equal(sorted(set(labels) - found), [], f"labels without a {role}")


def check_tabs(stage, reader, wanted):
    """Each of these has the focus once while Tab goes round."""
    missing = set(wanted)
    for _ in range(MOST_TABS):
        missing -= set(reader.focused())
        if not missing:
            return
        stage.player.press_tab()
    check(False, f"not reached by Tab: {sorted(missing)}")

