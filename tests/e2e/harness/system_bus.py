# SPDX-License-Identifier: GPL-3.0-or-later
"""A system's message bus of one's own, with what puts machines to sleep on it."""

import contextlib
import subprocess

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from session import end_process  # noqa: E402

from .expect import wait  # noqa: E402

LOGIN = "org.freedesktop.login1"
PATH = "/org/freedesktop/login1"
MANAGER = "org.freedesktop.login1.Manager"
BUS = "org.freedesktop.DBus"


class SystemBus:
    """Made by system_bus(). `environment` is what a program on it gets."""

    def __init__(self, address):
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": address}
        self._address = address
        self._login = self.connect()
        self._call(self._login, "RequestName", GLib.Variant("(su)", (LOGIN, 0)))

    def connect(self):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        connection = Gio.DBusConnection.new_for_address_sync(self._address, flags, None, None)
        connection.set_exit_on_close(False)
        return connection

    def prepare_for_sleep(self, sleeps, connection=None):
        """Says that the machine goes to sleep, or is awake; by another one than who may say so."""
        self._say("PrepareForSleep", GLib.Variant("(b)", (sleeps,)), connection)

    def wait_for_listener(self, pid):
        """Until a process listens there: it is on the bus, and has asked who the service is."""
        wait("the player listens to the system's bus", lambda: pid in self._processes(), 10)

    def lock_session(self):
        self._say("Lock", None, path=f"{PATH}/session/_31", interface="org.freedesktop.login1.Session")

    def close(self):
        self._login.close_sync(None)

    def _say(self, name, arguments, connection=None, path=PATH, interface=MANAGER):
        connection = connection or self._login
        connection.emit_signal(None, path, interface, name, arguments)
        connection.flush_sync(None)

    def _processes(self):
        names = [name for name in self._call(self._login, "ListNames")[0] if name.startswith(":")]
        return {self._call(self._login, "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0] for name in names}

    def _call(self, connection, method, arguments=None):
        return connection.call_sync(BUS, "/org/freedesktop/DBus", BUS, method, arguments, None, Gio.DBusCallFlags.NONE, 5000,
                                    None).unpack()


@contextlib.contextmanager
def system_bus(stage):
    address = f"unix:path={stage.folder}/system_bus"
    daemon = stage.session.popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"],
                                 stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        wait("the system's bus", (stage.folder / "system_bus").exists)
        bus = SystemBus(address)
        yield bus
        bus.close()
    finally:
        end_process(daemon)
