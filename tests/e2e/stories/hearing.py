# SPDX-License-Identifier: GPL-3.0-or-later
"""The stories' own ear: what it must not take for something else."""

import numpy as np

from harness.expect import check
from harness.sound import RATE, UNSTEADY, pitch_of_moment, same_pitch
from harness.story import story

MOMENT = RATE // 10
LEVEL = 0.125  # of the movies' tones


@story("hearing: the rest of a tone that ends, and the first of one that begins, is no other tone")
def rests(_):
    for hz in (150, 440, 554, 2000):
        for turn in range(24):
            heard = LEVEL * np.sin(2 * np.pi * (hz * np.arange(MOMENT) / RATE + turn / 24))
            for kept in range(0, MOMENT + 1, 21):
                for moment in (np.pad(heard[:kept], (0, MOMENT - kept)), np.pad(heard[:kept], (MOMENT - kept, 0))):
                    told = pitch_of_moment(moment)
                    right = told in (0, UNSTEADY) if kept < RATE // 50 else told == UNSTEADY or same_pitch(told, hz)
                    check(right, f"{kept} samples of {hz} Hz are taken for {told:.0f} Hz")
            check(same_pitch(pitch_of_moment(heard), hz), f"a whole moment of {hz} Hz is not heard")
            torn = np.concatenate((heard[:1000], np.zeros(1000), heard[2000:]))
            check(pitch_of_moment(torn) != UNSTEADY, f"{hz} Hz with a gap of 23 ms counts as none")
    check(pitch_of_moment(np.zeros(MOMENT)) == 0, "silence is not heard")
