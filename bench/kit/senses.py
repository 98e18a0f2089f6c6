# SPDX-License-Identifier: GPL-3.0-or-later
"""What is seen and heard, each with the monotonic clock's time of it."""

import os
import subprocess
import threading
import time

import numpy as np

from harness.expect import StoryFailure

RATE = 44100
FRAME_BYTES = 4
SETTLED_FRAMES = RATE
LOUD = 0.03  # of full scale; the tones that are measured have 0.4
LEFT, RIGHT = 0, 1


class Eyes:
    """The helper x_watch: windows and pixels as they change, and keys pressed at a known time."""

    def __init__(self, session, program):
        self._process = session.popen([str(program), str(session.framebuffer)], stdin=subprocess.PIPE,
                                      stdout=subprocess.PIPE, text=True, bufsize=1)
        self._events = []
        self._news = threading.Condition()
        threading.Thread(target=self._read, daemon=True).start()

    def stop(self):
        self._process.stdin.close()
        self._process.wait(5)

    def _read(self):
        for line in self._process.stdout:
            at, kind, *rest = line.split()
            with self._news:
                self._events.append((float(at), kind, rest))
                self._news.notify_all()

    def _say(self, line):
        self._process.stdin.write(line + "\n")

    def watch(self, x, y, width, height):
        """Reports changes of these pixels; returns when it does."""
        began = time.monotonic()
        self._say(f"watch {max(0, int(x))} {max(0, int(y))} {int(width)} {int(height)}")
        self.wait_for("the eyes open", began, lambda kind, _: kind == "watching")

    def unwatch(self):
        self._say("unwatch")

    def press(self, character):
        """Presses and releases a key; returns when it was."""
        began = time.monotonic()
        self._say(f"key {ord(character):x}")
        return self.wait_for("a key pressed", began, lambda kind, _: kind == "key")

    def wait_for(self, what, since, matches, seconds=15.0):
        """The time of the first event after `since` that matches(kind, values)."""
        deadline = time.monotonic() + seconds
        looked = 0
        with self._news:
            while True:
                for at, kind, rest in self._events[looked:]:
                    if at >= since and matches(kind, rest):
                        return at
                looked = len(self._events)
                if not self._news.wait(max(0.0, deadline - time.monotonic())) and time.monotonic() >= deadline:
                    raise StoryFailure(f"not seen within {seconds:g} s: {what}")

    def wait_for_change(self, since, what="a change", seconds=15.0):
        return self.wait_for(what, since, lambda kind, _: kind == "changed", seconds)

    def wait_for_colour(self, since, colour, what="a colour", seconds=15.0, tolerance=40):
        """Until the middle of what is watched has the colour (red, green, blue)."""

        def near(kind, rest):
            return kind == "changed" and all(abs(a - b) <= tolerance for a, b in zip(bytes.fromhex(rest[0]), colour))

        return self.wait_for(what, since, near, seconds)

    def wait_for_size(self, since, width, height, seconds=15.0):
        """Until a window of the root has that size."""
        size = [str(width), str(height)]
        return self.wait_for(f"a window of {width}x{height}", since, lambda kind, rest: kind == "configure" and rest[3:] == size,
                             seconds)

    def wait_for_window(self, since, seconds=15.0):
        return self.wait_for("a window", since, lambda kind, _: kind == "map", seconds)


class Ear:
    """Hears the sink's monitor. A sample's time is when it is due at the sink, good to about a millisecond; the server
    mixes 5 ms ahead of it."""

    def __init__(self, session):
        command = ["parec", "-d", "nul.monitor", "--format=s16le", f"--rate={RATE}", "--channels=2", "--latency-msec=5"]
        self._process = session.popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self._data = bytearray()
        self._origin = None  # when sample 0 was heard: what came earliest tells, the rest was late
        self._lock = threading.Lock()
        threading.Thread(target=self._listen, daemon=True).start()
        self._wait("a sound server that can be heard", lambda: self._origin is not None, 10)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait(5)
        self._process.stdout.close()

    def _listen(self):
        descriptor = self._process.stdout.fileno()
        while True:
            try:
                part = os.read(descriptor, 1 << 16)
            except OSError:
                return
            if not part:
                return
            at = time.monotonic()
            with self._lock:
                before = self.frames()
                self._data += part
                if before < SETTLED_FRAMES:  # the server mixes ahead until it is asked not to: a burst tells no time
                    continue
                origin = at - before / RATE  # a part is mixed when its first sample is due
                self._origin = origin if self._origin is None else min(self._origin, origin)

    def _wait(self, what, condition, seconds):
        deadline = time.monotonic() + seconds
        while True:
            value = condition()
            if value is not None and value is not False:
                return value
            if time.monotonic() > deadline:
                raise StoryFailure(f"not heard within {seconds:g} s: {what}")
            time.sleep(0.02)

    def frames(self):
        return len(self._data) // FRAME_BYTES

    def _part(self, since):
        """Samples heard since a time, and the time of the first of them."""
        with self._lock:
            first = max(0, int((since - self._origin) * RATE))
            data = bytes(self._data[first * FRAME_BYTES : len(self._data) // FRAME_BYTES * FRAME_BYTES])
            start = self._origin + first / RATE
        return np.abs(np.frombuffer(data, "<i2").reshape(-1, 2).astype(np.float32) / 32768), start

    def channels(self, since):
        """Loudness of left and right by samples since a time, and the time of the first."""
        return self._part(since)

    def wait_for_sound(self, since, channel=None, seconds=15.0):
        """When the first loud sample of the channel (or of either one) was heard."""

        def heard():
            samples, start = self._part(since)
            level = samples.max(axis=1) if channel is None else samples[:, channel]
            loud = np.flatnonzero(level > LOUD)
            return max(since, start + loud[0] / RATE) if len(loud) else None

        return self._wait("a sound", heard, seconds)

    def wait_for_silence(self, since, lasting=0.25, seconds=15.0):
        """When the last loud sample before a silence was heard; `since` itself when it was silent already."""

        def silent():
            samples, start = self._part(since)
            loud = np.flatnonzero(samples.max(axis=1) > LOUD) if len(samples) else np.zeros(0, int)
            last = loud[-1] if len(loud) else 0
            return max(since, start + last / RATE) if len(samples) - last > lasting * RATE else None

        return self._wait("silence", silent, seconds)
