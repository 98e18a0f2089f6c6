# SPDX-License-Identifier: GPL-3.0-or-later
"""Names and places: files called like something else, and what has a file's name and is none."""

import functools
import os
import socket
import stat

from .parts import link, with_hole
from .sounds import form, wave

GOOD = wave(form())


def pipe(path):
    os.mkfifo(path)


def pair(path):
    """A socket that nobody answers."""
    with socket.socket(socket.AF_UNIX) as listening:
        here = os.getcwd()
        try:
            os.chdir(path.parent)  # an address is short
            listening.bind(path.name)
        finally:
            os.chdir(here)


def node(kind, major, minor):
    def write(path):
        try:
            os.mknod(path, kind | 0o600, os.makedev(major, minor))
        except PermissionError:  # not for everybody
            os.symlink(f"/dev/{'zero' if kind == stat.S_IFCHR else 'loop0'}", path)

    return write


def folder(count=0, depth=0, name="e"):
    def write(path):
        path.mkdir()
        for number in range(count):
            (path / f"{name}{number}.wav").touch()
        inner = os.open(path, os.O_RDONLY)
        for _ in range(depth):  # longer than a path may be
            os.mkdir("d", dir_fd=inner)
            deeper = os.open("d", os.O_RDONLY, dir_fd=inner)
            os.close(inner)
            inner = deeper
        os.close(inner)

    return write


def forbidden(path):
    path.write_bytes(GOOD)
    path.chmod(0)


def chain(path):
    """Links to links, more than are followed."""
    for number in range(60):
        os.symlink(f"{path.name}_{number + 1}" if number < 59 else path.name, path if number == 0 else path.with_name(f"{path.name}_{number}"))


def sealed_by_links(path):
    inner = path.with_name(path.name + "_round")
    inner.mkdir()
    os.symlink(inner, inner / "again")
    (inner / "song.wav").write_bytes(GOOD)
    os.symlink(str(inner) + "/again" * 30 + "/song.wav", path)


def names():
    """All of a good sound: they are played or refused, and nothing else."""
    odd = [
        "\n.wav", "line\nbreak.wav", "carriage\rreturn.wav", "tab\there.wav", "bell\x07\x1b[2J.wav", "\x1b]0;title\x07.wav",
        "<b>bold<img src=x>.wav", "<!DOCTYPE html><h1>.wav", "&amp;&lt;.wav", "%s%n%x%99999999s.wav", "$(touch made).wav",
        "`id`.wav",
        "'; drop.wav", '"quoted".wav', "|bar|comma,.wav", "=equals=.wav", "[FILELIST].wav", ";note.wav", "\u202egnp\u202c.wav",
        "\u2066\u2067iso.wav", "zero\u200bwidth\u200d.wav", "\ufeffmark.wav", "a" + "\u0301" * 110 + ".wav",
        "\U0001F4A9" * 50 + ".wav", "-.wav", "--.wav",
        "--open.wav", "--help.wav", "-v=1.wav", "file:.wav", "http:evil.wav", "NUL.wav", "CON.wav", "AUX.mp3", "COM1.mid",
        "lpt1.avi", "a" * 251 + ".wav", "\u3042" * 83 + ".wav", " .wav", "  blank  .wav", "~.wav", "~root.wav", "*.wav", "?.wav",
        "{a,b}.wav", "back\\slash\\.wav",
        "c:\\\\x.wav", "&Access&Key.wav", "x.WaV", "dot.dot.wav", ".wav", "end.wav.", "end.wav ",
    ]
    raw = [b"\xff\xfe.wav", b"\xc0\xaf.wav", b"\xed\xa0\x80.wav", b"half\xe3\x81.wav", b"\xf8\x88\x80\x80\x80.wav", b"\x80" * 250 + b".wav"]
    return [*((name, GOOD) for name in odd), *((os.fsdecode(name), GOOD) for name in raw)]


def things():
    return [
        ("pipe.wav", pipe), ("pipe.avi", pipe), ("pipe.jpg", pipe), ("pipe.mid", pipe), ("socket.wav", pair),
        ("socket.mov", pair), ("zero.wav", node(stat.S_IFCHR, 1, 5)), ("random.mp3", node(stat.S_IFCHR, 1, 8)),
        ("full.bmp", node(stat.S_IFCHR, 1, 7)), ("disk.mpg", node(stat.S_IFBLK, 7, 0)),
        ("folder.mp3", folder()), ("folder_10000.wav", folder(10_000)), ("folder_deep.avi", folder(depth=300)),
        ("folder.gif", folder(3)), ("forbidden.wav", forbidden), ("itself.wav", link("itself.wav")),
        ("nowhere.avi", link("/nowhere/at/all.avi")), ("chain.mid", chain), ("round.wav", sealed_by_links),
        ("to_zero.wav", link("/dev/zero")), ("to_terminal.mp3", link("/dev/tty")), ("to_input.wav", link("/dev/stdin")),
        ("to_memory.wav", link("/proc/self/mem")), ("to_maps.avi", link("/proc/self/maps")),
        ("to_messages.mpg", link("/proc/kmsg")), ("to_pages.jpg", link("/proc/self/pagemap")),
        ("to_core.mov", link("/proc/kcore")), ("to_exe.wav", link("/proc/self/exe")), ("to_root.bmp", link("/proc/self/root")),
        ("to_first.mid", link("/proc/self/fd/0")), ("to_events.au", link("/sys/power/state")),
        ("to_uevent.gif", link("/sys/kernel/uevent_seqnum")), ("to_environment.rmi", link("/proc/self/environ")),
        ("to_tasks.aiff", link("/proc/self/task")), ("hole_8_eib.mp3", with_hole(b"\xff\xfb\x90\0", (1 << 63) - 1)),
        ("hole_8_eib.mid", with_hole(b"MThd\0\0\0\6", (1 << 63) - 1)), ("hole_8_eib.gif", with_hole(b"GIF89a", (1 << 63) - 1)),
        ("hole_all.bmp", with_hole(b"", (1 << 63) - 1)), ("hole_all.au", with_hole(b"", (1 << 63) - 1)),
    ]


@functools.cache
def files():
    return [*names(), *things()]
