#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The code is laid out as .clang-format says, by the version that it is written for: others lay out differently.

Prints "PASS name", "SKIP name: why" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[3]
TOOL = "clang-format-14"
NAME = "the code is laid out as .clang-format says"


def main():
    found = [file for folder in ("src", "tests", "bench") for file in sorted((PROJECT / folder).rglob("*"))]
    files = [file for file in found if file.suffix in (".cpp", ".h") and "data" not in file.relative_to(PROJECT).parts]
    try:
        done = subprocess.run([TOOL, "--dry-run", *files], capture_output=True, text=True, check=False, cwd=PROJECT)
    except FileNotFoundError:
        print(f"SKIP {NAME}: {TOOL} is not installed")
        return 0
    # One that is not, told from standard input: else a tool that says nothing would pass everything.
    bad = subprocess.run([TOOL, "--dry-run"], input="int  x ;\n", capture_output=True, text=True, check=False, cwd=PROJECT)
    places = sorted(set(re.findall(rf"^{re.escape(str(PROJECT))}/(.*?:\d+):\d+: warning", done.stderr, re.M)))
    if done.returncode or "warning" not in bad.stderr:
        places.append(done.stderr[-200:] or "the tool says nothing")
    print(f"FAIL {NAME}: {'; '.join(places[:8])}" if places else f"PASS {NAME}")
    return 1 if places else 0


if __name__ == "__main__":
    sys.exit(main())
