# SPDX-License-Identifier: GPL-3.0-or-later
"""The Windows installer."""

from harness.expect import check, equal, wait
from harness.looks import wait_for_exact_panel
from harness.story import story


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
    wine.run(folder / "Uninstall.exe", "/S")
    wait("nothing is left", lambda: not folder.exists(), 20)
