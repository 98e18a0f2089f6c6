# SPDX-License-Identifier: GPL-3.0-or-later
"""What only a real window shows: the opening and the closing, the whole-screen surface's keys, the slider's ends, marks."""

import contextlib
import os
import signal
import time

import numpy as np

from harness import ladder
from harness.expect import check, equal, steady, wait
from harness.in_time import Held
from harness.media import movie, picture, tone
from harness.others import OtherProgram
from harness.player import EDITOR, PAUSE, PLAY, POWER, REPEAT, VOLUME_DOWN
from harness.signs import told
from harness.story import story
from stories.windows import close_by, home_with_songs, node, open_editor, open_settings, type_interval

GREEN, VIOLET = "#32A046", "#8232B4"
STEPS = 15  # of the opening and of the closing
AFTER = 990  # hertz


def steps_seen(stage, over):
    """The windows of the program, one look at each of its steps: it runs for a moment and stands still while it is looked at."""
    seen = []
    process = stage.player.process
    try:
        be_on_time(True)
        while not over():
            os.kill(process.pid, signal.SIGCONT)
            time.sleep(0.01)
            if process.poll() is not None:
                break
            os.kill(process.pid, signal.SIGSTOP)
            windows = [window for window in stage.player.windows() if window.size != (1, 1)]  # the tool kit's own
            if len(windows) == 1 and (not seen or windows[0] != seen[-1]):
                seen.append(windows[0])
    finally:
        be_on_time(False)
        if process.poll() is None:
            os.kill(process.pid, signal.SIGCONT)
    return seen


def be_on_time(urgent):
    """Who lets the program run for a moment has a processor at once when that is over, where the system grants it."""
    policy = os.SCHED_FIFO | os.SCHED_RESET_ON_FORK if urgent else os.SCHED_OTHER
    with contextlib.suppress(PermissionError):
        os.sched_setscheduler(0, policy, os.sched_param(1 if urgent else 0))


def step_of(stage, window):
    """The step whose size the window has; None: no step has it."""
    whole = stage.player.scaled(stage.player.skin[0][4:6])
    for step in range(1, STEPS + 1):
        if all(abs(have - side * step / STEPS) <= 1 for have, side in zip(window.size, whole)):
            return step
    return None


def check_steps(stage, windows, corner, what):
    """The steps that were seen whole, in their order: the size of one and the place that it says. A window is moved and sized
    by a request for each side, so that a look may find it between two steps."""
    whole = []
    for window in windows:
        step = step_of(stage, window)
        wanted = step and corner(window, step)
        if step and abs(window.x - wanted[0]) <= 2 and abs(window.y - wanted[1]) <= 2:
            whole.append(step)
    check(len(set(whole)) >= 5, f"{what}: of {windows} too few stand where a step says: {whole}")
    return whole


@story("windows: the opening grows outward in steps, and the closing shrinks to the corner of the screen")
def opening_and_closing(stage):
    screen = stage.desk.screen.width, stage.desk.screen.height
    stage.player.start(panel=False)
    whole = stage.player.scaled(stage.player.skin[0][4:6])
    seen = steps_seen(stage, lambda: stage.player.find_panel() is not None)
    stage.leave_picture("opened")

    def outward(window, step):
        return tuple((screen[i] - window.size[i]) * step * 3 / 50 for i in (0, 1))

    steps = check_steps(stage, seen, outward, "opening")
    equal(steps, sorted(steps), "opening: the order of the steps")
    panel = stage.player.wait_for_panel()
    stage.desk.tool("mousemove", *stage.player.button(POWER), "mousedown", 1)
    os.kill(stage.player.process.pid, signal.SIGSTOP)  # so that no step is missed
    stage.desk.tool("mouseup", 1)
    seen = steps_seen(stage, lambda: not stage.player.running())

    def inward(window, step):
        return tuple(((panel.x, panel.y)[i] + whole[i] - window.size[i]) * step * 3 / 50 for i in (0, 1))

    closing = [window for window in seen if (window.x, window.y) != (panel.x, panel.y)]
    steps = check_steps(stage, closing, inward, "closing")
    equal(steps, sorted(steps, reverse=True), "closing: the order of the steps")
    equal(stage.player.wait_for_end(), 0, "exit code")


@story("movies: over the whole screen Alt and the right button open the menu, and Alt+Tab leaves without arming it")
def whole_screen_keys(stage):
    stage.player.settings(MOVIEZOOM=5, DELAYTIME=50)
    stage.player.start(movie(stage.media / "film.avi", GREEN, 700, 60))
    stage.player.press(PLAY)
    screen = stage.desk.screen.width, stage.desk.screen.height
    surface = wait("the whole screen", lambda: [w for w in stage.player.windows() if w.size == screen])[0]
    stage.desk.wait_for_colour(10, 10, GREEN)
    stage.desk.focus(surface)

    def menus():
        return len(stage.player.windows()) - alone

    alone = len(stage.player.windows())
    for what, open_it in (("Alt", lambda: stage.desk.key("alt")), ("the right button", lambda: stage.desk.click(300, 300, button=3))):
        open_it()
        wait(f"the menu by {what}", lambda: menus() == 1)
        stage.leave_picture(what.replace(" ", "_"))
        stage.desk.key("Escape")
        wait("the menu goes", lambda: menus() == 0)
    with OtherProgram(stage) as other:
        stage.desk.tool("windowactivate", "--sync", surface.id)
        wait("the surface has the keyboard", lambda: stage.desk.focused() == surface.id)
        stage.desk.tool("keydown", "alt", "sleep", 0.1, "key", "Tab", "sleep", 0.1, "keyup", "alt")
        wait("another window has the keyboard", lambda: stage.desk.focused() != surface.id)
        check(other.window.id, "no other program")
        stage.desk.tool("windowactivate", "--sync", surface.id)
        wait("the surface has the keyboard", lambda: stage.desk.focused() == surface.id)
        stage.desk.key("q")
        steady("no menu at the next key", lambda: menus() == 0, 0.6)
    equal(stage.player.running(), True, "running")


@story("slider: dragged to its middle and to its ends a movie and a track go on from there, a picture counts from there")
def whole_slider(stage):
    def heard(least, most):
        return (ladder.second_of(stage.sound.pitch_now()) or -1) in range(least, most + 1)

    middle = ladder.SECONDS // 2
    sheet, tracks = ladder.track(stage.media, AFTER)
    for path, environment in ((ladder.movie(stage.media / "film.avi"), {}), (tracks[0], {"CORVANE_CDROM": str(sheet)})):
        stage.player.settings(DELAYTIME=50)
        stage.player.start(path, **environment)
        stage.player.press(PLAY)
        stage.sound.wait_for(ladder.TONES[0], 10)
        stage.desk.drag(stage.player.slider(0.05), stage.player.slider(0.5))
        wait(f"{path.name} from its middle", lambda: heard(middle, middle + 2))
        stage.desk.drag(stage.player.slider(0.5), stage.player.slider(0))
        wait(f"{path.name} from its beginning", lambda: heard(0, 2))
        stage.player.key("c")
        stage.player.power_off()
    stage.player.settings(INTERVAL=60)
    stage.player.start(picture(stage.media / "still.bmp", VIOLET))
    stage.player.press(PLAY)
    wait("the picture's time", lambda: told(stage, "Time") not in (None, ""))
    stage.desk.drag(stage.player.slider(0.05), stage.player.slider(0.5))
    wait("half of the picture's time", lambda: told(stage, "Time") in ("00:30", "00:31", "00:32"))


@story("settings: a click beside a key's name gives its field the keyboard")
def click_the_mark(stage):
    stage.player.start()
    open_settings(stage)
    x, y, _, height = node(stage, name="NEXT_Click", role="label")["place"]
    stage.desk.click(x - 8, y + height // 2)
    stage.leave_picture("mark")
    stage.desk.type("w")
    close_by(stage, "OK")
    equal(stage.player.setting("NEXT_Click"), "w", "the key")


@story("editor: a listed interval that is typed does not count when the field is left, and F1 opens the help there")
def typed_interval(stage):
    stage.player.settings(INTERVAL=0)
    open_editor(stage, home_with_songs(stage))
    type_interval(stage, "20")
    stage.desk.key("F1")
    stage.desk.wait_for_keyboard(stage.player.wait_for_window("Help"))
    stage.desk.key("Escape")
    stage.player.wait_for_no_window("Help")
    stage.leave_picture("typed")
    close_by(stage, "Cancel")
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    close_by(stage, "OK")  # writes what the field shows: what is in force
    equal(stage.player.setting("INTERVAL"), "0", "the interval in force after Cancel")


INDICATOR = (25, 26, 27)  # records of the playing indicator's pictures
ROUND = (26, 27, 25)  # the order in which they follow each other


def indicator(stage):
    """The record whose picture it shows."""
    shown = stage.player.look(INDICATOR[0])
    return min(INDICATOR, key=lambda record: np.abs(shown - stage.player.cell(record)).sum())


# DISP-03
@story("panel: the playing indicator goes round its three pictures, a step a second, whatever is clicked, and stands in a pause")
def indicator_goes_round(stage):
    stage.player.start(tone(stage.media / "song.wav", 440, 60))
    equal(indicator(stage), INDICATOR[0], "the picture before anything plays")
    stage.player.press(PLAY)
    seen = [(time.monotonic(), indicator(stage))]

    def steps(count):
        """Until it has changed that often since the last look."""
        until = len(seen) + count

        def look():
            now = indicator(stage)
            if now != seen[-1][1]:
                seen.append((time.monotonic(), now))
            return len(seen) >= until

        wait(f"{count} steps", look, 3 * count, 0.02)

    late = Held(stage.player)
    steps(4)
    stage.leave_picture("playing")
    stage.player.press(REPEAT)
    stage.player.press(VOLUME_DOWN)
    steps(4)
    shown = [record for _, record in seen[1:]]
    first = ROUND.index(shown[0])
    equal(shown, [ROUND[(first + number) % 3] for number in range(len(shown))], "the order of the pictures")
    pauses = [after - before for (before, _), (after, _) in zip(seen[1:], seen[2:])]
    check(0.8 < sorted(pauses)[len(pauses) // 2] < 1.2 and max(pauses) < 1.8 + late.seconds(), f"a step a second: {pauses}")
    stage.player.press(PAUSE)
    stage.sound.wait_for_silence()
    stood = indicator(stage)
    steady("it stands in a pause", lambda: indicator(stage) == stood, 2.2)
    stage.player.press(PLAY)
    wait("it goes on", lambda: indicator(stage) == ROUND[(ROUND.index(stood) + 1) % 3], 3)
    equal(stage.player.power_off(), 0, "exit code")
