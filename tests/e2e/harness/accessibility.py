# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads captions, texts, values and places of controls as assistive programs see them."""

import json
import pathlib
import subprocess

from .expect import check, wait

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

    def _ask(self, line):
        try:
            self._reader.stdin.write(f"{line}\n")
            self._reader.stdin.flush()
            return json.loads(self._reader.stdout.readline() or "[]")
        except (OSError, ValueError):
            return []

    def nodes(self, pid):
        """Every control of a process, parents before children; empty when it offers none."""
        answer = self._ask(pid)
        return [Node(entry, number=number) for number, entry in enumerate(answer)] if isinstance(answer, list) else []

    def act(self, pid, action, **wanted):
        """Does an action of the first such control, as a screen reader would."""
        node = self.wait_for(pid, **wanted)
        check(action in node["actions"], f"{node['name']} offers {node['actions']}, not {action}")
        self._ask(f"{pid} {node['number']} do {action}")

    def set_value(self, pid, value, **wanted):
        node = self.wait_for(pid, **wanted)
        self._ask(f"{pid} {node['number']} set {value}")

    def events(self, pid):
        """What was told since the last look: [kind, name of the control, number, text, its states]."""
        return self._ask(f"{pid} events")

    def focused(self, pid):
        """[role, name, place] of the shown controls that have the focus."""
        answer = self._ask(f"{pid} focused")
        return answer if isinstance(answer, list) else []

    def words(self, pid):
        """Names of the labels that are shown, at once also beside a list of thousands."""
        answer = self._ask(f"{pid} words")
        return answer if isinstance(answer, list) else []

    def labels(self, pid):
        """The texts of the labels that were there at the first call: {name: [before, text, after]}; the seconds of the
        monotonic clock before and after it was read. Empty when they cannot be read."""
        answer = self._ask(f"{pid} labels")
        return answer if isinstance(answer, dict) and "error" not in answer else {}

    def find(self, pid, name=None, role=None, holding=None):
        """The shown controls with that name, of that role, whose name or text holds a text."""
        return [n for n in self.nodes(pid) if n.shown and (name is None or n["name"].replace("&", "") == name)
                and (role is None or n["role"] == role)
                and (holding is None or holding in n["name"] or holding in n.get("text", ""))]

    def wait_for(self, pid, seconds=5.0, **wanted):
        """The first such control, once there is one."""
        return wait(f"a control with {wanted}", lambda: self.find(pid, **wanted), seconds, 0.1)[0]
