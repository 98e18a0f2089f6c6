# SPDX-License-Identifier: GPL-3.0-or-later
"""Private desktops of other makes: X servers with other window managers or none, and Wayland compositors.

A compositor runs in a window that fills a private X server: what it shows is read there, and mouse and keyboard go through it
as they come from hardware. Programs inside are given its X11 (XWayland), or nothing but Wayland.
"""

import dataclasses
import os
import pathlib
import re
import shutil
import subprocess
import time

import numpy as np

from session import Session

from .expect import check, wait
from .looks import composed_panel
from .player import START_SECONDS, Player
from .desk import Window
from .story import Theatre

PIPEWIRE = ("pipewire", "wireplumber", "pipewire-pulse")
COMPOSITOR_SECONDS = 30
STANDS_SECONDS = 0.5


@dataclasses.dataclass(frozen=True)
class Kind:
    """What a session is made of, and what its windows can do."""

    name: str
    programs: tuple  # that must be installed
    compositor: str = ""  # of a Wayland session
    display: bool = True  # X11 is there
    scale: float = 1  # of the compositor's screen
    places: bool = True  # a window stands where it asks to
    above: bool = True  # a window stays above others where it asks to
    pipewire: bool = False  # its sound server, by the part of it that speaks PulseAudio's protocol
    stories: str = "session_stories"  # the folder of those that are played in it


def _compositor(name, **kind):
    program = {"kwin": "kwin_wayland"}.get(name, name)
    return [Kind(f"{name}-x11", (program, "Xwayland"), name, **kind),
            Kind(f"{name}-wayland", (program,), name, display=False, places=False, above=False)]


KINDS = {kind.name: kind for kind in (
    Kind("openbox", ("openbox",)), Kind("xfwm4", ("xfwm4",)), Kind("metacity", ("metacity",)), Kind("mutter", ("mutter",)),
    Kind("kwin", ("kwin_x11",)), Kind("i3", ("i3",)), Kind("none", (), above=False),
    *_compositor("mutter"), *_compositor("kwin"), *_compositor("sway", places=False, above=False), *_compositor("labwc"), *_compositor("weston"),
    Kind("pipewire", ("openbox", "pipewire", "wireplumber", "pipewire-pulse"), pipewire=True, stories="sound_stories"))}

MANAGERS = {"pipewire": ["openbox", "--sm-disable"], "openbox": ["openbox", "--sm-disable"], "xfwm4": ["xfwm4", "--sm-client-disable", "--compositor=off"],
            "metacity": ["metacity", "--sm-disable", "--no-composite"], "mutter": ["mutter", "--x11", "--sm-disable"],
            "kwin": ["kwin_x11"], "i3": ["i3"]}
SETTINGS = {"GSETTINGS_BACKEND": "memory", "NO_AT_BRIDGE": "1", "KWIN_COMPOSE": "N", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "0"}


def missing_programs(kind):
    return [program for program in kind.programs if shutil.which(program) is None]


class OtherSession(Session):
    """A session of a kind; its sound, bus and assistive programs are those of every private desktop."""

    def __init__(self, kind, screen="1280x960", **wanted):
        super().__init__(screen, **wanted)
        self.kind = kind

    def _start_manager(self):
        if self.kind.compositor:
            self._start_compositor()
        elif self.kind.name in MANAGERS:
            config = pathlib.Path(self.environment["XDG_CONFIG_HOME"])
            (config / "i3").mkdir()
            (config / "i3" / "config").write_text("font pango:monospace 8\nfocus_follows_mouse no\n")
            manager = self._spawn(self.kind.name, MANAGERS[self.kind.name], env=SETTINGS)
            self._await(self.kind.name, manager, self._window_manager_runs, COMPOSITOR_SECONDS)

    def _start_compositor(self):
        """Its programs get the variables that it gives to what it starts itself."""
        told = self.folder / "given"
        tell = self.folder / "tell.sh"
        tell.write_text(f'#!/bin/sh\nenv > "{told}.part"\nmv "{told}.part" "{told}"\nwhile [ -e "{told}" ]; do sleep 1; done\n')
        tell.chmod(0o755)
        name = self.kind.compositor
        self.environment.pop("QT_QPA_PLATFORM")  # as it is on a desktop: the program chooses
        self.hands = {"DISPLAY": self.environment["DISPLAY"]}
        command, variables = getattr(self, f"_{name}")(tell)
        server = self._spawn(name, command, env={**SETTINGS, "XDG_SESSION_TYPE": "wayland", **variables})
        self._await(name, server, lambda: self._given(told), COMPOSITOR_SECONDS)
        given = self._given(told)
        self.environment["WAYLAND_DISPLAY"] = given["WAYLAND_DISPLAY"]
        self.environment.pop("DISPLAY")
        if self.kind.display:
            self.environment.update({name: given[name] for name in ("DISPLAY", "XAUTHORITY", "SWAYSOCK") if name in given})
            self.environment["GDK_BACKEND"] = "x11"  # other programs' windows are found by their X11
        self.environment["XDG_SESSION_TYPE"] = "wayland"
        self._take_keyboard()

    def _given(self, told):
        if not told.exists():
            return None
        given = dict(line.split("=", 1) for line in told.read_text(errors="replace").splitlines() if "=" in line)
        inside = given.get("DISPLAY") not in (None, self.hands["DISPLAY"])
        return given if "WAYLAND_DISPLAY" in given and (inside or not self.kind.display) else None

    def _take_keyboard(self):
        """Nobody manages the compositor's own window."""
        outside = {**self.environment, **self.hands}
        tree = subprocess.run(["xwininfo", "-root", "-tree"], env=outside, check=True, capture_output=True, text=True).stdout
        windows = re.findall(rf"^\s+(0x[0-9a-f]+).*\s{self.screen}\+0\+0", tree, re.M)
        subprocess.run(["xdotool", "windowfocus", windows[-1]], env=outside, check=True, timeout=30)
        if self.kind.compositor == "weston":  # it counts from where it believes that the pointer was, which a corner sets right
            corner = [str(int(side) - 1) for side in self._size()]
            self.before_moves = ["mousemove", *corner, "mousemove", "0", "0"]


    def _start_sound(self):
        if not self.kind.pipewire:
            return super()._start_sound()
        self.environment["PULSE_SERVER"] = f"unix:{self.environment['XDG_RUNTIME_DIR']}/pulse/native"
        self.environment["XDG_STATE_HOME"] = str(self.folder / "state")  # where it keeps which device a program had
        for name in PIPEWIRE:
            server = self._spawn(name, ["env", "-u", "DISPLAY", name])
        self._await(PIPEWIRE[-1], server, self._has_default_sink, COMPOSITOR_SECONDS)
        self.make_sink("nul")
        self.choose_sink("nul")

    def choose_sink(self, name):
        """Makes it the default."""
        self.run(["pactl", "set-default-sink", name])
        wait(f"the default sink {name}", lambda: self.run(["pactl", "get-default-sink"]).strip() == name)

    def _has_default_sink(self):
        """The session manager makes one that leads nowhere while there is no other."""
        answer = subprocess.run(["pactl", "get-default-sink"], env=self.environment, capture_output=True, text=True, check=False)
        return answer.returncode == 0 and answer.stdout.strip() not in ("", "@DEFAULT_SINK@")

    def make_sink(self, name):
        """A device that is heard through its monitor; returns the number that removes it."""
        number = self.run(["pactl", "load-module", "module-null-sink", f"sink_name={name}"]).strip()
        wait(f"the sink {name}", lambda: f"\t{name}\t" in self.run(["pactl", "list", "short", "sinks"]))
        return number

    def kill_sound(self):
        if not self.kind.pipewire:
            return super().kill_sound()
        for entry in [each for each in self._servers if each[0] in PIPEWIRE]:
            entry[1].kill()
            entry[1].wait()
            entry[2].close()
            self._servers.remove(entry)

    def _size(self):
        return self.screen.split("x")

    def _weston(self, tell):
        width, height = self._size()
        config = self.folder / "weston.ini"
        config.write_text(f"[core]\nxwayland={str(self.kind.display).lower()}\nidle-time=0\n[shell]\npanel-position=none\nlocking=false\n"
                          f"animation=none\nclose-animation=none\nfocus-animation=none\nstartup-animation=none\n[output]\nname=X1\nmode={width}x{height}\nscale={int(self.kind.scale)}\n"
                          f"[autolaunch]\npath={tell}\n")
        return ["weston", f"--config={config}", "--backend=x11-backend.so", "--use-pixman", f"--width={width}",
                f"--height={height}", "--socket=wayland-corvane"], {}

    def _sway(self, tell):
        width, height = self._size()
        config = self.folder / "sway.conf"
        config.write_text(f"xwayland {'force' if self.kind.display else 'disable'}\nfocus_follows_mouse no\n"
                          f"output * mode {width}x{height} scale {self.kind.scale}\nexec {tell}\n")
        # It refuses to run as root, who is then another user in a space of its own.
        as_user = ["unshare", "-U", "--map-user=1000", "--map-group=1000"] if os.geteuid() == 0 else []
        return [*as_user, "sway", "-c", str(config)], {"WLR_RENDERER": "pixman", "WLR_BACKENDS": "x11", "WLR_X11_OUTPUTS": "1"}

    def _labwc(self, tell):
        return ["labwc", "-s", str(tell)], {"WLR_RENDERER": "pixman", "WLR_BACKENDS": "x11", "WLR_X11_OUTPUTS": "1"}

    def _mutter(self, tell):
        display = [] if self.kind.display else ["--no-x11"]
        return (["mutter", "--nested", "--wayland", *display, "--wayland-display=wayland-corvane", "--", str(tell)],
                {"MUTTER_DEBUG_DUMMY_MODE_SPECS": self.screen, "MUTTER_DEBUG_DUMMY_MONITOR_SCALES": str(self.kind.scale)})

    def _kwin(self, tell):
        width, height = (str(round(int(side) / self.kind.scale)) for side in self._size())  # as its screen counts
        # A copy has not the capability that it is given where it is installed, which a container may refuse.
        program = self.folder / "kwin_wayland"
        shutil.copy(shutil.which("kwin_wayland"), program)
        display = ["--xwayland"] if self.kind.display else []
        return ([str(program), "--x11-display", self.hands["DISPLAY"], "--width", width, "--height", height, "--scale", str(self.kind.scale),
                 *display, "--socket", "wayland-corvane", "--no-lockscreen", "--no-global-shortcuts", str(tell)],
                {"KWIN_COMPOSE": "Q", "QT_XCB_GL_INTEGRATION": "none"})


class SeenPanel:
    """Where the panel is on the screen, by its pixels alone: in the skin's own size, and not covered where it is looked for."""

    RUN = 40  # pixels of a row

    def __init__(self, player):
        picture, drawn = composed_panel(player)
        self.size = picture.shape[1], picture.shape[0]
        packed = (picture[:, :, 0] << 16) + (picture[:, :, 1] << 8) + picture[:, :, 2]
        best = max(((len(set(packed[y, x : x + self.RUN])), y, x) for y in range(0, self.size[1])
                    for x in range(0, self.size[0] - self.RUN, 8) if not drawn[y, x : x + self.RUN].any()), default=None)
        check(best, "the skin has nothing to know it by")
        _, self._y, self._x = best
        self._run = packed[self._y, self._x : self._x + self.RUN]
        self._picture, self._drawn = picture, drawn

    def find(self, desk):
        """Its left and top edge; None where it is not seen."""
        screen = desk.area()
        packed = (screen[:, :, 0] << 16) + (screen[:, :, 1] << 8) + screen[:, :, 2]
        width = packed.shape[1] - self.RUN + 1
        found = np.ones((packed.shape[0], width), bool)
        for number, value in enumerate(self._run):
            found &= packed[:, number : number + width] == value
            if not found.any():
                return None
        rows, columns = np.nonzero(found)
        return int(columns[0]) - self._x, int(rows[0]) - self._y

    def differing(self, desk, place):
        """How many of its pixels at that place are not the skin's, what the player itself writes aside."""
        shown = desk.area(*place, *self.size)
        if shown.shape != self._picture.shape:
            return shown.size
        return int(((np.abs(shown - self._picture).max(axis=2) > 0) & ~self._drawn).sum())


class SessionPlayer(Player):
    """As Player: its panel is where it is seen."""

    def find_panel(self):
        seen = self._seen = getattr(self, "_seen", None) or SeenPanel(self)
        place = seen.find(self.desk)
        if place is None:
            return None
        known = [w for w in self.windows() if w.size == seen.size] if self.stage.session.kind.display else []
        return Window(known[0].id if known else 0, "Corvane", *place, *seen.size)

    def start(self, *arguments, panel=True, under=(), **environment):
        """Without the scale that other stories have: the desktop's own."""
        self.desk.rest()
        self._run = self._runs.start([self.program, *arguments], {"CORVANE_FOLDER": str(self.folder), **environment}, under)
        self.process = self._run.process
        if panel:
            self.wait_for_panel()

    def wait_for_panel(self, seconds=2 * START_SECONDS):
        """It has stood for a while: the last picture of the opening, which takes no click, stands as it does, and what a compositor
        shows comes late."""
        seen = [None, time.monotonic()]

        def stands():
            check(self.running(), f"the program ended with code {self.process.poll()}: {self.log()[-300:]}")
            now = self.find_panel()
            if now != seen[0]:
                seen[:] = [now, time.monotonic()]
            return now if time.monotonic() - seen[1] >= STANDS_SECONDS else None

        self.window = wait("the panel", stands, seconds)
        return self.window

    def stated_place(self):
        """Where the panel opens."""
        return tuple((side - own) * 9 // 10 for side, own in zip((self.desk.screen.width, self.desk.screen.height), self._seen.size))

    def differing(self):
        return self._seen.differing(self.desk, (self.window.x, self.window.y))

    def key(self, *keys):
        """To the panel, which a press on a place of it that does nothing has given the keyboard."""
        self.desk.key(*keys)

    def windows(self, name=None):
        return super().windows(name) if self.stage.session.kind.display else []


class SessionTheatre(Theatre):
    """Plays stories in a session of a kind."""

    make_player = SessionPlayer

    def __init__(self, kind, program, proofs):
        super().__init__(program, proofs / kind.name)
        self.session = OtherSession(kind, accessibility=True)
        self.kind = kind


def box_of(desk, colour, tolerance=26):
    """The rectangle (x, y, width, height) around all pixels of a colour "#RRGGBB", and how much of it they fill; None: there
    is none."""
    wanted = np.array([int(colour[i : i + 2], 16) for i in (1, 3, 5)])
    rows, columns = np.nonzero(np.abs(desk.area() - wanted).max(axis=2) <= tolerance)
    if len(rows) < 100:
        return None
    x, y = int(columns.min()), int(rows.min())
    width, height = int(columns.max()) - x + 1, int(rows.max()) - y + 1
    return (x, y, width, height), len(rows) / (width * height)


def wait_for_box(desk, colour, seconds=10.0):
    return wait(f"a window of {colour}", lambda: box_of(desk, colour), seconds)
