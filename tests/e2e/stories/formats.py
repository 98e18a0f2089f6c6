# SPDX-License-Identifier: GPL-3.0-or-later
"""The formats that no other story plays, as entries of one list: each heard or seen to its end."""

from harness.expect import check, equal, steady, wait
from harness.media import encode, movie, tone
from harness.player import PLAY
from harness.signs import Entry, play_through, told, told_surely
from harness.sound import LENGTH_ERROR
from harness.story import story

SECONDS = 4.0  # in which number, kind, title, sound and window are looked at
LONGEST_GAP = 0.3  # seconds that a busy machine may leave in a tone
CODER_SECONDS = 0.3  # that a coder may put before and behind what it is given
# The panel's text of each, and how it is made; None: as its ending says.
SOUNDS = {"flac": ("FLAC Now On Play", None), "ogg": ("OGG Now On Play", ["-c:a", "libvorbis"]),
          "opus": ("OPUS Now On Play", ["-c:a", "libopus"]), "m4a": ("M4A Now On Play", None),
          "ra": ("RA Now On Play", ["-ar", "8000", "-ac", "1", "-c:a", "real_144", "-f", "rm"]),
          "rm": ("RM Now On Play", ["-ar", "32000", "-c:a", "ac3", "-f", "rm"]),
          "rmm": ("RMM Now On Play", ["-ar", "44100", "-c:a", "ac3", "-f", "rm"]),
          "snd": ("Sound File Now On Play", ["-c:a", "pcm_s16be", "-f", "au"]),
          "aif": ("Sound File Now On Play", ["-f", "aiff"]),
          "aifc": ("Sound File Now On Play", ["-c:a", "pcm_mulaw", "-f", "aiff"])}
MOVIES = {"qt": ("Quick Time File Now On Play", ["-f", "mov"]), "mpeg": ("Mpeg File Now On Play", ["-f", "mpeg"]),
          "mpv": ("Mpeg File Now On Play", ["-an", "-c:v", "mpeg1video", "-f", "mpeg1video"])}
COLOURS = ("#C83232", "#32A046", "#3250C8")
REPEATED = 300  # times half a minute
FIRST_HZ = 400  # of the list; each file is a good semitone higher


def entries_of(folder):
    plain = tone(folder / "plain.wav", FIRST_HZ, 0.1)
    made = []
    for number, (ending, (kind, options)) in enumerate(SOUNDS.items()):
        hz = FIRST_HZ * 1.08**number
        tone(plain, hz, SECONDS)
        path = folder / f"sound.{ending}"
        encode(["-i", str(plain), *(options or [])], path)
        made.append(Entry(path, kind, (hz,), None))
    for number, (ending, (kind, options)) in enumerate(MOVIES.items()):
        hz = FIRST_HZ * 1.08 ** (len(SOUNDS) + number)
        source = movie(folder / f"source{number}.avi", COLOURS[number], hz, SECONDS)
        path = folder / f"movie.{ending}"
        encode(["-i", str(source), *options], path)
        made.append(Entry(path, kind, () if "-an" in options else (hz,), COLOURS[number]))
    return made


# KIND-07, KIND-08, KIND-11, KIND-14, MEDIA-10
@story("formats: each format without a story of its own is told, heard or seen as an entry of a list, whole and in order")
def further_formats(stage):
    entries = entries_of(stage.media)
    stage.player.settings(DELAYTIME=30)
    stage.player.save_list([entry.path for entry in entries])
    stage.player.start()
    told_surely(stage, "Display")  # the labels are known before the first file plays
    stage.player.press(PLAY)
    play_through(stage, entries)
    heard = stage.sound.expect_exactly([entry.tones[0] for entry in entries if entry.tones], longest_gap=LONGEST_GAP)
    for entry, sounding in zip((entry for entry in entries if entry.tones), heard):
        check(abs(sounding.length - SECONDS) <= LENGTH_ERROR + CODER_SECONDS, f"{entry.path.name} was heard for {sounding.length:.2f} s")


def long_guess(path):
    """An MP3 file of hours that says nothing of its length, and whose first seconds promise a much longer one: counting it takes
    longer than opening it may. Returns its length in seconds."""
    parts = []
    for source, seconds in (("sine=frequency=440:d=10", 10), ("anoisesrc=d=30:a=0.3", 30)):
        part = path.with_name(f"part{seconds}.mp3")
        encode(["-f", "lavfi", "-i", source, "-q:a", "4", "-write_xing", "0", "-id3v2_version", "0"], part)
        parts.append(part.read_bytes())
    path.write_bytes(parts[0] + parts[1] * REPEATED)
    return 10 + 30 * REPEATED


@story("formats: the slider of a sound whose length can only be guessed at first stands where the sound stands")
def guessed_length(stage):
    path = stage.media / "guess.mp3"
    seconds = long_guess(path)
    stage.player.start(path)
    stage.player.press(PLAY)
    wait("some seconds of it", lambda: (told(stage, "Time") or "") >= "00:04", 15)
    stage.desk.drag(stage.player.slider(0.01), stage.player.slider(0.5))
    minutes = seconds // 2 // 60
    wait("half of its time", lambda: (told(stage, "Time") or "").split(":")[0] in (str(minutes - 1), str(minutes), str(minutes + 1)))
    steady("half of the slider", lambda: 0.48 <= stage.player.slider_fraction() <= 0.52, 1)
    equal(stage.player.power_off(), 0, "exit code")
