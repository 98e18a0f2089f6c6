# SPDX-License-Identifier: GPL-3.0-or-later
"""What Windows people expect of a window: its density, and that it stays within reach."""

import numpy as np
from PIL import Image

from harness.expect import equal, wait
from harness.player import BUTTON_RECORDS, EDITOR, NEXT, PLAY, STOP
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
