# SPDX-License-Identifier: GPL-3.0-or-later
"""A second program on the display: it drops what it likes on a window by the protocol of dragging, types keys and lists windows,
without a process for each."""

import ctypes
import select
import struct
import time

from .desk import Window
from .expect import SLACK, StoryFailure

CLIENT_MESSAGE, SELECTION_REQUEST, SELECTION_NOTIFY = 33, 30, 31
PROPERTY_NEW, ANY, EVENT_BYTES = 0, 0, 192
VERSION = 5


def libraries():
    x, test = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
    pointer, number = ctypes.c_void_p, ctypes.c_ulong
    x.XOpenDisplay.restype = pointer
    x.XOpenDisplay.argtypes = [ctypes.c_char_p]
    x.XDefaultRootWindow.restype = number
    x.XDefaultRootWindow.argtypes = [pointer]
    x.XInternAtom.restype = number
    x.XInternAtom.argtypes = [pointer, ctypes.c_char_p, ctypes.c_int]
    x.XCreateSimpleWindow.restype = number
    x.XCreateSimpleWindow.argtypes = [pointer, number, *[ctypes.c_int] * 2, *[ctypes.c_uint] * 3, number, number]
    x.XSetSelectionOwner.argtypes = [pointer, number, number, number]
    x.XSendEvent.argtypes = [pointer, number, ctypes.c_int, ctypes.c_long, ctypes.c_char_p]
    x.XChangeProperty.argtypes = [pointer, number, number, number, ctypes.c_int, ctypes.c_int, ctypes.c_char_p, ctypes.c_int]
    x.XNextEvent.argtypes = [pointer, ctypes.c_char_p]
    x.XPending.argtypes = x.XFlush.argtypes = x.XConnectionNumber.argtypes = x.XCloseDisplay.argtypes = [pointer]
    x.XSync.argtypes = [pointer, ctypes.c_int]
    x.XFree.argtypes = [pointer]
    x.XGetWindowProperty.argtypes = [pointer, number, number, ctypes.c_long, ctypes.c_long, ctypes.c_int, number, ctypes.POINTER(number),
                                     ctypes.POINTER(ctypes.c_int), ctypes.POINTER(number), ctypes.POINTER(number), ctypes.POINTER(pointer)]
    x.XSetInputFocus.argtypes = [pointer, number, ctypes.c_int, number]
    x.XStringToKeysym.restype = number
    x.XStringToKeysym.argtypes = [ctypes.c_char_p]
    x.XKeysymToKeycode.restype = ctypes.c_ubyte
    x.XKeysymToKeycode.argtypes = [pointer, number]
    test.XTestFakeKeyEvent.argtypes = [pointer, ctypes.c_uint, ctypes.c_int, number]
    return x, test


IGNORE = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda *_: 0)  # a window may go at any time


class Dragging:
    def __init__(self, session):
        self._x, self._test = libraries()
        self._x.XSetErrorHandler(IGNORE)
        self._display = self._x.XOpenDisplay(session.environment["DISPLAY"].encode())
        self._root = self._x.XDefaultRootWindow(self._display)
        self._own = self._x.XCreateSimpleWindow(self._display, self._root, 0, 0, 1, 1, 0, 0, 0)
        self._offered = {}  # target: bytes
        self._atoms = {}

    def close(self):
        self._x.XCloseDisplay(self._display)

    def _atom(self, name):
        if name not in self._atoms:
            self._atoms[name] = self._x.XInternAtom(self._display, name.encode(), 0)
        return self._atoms[name]

    # Windows and keys.

    def _property(self, window, name):
        """(bits of an element, bytes as the server sent them, elements of 32 bits as longs)."""
        kind, bits, count, left, data = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_void_p()
        failed = self._x.XGetWindowProperty(self._display, window, self._atom(name), 0, 1 << 16, 0, ANY, ctypes.byref(kind), ctypes.byref(bits),
                                            ctypes.byref(count), ctypes.byref(left), ctypes.byref(data))
        if failed or not data.value:
            return 0, b""
        try:
            return bits.value, ctypes.string_at(data.value, count.value * (8 if bits.value == 32 else bits.value // 8))
        finally:
            self._x.XFree(data)

    def _numbers(self, window, name):
        bits, data = self._property(window, name)
        return struct.unpack(f"{len(data) // 8}Q", data) if bits == 32 else ()

    def windows(self, pid):
        """A process's managed windows: [(id, title)]."""
        return [(window, self._property(window, "_NET_WM_NAME")[1].decode(errors="replace"))
                for window in self._numbers(self._root, "_NET_CLIENT_LIST") if self._numbers(window, "_NET_WM_PID") == (pid,)]

    def key(self, window, *names, held=None):
        """Presses keys in a window; held: a key that is down meanwhile."""
        self._x.XSetInputFocus(self._display, window, 1, 0)
        codes = [self._x.XKeysymToKeycode(self._display, self._x.XStringToKeysym(name.encode())) for name in ([held] if held else []) + list(names)]
        first = codes[:1] if held else []
        for code in first:
            self._test.XTestFakeKeyEvent(self._display, code, 1, 0)
        for code in codes[len(first):]:
            self._test.XTestFakeKeyEvent(self._display, code, 1, 0)
            self._test.XTestFakeKeyEvent(self._display, code, 0, 0)
        for code in first:
            self._test.XTestFakeKeyEvent(self._display, code, 0, 0)
        self._x.XSync(self._display, 0)

    # Dragging.

    def drop(self, window: Window, place, offered, seconds=10.0):
        """Drags what is offered ({type: bytes}) over a window and lets go there; returns whether the window took it. Fails when the
        window does not answer in time."""
        self._serve(lambda event: False, 0.05)  # what is still told of the one before
        self._offered = {self._atom(name): content for name, content in offered.items()}
        self._x.XSetSelectionOwner(self._display, self._atom("XdndSelection"), self._own, 0)
        types = [*self._offered, 0, 0, 0]
        many = len(self._offered) > 3
        if many:
            listed = b"".join(struct.pack("Q", each) for each in self._offered)
            self._x.XChangeProperty(self._display, self._own, self._atom("XdndTypeList"), 4, 32, PROPERTY_NEW, listed, len(self._offered))
        self._tell(window.id, "XdndEnter", VERSION << 24 | many, *types[:3])
        self._tell(window.id, "XdndPosition", 0, int(place[0]) << 16 | int(place[1]), 0, self._atom("XdndActionCopy"))
        status = self._await("XdndStatus", seconds)
        if not status[1] & 1:
            self._tell(window.id, "XdndLeave")
            return False
        self._tell(window.id, "XdndDrop", 0, 0)
        self._await("XdndFinished", seconds)
        return True

    def drop_and_go(self, window: Window, place, name):
        """Lets go and is never heard of again."""
        self._offered = {}
        self._x.XSetSelectionOwner(self._display, self._atom("XdndSelection"), self._own, 0)
        self._tell(window.id, "XdndEnter", VERSION << 24, self._atom(name))
        self._tell(window.id, "XdndPosition", 0, int(place[0]) << 16 | int(place[1]), 0, self._atom("XdndActionCopy"))
        self._tell(window.id, "XdndDrop", 0, 0)

    def paste(self, content, keys, seconds=3.0):
        """Has copied a text, and serves whoever pastes it by the keys."""
        text = self._atom("UTF8_STRING")
        self._offered = {self._atom("TARGETS"): struct.pack("I", text), text: content}
        self._x.XSetSelectionOwner(self._display, self._atom("CLIPBOARD"), self._own, 0)
        self._x.XFlush(self._display)
        keys()
        self._serve(lambda event: False, seconds)

    def tell(self, window, name, *numbers):
        """A message as it comes, whatever it says; nothing is offered, and who asks is told so for a moment."""
        self._offered = {}
        self._tell(window, name, *numbers)
        self._serve(lambda event: False, 0.05)

    def _tell(self, window, name, *numbers):
        words = [self._own, *numbers, 0, 0, 0, 0, 0][:5]
        event = struct.pack("iiQiiQQQii5Q", CLIENT_MESSAGE, 0, 0, 1, 0, 0, window, self._atom(name), 32, 0, *[word & (1 << 64) - 1 for word in words])
        self._x.XSendEvent(self._display, window, 0, 0, event.ljust(EVENT_BYTES, b"\0"))
        self._x.XFlush(self._display)

    def _await(self, name, seconds):
        """Serves what is asked for until that message comes; returns its numbers behind the sender's."""

        def meant(event):
            return struct.unpack_from("i", event)[0] == CLIENT_MESSAGE and struct.unpack_from("Q", event, 40)[0] == self._atom(name)

        event = self._serve(meant, seconds * SLACK)
        if event is None:
            raise StoryFailure(f"not within {seconds * SLACK:g} s: the window's {name}")
        return struct.unpack_from("5Q", event, 56)

    def _serve(self, meant, seconds):
        """Gives what is asked for, until an event is meant, which it returns; None when the time is over."""
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            if not self._x.XPending(self._display):
                select.select([self._x.XConnectionNumber(self._display)], [], [], 0.02)
                continue
            event = ctypes.create_string_buffer(EVENT_BYTES)
            self._x.XNextEvent(self._display, event)
            if struct.unpack_from("i", event)[0] == SELECTION_REQUEST:
                self._give(*struct.unpack_from("5Q", event, 40))
            elif meant(event):
                return event
        return None

    def _give(self, requestor, selection, target, kept, when):
        content = self._offered.get(target)
        if content is None:
            kept = 0
        else:
            self._x.XChangeProperty(self._display, requestor, kept, target, 8, PROPERTY_NEW, content, len(content))
        event = struct.pack("iiQiiQQQQQQ", SELECTION_NOTIFY, 0, 0, 1, 0, 0, requestor, selection, target, kept, when)
        self._x.XSendEvent(self._display, requestor, 0, 0, event.ljust(EVENT_BYTES, b"\0"))
        self._x.XFlush(self._display)
