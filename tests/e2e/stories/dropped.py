# SPDX-License-Identifier: GPL-3.0-or-later
"""Files dropped from a real file manager, and opened from it."""

from harness.drops import FileManager, open_by_player
from harness.expect import check, equal, steady, wait
from harness.media import tone
from harness.player import EDITOR, NEXT, PAUSE, PLAY, STOP
from harness.signs import wait_for_told
from harness.sound import same_pitch
from harness.story import story

NAMES = ("alpha.wav", "beta ray.wav", "ガンマ.wav")
TONES = (440, 554, 698)


def folder_of_songs(stage):
    folder = stage.media / "dropped"
    folder.mkdir()
    for name, hz in zip(NAMES, TONES):
        tone(folder / name, hz, 30)
    (folder / "readme.txt").write_text("not a sound")
    return folder


# DROP-02, DROP-14
@story("drops: files from a file manager become the list and do not start by themselves")
def onto_the_panel(stage):
    playing = tone(stage.media / "playing.wav", 880, 120)  # longer than a busy machine needs for a file manager
    stage.player.start(playing)
    stage.player.press(PLAY)
    stage.sound.wait_for(880)
    with FileManager(stage, folder_of_songs(stage)) as files:
        files.drag_all_to(*stage.player.button(PLAY))
        wait_for_told(stage, "Total FileNo", str(len(NAMES)))
    stage.sound.expect_steady(880, 0.8)
    stage.player.key("c", "z")
    heard = []
    for _ in NAMES:
        heard.append(wait("another song", lambda: new_song(stage, heard)))
        stage.player.press(NEXT)
    equal(sorted(heard), sorted(TONES), "songs heard")


# DROP-09
@story("drops: a text that is dropped empties list and display, and what plays goes on")
def text_onto_the_panel(stage):
    stage.player.start(*(tone(stage.media / f"song{number}.wav", hz, 120) for number, hz in enumerate(TONES)))
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    wait_for_told(stage, "Total FileNo", "3")
    with FileManager(stage, folder_of_songs(stage)) as files:
        files.drag_text_to(*stage.player.button(PLAY))
        stage.leave_picture("dropped")
        for label, text in (("Total FileNo", "0"), ("FileNo", ""), ("Tittle", "")):
            wait_for_told(stage, label, text)
    stage.sound.expect_steady(TONES[0], 0.8)
    stage.player.press(NEXT)
    stage.sound.wait_for_silence()
    equal(stage.player.power_off(), 0, "exit code")


def new_song(stage, heard):
    """The song that sounds now, unless it was heard before."""
    now = stage.sound.pitch_now()
    return next((hz for hz in TONES if same_pitch(now, hz) and hz not in heard), None)


def editor_aside(stage):
    """Moves the open editor clear of the file manager; its play list."""
    stage.desk.tool("windowmove", stage.player.wait_for_window("Play List").id, 400, 480)
    return wait("the editor aside", lambda: [n for n in stage.accessibility.find(stage.player.process.pid, name="PLAY LIST",
                                             role="list") if n["place"][1] > 500])[0]


# EDIT-32
@story("drops: files from a file manager are added in the editor")
def into_the_editor(stage):
    stage.player.start()
    stage.player.press(EDITOR)
    stage.accessibility.wait_for(stage.player.process.pid, name="PLAY LIST", role="list")
    with FileManager(stage, folder_of_songs(stage)) as files:
        files.drag_all_to(*editor_aside(stage).middle)
        for name in NAMES:
            stage.accessibility.wait_for(stage.player.process.pid, name=name, role="list item")
    found = stage.accessibility.find(stage.player.process.pid, name="readme.txt", role="list item")
    check(not found, "a text file was taken")


# DROP-35, DROP-36, EDIT-107
@story("drops: what is left out is told in one box: of opened files always, over the editor where nothing is played; a plain player is silent")
def left_out(stage):
    notes = stage.media / "notes"
    (notes / "empty").mkdir(parents=True)
    text = notes / "readme.txt"
    text.write_text("nothing to play")
    first, song = tone(stage.media / "first.wav", 880, 60), tone(stage.media / "song.wav", 440, 60)

    def hand(*files):
        equal(stage.player.start_another("--open", *files).wait(10), 0, "exit code of the later start")

    def close_box(said):
        stage.player.wait_for_box(said)
        equal(len(stage.player.boxes()), 1, "boxes")
        stage.leave_picture(said.split(":")[0].replace("/", "_")[-40:])
        stage.desk.tool("windowfocus", "--sync", stage.player.boxes()[0].id)
        stage.desk.key("Return")
        stage.player.wait_for_no_box()
        steady("no other box", lambda: not stage.player.boxes(), 0.8)

    def hear_beside_box(hz, said):
        if not stage.watch.command:  # of a slow program the box is there before the sound is open, which waits for it then
            stage.sound.wait_for(hz)
        close_box(said)
        stage.sound.wait_for(hz)

    stage.player.settings(CONVENIENCES="ON")
    stage.player.start("--open", first, text)
    hear_beside_box(880, "readme.txt: left out")
    hand(text, song, notes / "gone.wav")
    hear_beside_box(440, "gone.wav: left out, because there is no such file")
    hand(notes / "empty", text)
    close_box("empty: left out, because nothing in it can be played here")
    stage.player.press(STOP)
    stage.sound.wait_for_silence()
    stage.player.press(EDITOR)
    stage.accessibility.wait_for(stage.player.process.pid, name="PLAY LIST", role="list")
    with FileManager(stage, notes) as files:
        files.drag_all_to(*editor_aside(stage).middle)
        close_box("readme.txt: left out, because it is none of the kinds that are played")
    stage.desk.tool("windowfocus", "--sync", stage.player.wait_for_window("Play List").id)
    stage.desk.key("Escape")
    stage.player.wait_for_panel()
    equal(stage.player.power_off(), 0, "exit code")

    stage.player.settings()
    stage.player.start(first)
    hand(text, song)
    stage.sound.wait_for(440)
    steady("no box", lambda: not stage.player.boxes(), 0.8)
    equal(stage.player.power_off(), 0, "exit code of the plain player")


@story("opened: files opened from a file manager are played at once, whatever played")
def from_a_file_manager(stage):
    songs = folder_of_songs(stage)
    (songs / "readme.txt").unlink()
    open_by_player(stage, "audio/x-wav", "audio/vnd.wave", "audio/wav")
    stage.player.start(tone(stage.media / "before.wav", 880, 60))
    stage.player.press(PLAY)
    stage.sound.wait_for(880)
    with FileManager(stage, songs) as files:
        for before in ("playing", "paused", "stopped"):
            files.open_all()
            wait_for_told(stage, "Total FileNo", str(len(NAMES)))
            wait(f"a song of them, {before} before", lambda: new_song(stage, []), 15)  # the file manager starts a program first
            wait_for_told(stage, "FileNo", "001")
            check(stage.player.running(), "the first one has ended")
            stage.player.press(PAUSE if before == "playing" else STOP)
            stage.sound.wait_for_silence()
    heard = []
    stage.player.press(PLAY)
    for _ in NAMES:
        heard.append(wait("another song", lambda: new_song(stage, heard)))
        stage.player.press(NEXT)
    equal(sorted(heard), sorted(TONES), "songs heard")
    equal(stage.player.power_off(), 0, "exit code")
