# SPDX-License-Identifier: GPL-3.0-or-later
"""Disc images: where they are looked for, and their tracks in the editor."""

import pathlib

from harness.expect import check, equal, steady, wait
from harness.media import disc, tone
from harness.player import PAUSE, PLAY, read_profile
from harness.signs import told_surely, wait_for_told
from harness.story import story
from stories.stalled import Drive
from stories.windows import close_by, items, node, open_editor

TONES, OTHERS = (440, 554, 698), (880, 1108, 1396)
SECONDS = 2.5
LONGEST_GAP = 0.3  # seconds that a busy machine may leave in a tone
KIND = "CD Audio Now On Play"


def make_disc(folder, tones):
    folder.mkdir(parents=True)
    return disc(folder, tones, SECONDS)


def hear(stage, expected):
    """Plays the list to its end; the tones are heard in order, each once and whole."""
    told_surely(stage, "Display")  # the labels are known then: a short track is not over before they are read
    began = stage.sound.now()
    stage.player.press(PLAY)
    stage.sound.wait_for(expected[0])
    wait_for_told(stage, "Display", KIND)
    stage.sound.wait_for_silence(SECONDS * len(expected) + 6, lasting=0.8)
    stage.sound.expect_exactly([(hz, SECONDS) for hz in expected], began, longest_gap=LONGEST_GAP)
    wait_for_told(stage, "FileNo", "001")


# MEDIA-43
@story("discs: tracks without an image beside them are those of the disc that is named; an image beside them wins")
def named_disc(stage):
    named, _ = make_disc(stage.media / "named", TONES)
    beside, tracks = make_disc(stage.media / "beside", OTHERS)
    alone = [stage.media / f"alone{number}Track{number:02}.cda" for number in (3, 1)]
    for track in alone:
        track.write_bytes(b"")
    stage.player.start(*alone, CORVANE_CDROM=str(named))
    hear(stage, [TONES[2], TONES[0]])
    equal(stage.player.power_off(), 0, "exit code")
    stage.player.start(tracks[1], CORVANE_CDROM=str(named))
    hear(stage, [OTHERS[1]])
    beside.unlink()
    hear(stage, [TONES[1]])
    named.unlink()
    stage.player.press(PLAY)
    stage.player.wait_for_box(tracks[1].name)
    stage.desk.key("Return")
    stage.player.wait_for_no_box()
    check(stage.sound.pitch_now() == 0, "something sounds")
    equal(stage.player.power_off(), 0, "exit code")


def choose_disc(stage, home):
    """Chooses the disc in the editor's drive box, by the letters that its name begins with; its tracks are in the file box."""
    stage.desk.click(*node(stage, role="combo box", holding=str(home)).middle)
    stage.desk.type("CD")
    stage.desk.key("Return")
    names = [f"Track{number:02}.cda" for number in range(1, len(TONES) + 1)]
    wait("the tracks in the file box", lambda: items(stage, "FILE LIST") == names)
    return names


# MEDIA-15, MEDIA-44
@story("discs: in the editor a disc is a drive with its tracks; a list of them is saved, played and played after a restart")
def tracks_in_the_editor(stage):
    sheet, _ = make_disc(stage.media / "shelf", TONES)
    home = stage.folder / "home"
    home.mkdir()
    open_editor(stage, home, CORVANE_CDROM=str(sheet))
    names = choose_disc(stage, home)
    for name in (names[2], names[0]):
        stage.desk.click(*node(stage, name=name, role="list item").middle, times=2)
    wait("two tracks in the play list", lambda: items(stage, "PLAY LIST") == [names[2], names[0]])
    stage.player.press_control("Save")
    stage.player.wait_for_box("Save OK?")
    stage.desk.key("Return")
    list_file = stage.player.folder / "FILE00.INI"
    wait("the list's file", lambda: list_file.exists())
    close_by(stage, "OK")
    hear(stage, [TONES[2], TONES[0]])
    equal(stage.player.power_off(), 0, "exit code")
    path = pathlib.Path(read_profile(list_file)["LIST000"].split("|")[1])
    check(path.name == names[2] and "." not in str(path.parent), f"the stored entry {path}")
    check(not path.parent.parent.exists(), "a disc's tracks are files")
    stage.player.start(HOME=str(home), CORVANE_CDROM=str(sheet))
    hear(stage, [TONES[2], TONES[0]])
    equal(stage.player.power_off(), 0, "exit code")


# MEDIA-44
@story("discs: tracks of a disc that was taken out ask like missing files")
def taken_out(stage):
    sheet, _ = make_disc(stage.media / "shelf", TONES)
    home = stage.folder / "home"
    home.mkdir()
    open_editor(stage, home, CORVANE_CDROM=str(sheet))
    names = choose_disc(stage, home)
    for name in names[:2]:
        stage.desk.click(*node(stage, name=name, role="list item").middle, times=2)
    wait("two tracks in the play list", lambda: items(stage, "PLAY LIST") == names[:2])
    close_by(stage, "OK")
    away = sheet.rename(sheet.with_suffix(".away"))
    stage.player.press(PLAY)
    said = stage.player.wait_for_text(f"{names[0]} Can't open!!")
    check(said["name"].endswith("Can't open!!"), f"it is there, and cannot be read: {said['name']!r}")
    away.rename(sheet)
    began = stage.sound.now()
    stage.player.press_control("Ignore")
    stage.sound.wait_for(TONES[1])
    stage.player.wait_for_no_box()
    stage.sound.wait_for_silence(SECONDS + 6, lasting=0.8)
    stage.sound.expect_exactly([(TONES[1], SECONDS)], began, longest_gap=LONGEST_GAP)
    equal(stage.player.power_off(), 0, "exit code")


@story("discs: a sheet of sound files, one of them compressed, plays track by track")
def sound_files(stage):
    folder = stage.media / "album"
    folder.mkdir(parents=True)
    names = ["first.wav", "second.flac", "third.mp3"]
    for name, hz in zip(names, TONES):
        tone(folder / name, hz, SECONDS)
    kinds = ("WAVE", "FLAC", "MP3")
    (folder / "album.cue").write_bytes(b"\xef\xbb\xbf" + "\r\n".join(
        line for number, (name, kind) in enumerate(zip(names, kinds), 1)
        for line in (f'FILE "{name}" {kind}', f"  TRACK {number:02} AUDIO", "    INDEX 01 00:00:00")).encode())
    tracks = [folder / f"Track{number:02}.cda" for number in (1, 2, 3)]
    for track in tracks:
        track.write_bytes(b"")
    stage.player.start(*tracks)
    hear(stage, list(TONES))
    equal(stage.player.power_off(), 0, "exit code")


@story("discs: play, pause and play while a slow disc opens begin at the track that was chosen")
def slow_disc(stage):
    drive = Drive(stage)
    _, tracks = disc(drive.folder, TONES, 4)
    stage.player.start(tracks[1], **drive.environment)
    drive.stall("open")
    try:
        stage.player.press(PLAY)
        wait_for_told(stage, "Display", KIND)
        stage.player.press(PAUSE)
        stage.player.press(PLAY)
        steady("silence", lambda: stage.sound.pitch_now() == 0, 0.5)
        began = stage.sound.now()
    finally:
        drive.answer()
    stage.sound.wait_for(TONES[1], 10)
    stage.sound.wait_for_silence(10, lasting=0.8)
    stage.sound.expect_exactly([(TONES[1], 4)], began, longest_gap=LONGEST_GAP)
    equal(stage.player.power_off(), 0, "exit code")
