# SPDX-License-Identifier: GPL-3.0-or-later
"""What must be heard with PipeWire as the sound server."""
