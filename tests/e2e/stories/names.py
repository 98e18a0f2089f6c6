# SPDX-License-Identifier: GPL-3.0-or-later
"""What a list names is opened and nothing else, whatever it looks like."""

from harness.expect import check, equal
from harness.media import movie, picture, tone
from harness.player import NEXT, PLAY
from harness.story import story
from stories.safe import calls, traced, wait_for_the_end, written

RED, GREEN, BLUE = "#C83232", "#32A046", "#3250C8"
SECONDS = 30
# Name, what the panel says of it, and the tone that is heard. Each "made" would be a file that something else made.
NAMES = [
    ("$(touch made1).wav", "Sound File Now On Play", 440), ("`touch made2`.mp3", "MP3 File Now On Play", 554),
    (";touch made3;.avi", "Video File Now On Play", 700), ("&& touch made4 #.bmp", "BMP IMAGE", None),
    ("a'b\"c>made5.wav", "Sound File Now On Play", 494), ("\\$IFS\\n*?[!x]~{a,b}.mov", "Quick Time File Now On Play", 622),
    ("%n%s%n%s%p.wav", "Sound File Now On Play", 370), ("%1$n%99999d%hhn.avi", "Video File Now On Play", 831),
    ("%n%s%x.jpg", "JPG IMAGE", None), ("-vo=null.wav", "Sound File Now On Play", 932),
    ("--script=made6.avi", "Video File Now On Play", 392), ("--dump-stream=made7.mpg", "Mpeg File Now On Play", 330),
    ("@file -o made8.gif", "GIF IMAGE", None), ("--help.mp3", "MP3 File Now On Play", 587),
]


def write(stage, name, hz):
    """Made under a plain name: what makes it need not stand such names."""
    kind = name[name.index("."):]
    plain = stage.media / f"plain{kind}"
    if hz is None:
        picture(plain, BLUE)
    elif kind in (".avi", ".mov", ".mpg"):
        movie(plain, GREEN, hz, SECONDS)
    else:
        tone(plain, hz, SECONDS)
    return plain.rename(stage.media / name)


# FAULT-24: A path from a list is only opened, be it named like a command of a shell, a format or an option: no program
#     is started, nothing else is written
@story("safe: files named like commands, formats and options are played, and nothing else is done")
def names_are_names(stage):
    paths = [write(stage, name, hz) for name, _, hz in NAMES]
    before = sorted(path.name for path in stage.media.iterdir())
    stage.player.settings(INTERVAL=60, DELAYTIME=30)
    stage.player.save_list(paths)
    tracer, trace = traced(stage)
    stage.player.start(under=tracer)
    stage.player.press(PLAY)
    for number, (name, kind, hz) in enumerate(NAMES, 1):
        if number > 1:
            stage.player.press(NEXT)
        stage.player.wait_for_text(f"{number:03}", 15)
        stage.player.wait_for_text(kind, 15)
        stage.player.wait_for_text(name[:name.index(".")], 15)
        if hz is not None:
            stage.sound.wait_for(hz, 10)
        equal(stage.player.boxes(), [], f"boxes of {name}")
    equal(stage.player.power_off(), 0, "exit code")
    wait_for_the_end(trace)
    equal([line for call, _, line in calls(trace) if call.startswith("exec")][1:], [], "programs started")
    outside = [path for path in written(trace) if "made" in path]
    equal(outside, [], "files made")
    equal(sorted(path.name for path in stage.media.iterdir()), before, "what lies beside the files")
    check(not [path for path in stage.player.folder.iterdir() if path.name.startswith("made")], "nothing in its folder")
