# SPDX-License-Identifier: GPL-3.0-or-later
"""The player on the message bus, asked from here without a process each time, and a clock of how long it takes to answer."""

import os
import threading
import time
import urllib.parse

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from .expect import SLACK, wait
from .lateness import Lateness

NAME = "org.mpris.MediaPlayer2.corvane"
OBJECT = "/org/mpris/MediaPlayer2"
PLAYER = "org.mpris.MediaPlayer2.Player"
PROPERTIES = "org.freedesktop.DBus.Properties"
CALL_SECONDS = 20


def address_of(path):
    """As the player tells it."""
    return "file://" + urllib.parse.quote(os.fsencode(path), safe="/")


class Bus:
    def __init__(self, session):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.connection = Gio.DBusConnection.new_for_address_sync(session.environment["DBUS_SESSION_BUS_ADDRESS"], flags, None, None)
        self.connection.set_exit_on_close(False)

    def close(self):
        self.connection.close_sync(None)

    def call(self, method, arguments=None, interface=PLAYER, name=NAME, seconds=CALL_SECONDS, path=OBJECT):
        """Its answer as Python values; an error raises GLib.Error."""
        reply = self.connection.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NO_AUTO_START,
                                          int(seconds * SLACK * 1000), None)
        return reply.unpack()

    def tell(self, method, interface=PLAYER, name=NAME, path=OBJECT):
        """Calls without waiting for the answer; returns when it was sent."""
        at = time.monotonic()
        self.connection.call(name, path, interface, method, None, None, Gio.DBusCallFlags.NO_AUTO_START, -1, None, None)
        self.connection.flush_sync(None)
        return at

    def has(self, name):
        """Whether somebody on it has that name."""
        return self.call("NameHasOwner", GLib.Variant("(s)", (name,)), "org.freedesktop.DBus", "org.freedesktop.DBus",
                         path="/org/freedesktop/DBus")[0]

    def process(self, name=NAME):
        """Of who has that name; 0 when nobody has it."""
        try:
            return self.call("GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)), "org.freedesktop.DBus", "org.freedesktop.DBus",
                             path="/org/freedesktop/DBus")[0]
        except GLib.Error:
            return 0

    def state(self):
        """What it plays: (status, address, position in microseconds); ("", "", 0) while it is not on the bus."""
        try:
            told = self.call("GetAll", GLib.Variant("(s)", (PLAYER,)), PROPERTIES)[0]
        except GLib.Error:
            return "", "", 0
        return told["PlaybackStatus"], told["Metadata"].get("xesam:url", ""), told["Position"]


class AnswerWatch:
    """Asks again and again, from a thread of its own, and keeps how long the slowest answer took; as a context manager. What the
    machine let player, bus and asker wait for a processor is no time of the player's."""

    PAUSE = 0.03
    MOST_LATE = 5.0  # seconds of an answer that may be the machine's

    def __init__(self, session):
        self._bus = Bus(session)
        self._daemon = session.pid_of("dbus-daemon")
        self._lock = threading.Lock()
        self._since = self._lateness = None  # of the question that is out
        self._slowest = 0.0
        self._asked = 0
        self._ended = threading.Event()
        self._thread = threading.Thread(target=self._ask, daemon=True)

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._ended.set()
        self._thread.join(CALL_SECONDS * SLACK + 1)
        self._bus.close()

    def take(self):
        """Seconds of the slowest answer since the last take, one that is still out with them, and how many there were."""
        with self._lock:
            found = max(self._slowest, self._taken()), self._asked
            self._slowest, self._asked = 0.0, 0
        return found

    def slowest(self):
        """Seconds of the slowest answer since the last take, once there was one."""
        found = []

        def asked():
            seconds, count = self.take()
            found.append(seconds)
            return count

        wait("the player answers", asked, CALL_SECONDS)
        return max(found)

    def _taken(self):
        """Of the question that is out."""
        if self._since is None:
            return 0.0
        return max(0.0, time.monotonic() - self._since - min(self._lateness.seconds(), self.MOST_LATE))

    def _ask(self):
        while not self._ended.wait(self.PAUSE):
            asked = self._bus.process(), self._daemon
            with self._lock:
                self._lateness = Lateness(*asked)
                self._since = time.monotonic()
            status = self._bus.state()[0]
            with self._lock:
                self._slowest = max(self._slowest, self._taken())
                self._asked += bool(status)
                self._since = None
