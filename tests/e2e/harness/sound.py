# SPDX-License-Identifier: GPL-3.0-or-later
"""Records what the null sink plays and recognises tones in it."""

import dataclasses
import os
import subprocess
import wave
from itertools import zip_longest

import numpy as np

from session import poll

from .expect import StoryFailure, wait

RATE = 44100
FRAME_BYTES = 4  # two channels of 16 bits
WINDOW, HOP = 4096, 512  # 93 ms, 12 ms
BLOCK = 220  # samples, 5 ms
MOMENT = 0.1  # seconds that are listened to at a time
QUIET = 0.004  # root mean square of a full scale of 1
SAME_PITCH = 0.02  # a part of the frequency; a semitone is 0.059
LOWEST_HZ, HIGHEST_HZ = 150, 5000
UNSTEADY = -1.0  # a pitch that is none: something sounds, but too little of it
LEAST_HEARD = 0.03  # seconds: with less, the peak of a tone of LOWEST_HZ lies anywhere (up to 23 ms), and of 440 Hz up to 8
LONGEST_GAP = 0.5  # seconds of a sound that a busy machine drops: what feeds it was held for them and for what was ahead
LENGTH_ERROR = 0.4  # seconds: a busy machine begins a tone late; far less than one that is heard twice


@dataclasses.dataclass
class Tone:
    """One steady frequency: hertz, and seconds since the recording began."""

    hz: float
    start: float
    end: float

    @property
    def length(self):
        return self.end - self.start

    def __str__(self):
        return f"{self.hz:.0f} Hz {self.start:.2f}-{self.end:.2f}"


def same_pitch(hz, other):
    return hz > 0 and abs(hz / other - 1) < SAME_PITCH


def pitch(samples):
    """Frequency in hertz of the strongest tone, 0 when it is quiet."""
    if len(samples) < 256 or np.sqrt(np.mean(samples**2)) < QUIET:
        return 0.0
    spectrum = np.abs(np.fft.rfft(samples * np.hanning(len(samples))))
    low, high = (int(hz * len(samples) / RATE) for hz in (LOWEST_HZ, HIGHEST_HZ))
    peak = low + int(np.argmax(spectrum[low:high]))
    left, middle, right = np.log(spectrum[peak - 1 : peak + 2] + 1e-12)
    bend = left - 2 * middle + right
    return (peak + (0.5 * (left - right) / bend if bend else 0.0)) * RATE / len(samples)


def pitch_of_moment(samples):
    """The same of a moment, 0 when it is quiet; UNSTEADY when what is heard in it is so little that it may be the rest of any
    tone that has just ended, or the begin of one."""
    blocks = samples[: len(samples) // BLOCK * BLOCK].reshape(-1, BLOCK)
    loud = np.sqrt(np.mean(blocks**2, axis=1)) >= QUIET
    hz = pitch(samples)
    return UNSTEADY if hz and np.count_nonzero(loud) * BLOCK < LEAST_HEARD * RATE else hz


def tones_in(samples, shortest=0.06):
    """The tones of a recording, in order. Gaps and changes shorter than `shortest` seconds do not count."""
    found, pitches = [], []
    for begin in range(0, max(0, len(samples) - WINDOW), HOP):
        hz = pitch(samples[begin : begin + WINDOW])
        at = (begin + WINDOW / 2) / RATE
        if hz and found and same_pitch(hz, found[-1].hz) and at - found[-1].end < 3 * HOP / RATE:
            found[-1].end = at
            pitches[-1].append(hz)
        elif hz:
            found.append(Tone(hz, at, at))
            pitches.append([hz])
    for tone, heard in zip(found, pitches):
        tone.hz = float(np.median(heard))  # a window with the tone's begin in it errs
    return [tone for tone in found if tone.length >= shortest]


def bridge(tones, longest_gap):
    """The tones with those of a pitch joined that follow each other after so short a gap, seconds."""
    joined = []
    for each in tones:
        same = joined and abs(each.hz / joined[-1].hz - 1) < 2 * SAME_PITCH  # both may err
        if same and each.start - joined[-1].end <= longest_gap:
            joined[-1].end = each.end
        else:
            joined.append(each)
    return joined


class Recorder:
    """A running recording of the sink's monitor. Times are seconds since begin() was called last."""

    def __init__(self, session, path):
        self.path = path
        self._origin = 0  # bytes
        self._file = open(path, "wb")
        command = ["parec", "-d", "nul.monitor", "--format=s16le", f"--rate={RATE}", "--channels=2", "--latency-msec=20"]
        self._process = session.popen(command, stdout=self._file, stderr=subprocess.DEVNULL)
        wait("the recording begins", lambda: self.now() > 0, 10)

    def stop(self):
        self._process.terminate()
        self._process.wait()
        self._file.close()

    def begin(self):
        """Another story begins: what was recorded before does not count. The end of what sounded may be recorded late."""
        poll(lambda: self.now() < MOMENT or not self.pitch_now(), 3)
        self._origin = os.path.getsize(self.path) // FRAME_BYTES * FRAME_BYTES

    def now(self):
        return (os.path.getsize(self.path) - self._origin) // FRAME_BYTES / RATE

    def _read(self, start, end):
        """Pairs of samples of a part, full scale 1."""
        first = int(max(0.0, start) * RATE)
        count = -1 if end is None else max(0, int(end * RATE) - first) * 2
        data = np.fromfile(self.path, "<i2", count, offset=self._origin + first * FRAME_BYTES)
        return data[: len(data) // 2 * 2].reshape(-1, 2) / 32768.0

    def samples(self, start=0.0, end=None):
        """Mono samples of a part, full scale 1."""
        return self._read(start, end).mean(axis=1)

    def channels(self, start, end=None):
        """Root mean square of the left and the right channel in a part."""
        pairs = self._read(start, end)
        return tuple(np.sqrt(np.mean(pairs**2, axis=0))) if len(pairs) else (0.0, 0.0)

    def pitch_now(self):
        return pitch_of_moment(self.samples(self.now() - MOMENT))

    def wait_for(self, hz, seconds=6.0):
        """Until that tone sounds, or has sounded since the last look; returns about when it was heard."""
        looked = self.now()

        def heard():
            nonlocal looked
            before, looked = looked, self.now()
            ends = np.arange(looked, before, -MOMENT / 2) if looked > before else [looked]
            return any(same_pitch(pitch_of_moment(self.samples(end - MOMENT, end)), hz) for end in ends)

        wait(f"a tone of {hz:.0f} Hz (last {self.pitch_now():.0f} Hz)", heard, seconds)
        return self.now()

    def expect_steady(self, hz, seconds, longest_gap=0.3):
        """For so long from now on that tone sounds and no other. longest_gap: seconds of silence that a busy machine may leave."""
        begin = self.now()
        wait("the recording goes on", lambda: self.now() >= begin + seconds, seconds + 5)
        heard = bridge(self.tones(begin, begin + seconds), longest_gap)
        whole = len(heard) == 1 and same_pitch(heard[0].hz, hz) and heard[0].start - begin <= longest_gap and begin + seconds - heard[0].end <= longest_gap
        if not whole:
            raise StoryFailure(f"{hz:.0f} Hz does not sound on from {begin:.2f} s: {', '.join(map(str, heard)) or 'nothing'}")

    def wait_for_silence(self, seconds=4.0, lasting=0.3):
        wait("silence", lambda: np.max(np.abs(self.samples(self.now() - lasting)), initial=0.0) < QUIET, seconds)
        return self.now() - lasting

    def last_tone(self, start=0.0, end=None):
        """The last tone that was heard in a part, of one piece with what a busy machine cut off of it."""
        return bridge(self.tones(start, end), LONGEST_GAP)[-1]

    def tones(self, start=0.0, end=None):
        shift = max(0.0, start)
        return [Tone(t.hz, t.start + shift, t.end + shift) for t in tones_in(self.samples(start, end))]

    def first_tone(self, start, seconds=3.0):
        """The first tone heard after a time."""
        return wait(f"a tone after {start:.1f} s", lambda: self.tones(start), seconds, 0.1)[0]

    def expect_order(self, expected, start=0.0, end=None):
        """These frequencies were heard in this order, others between them aside; returns the tones that matched."""
        heard = self.tones(start, end)
        rest, matched = iter(heard), []
        for hz in expected:
            for tone in rest:
                if same_pitch(tone.hz, hz):
                    matched.append(tone)
                    break
            else:
                told = ", ".join(str(t) for t in heard[-24:]) or "nothing"
                raise StoryFailure(f"{hz:.0f} Hz (number {len(matched) + 1} of {len(expected)}) was not heard; heard {told}")
        return matched

    def expect_exactly(self, expected, start=0.0, end=None, longest_gap=0.0):
        """These tones were heard in this order, each once, and no other; returns them. Each is hertz, or (hertz, seconds or
        None): two of a pitch that follow each other without a gap are heard as a long one, which only its length tells.
        longest_gap: seconds of silence inside a tone that a busy machine may leave."""
        wanted = [one if isinstance(one, tuple) else (one, None) for one in expected]
        heard = bridge(self.tones(start, end), longest_gap)
        for number, ((hz, seconds), tone) in enumerate(zip_longest(wanted, heard, fillvalue=(0, None))):
            sounding = isinstance(tone, Tone)
            right = sounding and hz and same_pitch(tone.hz, hz) and (seconds is None or abs(tone.length - seconds) <= LENGTH_ERROR)
            if not right:
                told = ", ".join(str(t) for t in heard[max(0, number - 6) : number + 18]) or "nothing"
                wish = f"{hz:.0f} Hz" + (f" of {seconds:.2f} s" if seconds else "") if hz else "nothing more"
                raise StoryFailure(f"number {number + 1} of {len(wanted)} is {tone if sounding else 'nothing'}, expected {wish}; "
                                   f"heard around it {told}")
        return heard

    def save(self, path):
        with wave.open(str(path), "wb") as out, open(self.path, "rb") as raw:
            out.setnchannels(2)
            out.setsampwidth(2)
            out.setframerate(RATE)
            raw.seek(self._origin)
            out.writeframes(raw.read())


def read_notes(path):
    """The notes of the samples: {file: [(hertz, start, length)]}, seconds."""
    sounds = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        head, _, body = line.partition(": ")
        if body and not line.startswith("#") and " " not in head:
            notes = (note.replace("@", "-").split("-") for note in body.split())
            sounds[head] = [tuple(map(float, note)) for note in notes]
    return sounds
