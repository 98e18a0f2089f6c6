# SPDX-License-Identifier: GPL-3.0-or-later
"""Hostile folders in the editor: crowded, deep, round, full of odd names and of what is no file. It lists what can be listed and takes
it over, and the player goes on."""

import os
import pathlib
import shutil
import threading

from harness.bus import AnswerWatch, Bus, address_of
from harness.expect import SLACK, check, equal, wait
from harness.media import tone
from harness.player import EDITOR
from harness.running import is_sanitized
from harness.story import story
from hostile import places
from stories.windows import close_by, node

PART = int(os.environ.get("CORVANE_HOSTILE", "16"))  # every so many; 1: all
ANSWER_SECONDS = 2.0
MOST_MEGABYTES = 400
CROWD = 10_000


def all_of(entries):
    """A folder with a file or thing of each name."""

    def make(folder):
        folder.mkdir()
        for name, content in entries():
            if callable(content):
                content(folder / name)
            else:
                (folder / name).write_bytes(content[:4000])

    return make


def long_names(folder):
    folder.mkdir()
    for number in range(2000):
        (folder / f"{number:04}{'n' * 247}.wav").touch()


def folders(folder):
    folder.mkdir()
    for number in range(CROWD):
        (folder / f"f{number}").mkdir()


def deep(folder):
    places.folder(depth=300)(folder)


def round_about(folder):
    folder.mkdir()
    for name, to in (("self", "."), ("up", ".."), ("root", "/"), ("itself", "itself"), ("a", "b"), ("b", "a"), ("far", "self/" * 60)):
        os.symlink(to, folder / name)


def sheets(folder):
    folder.mkdir()
    for number in range(300):
        (folder / f"d{number}.cue").write_text('FILE "d.bin" BINARY\n TRACK 01 AUDIO\n  INDEX 01 00:00:00\n')
    (folder / "d.bin").write_bytes(bytes(2352 * 10))


HOMES = {
    "files": places.folder(CROWD), "folders": folders, "names": all_of(places.names), "things": all_of(places.things), "deep": deep, "round": round_about, "long_names": long_names, "sheets": sheets, "empty": places.folder(), "file": lambda path: path.write_bytes(b"x"), "missing": lambda path: None,
    "processes": lambda path: os.symlink("/proc", path), "devices": lambda path: os.symlink("/dev", path), "descriptors": lambda path: os.symlink("/proc/self/fd", path), "kernel": lambda path: os.symlink("/sys", path), "itself": lambda path: os.symlink("itself", path),
}


def inside(home, name):
    """Where the editor begins: the bottom of what is deep."""
    return pathlib.Path(str(home) + "/d" * 300) if name == "deep" else home


def peak_megabytes(stage):
    status = pathlib.Path(f"/proc/{stage.player.process.pid}/status").read_text()
    return int(next(line.split()[1] for line in status.splitlines() if line.startswith("VmHWM"))) / 1024


def visit(stage, bus, name, home, good):
    stage.player.start(HOME=str(home))
    wait("the player on the bus", lambda: bus.state()[0], 10)
    with AnswerWatch(stage.session) as watch:
        stage.player.press(EDITOR)
        node(stage, name="PLAY LIST", role="list")
        stage.player.press_control("Add All")
        if name == "files":  # it changes while it is looked at
            change(home)
        stage.player.press_control("Add All")
        close_by(stage, "OK")
        wait("the panel is back", stage.player.find_panel, 10)
        stage.player.start_another("--open", good).wait(20)
        wait("the good file plays", lambda: bus.state()[1] == address_of(good) and bus.state()[2] > 0, 10)
        seconds = watch.slowest()
    check(seconds < ANSWER_SECONDS * SLACK, f"{name}: an answer took {seconds:.2f} s")
    most = peak_megabytes(stage)
    if not is_sanitized(stage.player.program) and not stage.watch.command:
        check(most < MOST_MEGABYTES, f"{name}: {most:.0f} MB")
    equal(stage.player.power_off(), 0, "exit code")
    return seconds, most


def change(home):
    def work():
        for number in range(2000):
            (home / f"new{number}.wav").touch()
            (home / f"e{number}.wav").unlink()

    worker = threading.Thread(target=work)
    worker.start()
    worker.join()


@story("hostile: folders of others are listed in the editor, and the player goes on")
def in_the_editor(stage):
    good, bus, told = tone(stage.media / "good.wav", 440, 60), Bus(stage.session), []
    chosen = list(HOMES.items())[2 % PART::PART]
    for name, make in chosen:
        home = stage.folder / name
        make(home)
        seconds, most = visit(stage, bus, name, inside(home, name), good)
        told.append((seconds, most, name))
        if home.is_dir() and not home.is_symlink():
            shutil.rmtree(home, ignore_errors=True)
    text = f"{len(chosen)} folders: slowest answer {max(told)[0]:.2f} s ({max(told)[2]}), most memory {max(each[1] for each in told):.0f} MB"
    print(f"     {text}", flush=True)
    stage.leave_text("hostile", "\n".join([text, *map(str, told)]) + "\n")
