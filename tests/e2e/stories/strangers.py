# SPDX-License-Identifier: GPL-3.0-or-later
"""What strangers hand to the lists, the finder and the editor: names and titles that mean something elsewhere, sheets over one large
sound, folders that change while they are looked at, drops by the hundred thousand. The panel answers, memory stays, it ends with 0."""

import os
import pathlib
import re
import shutil

from harness.bus import AnswerWatch, Bus, address_of
from harness.dragging import Dragging
from harness.expect import SLACK, check, equal, wait
from harness.media import picture, tone
from harness.player import EDITOR, STOP
from harness.signs import media_windows, told, wait_for_told
from harness.sound import same_pitch
from harness.story import story
from stories.editing import shows_colour, widen
from stories.stalled import Drive
from stories.tags import tagged
from stories.windows import items

ANSWER_SECONDS = 2.0
MOST_MEGABYTES = 400
PICTURES = 20_000
URIS = 100_000


class Watched:
    """A running player whose answers and memory are measured; as a context manager, at whose end both are looked at."""

    def __init__(self, stage):
        self.stage, self._watch = stage, AnswerWatch(stage.session)

    def __enter__(self):
        wait("the player on the bus", lambda: Bus(self.stage.session).state()[0], 10)
        self._watch.__enter__()
        return self

    def __exit__(self, kind, *_):
        seconds, asked = self._watch.take()
        self._watch.__exit__()
        if kind is None:
            self._judge(seconds, asked)

    def _judge(self, seconds, asked):
        peak = megabytes(self.stage)
        print(f"     slowest of {asked} answers {seconds:.2f} s, {peak} MB", flush=True)
        check(asked and seconds < ANSWER_SECONDS * SLACK, f"the slowest of {asked} answers took {seconds:.2f} s")
        check(peak < MOST_MEGABYTES or self.stage.watch.command, f"{peak} MB were used")


def megabytes(stage):
    status = pathlib.Path(f"/proc/{stage.player.process.pid}/status").read_text()
    return int(re.search(r"VmHWM:\s+(\d+)", status)[1]) // 1024


def open_editor(stage):
    """Whose lists are too long to be read row by row here."""
    stage.player.press(EDITOR)
    return stage.player.wait_for_window("Play List", 10)


def leave_editor(stage):
    """What is being read is left by the first Escape; what was changed is lost by Return."""

    def left():
        if stage.player.boxes():
            stage.desk.key("Return")
        elif not stage.player.find_panel():
            stage.desk.key("Escape")
        return stage.player.find_panel()

    wait("the panel", left, 15, 0.3)
    stage.player.wait_for_panel()


@story("strangers: pictures by the thousand are taken away while the editor shows them small")
def pictures_that_go(stage):
    folder = stage.media / "album"
    folder.mkdir()
    first = picture(folder / "00000.png", (208, 32, 32), (1600, 1200))
    paths = [folder / f"{number:05}.png" for number in range(PICTURES)]
    for path in paths[1:]:
        os.link(first, path)
    stage.player.save_list(paths[:9999])
    song = tone(stage.media / "song.wav", 440, 60)
    stage.player.start("--open")
    wait_for_told(stage, "Total FileNo", "9999")
    with Watched(stage):
        editor = open_editor(stage)
        stage.desk.click(editor.x + editor.width * 3 // 4, editor.y + editor.height // 3)
        stage.leave_picture("pictures")
        for begin in range(0, PICTURES, 500):
            for path in paths[begin:begin + 500]:
                path.unlink()
            stage.desk.key("Next")
        shutil.rmtree(folder)
        stage.desk.key("End")
        leave_editor(stage)
    equal(stage.player.start_another("--open", song).wait(10), 0, "exit code of the second start")
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")


@story("strangers: a hundred thousand names dropped on the editor leave its list full and the player answering")
def dropped_on_the_editor(stage):
    song = tone(stage.media / "song.wav", 440, 60)
    link = stage.media / "other.wav"
    os.link(song, link)
    stage.player.start("--open", song)
    stage.sound.wait_for(440)
    stage.player.press(STOP)
    with Watched(stage):
        editor = open_editor(stage)
        stage.desk.click(editor.x + editor.width * 3 // 4, editor.y + editor.height // 3)
        place = editor.x + editor.width * 3 // 4, editor.y + editor.height // 3
        x = Dragging(stage.session)
        for text in (f"{address_of(link)}\r\n" * URIS, "file:///gone/song.wav\r\n" * URIS, "file:///gone/folder\r\n" * URIS, f"{stage.media.as_uri()}\r\n" * URIS):
            x.drop(editor, place, {"text/uri-list": text.encode()})
            stage.leave_picture("dropped")
        x.close()
        leave_editor(stage)
    equal(stage.player.power_off(), 0, "exit code")


def shows_red(stage):
    """In front of the entry of that picture, whatever its columns say."""
    names = [name for name in items(stage, "PLAY LIST") if name.startswith("red.png")]
    return names and shows_colour(stage, names[0], (208, 32, 32))


# EDIT-95
@story("strangers: a drive that hangs under the editor's small pictures and columns leaves the editor answering; what lies elsewhere is shown")
def hanging_details(stage):
    drive = Drive(stage)
    held = [picture(drive.folder / f"{number}.png", (32, 32, 208)) for number in range(3)]
    songs = [tagged(drive.folder / f"{number}.mp3", {"title": f"On the drive {number}"}, seconds=1) for number in range(2)]
    free = [tagged(stage.media / "free.mp3", {"title": "Elsewhere"}, seconds=1), picture(stage.media / "red.png", (208, 32, 32))]
    for word in ("read", "open", "all"):
        stage.player.save_list([*held, *songs, *free])
        stage.player.start("--open", **drive.environment)
        wait_for_told(stage, "Total FileNo", "7")
        drive.stall(word)
        with Watched(stage):
            open_editor(stage)
            widen(stage, 1270)
            wait("the picture elsewhere", lambda: shows_red(stage), 40)
            stage.leave_picture(word)
            leave_editor(stage)
        drive.answer()
        equal(stage.player.power_off(), 0, f"exit code, {word}")


# EDIT-109
@story("strangers: thirty thousand letters pasted where an entry is looked for leave the player answering")
def pasted(stage):
    song = tone(stage.media / "a_b.wav", 440, 60)
    stage.player.save_list([song] * 9999)
    stage.player.start("--open")
    wait_for_told(stage, "Total FileNo", "9999")
    words = b"a b " * 7500 + b"zzz"
    x = Dragging(stage.session)
    with Watched(stage):
        stage.player.key("ctrl+f")
        window = stage.player.wait_for_window("Find")
        wait("it has the keyboard", lambda: stage.desk.focused() == window.id)
        x.paste(words, lambda: stage.desk.key("ctrl+v"))
        stage.leave_picture("finder")
        stage.desk.key("Escape")
        stage.player.wait_for_no_window("Find")
        editor = open_editor(stage)
        stage.desk.click(editor.x + editor.width * 3 // 4, editor.y + editor.height // 3)
        stage.desk.key("ctrl+f")
        x.paste(words, lambda: stage.desk.key("ctrl+v"))
        stage.desk.key("F3", "F3")
        stage.leave_picture("editor")
        leave_editor(stage)
    x.close()
    equal(stage.player.power_off(), 0, "exit code")


TITLES = {"plain": "x" * 30_000, "words": "x " * 15_000, "marks": "a\u0301" * 10_000, "marks alone": "\u0300" * 15_000, "piled": "e" + "\u0334\u0345\u035f" * 5_000, "wide": "夜" * 10_000,
          "arabic": "ﷺم" * 6_000, "joined": "👩\u200d" * 4_000, "conjuncts": "क्" * 5_000, "tags": "<b>" * 10_000, "ampersands": "&" * 30_000}


# FIND-10
@story("strangers: titles of thirty thousand letters and marks, kept by the run before, are shown and found without holding anything up")
def long_titles(stage):
    song = tone(stage.media / "song.wav", 440, 60)
    for name, title in TITLES.items():
        rows = "".join(f"TITLE{number}={title}\r\nPATH{number}={song}\r\n" for number in range(20 if stage.watch.command else 400))
        (stage.player.folder / "RESUME.INI").write_text(f"[RESUME]\r\nENTRY=0\r\n[LIST]\r\n{rows}", encoding="utf-8")
        stage.player.settings(CONVENIENCES="ON")
        stage.player.start()
        with Watched(stage):
            stage.player.key("ctrl+f")
            window = stage.player.wait_for_window("Find")
            wait("it has the keyboard", lambda window=window: stage.desk.focused() == window.id)
            stage.desk.type("xe")
            stage.desk.key("BackSpace", "BackSpace", "Down", "Next", "Next", "End", "Home")
            stage.leave_picture(name)
            stage.desk.key("Escape")
            stage.player.wait_for_no_window("Find")
            stage.player.key("z")
            stage.sound.wait_for(440)
        equal(stage.player.power_off(), 0, f"exit code, {name}")


def sheets_over(folder):
    """Sheets over one FLAC: in order, out of order, behind its end, over each other, over what is none; and one that says it is endless."""
    folder.mkdir()
    tone(folder / "whole.flac", 440, 120)
    whole = (folder / "whole.flac").read_bytes()
    (folder / "endless.flac").write_bytes(whole[:21] + bytes([whole[21] | 0x0F]) + b"\xff" * 4 + whole[26:])
    (folder / "cut.flac").write_bytes(whole[:60_000])
    os.mkfifo(folder / "pipe.flac")

    def sheet(name, file, index, title="x"):
        rows = "".join(f'  TRACK {n:02} AUDIO\n    TITLE "{title}"\n    INDEX 00 {index(n)}\n    INDEX 01 {index(n)}\n' for n in range(1, 100))
        (folder / f"{name}.cue").write_text(f'FILE "{file}" WAVE\n{rows}')
        return folder / f"{name}.cue"

    def place(n):
        return f"00:{n // 2:02}:{n % 2 * 37:02}"

    return [
        sheet("good", "whole.flac", place), sheet("backward", "whole.flac", lambda n: place(100 - n)), sheet("same", "whole.flac", lambda n: "00:00:00"),
        sheet("behind", "whole.flac", lambda n: f"{n}:59:74"), sheet("far", "whole.flac", lambda n: "99999999:59:74"), sheet("endless", "endless.flac", lambda n: f"{n:02}:00:00"),
        sheet("cut", "cut.flac", place), sheet("pipe", "pipe.flac", place), sheet("itself", "itself.cue", place), sheet("outside", "../../../../../../dev/zero", place),
        sheet("titles", "whole.flac", place, "\x1b[2J\u202egnp<img src=/x>" + "y" * 400), sheet("network", "http://127.0.0.1:9/x.flac", place),
    ]


@story("strangers: sheets of 99 tracks over one FLAC that lie about it hold nothing up, and a good file plays behind each")
def sheets(stage):
    good = tone(stage.media / "good.wav", 880, 120)
    stage.player.start("--open", good)
    stage.sound.wait_for(880)
    with Watched(stage):
        for sheet in sheets_over(stage.media / "al.bum"):
            equal(stage.player.start_another("--open", sheet).wait(20), 0, f"exit code of the start with {sheet.name}")
            wait(f"a word of {sheet.name}", lambda: stage.player.boxes() or told(stage, "Total FileNo") == "99", 15)
            for _ in range(3):
                stage.player.key("period")
            equal(stage.player.start_another("--open", good).wait(20), 0, f"exit code of the start behind {sheet.name}")

            def plays():
                if stage.player.boxes():
                    stage.desk.key("Return")
                return told(stage, "Total FileNo") == "1" and same_pitch(stage.sound.pitch_now(), 880) and not stage.player.boxes()

            wait(f"the good file behind {sheet.name}", plays, 20)
    equal(stage.player.power_off(), 0, "exit code")
