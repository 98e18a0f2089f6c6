#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A private desktop: an X server without a screen, a window manager, a message bus and a sound server with a null sink.

Nothing that runs on the machine already is used or touched. All of it lives in a folder of its own and ends with it.
Command line: session.py [--screen WxH] [--without-display | --without-sound] [--seconds N] [--clean] -- COMMAND [ARGUMENT...]
runs one command inside and ends with its exit code; with 124 when it did not end in time. --clean: of the variables around it
it gets those of KEPT_VARIABLES alone.
"""

import argparse
import os
import pathlib
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time

KEPT_VARIABLES = ("PATH", "LANG", "LC_ALL", "TZ", "TERM", "HOME", "USER", "LOGNAME", "TMPDIR", "CCACHE_DIR",
                  "CORVANE_FOLDER", "ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "GTEST_FILTER", "GTEST_OUTPUT",
                  "GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX")
ACCESSIBILITY_LAUNCHER = pathlib.Path("/usr/libexec/at-spi-bus-launcher")


class SessionError(Exception):
    """A server that is needed did not start; the text says which one and what it said."""


def poll(condition, seconds, pause=0.02):
    """The first true value of condition() within that many seconds, else its last value."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value or time.monotonic() >= deadline:
            return value
        time.sleep(pause)


class Session:
    """Servers start in start() and end in stop(), also as a context manager. `environment` is what programs inside get."""

    def __init__(self, screen="1280x960", display=True, sound=True, accessibility=False, sound_in_shared_memory=False):
        self.screen = screen
        self.sound_in_shared_memory = sound_in_shared_memory
        self.wanted = {"display": display, "sound": sound, "accessibility": accessibility}
        self.folder = None
        self.environment = {}
        self.framebuffer = None  # the X server's screen as an XWD file that follows what is shown
        self.hands = {}  # what mouse and keyboard go through where it is not `environment`
        self.before_moves = []  # what they must do before they move to a place
        self._servers = []

    def __enter__(self):
        try:
            return self.start()
        except BaseException:
            self.stop()
            raise

    def __exit__(self, *_):
        self.stop()

    def start(self):
        # A name without a dot: files below it stay playable by plain arguments.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvane_session_"))
        runtime = self.folder / "run"
        runtime.mkdir(mode=0o700)
        (self.folder / "config").mkdir()
        self.environment = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
        self.environment.update(XDG_RUNTIME_DIR=str(runtime), XDG_CONFIG_HOME=str(self.folder / "config"),
                                XDG_CACHE_HOME=str(self.folder / "cache"), XDG_DATA_HOME=str(self.folder / "data"))
        # The machine's own bus tells of its sleep, which is no matter of what runs here.
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={self.folder}/no_system_bus"
        self._start_bus()
        if self.wanted["display"]:
            self._start_display()
            self._start_manager()
        if self.wanted["accessibility"] and ACCESSIBILITY_LAUNCHER.exists():
            self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
            self._spawn("accessibility", [str(ACCESSIBILITY_LAUNCHER), "--launch-immediately"])
        if self.wanted["sound"]:
            self._start_sound()
        return self

    def stop(self):
        for name, server, log in reversed(self._servers):
            end_process(server)
            log.close()
        self._servers = []
        if self.folder is not None:
            shutil.rmtree(self.folder, ignore_errors=True)
            self.folder = None

    def popen(self, command, **options):
        """Starts a program inside the session, in a process group of its own."""
        environment = {**self.environment, **options.pop("env", {})}
        return subprocess.Popen(command, env=environment, start_new_session=True, **options)

    def run(self, command, **options):
        """Runs a short command inside the session and returns its output; a failing one raises."""
        return subprocess.run(command, env=self.environment, check=True, capture_output=True, text=True, timeout=30,
                              **options).stdout

    def fallen(self):
        """The names of servers that broke down, each with its code; one that was asked to end is none."""
        return [f"{name} (code {server.returncode})" for name, server, _ in self._servers if server.poll()]

    def pid_of(self, name):
        """Of one of the session's servers."""
        return next(server.pid for known, server, _ in self._servers if known == name)

    def restart_sound(self):
        """Kills the sound server and starts another one in the same place."""
        self.kill_sound()
        self._start_sound()

    def kill_sound(self):
        for entry in [e for e in self._servers if e[0] == "pulseaudio"]:
            entry[1].kill()
            entry[1].wait()
            entry[2].close()
            self._servers.remove(entry)

    def _spawn(self, name, command, **options):
        log = open(self.folder / f"{name}.log", "ab")
        try:
            server = self.popen(command, stdin=subprocess.DEVNULL, stdout=options.pop("stdout", log), stderr=log, **options)
        except FileNotFoundError:
            log.close()
            raise SessionError(f"{command[0]} is not installed") from None
        self._servers.append((name, server, log))
        return server

    def _await(self, name, server, condition, seconds=15):
        def done():
            return condition() or server.poll() is not None

        poll(done, seconds)
        if server.poll() is not None or not condition():
            said = (self.folder / f"{name}.log").read_text(errors="replace")[-600:].strip()
            raise SessionError(f"{name} did not start" + (f": {said}" if said else ""))

    def _start_bus(self):
        address = f"unix:path={self.folder}/bus"  # not where a program without an address would look for it
        server = self._spawn("dbus-daemon", ["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"])
        self._await("dbus-daemon", server, pathlib.Path(address.split("=", 1)[1]).exists)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def _start_display(self):
        shown = self.folder / "screen"
        shown.mkdir()
        reader, writer = os.pipe()
        server = self._spawn("Xvfb", ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{self.screen}x24", "-nolisten",
                                      "tcp", "-noreset", "-fbdir", str(shown)], pass_fds=(writer,))
        os.close(writer)
        number = b""
        while not number.endswith(b"\n"):
            ready, _, _ = select.select([reader], [], [], 15)
            part = os.read(reader, 16) if ready else b""
            if not part:
                os.close(reader)
                self._await("Xvfb", server, lambda: False, 0)
            number += part
        os.close(reader)
        self.environment.update(DISPLAY=f":{int(number)}", QT_QPA_PLATFORM="xcb")
        self.framebuffer = shown / "Xvfb_screen0"

    def _start_manager(self):
        manager = self._spawn("openbox", ["openbox", "--sm-disable"])
        self._await("openbox", manager, self._window_manager_runs)

    def _window_manager_runs(self):
        answer = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.environment, capture_output=True,
                                text=True, check=False)
        return "window id" in answer.stdout

    def _start_sound(self):
        socket = pathlib.Path(self.environment["XDG_RUNTIME_DIR"], "pulse_socket")
        socket.unlink(missing_ok=True)
        self.environment["PULSE_SERVER"] = f"unix:{socket}"
        # On no bus at all: it would hold the name there that the tests' own servers want. Without shared memory: with it
        # PulseAudio 16 ends itself now and then (an assertion of pa_memblock_unref in the sink's thread, as a program that
        # played leaves) while its monitor is recorded.
        memory = "no" if self.sound_in_shared_memory else "yes"
        server = self._spawn("pulseaudio", [
            "env", "-u", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS=unix:path=/dev/null", "pulseaudio", "-n", f"--disable-shm={memory}",
            "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disallow-exit",
            "-L", f"module-native-protocol-unix socket={socket} auth-anonymous=1", "-L", "module-null-sink sink_name=nul"])
        self._await("pulseaudio", server, lambda: self._sound_answers(socket))

    def _sound_answers(self, socket):
        if not socket.exists():
            return False
        answer = subprocess.run(["pactl", "list", "short", "sinks"], env=self.environment, capture_output=True, text=True,
                                check=False)
        return "nul" in answer.stdout


def end_process(process, seconds=3):
    """Ends a process of popen() and everything in its group, politely first."""
    for sign in (signal.SIGTERM, signal.SIGKILL):
        try:
            os.killpg(process.pid, sign)
        except ProcessLookupError:
            break
        try:
            process.wait(seconds)
        except subprocess.TimeoutExpired:
            continue
    process.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--screen", default="1280x960")
    parser.add_argument("--without-display", action="store_true")
    parser.add_argument("--without-sound", action="store_true")
    parser.add_argument("--clean", action="store_true")
    parser.add_argument("--seconds", type=float, help="the longest that the command may take")
    parser.add_argument("command", nargs="+")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    try:
        with Session(options.screen, not options.without_display, not options.without_sound) as session:
            environment = dict(session.environment) if options.clean else {**os.environ, **session.environment}
            if session.framebuffer:
                environment["CORVANE_FRAMEBUFFER"] = str(session.framebuffer)
            command = subprocess.Popen(options.command, env=environment, start_new_session=options.seconds is not None)
            try:
                code = command.wait(options.seconds)
                return code if code >= 0 else 128 - code
            except subprocess.TimeoutExpired:
                print(f"session: {options.command[0]} did not end within {options.seconds:.0f} s", file=sys.stderr)
                return 124
            finally:
                if command.poll() is None:
                    end_process(command) if options.seconds is not None else command.kill()
    except SessionError as error:
        print(f"session: {error}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        return 130


if __name__ == "__main__":
    sys.exit(main())
