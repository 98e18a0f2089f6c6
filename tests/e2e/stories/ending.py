# SPDX-License-Identifier: GPL-3.0-or-later
"""The end in the middle of work, and a system that refuses what is asked of it."""

import pathlib
import signal
import struct
import subprocess
import time

from harness.expect import check, equal, wait
from harness.media import tone
from harness.player import PLAY, POWER, REPEAT, REPEAT_LAMP
from harness.story import story

END_SECONDS = 2  # with the closing picture
SLACK = 2  # a busy machine
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
    return {str(path) for place in places if place.is_dir() for path in place.glob("*corvane*")
            if path.suffix != ".lock"}


def end_in_time(stage, how):
    before = time.monotonic()
    how()
    equal(stage.player.wait_for_end(END_SECONDS + SLACK), 0, "exit code")
    taken = time.monotonic() - before
    check(taken < END_SECONDS + SLACK, f"the end took {taken:.1f} s")
    return taken


@story("faults: SIGTERM while something is decoded ends the program in time, with code 0, and nothing stays behind")
def ended_while_busy(stage):
    busy = [huge_sound(stage.media / "huge.wav"), heavy_movie(stage.media / "heavy.avi"), crowded_sequence(stage.media / "crowd.mid")]
    stage.player.settings(DELAYTIME=30)
    before = left_behind(stage)
    for path in busy:
        stage.player.save_list([path])
        for moment in (0.05, 1.0):
            stage.player.start()
            stage.player.press(PLAY)
            begun = time.monotonic()
            wait("the moment", lambda: time.monotonic() - begun > moment)
            end_in_time(stage, lambda: stage.player.process.send_signal(signal.SIGTERM))
            unfinished = list(stage.player.folder.rglob(".corvane-*"))
            check(not unfinished, f"{unfinished} stay behind")
    equal(left_behind(stage), before, "files outside of its folder")


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
