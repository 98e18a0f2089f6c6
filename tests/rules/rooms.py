#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The build itself refuses an include that points upward or aside: rooms.py [BUILD]

Each room has an include root of its own. What a source of a room would find is asked of the compiler, with the flags
that the build has for it, and compared with the rooms that its CMakeLists.txt names, and those below them. No room of
the core reaches a desktop, and no rooms reach each other in a circle.
Prints "PASS name" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import json
import pathlib
import re
import shlex
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parents[2] / "src"
UPPER = {"drives", "media", "files", "confinement", "winapi", "linux", "windows", "skintool", "main"}  # what no room of the core may reach
LIBRARY = re.compile(r"corvane_library\((\w+)(?:\s+DEPENDS\s+([\w\s]+))?\)")


def named():
    """The rooms that each room's CMakeLists.txt names."""
    found = {}
    for path in SOURCE.glob("*/CMakeLists.txt"):
        for name, rooms in LIBRARY.findall(path.read_text(encoding="utf-8")):
            found[name] = set(rooms.split())
    return found


def reached(room, graph, seen=()):
    """All rooms below one; None where they go in a circle."""
    if room in seen:
        return None
    below = set()
    for other in graph.get(room, ()):
        further = reached(other, graph, (*seen, room))
        if further is None:
            return None
        below |= {other} | further
    return below


def seen_by_compiler(command, headers):
    """The rooms of which a source that is built by this command could include a header."""
    words = shlex.split(command["command"])
    if "ccache" in pathlib.Path(words[0]).name:
        words = words[1:]
    keep = [words[0]]
    for at, word in enumerate(words):
        if word.startswith(("-I", "-D", "-std")):
            keep.append(word)
        elif word in ("-isystem", "-I"):
            keep += [word, words[at + 1]]
    probe = "".join(f'#if __has_include("{header}")\nfound_{room}\n#endif\n' for room, header in headers.items())
    text = subprocess.run([*keep, "-E", "-P", "-x", "c++", "-"], input=probe, capture_output=True, text=True, check=True,
                          cwd=command["directory"]).stdout
    return set(re.findall(r"found_(\w+)", text))


def circle_is_seen():
    return reached("a", {"a": {"b"}, "b": {"a"}}) is None and reached("a", {"a": {"b"}, "b": set()}) == {"b"}


def main():
    build = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else SOURCE.parent / "build" / "release"
    graph = named()
    headers = {folder.name: str(next(iter(sorted(folder.rglob("*.h")))).relative_to(SOURCE))
               for folder in sorted(SOURCE.iterdir()) if folder.is_dir() and next(folder.rglob("*.h"), None)}
    commands = {}
    for command in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        path = pathlib.Path(command["file"]).resolve()
        if path.is_relative_to(SOURCE):
            commands.setdefault(path.relative_to(SOURCE).parts[0], command)
    rules = {"no rooms reach each other in a circle": [], "no room of the core reaches a desktop": [],
             "a room finds the headers of what it names, and no other's": []}
    for room in sorted(graph):
        below = reached(room, graph)
        if below is None:
            rules["no rooms reach each other in a circle"].append(room)
            continue
        if below & UPPER and room not in UPPER:
            rules["no room of the core reaches a desktop"].append(f"{room}: {', '.join(sorted(below & UPPER))}")
        if room not in commands:  # what another system alone builds
            continue
        found = seen_by_compiler(commands[room], headers)
        if found != {room} | below & set(headers):
            rules["a room finds the headers of what it names, and no other's"].append(
                f"{room}: {', '.join(sorted(found ^ ({room} | below & set(headers))))}")
    if not set(graph) & set(commands):
        rules["a room finds the headers of what it names, and no other's"].append(f"{build} has built nothing")
    rules["a circle of rooms is seen"] = [] if circle_is_seen() else ["it is not"]
    for rule, places in rules.items():
        print(f"FAIL {rule}: {'; '.join(places)}" if places else f"PASS {rule}")
    return 1 if any(rules.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
