# SPDX-License-Identifier: GPL-3.0-or-later
"""What bench/run measures with: the built program from outside, on a private desktop with a sound server of its own."""

import pathlib
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
WORKPLACE = PROJECT / "build" / "bench"
sys.path[:0] = [str(PROJECT / "tests" / "e2e"), str(PROJECT / "tools")]
