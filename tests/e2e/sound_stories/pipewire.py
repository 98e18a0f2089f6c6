# SPDX-License-Identifier: GPL-3.0-or-later
"""PipeWire with WirePlumber and its PulseAudio part: heard, its volume, devices that go and come, a server that starts again."""

from harness.expect import check, equal, wait
from harness.media import movie, tone
from harness.player import PAUSE, PLAY, VOLUME_DOWN, set_sink_volume, sink_volume
from harness.signs import told
from harness.sound import Recorder
from harness.story import story

HZ = 700
SECONDS = 60


def start(stage, path=None):
    stage.player.start(path or tone(stage.media / "song.wav", HZ, SECONDS))
    stage.player.press(PLAY)
    stage.sound.wait_for(HZ)


def goes_on(stage):
    """The time that is told does."""
    before = told(stage, "Time")
    wait("the time goes on", lambda: told(stage, "Time") not in (before, "", None))


def plays_on(session, name):
    """Whether the one sound that plays does so on that device."""
    numbers = dict(reversed(line.split("\t")[:2]) for line in session.run(["pactl", "list", "short", "sinks"]).splitlines())
    streams = [line.split("\t")[1] for line in session.run(["pactl", "list", "short", "sink-inputs"]).splitlines()]
    return streams == [numbers.get(name)]


# SESS-13: With PipeWire a sound and a movie are heard, pause and go on, and the panel's volume is the device's
@story("pipewire: a sound and a movie are heard and pause, the volume is the device's")
def heard(stage):
    for path in (None, movie(stage.media / "film.avi", "#32A046", HZ, SECONDS)):
        start(stage, path)
        goes_on(stage)
        stage.player.press(PAUSE)
        stage.sound.wait_for_silence()
        stage.player.press(PLAY)
        stage.sound.wait_for(HZ)
        set_sink_volume(stage.session, 40000)
        stage.player.press(VOLUME_DOWN)
        wait("a lower volume of the device", lambda: max(sink_volume(stage.session)) < 39990)
        set_sink_volume(stage.session, 65536)
        equal(stage.player.power_off(), 0, "exit code")


# SESS-14: With PipeWire a device that goes in the middle of a file leaves it playing on another, and one that becomes the default takes it
@story("pipewire: a device that goes leaves the sound to another, and the default that changes takes it along")
def device_goes(stage):
    session = stage.session
    other = session.make_sink("other")
    session.choose_sink("other")
    start(stage)
    wait("it sounds on the default", lambda: plays_on(session, "other"))
    session.run(["pactl", "unload-module", other])
    wait("it sounds on what is left", lambda: plays_on(session, "nul"))
    stage.sound.wait_for(HZ)  # the recording follows the default as well
    goes_on(stage)
    other = session.make_sink("other")
    session.choose_sink("other")
    wait("it sounds on the one that is back", lambda: plays_on(session, "other"), 8)
    goes_on(stage)
    session.choose_sink("nul")
    wait("it sounds on the default", lambda: plays_on(session, "nul"), 8)
    stage.sound.wait_for(HZ)
    session.run(["pactl", "unload-module", other])
    goes_on(stage)
    check(not stage.player.boxes(), "a box")
    equal(stage.player.power_off(), 0, "exit code")


# SESS-15: With PipeWire all of its parts may be killed in the middle of a file: time goes on, and when they are back, the sound
@story("pipewire: all of it is killed in the middle of a file and started again: time goes on, then the sound")
def server_restarted(stage):
    start(stage)
    stage.session.kill_sound()
    goes_on(stage)
    stage.session._start_sound()
    again = Recorder(stage.session, stage.folder / "again.raw")
    again.begin()
    try:
        again.wait_for(HZ, 12)
        goes_on(stage)
        stage.player.press(PAUSE)
        again.wait_for_silence()
    finally:
        again.stop()
    equal(stage.player.power_off(), 0, "exit code")
