# SPDX-License-Identifier: GPL-3.0-or-later
"""What the program touches outside of itself, by a trace of its calls to the system."""

import os
import pathlib
import re

from harness.expect import check, equal, wait
from harness.player import EDITOR, NEXT, PLAY, STOP
from harness.story import story
from stories.mixed import mixed_list
from stories.windows import close_by, node, open_settings

# Calls that make, change, rename or remove files, start programs, or reach for other programs and machines.
TRACED = "/^(open(at2?)?|creat|rename(at2?)?|mkdir(at)?|rmdir|unlink(at)?|link(at)?|symlink(at)?|mknod(at)?|truncate|chmod|fchmodat|exec.*|socket|connect|bind|sendto)$"
LINE = re.compile(r"^(\d+) +(.*)$", re.M)  # the thread, and what it called
BEGUN, ENDED = " <unfinished ...>", re.compile(r"^<\.\.\. \w+ resumed>")  # another thread's call came between
CALL = re.compile(r"^(\w+)\((.*)\) += (-?\d+)")
OPENED = ("open", "openat", "openat2")
REACHING = ("socket", "connect", "sendto")  # a bound one, on the other hand, makes a file
WRITING = re.compile(r"O_WRONLY|O_RDWR|O_CREAT|O_TRUNC|O_APPEND")
TEXT = re.compile(r'(?:<([^<>]*)>, )?"((?:[^"\\]|\\.)*)"')  # behind the folder that it counts from, where one is given
# Not files of a disk: devices, what the system tells and takes of the process itself, shared memory.
NO_FILES = ("/dev/", "/proc/self/", "/proc/thread-self/")


def calls(trace):
    """(call, paths, whole line) of each that succeeded."""
    begun = {}
    for thread, line in LINE.findall(trace.read_text(errors="replace").replace("\r", "")):
        if line.endswith(BEGUN):
            begun[thread] = line.removesuffix(BEGUN)
            continue
        if ENDED.match(line):
            line = begun.pop(thread, "") + ENDED.sub("", line)
        found = CALL.match(line)
        if found and not found.group(3).startswith("-"):
            yield found.group(1), [os.path.join(folder, text) for folder, text in TEXT.findall(found.group(2))], line


def written(trace):
    """Paths that were made, changed, renamed or removed."""
    for call, paths, line in calls(trace):
        if call in OPENED and not WRITING.search(line):
            continue
        if not call.startswith("exec") and call not in REACHING:
            yield from paths[:1] if call in OPENED else paths


def reached(trace):
    """Kinds of address that were asked for, whether or not somebody answered."""
    return set(re.findall(r"\b(?:socket|connect|bind|sendto)\(.*?\b(AF_\w+|PF_\w+)", trace.read_text(errors="replace")))


def traced(stage):
    """The command under which the program is started, and the trace that it writes."""
    trace = stage.folder / "trace"
    # -D: the program itself is the process that was started, and the tracer its grandchild.
    return ["strace", "-D", "-f", "-y", "--seccomp-bpf", "-s", "4096", "-e", f"trace={TRACED}", "-o", str(trace)], trace


def wait_for_the_end(trace):
    """The tracer writes its last line after the program has gone."""
    wait("the trace's end", lambda: "+++ exited with 0 +++" in trace.read_text(errors="replace"))


def use_everything(stage):
    """Plays every kind, stores settings and a list, and ends."""
    entries, environment = mixed_list(stage)
    paths = [entry.path for entry in entries]
    tracer, trace = traced(stage)
    stage.player.settings(INTERVAL=60, DELAYTIME=30)
    stage.player.save_list(paths)
    stage.player.start(under=tracer, **environment)
    stage.player.press(PLAY)
    for shown in range(2, len(paths) + 1):
        stage.player.press(NEXT)
        wait(f"file {shown} was opened", lambda: any(str(paths[shown - 1]) in line for _, _, line in calls(trace)) or
             paths[shown - 1].suffix == ".cda", 15)
    stage.player.press(STOP)
    open_settings(stage)
    close_by(stage, "OK")
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    stage.player.press_control("Save")
    stage.player.wait_for_box("Save OK?")
    stage.desk.key("Return")
    wait("the saved list", lambda: any("FILE00.INI" in path for path in written(trace)))
    close_by(stage, "OK")
    equal(stage.player.power_off(), 0, "exit code")
    wait_for_the_end(trace)
    return trace


# FAULT-17: No file is written outside of the program's folder, the user's runtime folder (lock, socket) aside, no other
#     program is started, and no network is reached for
@story("safe: it writes in its own folder alone, starts no other program and reaches for no network")
def writes_in_its_folder_alone(stage):
    trace = use_everything(stage)
    runtime = pathlib.Path(stage.session.environment["XDG_RUNTIME_DIR"])
    own = (f"{stage.player.folder}/", f"{runtime}/corvane/corvane-")  # the second: lock and socket of the running player
    place_of_both = f"{runtime}/corvane"
    seen = list(written(trace))
    check(any(path.startswith(own[0]) for path in seen), "the trace shows what was stored")
    outside = sorted({path for path in seen if path != place_of_both and not path.startswith((*own, *NO_FILES))})
    equal(outside, [], "written outside of its folder")
    kinds = reached(trace)
    check("AF_UNIX" in kinds, "the trace shows the screen's and the sound's servers")
    equal(sorted(kind for kind in kinds if "INET" in kind), [], "reached for the network")
    started = [line for call, _, line in calls(trace) if call.startswith("exec")]
    equal(len(started), 1, f"programs started, itself the first ({started[1:3]})")
