# SPDX-License-Identifier: GPL-3.0-or-later
"""What is around the program fails: sound server, display, disk, folders, files, clock, fonts, sounds for MIDI."""

import contextlib
import errno
import os
import pathlib
import shutil
import signal
import subprocess
import time

from harness import PROJECT
from harness.expect import StoryFailure, check, equal, skip, wait
from harness.media import steps, tone
from harness.player import EDITOR, PLAY, VOLUME_DOWN, set_sink_volume, sink_volume
from harness.signs import told, wait_for_told
from harness.sound import Recorder, same_pitch
from harness.story import Stage, Theatre, story
from stories.windows import close_by, node, open_settings

FAKE_TIME = sorted(pathlib.Path("/usr/lib").glob("*/faketime/libfaketimeMT.so.1"))
UNFINISHED = ".corvane-*"
SMALL_DISK_KB = 4096  # the skins take less than half
LADDER = [round(220 * 1.06**second) for second in range(40)]  # a tone a second: what sounds tells the time
LOOKS = 30
LATE_SECONDS = 0.15
LONGEST_GAP = 0.3  # seconds that a busy machine may leave in a tone
NO_FONTS = '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig><cachedir>{}</cachedir></fontconfig>'


@contextlib.contextmanager
def own_desktop(stage):
    """A stage on a desktop of its own: what is broken there breaks nothing for the next story."""
    with Theatre(stage.theatre.program, stage.theatre.proofs) as theatre:
        inner = Stage(theatre, 1)
        try:
            yield inner
        except StoryFailure as failure:
            raise StoryFailure(f"{failure}; {inner.player.log()[-400:]}") from failure
        finally:
            try:
                inner.close()
            except StoryFailure:
                inner.player.keep_proof(stage.player.runs_folder)
                raise


def stored_list(stage, *paths):
    """Stores a list and returns its bytes."""
    stage.player.save_list(paths, name="Kept")
    return (stage.player.folder / "FILE00.INI").read_bytes()


def check_whole(stage, kept):
    """The stored list is the one that was kept, and nothing half written lies beside it."""
    equal((stage.player.folder / "FILE00.INI").read_bytes(), kept, "the stored list")
    equal(list(stage.player.folder.glob(UNFINISHED)), [], "unfinished files")


def save_an_emptied_list(stage):
    """In the editor, up to what follows the question."""
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    stage.player.press_control("Clear")
    stage.player.press_control("Save")
    stage.player.wait_for_box("Save OK?")
    stage.desk.key("Return")


def refused_save(stage, kept):
    save_an_emptied_list(stage)
    stage.player.wait_for_box("FILE00.INI Can't save!!")
    check_whole(stage, kept)
    stage.desk.key("Return")
    wait("no box", lambda: not stage.accessibility.find(stage.player.process.pid, holding="Can't save!!"))


# FAULT-26: A limit on the size of files, and a reader of its messages that has gone, are answers and never the end
@story("faults: a limit on the size of files refuses a save, and the player plays on")
def limited_files(stage):
    songs = [tone(stage.media / f"song{number}.wav", hz, 5) for number, hz in enumerate((440, 660))]
    kept = stored_list(stage, *songs)
    stage.player.start()
    subprocess.run(["prlimit", f"--pid={stage.player.process.pid}", "--fsize=100:"], check=True)
    refused_save(stage, kept)
    close_by(stage, "Cancel")
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    subprocess.run(["prlimit", f"--pid={stage.player.process.pid}", "--fsize=unlimited:"], check=True)
    equal(stage.player.power_off(), 0, "exit code")


def check_sound_is_where_the_time_stands(stage):
    """For some seconds: what sounds is the second that the panel tells; at its change one may be ahead of the other. A look at which
    the recording was late, by what it usually has, tells of another second: it does not count."""
    seen = []  # (how late the recording was, what is heard less what is told)

    def counted():
        usual = min((late for late, _ in seen), default=0)
        return [apart for late, apart in seen if late - usual <= LATE_SECONDS]

    def looked():
        before, late, hz, after = told(stage, "Time"), time.monotonic() - stage.sound.now(), stage.sound.pitch_now(), told(stage, "Time")
        heard = next((second for second, tone in enumerate(LADDER) if same_pitch(hz, tone)), None)
        if before and before == after and heard is not None:
            seen.append((late, heard - int(before[-2:])))
        return len(counted()) >= LOOKS

    wait("the ladder's tones", looked, 20, 0.1)
    looks = counted()
    check(max(map(abs, looks)) <= 1 and looks.count(0) > 0.6 * LOOKS, f"seconds between what is heard and what is told: {looks}")


# FAULT-01
@story("faults: the sound server is killed in the middle of a file and started again: time goes on, then the sound")
def sound_server_lost(stage):
    with own_desktop(stage) as inner:
        song = steps(inner.media / "song.wav", LADDER)
        inner.player.start(song)
        inner.player.press(PLAY)
        inner.sound.wait_for(LADDER[1])
        inner.session.kill_sound()
        before = inner.player.slider_fraction()
        wait("the time goes on in silence", lambda: inner.player.slider_fraction() > before + 0.05, 8)
        inner.sound.stop()
        inner.session.restart_sound()
        recorder = Recorder(inner.session, inner.session.folder / "heard_again.raw")
        inner.theatre.recorder = inner.sound = recorder
        wait("the sound", lambda: inner.sound.pitch_now() > 0, 20)
        check_sound_is_where_the_time_stands(inner)
        equal(inner.player.boxes(), [], "boxes")
        equal(inner.player.power_off(), 0, "exit code")


# FAULT-08: When the display is lost the program ends by itself; lists are whole, the volume found at the start is put
#     back
@story("faults: the display is lost while it plays: it ends by itself, lists whole, the volume put back")
def display_lost(stage):
    with own_desktop(stage) as inner:
        set_sink_volume(inner.session, 40000, 30000)
        kept = stored_list(inner, tone(inner.media / "song.wav", 440, 20))
        inner.player.start()
        inner.player.press(VOLUME_DOWN)
        wait("another volume", lambda: sink_volume(inner.session) != (40000, 30000))
        inner.player.press(PLAY)
        inner.sound.wait_for(440)
        end_server(inner.session, "Xvfb")
        inner.player.may_end_with(1)
        equal(inner.player.wait_for_end(), 1, "exit code")
        inner.sound.wait_for_silence()
        check_whole(inner, kept)
        wait("the volume found at start", lambda: sink_volume(inner.session) == (40000, 30000), 3)


def end_server(session, name):
    for known, server, _ in session._servers:
        if known == name:
            server.kill()
            server.wait()


@contextlib.contextmanager
def small_disk(folder):
    """A disk of its own where the folder is, with what lies in it."""
    away = folder.with_name("away")
    folder.rename(away)
    folder.mkdir()
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={SMALL_DISK_KB}k", "tmpfs", str(folder)], capture_output=True,
                             text=True, check=False)
    if mounted.returncode != 0:
        skip(f"a disk of its own cannot be had here ({mounted.stderr.partition(chr(10))[0] or 'mount failed'})")
    try:
        shutil.copytree(away, folder, dirs_exist_ok=True)
        yield
    finally:
        subprocess.run(["umount", "-l", str(folder)], check=True)


def fill(folder):
    """Fills a disk to its last byte; returns the file that does."""
    filler = folder / "filler"
    with open(filler, "wb", buffering=0) as out:
        size = 65536
        while size:
            try:
                out.write(bytes(size))
            except OSError as error:
                check(error.errno == errno.ENOSPC, f"not full but {error}")
                size //= 2
    return filler


# FAULT-03: On a full disk a save is refused by a box, the old list stays whole, nothing half written is left, and room
#     makes it work again
@story("faults: on a full disk a save is refused by a box, the old list stays whole, and room makes it work again")
def disk_full(stage):
    if os.geteuid() != 0:
        skip("a disk of its own needs root")
    kept = stored_list(stage, tone(stage.media / "song.wav", 440, 6))
    with small_disk(stage.player.folder):
        stage.player.start()
        filler = fill(stage.player.folder)
        refused_save(stage, kept)
        filler.unlink()
        stage.player.press_control("Save")
        stage.player.wait_for_box("Save OK?")
        stage.desk.key("Return")
        wait("the emptied list", lambda: b"LIST000=|" in (stage.player.folder / "FILE00.INI").read_bytes())
        equal(list(stage.player.folder.glob(UNFINISHED)), [], "unfinished files")
        close_by(stage, "OK")
        equal(stage.player.power_off(), 0, "exit code")


# FAULT-04: In a folder that cannot be written it starts and plays; a list is refused by a box, settings hold for the
#     run
@story("faults: in a folder that cannot be written it plays; lists are refused by a box, settings hold for the run")
def read_only_folder(stage):
    kept = stored_list(stage, tone(stage.media / "song.wav", 440, 20))
    folder = stage.player.folder
    folder.chmod(0o555)
    try:
        # Without this right root is held to a folder's mode as everyone is.
        limited = ["setpriv", "--bounding-set=-dac_override,-dac_read_search"] if os.geteuid() == 0 else []
        stage.player.start(under=limited)
        refused_save(stage, kept)
        close_by(stage, "Cancel")
        open_settings(stage)
        field = node(stage, name="PLAY_Click", role="text")
        stage.desk.click(*field.middle, times=2)
        stage.desk.key("ctrl+a")
        stage.desk.type("q")
        close_by(stage, "OK")
        stage.player.key("q")
        stage.sound.wait_for(440)
        equal(stage.player.power_off(), 0, "exit code")
        equal([path.name for path in folder.iterdir() if path.name not in ("PANELSET", "FILE00.INI")], [], "new files")
        check_whole(stage, kept)
    finally:
        folder.chmod(0o755)


# FAULT-05: A file deleted while it plays sounds to its end; the next one that is gone is told by its box
@story("faults: files deleted while they play sound to their end; the next one that is gone is told by its box")
def files_deleted(stage):
    songs = [steps(stage.media / f"song{hz}.wav", [hz, hz * 1.25], 3) for hz in (440, 700)]
    stage.player.start(*songs)
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    for song in songs:
        song.unlink()
    stage.sound.wait_for(550)
    stage.player.wait_for_box(f"{songs[1]} Can't open!!")
    stage.player.press_control("Abort")
    stage.player.wait_for_no_box()
    equal(stage.player.power_off(), 0, "exit code")


def stop_in_the_opening(stage):
    """Starts it and stops its process while the panel is still growing; False when it was too late."""
    stage.player.start(panel=False)
    process = stage.player.process.pid
    wait("the opening", lambda: stage.desk.tool("search", "--onlyvisible", "--pid", process, check=False).split(), 15, 0.001)
    os.kill(process, signal.SIGSTOP)
    grown = stage.desk.windows(pid=process)
    return bool(grown) and grown[0].width < stage.player.skin[0][4] - 20


# FAULT-06
@story("faults: a skin removed between the start and the panel gives its box and ends")
def skin_removed_in_the_opening(stage):
    records = stage.player.folder / "PANELSET" / "DEFAULT.CSV"

    def stopped_in_time():
        if stop_in_the_opening(stage):
            return True
        stage.player.kill()
        return False

    wait("a start that was stopped in its opening", stopped_in_time, 60, 0)
    records.unlink()
    os.kill(stage.player.process.pid, signal.SIGCONT)
    stage.player.wait_for_box("パネルを表示できません。")
    stage.desk.key("Return")
    equal(stage.player.wait_for_end(), 0, "exit code")


# FAULT-07: A clock that is set forward or back leaves the time of the music alone
@story("faults: the clock set forward and back by years leaves the music's time alone")
def clock_set(stage):
    check(FAKE_TIME, "libfaketime is not installed")
    told = stage.folder / "told_time"
    song = steps(stage.media / "song.wav", [440, 550, 660], 4)

    def set_clock(shift):
        beside = told.with_suffix(".new")
        beside.write_text(shift)
        beside.rename(told)

    set_clock("+0")
    stage.player.start(song, LD_PRELOAD=str(FAKE_TIME[0]), FAKETIME_TIMESTAMP_FILE=str(told), FAKETIME_NO_CACHE="1",
                       FAKETIME_DONT_FAKE_MONOTONIC="1")
    stage.player.press(PLAY)
    first = stage.sound.wait_for(440)
    set_clock("+3650d")
    stage.sound.wait_for(550)
    set_clock("-3650d")
    stage.sound.wait_for(660)
    stage.sound.wait_for_silence(8)
    stage.sound.expect_exactly([(440, 4), (550, 4), (660, 4)], first - 1, longest_gap=LONGEST_GAP)
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")


# FAULT-10: Without a font it starts, plays and ends
@story("faults: without a font it starts, plays and ends")
def no_fonts(stage):
    empty = stage.folder / "fonts.conf"
    empty.write_text(NO_FONTS.format(stage.folder / "font_cache"))
    stage.player.start(tone(stage.media / "song.wav", 440, 20), FONTCONFIG_FILE=str(empty))
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")


# FAULT-11: Without sounds for MIDI a sequence is refused by a box with the reason; other files play
@story("faults: without sounds for MIDI a sequence is refused by a box, and the next file plays")
def no_sound_font(stage):
    song = tone(stage.media / "song.wav", 440, 6)
    chime = stage.media / "chime.mid"
    chime.symlink_to(PROJECT / "samples" / "chime.mid")
    stage.player.start(chime, song, CORVANE_SOUNDFONT=str(stage.folder / "none.sf2"))
    stage.player.press(PLAY)
    stage.player.wait_for_box("The sounds for MIDI cannot be read")
    stage.desk.key("Return")
    stage.player.wait_for_no_box()
    stage.player.key("period")
    wait_for_told(stage, "FileNo", "002")
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")


def installed(stage):
    """A copy of the program with the skins where an installed one has them."""
    place = stage.folder / "usr"
    (place / "bin").mkdir(parents=True)
    (place / "share" / "corvane").mkdir(parents=True)
    shutil.copy(stage.player.program, place / "bin" / "corvane")
    shutil.copytree(PROJECT / "PANELSET", place / "share" / "corvane" / "PANELSET")
    return place


# FAULT-12
@story("faults: without a home folder an installed program plays with the shipped skins and writes nothing among them")
def no_home(stage):
    place = installed(stage)
    stage.player.program = place / "bin" / "corvane"
    before = sorted(path.relative_to(place) for path in place.rglob("*"))
    song = tone(stage.media / "song.wav", 440, 20)
    # A place where not even root can make a folder.
    stage.player.start(song, under=["env", "-u", "CORVANE_FOLDER", "-u", "XDG_DATA_HOME", "-u", "XDG_CONFIG_HOME",
                                    "-u", "XDG_CACHE_HOME"], HOME="/proc/none")
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")
    equal(sorted(path.relative_to(place) for path in place.rglob("*")), before, "files of the installed program")
