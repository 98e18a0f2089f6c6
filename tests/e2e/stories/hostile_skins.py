# SPDX-License-Identifier: GPL-3.0-or-later
"""A folder of hundreds of skins as large as a skin may be, and of what is none: the start reads the one that is in force, and the
settings list the rest by name."""

import os
import pathlib
import shutil
import struct
import time

from harness import PROJECT
from harness.bus import AnswerWatch, Bus, address_of
from harness.expect import SLACK, check, equal, wait
from harness.media import tone
from harness.running import is_sanitized
from harness.story import story
from stories.faults import installed
from stories.windows import close_by, open_settings

GIANTS = 300
PICTURE_BYTES = 256 << 20  # a picture file may be as large
TEXT_BYTES = 4 << 20
MOST_SECONDS_MORE = 0.5
MOST_MEGABYTES_MORE = 8
ANSWER_SECONDS = 2.0
SIDE = 6300  # pixels: of the most that are decoded


def giants(folder):
    """Skins of the largest size, whose pictures are holes on the disk, and things that bear a skin's name."""
    body = (PROJECT / "PANELSET" / "DEFAULT.CSV").read_bytes()
    text = folder / "G000.CSV"
    text.write_bytes(body + b'"","","","","","","","",""\r\n' * ((TEXT_BYTES - len(body)) // 29))
    head = b"BM" + struct.pack("<IHHI", PICTURE_BYTES, 0, 0, 54) + struct.pack("<IiiHHIIiiII", 40, SIDE, SIDE, 1, 24, 0, 0, 0, 0, 0, 0)
    for number in range(GIANTS):
        for ending in (".BMP", "@2X.BMP"):
            with open(folder / f"G{number:03}{ending}", "wb") as picture:
                picture.write(head)
                picture.truncate(PICTURE_BYTES)
        if number:
            os.link(text, folder / f"G{number:03}.CSV")
    for number in range(50):
        for name, target in (("ZERO", "/dev/zero"), ("MEM", "/proc/kcore"), ("SELF", f"SELF{number}.BMP"), ("GONE", "/nowhere"), ("LINK", "G001.BMP")):
            os.symlink(target, folder / f"{name}{number}.BMP")
        os.mkfifo(folder / f"PIPE{number}.BMP")
        os.mkfifo(folder / f"PIPE{number}.CSV")
        (folder / f"DIR{number}.BMP").mkdir()


def peak_megabytes(stage):
    status = pathlib.Path(f"/proc/{stage.player.process.pid}/status").read_text()
    return int(next(line.split()[1] for line in status.splitlines() if line.startswith("VmHWM"))) / 1024


def start_once(stage, **how):
    """(seconds until the panel stands, most memory until then)"""
    begun = time.monotonic()
    stage.player.start(**how)
    return time.monotonic() - begun, peak_megabytes(stage)


def start_and_end(stage, **how):
    seconds_and_memory = start_once(stage, **how)
    equal(stage.player.power_off(), 0, "exit code")
    return seconds_and_memory


def costs_no_more(stage, what, before, after):
    stage.leave_text(what, f"plain {before[0]:.2f} s, {before[1]:.1f} MB; among giants {after[0]:.2f} s, {after[1]:.1f} MB\n")
    if is_sanitized(stage.player.program) or stage.watch.command:
        return
    check(after[0] < before[0] + MOST_SECONDS_MORE * SLACK, f"{what} took {after[0]:.2f} s, {before[0]:.2f} s without them")
    check(after[1] < before[1] + MOST_MEGABYTES_MORE, f"{what} took {after[1]:.0f} MB, {before[1]:.0f} MB without them")


@story("hostile: among hundreds of giant skins a start costs what it costs without them, the settings come in time, and a file plays")
def giant_skins(stage):
    good, bus = tone(stage.media / "good.wav", 440, 60), Bus(stage.session)
    before = min(start_and_end(stage) for _ in range(3))
    giants(stage.player.folder / "PANELSET")
    after = min(start_and_end(stage) for _ in range(3))
    costs_no_more(stage, "a start", before, after)
    stage.player.start()
    with AnswerWatch(stage.session) as watch:
        open_settings(stage)
        close_by(stage, "OK")
        stage.player.start_another("--open", good).wait(20)
        wait("the good file plays", lambda: bus.state()[1] == address_of(good) and bus.state()[2] > 0, 10)
        seconds = watch.slowest()
    check(seconds < ANSWER_SECONDS * SLACK, f"an answer took {seconds:.2f} s")
    equal(stage.player.power_off(), 0, "exit code")


@story("hostile: a user's folder of giant skins under the shipped names, links and pipes holds no first start up, and nothing behind the links changes")
def giant_skins_of_a_user(stage):
    stage.player.program = installed(stage) / "bin" / "corvane"
    under = ["env", "-u", "CORVANE_FOLDER"]
    plain, full = stage.folder / "plain", stage.folder / "full"
    shipped = sorted((PROJECT / "PANELSET").iterdir())
    precious = stage.folder / "precious"
    precious.write_bytes(b"whole")

    def fill():
        shutil.rmtree(full, ignore_errors=True)
        own = full / "corvane" / "PANELSET"
        own.mkdir(parents=True)
        giants(own)
        for number, file in enumerate(shipped):
            if file.stem.startswith("DEFAULT"):
                shutil.copy(file, own / file.name)
            elif number % 3 == 0:
                os.symlink("/dev/zero", own / file.name)
            elif number % 3 == 1:
                os.link(own / "G001.BMP", own / file.name)
            else:
                os.symlink(precious, own / file.name)
        (own / ".shipped").write_bytes(b"DEFAULT.BMP\n" * 50_000)

    before = start_and_end(stage, under=under, XDG_DATA_HOME=str(plain))
    fill()
    after = start_and_end(stage, under=under, XDG_DATA_HOME=str(full))
    costs_no_more(stage, "a first start", before, after)
    equal(precious.read_bytes(), b"whole", "what a link led to")
    os.unlink(full / "corvane" / "PANELSET" / ".shipped")
    os.symlink("/dev/zero", full / "corvane" / "PANELSET" / ".shipped")
    equal(start_and_end(stage, under=under, XDG_DATA_HOME=str(full))[0] < before[0] + ANSWER_SECONDS * SLACK, True, "a start with a record that never ends")
