# SPDX-License-Identifier: GPL-3.0-or-later
"""A picture that cannot be enlarged."""

from PIL import Image

from harness.expect import check, equal, wait
from harness.media import picture
from harness.player import PLAY
from harness.signs import media_windows, middle_of_screen, told, wait_for_told
from harness.story import story

WIDTH = 500_100  # pixels: doubled, it is wider than a picture can be
GREEN = "#32A046"
IN_ENGLISH = "Corvane couldn't expand an image because of lack of the memory."
IN_JAPANESE = "メモリ不足のためイメージを拡大できませんでした。"


# PIC-09
@story("pictures: one too wide to be doubled is told in one box in both languages, and shown at its own size")
def too_wide(stage):
    wide = stage.media / "wide.bmp"
    Image.new("1", (WIDTH, 1), 1).save(wide)
    stage.player.settings(IMAGEZOOM=1, INTERVAL=60)
    stage.player.start(wide, picture(stage.media / "plain.bmp", GREEN, (200, 100)))
    stage.player.press(PLAY)
    stage.player.wait_for_box(IN_ENGLISH)
    stage.player.wait_for_text(IN_JAPANESE)
    equal(len(stage.player.boxes()), 1, "boxes")
    stage.desk.key("Return")
    stage.player.wait_for_no_box()
    screen = stage.desk.screen
    wait("a line as wide as the screen", lambda: [w.size for w in media_windows(stage)] == [(screen.width, 1)])
    stage.desk.rest()
    wait("it is white", lambda: stage.desk.area(10, screen.height // 2 - 2, 200, 4).min(axis=2).max() == 255)
    equal(told(stage, "Display"), "BMP IMAGE", "the kind")
    stage.player.key("period")
    wait_for_told(stage, "FileNo", "002")
    stage.desk.wait_for_colour(*middle_of_screen(stage), GREEN)
    wait("the next one, doubled", lambda: [w.size for w in media_windows(stage)] == [(400, 200)])
    check(not stage.player.boxes(), "a box came up for the next picture")
