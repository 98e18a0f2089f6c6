# SPDX-License-Identifier: GPL-3.0-or-later
"""The panel in the hand: keys, holds, slider, knob, menu, dragging, drops."""

import numpy as np

from harness.expect import StoryFailure, check, equal, standing, steady, wait
from harness.media import steps, tone
from harness.player import (KNOB_RECORD, MINIMISE, NEXT, PAUSE, PLAY, PREVIOUS, REPEAT_LAMP, STOP, VOLUME_DOWN, VOLUME_UP,
                            set_sink_volume, sink_volume)
from harness.signs import told
from harness.sound import same_pitch
from harness.story import story

TONES = (440, 554, 698)
LADDER = [round(220 * 1.06**step) for step in range(40)]  # one second each: what sounds tells the position
STEP_OF_VOLUME = 65535 / 15


def songs(stage, seconds=8):
    return [tone(stage.media / f"song{number}.wav", hz, seconds) for number, hz in enumerate(TONES, 1)]


def start_ladder(stage, *more):
    stage.player.start(steps(stage.media / "ladder.wav", LADDER), *more)
    stage.player.press(PLAY)
    stage.sound.wait_for(LADDER[0])


def rung(stage):
    """Which second of the ladder sounds now; None when it is none."""
    hz = stage.sound.pitch_now()
    near = min(range(len(LADDER)), key=lambda step: abs(LADDER[step] - hz))
    return near if same_pitch(hz, LADDER[near]) else None


def wait_for_rung(stage, least, most, seconds=4):
    return wait(f"second {least} to {most} (now {rung(stage)})", lambda: (rung(stage) or -1) in range(least, most + 1) and rung(stage), seconds)


def level(stage):
    """The volume level that the sink stands at."""
    return round(sink_volume(stage.session)[0] / STEP_OF_VOLUME)


# KEY-06, KEY-07, KEY-08
@story("keys: play, pause, stop, next, previous do what their buttons do")
def transport_keys(stage):
    stage.player.start(*songs(stage))
    stage.player.key("z")
    stage.sound.wait_for(TONES[0])
    stage.player.key("x")
    stage.sound.wait_for_silence()
    stage.player.key("z")
    stage.sound.wait_for(TONES[0])
    stage.player.key("period")
    stage.sound.wait_for(TONES[1])
    stage.player.key("comma", "comma")
    stage.sound.wait_for(TONES[0])
    stage.player.key("c")
    stage.sound.wait_for_silence()


def level_word(number):
    """The sink's volume at a level of the knob."""
    return number * 0x1111


# KEY-02, KEY-03, KEY-12
@story("keys: volume, repeat, minimise and power, capital and small letters apart")
def other_keys(stage):
    set_sink_volume(stage.session, 32768)
    stage.player.start(*songs(stage))
    stage.player.key("u", "u")
    wait("two steps up", lambda: level(stage) == 10)
    stage.player.key("d", "d", "d")
    wait("three steps down", lambda: level(stage) == 7)
    stage.player.key("R")
    wait("the repeat lamp", lambda: stage.player.lamp_lit(REPEAT_LAMP))
    stage.player.key("r", "p", "m")
    steady("the lamp and the panel stay", lambda: stage.player.lamp_lit(REPEAT_LAMP) and stage.player.running(), 0.6)
    stage.player.key("M")
    wait("the panel is minimised", lambda: not stage.player.windows())
    stage.desk.tool("windowmap", stage.player.window.id)
    stage.player.wait_for_panel()
    stage.player.key("P")
    equal(stage.player.wait_for_end(), 0, "exit code")


# KEY-16
@story("keys: bound to other characters they obey those alone")
def bound_keys(stage):
    stage.player.settings(PLAY_Click="q", POWER_Click="!", STOP_Click="")
    stage.player.start(*songs(stage))
    stage.player.key("z")
    steady("silence after the old key", lambda: stage.sound.pitch_now() == 0, 0.5)
    stage.player.key("q")
    stage.sound.wait_for(TONES[0])
    stage.player.key("c")
    stage.sound.wait_for_silence()
    stage.player.key("exclam")
    stage.player.wait_for_end()


# KEY-19
@story("keys: Alt and F4 power off")
def alt_f4(stage):
    stage.player.start(*songs(stage))
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    stage.player.key("alt+F4")
    equal(stage.player.wait_for_end(), 0, "exit code")


# BTN-22
@story("holds: 400 ms on next changes the file once")
def short_hold(stage):
    stage.player.start(*songs(stage))
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    stage.player.hold(NEXT, 400)
    stage.sound.wait_for(TONES[1])
    stage.sound.expect_steady(TONES[1], 0.6)


# BTN-23
@story("holds: 1500 ms on next seeks forward and plays on in the same file")
def long_hold_next(stage):
    start_ladder(stage, *songs(stage))
    stage.player.hold(NEXT, 1500)
    released = wait_for_rung(stage, 8, 24)
    wait_for_rung(stage, released + 1, released + 2)


# BTN-23
@story("holds: 1500 ms on previous seeks back and plays on")
def long_hold_previous(stage):
    start_ladder(stage, *songs(stage))
    stage.desk.drag(stage.player.slider(0.05), stage.player.slider(0.7))
    began = wait_for_rung(stage, 26, 30)
    stage.player.hold(PREVIOUS, 1500)
    released = wait_for_rung(stage, began - 22, began - 6)
    wait_for_rung(stage, released + 1, released + 2)


# BTN-18
@story("holds: while stopped a hold neither seeks nor changes the file")
def hold_while_stopped(stage):
    stage.player.start(*songs(stage))
    stage.player.hold(NEXT, 1200)
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])


# SLIDER-01
@story("slider: a drag while playing seeks and plays on")
def drag_playing(stage):
    start_ladder(stage)
    stage.desk.drag(stage.player.slider(0.1), stage.player.slider(0.5))
    second = wait_for_rung(stage, 19, 21)
    wait_for_rung(stage, second + 1, second + 1)
    fraction = stage.player.slider_fraction()
    check(0.45 < fraction < 0.6, f"the slider is filled to {fraction:.2f}")


# SLIDER-02
@story("slider: a drag while paused stays paused")
def drag_paused(stage):
    start_ladder(stage)
    stage.player.press(PAUSE)
    stage.sound.wait_for_silence()
    stage.desk.drag(stage.player.slider(0.1), stage.player.slider(0.25))
    steady("silence while paused", lambda: stage.sound.pitch_now() == 0, 0.8)
    stage.player.press(PLAY)
    wait_for_rung(stage, 9, 11)


def take_slider_by_right(stage):
    """The right button drags the slider to a third and stays down: the file is paused for it."""
    start = stage.player.slider(0.1)
    words = ["mousemove", *start, "mousedown", 3, "sleep", 0.1]
    for part in (0.2, 0.25, 0.3):
        words += ["mousemove", *stage.player.slider(part), "sleep", 0.05]
    stage.desk.tool(*words)
    stage.sound.wait_for_silence()


def check_hovering(stage, second):
    """The pointer without a button means nothing to the slider: the song goes on."""
    for part in (0.4, 0.6, 0.8, 0.5):
        stage.desk.move(*stage.player.slider(part))
    wait_for_rung(stage, second + 1, second + 2)


# BTN-39
@story("slider: dragged by the right button while a menu comes or the panel is minimised, it is let go and the file goes on")
def lost_right_button(stage):
    start_ladder(stage)
    third = int(len(LADDER) * 0.3)
    take_slider_by_right(stage)
    stage.desk.tool("key", "alt")  # not desk.key, which lets buttons go first
    wait("the menu by Alt", lambda: len(stage.player.windows()) == 2)
    second = wait_for_rung(stage, third - 1, third + 4)
    stage.desk.tool("mouseup", 3)
    stage.desk.key("Escape")
    wait("no other menu", lambda: len(stage.player.windows()) == 1)
    check_hovering(stage, second)
    take_slider_by_right(stage)
    stage.desk.tool("windowminimize", stage.player.window.id)
    wait("the panel is minimised", lambda: not stage.player.windows())
    second = wait_for_rung(stage, third - 1, third + 4)
    stage.desk.tool("mouseup", 3, "windowactivate", "--sync", stage.player.window.id)
    wait("the panel alone", lambda: len(stage.player.windows()) == 1)
    check_hovering(stage, second)


# SLIDER-03
@story("slider: a drag while stopped does nothing")
def drag_stopped(stage):
    stage.player.start(steps(stage.media / "ladder.wav", LADDER))
    stage.desk.drag(stage.player.slider(0.1), stage.player.slider(0.5))
    check(stage.player.slider_fraction() < 0.02, "the slider is filled")
    stage.player.press(PLAY)
    stage.sound.wait_for(LADDER[0])


def knob_point(stage, angle):
    """A point of the knob in a direction, degrees counter-clockwise from the right."""
    x, y, width, height = stage.player.place(KNOB_RECORD)
    radius = min(width, height) * 0.3
    return (x + width / 2 + radius * np.cos(np.radians(angle)), y + height / 2 - radius * np.sin(np.radians(angle)))


# VOL-13, VOL-14
@story("knob: a drag around it goes through the levels, and its gap does nothing")
def turn_knob(stage):
    set_sink_volume(stage.session, 65536)
    stage.player.start()
    look = stage.player.look(KNOB_RECORD)
    for angle, expected in ((216, 1), (162, 4), (100, 7), (72, 9), (0, 12), (-30, 14)):
        near = (expected, expected - 1, expected + 1)
        stage.desk.drag(knob_point(stage, angle + 3), knob_point(stage, angle))
        wait(f"level {near} at {angle} degrees (is {level(stage)})", lambda: level(stage) in near)
    stood = standing("the level", lambda: level(stage))
    stage.desk.drag(knob_point(stage, -88), knob_point(stage, -92))
    equal(level(stage), stood, "level after a drag in the gap")
    check(np.abs(stage.player.look(KNOB_RECORD) - look).sum() > 0, "the indicator has not moved")


# BTN-12, VOL-01
@story("knob: the buttons move it a step and stop at its ends")
def volume_buttons(stage):
    set_sink_volume(stage.session, 65536)
    stage.player.start()
    stage.player.press(VOLUME_UP)
    wait("level 15", lambda: level(stage) == 15)
    for _ in range(17):
        stage.player.press(VOLUME_DOWN)
    wait("level 0", lambda: level(stage) == 0)
    stage.player.press(VOLUME_UP)
    wait("level 1", lambda: level(stage) == 1)


# PANEL-18
@story("volume: another program's change does not disturb the player, and unequal channels come back at the end")
def other_programs(stage):
    set_sink_volume(stage.session, 50000, 20000)
    stage.player.start(*songs(stage))
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    set_sink_volume(stage.session, 30000)
    stage.sound.expect_steady(TONES[0], 0.8)
    stage.player.power_off()
    wait("the volume found at the start", lambda: sink_volume(stage.session) == (50000, 20000), 3)


# MEDIA-70
@story("volume: the knob goes where another program sets it, and a step goes on from there")
def knob_follows(stage):
    set_sink_volume(stage.session, level_word(15))
    stage.player.start()
    stage.desk.rest()
    loudest = stage.player.look(KNOB_RECORD)

    def stands(look):
        return np.array_equal(stage.player.look(KNOB_RECORD), look)

    set_sink_volume(stage.session, level_word(7))
    wait("the knob has moved", lambda: not stands(loudest))
    half = stage.desk.wait_until_still(*stage.player.place(KNOB_RECORD))
    stage.player.press(VOLUME_UP)
    wait("a step more than the other program set", lambda: level(stage) == 8)
    wait("the knob has moved", lambda: not stands(half))
    stage.player.press(VOLUME_DOWN)
    wait("a step less", lambda: level(stage) == 7 and stands(half))
    set_sink_volume(stage.session, level_word(15))
    wait("where it stood at the start", lambda: stands(loudest))
    equal(stage.player.power_off(), 0, "exit code")


# BTN-43
@story("panel: a drag by a free place moves it, and its buttons go with it")
def move_panel(stage):
    stage.player.start(*songs(stage))
    window = stage.player.window
    free = window.x + 400, window.y + window.height - 5
    stage.desk.drag(free, (free[0] - 300, free[1] - 250), steps=60)

    def moved():
        now = stage.player.windows()
        return now and (now[0].x - window.x, now[0].y - window.y) == (-300, -250) and now[0]

    stage.player.window = wait("the panel at its new place", moved)
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])


# PANEL-23
@story("panel: minimised and brought back it plays on")
def minimise(stage):
    stage.player.start(*songs(stage, 12))
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    stage.player.press(MINIMISE)
    wait("the panel is minimised", lambda: not stage.player.windows())
    stage.sound.expect_steady(TONES[0], 0.6)
    stage.desk.tool("windowmap", stage.player.window.id)
    stage.player.wait_for_panel()
    stage.player.press(STOP)
    stage.sound.wait_for_silence()


# PANEL-15
@story("panel: window mode 1 keeps it above other windows, mode 0 does not")
def window_modes(stage):
    for mode, above in ((1, True), (0, False)):
        stage.player.settings(WINDOWPOS=mode)
        stage.player.start()
        def state():
            return "ABOVE" in stage.session.run(["xprop", "-id", str(stage.player.window.id), "_NET_WM_STATE"])

        wait(f"above others: {above}", lambda: state() == above)
        stage.player.power_off()


def open_menu(stage):
    """Opens the menu by Alt alone; returns its window."""
    before = {w.id for w in stage.player.windows()}
    stage.player.key("alt")
    return wait("the menu", lambda: [w for w in stage.player.windows() if w.id not in before])[0]


# KEY-22, MENU-29
@story("menu: by Alt and the arrow keys it plays, pauses and powers off")
def menu_by_keyboard(stage):
    stage.player.start(*songs(stage, 20))
    open_menu(stage)
    stage.desk.key("Down", "Right", "Return")  # Play Command: Play
    stage.sound.wait_for(TONES[0])
    open_menu(stage)
    stage.desk.key("Escape")
    wait("the menu goes", lambda: len(stage.player.windows()) == 1)
    open_menu(stage)
    stage.desk.key("Down", "Right", "Return")  # Play is not offered while it plays: Pause
    stage.sound.wait_for_silence()
    open_menu(stage)
    stage.desk.key("Up", "Return")  # Power OFF is the last one
    equal(stage.player.wait_for_end(), 0, "exit code")


# BTN-41, MENU-08
@story("menu: the right button opens it everywhere on the panel")
def menu_by_mouse(stage):
    stage.player.start(*songs(stage))
    window = stage.player.window
    for place in (stage.player.button(PLAY), stage.player.middle(KNOB_RECORD), (window.x + 400, window.y + window.height - 5),
                  (window.x + 200, window.y + 30)):
        stage.desk.click(*place, button=3)
        wait(f"the menu at {place}", lambda: len(stage.player.windows()) > 1)
        stage.desk.key("Escape")
        wait("the menu goes", lambda: len(stage.player.windows()) == 1)
    steady("silence", lambda: stage.sound.pitch_now() == 0, 0.3)


def answer_box(stage):
    stage.player.wait_for_box("Stop Position too Small!")
    stage.desk.key("Return")
    stage.player.wait_for_no_box()
    wait("the panel alone", lambda: len(stage.player.windows()) == 1)


PLAY_CUSTOM = ("Down",) * 3 + ("Right",)  # Play Command, Play Mode, Play Custom: its first entry, Start Position


@story("menu: an entry chosen by keyboard or by mouse may put up a box, again and again")
def menu_command_with_box(stage):
    stage.player.start(*songs(stage, 60))
    stage.player.press(PLAY)
    wait("some time is told", lambda: told(stage, "Time") not in (None, "", "00:00"), 20)
    stage.player.press(PAUSE)
    open_menu(stage)
    stage.desk.key(*PLAY_CUSTOM, "Return")
    wait("the menu goes", lambda: len(stage.player.windows()) == 1)
    for _ in range(4):  # the stop position at the place of the start position
        open_menu(stage)
        stage.desk.key(*PLAY_CUSTOM, "Down", "Return")
        answer_box(stage)
    for _ in range(2):
        menu = open_menu(stage)
        stage.desk.key(*PLAY_CUSTOM)
        sub = wait("the submenu", lambda: [w for w in stage.player.windows() if w.id not in (menu.id, stage.player.window.id)])[0]
        stage.desk.click(sub.x + 40, sub.y + 34)
        answer_box(stage)
    before = told(stage, "Time")
    stage.player.press(PLAY)
    wait("it plays on", lambda: told(stage, "Time") not in ("", before))
    equal(stage.player.power_off(), 0, "exit code")


MOST_ENTRIES = 12  # of a menu


class MenuReader:
    """Reads the menu as a screen reader does: by what is told of the entry that the keys go to."""

    def __init__(self, stage):
        self.stage, self.pid = stage, stage.player.process.pid

    def go_to(self, *entries):
        """Opens the menu and goes to an entry by the entries above it; returns whether it is told to be checked."""
        open_menu(self.stage)
        entry = self._down_to(entries[0], "Down")
        for name in entries[1:]:
            entry = self._down_to(name, "Right")
        return "checked" in entry[4]

    def _down_to(self, name, key):
        """By that key, which goes to an entry, and Down; returns what is told of the entry."""
        for _ in range(MOST_ENTRIES):
            entry = self._told_after(key)
            if entry[1].replace("&", "") == name:
                return entry
            key = "Down"
        raise StoryFailure(f"there is no entry {name}")

    def _told_after(self, key):
        """The key is pressed once, however late what it does is told: another one would go further meanwhile."""
        self.stage.accessibility.events(self.pid)
        self.stage.desk.key(key)
        told = []

        def of_an_entry():
            told.extend(e for e in self.stage.accessibility.events(self.pid) if e[0].startswith("object:state-changed:focused") and e[2] and e[1])
            return told

        return wait(f"an entry is told of after {key}", of_an_entry)[-1]

    def leave(self, *keys):
        self.stage.desk.key(*keys)
        wait("the menu goes", lambda: len(self.stage.player.windows()) == 1)


# MENU-02, MENU-07
@story("menu: what is switched on says so to assistive programs, and what is switched off no more")
def menu_states(stage):
    stage.player.start(*songs(stage))
    menu = MenuReader(stage)
    choices = [("Play Mode", "Repeat"), ("Play Custom", "Custom ON"), ("Play Custom", "Custom Repeat")]
    for on in (False, True):
        for path in choices:
            equal(menu.go_to(*path), on, f"{path[-1]} is told to be checked")
            stage.leave_picture(f"{path[-1]} {'on' if on else 'off'}".replace(" ", "_"))
            menu.leave("Escape", "Escape") if on else menu.leave("Return")
            if path[-1] == "Custom ON" and not on:
                menu.go_to(*path)
                menu.leave("Return")  # off again: the next one puts both on
    for path in (("Play Command", "Stop"), ("Play Mode", "Shuffle"), ("Help",)):
        check(not menu.go_to(*path), f"{path[-1]} is told to be checked")
        menu.leave("Escape", "Escape")
    equal(stage.player.power_off(), 0, "exit code")


@story("menu: by its letters it plays and powers off")
def menu_by_letters(stage):
    stage.player.start(*songs(stage, 20))
    open_menu(stage)
    stage.leave_picture("letters")
    stage.desk.key("p")  # Play Command
    wait("the submenu", lambda: len(stage.player.windows()) == 3)
    stage.desk.key("p")  # Play
    stage.sound.wait_for(TONES[0])
    open_menu(stage)
    stage.desk.key("o")  # Power OFF
    equal(stage.player.wait_for_end(), 0, "exit code")
