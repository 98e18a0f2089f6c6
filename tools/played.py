# SPDX-License-Identifier: GPL-3.0-or-later
"""Whether an installed player plays a file: used by tools/try_package and by the package's own tests (debian/tests)."""

import array
import subprocess

from screen import Screen, visible_windows
from session import end_process, poll

PANEL = (480, 150)
START_SECONDS, PLAY_SECONDS, END_SECONDS = 40, 15, 15
LISTEN_SECONDS = 0.4
AUDIBLE = 500  # of 32767


def loudest(session):
    """The largest sample that is heard now."""
    command = ["timeout", str(LISTEN_SECONDS), "parec", "-d", "nul.monitor", "--format=s16le", "--channels=1", "--latency-msec=50"]
    sound = subprocess.run(command, env=session.environment, capture_output=True, check=False).stdout
    return max((abs(s) for s in array.array("h", sound[: len(sound) // 2 * 2])), default=0)


def panel_of(session, player):
    """The window of the panel, None while there is none."""
    return next((w for w, p in visible_windows(session, player.pid).items() if p[2:] == PANEL), None)


def tried(session, command, picture, **options):
    """Runs the player with one file until it is heard, and ends it by its power key: (what, whether it was so, why not) of
    each step. command: with which it plays at once. picture: where one of the screen is left. options: Popen's."""
    player = subprocess.Popen(command, start_new_session=True, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, **options)
    try:
        panel = poll(lambda: player.poll() is None and panel_of(session, player), START_SECONDS)
        yield "the panel shows", bool(panel), player.communicate(timeout=5)[1] if player.poll() else "no window of its size"
        if not panel:
            return
        yield "is heard", poll(lambda: loudest(session) > AUDIBLE, PLAY_SECONDS), "silence"
        Screen(session.framebuffer).save(picture)
        tool = ["xdotool", "windowfocus", "--sync", str(panel_of(session, player) or panel), "key", "--clearmodifiers", "P"]
        subprocess.run(tool, env=session.environment, check=False, capture_output=True, timeout=10)
        poll(lambda: player.poll() is not None, END_SECONDS)
        yield "ends by its power key", player.poll() == 0, f"code {player.poll()}"
    finally:
        end_process(player)
