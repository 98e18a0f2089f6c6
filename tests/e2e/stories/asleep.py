# SPDX-License-Identifier: GPL-3.0-or-later
"""The machine sleeps and wakes up, and its screen is locked."""

import os
import signal
import time

from harness.bus import Bus
from harness.expect import check, equal, steady, wait
from harness.media import movie, steps, tone
from harness.player import PAUSE, PLAY
from harness.screen_lock import locked_screen
from harness.sound import Recorder
from harness.story import story
from harness.system_bus import system_bus
from session import end_process
from stories.faults import LADDER, check_sound_is_where_the_time_stands, own_desktop
from stories.hand import open_menu

ASLEEP_SECONDS = 5  # longer than a sound server may be silent before time goes on without it


def position(bus):
    return bus.state()[2] / 1_000_000


def status(bus):
    return bus.state()[0]


def fall_asleep(system, bus):
    """Returns where it was held, seconds."""
    def held():
        system.prepare_for_sleep(True)  # until it listens: on the bus it is a moment before
        return status(bus) == "Paused"

    wait("it is held", held)
    return position(bus)


def ladder_asleep(stage, system):
    """A sound that tells where it stands is held by a sleep; returns the media interface, and where."""
    bus = Bus(stage.session)
    stage.player.start(steps(stage.media / "song.wav", LADDER), **system.environment)
    stage.player.press(PLAY)
    stage.sound.wait_for(LADDER[2])
    system.wait_for_listener(stage.player.process.pid)
    return bus, fall_asleep(system, bus)


def wake_up(system, bus, held):
    """It goes on from where it was held."""
    woken = time.monotonic()
    system.prepare_for_sleep(False)
    wait("it goes on", lambda: status(bus) == "Playing")
    now = position(bus)
    passed = time.monotonic() - woken
    check(held - 0.2 <= now <= held + passed + 0.2, f"held at {held:.2f} s, it goes on at {now:.2f}, {passed:.2f} s after it was woken")


# DESK-01
@story("sleep: a sound is held while the machine sleeps, also where its device is silent as long, and goes on from there")
def sound_over_a_sleep(stage):
    with own_desktop(stage) as inner, system_bus(inner) as system:
        bus, held = ladder_asleep(inner, system)
        server = inner.session.pid_of("pulseaudio")
        os.kill(server, signal.SIGSTOP)
        try:
            steady("the position", lambda: abs(position(bus) - held) < 0.05, ASLEEP_SECONDS)
        finally:
            os.kill(server, signal.SIGCONT)
        wake_up(system, bus, held)
        wait("the sound", lambda: inner.sound.pitch_now() > 0, 10)
        check_sound_is_where_the_time_stands(inner)
        equal(inner.player.boxes(), [], "boxes")
        equal(inner.player.power_off(), 0, "exit code")
        bus.close()


# DESK-01
@story("sleep: a sound goes on from where it was held also where the sound server was started anew meanwhile")
def server_gone_over_a_sleep(stage):
    with own_desktop(stage) as inner, system_bus(inner) as system:
        bus, held = ladder_asleep(inner, system)
        inner.sound.stop()
        inner.session.restart_sound()
        inner.theatre.recorder = inner.sound = Recorder(inner.session, inner.session.folder / "heard_again.raw")
        wake_up(system, bus, held)
        wait("the sound", lambda: inner.sound.pitch_now() > 0, 20)
        check_sound_is_where_the_time_stands(inner)
        equal(inner.player.power_off(), 0, "exit code")
        bus.close()


# DESK-01, DESK-02
@story("sleep: a movie goes on from where it was held; what was paused or stopped stays so")
def movie_over_a_sleep(stage):
    with system_bus(stage) as system:
        bus = Bus(stage.session)
        stage.player.settings(DELAYTIME=0)
        stage.player.start(movie(stage.media / "movie.avi", "#32A046", 440, 30), **system.environment)
        system.wait_for_listener(stage.player.process.pid)
        stage.player.press(PLAY)
        stage.sound.wait_for(440)
        asked = fall_asleep(system, bus)
        stage.sound.wait_for_silence()
        held = position(bus)  # the last frames may come after what says that it is paused
        check(abs(held - asked) < 0.3, f"asked to be held at {asked:.2f} s, it is at {held:.2f}")
        steady("the position", lambda: abs(position(bus) - held) < 0.05, 2)
        wake_up(system, bus, held)
        stage.sound.wait_for(440)
        stage.player.press(PAUSE)
        wait("it is paused", lambda: status(bus) == "Paused")
        for sleeps in (True, False):
            system.prepare_for_sleep(sleeps)
        steady("what was paused stays so", lambda: status(bus) == "Paused", 1)
        equal(stage.player.power_off(), 0, "exit code")
        bus.close()


# DESK-06
@story("sleep: what another program says of it counts for nothing")
def forged_sleep(stage):
    with system_bus(stage) as system:
        bus = Bus(stage.session)
        stage.player.start(tone(stage.media / "song.wav", 440, 30), **system.environment)
        system.wait_for_listener(stage.player.process.pid)
        stage.player.press(PLAY)
        stage.sound.wait_for(440)
        wake_up(system, bus, fall_asleep(system, bus))
        system.prepare_for_sleep(True, system.connect())
        steady("it plays on", lambda: status(bus) == "Playing", 1)
        equal(stage.player.power_off(), 0, "exit code")
        bus.close()


# DESK-16: While the screen is locked a sound plays on, a box that comes waits behind the lock, and when it is unlocked box and panel
#     answer
@story("lock: behind a locked screen a sound plays on, a box waits, and both answer when it is unlocked")
def behind_the_lock(stage):
    songs = [steps(stage.media / "song.wav", [440, 554], 4), stage.media / "gone.wav"]
    stage.player.save_list(songs)
    stage.player.start()
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    lock = locked_screen(stage.session)
    check(lock, "the screen could not be locked")
    try:
        stage.sound.wait_for(554)
        wait("the box of the file that is gone", stage.player.boxes, 10)
        stage.leave_picture("locked")
        middle = stage.desk.area(*stage.player.window.middle, 4, 4)
        check(middle.max() == 0, "the panel is seen over the lock")
        stage.desk.key("Escape")
        steady("no key reaches the box", lambda: len(stage.player.boxes()) == 1, 1)
    finally:
        end_process(lock)
    stage.desk.focus(stage.player.boxes()[0])
    stage.player.press_control("Abort")
    stage.player.wait_for_no_box()
    songs[1].write_bytes(songs[0].read_bytes())
    stage.player.press(PLAY)
    stage.sound.wait_for(440)
    equal(stage.player.power_off(), 0, "exit code")


# DESK-17
@story("lock: an open menu goes when the session is to be locked or the machine to sleep, and keeps no lock away")
def menu_before_the_lock(stage):
    with system_bus(stage) as system:
        stage.player.start(tone(stage.media / "song.wav", 440, 30), **system.environment)
        system.wait_for_listener(stage.player.process.pid)
        for asked in (system.lock_session, lambda: system.prepare_for_sleep(True)):
            open_menu(stage)

            def gone(asked=asked):
                asked()
                return len(stage.player.windows()) == 1

            wait("the menu goes", gone)
            lock = locked_screen(stage.session)
            check(lock, "the screen could not be locked")
            end_process(lock)
        equal(stage.player.power_off(), 0, "exit code")
