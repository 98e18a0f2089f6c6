# SPDX-License-Identifier: GPL-3.0-or-later
"""Stories and the stage they are played on."""

import dataclasses
import pathlib
import shutil
import traceback
from typing import Callable

from session import Session

from .accessibility import Accessibility
from .desk import Desk
from .expect import StorySkipped
from .player import Player, set_sink_volume
from .running import HeapWatch
from .sound import Recorder

STORIES = []
FULL_VOLUME = 65536


@dataclasses.dataclass
class Story:
    name: str
    play: Callable


def story(name):
    """Registers a function that takes a Stage as a story of that name, "group: what it shows"."""

    def register(play):
        STORIES.append(Story(name, play))
        return play

    return register


class Stage:
    """What one story has: a desktop with mouse and keys, a recording of the sound, the program in a folder of its own."""

    def __init__(self, theatre, number):
        self.theatre = theatre
        self.watch = theatre.watch
        session = self.session = theatre.session
        self.accessibility = theatre.accessibility
        self.folder = session.folder / f"story{number}"  # no dot and no blank: what lies here can be played
        self.folder.mkdir()
        self.media = self.folder / "media"
        self.media.mkdir()
        set_sink_volume(session, FULL_VOLUME)
        self.desk = Desk(session)
        self.desk.rest()
        self.sound = theatre.recorder
        self.sound.begin()
        self.player = theatre.make_player(self, theatre.program, self.folder / "player")
        self.seen = None  # where leave_picture() and leave_text() put what is to be looked at

    def close(self):
        """Fails when the program did not end as it should."""
        self.player.stop()

    def leave_picture(self, name):
        """Leaves the screen in the run's report, also when the story passes: seen/<story>/<name>.png."""
        self.seen.mkdir(parents=True, exist_ok=True)
        self.desk.save(self.seen / f"{name}.png")

    def leave_text(self, name, text):
        """Leaves a text in the run's report, also when the story passes: seen/<story>/<name>.txt."""
        self.seen.mkdir(parents=True, exist_ok=True)
        (self.seen / f"{name}.txt").write_text(text, encoding="utf-8")

    def keep_proof(self, folder):
        """Leaves the screen and the sound."""
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        self.desk.save(folder / "screen.png")
        self.sound.save(folder / "sound.wav")
        for name in ("KADO.INI", "FILE00.INI"):
            if (self.player.folder / name).exists():
                shutil.copy(self.player.folder / name, folder)


class Theatre:
    """Plays stories one after the other on one private desktop."""

    make_player = Player
    accessible = True  # the program is told of to assistive programs, and can be asked that way

    def __init__(self, program, proofs, screen="1280x960", watch=None):
        self.program = pathlib.Path(program).resolve()
        self.watch = watch or HeapWatch(self.program)
        self.proofs = proofs
        self.session = Session(screen, accessibility=self.accessible)
        self.accessibility = self.recorder = None
        self.count = 0

    def __enter__(self):
        self.session.__enter__()
        if self.accessible:
            self.accessibility = Accessibility(self.session)
        self.recorder = Recorder(self.session, self.session.folder / "heard.raw")
        return self

    def __exit__(self, *_):
        for part in (self.recorder, self.accessibility):
            if part is not None:
                part.stop()
        self.session.stop()

    def play(self, told):
        """Plays one story once; returns an empty text, or why it failed. Raises StorySkipped when it cannot be played here."""
        self.count += 1
        stage = Stage(self, self.count)
        name = told.name.replace(": ", "-").replace(" ", "_")
        proof = self.proofs / name
        stage.seen = self.proofs / "seen" / name
        shutil.rmtree(stage.seen, ignore_errors=True)
        try:
            why, skipped = play_once(told, stage, proof)
            fallen = self.session.fallen()
            if fallen:
                why = f"{why}; of the private desktop ended by itself: {', '.join(fallen)}".lstrip("; ")
            if why:
                return f"{why} (and then: {skipped})" if skipped else why
            shutil.rmtree(proof, ignore_errors=True)
            if skipped:
                raise skipped
            return ""
        finally:
            shutil.rmtree(stage.folder, ignore_errors=True)


def play_once(told, stage, proof):
    """Plays the story and looks at how the program's processes ended, also when it was skipped or failed before.
    Returns why it failed, and why it was skipped."""
    failed, skipped = [], None

    def fail(error):
        if not failed:
            stage.keep_proof(proof)
        failed.append(str(error) if isinstance(error, AssertionError) else f"{type(error).__name__}: {error}")
        with open(proof / "error.txt", "a", encoding="utf-8") as text:
            text.write("".join(traceback.format_exception(error)))

    try:
        told.play(stage)
    except StorySkipped as reason:
        skipped = reason
    except Exception as error:  # noqa: BLE001: any error is the story's failure
        fail(error)
    try:
        stage.close()
    except Exception as error:  # noqa: BLE001
        fail(error)
    if failed:
        stage.player.keep_proof(proof)
    return "; ".join(failed), skipped
