#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plays a list on a private desktop and leaves pictures of it: play_unseen.py PROGRAM PICTURES FILE..."""

import pathlib
import shutil
import signal
import subprocess
import sys
import time

from screen import Screen, read_skin, visible_windows
from session import Session, SessionError, end_process, poll

SECONDS_A_FILE = 15  # more than the longest sample takes
PICTURE_SECONDS = 3  # each still picture is shown so long
SHOW_SECONDS = 1.5  # a file has sounded so long when its picture is taken
START_SECONDS = 20
END_SECONDS = 10


class Playing:
    """The program running on a private desktop with a folder of its own."""

    def __init__(self, session, program, files):
        self.session = session
        skins = pathlib.Path(program).resolve().parents[2] / "PANELSET"
        self.folder = session.folder / "player"
        self.folder.mkdir()
        shutil.copytree(skins, self.folder / "PANELSET")
        # Nobody is there to close a box about names that are not played: those are told on the error stream alone.
        (self.folder / "KADO.INI").write_text(f"[KADO]\r\nAUTOPLAY=ON\r\nINTERVAL={PICTURE_SECONDS}\r\n[CONVENIENCES]\r\nPLAYS=OFF\r\n")
        self.skin = read_skin(self.folder / "PANELSET" / "DEFAULT.CSV")
        self.process = session.popen([program, "--open", *(str(pathlib.Path(file).absolute()) for file in files)], env={"CORVANE_FOLDER": str(self.folder)}, stdin=subprocess.DEVNULL)
        self.screen = Screen(session.framebuffer)
        self.seen = None

    def running(self):
        return self.process.poll() is None

    def panel(self):
        """Window and place of the panel once it stands: the opening's last picture has its size, too, but goes at once."""
        size = self.skin[0][4:6]
        found = [entry for entry in visible_windows(self.session, self.process.pid).items() if entry[1][2:] == size]
        before, self.seen = self.seen, found
        return found[0] if len(found) == 1 and found == before else None

    def file_number(self, place):
        """What stands in the panel's file number, as pixels."""
        left, top = self.skin[30][:2]
        return self.screen.pixels(place[0] + left, place[1] + top, 30, 14)

    def power_off(self, window):
        tool = ["xdotool", "windowfocus", "--sync", str(window), "key", "--clearmodifiers", "P"]
        subprocess.run(tool, env=self.session.environment, check=False, capture_output=True, timeout=10)
        poll(lambda: not self.running(), END_SECONDS)
        return self.process.poll()


def watch(playing, place, pictures, count):
    """Takes a picture of each file until the list has come back to its first entry; returns how many."""
    first = shown = playing.file_number(place)
    changed, taken, number = time.monotonic(), None, 0
    deadline = changed + SECONDS_A_FILE * count
    while playing.running() and time.monotonic() < deadline:
        now = playing.file_number(place)
        if now != shown:
            shown, changed = now, time.monotonic()
            if now == first:
                break
        if taken is not shown and time.monotonic() - changed > SHOW_SECONDS:
            taken = shown
            number += 1
            playing.screen.save(pictures / f"{number:02}.png")
            print(f"   picture {number:02}.png", flush=True)
        time.sleep(0.05)
    return number


def entries_in(files):
    """How many entries the names may become: each file one, each folder all that lie in it."""
    folders = [pathlib.Path(file) for file in files if pathlib.Path(file).is_dir()]
    return len(files) + sum(sum(each.is_file() for each in folder.rglob("*")) for folder in folders)


def main():
    program, pictures, files = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    with Session() as session:
        playing = Playing(session, program, files)
        try:
            found = poll(lambda: playing.panel() or not playing.running(), START_SECONDS)
            if found is True or not found:
                print("   the panel did not appear", file=sys.stderr)
                return 1
            window, place = found
            taken = watch(playing, place, pictures, entries_in(files))
            code = playing.power_off(window)
            if code != 0:
                playing.screen.save(pictures / "at_the_end.png")
        finally:
            end_process(playing.process)
    if code != 0:
        print(f"   the player did not end by its power key (code {code})", file=sys.stderr)
        return 1
    print(f"   played {len(files)} names, {taken} pictures in {pictures}")
    return 0 if taken else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except SessionError as error:
        print(f"play: {error}", file=sys.stderr)
        sys.exit(1)
    except KeyboardInterrupt:
        sys.exit(130)
