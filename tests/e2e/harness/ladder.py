# SPDX-License-Identifier: GPL-3.0-or-later
"""Files that say at every second which one it is, by a tone and, in a movie, by a colour of its own."""

from PIL import Image

from .media import encode, steps, tone_samples, write_disc
from .sound import same_pitch

SECONDS = 18
GAP = 0.15  # seconds
TONES = [round(220 * 1.06**second) for second in range(SECONDS)]
LEVELS = (40, 125, 210)  # further apart than decoders err
COLOURS = [f"#{LEVELS[n % 3]:02X}{LEVELS[n // 3 % 3]:02X}{LEVELS[n // 9 % 3]:02X}" for n in range(1, SECONDS + 1)]


def second_of(hz):
    """Which second sounds; None: a tone of another file."""
    return next((second for second, tone in enumerate(TONES) if same_pitch(hz, tone)), None)


def sound(path):
    return steps(path, TONES)


def track(folder, after):
    """A disc image whose first track is the ladder, followed by a track of one tone; returns (cue, track paths)."""
    return write_disc(folder, [b"".join(tone_samples(hz, 1) for hz in TONES), tone_samples(after, 4)])


def movie(path, frames_a_second=25, size=(320, 240)):
    """AVI with motion JPEG and PCM: every frame is a key frame."""
    sounds = sound(path.with_name(f"{path.stem}_sound.wav"))
    stills = path.with_name(f"{path.stem}_stills")
    stills.mkdir()
    for second, colour in enumerate([*COLOURS, COLOURS[-1]]):  # the very last one is shown for a frame only
        Image.new("RGB", size, colour).save(stills / f"{second:02}.png")
    inputs = ["-framerate", "1", "-i", str(stills / "%02d.png"), "-i", str(sounds)]
    encode([*inputs, "-vf", f"fps={frames_a_second}", "-t", str(SECONDS), "-c:v", "mjpeg", "-q:v", "2", "-c:a", "pcm_s16le"], path)
    return path


def seconds_heard(tones):
    """The ladder's seconds as they were heard, in order: [[second, begin, end]]; a second with a short gap in it is one."""
    heard = []
    for each in tones:
        second = second_of(each.hz)
        if second is None:
            continue
        if heard and heard[-1][0] == second and each.start - heard[-1][2] < GAP:
            heard[-1][2] = each.end
        else:
            heard.append([second, each.start, each.end])
    return heard


def pieces(tones):
    """What was heard of the ladder, piece by piece, each played on without a jump back: [(begin, end)], seconds of it. The first
    second of a piece sounds to its end, the last one from its begin."""
    rounds = []
    for each in seconds_heard(tones):
        if not rounds or each[0] <= rounds[-1][-1][0]:
            rounds.append([])
        rounds[-1].append(each)
    found = []
    for heard in rounds:
        (first, begin, end), (last, last_begin, last_end) = heard[0], heard[-1]
        found.append((first + (1 - min(1, end - begin) if len(heard) > 1 else 0), last + min(1, last_end - last_begin)))
    return found
