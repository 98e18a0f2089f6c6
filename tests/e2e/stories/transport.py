# SPDX-License-Identifier: GPL-3.0-or-later
"""Playing, pausing, stepping through a list, by the panel's buttons; what happens is heard."""

from harness.expect import check, equal, steady, wait
from harness.media import steps, tone
from harness.player import NEXT, PAUSE, PLAY, PREVIOUS, REPEAT, REPEAT_LAMP, SHUFFLE, STOP
from harness.sound import LONGEST_GAP, bridge, same_pitch
from harness.story import story

TONES = (440, 554, 698)  # of the first, second and third file
STAIRS = (392, 523, 659, 784, 1047, 1319, 1568, 1760)  # one second each: what sounds tells the position
NEARLY_A_SECOND = 0.88


def three_files(stage, seconds=8):
    return [tone(stage.media / f"song{number}.wav", hz, seconds) for number, hz in enumerate(TONES, 1)]


def start_playing(stage, *files):
    stage.player.start(*files)
    stage.player.press(PLAY)


def pause_after(stage, second):
    """Pauses once that second of the stairs is heard; returns the seconds from which it may go on: that in which it stands, and, where
    so little is left of it that it is not heard as a tone, the next one."""
    stage.sound.wait_for(STAIRS[second])
    stage.player.press(PAUSE)
    stage.sound.wait_for_silence()
    last = stage.sound.last_tone()
    stands = next(number for number, hz in enumerate(STAIRS) if same_pitch(last.hz, hz))
    check(second <= stands < second + 3, f"paused in second {stands}, heard {last}")
    return (stands, stands + 1) if last.length > NEARLY_A_SECOND else (stands,)


def check_goes_on(stage, seconds):
    """Plays; the first that is heard is one of these seconds."""
    went_on = stage.sound.now()
    stage.player.press(PLAY)
    stage.sound.wait_for(STAIRS[seconds[0] + 1])
    first = stage.sound.first_tone(went_on)
    check(any(same_pitch(first.hz, STAIRS[each]) for each in seconds), f"went on with {first}, expected {[STAIRS[each] for each in seconds]} Hz")


# BTN-07, OPEN-43
@story("transport: pause silences and play goes on where it stood")
def pause_and_resume(stage):
    start_playing(stage, steps(stage.media / "stairs.wav", STAIRS))
    stands = pause_after(stage, 1)
    steady("silence while paused", lambda: stage.sound.pitch_now() == 0, 0.8)
    check_goes_on(stage, stands)


# BTN-08
@story("transport: stop silences and play begins again at the start")
def stop(stage):
    start_playing(stage, steps(stage.media / "stairs.wav", STAIRS))
    stage.sound.wait_for(STAIRS[2])
    stage.player.press(STOP)
    stage.sound.wait_for_silence()
    began = stage.sound.now()
    stage.player.press(PLAY)
    stage.sound.wait_for(STAIRS[0])
    check(same_pitch(stage.sound.first_tone(began).hz, STAIRS[0]), "did not begin at the start")


# SEQ-01
@story("transport: next plays on through the list and ends rewound")
def next_to_the_end(stage):
    start_playing(stage, *three_files(stage))
    for hz in TONES[1:]:
        stage.sound.wait_for(TONES[0] if hz == TONES[1] else TONES[1])
        stage.player.press(NEXT)
        stage.sound.wait_for(hz)
    stage.player.press(NEXT)
    stage.sound.wait_for_silence()
    steady("silence at the list's end", lambda: stage.sound.pitch_now() == 0, 0.6)
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])


# SEQ-02, MOVE-15
@story("transport: with repeat on the list goes on from its first file")
def repeat(stage):
    start_playing(stage, *three_files(stage, 1.2))
    stage.player.press(REPEAT)
    wait("the repeat lamp", lambda: stage.player.lamp_lit(REPEAT_LAMP))
    began = stage.sound.wait_for(TONES[0])
    last = stage.sound.wait_for(TONES[2], 10)
    wait("the first file again", lambda: any(same_pitch(t.hz, TONES[0]) for t in stage.sound.tones(last)), 10)
    stage.sound.expect_order([*TONES, TONES[0]], began - 0.3)
    stage.player.press(REPEAT)
    wait("the repeat lamp goes out", lambda: not stage.player.lamp_lit(REPEAT_LAMP))
    stage.sound.wait_for_silence(8, lasting=0.8)


# SEQ-05
@story("transport: one press of previous begins the file again")
def previous_once(stage):
    start_playing(stage, steps(stage.media / "stairs.wav", STAIRS), *three_files(stage)[1:])
    stage.sound.wait_for(STAIRS[2])
    pressed = stage.sound.now()
    stage.player.press(PREVIOUS)
    stage.sound.wait_for(STAIRS[0], 3)
    before = [t for t in stage.sound.tones(pressed) if not same_pitch(t.hz, STAIRS[0])]
    check(before, "it did not play on for the time of a double-click")


# SEQ-07
@story("transport: two presses of previous go one file back")
def previous_twice(stage):
    start_playing(stage, *three_files(stage))
    stage.sound.wait_for(TONES[0])
    stage.player.press(NEXT)
    stage.sound.wait_for(TONES[1])
    stage.desk.click(*stage.player.button(PREVIOUS), times=2)
    stage.sound.wait_for(TONES[0])


# MOVE-11
@story("transport: while stopped next and previous choose without playing")
def choose_while_stopped(stage):
    stage.player.start(*three_files(stage))
    for button in (NEXT, NEXT, PREVIOUS):
        stage.player.press(button)
    steady("silence", lambda: stage.sound.pitch_now() == 0, 0.6)
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[1])


# MOVE-20
@story("transport: while paused next and previous step one second")
def step_while_paused(stage):
    start_playing(stage, steps(stage.media / "stairs.wav", STAIRS))
    stands = pause_after(stage, 1)
    for button in (NEXT, NEXT, NEXT, PREVIOUS):
        stage.player.press(button)
    check_goes_on(stage, [second + 2 for second in stands])


# BTN-05, SEQ-16
@story("transport: shuffle keeps the playing file and plays each other once")
def shuffle(stage):
    frequencies = (392, 466, 554, 659, 784)
    # The first one is still playing when the button is pressed, also on a busy machine.
    files = [tone(stage.media / f"part{number}.wav", hz, 1.3 if number else 5) for number, hz in enumerate(frequencies)]
    start_playing(stage, *files)
    began = stage.sound.wait_for(frequencies[0])
    stage.player.press(SHUFFLE)
    stage.sound.wait_for_silence(12, lasting=1.0)
    heard = [next((hz for hz in frequencies if same_pitch(t.hz, hz)), t.hz) for t in bridge(stage.sound.tones(began - 0.3), LONGEST_GAP)]
    equal(sorted(heard), sorted(frequencies), "what was heard")
    equal(heard[0], frequencies[0], "the first file")


def list_with_a_gap(stage):
    """Files 1 and 3; file 2 is missing. Playing, and the box of the missing one is up."""
    first, gone, third = three_files(stage)
    gone.unlink()
    stage.player.save_list([first, gone, third])
    stage.player.start()
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[0])
    stage.player.press(NEXT)
    stage.player.wait_for_box(f"{gone} Can't open!!")
    return gone


# OPEN-06
@story("transport: a missing file's box, answered Abort, leaves it stopped")
def missing_abort(stage):
    list_with_a_gap(stage)
    stage.player.press_control("Abort")
    stage.player.wait_for_no_box()
    steady("silence", lambda: stage.sound.pitch_now() == 0, 0.8)
    stage.player.press(NEXT)
    stage.player.press(PLAY)
    stage.sound.wait_for(TONES[2])


# OPEN-08
@story("transport: a missing file's box, answered Ignore, goes on to the next")
def missing_ignore(stage):
    list_with_a_gap(stage)
    stage.player.press_control("Ignore")
    stage.sound.wait_for(TONES[2])


# OPEN-07
@story("transport: a missing file's box, answered Retry, tries it again when it is the first press of previous")
def missing_retry(stage):
    gone = list_with_a_gap(stage)
    tone(gone, TONES[1], 4)
    stage.player.press_control("Retry")
    stage.sound.wait_for(TONES[1])


# OPEN-14: A file that is there and cannot be decoded asks as a missing one does, with a line for the reason; a file of
#     a list that was replaced meanwhile only tells
@story("transport: a file that cannot be decoded asks with the reason, and the list goes on")
def undecodable(stage):
    good = tone(stage.media / "good.wav", TONES[0], 6)
    bad = stage.media / "bad.mp3"
    bad.write_bytes(b"this is no sound at all " * 400)
    start_playing(stage, bad, good)
    stage.player.wait_for_box(f"{bad} Can't open!!")
    stage.leave_picture("the box")
    stage.player.press_control("Abort")
    stage.player.wait_for_no_box()
    stage.player.press(PLAY)
    stage.player.wait_for_box(f"{bad} Can't open!!")
    stage.player.press_control("Ignore")
    stage.sound.wait_for(TONES[0])
