#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every test that stands in a source is in a program that was built, and every program is one that ctest knows: built.py BUILD

A folder that no CMakeLists.txt names, or a file that a build has not seen, would be passed over without a word.
Prints "PASS name" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import json
import pathlib
import re
import subprocess
import sys

from book import every_test


def programs(build):
    """The GoogleTest programs that ctest would run."""
    listing = subprocess.run(["ctest", "--show-only=json-v1"], cwd=build, capture_output=True, text=True, check=True).stdout
    words = {word for test in json.loads(listing)["tests"] for word in test.get("command", [])}
    return sorted(word for word in words if pathlib.Path(word).name.startswith("test_"))


def tests_in(listing):
    """Names without instance and number, of what --gtest_list_tests prints."""
    suite = ""
    for line in re.sub(r"  # .*", "", listing).splitlines():
        if line.startswith("  "):
            yield f"{suite}.{line.strip().partition('/')[0]}"
        elif line.endswith("."):
            suite = line[:-1].rpartition("/")[2]


def main():
    known = set()
    for program in programs(pathlib.Path(sys.argv[1])):
        known.update(tests_in(subprocess.run([program, "--gtest_list_tests"], capture_output=True, text=True, check=True).stdout))
    told = [test for test in every_test([]) if not test.folder.startswith("e2e") and not test.folder.endswith("/windows")]
    missing = [f"{test.folder}: {test.name}" for test in told if test.name not in known]
    sample = list(tests_in("Qt/Files.\n  Opens/0  # GetParam() = 1\nA.\n  B\n"))
    wrong = missing or ([] if known else ["no program"]) or ([] if sample == ["Files.Opens", "A.B"] else ["the listing is not understood"])
    name = "each test that stands in a source is in a program"
    print(f"FAIL {name}: {'; '.join(wrong[:8])}" if wrong else f"PASS {name}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
