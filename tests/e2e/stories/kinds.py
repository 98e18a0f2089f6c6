# SPDX-License-Identifier: GPL-3.0-or-later
"""One list with every kind, each recognised at every second by ear and eye: pause, steps, previous, next, repeat, shuffle."""

from harness.expect import check, equal, standing, steady, wait
from harness.player import NEXT, PAUSE, PLAY, PREVIOUS, REPEAT, REPEAT_LAMP, SHUFFLE
from harness.signs import told, wait_for_told
from harness.stairs import SECONDS, one_of_each, second_of, second_seen, wait_for_stair
from harness.story import story

FORWARD, BACK = 3, 1  # steps of a second
PICTURE_SECONDS = 4  # long enough to be seen and paused on a busy machine
NEARLY_A_SECOND = 0.88


def start_list(stage, first=1, **settings):
    """Starts with the list and chooses an entry, stopped; returns its files."""
    stairs, environment = one_of_each(stage.media)
    stage.player.settings(**{"INTERVAL": 60, "DELAYTIME": 30, **settings})
    stage.player.save_list([stair.path for stair in stairs])
    stage.player.start(**environment)
    choose(stage, first)
    return stairs


def choose(stage, number):
    """Stops and steps to an entry."""
    stage.player.key("c")
    while (now := int(wait("a number", lambda: told(stage, "FileNo")))) != number:
        stage.player.key("period" if now < number else "comma")
        wait_for_told(stage, "FileNo", f"{now + (1 if now < number else -1):03}")


def seconds_told(text):
    minutes, _, seconds = text.rpartition(":")
    return int(minutes or 0) * 60 + float(seconds)


def step(stage, button):
    """Presses next or previous while paused; returns the time that the panel tells then."""
    before = told(stage, "Time")
    stage.player.press(button)
    return wait("another time", lambda: (now := told(stage, "Time")) != before and now)


def pause_step_and_go_on(stage, stairs, number):
    """A file is paused within its second 1, stepped, and played on from where the steps led."""
    stair = stairs[number - 1]
    choose(stage, number)
    stage.player.press(PLAY)
    wait_for_stair(stage, stairs, number, 1, 1)
    stage.player.press(PAUSE)
    stage.sound.wait_for_silence()
    heard = stage.sound.last_tone(stage.sound.now() - 4)
    standing("the time while paused", lambda: told(stage, "Time"))
    last = second_of(stair, heard.hz)
    paused = stage.sound.now()
    for count in range(FORWARD):
        text = step(stage, NEXT)
        check(abs(seconds_told(text) - (last + count + 1)) <= 1, f"{stair.path.name}: the time {text} after step {count + 1} from {last}")
    if stair.colours:
        wait("the frame of that second", lambda: second_seen(stage, stair) == round(seconds_told(text)))
    for _ in range(BACK):
        step(stage, PREVIOUS)
    steady("silence while paused", lambda: stage.sound.pitch_now() == 0, 0.4)
    equal(stage.sound.tones(paused), [], f"{stair.path.name}: tones while it is paused and stepped")
    wanted = last + FORWARD - BACK
    stage.player.press(PLAY)
    first = second_of(stair, stage.sound.first_tone(paused).hz)
    # A movie is stepped from the next whole second; of a second that was heard to its end too little is left to be recognised.
    may_be_next = stair.colours or heard.length > NEARLY_A_SECOND
    check(first in ((wanted, wanted + 1) if may_be_next else (wanted,)), f"{stair.path.name}: goes on at {first}, expected {wanted}")
    wait_for_stair(stage, stairs, number, wanted + 1, wanted + 2)


# OPEN-43, MOVE-07, MOVE-08, MOVE-17, MOVE-20, MOVE-22, MOVE-29, MOVE-31, MOVE-33
@story("kinds: paused, each kind steps a second forward and back in silence, and goes on from there")
def steps_of_each_kind(stage):
    stairs = start_list(stage)
    for number, stair in enumerate(stairs, 1):
        if stair.tones:
            pause_step_and_go_on(stage, stairs, number)


# MOVE-06, MOVE-16, MOVE-28
@story("kinds: a paused picture stands; next and previous go on from it to its neighbours and play them")
def paused_picture(stage):
    stairs = start_list(stage, 4, INTERVAL=PICTURE_SECONDS)
    for button, times, number in ((NEXT, 1, 5), (PREVIOUS, 2, 3)):
        choose(stage, 4)
        stage.player.press(PLAY)
        wait_for_stair(stage, stairs, 4)
        stage.player.press(PAUSE)
        steady("the paused picture", lambda: second_seen(stage, stairs[3]) == 0, PICTURE_SECONDS + 0.6)
        equal(told(stage, "FileNo"), "004", "the number while it is paused")
        stage.desk.click(*stage.player.button(button), times=times)
        wait_for_stair(stage, stairs, number, 0, 1)


# SEQ-05, SEQ-07, MOVE-13, MOVE-26, MOVE-27
@story("kinds: pressed once previous begins each kind again, pressed twice it goes a file back, and next goes on")
def previous_and_next(stage):
    stairs = start_list(stage)
    stage.player.press(PLAY)
    wait_for_stair(stage, stairs, 1, 0, 1)
    for number in range(2, len(stairs) + 1):
        stage.player.press(NEXT)
        wait_for_stair(stage, stairs, number, 1 if stairs[number - 1].tones else 0, 2)
        stage.player.press(PREVIOUS)
        if stairs[number - 1].tones:
            wait_for_stair(stage, stairs, number, 0, 0)
        else:
            wait("the picture's time begins again", lambda: told(stage, "Time") == "00:00")
            wait_for_stair(stage, stairs, number)
        stage.desk.click(*stage.player.button(PREVIOUS), times=2)
        wait_for_stair(stage, stairs, number - 1, 0, 1)
        stage.player.press(NEXT)
        wait_for_stair(stage, stairs, number, 0, 1)


def play_to_the_end(stage, stairs, number):
    """Seeks a file's last two seconds, well inside; a picture is left to its interval."""
    wait_for_stair(stage, stairs, number, 0, 2)
    if stairs[number - 1].tones:
        stage.desk.drag(stage.player.slider(0.3), stage.player.slider(1 - 1.7 / SECONDS), steps=4)
        wait_for_stair(stage, stairs, number, SECONDS - 2, SECONDS - 1)


# SEQ-01, SEQ-02, MOVE-14, MOVE-15
@story("kinds: each kind goes on at its own end; with repeat the list begins again, without it is rewound and stopped")
def repeat_every_kind(stage):
    stairs = start_list(stage, INTERVAL=PICTURE_SECONDS)
    stage.player.press(REPEAT)
    wait("the repeat lamp", lambda: stage.player.lamp_lit(REPEAT_LAMP))
    stage.player.press(PLAY)
    for number in range(1, len(stairs) + 1):
        play_to_the_end(stage, stairs, number)
    wait_for_stair(stage, stairs, 1, 0, 1)
    stage.player.press(REPEAT)
    wait("the repeat lamp goes out", lambda: not stage.player.lamp_lit(REPEAT_LAMP))
    for _ in range(len(stairs) - 1):
        stage.player.key("period")
    play_to_the_end(stage, stairs, len(stairs))
    stage.sound.wait_for_silence()
    wait_for_told(stage, "FileNo", "001")
    steady("silence at the list's end", lambda: stage.sound.pitch_now() == 0, 0.8)
    equal(len(stage.player.windows()), 1, "windows at the list's end")


def which_plays(stage, stairs, number):
    """The place in the stored list of the file that is heard and seen as number `number` now; None when it is not sure yet."""
    if told(stage, "FileNo") != f"{number:03}":
        return None
    hz, kind = stage.sound.pitch_now(), told(stage, "Display")
    for place, stair in enumerate(stairs):
        heard = second_of(stair, hz) is not None if stair.tones else hz == 0
        seen = second_seen(stage, stair) is not None if stair.colours else True
        if heard and seen and kind == stair.kind:
            return place + 1
    return None


# SEQ-14, SEQ-16, SEQ-17
@story("kinds: shuffled, every file of the list is heard and seen once in each round, the playing one first")
def shuffle_every_kind(stage):
    stairs = start_list(stage, 3)
    stage.player.press(PLAY)
    wait_for_stair(stage, stairs, 3)
    stage.player.press(REPEAT)
    stage.player.press(SHUFFLE)
    rounds = [[3], []]  # the playing file is the first one; its number is shown when it is begun again
    for played, numbers in zip(rounds, (range(2, len(stairs) + 1), range(1, len(stairs) + 1))):
        for number in numbers:
            stage.player.press(NEXT)
            played.append(wait(f"a file as number {number}", lambda: which_plays(stage, stairs, number), 8))
    equal(sorted(rounds[0]), list(range(1, len(stairs) + 1)), "files of the first round")
    equal(rounds[1], rounds[0], "the second round")
