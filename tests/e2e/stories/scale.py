# SPDX-License-Identifier: GPL-3.0-or-later
"""The panel one and a half times as large: its places, and the pixels of the bitmap for dense screens."""

import numpy as np
from PIL import Image

from harness.expect import check, equal, wait
from harness.media import tone
from harness.player import BUTTON_RECORDS, NEXT, PLAY, STOP
from harness.story import story

SCALE = 1.5
TONES = (440, 554)
EDGE = 2  # pixels beside a cell's edge mix with the neighbouring cell


def start_large(stage, *arguments):
    stage.player.scale = SCALE
    stage.player.start(*arguments, CORVANE_SCALE=str(SCALE))


def enlarged(player, bitmap, factor, record):
    """A record's cell of a bitmap that has `factor` pixels for one of the skin, pixel by pixel as the panel shows it."""
    left, top, x, y, *_ = player.skin[record]
    shown = [(at - window) / SCALE for at, window in zip(player.place(record)[:2], (player.window.x, player.window.y))]
    across, down = player.place(record)[2:]
    from_x, from_y = x + shown[0] - left, y + shown[1] - top
    box = (from_x, from_y, from_x + across / SCALE, from_y + down / SCALE)
    with Image.open(player.folder / "PANELSET" / bitmap) as whole:
        cell = whole.convert("RGB").resize((across, down), Image.Resampling.BILINEAR, [factor * side for side in box])
    return np.asarray(cell).astype(int)


def unlike(one, other):
    """Mean difference of a channel, without the edges."""
    inner = np.s_[EDGE:-EDGE, EDGE:-EDGE]
    return float(np.abs(one[inner] - other[inner]).mean())


@story("scale: at 1.5 the panel is so much larger, and its buttons act where they are drawn")
def large_panel(stage):
    start_large(stage, *(tone(stage.media / f"song{hz}.wav", hz, 8) for hz in TONES))
    equal(stage.player.window.size, tuple(round(side * SCALE) for side in stage.player.skin[0][4:6]), "size of the panel")
    for button, pitch in ((PLAY, TONES[0]), (NEXT, TONES[1])):
        stage.player.press(button)
        stage.sound.wait_for(pitch)
    stage.player.press(STOP)
    stage.sound.wait_for_silence()
    equal(stage.player.power_off(), 0, "exit code")


@story("scale: at 1.5 the panel shows the cells of the bitmap for dense screens")
def dense_cells(stage):
    start_large(stage)
    for button in (PLAY, NEXT, STOP):
        record = BUTTON_RECORDS[button]
        dense = enlarged(stage.player, "DEFAULT@2X.BMP", 2, record)
        plain = enlarged(stage.player, "DEFAULT.BMP", 1, record)
        wait(f"button {button} from the dense bitmap, not the plain one enlarged",
             lambda: unlike(stage.player.look(record), dense) * 1.5 < unlike(stage.player.look(record), plain))
        check(unlike(stage.player.look(record), dense) < 2.5, f"button {button} shows another cell")
