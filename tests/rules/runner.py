#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What runs the tests tells what failed: in a copy of its own it is given tests that pass, fail, crash, hang, skip, are not
there or need what does not start.

Prints "PASS name" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
CASE = '<testcase name="{}" classname="S" status="run" result="{}">{}</testcase>'
CASES = {"good": CASE.format("A", "completed", "") + CASE.format("B", "completed", "") + '<testcase name="Off" status="notrun"/>',
         "bad": CASE.format("A", "completed", "") + CASE.format("C", "completed", '<failure message="no">one is not two</failure>'),
         "skips": CASE.format("A", "completed", "") + CASE.format("D", "skipped", "<skipped/>")}
REPORTS = "cp {}.xml $GTEST_OUTPUT_PLACE; "
# Name to what a shell does, further properties, and what is told: passed, failed, skipped.
TESTS = {
    "good": (REPORTS.format("good"), "", (2, 0, 0)),
    "bad": (REPORTS.format("bad") + "exit 1", "", (1, 1, 0)),
    "skips": (REPORTS.format("skips"), "", (1, 0, 1)),
    "ends_badly": (REPORTS.format("good") + "kill -SEGV $$", "", (2, 1, 0)),
    "crashes": ("echo '[       OK ] S.A (0 ms)'; kill -ABRT $$", "", (1, 1, 0)),
    "hangs": ("sleep 60", "TIMEOUT 1", (0, 1, 0)),
    "lines": ("echo PASS a; echo SKIP b: no drive; echo PASS c: d", "", (2, 0, 1)),
    "bad_lines": ("echo PASS a; echo FAIL b: why; exit 1", "", (1, 1, 0)),
    "dies_behind_lines": ("echo PASS a; exit 3", "", (1, 1, 0)),
    "says_nothing": ("true", "", (1, 0, 0)),
    "is_not_built": ("true", "REQUIRED_FILES /there/is/none", (0, 1, 0)),
    "setup_fails": ("false", "FIXTURES_SETUP it LABELS setup", None),
    "needs_it": ("true", "FIXTURES_REQUIRED it", (0, 2, 0)),
}


def lay_out(root, names):
    """The tools and a build that knows these tests."""
    build = root / "build" / "release"
    build.mkdir(parents=True, exist_ok=True)
    shutil.copytree(TOOLS, root / "tools", dirs_exist_ok=True, ignore=lambda folder, found: [n for n in found if not n.endswith(".py")])
    for name, cases in CASES.items():
        (build / f"{name}.xml").write_text(f"<testsuites><testsuite name='S'>{cases}</testsuite></testsuites>")
    lines = []
    for name in names:
        does, more, _ = TESTS[name]
        report = f"{build}/report-{name}.xml"
        lines.append(f'add_test({name} /bin/sh -c [[{does.replace("$GTEST_OUTPUT_PLACE", report)}]])')
        environment = f'ENVIRONMENT "GTEST_OUTPUT=xml:{report}" ' if name in (*CASES, "ends_badly", "crashes") else ""
        reads = "" if "REQUIRED" in more else f"REQUIRED_FILES {build}/good.xml "
        lines.append(f"set_tests_properties({name} PROPERTIES WORKING_DIRECTORY {build} {environment}{reads}{more})")
    (build / "CTestTestfile.cmake").write_text("\n".join(lines))


def run(root, *options):
    """Exit code and lines."""
    done = subprocess.run(["/usr/bin/python3", str(root / "tools" / "run_tests.py"), "--build", "release", *options],
                          capture_output=True, text=True, check=False, timeout=100)
    return done.returncode, done.stdout.splitlines() or [done.stderr[-200:]]


def wrong():
    for name, (_, _, told) in TESTS.items():
        if told is None:
            continue
        with tempfile.TemporaryDirectory(prefix="corvane-runner-") as folder:
            root = pathlib.Path(folder)
            lay_out(root, [name, "setup_fails"] if name == "needs_it" else [name])
            wanted = (1 if told[1] else 0, "{} passed, {} failed, {} skipped".format(*told))
            code, lines = run(root)
            if (code, lines[-1]) != wanted:
                yield f"{name}: {code}, {lines[-1]}"
            kept = "not run again" in "".join(run(root)[1])
            if kept != (told[1:] == (0, 0)):
                yield f"{name}: is{' not' if not kept else ''} kept"
            if kept:
                (root / "build" / "release" / "good.xml").open("a", encoding="utf-8").write("\n")
                if "not run again" in "".join(run(root)[1]):
                    yield f"{name}: is kept although what it reads has changed"
    with tempfile.TemporaryDirectory(prefix="corvane-runner-") as folder:
        root = pathlib.Path(folder)
        lay_out(root, ["good", "lines"])
        for options, wanted in ((["--only", "none"], "0 passed, 1 failed, 0 skipped"), (["--only", "goo"], "2 passed, 0 failed, 0 skipped"),
                                (["--failed-build", "asan", "--again"], "4 passed, 1 failed, 1 skipped")):
            code, lines = run(root, *options)
            if (code, lines[-1]) != (0 if " 0 failed" in wanted else 1, wanted):
                yield f"{options}: {code}, {lines[-1]}"


def main():
    places = list(wrong())
    name = "what runs the tests tells what passed, what failed and what was skipped"
    print(f"FAIL {name}: {'; '.join(places[:6])}" if places else f"PASS {name}")
    return 1 if places else 0


if __name__ == "__main__":
    sys.exit(main())
