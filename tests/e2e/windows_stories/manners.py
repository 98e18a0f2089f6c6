# SPDX-License-Identifier: GPL-3.0-or-later
"""What Windows people expect of today's screens and files: dense bitmaps, the sounds that the system decodes, texts of tags."""

import numpy as np
from PIL import Image

from harness.expect import check, equal, steady, wait
from harness.media import encode, tone
from harness.player import BUTTON_RECORDS, EDITOR, NEXT, PLAY, STOP, TITLE_RECORD
from harness.story import story


# WIN-78
@story("windows: at twice the size the panel shows the cells of the bitmap for dense screens, pixel by pixel")
def dense(stage):
    player = stage.player
    player.scale = 2
    player.start(CORVANE_SCALE="2")
    stage.desk.rest()
    stage.leave_picture("twice")
    with Image.open(player.folder / "PANELSET" / "DEFAULT@2X.BMP") as bitmap:
        whole = np.asarray(bitmap.convert("RGB")).astype(int)
    for button in (PLAY, NEXT, STOP, EDITOR):
        record = BUTTON_RECORDS[button]
        x, y, width, height = (2 * side for side in player.skin[record][2:6])
        cell = whole[y : y + height, x : x + width]
        wait(f"button {button} as the dense bitmap has it",
             lambda: cell.shape == (shown := player.look(record)).shape and np.array_equal(cell, shown), 5)
    equal(player.power_off(), 0, "exit code")


# WIN-83
@story("windows: with the conveniences sounds of today are heard one after the other, and held")
def of_today(stage):
    player = stage.player
    player.settings(CONVENIENCES="ON", AUTOPLAY="ON")
    player.save_list([tone(stage.media / "one.m4a", 440, 4), tone(stage.media / "two.wma", 554, 4),
                      tone(stage.media / "three.flac", 659, 12)])
    player.start()
    for pitch in (440, 554, 659):
        stage.sound.wait_for(pitch, 20)
    player.key("x")
    stage.sound.wait_for_silence()
    player.key("z")
    stage.sound.wait_for(659, 10)
    player.key("c")
    stage.sound.wait_for_silence()
    equal(player.power_off(), 0, "exit code")


# WIN-86
@story("windows: with the conveniences the display shows what a file says of itself, without them its name")
def titles(stage):
    player = stage.player
    song = stage.media / "song.mp3"
    plain = tone(stage.media / "plain.wav", 523, 30)
    encode(["-i", str(plain), "-metadata", "title=An Evening", "-metadata", "artist=The Band"], song)

    def shown(**settings):
        player.settings(AUTOPLAY="ON", **settings)
        player.save_list([song])
        player.start()
        stage.sound.wait_for(523, 15)
        steady("the title stands", lambda: True, 1)
        picture = player.look(TITLE_RECORD)
        stage.leave_picture(f"title{len(settings)}")
        equal(player.power_off(), 0, "exit code")
        return picture

    name = shown()
    texts = shown(CONVENIENCES="ON")
    check((name != texts).any(axis=2).sum() > 40, "the display shows the name with the conveniences too")


# WIN-87: Sounds are as loud as their tags say, by Media Foundation whatever they are
@story("windows: with the conveniences sounds are as loud as their tags say, without them as they were recorded")
def loudness(stage):
    player = stage.player
    plain = tone(stage.media / "plain.wav", 523, 20)
    songs = []
    for name, gain in (("one.mp3", "-12.04 dB"), ("two.flac", "+6.02 dB")):
        songs.append(stage.media / name)
        encode(["-i", str(plain), "-metadata", f"REPLAYGAIN_TRACK_GAIN={gain}", "-metadata", "REPLAYGAIN_TRACK_PEAK=0.4"], songs[-1])

    def heard():
        stage.sound.wait_for(523, 15)
        steady("the tone", lambda: stage.sound.pitch_now() > 500, 1.5)
        samples = stage.sound.samples(stage.sound.now() - 0.5)
        return float(np.sqrt(np.mean(samples**2)))

    def ratio(**settings):
        player.settings(AUTOPLAY="ON", **settings)
        player.save_list(songs)
        player.start()
        first = heard()
        player.press(NEXT)
        second = heard()
        equal(player.power_off(), 0, "exit code")
        return second / first

    by_tags = ratio(CONVENIENCES="ON")
    check(7 < by_tags < 9, f"the second one is {by_tags:.2f} times as loud as the first, not 8 times")
    plain_too = ratio()
    check(0.9 < plain_too < 1.1, f"as recorded the second one is {plain_too:.2f} times as loud")
