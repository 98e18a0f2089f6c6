#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Answers each line "PID" on its input with one line of JSON: what the process offers to assistive programs.

Each entry: role, name, text, value, states, place (x, y, width, height on the screen) and depth.
"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

STATES = {"focused": Atspi.StateType.FOCUSED, "checked": Atspi.StateType.CHECKED, "enabled": Atspi.StateType.ENABLED,
          "showing": Atspi.StateType.SHOWING, "selected": Atspi.StateType.SELECTED}
DEEPEST, MOST_CHILDREN = 12, 400


def describe(node, depth):
    states = node.get_state_set()
    entry = {"role": node.get_role_name(), "name": node.get_name() or "", "depth": depth,
             "states": [name for name, state in STATES.items() if states.contains(state)]}
    text = node.get_text_iface()
    if text:
        entry["text"] = Atspi.Text.get_text(text, 0, Atspi.Text.get_character_count(text))
    value = node.get_value_iface()
    if value:
        entry["value"] = Atspi.Value.get_current_value(value)
    component = node.get_component_iface()
    if component:
        place = Atspi.Component.get_extents(component, Atspi.CoordType.SCREEN)
        entry["place"] = [place.x, place.y, place.width, place.height]
    return entry


def walk(node, depth, found):
    if node is None or depth > DEEPEST:
        return
    try:
        node.clear_cache()
        found.append(describe(node, depth))
        for index in range(min(node.get_child_count(), MOST_CHILDREN)):
            walk(node.get_child_at_index(index), depth + 1, found)
    except GLib.Error:
        return  # it went while it was read


def tree(pid):
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    found = []
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        try:
            if program and program.get_process_id() == pid:
                walk(program, 0, found)
        except GLib.Error:
            continue
    return found


def main():
    Atspi.init()
    for line in sys.stdin:
        try:
            answer = tree(int(line))
        except (GLib.Error, ValueError) as error:
            answer = {"error": str(error)}
        print(json.dumps(answer), flush=True)


if __name__ == "__main__":
    main()
