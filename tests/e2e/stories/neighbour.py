# SPDX-License-Identifier: GPL-3.0-or-later
"""A user of a machine without a run-time folder, and traps that a neighbour on it has laid where the user's player could look."""

import hashlib
import os
import pathlib
import shutil

from harness.expect import check, equal, skip, wait
from harness.media import disc, tone
from harness.player import EDITOR, NEXT, PLAY, STOP
from harness.story import story

USER = 70_000 + os.getpid() % 10_000  # of nobody; others may play the same on this machine
NEIGHBOUR = USER + 10_000
GOOD, TRACK, HANDED = 440, 554, 698
SECONDS = 60
TEMPORARY = pathlib.Path("/tmp")


def give(place, user, mode=None):
    """The place and what is in it become that user's."""
    for path in (place, *place.rglob("*")):
        os.chown(path, user, user, follow_symlinks=False)
    if mode is not None:
        place.chmod(mode)


def known(place):
    """All that lies there: what it is, whose, of which time, with which bytes; of links where they lead."""
    found = {}
    for path in sorted((place, *place.rglob("*"))):
        status = path.lstat()
        what = os.readlink(path) if path.is_symlink() else path.read_bytes() if path.is_file() else b""
        found[str(path)] = (status.st_mode, status.st_uid, status.st_mtime_ns if not path.is_dir() else 0, what)
    return found


def names_of_lock_and_socket(folder):
    number = hashlib.sha256(str(folder.resolve()).encode()).hexdigest()[:16]
    return [f"corvane-{number}.lock", f"corvane-{number}.socket"]


def lay(stage, way, private):
    """The traps: places by the user's number in the shared folder, the neighbour's own or led into what is the user's."""
    traps = [TEMPORARY / f"corvane-{USER}", TEMPORARY / f"corvane-cd-{USER}"]
    for trap in traps:
        check(not trap.exists() and not trap.is_symlink(), f"{trap} is there already")
        if way == "a link":
            trap.symlink_to(private)
            os.chown(trap, NEIGHBOUR, NEIGHBOUR, follow_symlinks=False)
            continue
        trap.mkdir()
        for name in (*names_of_lock_and_socket(stage.player.folder), "Track01.cda", "Track02.cda"):
            (trap / name).symlink_to(private / "precious")
        (trap / "disc-place").symlink_to("/dev/zero")
        give(trap, NEIGHBOUR, 0o777)
    return traps


def take_away(traps):
    for trap in traps:
        if trap.is_symlink():
            trap.unlink()
        else:
            shutil.rmtree(trap, ignore_errors=True)


def settle_down(stage):
    """Everything of the user: a home, a program of its own, private files, a folder of the player; roads to the servers."""
    home, private = stage.folder / "home", stage.folder / "private"
    (private / "letters").mkdir(parents=True)
    (private / "precious").write_bytes(b"whole")
    (private / "letters" / "one").write_bytes(b"dear")
    home.mkdir()
    program = stage.folder / "corvane"
    shutil.copy(stage.player.program, program)
    stage.player.program = program
    for place, mode in ((home, 0o700), (private, 0o700), (stage.player.folder, 0o755)):
        give(place, USER, mode)
    give(stage.media, USER)
    for road in (stage.session.folder, pathlib.Path(stage.session.environment["XDG_RUNTIME_DIR"]), stage.folder):
        road.chmod(0o711)
    places = {f"XDG_{name}_HOME": str(home / name.lower()) for name in ("CACHE", "CONFIG", "DATA")}
    return private, {"HOME": str(home), **places}


# START-60
@story("neighbour: without a run-time folder, among traps of another user, it plays, saves, hands over and ends, and nothing of the user's changes")
def traps_of_a_neighbour(stage):
    if os.geteuid() != 0:
        skip("only the superuser can be two users")
    good, handed = tone(stage.media / "good.wav", GOOD, SECONDS), tone(stage.media / "handed.wav", HANDED, SECONDS)
    (stage.media / "disc").mkdir()
    named, _ = disc(stage.media / "disc", (TRACK, TRACK), SECONDS)
    alone = stage.media / "Track01.cda"
    alone.write_bytes(b"")
    stage.player.save_list([good, alone])
    private, environment = settle_down(stage)
    user = ["setpriv", f"--reuid={USER}", f"--regid={USER}", "--clear-groups", "--inh-caps=-all", "env", "-u", "XDG_RUNTIME_DIR"]
    environment["CORVANE_CDROM"] = str(named)
    before, saved = known(private), stage.player.folder / "FILE00.INI"
    for way in ("a folder", "a link"):
        traps = lay(stage, way, private)
        laid = [known(trap) for trap in traps]
        try:
            stored = saved.stat().st_ino
            stage.player.start(under=user, **environment)
            stage.player.press(PLAY)
            stage.sound.wait_for(GOOD)
            stage.player.press(NEXT)
            stage.sound.wait_for(TRACK)
            stage.player.press(STOP)
            stage.player.press(EDITOR)
            stage.desk.focus(stage.player.wait_for_window("Play List"))
            stage.desk.key("alt+s")
            stage.desk.wait_for_keyboard(stage.player.wait_for_window("^Corvane$"))
            stage.desk.key("Return")
            wait("the list anew", lambda: saved.stat().st_ino != stored and f"good.wav|{good}" in saved.read_text())
            stage.desk.key("Escape")
            stage.player.wait_for_panel()
            second = stage.session.popen([*user, *(f"{name}={value}" for name, value in environment.items()),
                                          f"CORVANE_FOLDER={stage.player.folder}", str(stage.player.program), "--open", str(handed)])
            stage.sound.wait_for(HANDED)
            equal(second.wait(10), 0, "exit code of the start that hands over")
            equal(stage.player.power_off(), 0, "exit code")
            equal([known(trap) for trap in traps], laid, f"{way}: what the neighbour has laid")
            equal(known(private), before, f"{way}: what is the user's")
        finally:
            take_away(traps)
