# SPDX-License-Identifier: GPL-3.0-or-later
"""What goes on at the next start."""

from harness.expect import check, equal, steady, wait
from harness.media import encode, steps, tone
from harness.player import PLAY
from harness.signs import middle_of_screen, told, told_surely, wait_for_told
from harness.story import story

TONES = (400, 500, 630, 800, 1000, 1250)
EACH = 10
LONG_SECONDS = 620
GREEN = "#32A046"


def seconds_told(stage):
    minutes, _, seconds = (told_surely(stage, "Time") or "0:0").partition(":")
    return int(minutes) * 60 + int(seconds)


# RESUME-01, RESUME-02
@story("going on: what played comes back paused at its place, with its list, and plays on from there; a plain start keeps nothing")
def comes_back(stage):
    first, second = tone(stage.media / "first.wav", 300, 60), steps(stage.media / "stairs.wav", TONES, EACH)
    stage.player.settings(CONVENIENCES="ON")
    stage.player.start("--open", first, second)
    stage.sound.wait_for(300)
    stage.player.key("period")
    stage.sound.wait_for(TONES[0])
    stage.desk.click(*stage.player.slider(0.4))
    stage.sound.wait_for(TONES[2])
    equal(stage.player.power_off(), 0, "exit code")
    stage.player.start()
    wait_for_told(stage, "FileNo", "002")
    wait_for_told(stage, "Total FileNo", "2")
    wait("its place", lambda: 23 <= seconds_told(stage) <= 29)
    place = seconds_told(stage)
    steady("it is held", lambda: seconds_told(stage) == place, 1.0)
    stage.leave_picture("paused")
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[2])
    stage.player.key("c")
    wait_for_told(stage, "Time", "")
    stage.player.power_off()
    stage.player.start()
    wait_for_told(stage, "FileNo", "002")
    steady("it is stopped", lambda: told_surely(stage, "Time") == "", 0.6)
    stage.player.power_off()
    kept = (stage.player.folder / "RESUME.INI").read_bytes()
    stage.player.settings()
    stage.player.start()
    steady("an empty list", lambda: told_surely(stage, "Total FileNo") == "", 0.6)
    stage.player.power_off()
    equal((stage.player.folder / "RESUME.INI").read_bytes(), kept, "what was kept")


# RESUME-08
@story("going on: a sound of more than ten minutes goes on where it was left, in this run and in the next one")
def long_file(stage):
    long, other = tone(stage.media / "long.wav", 500, LONG_SECONDS), tone(stage.media / "other.wav", 900, 60)
    stage.player.settings(CONVENIENCES="ON")
    stage.player.start("--open", long, other)
    stage.sound.wait_for(500)
    stage.desk.click(*stage.player.slider(0.5))
    wait("the middle", lambda: 300 < seconds_told(stage) < 320)
    stage.player.key("period")
    stage.sound.wait_for(900)
    stage.player.key("comma", "comma")
    wait("the middle again", lambda: told(stage, "FileNo") == "001" and 300 < seconds_told(stage) < 330)
    stage.player.power_off()
    stage.player.start("--open", other, long)
    stage.sound.wait_for(900)
    stage.player.key("period")
    wait("the middle in the next run", lambda: told(stage, "FileNo") == "002" and 300 < seconds_told(stage) < 335)


# RESUME-06, RESUME-11
@story("going on: a file that is gone and a folder that cannot be written ask nothing")
def gone_and_read_only(stage):
    song = tone(stage.media / "song.wav", 500, 20)
    stage.player.settings(CONVENIENCES="ON")
    stage.player.start("--open", song)
    stage.sound.wait_for(500)
    stage.player.power_off()
    song.unlink()
    stage.player.start()
    wait_for_told(stage, "FileNo", "001")
    steady("no box", lambda: not stage.player.boxes() and told_surely(stage, "Time") == "", 1.0)
    (stage.player.folder / "RESUME.INI").unlink()
    (stage.player.folder / "RESUME.INI").mkdir()  # nothing can take its place, whoever runs this
    equal(stage.player.power_off(), 0, "exit code")
    check((stage.player.folder / "RESUME.INI").is_dir(), "something else stands there")


# RESUME-08
@story("going on: a movie of more than ten minutes goes on where it was left, in this run and in the next one; a plain start begins it anew")
def long_movie(stage):
    film, song = stage.media / "long.film.mp4", tone(stage.media / "song.wav", 900, 60)
    encode(["-f", "lavfi", "-i", f"color=0x{GREEN[1:]}:s=320x240:r=5:d={LONG_SECONDS}", "-f", "lavfi", "-i",
            f"sine=frequency=500:duration={LONG_SECONDS}", "-c:v", "mpeg4", "-g", "10"], film)
    stage.player.settings(CONVENIENCES="ON", DELAYTIME=30)
    stage.player.start("--open", film, song)
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
    stage.desk.click(*stage.player.slider(0.5))
    wait("the middle", lambda: 300 < float(told(stage, "Time") or 0) < 320)
    stage.player.key("period")
    stage.sound.wait_for(900)
    stage.player.key("comma", "comma")
    wait("the middle again", lambda: told(stage, "FileNo") == "001" and 300 < float(told(stage, "Time") or 0) < 335)
    stage.player.power_off()
    stage.player.start("--open", song, film)
    stage.sound.wait_for(900)
    stage.player.key("period")
    wait("the middle in the next run", lambda: told(stage, "FileNo") == "002" and 300 < float(told(stage, "Time") or 0) < 345)
    stage.player.power_off()
    stage.player.settings(DELAYTIME=30)
    plain = film.rename(stage.media / "film.mov")
    stage.player.start(plain)
    stage.player.press(PLAY)
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
    wait("its beginning", lambda: 0 < float(told(stage, "Time") or 0) < 30)
