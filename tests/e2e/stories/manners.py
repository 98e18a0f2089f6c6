# SPDX-License-Identifier: GPL-3.0-or-later
"""The desktop's manners, as its portal and its manager of settings tell them, and as they change while the player runs."""

import re
import subprocess

import numpy as np

from harness.bus import Bus
from harness.expect import check, equal, steady, wait
from harness.media import tone
from harness.player import EDITOR
from harness.portal import Portal, number, share, switch, text, whole
from harness.story import story
from session import end_process
from stories.dark_theme import brightness, check_read
from stories.hand import open_menu
from stories.windows import close_by, items, node, nodes, open_settings

LOOK, GNOME, MOUSE = "org.freedesktop.appearance", "org.gnome.desktop.interface", "org.gnome.desktop.peripherals.mouse"
DARK, LIGHT = 1, 2
DIM, BRIGHT = 90, 200  # of 255


def ground(stage):
    """How bright the editor's window is beside its controls."""
    return float(stage.desk.area(*ground_place(stage)).mean())


def ground_place(stage):
    label = node(stage, name="PLAY LIST", role="label")["place"]
    return label[0] + label[2] - 6, label[1] + 2, 4, 4


def opened_editor(stage, **environment):
    stage.player.save_list([tone(stage.media / f"song{n}.wav", 440, 2) for n in range(3)], name="Evening")
    stage.player.start("--open", **environment)
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")


def change(stage, portal, *setting):
    """Until the player has been told: what is asked on the same bus is answered behind it."""
    portal.set(*setting)
    bus = Bus(stage.session)
    wait("the player on the bus", lambda: bus.state()[0], 10)
    bus.close()


# DESK-20
# DESK-26: Colours and font of dialogs and menus follow the desktop while the player runs, in windows that are open too
@story("manners: dialogs turn dark and light with the desktop, also while they are open, and every text is read")
def dark_and_light(stage):
    with Portal(stage.session, {(LOOK, "color-scheme"): number(DARK)}) as portal:
        opened_editor(stage)
        wait("a dark editor", lambda: ground(stage) < DIM)
        for name, role in (("PLAY LIST", "label"), ("FILE LIST", "label"), ("Add All", "push button")):
            check_read(stage, name, role)
        stage.leave_picture("dark")
        portal.set(LOOK, "color-scheme", number(LIGHT))
        wait("a light editor", lambda: ground(stage) > BRIGHT)
        stage.leave_picture("light")
        portal.set(LOOK, "color-scheme", number(DARK))
        wait("a dark editor again", lambda: ground(stage) < DIM)
        close_by(stage, "Cancel")
        stage.player.wait_for_panel()
        menu = open_menu(stage)
        inside = menu.x + 4, menu.y + 4, menu.width - 8, menu.height - 8
        wait("the menu's texts", lambda: np.ptp(brightness(stage, inside)) > 0)
        stage.desk.wait_until_still(*inside)
        darkest, brightest = brightness(stage, inside)
        check(darkest < DIM and brightest > BRIGHT - 40, f"the menu: {darkest} to {brightest}")
        stage.leave_picture("menu")
        stage.desk.key("Escape")
        equal(stage.player.power_off(), 0, "exit code")


# DESK-21, DESK-26
@story("manners: with the strongest contrast dialogs are black on white or white on black")
def high_contrast(stage):
    with Portal(stage.session, {(LOOK, "contrast"): number(1)}) as portal:
        opened_editor(stage)
        wait("a white editor", lambda: ground(stage) == 255)
        stage.leave_picture("light")
        portal.set(LOOK, "color-scheme", number(DARK))
        wait("a black editor", lambda: ground(stage) == 0)
        stage.leave_picture("dark")
        portal.set(LOOK, "contrast", number(0))
        wait("a dark one that is not black", lambda: 0 < ground(stage) < DIM)
        close_by(stage, "Cancel")
        equal(stage.player.power_off(), 0, "exit code")


# DESK-22, DESK-26
@story("manners: the user's font and its size are those of dialogs and menus, also when they change, and no text is cut")
def font_of_the_user(stage):
    def height(name="Add All", role="push button"):
        return node(stage, name=name, role=role)["place"][3]

    with Portal(stage.session, {(GNOME, "font-name"): text("DejaVu Sans 9")}) as portal:
        opened_editor(stage)
        small = height()
        portal.set(GNOME, "font-name", text("DejaVu Serif Bold 13"))
        wait("larger buttons", lambda: height() > 1.2 * small)
        stage.leave_picture("large")
        portal.set(GNOME, "font-name", text("DejaVu Sans 9"))
        wait("small buttons", lambda: abs(height() - small) <= 1)
        portal.set(GNOME, "text-scaling-factor", share(1.5))
        wait("buttons of scaled texts", lambda: height() > 1.25 * small)
        close_by(stage, "Cancel")
        stage.player.wait_for_panel()
        menu = open_menu(stage)
        large = menu.height
        stage.leave_picture("menu")
        stage.desk.key("Escape")
        wait("no menu", lambda: len(stage.player.windows()) == 1)
        change(stage, portal, GNOME, "text-scaling-factor", share(1.0))
        steady("no menu comes by itself", lambda: len(stage.player.windows()) == 1, 0.3)
        check(open_menu(stage).height < large, "the menu's texts are as large as before")
        stage.desk.key("Escape")
        portal.set(GNOME, "font-name", text("nothing that makes sense"))
        equal(stage.player.power_off(), 0, "exit code")


# DESK-29
@story("manners: with letters of twice and more the usual size editor and settings fit on the screen, and no text is cut")
def large_letters(stage):
    width, height = stage.desk.screen.width, stage.desk.screen.height

    def fit():
        places = [each["place"] for each in nodes(stage, role="push button")]
        return places and all(x >= 0 and y >= 0 and x + w <= width and y + h <= height for x, y, w, h in places)

    with Portal(stage.session, {(GNOME, "font-name"): text("DejaVu Sans 9")}) as portal:
        opened_editor(stage)
        small = node(stage, name="Add All", role="push button")["place"][3]
        for points in (16, 40):
            portal.set(GNOME, "font-name", text(f"DejaVu Sans {points}"))
            wait("larger letters", lambda: node(stage, name="Add All", role="push button")["place"][3] > 1.2 * small)
            wait("the editor on the screen", fit)
            stage.desk.wait_until_still(0, 0, width, height)
            stage.leave_picture(f"editor{points}")
        portal.set(GNOME, "font-name", text("DejaVu Sans 9"))
        wait("small letters", lambda: abs(node(stage, name="Add All", role="push button")["place"][3] - small) <= 1)
        portal.set(GNOME, "font-name", text("DejaVu Sans 40"))
        close_by(stage, "Cancel")
        stage.player.wait_for_panel()
        open_settings(stage)
        wait("the settings on the screen", fit)
        stage.desk.wait_until_still(0, 0, width, height)
        stage.leave_picture("settings")
        close_by(stage, "Cancel")
        equal(stage.player.power_off(), 0, "exit code")


def clear(stage):
    stage.player.press_control("Clear")
    wait("an empty play list", lambda: not items(stage, "PLAY LIST"))


# DESK-23
@story("manners: two clicks are a double-click within the time that the desktop says, and not beyond it")
def double_click(stage):
    with Portal(stage.session, {(MOUSE, "double-click"): whole(1500)}) as portal:
        opened_editor(stage, HOME=str(stage.media))
        clear(stage)

        def clicks_apart(seconds):
            row = node(stage, name="song0.wav", role="list item")
            x, y = row.middle
            stage.desk.tool("mousemove", x, y, "click", 1, "sleep", seconds, "click", 1)
            return len(stage.accessibility.find(stage.player.process.pid, holding="song0.wav", role="list item")) > 1

        wait("two slow clicks add the row", lambda: clicks_apart(0.7), 10)
        change(stage, portal, MOUSE, "double-click", whole(200))
        clear(stage)
        steady("two clicks as slow do not", lambda: not clicks_apart(0.7), 3)
        stage.player.press_control("Cancel")
        stage.player.wait_for_box("is not saved. Lose its changes?")
        stage.desk.key("Return")
        stage.player.wait_for_panel()
        equal(stage.player.power_off(), 0, "exit code")


# DESK-24, DESK-26
@story("manners: what a manager of settings tells is obeyed where no portal is, also when it comes, changes and goes")
def manager_of_settings(stage):
    config = stage.folder / "xsettingsd"

    def says(theme, font):
        config.write_text(f'Net/ThemeName "{theme}"\nGtk/FontName "{font}"\nNet/DoubleClickTime 1500\nNet/CursorBlink 0\n')

    def manager():
        return stage.session.popen(["xsettingsd", "-c", str(config)], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)

    says("Greybird-dark", "DejaVu Sans 13")
    opened_editor(stage)
    wait("a light editor without a word", lambda: ground(stage) > BRIGHT)
    small = node(stage, name="Add All", role="push button")["place"][3]
    process = manager()
    try:
        wait("a dark editor", lambda: ground(stage) < DIM)
        wait("larger buttons", lambda: node(stage, name="Add All", role="push button")["place"][3] > 1.2 * small)
        stage.leave_picture("dark")
        says("Greybird", "DejaVu Sans 9")
        process.send_signal(1)
        wait("a light editor", lambda: ground(stage) > BRIGHT)
        says("Greybird-dark", "DejaVu Sans 9")
        process.send_signal(1)
        wait("a dark editor again", lambda: ground(stage) < DIM)
    finally:
        end_process(process)
    wait("without the manager it is light", lambda: ground(stage) > BRIGHT)
    close_by(stage, "Cancel")
    equal(stage.player.power_off(), 0, "exit code")


# DESK-27: Also where the user's language is written from right to left, the player's English texts and all paths run from the left
@story("manners: in a language written from right to left the menu's English texts run from the left, and the dialogs work")
def right_to_left(stage):
    stage.player.save_list([tone(stage.media / "שיר ראשון.wav", 440, 2), stage.media / "gone.wav"], name="ערב")
    stage.player.start("--open", under=("env", "-u", "LC_ALL"), LANG="he_IL.UTF-8")
    menu = open_menu(stage)
    def spread():
        return [stage.desk.area(x, menu.y + 4, menu.width // 4, menu.height - 8).std() for x in
                (menu.x + 4, menu.x + menu.width * 3 // 4 - 4)]

    wait("the menu's texts", lambda: max(spread()) > 5)
    stage.desk.wait_until_still(menu.x, menu.y, menu.width, menu.height)
    left, right = spread()
    stage.leave_picture("menu")
    check(left > 1.2 * right, f"the menu's texts are not at its left: {left:.1f} there, {right:.1f} at its right")
    stage.desk.key("Escape")
    wait("no menu", lambda: len(stage.player.windows()) == 1)
    stage.player.press(EDITOR)
    node(stage, name="PLAY LIST", role="list")
    stage.leave_picture("editor")
    close_by(stage, "Cancel")
    equal(stage.player.power_off(), 0, "exit code")


# DESK-28: Every window of the player has the program's icon, in sizes from 16 to 128, for task bars that know no entry of it
@story("manners: the panel and the editor have the program's icon, in each size that task bars ask for")
def icons(stage):
    stage.player.start()

    def sizes(name):
        window = stage.player.wait_for_window(name)
        told = stage.session.run(["xprop", "-id", str(window.id), "_NET_WM_ICON"])
        return [int(width) for width, height in re.findall(r"Icon \((\d+) x (\d+)\)", told) if width == height]

    equal(sizes("Corvane"), [16, 24, 32, 48, 64, 128], "icons of the panel")
    stage.player.press(EDITOR)
    equal(sizes("Play List"), [16, 24, 32, 48, 64, 128], "icons of the editor")
