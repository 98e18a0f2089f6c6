# SPDX-License-Identifier: GPL-3.0-or-later
"""Typing through an input method, which is another program on the message bus."""

import subprocess

from session import end_process

from harness.expect import check, equal, wait
from harness.story import story
from stories.windows import close_by, home_with_songs, interval_field, open_editor, type_interval

# The portal of an input method that makes an 8 of every 7; it writes down what it is asked, one word a line.
METHOD = """
from gi.repository import Gio, GLib
PLACE, CONTEXT = '/org/freedesktop/IBus', '/org/freedesktop/IBus/InputContext_1'
NODE = Gio.DBusNodeInfo.new_for_xml('''<node><interface name="org.freedesktop.IBus.Portal">
<method name="CreateInputContext"><arg type="s" direction="in"/><arg type="o" direction="out"/></method></interface>
<interface name="org.freedesktop.IBus.InputContext">
<method name="ProcessKeyEvent"><arg type="u" direction="in"/><arg type="u" direction="in"/><arg type="u" direction="in"/>
<arg type="b" direction="out"/></method>
<method name="SetCursorLocation"><arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="i" direction="in"/>
<arg type="i" direction="in"/></method>
<method name="SetCursorLocationRelative"><arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="i" direction="in"/>
<arg type="i" direction="in"/></method>
<method name="FocusIn"/><method name="FocusOut"/><method name="Reset"/>
<method name="SetCapabilities"><arg type="u" direction="in"/></method>
<signal name="CommitText"><arg type="v"/></signal>
<property name="ContentType" type="(uu)" access="write"/><property name="ClientCommitPreedit" type="(b)" access="write"/>
</interface></node>''')
SEVEN, RELEASED = 0x37, 1 << 30
def created(bus, sender, path, interface, method, given, call):
    print(method, flush=True)
    call.return_value(GLib.Variant('(o)', (CONTEXT,)))
def told(bus, sender, path, interface, method, given, call):
    print(method, flush=True)
    if method != 'ProcessKeyEvent':
        return call.return_value(None)
    key, _, state = given.unpack()
    taken = key == SEVEN
    if taken and not state & RELEASED:
        attributes = GLib.Variant('(sa{sv}av)', ('IBusAttrList', {}, []))
        text = GLib.Variant('(sa{sv}sv)', ('IBusText', {}, '8', attributes))
        bus.emit_signal(sender, CONTEXT, 'org.freedesktop.IBus.InputContext', 'CommitText', GLib.Variant('(v)', (text,)))
    call.return_value(GLib.Variant('(b)', (taken,)))
def ready(bus, name):
    bus.register_object(PLACE, NODE.interfaces[0], created, None, None)
    bus.register_object(CONTEXT, NODE.interfaces[1], told, None, lambda *_: True)
    print('ready', flush=True)
Gio.bus_own_name(Gio.BusType.SESSION, 'org.freedesktop.portal.IBus', Gio.BusNameOwnerFlags.NONE, ready, None, None)
GLib.MainLoop().run()
"""


# FAULT-66: What is typed goes through the desktop's input method, also where the kernel keeps the player from asking for its process
@story("input methods: what is typed goes through one that is on the bus")
def typed_through_a_method(stage):
    asked = stage.folder / "method.log"
    with open(asked, "w") as log:
        method = stage.session.popen(["/usr/bin/python3", "-c", METHOD], stdin=subprocess.DEVNULL, stdout=log, stderr=log)
    try:
        wait("the input method", lambda: "ready" in asked.read_text(), 15)
        stage.player.settings(INTERVAL=30)
        open_editor(stage, home_with_songs(stage), QT_IM_MODULE="ibus")
        type_interval(stage, "27", leaves=False)
        wait("what the method made of it", lambda: interval_field(stage)["name"] == "28")
        stage.desk.key("Tab")
        close_by(stage, "OK")
        equal(stage.player.setting("INTERVAL"), "28", "what became of 27")
        check("ProcessKeyEvent" in asked.read_text(), "the method was asked")
        equal(stage.player.power_off(), 0, "exit code")
    finally:
        end_process(method)
