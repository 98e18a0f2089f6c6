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
from harness.lateness import Lateness
from harness.media import tone
from harness.running import is_sanitized
from harness.story import story
from stories.faults import installed
from stories.windows import close_by, open_settings

GIANTS = 300
PICTURE_BYTES = 256 << 20  # a picture file may be as large
TEXT_BYTES = 4 << 20
MOST_SECONDS_MORE = 0.5
LEAST_ROUNDS, MOST_ROUNDS = 2, 8
MOST_MEGABYTES_MORE = 8
ANSWER_SECONDS = 2.0
MOST_LATE = 2.0  # seconds of a start that may be the machine's
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


def costs_no_more(stage, what, start_plain, start_among_giants):
    """What a start costs is the least of several, by turns: a busy machine only adds to it, and to each of both. Returns that of
    the plain one."""
    measured = not is_sanitized(stage.player.program) and not stage.watch.command
    plain, among = [], []
    for _ in range(MOST_ROUNDS if measured else 1):
        plain.append(start_plain())
        among.append(start_among_giants())
        (seconds, megabytes), (more_seconds, more_megabytes) = ([min(kind) for kind in zip(*starts)] for starts in (plain, among))
        if len(plain) >= LEAST_ROUNDS and more_seconds < seconds + MOST_SECONDS_MORE * SLACK:
            break
    stage.leave_text(what, f"plain {seconds:.2f} s, {megabytes:.1f} MB; among giants {more_seconds:.2f} s, {more_megabytes:.1f} MB; of {len(plain)} each\n")
    if measured:
        check(more_seconds < seconds + MOST_SECONDS_MORE * SLACK, f"{what} took {more_seconds:.2f} s, {seconds:.2f} s without them")
        check(more_megabytes < megabytes + MOST_MEGABYTES_MORE, f"{what} took {more_megabytes:.0f} MB, {megabytes:.0f} MB without them")
    return seconds


@story("hostile: among hundreds of giant skins a start costs what it costs without them, the settings come in time, and a file plays")
def giant_skins(stage):
    good, bus = tone(stage.media / "good.wav", 440, 60), Bus(stage.session)
    folder = stage.player.folder / "PANELSET"
    plain, among = folder.with_name("plain"), folder.with_name("giants")
    shutil.copytree(folder, plain)
    giants(folder)
    folder.rename(among)

    def start_with(skins):
        skins.rename(folder)
        try:
            return start_and_end(stage)
        finally:
            folder.rename(skins)

    costs_no_more(stage, "a start", lambda: start_with(plain), lambda: start_with(among))
    among.rename(folder)
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

    def first_start(home, fill_it):
        shutil.rmtree(home, ignore_errors=True)
        fill_it()
        return start_and_end(stage, under=under, XDG_DATA_HOME=str(home))

    usual = costs_no_more(stage, "a first start", lambda: first_start(plain, lambda: None), lambda: first_start(full, fill))
    equal(precious.read_bytes(), b"whole", "what a link led to")
    os.unlink(full / "corvane" / "PANELSET" / ".shipped")
    os.symlink("/dev/zero", full / "corvane" / "PANELSET" / ".shipped")
    lateness = Lateness()
    taken = start_and_end(stage, under=under, XDG_DATA_HOME=str(full))[0] - min(lateness.seconds(), MOST_LATE)
    check(taken < usual + ANSWER_SECONDS * SLACK, f"a start with a record that never ends took {taken:.2f} s, {usual:.2f} s as a rule")
