# SPDX-License-Identifier: GPL-3.0-or-later
"""The built program in a real window on a virtual display: driven by mouse, keyboard and drops, seen and heard."""

import pathlib
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(PROJECT / "tools"))
