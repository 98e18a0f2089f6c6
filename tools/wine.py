#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Windows programs under Wine, in a prefix of our own under build/ that is made at the first use.

Command line: wine.py PROGRAM [ARGUMENT...] runs one and ends with its exit code; users of the prefix wait for each other.
"""

import fcntl
import os
import pathlib
import signal
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
PREFIX = ROOT / "build" / "wine"
PLACES = ("/usr/lib/wine", "/usr/bin")
BOOT_SECONDS = 180
# Not into pipes: the server and the services that a program starts would keep them open.
QUIET = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
# No offers to download anything; no menu entries for what is installed in the prefix.
OVERRIDES = "mscoree=;mshtml=;winemenubuilder.exe="

# What a prefix has beside the defaults. Without a graphics card the child window of a movie stays grey otherwise.
# Fonts: ours in the place of those that Windows has; Japanese texts are drawn as there, by a font that others link to.
REGISTRY = r"""Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\Wine\Direct3D]
"renderer"="gdi"

[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"Segoe UI"="DejaVu Sans"
"SimSun"="VL PGothic"
"Tahoma"="DejaVu Sans"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink]
"DejaVu Sans"=hex(7):LINKED
""".replace("LINKED", ",".join(f"{byte:02x}" for byte in "VL-PGothic-Regular.ttf,VL PGothic\0\0".encode("utf-16-le")))


def find(*names):
    for place in PLACES:
        for name in names:
            if (pathlib.Path(place) / name).exists():
                return f"{place}/{name}"
    return None


class Wine:
    """Runs programs of one prefix. `environment`: where they run (a private desktop's, or this process's)."""

    def __init__(self, environment=None, prefix=PREFIX):
        self.prefix = prefix
        self.loader = find("wine64", "wine")
        self.server = find("wineserver64", "wineserver")
        self.environment = {**(os.environ if environment is None else environment), "WINEPREFIX": str(prefix),
                            "WINEARCH": "win64", "WINEDEBUG": "-all", "WINEDLLOVERRIDES": OVERRIDES,
                            "HOME": os.environ.get("HOME", "/")}
        self._lock = None

    def start(self):
        """Makes the prefix where there is none and keeps its server running; another user of the prefix waits."""
        if not self.loader or not self.server:
            raise FileNotFoundError("wine is not installed")
        self.prefix.mkdir(parents=True, exist_ok=True)
        self._lock = open(self.prefix.with_suffix(".lock"), "w")
        fcntl.flock(self._lock, fcntl.LOCK_EX)
        self._serve("-k")
        if not (self.prefix / "system.reg").exists():
            self.run("wineboot", "-i", seconds=BOOT_SECONDS)
        self._take_registry()
        self._serve("-p")
        # The first program starts the system's services, which would keep its output open for as long as they live.
        self.run("cmd", "/c", "ver")
        return self

    def stop(self):
        self._serve("-k")
        self._serve("-w")
        if self._lock is not None:
            self._lock.close()

    def __enter__(self):
        return self.start()

    def __exit__(self, *_):
        self.stop()

    def _take_registry(self):
        """Once, and again when REGISTRY says something else; programs that run already do not see it."""
        taken = self.prefix / "taken.reg"
        wanted = REGISTRY.encode("utf-16")  # in other encodings its numbers mean something else
        if taken.exists() and taken.read_bytes() == wanted:
            return
        asked = self.prefix / "asked.reg"
        asked.write_bytes(wanted)
        self.run("regedit", "/S", windows_path(asked))
        self._serve("-k")
        self._serve("-w")
        asked.rename(taken)

    def _serve(self, option):
        subprocess.run([self.server, option], env=self.environment, check=False, timeout=30, **QUIET)

    def command(self, program, *arguments):
        return [self.loader, str(program), *map(str, arguments)]

    def run(self, program, *arguments, seconds=60):
        """Exit code of a short program; what it says is dropped."""
        return subprocess.run(self.command(program, *arguments), env=self.environment, timeout=seconds, check=False,
                              **QUIET).returncode

    def home(self):
        """The folder that is the user's own inside the prefix."""
        return next(p for p in sorted((self.prefix / "drive_c" / "users").iterdir()) if p.name != "Public")


def windows_path(path):
    """How Wine names a file of this system: every drive is there as Z:."""
    return "Z:" + str(path).replace("/", "\\")


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    with Wine() as wine:
        return subprocess.run(wine.command(*sys.argv[1:]), env=wine.environment, check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
