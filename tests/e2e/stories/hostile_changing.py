# SPDX-License-Identifier: GPL-3.0-or-later
"""Files that change under the player's hands: while one plays it is cut off, grows, is overwritten, taken away, or replaced by what is
no file. The panel answers, memory stays, a good file follows each."""

import os
import shutil

from harness import PROJECT
from harness.expect import check
from harness.media import disc, movie, picture, tone
from harness.story import story
from hostile.attack import HAND_SETTINGS, Attack
from hostile.catalogue import Hostile
from hostile.parts import noise

PART = int(os.environ.get("CORVANE_HOSTILE", "16"))  # every so many; 1: all
SECONDS = 30
GROWN = 300 << 20
MOMENT = 0.15  # seconds before the change, and after it


def write_over(path):
    with open(path, "r+b") as out:
        out.write(noise("over", min(path.stat().st_size, 200_000)))


def add(path):
    with open(path, "ab") as out:
        out.write(noise("add", 200_000))


def instead(make):
    """Another thing takes its name."""

    def change(path):
        path.unlink()
        make(path)

    return change


def replace(path):
    """As a program saves: another file takes the name at once."""
    other = path.with_name("other")
    other.write_bytes(noise("other", 50_000))
    other.rename(path)


def to_and_fro(path):
    """Cut off and whole again, many times."""
    size = path.stat().st_size
    for _ in range(200):
        os.truncate(path, 0)
        os.truncate(path, size)


CHANGES = {
    "emptied": lambda path: os.truncate(path, 0), "cut": lambda path: os.truncate(path, path.stat().st_size // 3), "grown": lambda path: os.truncate(path, GROWN), "added_to": add, "written_over": write_over, "replaced": replace, "cut_and_whole": to_and_fro,
    "gone": os.unlink, "pipe": instead(os.mkfifo), "folder": instead(os.mkdir), "device": instead(lambda path: os.symlink("/dev/zero", path)), "itself": instead(lambda path: os.symlink(path.name, path)), "forbidden": lambda path: path.chmod(0),
}


def sources(folder):
    """One of each kind: (what is opened, what is changed)."""
    made = [tone(folder / "song.wav", 550, SECONDS), tone(folder / "song.mp3", 660, SECONDS), movie(folder / "movie.avi", "#806020", 440, SECONDS)]
    made.append(picture(folder / "picture.bmp", "#806020"))
    made.append(shutil.copy(PROJECT / "samples" / "chime.mid", folder / "chime.mid"))
    sheet, tracks = disc(folder, (440, 550), SECONDS)
    return [*((path, path) for path in made), (tracks[1], sheet.with_suffix(".bin")), (tracks[0], sheet)]


class Changing(Attack):
    """Files that are good when they are opened, and changed a moment later."""

    def __init__(self, stage, goods, changes, kept):
        super().__init__(stage, goods, MOMENT)
        self._changes, self._kept = changes, kept  # path: (what is changed, how); where whole ones lie
        self._now = None

    def _meet(self, what, bad, *rest):
        place, _ = self._changes[bad]
        shutil.rmtree(bad.parent)
        shutil.copytree(self._kept, bad.parent)
        self._now = bad
        super()._meet(f"{what} ({place.name})", bad, *rest)

    def _touch(self, number):
        place, change = self._changes[self._now]
        change(place)
        self.stage.desk.click(*self.player.slider(0.2 + 0.1 * (number % 7)))
        self.watch_a_while()
        super()._touch(number)


@story("hostile: files that are cut, replaced or taken away while they play hold nothing up, and a good file follows each")
def changing(stage):
    kept = stage.folder / "kept"
    kept.mkdir()
    found, changes = [], {}
    for source, changed in sources(kept):
        for name, change in CHANGES.items():
            folder = stage.media / f"c{len(found):03}"
            folder.mkdir()
            path = folder / source.name
            changes[path] = (folder / changed.name, change)
            found.append(Hostile(name, source.name, path))
    chosen = found[2 % PART::PART]
    goods = [(tone(stage.media / f"good{number}.wav", 440, 60), None) for number in range(2)]
    stage.player.settings(**HAND_SETTINGS)
    with Changing(stage, goods, changes, kept) as hands:
        counts = hands.by_drop(chosen), hands.by_hand_over(chosen), hands.by_list(chosen)
    told = hands.told(f"{len(chosen)} changing files", dict(zip(("drop", "hand-over", "list"), counts)))
    print(f"     {told}", flush=True)
    stage.leave_text("hostile", "\n".join([told, *hands.failures]) + "\n")
    check(not hands.failures, f"{len(hands.failures)} of {hands.met}: " + "; ".join(hands.failures[:6]))
