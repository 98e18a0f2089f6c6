# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads captions, texts, values and places of controls as assistive programs see them."""

import json
import pathlib
import subprocess

from .expect import wait

READER = pathlib.Path(__file__).with_name("accessibility_reader.py")


class Node(dict):
    """One control."""

    @property
    def middle(self):
        x, y, width, height = self["place"]
        return x + width // 2, y + height // 2

    @property
    def shown(self):
        return "showing" in self["states"]


class Accessibility:
    def __init__(self, session):
        self._reader = session.popen(["/usr/bin/python3", str(READER)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                     stderr=subprocess.DEVNULL, text=True)

    def stop(self):
        self._reader.kill()
        self._reader.wait()
        self._reader.stdin.close()
        self._reader.stdout.close()

    def nodes(self, pid):
        """Every control of a process, parents before children; empty when it offers none."""
        try:
            self._reader.stdin.write(f"{pid}\n")
            self._reader.stdin.flush()
            answer = json.loads(self._reader.stdout.readline() or "[]")
        except (OSError, ValueError):
            return []
        return [Node(entry) for entry in answer] if isinstance(answer, list) else []

    def find(self, pid, name=None, role=None, holding=None):
        """The shown controls with that name, of that role, whose name or text holds a text."""
        return [n for n in self.nodes(pid) if n.shown and (name is None or n["name"].replace("&", "") == name)
                and (role is None or n["role"] == role)
                and (holding is None or holding in n["name"] or holding in n.get("text", ""))]

    def wait_for(self, pid, seconds=5.0, **wanted):
        """The first such control, once there is one."""
        return wait(f"a control with {wanted}", lambda: self.find(pid, **wanted), seconds, 0.1)[0]
