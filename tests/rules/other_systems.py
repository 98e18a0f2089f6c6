#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What runs commands on other systems says plainly why it cannot and what they came to, and packages are found by what a
system offers.

Prints "PASS name" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
sys.path.insert(0, str(TOOLS))
import every_system  # noqa: E402
import systems  # noqa: E402

ARCHIVE = "http://archive.invalid/debian"
# A name, who calls, which tool is not there, the archive, and what is told; None: nothing is wrong.
CALLS = (
    ("trixie", 0, "", ARCHIVE, None), ("sid", 0, "", ARCHIVE, None), ("bookworm", 0, "", ARCHIVE, None),
    ("trixy", 0, "", ARCHIVE, "bookworm, trixie, sid"), ("", 0, "", ARCHIVE, "there is no system"),
    ("../sid", 0, "", ARCHIVE, "there is no system"), ("TRIXIE", 0, "", ARCHIVE, "there is no system"),
    ("trixie", 1000, "", ARCHIVE, "needs root"), ("trixie", 0, "debootstrap", ARCHIVE, "debootstrap is not installed (apt-get install debootstrap)"),
    ("trixie", 0, "unshare", ARCHIVE, "apt-get install util-linux"), ("trixie", 0, "git", ARCHIVE, "apt-get install git"),
    ("trixie", 0, "", "", "apt here is told of no archive"),
)
# Words on the command line, and what is told by whoever calls without the tools.
COMMANDS = (
    (("trixy", "true"), 2, "there is no system 'trixy'"), (("trixie",), 2, "which command?"), ((), 2, "system"),
    (("--take", "../../etc", "trixie", "true"), 2, "paths in the clone"), (("--take", "/etc", "trixie", "true"), 2, "paths in the clone"),
    (("--minutes", "soon", "trixie", "true"), 2, "--minutes"), (("trixie", "true"), 125, "debootstrap is not installed" if os.geteuid() == 0 else "needs root"),
)
# Packages that are wanted, installed and offered, whether apt has read offers, and which are missing and are chosen.
PACKAGES = (
    ("one two", "one two", "one two", True, "", "one two"), ("one two", "one", "one two", True, "two", "one two"),
    ("new|old", "old", "old", True, "", "old"), ("new|old", "", "old", True, "new|old", "old"), ("new|old", "", "new old", True, "new|old", "new"),
    ("new|old", "", "", True, "new|old", "new"), ("some|", "", "", True, "", ""), ("some|", "", "some", True, "some|", "some"),
    ("some|", "some", "some", True, "", "some"), ("some|", "", "", False, "some|", ""), ("none", "", "", True, "none", "none"),
)


# What was said on a system, and what each step came to: None where it did not end.
SAID = "ENDED ./play: 0\n== unit: 7 passed\n7 passed, 2 failed, 1 skipped\nENDED ./check --quick: 1\n"
STEPS = (
    ("./play", SAID, (1, 0, 0)), ("./check --quick", SAID, (7, 2, 1)), ("tools/package", SAID, None), ("./play", "ENDED ./play: 137\n", (0, 1, 0)),
    ("./check --quick", "ENDED ./play: 0\nthe build failed\nENDED ./check --quick: 1\n", (0, 1, 0)), ("./check --quick", "7 passed, 0 failed, 0 skipped\n", None),
    ("tools/package", "7 passed, 0 failed, 0 skipped\nENDED ./check --quick: 0\nENDED tools/package: 0\n", (1, 0, 0)),
    ("./play", "./play\n   ENDED ./play: 0\n", None),
)


def wrong_answers():
    for name, user, lacking, archive, told in CALLS:
        said = systems.what_is_wrong(name, user, lambda tool, lacking=lacking: tool != lacking, archive)
        if (told is None) != (said == "") or told and told not in said or "\n" in said:
            yield f"{name!r}: {said!r}"


def wrong_ends():
    with tempfile.TemporaryDirectory(prefix="corvane-systems-") as folder:
        for words, code, told in COMMANDS:
            done = subprocess.run(["/usr/bin/python3", str(TOOLS / "on_system"), *words], capture_output=True, text=True, check=False,
                                  timeout=60, env={"PATH": folder, "CORVANE_SYSTEMS": f"{folder}/systems"})
            if done.returncode != code or told not in done.stderr or "Traceback" in done.stderr or pathlib.Path(folder, "systems", "trixie").exists():
                yield f"{' '.join(words)}: {done.returncode}, {done.stderr[-200:]!r}"


def wrong_sums():
    for step, said, told in STEPS:
        if every_system.ended(step, said) != told:
            yield f"{step} after {said!r}: {every_system.ended(step, said)}"
    for package, told in (("4:14.2.0-1", "14.2.0"), ("6.8.2+dfsg-9", "6.8.2"), ("7:7.1.3-0+deb13u1", "7.1.3"), ("", "unknown")):
        if every_system.short_version(package) != told:
            yield f"{package}: {every_system.short_version(package)}"


def wrong_packages():
    """By the functions that ./play and ./check call, over a dpkg and an apt of our own."""
    for wanted, installed, offered, read, missing, chosen in PACKAGES:
        script = f"""ROOT=/nowhere; . {TOOLS}/lib.sh
          is_installed() {{ [[ " {installed} " == *" $1 "* ]]; }}; is_offered() {{ [[ " {offered} " == *" $1 "* ]]; }}
          has_read_offers() {{ {str(read).lower()}; }}
          echo $(missing_packages {wanted.replace("|", "'|'")}); echo $(chosen_packages {wanted.replace("|", "'|'")})"""
        told = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=False).stdout.splitlines()
        if told != [missing, chosen]:
            yield f"{wanted} with {installed or 'nothing'}: {told}"


RULES = {
    "what keeps a system from being made is told in a line": wrong_answers,
    "a wrong call for another system ends at once and says why": wrong_ends,
    "what each step on a system came to is told": wrong_sums,
    "packages are found by what the system offers": wrong_packages,
}


def main():
    failed = False
    for name, rule in RULES.items():
        places = list(rule())
        failed = failed or bool(places)
        print(f"FAIL {name}: {'; '.join(places[:6])}" if places else f"PASS {name}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
