# SPDX-License-Identifier: GPL-3.0-or-later
"""What a file does while it plays by rules of its own: quick play, the delay of movies, kept pictures."""

import threading
import time

from harness.expect import check, equal, wait
from harness.media import movie, picture, tone
from harness.player import PLAY, STOP
from harness.signs import wait_for_told
from harness.sound import LONGEST_GAP, bridge, same_pitch
from harness.story import story

COLOURS = ("#C83232", "#32A046", "#3250C8")


# MCI-11
@story("playing: quick play ends a sound after its first ten seconds")
def quick_play(stage):
    stage.player.settings(QUICK="ON")
    stage.player.start(tone(stage.media / "long.wav", 440, 16), tone(stage.media / "short.wav", 554, 3))
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    stage.sound.wait_for(554, 15)
    stage.sound.wait_for_silence(8)  # what sounds still has no length yet
    stage.sound.expect_order([440, 554])
    first = next(each for each in bridge(stage.sound.tones(), LONGEST_GAP) if same_pitch(each.hz, 440))
    check(9.8 <= first.length <= 10.8, f"the first file was heard for {first.length:.2f} s")


# MOVIE-07
@story("playing: a movie waits the delay before it starts, out of sight")
def delay(stage):
    films = [movie(stage.media / f"film{hz}.avi", colour, hz, 1.5) for hz, colour in ((440, COLOURS[0]), (554, COLOURS[1]))]
    stage.player.settings(DELAYTIME=1500)
    stage.player.start(*films)
    stage.player.press(PLAY)
    stage.sound.wait_for(440, 10)
    wait("its window goes at its end", lambda: len(stage.player.windows()) == 1, 8)
    stage.sound.wait_for(554, 12)
    stage.sound.wait_for_silence(8)
    first, second = stage.sound.expect_order([440, 554])
    waited = second.start - first.end
    check(2.9 <= waited <= 6, f"{waited:.2f} s between the movies, expected the delay behind one and before the other")


# IMG-23
@story("pictures: one kept between files is replaced by the next without a moment between")
def kept_picture(stage):
    files = [picture(stage.media / f"{number}.bmp", COLOURS[number % 3]) for number in range(9)]
    screen = stage.desk.screen
    stage.player.settings(IMAGEHIDE="OFF", INTERVAL=0)
    stage.player.start(*files)
    stage.player.press(PLAY)
    place = screen.width // 2 - 100, screen.height // 2 - 80
    stage.desk.wait_for_colour(*place, COLOURS[0])
    kept = [w.id for w in stage.player.windows()]
    seen, done = [stage.desk.screen.pixels(*place, 1, 1)], threading.Event()

    def look():
        now = stage.desk.screen.pixels(*place, 1, 1)
        if now != seen[-1]:
            seen.append(now)

    def watch():
        while not done.is_set():
            look()
            time.sleep(0)  # lets the keys be pressed
        look()  # the last one may have come since

    watcher = threading.Thread(target=watch)
    watcher.start()
    try:
        for number in range(1, len(files)):
            stage.desk.key("period")
            stage.desk.wait_for_colour(*place, COLOURS[number % 3])
    finally:
        done.set()
        watcher.join()
    shown = [f"#{red:02X}{green:02X}{blue:02X}" for blue, green, red, _ in seen]
    equal(shown, [COLOURS[number % 3] for number in range(len(files))], "what stood there")
    equal([w.id for w in stage.player.windows()], kept, "windows")


@story("pictures: closing a kept one leaves the music that plays behind it")
def close_kept_picture(stage):
    stage.player.settings(IMAGEHIDE="OFF", INTERVAL=1)
    stage.player.start(picture(stage.media / "still.bmp", COLOURS[0]), tone(stage.media / "song.wav", 440, 30))
    stage.player.press(PLAY)
    stage.sound.wait_for(440, 10)
    kept = [w for w in stage.player.windows() if w.id != stage.player.window.id]
    equal(len(kept), 1, "windows beside the panel")
    stage.session.run(["wmctrl", "-i", "-c", hex(kept[0].id)])
    wait("the picture's window goes", lambda: len(stage.player.windows()) == 1)
    stage.sound.expect_steady(440, 1.5)
    wait_for_told(stage, "FileNo", "002")
    stage.player.press(STOP)
    stage.sound.wait_for_silence()
    equal(stage.player.power_off(), 0, "exit code")
