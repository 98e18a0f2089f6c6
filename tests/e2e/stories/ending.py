# SPDX-License-Identifier: GPL-3.0-or-later
"""The end in the middle of work, and a system that refuses what is asked of it."""

import pathlib
import signal
import struct
import subprocess
import time

from harness.expect import SLACK, check, equal, wait
from harness.lateness import Lateness
from harness.media import movie, picture, tone
from harness.player import PLAY, POWER, REPEAT, REPEAT_LAMP
from harness.story import story
from stories.faults import end_server, own_desktop
from stories.hostile_pictures import layers
from stories.stalled import LOOK, Drive

END_SECONDS = 2  # with the closing picture
MOST_LATE = 2.0  # seconds of an end that may be the machine's
HUGE = 20 << 30
NO_THREAD = "The system refuses another thread."


def huge_sound(path):
    """A sound of 20 GB without a true length: it is measured while it plays."""
    source = path.with_suffix(".mp3")
    tone(source, 440, 5)
    with open(path, "wb") as out:
        out.write(source.read_bytes() * 20)
        out.truncate(HUGE)
    return path


def heavy_movie(path):
    """Pictures of noise, as large as a movie may be: each is long in the decoder."""
    picture = path.with_suffix(".jpg")
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", "nullsrc=s=4096x2304,geq=random(1)*255:128:128",
                    "-frames:v", "1", "-q:v", "1", str(picture)], check=True, timeout=60)
    frames = picture.read_bytes() * 40
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "mjpeg", "-framerate", "25", "-i", "-", "-c", "copy", str(path)],
                   input=frames, check=True, timeout=60)
    return path


def crowded_sequence(path):
    """Most of a million notes at once, and as many messages before the end."""
    notes = b"\x00\x90\x3c\x7f" + b"\x00\x3d\x7f" * 400_000
    changes = b"\x83\x00\xb0\x07\x10" + b"\x00\x07\x11" * 500_000
    track = notes + changes + b"\x83\x00\xff\x2f\x00"
    path.write_bytes(b"MThd" + struct.pack(">IHHH", 6, 0, 1, 96) + b"MTrk" + struct.pack(">I", len(track)) + track)
    return path


def left_behind(stage):
    """Files of the program outside of its own folder; its lock stays, because another start may be waiting for it."""
    places = [pathlib.Path(stage.session.environment.get(name, "/nowhere")) for name in ("XDG_RUNTIME_DIR", "TMPDIR")]
    return {str(path) for place in places for pattern in ("*corvane*", "corvane/*") for path in place.glob(pattern)
            if path.suffix != ".lock" and path != place / "corvane" and not path.name.startswith("corvane_session_")}  # other stories' desktops


def end_in_time(stage, how, seconds=END_SECONDS, code=0):
    """Less what the machine let the program, and who asks it, wait for a processor."""
    lateness = Lateness(stage.player.process.pid)
    before = time.monotonic()

    def taken():
        return time.monotonic() - before - min(lateness.seconds(), MOST_LATE)

    how()
    wait("its end", lambda: not stage.player.running() or taken() >= seconds * SLACK, seconds + MOST_LATE)
    passed = taken()
    check(not stage.player.running(), f"it has not ended {passed:.1f} s after it was asked to")
    equal(stage.player.process.returncode, code, "exit code")
    return passed


def endless_disc(folder):
    """A disc image whose one sound is measured for minutes when it is opened."""
    folder.mkdir()
    sound = huge_sound(folder / "endless.bin").rename(folder / "sound.dat")
    (folder / "disc.cue").write_text(f'FILE "{sound.name}" MP3\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n')
    track = folder / "Track01.cda"
    track.write_bytes(b"")
    return track


def asked_to_end(stage):
    """The ways to ask it, by name."""
    def send(*signs):
        for sign in signs:
            stage.player.process.send_signal(sign)

    return {"SIGTERM": lambda: send(signal.SIGTERM), "SIGTERM twice": lambda: send(signal.SIGTERM, signal.SIGTERM),
            "SIGHUP": lambda: send(signal.SIGHUP), "SIGINT": lambda: send(signal.SIGINT), "close": lambda: close_panel(stage)}


def close_panel(stage):
    """As the window manager's close does."""
    stage.session.run(["wmctrl", "-i", "-c", hex(stage.player.window.id)])


HEARS_ALL = ("env", "--default-signal=HUP,INT")  # whatever the run of the stories was started to ignore


def plays_and_ends(stage, path, moment, way, seconds=END_SECONDS, **environment):
    stage.player.save_list([path])
    stage.player.start(under=HEARS_ALL, **environment)
    stage.player.press(PLAY)
    begun = time.monotonic()
    wait("the moment", lambda: time.monotonic() - begun > moment)
    taken = end_in_time(stage, asked_to_end(stage)[way], seconds)
    unfinished = list(stage.player.folder.rglob(".corvane-*"))
    check(not unfinished, f"{unfinished} stay behind")
    return f"{path.name} after {moment} s by {way}: {taken:.2f} s\n"


# FAULT-64
@story("faults: whoever asks while something is decoded, the program ends in time, with code 0, and nothing stays behind")
def ended_while_busy(stage):
    busy = [huge_sound(stage.media / "huge.wav"), heavy_movie(stage.media / "heavy.avi"), crowded_sequence(stage.media / "crowd.mid"),
            layers(stage.media / "layers.jpg", (8000, 5000), 98), endless_disc(stage.media / "disc")]
    stage.player.settings(DELAYTIME=30)
    before = left_behind(stage)
    ways = ((1.0, "SIGTERM"), (1.0, "close"), (0.05, "SIGTERM"), (0.3, "SIGTERM twice"), (0.5, "SIGHUP"), (0.5, "SIGINT"))
    taken = [plays_and_ends(stage, path, moment, way) for path in busy for moment, way in (ways[:2] if stage.watch.command else ways)]
    stage.leave_text("taken", "".join(taken))
    equal(left_behind(stage), before, "files outside of its folder")


# FAULT-64
@story("faults: whoever asks while a drive does not answer, the program ends in time, with code 0")
def ended_while_stalled(stage):
    drive = Drive(stage)
    files = [tone(drive.folder / "song.wav", 700, 5), movie(drive.folder / "movie.avi", "#32A046", 700, 3),
             picture(drive.folder / "picture.jpg", "#C83232")]
    stage.player.settings(DELAYTIME=30)
    taken = []
    for path in files:
        for word in ("read", "all") if stage.watch.command else ("read", "open", "all"):
            drive.stall(word)
            taken.append(plays_and_ends(stage, path, 0.3, "SIGTERM", **drive.environment))
            # A window's close is not heard while a look at the drive is waited for.
            taken.append(plays_and_ends(stage, path, 0.3, "close", END_SECONDS + (LOOK if word == "all" else 0), **drive.environment))
            drive.answer()
    stage.leave_text("taken", "".join(taken))


@story("faults: the display is lost while something is decoded: it ends by itself in time, and nothing stays behind")
def display_lost_while_busy(stage):
    for make in (lambda media: huge_sound(media / "huge.wav"), lambda media: heavy_movie(media / "heavy.avi"),
                 lambda media: crowded_sequence(media / "crowd.mid"), lambda media: layers(media / "layers.jpg", (8000, 5000), 98)):
        with own_desktop(stage) as inner:
            inner.player.settings(DELAYTIME=30)
            inner.player.save_list([make(inner.media)])
            inner.player.start()
            inner.player.press(PLAY)
            begun = time.monotonic()
            wait("the moment", lambda: time.monotonic() - begun > 0.5)
            inner.player.may_end_with(1)
            end_in_time(inner, lambda: end_server(inner.session, "Xvfb"), code=1)
            equal(list(inner.player.folder.rglob(".corvane-*")), [], "unfinished files")


# FAULT-63
@story("faults: a system that has no thread left: each file is refused with that reason, the panel goes on, and later all plays")
def no_thread_left(stage):
    switch = stage.folder / "refused"
    library = stage.theatre.program.parent / "tests" / "libcorvane_stall.so"
    check(library.exists(), f"{library} is not built")
    song = tone(stage.media / "song.wav", 440, 5)
    stage.player.save_list([song])
    stage.player.start(LD_PRELOAD=str(library), CORVANE_REFUSE_THREADS=str(switch))
    switch.write_text("threads")
    stage.player.press(PLAY)
    wait("a box", stage.player.boxes)
    texts = (NO_THREAD, "Can't open!!")
    wait(f"one of {texts}", lambda: any(text in name or text in shown for _, name, shown in stage.player.texts() for text in texts))
    stage.desk.key("Escape")
    stage.player.wait_for_no_box()
    lit = stage.player.lamp_lit(REPEAT_LAMP)
    stage.player.press(REPEAT)
    wait("the panel answers", lambda: stage.player.lamp_lit(REPEAT_LAMP) != lit)
    switch.unlink()
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    switch.write_text("threads")
    end_in_time(stage, lambda: stage.player.press(POWER))
