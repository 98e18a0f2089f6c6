#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""clang-tidy finds nothing in what was changed: tidy.py [--all] BUILD

Changed is what is not committed, and what the last commit brought; a quarter of a minute a file, so no more than MOST of
them, the last changed first. --all: every source of src/, which takes an hour.
Prints "PASS name", "SKIP name: why" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import argparse
import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[3]
TOOL = "clang-tidy-14"
MOST = 6
NAME = "clang-tidy finds nothing in what was changed"


def git(*words):
    done = subprocess.run(["git", "-C", str(PROJECT), *words], capture_output=True, text=True, check=False)
    return done.stdout.split("\n") if done.returncode == 0 else []


def changed():
    names = git("diff", "--name-only", "HEAD") + git("diff", "--name-only", "HEAD~1", "HEAD")
    files = {PROJECT / name for name in names if name.startswith("src/") and name.endswith(".cpp")}
    return sorted((file for file in files if file.exists()), key=lambda file: -file.stat().st_mtime)[:MOST]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("build", type=pathlib.Path)
    options = parser.parse_args()
    known = (options.build / "compile_commands.json").read_text(encoding="utf-8")
    files = sorted((PROJECT / "src").rglob("*.cpp")) if options.all else changed()
    files = [file for file in files if f'"{file}"' in known]
    try:
        places = []
        for file in files:
            done = subprocess.run([TOOL, "-quiet", "-p", options.build, file], capture_output=True, text=True, check=False, cwd=PROJECT)
            found = re.findall(r"^(\S+?:\d+):\d+: (?:error|warning): (.*)$", done.stdout, re.M)
            places += [f"{place.removeprefix(f'{PROJECT}/')} {what}" for place, what in found]
            if done.returncode and not found:
                places.append(f"{file.name}: {done.stderr[-200:]}")
    except FileNotFoundError:
        print(f"SKIP {NAME}: {TOOL} is not installed")
        return 0
    print(f"FAIL {NAME}: {'; '.join(places[:8])}" if places else f"PASS {NAME} ({len(files)} files)")
    return 1 if places else 0


if __name__ == "__main__":
    sys.exit(main())
