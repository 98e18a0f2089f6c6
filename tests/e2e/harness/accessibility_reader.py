#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Answers each line "PID" on its input with one line of JSON: what the process offers to assistive programs.

Each entry: role, name, text, value, range, states, actions, label (the name of what labels it), place (x, y, width,
height on the screen) and depth. A line "PID NUMBER do ACTION" or "PID NUMBER set VALUE" acts on the entry of that number
in the last answer; "PID events" answers with what was told since the last such line: [kind, name, detail, text, states]; "PID labels" with
the texts of the labels that were there at the first such line: {name: [before, text, after]}, the seconds of the monotonic
clock before and after it was read; "PID focused" with the role, name and place of what has the focus;
"PID words" with the names of the labels that are shown.
"""

import json
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

STATES = {"focused": Atspi.StateType.FOCUSED, "checked": Atspi.StateType.CHECKED, "enabled": Atspi.StateType.ENABLED,
          "showing": Atspi.StateType.SHOWING, "selected": Atspi.StateType.SELECTED,
          "focusable": Atspi.StateType.FOCUSABLE}
TOLD = ("object:text-changed", "object:state-changed:enabled", "object:state-changed:checked",
        "object:state-changed:focused", "object:state-changed:showing", "object:property-change:accessible-value")
ANSWER_MS, START_MS = 5000, 15000  # until a question is given up; by itself the library waits 800 for a program that runs
OLDER_ROLES = {"button": "push button"}  # the libraries of newer systems name them anew
DEEPEST, MOST_CHILDREN = 12, 400

last_nodes = []  # of the last answer
cut_short = []  # what went, or did not answer, while the tree was read
events = []
labels = {}  # those that are read again and again: {pid: [(name, node)]}


def names_of(states):
    return [name for name, state in STATES.items() if states.contains(state)]


def describe(node, depth):
    role = node.get_role_name()
    entry = {"role": OLDER_ROLES.get(role, role), "name": node.get_name() or "", "depth": depth,
             "states": names_of(node.get_state_set())}
    text = node.get_text_iface()
    if text:
        entry["text"] = Atspi.Text.get_text(text, 0, Atspi.Text.get_character_count(text))
    value = node.get_value_iface()
    if value:
        entry["value"] = Atspi.Value.get_current_value(value)
        entry["range"] = [Atspi.Value.get_minimum_value(value), Atspi.Value.get_maximum_value(value)]
    entry["actions"] = action_names(node)
    entry["label"] = next((relation.get_target(0).get_name() for relation in node.get_relation_set()
                           if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY), "")
    component = node.get_component_iface()
    if component:
        place = Atspi.Component.get_extents(component, Atspi.CoordType.SCREEN)
        entry["place"] = [place.x, place.y, place.width, place.height]
    return entry


def action_names(node):
    action = node.get_action_iface()
    return [Atspi.Action.get_action_name(action, i) for i in range(Atspi.Action.get_n_actions(action))] if action else []


def walk(node, depth, found):
    if node is None or depth > DEEPEST:
        return
    try:
        node.clear_cache()
        found.append(describe(node, depth))
        last_nodes.append(node)
        for index in range(min(node.get_child_count(), MOST_CHILDREN)):
            walk(node.get_child_at_index(index), depth + 1, found)
    except GLib.Error as error:
        cut_short.append(str(error))  # it went while it was read


def tree(pid):
    """Read once more when something went meanwhile, or a busy program did not answer: the rest is as it is then."""
    found = tree_at_once(pid)
    return tree_at_once(pid) if cut_short else found


def tree_at_once(pid):
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    found = []
    last_nodes.clear()
    cut_short.clear()
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        try:
            if program and program.get_process_id() == pid:
                walk(program, 0, found)
        except GLib.Error:
            continue
    return found


def focused_in(node, depth=0):
    """[role, name, place] of what has the focus, without a look at all the rest."""
    if node is None or depth > DEEPEST:
        return []
    try:
        node.clear_cache()
        entry = describe(node, depth) if node.get_state_set().contains(Atspi.StateType.FOCUSED) else {}
        found = [[entry["role"], entry["name"], entry.get("place")]] if "showing" in entry.get("states", ()) else []
        children = [node.get_child_at_index(index) for index in range(min(node.get_child_count(), MOST_CHILDREN))]
    except GLib.Error:
        return []  # it went while it was read
    return found + [each for child in children for each in focused_in(child, depth + 1)]


def words_in(node, depth=0):
    """Names of the shown labels. What a list holds is not looked at: thousands of entries are seconds."""
    if node is None or depth > DEEPEST:
        return []
    try:
        node.clear_cache()
        role = node.get_role_name()
        found = [node.get_name() or ""] if role == "label" and node.get_state_set().contains(Atspi.StateType.SHOWING) else []
        count = 0 if role == "list" else min(node.get_child_count(), MOST_CHILDREN)
        children = [node.get_child_at_index(index) for index in range(count)]
    except GLib.Error:
        return []  # it went while it was read
    return found + [each for child in children for each in words_in(child, depth + 1)]


def programs_of(pid):
    desktop = Atspi.get_desktop(0)
    programs = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
    return [program for program in programs if program and program.get_process_id() == pid]


def focused(pid):
    return [each for program in programs_of(pid) for each in focused_in(program)]


def words(pid):
    return [each for program in programs_of(pid) for each in words_in(program)]


def act(node, what, argument):
    if what == "set":
        return Atspi.Value.set_current_value(node.get_value_iface(), float(argument))
    return Atspi.Action.do_action(node.get_action_iface(), action_names(node).index(argument))


def read_labels(pid):
    """Without a look at the tree, so that the times are close together."""
    if not labels.get(pid):
        tree(pid)
        texts = [(node.get_name(), node.get_text_iface()) for node in last_nodes if node.get_role_name() == "label"]
        known = [(name, text) for name, text in texts if text is not None]  # the words of a box are no text
        if cut_short:
            return {}
        labels[pid] = known
    found = {}
    for name, text in labels[pid]:
        before = time.monotonic()
        found[name] = [before, Atspi.Text.get_text(text, 0, -1), time.monotonic()]
    return found


def hear(event):
    try:
        states = names_of(event.source.get_state_set())
        events.append([event.type, event.source.get_name() or "", event.detail1, str(event.any_data or ""), states])
    except GLib.Error:
        pass  # it went while it was told


def answer_to(line):
    pid, *rest = line.decode().split(maxsplit=3)
    if not rest:
        return tree(int(pid))
    if rest[0] == "events":
        told, events[:] = list(events), []
        return told
    if rest[0] == "labels":
        return read_labels(int(pid))
    if rest[0] == "focused":
        return focused(int(pid))
    if rest[0] == "words":
        return words(int(pid))
    number, what, argument = rest
    return act(last_nodes[int(number)], what, argument.strip())


def take_line(channel, _condition, loop):
    line = channel.readline()
    if not line:
        loop.quit()
        return False
    try:
        answer = answer_to(line)
    except Exception as error:  # noqa: BLE001: whatever it was, who asked waits for a line
        answer = {"error": str(error)}
    print(json.dumps(answer), flush=True)
    return True


def main():
    Atspi.init()
    Atspi.set_timeout(ANSWER_MS, START_MS)
    listener = Atspi.EventListener.new(hear)
    for kind in TOLD:
        listener.register(kind)
    loop = GLib.MainLoop()
    # Unbuffered: a line that waits in a buffer would not wake the loop.
    channel = open(0, "rb", buffering=0)
    GLib.io_add_watch(channel, GLib.IO_IN | GLib.IO_HUP, lambda source, condition: take_line(source, condition, loop))
    loop.run()


if __name__ == "__main__":
    main()
