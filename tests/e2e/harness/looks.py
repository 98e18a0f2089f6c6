# SPDX-License-Identifier: GPL-3.0-or-later
"""The panel as it must look."""

import numpy as np

from .expect import wait
from .player import AUTO_LAMP, BUTTON_RECORDS, KNOB_RECORD, QUICK_LAMP, REPEAT_LAMP, SLIDER_RECORD

TEXT_RECORDS = range(28, 34)


def composed_panel(player):
    """The panel as the skin's cells give it, and a mask of what the player itself writes onto it."""
    bitmap, skin = player.bitmap(), player.skin
    _, _, x, y, width, height, _ = skin[1]
    picture = bitmap[y : y + height, x : x + width].copy()
    drawn_by_player = np.zeros(picture.shape[:2], bool)

    def put(record):
        left, top, x, y, width, height, use = skin[record]
        if use != "0":
            picture[top : top + height, left : left + width] = bitmap[y : y + height, x : x + width]

    def mask(record):
        left, top, _, _, width, height, _ = skin[record]
        drawn_by_player[top : top + height, left : left + width] = True

    for record in (22, 23, 25, *(lamp[0] for lamp in (AUTO_LAMP, QUICK_LAMP, REPEAT_LAMP)), 21, 24, *BUTTON_RECORDS):
        put(record)
    for record in (*TEXT_RECORDS, SLIDER_RECORD, KNOB_RECORD):
        mask(record)
    return picture, drawn_by_player


def wait_for_exact_panel(stage, seconds=3.0):
    """Until the panel equals its skin, pixel by pixel, but for what the player itself writes onto it."""
    player = stage.player
    expected, drawn_by_player = composed_panel(player)

    def differing():
        shown = stage.desk.area(player.window.x, player.window.y, *player.window.size)
        return int(((np.abs(shown - expected).max(axis=2) > 0) & ~drawn_by_player).sum())

    wait(f"the panel equals its skin ({differing()} pixels differ)", lambda: differing() == 0, seconds)
