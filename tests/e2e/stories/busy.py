# SPDX-License-Identifier: GPL-3.0-or-later
"""A mixed list under busy hands: whatever a person, a remote control and a file manager can do, in any order."""

import os
import random
import time

from harness.expect import SLACK, StoryFailure, check, wait
from harness.media import tone
from harness.player import (NEXT, NUMBER_RECORD, PAUSE, PLAY, PREVIOUS, REPEAT, SHUFFLE, SLIDER_RECORD, STOP, VOLUME_DOWN,
                            VOLUME_UP, EDITOR, set_sink_volume)
from harness.story import FULL_VOLUME, story
from stories.media_keys import Remote
from stories.mixed import mixed_list
from stories.windows import close_by, nodes, settings_place

SEED = 7
SECONDS = float(os.environ.get("CORVANE_BUSY_SECONDS", "20"))  # the long form takes more
KEYS = ("z", "x", "c", "comma", "period", "u", "d", "R", "S")
REMOTE_CALLS = ("PlayPause", "Play", "Pause", "Stop", "Next", "Previous")
ANSWER_SECONDS = 20  # what hangs does not show a panel again by then
LONGEST_PAUSE = 0.8
LEAST_ACTS, LEAST_CHANGES = 0.7, 0.15  # a second; with two busy programs beside it, it is twice as many
MOST_TIMES = 4  # as long, on a machine that is busier still, until it was so many
MENU_ENTRY = "Play Command"


class Hands:
    """One thing after the other, chosen by a fixed seed; each leaves the panel where it stood."""

    def __init__(self, stage, paths):
        self.stage, self.player, self.desk = stage, stage.player, stage.desk
        self.paths = paths
        self.remote = Remote(stage)
        self.chance = random.Random(SEED)
        self.done, self.numbers = {}, []
        # What a person does often stands here more often.
        self.ways = [self.press_a_button, self.press_a_button, self.type_keys, self.type_keys, self.step_fast, self.step_fast,
                     self.hold, self.click_the_slider, self.click_the_slider, self.drag_the_slider, self.command_from_afar,
                     self.command_from_afar, self.seek_from_afar, self.hand_over, self.look_into_the_editor,
                     self.look_into_the_settings, self.open_the_menu, self.minimise, self.wait_a_while, self.wait_a_while]

    def once(self):
        """One act; the panel stands there again and no box is left."""
        way = self.chance.choice(self.ways)
        self.done[way.__name__] = self.done.get(way.__name__, 0) + 1
        try:
            way()
            wait("the panel without a box", self.settled, ANSWER_SECONDS)
        except StoryFailure as failure:
            acts = sum(self.done.values())
            raise StoryFailure(f"act {acts}, {way.__name__}: {failure}; {self.player.log()[-400:]}") from failure
        shown = self.player.look(NUMBER_RECORD).tobytes()
        if self.numbers[-1:] != [shown]:
            self.numbers.append(shown)

    def settled(self):
        check(self.player.running(), f"the program ended with code {self.player.process.poll()}")
        for box in self.player.boxes():
            self.desk.focus(box)
            self.desk.key("Return")
            return False
        if self.player.find_panel() is not None:
            return True
        # A press that came late, when it had stopped, has opened a dialog.
        for cancel in nodes(self.stage, name="Cancel", role="push button"):
            self.desk.click(*cancel.middle)
        self.desk.tool("windowmap", self.player.window.id, check=False)
        return False

    def press_a_button(self):
        self.player.press(self.chance.choice((PLAY, PLAY, PLAY, PAUSE, STOP, PREVIOUS, NEXT, NEXT, REPEAT, SHUFFLE, VOLUME_DOWN,
                                              VOLUME_UP)))

    def type_keys(self):
        self.player.key(*(self.chance.choice(KEYS) for _ in range(self.chance.randrange(1, 4))))

    def step_fast(self):
        self.player.key("z", *["period"] * self.chance.randrange(2, 9))

    def hold(self):
        self.player.hold(self.chance.choice((NEXT, PREVIOUS, VOLUME_DOWN, VOLUME_UP)), self.chance.randrange(300, 1200))

    def click_the_slider(self):
        self.desk.click(*self.player.slider(self.chance.random()))

    def drag_the_slider(self):
        self.desk.drag(self.player.slider(self.chance.random()), self.player.slider(self.chance.random()))

    def command_from_afar(self):
        self.remote.call(self.chance.choice(REMOTE_CALLS))

    def seek_from_afar(self):
        self.remote.call("Seek", f"int64:{self.chance.randrange(-2000000, 2000000)}")

    def hand_over(self):
        """As a file manager does; then the whole list again."""
        for paths in ([self.chance.choice(self.paths)], self.paths):
            self.open(*paths)
            self.player.key("z")

    def open(self, *paths):
        handing = self.player.start_another("--open", *paths)
        wait("the names are handed over", lambda: handing.poll() is not None, ANSWER_SECONDS)

    def look_into_the_editor(self):
        self.open_dialog(lambda: self.player.press(EDITOR), name="PLAY LIST", role="list")
        close_by(self.stage, self.chance.choice(("OK", "Cancel")))

    def look_into_the_settings(self):
        self.open_dialog(lambda: self.desk.click(*settings_place(self.player)), name="Top Window")
        close_by(self.stage, self.chance.choice(("OK", "Cancel")))

    def open_dialog(self, press, **control):
        """It opens only while nothing plays: pressed again when something began in between."""

        def shown():
            if nodes(self.stage, **control):
                return True
            self.player.key("c")
            press()
            return False

        wait(f"a dialog with {control}", shown, ANSWER_SECONDS, 1.5)

    def open_the_menu(self):
        self.desk.click(*self.player.middle(SLIDER_RECORD), button=3)
        wait("the menu, or a box in its stead", lambda: nodes(self.stage, name=MENU_ENTRY) or self.player.boxes(), ANSWER_SECONDS)
        self.desk.key("Escape")
        wait("the menu goes", lambda: not nodes(self.stage, name=MENU_ENTRY), ANSWER_SECONDS)

    def minimise(self):
        self.desk.tool("windowminimize", self.player.window.id, check=False)
        wait("the panel is minimised", lambda: self.player.find_panel() is None, ANSWER_SECONDS)
        self.desk.tool("windowmap", self.player.window.id, check=False)

    def wait_a_while(self):
        time.sleep(self.chance.random() * LONGEST_PAUSE)


# FAULT-23: Whatever is pressed, typed, dragged, commanded from afar and handed over, in any order: the panel answers,
#     no box is left, and it ends as it should
@story("busy hands: a mixed list stands keys, buttons, slider, remote control, files handed over and dialogs in any order")
def busy_hands(stage):
    entries, environment = mixed_list(stage)
    paths = [entry.path for entry in entries]
    stage.player.settings(INTERVAL=2, DELAYTIME=30)
    stage.player.start(*paths, **environment)
    hands = Hands(stage, paths)
    stage.player.press(REPEAT)
    stage.player.press(PLAY)
    begun = time.monotonic()
    enough = False
    while (passed := time.monotonic() - begun) < SECONDS or not enough and passed < SECONDS * MOST_TIMES:
        hands.once()
        acts, changes = sum(hands.done.values()), len(hands.numbers)
        enough = acts >= SECONDS * LEAST_ACTS / SLACK and changes >= SECONDS * LEAST_CHANGES / SLACK
    print(f"     {acts} acts, {changes} changes of file seen", flush=True)
    check(enough, f"{acts} acts, {changes} changes of file")
    stage.player.key("c")
    wait("only the panel", lambda: len(stage.player.windows()) == 1, ANSWER_SECONDS)
    stage.sound.wait_for_silence()
    set_sink_volume(stage.session, FULL_VOLUME)
    song = tone(stage.media / "last.wav", 1047, 30)
    hands.open(song)
    stage.player.key("z")
    stage.sound.wait_for(1047, ANSWER_SECONDS)
    check(stage.player.power_off() == 0, "it ends as it should")
