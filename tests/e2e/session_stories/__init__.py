# SPDX-License-Identifier: GPL-3.0-or-later
"""What must work on every desktop; played in each session that this machine has."""
