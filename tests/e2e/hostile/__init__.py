# SPDX-License-Identifier: GPL-3.0-or-later
"""Files and folders that were made to crash, to freeze, to bloat or to mislead who opens them: by kinds, each a
list of (name with its type, what is in it). What is in it: bytes, or a function that writes at a path. Small on the
disk, the same each time."""

from .catalogue import GROUPS, Hostile, make

__all__ = ["GROUPS", "Hostile", "make"]
