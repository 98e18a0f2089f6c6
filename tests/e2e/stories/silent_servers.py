# SPDX-License-Identifier: GPL-3.0-or-later
"""Servers of the desktop that take a connection and then say nothing, or nothing that makes sense."""

import contextlib
import os
import socket
import threading

from harness.expect import equal, wait
from harness.in_time import in_time
from harness.media import movie, tone
from harness.player import PLAY, REPEAT, REPEAT_LAMP
from harness.signs import told
from harness.story import story

START_SECONDS = 3
END_SECONDS = 2
AT_ONCE = 2


@contextlib.contextmanager
def server(path, answer):
    """Takes every connection; `answer` does something with each, which stays open unless it closes it."""
    kept = []
    with socket.socket(socket.AF_UNIX) as listening:
        listening.bind(str(path))
        listening.listen(50)

        def serve():
            with contextlib.suppress(OSError):
                while True:
                    kept.append(listening.accept()[0])
                    with contextlib.suppress(OSError):
                        answer(kept[-1])

        thread = threading.Thread(target=serve, daemon=True)
        thread.start()
        yield
        listening.shutdown(socket.SHUT_RDWR)
        thread.join()
    for connection in kept:
        connection.close()


ANSWERS = {"silent": lambda connection: None, "garbage": lambda connection: connection.sendall(os.urandom(4000)),
           "closing": lambda connection: connection.close()}


def starts_plays_and_ends(stage, what, heard, **environment):
    with in_time(stage, f"with a bad {what} the start", START_SECONDS):
        stage.player.start(**environment)
    if not heard:  # the first look at the volume waits: until then the last picture of the opening may stand there
        wait("the panel's texts", lambda: told(stage, "FileNo"))
    stage.player.press(PLAY)
    if heard:
        stage.sound.wait_for(440)
    wait("the time goes on", lambda: stage.player.slider_fraction() > 0.02)
    lit = stage.player.lamp_lit(REPEAT_LAMP)
    stage.player.press(REPEAT)
    wait(f"the panel answers with a bad {what}", lambda: stage.player.lamp_lit(REPEAT_LAMP) != lit, AT_ONCE)
    with in_time(stage, f"with a bad {what} the end", END_SECONDS):
        equal(stage.player.power_off(), 0, "exit code")
    stage.sound.wait_for_silence()


def with_each_answer(stage, variable, scheme, heard, file=None):
    stage.player.save_list([file or tone(stage.media / "song.wav", 440, 20)])
    for how, answer in ANSWERS.items():
        place = stage.folder / how
        with server(place, answer):
            starts_plays_and_ends(stage, f"{how} {variable}", heard, **{variable: f"{scheme}{place}"})


@story("faults: a message bus that is silent, says nonsense or closes is done without")
def silent_message_bus(stage):
    with_each_answer(stage, "DBUS_SESSION_BUS_ADDRESS", "unix:path=", True)


@story("faults: a bus for assistive programs that is silent, says nonsense or closes is done without")
def silent_assistive_bus(stage):
    with_each_answer(stage, "AT_SPI_BUS_ADDRESS", "unix:path=", True)


@story("faults: with a sound server that is silent, says nonsense or closes the time goes on")
def silent_sound_server(stage):
    with_each_answer(stage, "PULSE_SERVER", "unix:", False)


@story("faults: with a sound server that is silent, says nonsense or closes a movie opens and plays in silence")
def silent_sound_server_of_a_movie(stage):
    with_each_answer(stage, "PULSE_SERVER", "unix:", False, movie(stage.media / "movie.avi", "#32A046", 440, 20))
