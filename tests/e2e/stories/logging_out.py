# SPDX-License-Identifier: GPL-3.0-or-later
"""The end of the session while a window of the player waits for an answer, and two sessions of one user."""

import signal

from harness.expect import check, equal
from harness.in_time import in_time
from harness.media import tone
from harness.player import EDITOR, PLAY
from harness.story import Stage, Theatre, story
from stories.faults import stored_list
from stories.hand import open_menu
from stories.windows import node, open_settings

END_SECONDS = 2
NO_MORE = (signal.SIGTERM, signal.SIGHUP)


def box_of_a_missing_file(stage):
    stage.player.press(PLAY)
    stage.player.wait_for_box("Can't open!!")


def editor_with_changes(stage):
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    stage.player.press_control("Clear")


def question_of_the_editor(stage):
    editor_with_changes(stage)
    stage.player.press_control("Cancel")
    stage.player.wait_for_box("is not saved. Lose its changes?")


def question_of_saving(stage):
    editor_with_changes(stage)
    stage.player.press_control("Save")
    stage.player.wait_for_text("Save OK?")


OPENED = {"a box": box_of_a_missing_file, "an editor with changes": editor_with_changes, "its question": question_of_the_editor,
          "the question of saving": question_of_saving, "the settings": open_settings, "the menu": open_menu}


# DESK-10: At the end of the session the player ends in time with code 0 whatever it has open: a box and a question are refused,
#     what was not saved is as it was, nothing half written stays
@story("session: its end ends the player in time, whatever is open: a box, a question, the editor, the settings, the menu")
def logged_out(stage):
    gone = stage.media / "gone.wav"
    for sign in NO_MORE:
        for what, opens in OPENED.items():
            kept = stored_list(stage, gone)
            stage.player.start("--open", under=("env", "--default-signal=HUP,INT"))
            opens(stage)
            with in_time(stage, f"with {what} open the end", END_SECONDS):
                stage.player.process.send_signal(sign)
                equal(stage.player.wait_for_end(), 0, f"exit code with {what} open")
            equal((stage.player.folder / "FILE00.INI").read_bytes(), kept, f"the stored list with {what} open")
            equal(list(stage.player.folder.glob(".corvane-*")), [], "unfinished files")


# DESK-08
@story("session: a start in another session of the user says where the player runs, and nothing changes there")
def two_sessions(stage):
    song = tone(stage.media / "song.wav", 440, 90)  # longer than the other desktop takes
    other = tone(stage.media / "other.wav", 700, 5)
    stage.player.start(song)
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    here = stage.session.environment["DISPLAY"]
    with Theatre(stage.theatre.program, stage.theatre.proofs) as theatre:
        inner = Stage(theatre, 1)
        inner.player.folder = stage.player.folder
        runtime = stage.session.environment["XDG_RUNTIME_DIR"]
        inner.player.start("--open", str(other), panel=False, XDG_RUNTIME_DIR=runtime)
        inner.player.wait_for_box(f"The player runs already in another session, on {here}.")
        inner.seen = stage.seen
        inner.leave_picture("told")
        stage.sound.expect_steady(440, 1)
        inner.desk.key("Return")
        equal(inner.player.wait_for_end(), 0, "exit code")
        # A plain start says it to whoever reads it, and shows nothing.
        inner.player.start(panel=False, XDG_RUNTIME_DIR=runtime)
        equal(inner.player.wait_for_end(), 0, "exit code of a plain start")
        check(f"runs already in another session, on {here}." in inner.player.log(), inner.player.log()[-300:])
        equal(inner.player.boxes(), [], "boxes of a plain start")
        inner.close()
    stage.sound.expect_steady(440, 0.5)
    equal(stage.player.power_off(), 0, "exit code")
