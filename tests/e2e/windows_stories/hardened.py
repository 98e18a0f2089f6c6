# SPDX-License-Identifier: GPL-3.0-or-later
"""What the Windows program's own file says of how it is loaded."""

import re
import subprocess

from harness.expect import check, equal
from harness.story import story

# The system keeps these under names of its own, loads them by the manifest, or they are the loader itself: none of them is
# looked for in the program's folder.
SAFE = {"advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll", "shell32.dll",
        "user32.dll"}
HEADERS = ["x86_64-w64-mingw32-objdump", "-p"]
GUARD = b"*** stack smashing detected ***"  # what a guarded frame would say: linked where there is one, and only there


# WIN-51: No library is taken from the program's folder
@story("windows: no library is taken from the program's folder, and every place of the program is a guess")
def hardened(stage):
    told = subprocess.run([*HEADERS, str(stage.player.program)], capture_output=True, text=True, check=True).stdout
    imports = {name.lower() for name in re.findall(r"DLL Name: (\S+)", told)}
    equal(imports - SAFE, set(), "libraries that could lie beside the program")
    check("kernel32.dll" in imports, "the file tells its libraries")
    for flag in ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"):
        check(flag in told, f"{flag} is not set")
    check(GUARD in stage.player.program.read_bytes(), "no frame is guarded")
