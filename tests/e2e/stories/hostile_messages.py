# SPDX-License-Identifier: GPL-3.0-or-later
"""What other programs may send to the running player: made-up calls on the message bus, bytes on the socket that takes files over,
drags that lie. It answers all the time, plays on and ends as it should."""

import os
import random
import socket
import stat
import struct

from gi.repository import Gio, GLib

from harness.bus import NAME, OBJECT, PLAYER, PROPERTIES, AnswerWatch, Bus, address_of
from harness.dragging import Dragging
from harness.expect import SLACK, check, equal, wait
from harness.media import tone
from harness.player import PLAY
from harness.story import story

SEED = 14
MESSAGES = 2000
CALLS = 400
CROWD = 8000
ANSWER_SECONDS = 2.0
TOOL_KIT_SECONDS = 8  # it waits five for who offered something and is silent: nobody can change that
ROOT = "org.mpris.MediaPlayer2"
METHODS = ("Next", "Previous", "Pause", "PlayPause", "Stop", "Play", "Seek", "SetPosition", "OpenUri", "Raise", "Nothing", "a", "Quit2")
NAMED = ("Volume", "Rate", "Shuffle", "LoopStatus", "Position", "Metadata", "PlaybackStatus", "CanQuit", "", "Nothing", "\u202e", "Volume\u0001")
NUMBERS = (0, 1, -1, 2**31, -(2**31), 2**63 - 1, -(2**63), 60_000_000)
REALS = (0.0, -0.0, 1.0, float("nan"), float("inf"), float("-inf"), 1e308, -1e308, 5e-324)
TEXTS = ("", "file://", "file:///", "file:///dev/zero", "file:///proc/self/mem", "http://127.0.0.1:9/a.wav", "file://host/a.wav", "file:a.wav", "%00", "file:///%00.wav",
         "file:///%ff%fe.wav", "file:///a%0ab.wav", "x" * 200_000, "file:///" + "a/" * 40_000 + "b.wav", "None", "Track", "Playlist", "\u202e\ufeff\U0001F4A9", "None\n", "smb://x/y.wav", "file:///tmp")
PATHS = ("/", "/corvane/track/1", "/corvane/track/0", "/corvane/track/99999999999999999999", "/corvane/track/_1", "/org/mpris/MediaPlayer2/TrackList/NoTrack", "/a" * 900)


def value(chance, depth=0):
    """Of any type."""
    kinds = 13 if depth < 4 else 9
    kind = chance.randrange(kinds)
    if kind == 0:
        return GLib.Variant("x", chance.choice(NUMBERS))
    if kind == 1:
        return GLib.Variant("d", chance.choice(REALS))
    if kind == 2:
        return GLib.Variant("s", chance.choice(TEXTS))
    if kind == 3:
        return GLib.Variant("o", chance.choice(PATHS))
    if kind == 4:
        return GLib.Variant("b", chance.random() < 0.5)
    if kind == 5:
        return GLib.Variant(chance.choice("yq"), chance.randrange(256))
    if kind == 6:
        return GLib.Variant("t", chance.choice((0, 2**64 - 1)))
    if kind == 7:
        return GLib.Variant("ay", chance.randbytes(chance.choice((0, 1, 5000))))
    if kind == 8:
        return GLib.Variant(*chance.choice((("as", ["a"] * 900), ("as", []), ("ao", ["/a"]), ("a{sv}", {}), ("g", "a{sv}"), ("a(xs)", [(1, "x")]))))
    inner = value(chance, depth + 1)
    if kind == 9:
        return GLib.Variant("v", inner)
    if kind == 10:
        return GLib.Variant.new_tuple(inner, value(chance, depth + 1))
    if kind == 11:
        return GLib.Variant.new_array(inner.get_type(), [inner] * chance.randrange(1, 4))
    return GLib.Variant("a{sv}", {chance.choice(TEXTS)[:90]: inner for _ in range(chance.randrange(1, 5))})


def method_call(chance):
    """(interface, method, arguments): what a caller should send, or anything at all."""
    kind = chance.randrange(6)
    if kind == 0:
        return PLAYER, "Seek", GLib.Variant("(x)", (chance.choice(NUMBERS),))
    if kind == 1:
        return PLAYER, "SetPosition", GLib.Variant("(ox)", (chance.choice(PATHS), chance.choice(NUMBERS)))
    if kind == 2:
        return PLAYER, "OpenUri", GLib.Variant("(s)", (chance.choice(TEXTS),))
    if kind == 3:
        held = value(chance)
        return PROPERTIES, "Set", GLib.Variant("(ssv)", (chance.choice((PLAYER, ROOT, "", "x.y")), chance.choice(NAMED), held))
    if kind == 4:
        names = (chance.choice((PLAYER, ROOT, "", "x.y")), chance.choice(NAMED))
        return PROPERTIES, *chance.choice((("Get", GLib.Variant("(ss)", names)), ("GetAll", GLib.Variant("(s)", names[:1])), ("Set", GLib.Variant("(s)", names[:1]))))
    arguments = [value(chance) for _ in range(chance.randrange(5))]
    return chance.choice((PLAYER, PROPERTIES, ROOT, "org.freedesktop.DBus.Peer", "org.freedesktop.DBus.Introspectable", "x.y", None)), chance.choice(METHODS), \
        GLib.Variant.new_tuple(*arguments) if arguments else None


def send(connection, name, interface, method, arguments, path=OBJECT, answer=False):
    message = Gio.DBusMessage.new_method_call(name, path, interface, method)
    if arguments is not None:
        message.set_body(arguments)
    if not answer:
        message.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
        connection.send_message(message, Gio.DBusSendMessageFlags.NONE)
        return None
    return connection.send_message_with_reply_sync(message, Gio.DBusSendMessageFlags.NONE, int(40_000 * SLACK))[0]


def answers(bus, watch, what):
    """It plays a good file again after all that, and no question waited long."""
    slowest = watch.slowest()
    check(slowest < ANSWER_SECONDS * SLACK, f"{what}: the slowest answer took {slowest:.2f} s")
    wait(f"it is there after {what}", lambda: bus.state()[0], 10)
    return slowest


def plays(stage, bus, path):
    stage.player.start_another("--open", path).wait(20)
    wait("the good file plays", lambda: ignore_boxes(stage) or bus.state()[1] == address_of(path) and bus.state()[2] > 0, 12)


def ignore_boxes(stage):
    for box in stage.player.boxes():
        stage.desk.focus(box)
        stage.desk.key("Return")
    return False


def two_songs(stage):
    return [tone(stage.media / f"{name}.wav", hz, 60) for name, hz in (("first", 440), ("second", 554))]


@story("hostile: two thousand made-up calls on the message bus, of any type, are answered, and it plays on")
def bus_messages(stage):
    first, second = two_songs(stage)
    stage.player.start(first)
    bus, chance, told = Bus(stage.session), random.Random(SEED), {}
    wait("the player on the bus", lambda: bus.state()[0], 10)
    stage.player.press(PLAY)
    with AnswerWatch(stage.session) as watch:
        for number in range(MESSAGES):
            interface, method, arguments = method_call(chance)
            path = OBJECT if number % 40 else chance.choice(("/", "/a", OBJECT + "/x"))
            answer = send(bus.connection, NAME, interface, method, arguments, path, number % 4 == 0)
            if answer is not None:
                told[answer.get_error_name() or "done"] = told.get(answer.get_error_name() or "done", 0) + 1
            if number % 100 == 0:
                ignore_boxes(stage)
                check(stage.player.running(), f"it ended at message {number}: {interface} {method} {arguments}")
        wait("the last one is answered", lambda: ignore_boxes(stage) or send(bus.connection, NAME, PLAYER, "Stop", None, answer=True).get_error_name() is None)
        stage.leave_text("bus", f"{MESSAGES} messages, slowest answer {answers(bus, watch, 'the messages'):.2f} s; {told}\n")
    check(told.get("done", 0) > 50 and len(told) > 3, f"answers of all sorts: {told}")
    plays(stage, bus, second)
    equal(stage.player.power_off(), 0, "exit code")


@story("hostile: calls in crowds, of sixteen megabytes and of callers that are gone are answered, and it plays on")
def bus_crowds(stage):
    first, second = two_songs(stage)
    stage.player.start(first)
    bus = Bus(stage.session)
    wait("the player on the bus", lambda: bus.state()[0], 10)
    with AnswerWatch(stage.session) as watch:
        for _ in range(CROWD):
            send(bus.connection, NAME, PLAYER, "PlayPause", None)
        bus.connection.flush_sync(None)
        crowd = answers(bus, watch, "the crowd")
        for text in ("x" * (16 << 20), "file:///" + "%41" * (5 << 20) + ".wav"):
            equal(send(bus.connection, NAME, PLAYER, "OpenUri", GLib.Variant("(s)", (text,)), answer=True).get_message_type(), Gio.DBusMessageType.ERROR, "answer to a long address")
        for _ in range(40):  # gone before they are answered
            caller = Bus(stage.session)
            caller.connection.call(NAME, OBJECT, PROPERTIES, "GetAll", GLib.Variant("(s)", (PLAYER,)), None, Gio.DBusCallFlags.NONE, -1, None, None)
            caller.close()
        stage.leave_text("bus", f"slowest answer to the crowd {crowd:.2f} s, after it {answers(bus, watch, 'long ones'):.2f} s\n")
    plays(stage, bus, second)
    equal(stage.player.power_off(), 0, "exit code")


def socket_of(stage):
    """Where the player takes files over."""
    runtime = stage.session.folder / "run" / "corvane"
    found = [path for path in runtime.iterdir() if path.name.startswith("corvane-") and stat.S_ISSOCK(path.stat().st_mode)]
    equal(len(found), 1, "sockets")
    return str(found[0])


def says(chance, songs):
    """Bytes for the socket."""
    kind = chance.randrange(7)
    if kind == 0:
        return chance.randbytes(chance.randrange(5000))
    if kind == 1:
        return b"\0" * chance.randrange(5000)
    if kind == 2:
        return os.fsencode(chance.choice(songs)) + b"\0" * (chance.random() < 0.5)
    if kind == 3:
        return b"\0".join(os.fsencode(f"/nowhere/{n}.wav") for n in range(chance.randrange(400))) + b"\0"
    if kind == 4:
        return b"/dev/zero\0/proc/self/mem\0../x.wav\0" + b"/tmp/" + b"a" * 5000 + b".wav\0"
    if kind == 5:
        return b"x" * (5 << 20) if chance.random() < 0.1 else b"\xff\xfe.wav\0" * 900
    return b""


@story("hostile: made-up calls on the socket that takes files over are read or dropped, and it plays on")
def socket_calls(stage):
    songs = two_songs(stage)
    stage.player.start(songs[0])
    bus, chance, place = Bus(stage.session), random.Random(SEED), socket_of(stage)
    wait("the player on the bus", lambda: bus.state()[0], 10)
    kept = []
    with AnswerWatch(stage.session) as watch:
        for number in range(CALLS):
            call = socket.socket(socket.AF_UNIX)
            call.settimeout(5 * SLACK)
            try:
                call.connect(place)
                call.sendall(says(chance, songs))
            except (BrokenPipeError, ConnectionResetError, BlockingIOError):
                pass  # dropped: it said too much, or too many spoke
            if number % 50 == 7:
                kept.append(call)  # and says no more
            elif number % 9 == 0:
                call.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                call.close()
            else:
                call.close()
            if number % 40 == 0:
                ignore_boxes(stage)
                check(stage.player.running(), f"it ended at call {number}")
        stage.leave_text("socket", f"{CALLS} calls, slowest answer {answers(bus, watch, 'the calls'):.2f} s\n")
    for call in kept:
        call.close()
    wait("it takes calls again", lambda: handed(stage, bus, songs[1]), 20, 0.5)
    equal(stage.player.power_off(), 0, "exit code")


def handed(stage, bus, path):
    ignore_boxes(stage)
    stage.player.start_another("--open", path).wait(20)
    return bus.state()[1] == address_of(path)


DRAGGED = [
    {"text/uri-list": b""}, {"text/uri-list": b"\0" * 5000}, {"text/uri-list": b"\r\n" * 200_000},
    {"text/uri-list": b"file:///nowhere.wav\r\n" * 100_000}, {"text/uri-list": b"file:///tmp/" + b"%41" * 1_000_000 + b".wav"},
    {"text/uri-list": b"http://127.0.0.1:9/a.wav\r\nfile://other/a.wav\r\n#file:///a.wav\r\nFILE:///dev/zero\r\n"},
    {"text/uri-list": b"file:///%00a.wav\r\nfile:///%zz.wav\r\nfile:///%\r\n"}, {"text/uri-list": bytes(range(256)) * 400},
    {"text/plain": b"file:///a.wav"}, {"text/x-moz-url": b"\xff\xfe" * 900}, {"application/octet-stream": bytes(3_000_000)},
    {"image/png": b"\x89PNG" + bytes(900)}, {"x" * 200: b"x"}, {"application/x-color": b"\xff" * 3, "text/html": b"<b>" * 9000},
    {f"text/kind{n}": b"x" for n in range(300)}, {"text/uri-list": b"x" * (24 << 20)},
]


@story("hostile: drags that lie, are too large or are never finished change nothing but the list, and it plays on")
def drags(stage):
    songs = two_songs(stage)
    stage.player.start(songs[0])
    bus, source = Bus(stage.session), Dragging(stage.session)
    wait("the player on the bus", lambda: bus.state()[0], 10)
    place, panel, slow = stage.player.button(PLAY), stage.player.window, []
    with AnswerWatch(stage.session) as watch:
        for offered in DRAGGED:
            source.drop(panel, place, offered)
            slow.append(answers(bus, watch, f"a drag of {next(iter(offered))[:30]}"))
        for name in ("XdndPosition", "XdndDrop", "XdndLeave", "XdndStatus", "XdndFinished", "XdndEnter", "WM_PROTOCOLS", "_NET_WM_STATE", "_NET_WM_PING", "_XEMBED", "MANAGER"):
            for numbers in ((), (-1, -1, -1, -1), (1 << 31, 1 << 63, 7, 9), (0xFF << 24, 1, 2, 3)):
                source.tell(panel.id, name, *numbers)
        slow.append(answers(bus, watch, "messages out of order"))
        text = "".join(f"{address_of(path)}\r\n" for path in songs).encode()
        check(source.drop(panel, place, {"text/uri-list": text}), "a good drag is taken")
        source.drop_and_go(panel, place, "text/uri-list")
        wait("an answer after a drag that was never handed over", lambda: watch.take()[1], TOOL_KIT_SECONDS)
        check(source.drop(panel, place, {"text/uri-list": text}), "a good drag is taken after it")
    stage.leave_text("drags", f"slowest answer {max(slow):.2f} s\n")
    source.close()
    stage.player.key("z")
    wait("a good file plays", lambda: bus.state()[1] == address_of(songs[0]) and bus.state()[2] > 0)
    equal(stage.player.power_off(), 0, "exit code")
