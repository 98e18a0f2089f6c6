# SPDX-License-Identifier: GPL-3.0-or-later
"""The screen stays lit while somebody watches: what a screen saver on the bus is asked."""

import subprocess

from session import end_process

from harness.expect import equal, steady, wait
from harness.media import movie, picture, tone
from harness.player import NEXT, PAUSE, PLAY, STOP
from harness.signs import middle_of_screen
from harness.story import story

GREEN, VIOLET = "#32A046", "#8232B4"

# A screen saver that writes down what it is asked, one word a line.
SAVER = """
from gi.repository import Gio, GLib
NODE = Gio.DBusNodeInfo.new_for_xml('''<node><interface name="org.freedesktop.ScreenSaver">
<method name="Inhibit"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="u" direction="out"/></method>
<method name="UnInhibit"><arg type="u" direction="in"/></method></interface></node>''')
def called(bus, sender, path, interface, method, given, call):
    print(method, flush=True)
    call.return_value(GLib.Variant('(u)', (7,)) if method == 'Inhibit' else None)
def ready(bus, name):
    bus.register_object('/org/freedesktop/ScreenSaver', NODE.interfaces[0], called, None, None)
    print('ready', flush=True)
Gio.bus_own_name(Gio.BusType.SESSION, 'org.freedesktop.ScreenSaver', Gio.BusNameOwnerFlags.NONE, ready, None, None)
GLib.MainLoop().run()
"""


class ScreenSaver:
    """As a context manager it ends with the block."""

    def __init__(self, stage):
        self._log = stage.folder / "saver.log"
        with open(self._log, "w") as log:
            self._process = stage.session.popen(["/usr/bin/python3", "-c", SAVER], stdin=subprocess.DEVNULL, stdout=log,
                                                stderr=subprocess.DEVNULL)
        wait("the screen saver", lambda: self._words()[:1] == ["ready"], 15)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        end_process(self._process)

    def _words(self):
        return self._log.read_text().split()

    def asked(self):
        return self._words()[1:]

    def is_inhibited(self):
        return self.asked().count("Inhibit") > self.asked().count("UnInhibit")


@story("lit: a movie and a slide show keep the screen lit until pause, stop and end; a sound does not")
def kept_lit(stage):
    film = movie(stage.media / "film.avi", GREEN, 500, 20)
    pictures = [picture(stage.media / "first.bmp", VIOLET), picture(stage.media / "second.bmp", GREEN)]
    song = tone(stage.media / "song.wav", 440, 30)
    stage.player.settings(INTERVAL=3, DELAYTIME=30)
    with ScreenSaver(stage) as saver:
        stage.player.start(film, *pictures, song)
        stage.player.press(PLAY)
        wait("the movie keeps it lit", saver.is_inhibited)
        stage.player.press(PAUSE)
        wait("let go by pause", lambda: not saver.is_inhibited())
        stage.player.press(PLAY)
        wait("lit again", saver.is_inhibited)
        stage.player.press(STOP)
        wait("let go by stop", lambda: not saver.is_inhibited())
        stage.player.press(NEXT)
        stage.player.press(PLAY)
        stage.desk.wait_for_colour(*middle_of_screen(stage), VIOLET)
        wait("the pictures keep it lit", saver.is_inhibited)
        asked = saver.asked()
        stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN, 10)
        equal(saver.asked(), asked, "asked between two pictures")
        stage.sound.wait_for(440, 10)
        wait("let go by the sound that follows", lambda: not saver.is_inhibited())
        steady("a sound alone keeps nothing lit", lambda: not saver.is_inhibited(), 1)
        equal(stage.player.power_off(), 0, "exit code")


@story("lit: power off while a movie plays lets the screen go")
def let_go_at_the_end(stage):
    stage.player.settings(DELAYTIME=30)
    with ScreenSaver(stage) as saver:
        stage.player.start(movie(stage.media / "film.avi", GREEN, 500, 20))
        stage.player.press(PLAY)
        wait("the movie keeps it lit", saver.is_inhibited)
        equal(stage.player.power_off(), 0, "exit code")
        wait("let go", lambda: not saver.is_inhibited())
