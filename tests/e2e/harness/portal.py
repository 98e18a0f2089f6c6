# SPDX-License-Identifier: GPL-3.0-or-later
"""What stands for the desktop on the message bus: the settings that its portal tells."""

import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
SETTINGS = "org.freedesktop.portal.Settings"
DESCRIPTION = """<node><interface name="org.freedesktop.portal.Settings">
  <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
  <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""


class Portal:
    """As a context manager. settings: {(group, key): GLib.Variant}."""

    def __init__(self, session, settings=()):
        self.settings = dict(settings)
        self._address = session.environment["DBUS_SESSION_BUS_ADDRESS"]
        self._context = GLib.MainContext()
        self._loop = GLib.MainLoop.new(self._context, False)
        self._ready = threading.Event()
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._bus = None

    def __enter__(self):
        self._thread.start()
        self._ready.wait(10)
        return self

    def __exit__(self, *_):
        self._loop.quit()
        self._thread.join(5)
        self._bus.close_sync(None)

    def set(self, group, key, value):
        """Changes a setting, which all who listen are told."""
        self.settings[group, key] = value
        self._bus.emit_signal(None, PATH, SETTINGS, "SettingChanged", GLib.Variant("(ssv)", (group, key, value)))
        self._bus.flush_sync(None)

    def _serve(self):
        self._context.push_thread_default()
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(self._address, flags, None, None)
        self._bus.set_exit_on_close(False)
        self._bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0], self._answer, None, None)
        self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                            GLib.Variant("(su)", (NAME, 0)), None, Gio.DBusCallFlags.NONE, 5000, None)
        self._ready.set()
        self._loop.run()
        self._context.pop_thread_default()

    def _answer(self, _bus, _sender, _path, _interface, method, arguments, call):
        asked = arguments.unpack()
        if method == "ReadAll":
            groups = {}
            for (group, key), value in self.settings.items():
                if group in asked[0]:
                    groups.setdefault(group, {})[key] = value
            call.return_value(GLib.Variant("(a{sa{sv}})", (groups,)))
        else:
            found = self.settings.get(asked)
            if found is None:
                call.return_dbus_error("org.freedesktop.portal.Error.NotFound", "it is not set")
            else:
                call.return_value(GLib.Variant("(v)", (GLib.Variant("v", found),)))


def text(value):
    return GLib.Variant("s", value)


def number(value):
    return GLib.Variant("u", value)


def whole(value):
    return GLib.Variant("i", value)


def share(value):
    return GLib.Variant("d", value)


def switch(value):
    return GLib.Variant("b", value)
