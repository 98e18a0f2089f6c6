# SPDX-License-Identifier: GPL-3.0-or-later
"""The media interface on the message bus, as media keys and remote controls use it."""

import pathlib
import re
import subprocess
import time
import urllib.parse

from harness.expect import StoryFailure, check, equal, standing, steady, wait
from harness.media import movie, steps, tone
from harness.player import (EDITOR, NEXT, PAUSE, PLAY, REPEAT, REPEAT_LAMP, STOP, VOLUME_DOWN, sink_volume)
from harness.sound import same_pitch
from harness.story import story
from session import end_process

NAME = "org.mpris.MediaPlayer2.corvane"
OBJECT = "/org/mpris/MediaPlayer2"
PLAYER = "org.mpris.MediaPlayer2.Player"
TONES = (440, 554, 698)
STAIRS = (392, 440, 494, 554, 622, 698, 784, 880, 988, 1109, 1245, 1397, 1568, 1760)


class Remote:
    """playerctl and plain calls, from inside the session."""

    def __init__(self, stage, player="corvane"):
        self.stage = stage
        self.player = player

    def ctl(self, *words):
        """Output of one playerctl command; fails when playerctl does."""
        code, told = self.try_ctl(*words)
        if code:
            raise StoryFailure(f"playerctl {' '.join(map(str, words))}: {told}")
        return told

    def try_ctl(self, *words):
        """Exit code and what was said."""
        done = subprocess.run(["playerctl", "-p", self.player, *map(str, words)], env=self.stage.session.environment,
                              capture_output=True, text=True, timeout=30)
        return done.returncode, (done.stdout + done.stderr).strip()

    def call(self, method, *arguments, interface=PLAYER):
        """A call as it is; returns the answer or the error's name and text."""
        done = subprocess.run(["dbus-send", "--session", "--print-reply", f"--dest=org.mpris.MediaPlayer2.{self.player}",
                               OBJECT, f"{interface}.{method}", *arguments], env=self.stage.session.environment,
                              capture_output=True, text=True, timeout=30)
        return done.stdout + done.stderr

    def get(self, property_name):
        return self.call("Get", f"string:{PLAYER}", f"string:{property_name}", interface="org.freedesktop.DBus.Properties")

    def set(self, property_name, value):
        return self.call("Set", f"string:{PLAYER}", f"string:{property_name}", f"variant:{value}",
                         interface="org.freedesktop.DBus.Properties")

    def status(self):
        return self.ctl("status")

    def wait_for_status(self, status):
        wait(f"the status {status}", lambda: self.status() == status)

    def title(self):
        return self.ctl("metadata", "xesam:title")

    def wait_for_title(self, title):
        wait(f"the title {title}", lambda: self.title() == title)

    def position(self):
        return float(self.ctl("position"))

    def names(self):
        """Names of the players on the bus."""
        answer = self.stage.session.run(["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                         "org.freedesktop.DBus.ListNames"])
        return sorted(re.findall(r'"(org\.mpris\.MediaPlayer2\.corvane[^"]*)"', answer))

    def wait_for_name(self):
        wait("the player's name on the bus", self.names, 10)


class Listener:
    """What the player tells by itself: the monitor's text, one signal after the other."""

    def __init__(self, stage):
        self.path = stage.folder / "signals.log"
        self._log = open(self.path, "wb")
        self._process = stage.session.popen(["dbus-monitor", "--session", f"type='signal',path='{OBJECT}'"],
                                            stdin=subprocess.DEVNULL, stdout=self._log, stderr=self._log)
        wait("the monitor", lambda: "NameLost" in self.text() or "NameAcquired" in self.text())

    def __enter__(self):
        return self

    def __exit__(self, *_):
        end_process(self._process)
        self._log.close()

    def text(self):
        return self.path.read_text(errors="replace")

    def signals(self, holding):
        """The signals whose text holds a text."""
        return [part for part in re.split(r"^(?=signal )", self.text(), flags=re.M)[1:]
                if "member=NameAcquired" not in part and holding in part]

    def jumps(self):
        """Seconds to which the position was told to have jumped."""
        return [int(found[1]) / 1e6 for part in self.signals("member=Seeked") if (found := re.search(r"int64 (-?\d+)", part))]

    def wait_for(self, *texts):
        """Until one signal holds all the texts."""
        wait(f"a signal with {texts}", lambda: [s for s in self.signals(texts[0]) if all(text in s for text in texts)])


def three_files(stage, seconds=15):
    return [tone(stage.media / f"file{number}.wav", hz, seconds) for number, hz in enumerate(TONES, 1)]


def started(stage, *files):
    """The player with a list, and a remote control that sees it."""
    stage.player.start(*files)
    remote = Remote(stage)
    remote.wait_for_name()
    return remote


# REM-02
@story("media keys: play, pause, play again and stop")
def play_and_pause(stage):
    remote = started(stage, *three_files(stage))
    equal(remote.status(), "Stopped", "status at the start")
    remote.ctl("play")
    stage.sound.wait_for(TONES[0])
    remote.wait_for_status("Playing")
    remote.ctl("pause")
    stage.sound.wait_for_silence()
    remote.wait_for_status("Paused")
    held = remote.position()
    steady("the position while paused", lambda: remote.position() == held, 0.4)
    remote.ctl("pause")
    equal(remote.status(), "Paused", "status after a second pause")
    remote.ctl("play-pause")
    stage.sound.wait_for(TONES[0])
    remote.ctl("stop")
    stage.sound.wait_for_silence()
    equal(remote.status(), "Stopped", "status after stop")
    equal(remote.position(), 0.0, "position after stop")


# REM-04
@story("media keys: next and previous change the file while playing, at the first press")
def change_the_file(stage):
    remote = started(stage, *three_files(stage))
    remote.ctl("play")
    stage.sound.wait_for(TONES[0])
    remote.ctl("next")
    stage.sound.wait_for(TONES[1])
    remote.wait_for_title("file2")
    remote.ctl("previous")
    stage.sound.wait_for(TONES[0])
    remote.wait_for_title("file1")
    equal(remote.status(), "Playing", "status")


# REM-05
@story("media keys: next and previous change the file while paused, silently")
def change_the_file_while_paused(stage):
    clip = movie(stage.media / "clip.avi", "#2040C0", 880, 6)
    first, second, third = three_files(stage)
    remote = started(stage, first, second, clip, third)
    remote.ctl("play")
    stage.sound.wait_for(TONES[0])
    remote.ctl("pause")
    stage.sound.wait_for_silence()
    began = stage.sound.now()
    for title in ("file2", "clip", "file3"):
        remote.ctl("next")
        remote.wait_for_title(title)
        equal(remote.status(), "Paused", f"status at {title}")
    for title in ("clip", "file2"):
        remote.ctl("previous")
        remote.wait_for_title(title)
    equal(remote.status(), "Paused", "status")
    check(remote.position() < 0.05, f"position {remote.position()}")
    heard = stage.sound.tones(began)
    check(not heard, f"heard while paused: {heard}")
    remote.ctl("play")
    stage.sound.wait_for(TONES[1])


# REM-06
@story("media keys: next at the list's end stops; with repeat it goes around")
def the_lists_end(stage):
    remote = started(stage, *three_files(stage)[:2])
    remote.ctl("play")
    remote.ctl("next")
    stage.sound.wait_for(TONES[1])
    remote.ctl("next")
    stage.sound.wait_for_silence()
    equal((remote.status(), remote.title()), ("Stopped", "file1"), "behind the end")
    remote.ctl("loop", "Playlist")
    remote.ctl("play")
    remote.ctl("previous")
    stage.sound.wait_for(TONES[1])
    remote.ctl("next")
    stage.sound.wait_for(TONES[0])


# REM-08
@story("media keys: position, seeking and setting the position can be heard and are told")
def seeking(stage):
    stairs = steps(stage.media / "stairs.wav", STAIRS)
    remote = started(stage, stairs)
    remote.ctl("play")
    stage.sound.wait_for(STAIRS[1])
    with Listener(stage) as listener:
        asked, before, began = time.monotonic(), remote.position(), stage.sound.now()
        remote.ctl("position", "4+")
        jumped = wait("a signal of the jump", listener.jumps)[0]
        stage.sound.wait_for(STAIRS[int(jumped) + 1], 4)
        position, took = remote.position(), time.monotonic() - asked
        for what, told in (("signal", jumped), ("position", position)):
            check(before + 3.9 <= told <= before + 4 + took + 0.1, f"{what} {told}, {took:.2f} s behind {before}")
        over = STAIRS[int(jumped) - 2]  # whole between the place that was left and the place that was jumped to
        check(not [t for t in stage.sound.tones(began) if same_pitch(t.hz, over)], f"{over} Hz was heard, which was jumped over")
        remote.ctl("position", "2")
        stage.sound.wait_for(STAIRS[2], 4)
        wait("a signal for each", lambda: len(listener.signals("member=Seeked")) == 2)
        remote.ctl("pause")
        stage.sound.wait_for_silence()
        remote.call("Seek", "int64:-60000000")
        equal(remote.position(), 0.0, "position before the beginning")
        track = remote.ctl("metadata", "mpris:trackid").strip("'")
        remote.call("SetPosition", f"objpath:{track}", "int64:5000000")
        equal(remote.position(), 5.0, "set position")
        for other in ((f"objpath:{track}0", "int64:1000000"), (f"objpath:{track}", "int64:-1"),
                      (f"objpath:{track}", "int64:60000000")):
            remote.call("SetPosition", *other)
            equal(remote.position(), 5.0, f"position after {other}")
        went_on = stage.sound.now()
        remote.ctl("play")
        stage.sound.wait_for(STAIRS[7], 5)
        stage.sound.expect_order(STAIRS[5:7], went_on)
        check(not [s for s in listener.signals("PropertiesChanged") if '"Position"' in s], "a changed position was told")
    remote.call("Seek", "int64:60000000")
    remote.wait_for_status("Stopped")


# REM-22: Metadata name file, length, title and number, and playerctl follows
@story("media keys: metadata names the file, its length, title and number")
def metadata(stage):
    folder = stage.media / "säng & 100% ü"
    folder.mkdir()
    song = tone(folder / "Größe #1.wav", TONES[0], 30)
    stage.player.save_list([*three_files(stage)[:1], song])
    remote = started(stage)
    equal(remote.try_ctl("metadata", "mpris:length")[0], 1, "a length before it is open")
    remote.ctl("next")
    remote.ctl("play")
    stage.sound.wait_for(TONES[0])
    fields = ("title", "url", "trackNumber")
    title, url, number = (remote.ctl("metadata", f"xesam:{field}") for field in fields)
    equal(title, "Größe #1", "title")
    equal(urllib.parse.unquote(urllib.parse.urlparse(url).path), str(song), "address")
    check(url.startswith("file:///") and url.isascii() and "%23" in url and "%25" in url, f"address {url}")
    equal(number, "2", "track number")
    length = int(remote.ctl("metadata", "mpris:length"))
    check(abs(length - 30_000_000) < 50_000, f"length {length}")
    track = remote.ctl("metadata", "mpris:trackid").strip("'")
    check(re.fullmatch(r"/corvane/track/\d+", track), f"track {track}")
    check("object path" in remote.get("Metadata"), "the track is no object path")


# REM-12
@story("media keys: volume is the knob's level, repeat and shuffle are the panel's")
def settings_of_playing(stage):
    remote = started(stage, *three_files(stage))
    remote.ctl("volume", "0.4")
    equal(round(float(remote.ctl("volume")) * 15), 6, "level")
    wait("the sink's volume", lambda: abs(sink_volume(stage.session)[0] - 0.4 * 65536) < 700)
    remote.ctl("loop", "Playlist")
    wait("the repeat lamp", lambda: stage.player.lamp_lit(REPEAT_LAMP))
    check("NotSupported" in remote.set("LoopStatus", "string:Track"), "one track alone is repeated")
    equal(remote.ctl("loop"), "Playlist", "loop status")
    remote.ctl("loop", "None")
    wait("the repeat lamp goes out", lambda: not stage.player.lamp_lit(REPEAT_LAMP))
    with Listener(stage) as listener:
        remote.set("Shuffle", "boolean:true")
        listener.wait_for('"Shuffle"', "boolean false")
    equal(remote.ctl("shuffle"), "Off", "shuffle")
    check("InvalidArgs" in remote.set("Volume", "string:loud"), "a volume that is a word")
    check("PropertyReadOnly" in remote.set("PlaybackStatus", "string:Playing"), "the status was set")
    check("UnknownProperty" in remote.get("Colour"), "a property that is not there")
    check("UnknownMethod" in remote.call("Dance"), "a call that is not there")
    check("InvalidArgs" in remote.call("Seek", "string:far"), "a call with a wrong argument")


# REM-13
@story("media keys: opening an address plays it alone, and what cannot be opened is refused")
def open_an_address(stage):
    files = three_files(stage)
    remote = started(stage, files[0])
    remote.ctl("play")
    stage.sound.wait_for(TONES[0])
    strange = tone(stage.media / "a b#c.wav", TONES[1], 30)
    remote.ctl("open", strange.as_uri())
    stage.sound.wait_for(TONES[1])
    remote.wait_for_title("a b#c")
    for address, error in (("https://example.org/a.wav", "NotSupported"), (f"file://{stage.media}/gone.wav", "InvalidArgs"),
                           (f"file://{stage.media}/notes.txt", "NotSupported"), ("", "NotSupported")):
        check(error in remote.call("OpenUri", f"string:{address}"), f"{address!r} was not refused with {error}")
    equal((remote.status(), remote.title()), ("Playing", "a b#c"), "after what was refused")


# REM-11
@story("media keys: the panel's own buttons are told at once, and nothing is told while nothing changes")
def follows_the_panel(stage):
    remote = started(stage, *three_files(stage, 20))
    with Listener(stage) as listener:
        stage.player.press(PLAY)
        listener.wait_for("PlaybackStatus", "Playing")
        listener.wait_for("mpris:length", "CanSeek")
        stage.player.press(PAUSE)
        listener.wait_for("PlaybackStatus", "Paused")
        position = remote.position()
        stage.player.press(NEXT)  # a step of one second
        listener.wait_for("member=Seeked")
        wait("a second further", lambda: abs(remote.position() - position - 1) < 0.05)
        stage.player.press(PLAY)
        stage.sound.wait_for(TONES[0])
        stage.player.press(NEXT)
        listener.wait_for("xesam:title", "file2")
        stage.player.press(REPEAT)
        listener.wait_for("LoopStatus", "Playlist")
        stage.player.press(VOLUME_DOWN)
        listener.wait_for('"Volume"')
        told = standing("what is told", lambda: len(listener.signals("signal")), looks=8)
        steady("no signal while it plays", lambda: len(listener.signals("signal")) == told, 2)
        seeks = len(listener.signals("member=Seeked"))
        stage.desk.drag(stage.player.slider(0.3), stage.player.slider(0.7))
        wait("the slider's jump to the place it was let go at", lambda: abs([0, *listener.jumps()[seeks:]][-1] - 14) < 0.5)
        stage.player.press(STOP)
        listener.wait_for("PlaybackStatus", "Stopped")


# REM-22
@story("media keys: playerctl follows the player")
def followed(stage):
    remote = started(stage, *three_files(stage))
    path = stage.folder / "followed.txt"
    with open(path, "wb") as out:
        process = stage.session.popen(["playerctl", "-p", "corvane", "--follow", "metadata", "--format",
                                       "{{status}} {{xesam:title}}"], stdout=out, stderr=out, stdin=subprocess.DEVNULL)
        try:
            wait("the first line", lambda: "Stopped file1" in path.read_text())
            stage.player.press(PLAY)
            wait("playing", lambda: "Playing file1" in path.read_text())
            remote.ctl("next")
            wait("the next file", lambda: "Playing file2" in path.read_text())
            stage.player.press(PAUSE)
            wait("paused", lambda: "Paused file2" in path.read_text())
        finally:
            end_process(process)


# REM-14
@story("media keys: calls are refused while the editor is open, and wait while a box is up")
def refused_and_waiting(stage):
    first, gone, third = three_files(stage)
    gone.unlink()
    stage.player.save_list([first, gone, third])
    remote = started(stage)
    stage.player.press(EDITOR)
    stage.accessibility.wait_for(stage.player.process.pid, name="PLAY LIST", role="list")
    for call in ("Play", "Next", "Stop"):
        check("Error.Failed" in remote.call(call), f"{call} was not refused")
    check("Error.Failed" in remote.set("Volume", "double:0.1"), "the volume was not refused")
    check("Error.Failed" in remote.call("Quit", interface="org.mpris.MediaPlayer2"), "the end was not refused")
    equal(remote.status(), "Stopped", "status, which can be read")
    stage.player.press_control("Cancel")
    stage.player.wait_for_panel()
    remote.ctl("next")
    remote.ctl("play")
    stage.player.wait_for_box(f"{gone} Can't open!!")
    waiting = stage.session.popen(["playerctl", "-p", "corvane", "play"], stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL)
    steady("the call waits", lambda: waiting.poll() is None, 0.5)
    tone(gone, TONES[1], 4)
    stage.player.press_control("Abort")
    equal(waiting.wait(10), 0, "exit code of the call that waited")
    stage.sound.wait_for(TONES[1])


# REM-01
@story("media keys: the name is there between the opening and the end, and a second player takes another one")
def the_name(stage):
    remote = Remote(stage)
    equal(remote.names(), [], "names before the start")
    stage.player.start(*three_files(stage))
    remote.wait_for_name()
    other = stage.folder / "other"
    other.mkdir()
    (other / "PANELSET").symlink_to(stage.player.folder / "PANELSET")
    second = stage.player.start_another(folder=other)
    wait("two names", lambda: len(remote.names()) == 2, 10)
    equal(remote.names(), [NAME, f"{NAME}.instance{second.pid}"], "names of two players")
    instance = Remote(stage, f"corvane.instance{second.pid}")
    instance.call("Quit", interface="org.mpris.MediaPlayer2")
    equal(second.wait(10), 0, "exit code of the second")
    wait("one name after the second's end", lambda: remote.names() == [NAME])
    remote.call("Raise", interface="org.mpris.MediaPlayer2")
    remote.call("Quit", interface="org.mpris.MediaPlayer2")
    equal(stage.player.wait_for_end(), 0, "exit code")
    wait("no name after the end", lambda: not remote.names())


# REM-16
@story("media keys: raise brings a minimised panel back")
def raised(stage):
    remote = started(stage, *three_files(stage))
    stage.player.key("M")
    wait("the panel is minimised", lambda: stage.player.find_panel() is None)
    remote.call("Raise", interface="org.mpris.MediaPlayer2")
    stage.player.wait_for_panel()


def buses_with(text):
    """Message buses whose environment holds a text."""
    found = []
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if "dbus-daemon" in (entry / "cmdline").read_text() and text.encode() in (entry / "environ").read_bytes():
                found.append(entry.name)
        except OSError:
            continue
    return found


# REM-17: Without a message bus the player runs on
@story("media keys: without a message bus the player runs on")
def no_bus(stage):
    runtime = stage.folder / "run"
    runtime.mkdir(mode=0o700)
    stage.player.start(*three_files(stage), DBUS_SESSION_BUS_ADDRESS="", XDG_RUNTIME_DIR=str(runtime))
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    steady("no message bus is started for the player", lambda: not buses_with(str(runtime)), 0.5)
    equal(stage.player.power_off(), 0, "exit code")


# REM-17
@story("media keys: a message bus that ends leaves the player alone")
def bus_ends(stage):
    address = f"unix:path={stage.folder}/bus"
    bus = stage.session.popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"],
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        wait("the bus", (stage.folder / "bus").exists)
        stage.player.start(*three_files(stage), DBUS_SESSION_BUS_ADDRESS=address)
        names = ["dbus-send", f"--bus={address}", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                 "org.freedesktop.DBus.ListNames"]
        wait("the player's name on the bus", lambda: NAME in stage.session.run(names), 10)
    finally:
        end_process(bus)
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    stage.player.press(NEXT)
    stage.sound.wait_for(TONES[1])
    equal(stage.player.power_off(), 0, "exit code")
