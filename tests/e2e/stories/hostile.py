# SPDX-License-Identifier: GPL-3.0-or-later
"""Hundreds of hostile files of every kind, each by a stored list, by a drop and by the command line: the panel answers, memory
stays, a good file plays behind each."""

import os

from harness.expect import check
from harness.media import disc, movie, picture, tone
from harness.story import story
from hostile import make
from hostile.attack import HAND_SETTINGS, LOOK_SECONDS, Attack

PART = os.environ.get("CORVANE_HOSTILE", "16")  # every so many of each group; "1": all
GREEN = "#32A046"
SECONDS = 60
LOOKS = {"swollen files": 2.0}  # memory is filled by and by
AT_ONCE = 120  # a list has room for 256, and every other one is good


def good_files(stage, group):
    """A sound, and one of the group's own kind: [(path, colour)]."""
    folder = stage.media / "good"
    folder.mkdir()
    found = [(tone(folder / "good.wav", 440, SECONDS), None)]
    if group == "streams":
        found.append((tone(folder / "good.mp3", 554, SECONDS), None))
    elif group in ("movies", "films"):
        found.append((movie(folder / "good.avi", GREEN, 660, SECONDS), GREEN))
    elif group == "pictures":
        found.append((picture(folder / "good.bmp", GREEN), GREEN))
    elif group == "discs":
        found.append((disc(folder, (440, 554), SECONDS)[1][1], None))
    # Under another name each again, so that no two in a row are the same.
    again = [((path.parent / f"again{path.suffix}" if path.suffix != ".cda" else path.with_name("Track01.cda")), colour) for path, colour in found]
    for (path, _), (other, _) in zip(found, again):
        if not other.exists():
            other.hardlink_to(path)
    return found + again


def attack(stage, group):
    files = make(stage.media, group, 1, int(PART))
    stage.player.settings(**HAND_SETTINGS)
    before = sorted(path.name for path in stage.player.folder.iterdir())
    with Attack(stage, good_files(stage, group), LOOKS.get(group, LOOK_SECONDS)) as hands:
        ways = {"drop": hands.by_drop(files), "hand-over": hands.by_hand_over(files), "start": 0, "list": 0}
        for begin in range(0, len(files), AT_ONCE):
            ways["start"] += hands.by_start(files[begin:begin + AT_ONCE])
            ways["list"] += hands.by_list(files[begin:begin + AT_ONCE])
    (stage.player.folder / "FILE00.INI").unlink()
    told = hands.told(f"{len(files)} {group}", ways)
    print(f"     {told}", flush=True)
    stage.leave_text("hostile", "\n".join([told, *hands.failures]) + "\n")
    check(not hands.failures, f"{len(hands.failures)} of {hands.met}: " + "; ".join(hands.failures[:6]))
    left = sorted(path.name for path in stage.player.folder.iterdir() if path.name != "RESUME.INI")
    check(left == before, f"nothing but what goes on at the next start is left in the player's folder: {left}")


@story("hostile: sounds by list, drop and command line hold nothing up, and a good file follows each")
def sounds(stage):
    attack(stage, "sounds")


@story("hostile: streams by list, drop and command line hold nothing up, and a good file follows each")
def streams(stage):
    attack(stage, "streams")


@story("hostile: sequences by list, drop and command line hold nothing up, and a good file follows each")
def sequences(stage):
    attack(stage, "sequences")


@story("hostile: movies by list, drop and command line hold nothing up, and a good file follows each")
def movies(stage):
    attack(stage, "movies")


@story("hostile: films by list, drop and command line hold nothing up, and a good file follows each")
def films(stage):
    attack(stage, "films")


@story("hostile: pictures by list, drop and command line hold nothing up, and a good file follows each")
def pictures(stage):
    attack(stage, "pictures")


@story("hostile: discs by list, drop and command line hold nothing up, and a good file follows each")
def discs(stage):
    attack(stage, "discs")


@story("hostile: places by list, drop and command line hold nothing up, and a good file follows each")
def places(stage):
    attack(stage, "places")


@story("hostile: others by list, drop and command line hold nothing up, and a good file follows each")
def others(stage):
    attack(stage, "others")


@story("hostile: swollen files by list, drop and command line hold nothing up, and a good file follows each")
def swollen_files(stage):
    attack(stage, "swollen files")
