# SPDX-License-Identifier: GPL-3.0-or-later
"""What locks a screen: a window over everything that nobody manages, which takes mouse and keyboard for itself."""

import ctypes
import subprocess
import sys
import time

DONE = 0  # of a grab


def lock(seconds):
    """Tries so long; prints "locked" when the screen is, and stays until it is killed."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    x11.XDefaultRootWindow.restype = x11.XCreateSimpleWindow.restype = ctypes.c_ulong
    root = ctypes.c_ulong(x11.XDefaultRootWindow(display))
    width, height = (call(display, 0) for call in (x11.XDisplayWidth, x11.XDisplayHeight))
    window = ctypes.c_ulong(x11.XCreateSimpleWindow(display, root, 0, 0, width, height, 0, ctypes.c_ulong(0), ctypes.c_ulong(0)))
    # XSetWindowAttributes: override_redirect is its eleventh field; CWOverrideRedirect is 1 << 9.
    attributes = (ctypes.c_long * 15)()
    ctypes.memmove(ctypes.addressof(attributes) + 88, ctypes.byref(ctypes.c_int(1)), 4)
    x11.XChangeWindowAttributes(display, window, ctypes.c_ulong(1 << 9), attributes)
    x11.XMapRaised(display, window)
    x11.XSync(display, 0)
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        keys = x11.XGrabKeyboard(display, window, 0, 1, 1, ctypes.c_ulong(0))
        mouse = x11.XGrabPointer(display, window, 0, 0, 1, 1, ctypes.c_ulong(0), ctypes.c_ulong(0), ctypes.c_ulong(0))
        if keys == mouse == DONE:
            print("locked", flush=True)
            while True:
                x11.XRaiseWindow(display, window)
                x11.XSync(display, 0)
                time.sleep(0.2)
        time.sleep(0.1)
    return 1


def locked_screen(session, seconds=3):
    """The process that has locked the screen, which its end unlocks; None where it could not."""
    process = session.popen([sys.executable, __file__, str(seconds)], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    if process.stdout.readline() == b"locked\n":
        return process
    process.wait()
    return None


if __name__ == "__main__":
    sys.exit(lock(float(sys.argv[1])))
