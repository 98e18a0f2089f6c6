# SPDX-License-Identifier: GPL-3.0-or-later
"""Sounds for MIDI that somebody else made."""

import array
import math
import struct

from harness.expect import check, equal
from harness.media import tone
from harness.player import PLAY
from harness.story import story
from hostile.sound_fonts import PLAIN, RATE, font, vorbis
from stories.hostile_skins import peak_megabytes

MOST_MEGABYTES = 400
SILENCE = "anullsrc=r=44100:cl=mono:d=300"
LENGTH = 26_460_000  # bytes of that, unpacked
GIBIBYTE = 1 << 30
NOTE = b"\x00\x90\x45\x70\x87\x40\x80\x45\x40\x00\xff\x2f\x00"  # five seconds of the tone that the fonts are made of


def plain_tone():
    return array.array("h", [int(9000 * math.sin(i * 2 * math.pi * 440 / RATE)) for i in range(RATE)]).tobytes() + bytes(92)


def play_with(stage, name, data):
    """A sequence, then a sound, with these sounds for MIDI."""
    place = stage.folder / name
    place.write_bytes(data)
    sequence = stage.media / "sequence.mid"
    sequence.write_bytes(b"MThd" + struct.pack(">IHHH", 6, 0, 1, 96) + b"MTrk" + struct.pack(">I", len(NOTE)) + NOTE)
    stage.player.start(sequence, tone(stage.media / "song.wav", 550, 20), CORVANE_SOUNDFONT=str(place))
    stage.player.press(PLAY)


# FAULT-65: Soundfonts that a small file unpacks to gigabytes, or whose one note is thousands of layers, are told by a box
@story("sounds for MIDI: ones that unpack to gigabytes or to thousands of layers are told by a box, and the next file plays")
def soundfonts_that_swell(stage):
    silence = vorbis(SILENCE, -1)
    swelling = {
        "packed.sf3": (font([silence] * (GIBIBYTE // LENGTH + 1)), "larger than 1 GiB"),
        "each.sf3": (font([plain_tone() * 40] + [(0, 3_500_000 - 2 * i) for i in range(1, 400)], kind=PLAIN), "larger than 1 GiB"),
        "layers.sf2": (font([plain_tone()], 2, layers=4000, instrument_layers=4000, kind=PLAIN), "too many sounds"),
        "short.sf2": (font([plain_tone()], 2, kind=PLAIN)[:-40], "not a whole soundfont"),
    }
    for name, (data, why) in swelling.items():
        check(len(data) < 8 << 20, f"{name} is large itself")
        play_with(stage, name, data)
        stage.player.wait_for_box(why)
        stage.desk.key("Return")
        stage.player.wait_for_no_box()
        stage.player.key("period")
        stage.player.press(PLAY)
        stage.sound.wait_for(550)
        most = peak_megabytes(stage)
        check(most < MOST_MEGABYTES or stage.watch.command, f"{name}: {most:.0f} MB")
        equal(stage.player.power_off(), 0, "exit code")
        stage.sound.wait_for_silence(8)


@story("sounds for MIDI: packed ones play as those that are not")
def packed_soundfont(stage):
    packed, silence = vorbis("sine=frequency=440:duration=4"), vorbis(SILENCE, -1)
    for name, data in (("packed.sf3", font([packed])), ("plain.sf2", font([plain_tone()], 2, kind=PLAIN)),
                       ("beside_a_long_one.sf3", font([packed, silence]))):
        play_with(stage, name, data)
        stage.sound.wait_for(440)
        equal(stage.player.power_off(), 0, "exit code")
        stage.sound.wait_for_silence(8)
