# SPDX-License-Identifier: GPL-3.0-or-later
"""Single tests of what ctest ran: of GoogleTest's programs by their report, of scripts by the lines that they print;
and what a result follows from."""

import functools
import hashlib
import os
import pathlib
import re
import xml.etree.ElementTree as xml


@functools.cache
def hash_of(place):
    """Of a file, or of all files of a folder."""
    path = pathlib.Path(place)
    files = sorted(each for each in path.rglob("*") if each.suffix != ".pyc") if path.is_dir() else [path]
    parts = [str(file).encode() + file.read_bytes() for file in files if file.is_file()]
    return hashlib.sha256(b"".join(hashlib.sha256(part).digest() for part in parts)).hexdigest()


def key_of(test):
    """What its result follows from: what it reads, the installed packages and which of its stories are wanted."""
    places = [*test["reads"], "/var/lib/dpkg/status"]
    return hashlib.sha256("".join(map(hash_of, places)).encode()).hexdigest() + os.environ.get("CORVANE_STORIES", "")


def results_of(test, case, state):
    """(passed, skipped, failures) of single tests, the latter as texts; case and state: what ctest tells of the whole."""
    output = case.findtext("system-out") or ""
    if test["report"] and test["report"].exists():
        ran = [each for each in xml.parse(test["report"]).iterfind("testsuite/testcase") if each.get("status") == "run"]
        failures = [f"{each.get('classname')}.{each.get('name')}\n{each.findtext('failure')}"
                    for each in ran if each.find("failure") is not None]
        skipped = [f"{each.get('classname')}.{each.get('name')}" for each in ran
                   if each.get("result") == "skipped" and each.find("failure") is None]
        passed = len(ran) - len(failures) - len(skipped)
    else:  # a script, or a program that did not come to its report
        found = re.findall(r"^(PASS|FAIL|SKIP) (.*)", output, re.M)
        passed = sum(word == "PASS" for word, _ in found) + output.count("[       OK ]")
        failures, skipped = ([text for word, text in found if word == wanted] for wanted in ("FAIL", "SKIP"))
    if case.get("status") != "run" and not failures:
        said = [line for line in output.splitlines() if re.search(r"ERROR:|runtime error|Assert|\[ RUN", line)]
        failures = ["\n".join([f"as a whole: {state}", *said[-4:], "...", *output.splitlines()[-6:]])]
    if not passed and not failures and not skipped and not {"setup", "story"} & set(test["labels"]):
        passed = 1
    return passed, skipped, failures


def all_results(report, tests, states):
    """Name to (passed, skipped, failures) of all that ctest's JUnit report tells of, also of what the tests needed."""
    if not report.exists():
        return {}
    known = {test["name"]: test for test in tests}
    return {case.get("name"): results_of(known.get(case.get("name"), {"report": None, "labels": ["setup"]}), case,
                                         states.get(case.get("name"), ""))
            for case in xml.parse(report).getroot().iterfind("testcase")}
