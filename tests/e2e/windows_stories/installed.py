# SPDX-License-Identifier: GPL-3.0-or-later
"""The Windows installer."""

from harness.expect import check, equal, wait
from harness.looks import wait_for_exact_panel
from harness.media import tone
from harness.story import story
from wine import windows_path

REGISTERED = (r"HKCR\Corvane.Media\shell\open\command", r"HKCR\Applications\corvane.exe\SupportedTypes",
              r"HKCR\.mp3\OpenWithProgids", r"HKCR\.mpv\OpenWithProgids")


# WIN-35: The installer puts the program in its place, has it open files whatever their names, and takes all away again
@story("windows: the installer puts the program in its place, and takes it away again")
def installed(stage):
    player, wine = stage.player, stage.theatre.wine
    made = sorted(player.program.parent.glob("corvane-*-windows-x86_64.exe"))
    check(len(made) == 1, f"one installer beside the program, not {len(made)}")
    folder = wine.prefix / "drive_c" / "Program Files" / "Corvane"
    equal(wine.run(made[0], "/S"), 0, "the installer's exit code")
    wait("the program is installed", lambda: (folder / "corvane.exe").exists() and (folder / "Uninstall.exe").exists(), 20)
    for name in ("PANELSET/DEFAULT.BMP", "PANELSET/DEFAULT.CSV", "manual/index.html", "LICENSE"):
        check((folder / name).exists(), f"{name} is not installed")
    player.program = folder / "corvane.exe"
    player.start()
    stage.desk.rest()
    wait_for_exact_panel(stage)
    equal(player.power_off(), 0, "exit code")
    for key in REGISTERED:
        equal(asked(wine, key), 0, f"{key} in the registry")
    opens_with_the_player(stage)
    wine.run(folder / "Uninstall.exe", "/S")
    wait("nothing is left", lambda: not folder.exists(), 20)
    for key in REGISTERED:
        equal(asked(wine, key), 1, f"{key} left in the registry")


def asked(wine, key):
    """0: the key is there. For whom it was installed, HKCR shows it."""
    return wine.run("reg", "query", key)


def opens_with_the_player(stage):
    """A file with blanks in its name, opened as the Explorer does with the registered command."""
    player, wine = stage.player, stage.theatre.wine
    song = tone(stage.media / "my own song.wav", 659, 5)
    opener = stage.session.popen(wine.command("start", "/progIDOpen", "Corvane.Media", windows_path(song)),
                                 cwd=player.folder, env=player.environment())
    opener.wait(30)
    window = wait("the panel", lambda: stage.desk.windows(name="^Corvane$"), 20)[0]
    stage.desk.wait_until_still(window.x, window.y, *window.size, seconds=20)
    stage.desk.focus(window)
    stage.desk.key("z")
    stage.sound.wait_for(659, 15)
    stage.desk.key("shift+p")
    wait("the player has ended", lambda: not stage.desk.windows(name="^Corvane$"), 15)
