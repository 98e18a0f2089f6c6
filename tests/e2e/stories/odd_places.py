# SPDX-License-Identifier: GPL-3.0-or-later
"""Folders of the session that are not there, are none, are full or slow, and screens beyond all measure."""

import os
import pathlib
import subprocess
import time

from harness.bus import AnswerWatch
from harness.expect import SLACK, StoryFailure, check, equal, skip, wait
from harness.in_time import in_time
from harness.media import movie, tone
from harness.player import EDITOR, PLAY, REPEAT, REPEAT_LAMP, STOP
from harness.story import Stage, Theatre, story
from stories.faults import installed
from stories.stalled import Drive
from stories.windows import close_by, node

FOLDERS = ("XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_DATA_DIRS",
           "XDG_CONFIG_DIRS", "XDG_PICTURES_DIR")
OTHERS = ("XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP", "XDG_SESSION_DESKTOP", "XDG_SESSION_ID", "XDG_SEAT")


def odd_values(stage):
    file = stage.folder / "a_file"
    file.write_text("x")
    read_only = stage.folder / "read_only"
    read_only.mkdir(mode=0o500)
    lines = stage.folder / "two\nlines, 100% = odd; é"
    lines.mkdir(mode=0o700)
    link = stage.folder / "round"
    link.symlink_to(link)
    return {"unset": None, "empty": "", "relative": "here/and/there", "a dot": ".", "above": "../..", "no folder": "/proc/none",
            "a file": str(file), "a device": "/dev/full", "a link to itself": str(link), "read-only": str(read_only),
            "two lines": str(lines), "very long": "/" + "x" * 5000, "a root": "/", "a colon": ":/nowhere:"}


def files_below(folder):
    return {path.relative_to(folder) for path in folder.rglob("*")}


# DESK-11: Whatever the variables of the session's folders are (not set, empty, relative, no folder, a file, read-only, of two
#     lines, too long), the player starts, plays, ends with code 0 and tells of itself, and writes nowhere that is not absolute
@story("session: variables of its folders that are odd or lead nowhere: the player starts, plays and ends, and leaves nothing behind")
def odd_variables(stage):
    place = installed(stage)
    shipped = files_below(place)
    stage.player.program = place / "bin" / "corvane"
    song = tone(stage.media / "song.wav", 440, 20)
    # Root too is held to a folder's mode.
    limited = ["setpriv", "--bounding-set=-dac_override,-dac_read_search"] if os.geteuid() == 0 else []
    for how, value in odd_values(stage).items():
        home = stage.folder / f"home {how}"
        home.mkdir()
        under = ["env", "-u", "CORVANE_FOLDER"]
        environment = {"HOME": str(home), **{name: "odd\n" for name in OTHERS}}
        if value is None:
            under += [word for name in FOLDERS for word in ("-u", name)]
        else:
            environment |= {name: value for name in FOLDERS}
        works_in = files_below(stage.player.runs_folder)
        try:
            about = subprocess.run([*under, *limited, stage.player.program, "--about"], capture_output=True, text=True, timeout=30,
                                   check=True, env={**stage.session.environment, **environment})
            lines = [line for line in about.stdout.splitlines() if not line.startswith(("Program folder:", "Skins:"))]
            check(len(lines) > 8, f"{how}: {about.stdout}")
            stage.player.start(song, under=[*under, *limited], **environment)
            stage.player.press(PLAY)
            stage.sound.wait_for(440)
            equal(stage.player.power_off(), 0, f"exit code: {how}")
        except StoryFailure as failure:
            raise StoryFailure(f"{how}: {failure}; {stage.player.log()[-400:]}") from failure
        stage.sound.wait_for_silence()
        equal(files_below(place), shipped, f"files of the installed program: {how}")
        new = {path for path in files_below(stage.player.runs_folder) - works_in if not path.name.startswith("program")}
        equal(new, set(), f"files where it was started: {how}")


SLOW_LIST = 40
START_SECONDS, EDITOR_SECONDS, ANSWER_SECONDS, END_SECONDS = 6, 3, 2, 6


# DESK-12: In a home that answers each call after a twentieth of a second the player starts, answers, opens its editor and ends in time
@story("session: a home on a slow net: the start, the panel, the editor and the end are in time")
def slow_home(stage):
    drive = Drive(stage)
    home = drive.folder / "player"
    stage.player.folder.rename(home)
    stage.player.folder = home
    songs = [tone(drive.folder / f"song{number}.wav", 440, 3) for number in range(SLOW_LIST)]
    stage.player.save_list(songs, name="Slow")
    drive.stall("slow")
    taken = {}

    def timed(what, seconds, does):
        began = time.monotonic()
        with in_time(stage, what, seconds):
            does()
            taken[what] = time.monotonic() - began
            stage.leave_text("taken", "".join(f"{each}: {seconds:.2f} s\n" for each, seconds in taken.items()))

    timed("start", START_SECONDS, lambda: stage.player.start(**drive.environment))
    with AnswerWatch(stage.session) as watch:
        watch.slowest()
        timed("play", ANSWER_SECONDS + 2, lambda: (stage.player.press(PLAY), stage.sound.wait_for(440, 30)))
        for _ in range(4):
            lit = stage.player.lamp_lit(REPEAT_LAMP)
            stage.player.press(REPEAT)
            wait("the panel answers", lambda lit=lit: stage.player.lamp_lit(REPEAT_LAMP) != lit, ANSWER_SECONDS)
        stage.player.press(STOP)
        slowest = watch.slowest()
        taken["slowest answer"] = slowest
        check(slowest < ANSWER_SECONDS * SLACK, f"the slowest answer took {slowest:.1f} s")
    timed("editor", EDITOR_SECONDS, lambda: (stage.player.press(EDITOR), stage.player.wait_for_window("Play List")))
    close_by(stage, "Cancel")
    stage.player.wait_for_panel()
    timed("end", END_SECONDS, lambda: equal(stage.player.power_off(), 0, "exit code"))


IN_A_FULL_TMP = """
set -e
mount --bind /tmp /mnt
mount -t tmpfs -o size=64k,nr_inodes=60 none /tmp
mkdir -p {session}; mount --bind /mnt/{inside} {session}
cat /dev/zero >/tmp/filler 2>/dev/null || true
i=0; while mkdir /tmp/f$i 2>/dev/null; do i=$((i+1)); done
if touch /tmp/more 2>/dev/null || echo more 2>/dev/null >>/tmp/filler; then echo "it is not full" >&2; exit 9; fi
exec "$@"
"""


# DESK-13: With a full /tmp, and no folder of the session beside it, the player starts, plays, shows what it is asked and ends
@story("session: with a full /tmp, with and without a folder of the session: the player starts, plays, opens its windows and ends")
def full_tmp(stage):
    if os.geteuid() != 0:
        skip("a disk of its own needs root")
    session = stage.session.folder
    if pathlib.Path("/tmp") not in session.parents:
        skip("what runs here does not lie in /tmp")
    script = IN_A_FULL_TMP.format(session=session, inside=session.relative_to("/tmp"))
    under = ["unshare", "-m", "--propagation", "private", "sh", "-c", script, "sh"]
    song = tone(stage.media / "song.wav", 440, 20)
    stage.player.save_list([song])
    for without in ([], ["env", "-u", "XDG_RUNTIME_DIR", "-u", "TMPDIR"]):
        stage.player.start(song, under=[*under, *without], TMPDIR="/tmp")
        stage.player.press(PLAY)
        stage.sound.wait_for(440)
        stage.player.press(STOP)
        stage.player.press(EDITOR)
        node(stage, name="PLAY LIST", role="list")
        close_by(stage, "Cancel")
        stage.player.wait_for_panel()
        stage.player.key("F1")
        stage.player.wait_for_window("Corvane - Help")
        equal(stage.player.power_off(), 0, "exit code")
        stage.sound.wait_for_silence()


WIDEST = "32000x900"  # of a display whose numbers end at 32,767
OPENED = 0.9  # where the panel opens, of the screen less its own width


# DESK-15: At the far end of the widest display the panel, its dialogs and its media windows stand where they belong, and the mouse
#     reaches them
@story("session: at the far end of the widest display the panel works, is dragged, and its windows are in sight")
def widest_display(stage):
    with Theatre(stage.theatre.program, stage.theatre.proofs, screen=WIDEST) as theatre:
        inner = Stage(theatre, 1)
        inner.seen = stage.seen
        clip = movie(inner.media / "movie.avi", "#32A046", 440, 20)
        inner.player.settings(DELAYTIME=0)
        inner.player.start(clip)
        panel = inner.player.window
        check(panel.x > 28_000, f"the panel is at {panel.x}")
        inner.player.press(PLAY)
        inner.sound.wait_for(440)
        width = inner.desk.screen.width
        shown = wait("the movie", lambda: [w for w in inner.player.windows() if w.id != panel.id])[0]
        check(0 <= shown.x <= width - shown.width, f"the movie is at {shown.x}")
        inner.player.press(STOP)
        edge = width - panel.width
        inner.desk.drag((panel.x + 5, panel.y + 5), (edge + 5, panel.y + 5))
        moved = wait("the panel at the edge", lambda: [w for w in inner.player.windows() if w.id == panel.id and w.x == edge])[0]
        inner.player.window = moved
        inner.player.press(EDITOR)
        node(inner, name="PLAY LIST", role="list")
        editor = wait("the editor", lambda: inner.player.windows("PLAY|Editor|Corvane"))[0]
        check(0 <= editor.x <= width - editor.width, f"the editor is at {editor.x}, {editor.width} wide")
        inner.desk.key("Escape")
        wait("the panel where it was", lambda: [w for w in inner.player.windows() if w.id == panel.id and w.x == moved.x])
        equal(inner.player.power_off(), 0, "exit code")
        inner.close()
