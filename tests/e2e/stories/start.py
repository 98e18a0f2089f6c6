# SPDX-License-Identifier: GPL-3.0-or-later
"""Starting and ending the program."""

import datetime

import numpy as np

from harness import PROJECT
from harness.expect import check, equal, steady, wait
from harness.in_time import Starved
from harness.looks import wait_for_exact_panel
from harness.media import steps, tone
from harness.player import AUTO_LAMP, PLAY, QUICK_LAMP, VOLUME_DOWN, set_sink_volume, sink_volume
from harness.signs import told
from harness.sound import RATE, read_notes
from harness.story import story

SOUND_SAMPLES = ("chime.mid", "echo.rmi", "scale.wav", "waltz.mp3", "bells.mp2", "horn.au", "steps.aiff")
LONGEST_GAP_MS = 60  # between two sound files; the aim is 30 on a machine that does nothing else


# START-45
@story("start: the panel stands pixel by pixel as the skin says")
def pixel_exact(stage):
    stage.player.start()
    stage.desk.rest()
    wait_for_exact_panel(stage)


# START-31, BTN-06
@story("start: without auto play nothing sounds until play is pressed")
def waits_for_play(stage):
    song = tone(stage.media / "song.wav", 660, 3)
    stage.player.start(song)
    steady("silence", lambda: stage.sound.pitch_now() == 0, 1)
    check(not stage.player.lamp_lit(AUTO_LAMP), "the auto lamp is lit")
    stage.player.press(PLAY)
    stage.sound.wait_for(660)


# START-30
@story("start: auto play plays a stored list of every sound sample in order")
def samples_in_order(stage):
    notes = read_notes(PROJECT / "samples" / "NOTES.txt")
    paths = []
    for name in SOUND_SAMPLES:
        paths.append(stage.media / name)
        paths[-1].symlink_to(PROJECT / "samples" / name)
    stage.player.settings(AUTOPLAY="ON")
    stage.player.save_list(paths)
    stage.player.start()
    wait("the auto lamp", lambda: stage.player.lamp_lit(AUTO_LAMP))
    check(not stage.player.lamp_lit(QUICK_LAMP), "the quick lamp is lit")
    expected = [hz for name in SOUND_SAMPLES for hz, _, _ in notes[name]]
    wait("the last file begins", lambda: stage.sound.now() > 22 and stage.sound.pitch_now() > 0, 90)
    stage.sound.wait_for_silence(20, lasting=1.5)
    stage.sound.expect_order(expected)


# MCI-22: The next file follows without a noticeable gap
@story("start: the gap between two files is short")
def short_gap(stage):
    files = [steps(stage.media / f"part{number}.wav", [hz], 1.5) for number, hz in enumerate((440, 660, 550), 1)]
    stage.player.settings(AUTOPLAY="ON")
    stage.player.start(*files)
    with Starved(stage) as starved:
        stage.sound.wait_for(550, 12)
        stage.sound.wait_for_silence(6)
    stage.sound.expect_order([440, 660, 550])
    sounding = np.flatnonzero(np.abs(stage.sound.samples()) > 0.02)
    longest = np.diff(sounding).max() / RATE * 1000
    starved_ms = starved.seconds * 1000
    check(longest < LONGEST_GAP_MS + starved_ms, f"a gap of {longest:.0f} ms, the sound was held for {starved_ms:.0f} ms")


# START-01
@story("start: a second start on the same folder ends silently")
def second_start(stage):
    stage.player.start()
    before = len(stage.desk.windows(name="."))
    second = stage.player.start_another()
    equal(second.wait(10), 0, "exit code of the second start")
    wait("as many windows as before", lambda: len(stage.desk.windows(name=".")) == before)
    check(stage.player.running(), "the first one has ended")


# CMD-19, CMD-20
@story("start: a second start brings the panel back to the front and tells which names it leaves out")
def called_back(stage):
    stage.player.start()
    panel = stage.player.window.id
    stage.desk.tool("windowminimize", "--sync", panel)
    wait("the panel out of sight", lambda: not stage.desk.windows(pid=stage.player.process.pid))
    second = stage.player.start_another("--opne", "nothing\x1b[2J.txt")
    equal(second.wait(10), 0, "exit code of the second start")
    wait("the panel back", lambda: [window.id for window in stage.desk.windows(pid=stage.player.process.pid)] == [panel])
    wait("the panel in front", lambda: stage.desk.stacking()[-1] == panel and stage.desk.focused() == panel)
    for line in ("corvane: --opne: there is no such option", "takes no names but behind --open: nothing?[2J.txt"):
        wait(f"a line with {line!r}", lambda line=line: line in stage.player.log())
    third = stage.player.start_another("--open", "/nowhere/a.wav", "/nowhere/b.txt")
    equal(third.wait(10), 0, "exit code of the third start")
    wait("why the one is left out", lambda: "/nowhere/b.txt: left out, because it is none" in stage.player.log())
    wait("why the other is", lambda: "/nowhere/a.wav: left out, because there is no such" in stage.player.log())
    equal(stage.player.power_off(), 0, "exit code")


# START-02
@story("start: two folders run side by side")
def two_folders(stage):
    stage.player.start()
    other = stage.folder / "other"
    other.mkdir()
    (other / "PANELSET").symlink_to(stage.player.folder / "PANELSET")
    second = stage.player.start_another(folder=other)
    wait("the second player's panel", lambda: stage.desk.windows(pid=second.pid), 10)
    check(second.poll() is None and stage.player.running(), "only one runs")
    second.terminate()
    equal(second.wait(10), 0, "exit code of the second")


def missing_skin_file(stage, name):
    path = stage.player.folder / "PANELSET" / name
    path.unlink()
    stage.player.start(panel=False)
    stage.player.wait_for_box(f"{path} Not found!!")
    check(stage.player.find_panel() is None, "a panel is shown")
    stage.desk.key("Return")
    equal(stage.player.wait_for_end(), 0, "exit code")
    check(not (stage.player.folder / "KADO.INI").exists(), "a settings file was written")


# START-09
@story("start: a missing skin bitmap gives its box and ends")
def missing_bitmap(stage):
    missing_skin_file(stage, "DEFAULT.BMP")


# START-10
@story("start: a missing skin text gives its box and ends")
def missing_records(stage):
    missing_skin_file(stage, "DEFAULT.CSV")


# START-33
@story("start: a skin that cannot be applied gives its box and ends")
def broken_skin(stage):
    records = stage.player.folder / "PANELSET" / "DEFAULT.CSV"
    records.write_bytes(records.read_bytes() + b"Power,2,0,0,30000,30000,50,50,1\r\n")
    stage.player.start(panel=False)
    stage.player.wait_for_box("パネルを表示できません。")
    stage.desk.key("Return")
    equal(stage.player.wait_for_end(), 0, "exit code")


# START-39, START-42, BTN-01
@story("start: power off ends the process and puts the volume back")
def power_off(stage):
    set_sink_volume(stage.session, 40000, 30000)
    stage.player.start()
    for _ in range(3):
        stage.player.press(VOLUME_DOWN)
    wait("another volume", lambda: sink_volume(stage.session) != (40000, 30000))
    equal(stage.player.power_off(), 0, "exit code")
    wait(f"the volume found at start ({sink_volume(stage.session)})", lambda: sink_volume(stage.session) == (40000, 30000), 3)
    check(not (stage.player.folder / "KADO.INI").exists(), "a settings file was written")


# SET-45, LIST-24
@story("start: damaged settings, list and skin heading do not stop it")
def damaged_files(stage):
    folder = stage.player.folder
    (folder / "KADO.INI").write_bytes(bytes(range(256)) * 40 + b"\r\n[KADO]\r\nDELAYTIME=99999999999\r\nPAGENUM=-7\r\n")
    (folder / "FILE00.INI").write_bytes(b"[FILELIST\nLIST000" + b"=" * 5000)
    stage.player.start()
    equal(stage.player.power_off(), 0, "exit code")


# DISP-08
@story("start: while nothing plays the display tells the date and the time of the time zone it is in")
def idle_clock(stage):
    for zone, minutes_east in (("EAST-5:45", 345), ("WEST+9:30", -570)):
        stage.player.start(TZ=zone)

        def expected():
            """Of this minute and of the one before: the clock may be a moment behind."""
            now = datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(minutes=minutes_east)
            return {f"{each:%y/%m/%d} {'PM' if each.hour > 11 else 'AM'} {each.hour % 12:02}:{each.minute:02}"
                    for each in (now, now - datetime.timedelta(minutes=1))}

        wait(f"the time of {zone}", lambda: told(stage, "Display") in expected(), 8)
        equal(stage.player.power_off(), 0, "exit code")
