# SPDX-License-Identifier: GPL-3.0-or-later
"""Watches what the panel says and what the screen's middle shows while files play, each with the time when it stood there.

The panel's labels are looked at as pictures, straight out of the frame buffer, so that the times are those of the screen; at
the same time their texts are read from what assistive programs are told. A picture and a text that stand together belong
together: each picture must have one text, and each text one picture.
"""

import collections
import dataclasses
import threading
import time

import numpy as np

from .accessibility import Accessibility
from .desk import COLOUR_TOLERANCE, rgb
from .expect import check, wait
from .lateness import waited
from .player import KIND_RECORD, NUMBER_RECORD, SLIDER_RECORD, TIME_RECORD, TITLE_RECORD, TOTAL_RECORD

LABELS = {"FileNo": NUMBER_RECORD, "Tittle": TITLE_RECORD, "Display": KIND_RECORD, "Time": TIME_RECORD,
          "Total FileNo": TOTAL_RECORD}
BAR, MIDDLE = "bar", "middle"
LOOK_PAUSE, READ_PAUSE = 0.01, 0.02  # seconds between two looks at the screen, and two readings of the texts
TORN = 0.1  # seconds; a picture that stood shorter can be one half drawn
FIRST_READINGS = 10  # before anything happens
AGREED = 0.75  # a part of the readings; the others fell between a text's change and its drawing
FEW = 4  # readings that decide nothing when they disagree
READ = 0.5  # a part of the time: what stood there so long is read on a busy machine too
CLOCK_WINDOW = 0.5  # seconds of recording behind a time in which the recording's delay is measured


@dataclasses.dataclass
class Standing:
    """Something that stood unchanged from `first` to `last`, seconds of the monotonic clock, both times surely."""

    what: object
    first: float
    last: float

    def overlap(self, begin, end):
        """The part that falls between two times: (first, last); None when none does."""
        first, last = max(self.first, begin), min(self.last, end)
        return (first, last) if first <= last else None


def see(standings, what, before, after):
    """A look that began and ended at these times."""
    if standings and standings[-1].what == what:
        standings[-1].last = before
    else:
        standings.append(Standing(what, after, before))


class PanelWatch:
    """A context: watches from its begin to its end. Afterwards texts(), bar() and middle() say what stood there."""

    def __init__(self, stage):
        self.stage = stage
        self._places = {name: stage.player.place(record) for name, record in LABELS.items()}
        x, y, width, height = stage.player.place(SLIDER_RECORD)
        self._places[BAR] = x, y + height // 2, width, 1
        screen = stage.desk.screen
        self._places[MIDDLE] = screen.width // 2 - 2, screen.height // 2 - 2, 5, 5
        self._pictures = {name: [] for name in self._places}
        self._readings = []
        self._clock = []  # (monotonic clock, seconds of the recording)
        self._held = []  # (monotonic clock, seconds that the player has waited for a processor so far)
        self._done = threading.Event()
        self._threads = [threading.Thread(target=work) for work in (self._look, self._read)]

    def __enter__(self):
        for thread in self._threads:
            thread.start()
        wait("the panel is looked at and read", lambda: self._clock and len([r for r in self._readings if r]) >= FIRST_READINGS, 10)
        return self

    def __exit__(self, *_):
        self._done.set()
        for thread in self._threads:
            thread.join()

    def _look(self):
        screen, player = self.stage.desk.screen, self.stage.player.process.pid
        while not self._done.wait(LOOK_PAUSE):
            self._clock.append((time.monotonic(), self.stage.sound.now()))
            self._held.append((time.monotonic(), waited(player) or 0.0))
            before = time.monotonic()
            now = {name: screen.pixels(*place) for name, place in self._places.items()}
            after = time.monotonic()
            for name, pixels in now.items():
                see(self._pictures[name], pixels, before, after)

    def _read(self):
        reader = Accessibility(self.stage.session)  # one of its own: the story asks its own things meanwhile
        try:
            while not self._done.wait(READ_PAUSE):
                self._readings.append(reader.labels(self.stage.player.process.pid))
        finally:
            reader.stop()

    def clock(self, recorded):
        """When a time of the recording was, by the monotonic clock. The recording is written late at times, never early; what was
        held back comes in one piece, which may be longer than the window."""
        behind = [(now, at) for now, at in self._clock if at >= recorded] or self._clock[-1:]  # it goes on behind the last look
        return recorded + min(now - at for now, at in behind if at <= behind[0][1] + CLOCK_WINDOW)

    def held(self, begin, end):
        """Seconds that the player's thread of the panel waited for a processor between two times: so late it may say something."""
        told = [late for now, late in self._held if begin <= now <= end]
        return max(0.0, told[-1] - told[0]) if told else 0.0

    @property
    def began(self):
        return self._clock[0][0]

    def texts(self):
        """The texts as they stood on the screen, in order: {label: [Standing]}."""
        return {name: self._texts_of(name) for name in LABELS}

    def _texts_of(self, name):
        standings = self._pictures[name]
        said = collections.defaultdict(collections.Counter)
        place = 0
        for before, text, after in (reading[name] for reading in self._readings if name in reading):
            while place + 1 < len(standings) and standings[place + 1].first <= before:
                place += 1
            if standings[place].first <= before and after <= standings[place].last:
                said[standings[place].what][text] += 1
        texts = {}
        for picture, readings in said.items():
            text, count = readings.most_common(1)[0]
            if count >= AGREED * readings.total():
                texts[picture] = text
            else:
                check(readings.total() <= FEW, f"{name}: one picture was read as {dict(readings)}")
        unread = sum(s.last - s.first for s in standings if s.what not in texts)
        check(unread <= (1 - READ) * (standings[-1].last - standings[0].first), f"{name}: for {unread:.1f} s stood there what was never read")
        pictures = {s.what for s in standings if s.what in texts and s.last - s.first >= TORN}
        check(len({texts[each] for each in pictures}) == len(pictures), f"{name}: one text has more than one picture")
        return [Standing(texts[s.what], s.first, s.last) for s in standings if s.what in texts]

    def bar(self):
        """How much of the slider was filled, in order: [Standing], parts of 1."""
        colour = self.stage.player.slider_colour()

        def filled(row):
            pixels = np.frombuffer(row, np.uint8).reshape(-1, 4)[:, 2::-1].astype(int)
            return float(np.mean(np.abs(pixels - colour).max(axis=1) <= 40))

        return [Standing(filled(s.what), s.first, s.last) for s in self._pictures[BAR]]

    def middle(self, colours):
        """Which of the colours "#RRGGBB" stood in the middle of the screen, in order: [Standing]; None: none of them."""
        found = []
        for seen in self._pictures[MIDDLE]:
            mean = np.frombuffer(seen.what, np.uint8).reshape(-1, 4)[:, 2::-1].mean(axis=0)
            colour = next((c for c in colours if np.abs(mean - rgb(c)).max() <= COLOUR_TOLERANCE), None)
            if found and found[-1].what == colour:
                found[-1].last = seen.last
            else:
                found.append(Standing(colour, seen.first, seen.last))
        return found


def table(watch, sounds, colours):
    """A line for each change of what is heard, seen and said: text to be read by a person. sounds, colours: [Standing]."""
    texts, bar = watch.texts(), watch.bar()
    lines = [f"{'at s':>7}  {'heard':>7}  {'seen':<7}  {'no':<3}  {'title':<8}  {'display':<35}  {'time':<5}  of  bar"]
    changes = {s.first for column in (colours, *texts.values()) for s in column}
    changes |= {edge for s in (*sounds, *colours) for edge in (s.first, s.last + LOOK_PAUSE)}
    before = None
    for when in (change + LOOK_PAUSE / 2 for change in sorted(changes)):
        hz, colour = at(sounds, when), at(colours, when)
        told = [last_begun(texts[name], when) or "-" for name in ("FileNo", "Tittle", "Display", "Time", "Total FileNo")]
        row = "  ".join([f"{f'{hz:.0f} Hz' if hz else '-':>7}", f"{colour or '-':<7}"] +
                        [f"{text:<{width}}" for text, width in zip(told, (3, 8, 35, 5, 2))])
        if row != before:
            lines.append(f"{when - watch.began:7.2f}  {row}  {last_begun(bar, when) or 0:.2f}")
        before = row
    return "\n".join(lines) + "\n"


def at(standings, when):
    """What stood there at a time; None: nothing."""
    return next((s.what for s in standings if s.first <= when <= s.last), None)


def last_begun(standings, when):
    """What stood there at a time, or before it until the next look."""
    return next((s.what for s in reversed(standings) if s.first <= when), None)
