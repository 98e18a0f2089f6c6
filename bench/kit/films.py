# SPDX-License-Identifier: GPL-3.0-or-later
"""What films of today's sizes cost on a machine without a graphics card, beside other players that draw by software, by turns: each
on the whole screen, the sound server left out, the display's server counted in."""

import contextlib

from . import WORKPLACE, material, peers
from .cost import LONG_SECONDS, SETTLE_SECONDS, memory, processor_seconds
from .stage import wait_quietly
from .table import Figure, ratio

PART_SECONDS, PARTS = 5, 14
FILMS = (("1080p60 H.264", "film1080.mp4", "1920x1080", 60), ("4K30 H.264", "film2160.mp4", "3840x2160", 30))
MOST = 0.8  # of the better one's processor


def film(name, size, rate):
    """A film of noise that moves over a test card, joined of parts that are made once."""
    path = WORKPLACE / "media" / name
    if path.exists():
        return path
    part = path.with_name(f"part_{name}")
    material.encode(["-f", "lavfi", "-i", f"testsrc2=s={size}:r={rate}:d={PART_SECONDS}", "-f", "lavfi", "-i",
                     f"sine=frequency=523:duration={PART_SECONDS}", "-vf", "noise=alls=6:allf=t", "-c:v", "libx264", "-preset", "veryfast",
                     "-crf", "24", "-g", "60", "-pix_fmt", "yuv420p", "-c:a", "aac", "-ac", "2"], part)
    listed = part.with_suffix(".txt")
    listed.write_text("".join(f"file '{part.name}'\n" for _ in range(PARTS)))
    material.encode(["-f", "concat", "-safe", "0", "-i", str(listed), "-c", "copy"], path)
    return path


@contextlib.contextmanager
def ours(stage, path):
    with stage.player([path], AUTOPLAY="ON", MOVIEZOOM=5, CONVENIENCES="ON", GRAPHICS="OFF") as player:
        yield player.process.pid


@contextlib.contextmanager
def mpv(stage, path):
    with stage.mpv("--fs", "--hwdec=no", path) as process:
        yield process.pid


@contextlib.contextmanager
def vlc(stage, path):
    player = peers.Vlc(stage)
    player.name = "vlcfilm"
    words = ("--fullscreen", "--vout=xcb_x11", "--avcodec-hw=none", "--no-video-title-show")
    with player.open(*words, path) as pid:
        yield pid


def spent(stage, pid):
    """Seconds of processor in 30 of the film, of the player and of the display's server."""
    both = pid, stage.session.pid_of("Xvfb")
    before = [processor_seconds(each) for each in both]
    wait_quietly(stage.seconds)
    return [(processor_seconds(each) - then) / stage.seconds * LONG_SECONDS for each, then in zip(both, before)]


def film_figures(stage):
    players = {"ours": ours, "mpv": mpv, "vlc": vlc}
    for name, file, size, rate in FILMS:
        film(file, size, rate)
        path = stage.media / file  # no dot in its path
        costs = {player: [] for player in players}
        held = {player: [] for player in players}
        for _ in range(stage.runs):
            for player, play in players.items():
                with play(stage, path) as pid:
                    wait_quietly(2 * SETTLE_SECONDS)
                    costs[player].append(spent(stage, pid))
                    held[player].append(memory(pid))
        for player in players:
            yield Figure(f"processor, {name}, {player}", [sum(each) for each in costs[player]], "s in 30", None, "with the display's server")
            yield Figure(f"processor, {name}, {player}, the display's part", [each[1] for each in costs[player]], "s in 30")
            yield Figure(f"memory (PSS), {name}, {player}", held[player], "MB")
        totals = {player: [sum(each) for each in costs[player]] for player in players}
        better = min(("mpv", "vlc"), key=lambda player: sum(totals[player]))
        yield ratio(f"processor, {name}, beside {better}, the better one", totals["ours"], totals[better], MOST)
