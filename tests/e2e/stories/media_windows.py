# SPDX-License-Identifier: GPL-3.0-or-later
"""The windows of movies and pictures under the hand: order, menu, keys, closing, double-clicks, dragging."""

from harness.bus import Bus
from harness.expect import check, equal, standing, steady, wait
from harness.media import movie, picture
from harness.player import PAUSE, PLAY, REPEAT_LAMP, sink_volume
from harness.signs import media_windows, middle_of_screen, told, wait_for_told
from harness.story import story

GREEN, VIOLET = "#32A046", "#8232B4"
HZ = 700
MOVIE, PICTURE = 1, 2  # their numbers in the list
COLOURS = {MOVIE: GREEN, PICTURE: VIOLET}


def start(stage, **settings):
    """Starts with a movie and a picture."""
    files = [stage.media / "film.avi", stage.media / "still.bmp"]
    if not files[0].exists():
        movie(files[0], GREEN, HZ, 40)
        picture(files[1], VIOLET)
    stage.player.settings(**{"INTERVAL": 60, "DELAYTIME": 30, **settings})
    stage.player.start(*files)


def media_window(stage):
    return wait("one window beside the panel", lambda: len(found := media_windows(stage)) == 1 and found[0])


def show(stage, number):
    """Plays the movie or the picture; returns its window once its colour is there."""
    stage.player.key("c")
    if told(stage, "FileNo") != f"{number:03}":
        stage.player.key("period" if number == PICTURE else "comma")
        wait_for_told(stage, "FileNo", f"{number:03}")
    stage.player.key("z")
    stage.desk.wait_for_colour(*middle_of_screen(stage), COLOURS[number])
    return media_window(stage)


def wait_for_play(stage, number):
    """A movie is heard; a picture's time counts."""
    if number == MOVIE:
        stage.sound.wait_for(HZ)
        return
    before = told(stage, "Time")
    wait("the picture's time goes on", lambda: told(stage, "Time") != before)


def check_paused(stage, number):
    bus = Bus(stage.session)
    wait("it is paused", lambda: bus.state()[0] == "Paused", 10)
    bus.close()
    if number == MOVIE:
        stage.sound.wait_for_silence()
    before = standing("the time while paused", lambda: told(stage, "Time"))
    # A picture's time counts whole seconds.
    steady("the time while paused", lambda: told(stage, "Time") == before, 0.5 if number == MOVIE else 1.2)


def check_stopped(stage):
    wait("only the panel", lambda: not media_windows(stage))
    stage.sound.wait_for_silence()
    wait_for_told(stage, "Time", "")
    check(stage.player.running(), "the program has ended")


def is_above(stage, window):
    """By what the window manager says and does: it stays over the panel that is raised."""
    told_so = "ABOVE" in stage.session.run(["xprop", "-id", str(window.id), "_NET_WM_STATE"])
    stage.desk.tool("windowactivate", "--sync", stage.player.window.id)
    stage.desk.tool("windowraise", stage.player.window.id)
    order = stage.desk.stacking()
    over = order.index(window.id) > order.index(stage.player.window.id)
    return told_so and over if told_so == over else None


# MOVIE-34, IMG-19
@story("media windows: in window mode 2, and in no other, a movie and a picture stay over other windows")
def on_top(stage):
    for mode, zoom, numbers, above in ((2, 0, (MOVIE, PICTURE), True), (2, 5, (PICTURE,), True), (0, 0, (MOVIE, PICTURE), False),
                                       (1, 0, (PICTURE,), False)):
        start(stage, WINDOWPOS=mode, MOVIEZOOM=zoom)
        for number in numbers:
            window = show(stage, number)
            if mode == 1:  # the panel is the one on top
                check("ABOVE" not in stage.session.run(["xprop", "-id", str(window.id), "_NET_WM_STATE"]), "a picture on top in mode 1")
            else:
                wait(f"number {number} in mode {mode} on top: {above}", lambda: is_above(stage, window) is above)
        equal(stage.player.power_off(), 0, "exit code")


def open_menu(stage, opens):
    """Does what opens the menu, and waits for it."""
    before = {w.id for w in stage.player.windows()}
    opens()
    wait("the menu", lambda: [w for w in stage.player.windows() if w.id not in before])
    stage.desk.rest()  # what is under the pointer would be chosen


def choose_in_menu(stage, opens, *keys):
    """Opens the menu and presses keys in it, until it goes."""
    before = {w.id for w in stage.player.windows()}
    open_menu(stage, opens)
    stage.desk.key(*keys)
    wait("the menu goes", lambda: {w.id for w in stage.player.windows()} <= before)


# MOVIE-29, MOVIE-31, IMG-10, IMG-18, MENU-29
@story("media windows: the right button and Alt alone open the menu over a movie and a picture, and it commands")
def menus(stage):
    start(stage)
    for number in (MOVIE, PICTURE):
        window = show(stage, number)

        def click():
            stage.desk.click(*window.middle, button=3)

        choose_in_menu(stage, click, "Escape")
        for opens in (lambda: stage.desk.key("alt"), click):
            stage.desk.focus(window)
            choose_in_menu(stage, opens, "Down", "Right", "Return")  # the first command that is offered while it plays: Pause
            check_paused(stage, number)
            stage.desk.key("z")
            wait_for_play(stage, number)
        equal(media_window(stage).id, window.id, "its window")
    open_menu(stage, click)
    stage.desk.key("Up", "Return")  # Power OFF is the last one
    equal(stage.player.wait_for_end(), 0, "exit code")


# MOVIE-32, IMG-18
@story("media windows: Alt and F4 in a movie's and in a picture's window end the player")
def alt_f4(stage):
    for number in (MOVIE, PICTURE):
        start(stage)
        stage.desk.focus(show(stage, number))
        stage.desk.tool("keydown", "alt", "key", "F4")
        equal(stage.player.wait_for_end(), 0, "exit code")
        stage.desk.tool("keyup", "alt")  # held until it has been heard: the window manager asks, and the player looks


# MOVIE-33, IMG-21
@story("media windows: a close request to a movie's or a picture's window is a stop")
def close_request(stage):
    start(stage)
    for number in (MOVIE, PICTURE, MOVIE):
        window = show(stage, number)
        wait_for_play(stage, number)
        stage.session.run(["wmctrl", "-i", "-c", hex(window.id)])
        check_stopped(stage)
        equal(told(stage, "FileNo"), f"{number:03}", "the entry that is chosen")


# MOVIE-30, MOVIE-35, IMG-17, IMG-20
@story("media windows: a click gives them the keyboard, and the panel's eleven keys do the same there")
def keys(stage):
    start(stage)
    for number in (MOVIE, PICTURE):
        window = show(stage, number)
        stage.desk.focus(stage.player.window)
        stage.desk.click(*window.middle)
        stage.desk.rest()
        wait("its window has the keyboard", lambda: stage.desk.focused() == window.id)
        wait_for_play(stage, number)
        stage.desk.key("x")
        check_paused(stage, number)
        stage.desk.key("z")
        wait_for_play(stage, number)
        lit = stage.player.lamp_lit(REPEAT_LAMP)
        stage.desk.key("R")
        wait("the repeat lamp", lambda: stage.player.lamp_lit(REPEAT_LAMP) != lit)
        volume = sink_volume(stage.session)
        stage.desk.key("d", "d")
        wait("a lower volume", lambda: sink_volume(stage.session)[0] < volume[0] - 6000)
        stage.desk.key("u", "u")
        wait("the volume again", lambda: abs(sink_volume(stage.session)[0] - volume[0]) < 600)
        stage.desk.key("S")  # two files: nothing
        stage.desk.key("M")
        wait("the panel is minimised", lambda: stage.player.window.id not in [w.id for w in stage.player.windows()])
        stage.desk.tool("windowmap", stage.player.window.id)
        stage.player.wait_for_panel()
        other = PICTURE + MOVIE - number
        stage.desk.focus(window)
        stage.desk.key("period") if number == MOVIE else stage.desk.key("comma", "comma")
        stage.desk.wait_for_colour(*middle_of_screen(stage), COLOURS[other])
        wait_for_told(stage, "FileNo", f"{other:03}")
        stage.desk.focus(media_window(stage))
        stage.desk.key("c")
        check_stopped(stage)
    stage.desk.focus(show(stage, MOVIE))
    stage.desk.key("P")
    equal(stage.player.wait_for_end(), 0, "exit code")


# MOVIE-16, MOVIE-27, IMG-11
@story("media windows: a double-click minimises a playing and a paused movie and a picture and leaves them so; play shows them")
def double_clicks(stage):
    start(stage)
    for number, paused in ((MOVIE, False), (MOVIE, True), (PICTURE, False), (PICTURE, True)):
        window = show(stage, number)
        wait_for_play(stage, number)
        if paused:
            stage.player.press(PAUSE)
            check_paused(stage, number)
        stage.desk.click(*window.middle, times=2)
        stage.desk.rest()
        wait("it is minimised", lambda: not media_windows(stage))
        if paused:
            check_paused(stage, number)
        else:
            wait_for_play(stage, number)
            if number == MOVIE:
                stage.sound.expect_steady(HZ, 0.8)
            stage.player.press(PAUSE)
        stage.player.press(PLAY)
        equal(media_window(stage).id, window.id, "the window that is shown again")
        stage.desk.wait_for_colour(*middle_of_screen(stage), COLOURS[number])
        wait_for_play(stage, number)


# MOVIE-28, IMG-08
@story("media windows: the left button drags a movie's and a picture's window, the middle one does not")
def drags(stage):
    start(stage)
    for number in (MOVIE, PICTURE):
        window = show(stage, number)
        x, y = window.middle
        stage.desk.drag((x, y), (x - 150, y - 100), steps=20, button=2)
        equal((media_window(stage).x, media_window(stage).y), (window.x, window.y), "its place after a drag by the middle button")
        for button, across, down in ((1, -200, -150), (1, 260, 90)):
            before = media_window(stage)
            x, y = before.middle
            stage.desk.drag((x, y), (x + across, y + down), steps=50, button=button)
            wait(f"number {number} is moved by {across}, {down}", lambda: near(media_window(stage), before, across, down))
        stage.desk.rest()
        stage.desk.wait_for_colour(*media_window(stage).middle, COLOURS[number])
        wait_for_play(stage, number)


def near(now, before, across, down):
    return (now.x - before.x, now.y - before.y) == (across, down)  # the grabbed point stays under the pointer
