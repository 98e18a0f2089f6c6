# SPDX-License-Identifier: GPL-3.0-or-later
"""What the kernel refuses to the running player: tried from the thread of a decoder (tests/confined/), as by a file that
has taken it over."""

import pathlib
import socket
import subprocess
import time

from harness.expect import check, equal, skip, wait
from harness.media import movie, tone
from harness.player import PLAY, STOP
from harness.story import story

TRIED_SECONDS = 20
ABOUT_SECONDS = 5
BY_CALLS = ("execve", "execveat", "fork", "clone3", "connect", "socket AF_INET", "socket AF_INET6", "kill", "tgkill", "tkill",
            "pidfd_open", "setuid", "keyctl", "truncate", "mknod", "TIOCSTI")  # what every user may, on every kernel
BY_BOUNDS = ("create outside", "write outside", "append outside", "cut off outside", "remove outside",
             "make a folder outside", "remove a folder outside", "rename outside", "link outside", "socket outside",
             "symbolic link inside")
KEPT = ("read outside", "create inside", "write inside", "rename inside", "make a folder inside", "socket inside",
        "remove inside", "give to a group", "thread", "kill itself", "socket AF_UNIX")


class Attempts:
    """The library, and what it has told."""

    def __init__(self, stage, port, outside):
        library = stage.theatre.program.parent / "tests" / "libcorvane_attempts.so"
        check(library.exists(), f"{library} is not built")
        self.told = stage.folder / "attempts"
        outside.mkdir()
        self.environment = {"LD_PRELOAD": str(library), "CORVANE_ATTEMPTS": str(self.told),
                            "CORVANE_ATTEMPT_INSIDE": str(stage.player.folder), "CORVANE_ATTEMPT_OUTSIDE": str(outside),
                            "CORVANE_ATTEMPT_PORT": str(port)}

    def of(self, who):
        """Error by attempt; 0: it was let through. Empty until all were tried."""
        lines = [line.split(" ", 2) for line in self.told.read_text().splitlines()] if self.told.exists() else []
        errors = {name: int(error) for by, error, name in lines if by == who}
        return errors if errors.pop("all", None) == 0 else {}


def expect_refused(attempts, who, bounds):
    free, held = attempts.of("control"), attempts.of(who)
    equal(sorted(held), sorted(free), "attempts in the player and before it")
    missing = [name for name in (*BY_CALLS, *BY_BOUNDS, *KEPT) if free.get(name) != 0]
    equal(missing, [], "what could not be done without the bounds either")
    # Also what only the machine's master may, where the control could.
    refused = [name for name in free if free[name] == 0 and name not in KEPT and (bounds or name not in BY_BOUNDS)]
    equal([name for name in refused if held[name] == 0], [], f"let through in the player's {who}")
    equal([name for name in KEPT if held[name] != 0], [], f"kept from the player's {who}")


def about_lines(stage, **environment):
    """What the program tells of itself, by the words before the colon."""
    known = {name: value for name, value in stage.session.environment.items() if name not in ("DISPLAY", "QT_QPA_PLATFORM")}
    known |= {"CORVANE_FOLDER": str(stage.player.folder), **environment}
    done = subprocess.run([str(stage.theatre.program), "--about"], env=known, capture_output=True, text=True, timeout=30, check=True)
    equal(done.stderr, "", "error output")
    return {name: text.strip() for name, _, text in (line.partition(":") for line in done.stdout.splitlines())}


def kernel_bounds_writing(stage):
    """As the program itself tells it."""
    return "Landlock" in about_lines(stage)["Writing"]


def try_all(stage, path, hz, outside=None):
    """Plays a file whose decoder tries everything; it goes on to its end as if nothing had been."""
    if not stage.theatre.watch.confines:
        skip("nothing is refused under this watch, and what is tried would be its findings")
    with socket.create_server(("127.0.0.1", 0)) as listener:
        attempts = Attempts(stage, listener.getsockname()[1], outside or stage.folder / "outside")
        stage.player.start(path, **attempts.environment)
        stage.player.press(PLAY)
        wait("all was tried", lambda: attempts.of("decoder") or attempts.of("main"), TRIED_SECONDS)
        stage.sound.wait_for(hz)
        bounds = kernel_bounds_writing(stage)
        expect_refused(attempts, "decoder", bounds)
        stage.player.press(STOP)
        equal(stage.player.power_off(), 0, "exit code")
    if not bounds:
        skip("this kernel has no Landlock: what it would refuse was let through, everything else was refused")


@story("confined: a sound's decoder starts no program, reaches no host and no other process, and writes in the player's folder alone")
def decoder_of_a_sound(stage):
    sound = tone(stage.media / "long.mp3", 440, 20)
    try_all(stage, sound, 440)


@story("confined: what other programs keep in the user's run-time folder is not written")
def what_others_keep(stage):
    runtime = pathlib.Path(stage.session.environment["XDG_RUNTIME_DIR"])
    try_all(stage, tone(stage.media / "long.mp3", 440, 20), 440, outside=runtime / "others")


@story("confined: so does a movie's decoder, which the movie's library runs")
def decoder_of_a_movie(stage):
    try_all(stage, movie(stage.media / "long.avi", "#c82828", 660, 20), 660)


@story("confined: --about tells what is in force and what is missing, without a display and with a sound server that hangs")
def about(stage):
    began = time.monotonic()
    told = about_lines(stage)
    usual = time.monotonic() - began  # of this machine, as busy as it is
    check(told["Program folder"].startswith(str(stage.player.folder)), told["Program folder"])
    equal(told["Skins"], "BRASS, DEFAULT, PAPER, SLIM", "skins")
    check("seccomp" in told["System calls"] and told["Network"] == "refused", f"what is refused: {told}")
    equal(told["Sound server"], "answers", "sound server")
    check("VL Gothic" in told["Japanese fonts"], told["Japanese fonts"])
    for library in ("Qt", "libmpv", "FFmpeg", "FluidSynth", "libcdio", "libpulse", "libseccomp"):
        check(f"{library} " in told["Libraries"] and "missing" not in told["Libraries"], told["Libraries"])
    without = told["Types without a decoder"].split(", ")
    check(not {"FLAC", "OPUS", "MKV", "PNG", "WEBP", "SVG"} & set(without), f"types without a decoder: {without}")
    with socket.socket(socket.AF_UNIX) as silent:  # takes the connection and never says a word
        silent.bind(str(stage.folder / "silent"))
        silent.listen()
        began = time.monotonic()
        told = about_lines(stage, PULSE_SERVER=f"unix:{stage.folder}/silent", CORVANE_SOUNDFONT="/dev/null",
                           CORVANE_CDROM="/dev/none", DISPLAY="elsewhere:0", CORVANE_FOLDER=str(stage.folder / "nowhere"))
        taken = time.monotonic() - began
        check(taken < ABOUT_SECONDS + usual, f"it took {taken:.1f} s, {usual:.1f} s where everything answers")
    check("does not answer" in told["Sound server"], told["Sound server"])
    check("cannot be read: /dev/null" in told["Sounds for MIDI"], told["Sounds for MIDI"])
    check("/dev/none" in told["CD drives"] and told["Network"].startswith("kept"), str(told))
    check(told["Skins"].startswith("none"), told["Skins"])
    check(not (stage.folder / "nowhere").exists(), "a folder was made")
