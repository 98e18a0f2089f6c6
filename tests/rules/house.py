#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What every file of the project keeps: licence line, length, line width, no left-overs, no sleeping tests, no places of
one machine. Prints "PASS name" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import os
import pathlib
import re
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ("src", "tests", "tools", "bench", "docs", "packaging", "debian", ".ci")
TOP_FILES = ("play", "check", "CMakeLists.txt", "README.md", "CONTRIBUTING.md", "THIRD_PARTY.md")
CODE = (".cpp", ".h", ".py", ".sh")
MOST_LINES = 500
LICENCE = "SPDX-License-Identifier:"
LEFT_OVERS = re.compile(r"\b(TO" r"DO|FIX" r"ME|X" r"XX|HA" r"CK)\b|GTEST_" r"SKIP\(\)\s*;|\bDIS" r"ABLED_|EXPECT_TRUE\(tr" r"ue\)|^(<{7}|>{7}) ", re.M)
SLEEPS = re.compile(r"\bsleep_for\b|\busleep\(|\bnanosleep\(|QThread::m?sleep|QTest::q(Sleep|Wait)\(|time\.sleep\(([1-9]|0\.[5-9])")
MACHINE_PLACES = re.compile(r"(?<![\w.$}/])/(?:ro" r"ot/|wo" r"rk/|fa" r"rm/)")


def files():
    """Every text file of the project by its path in it."""
    for name in (*FOLDERS, *TOP_FILES):
        place = PROJECT / name
        for path in [place] if place.is_file() else sorted(place.rglob("*")):
            inner = path.relative_to(PROJECT)
            if path.is_file() and "__pycache__" not in inner.parts and inner.parts[:2] != ("tests", "data"):
                try:
                    yield inner, path.read_text(encoding="utf-8")
                except UnicodeDecodeError:
                    continue


def is_code(path):
    return path.suffix in CODE or path.name in ("play", "check", "run", "on_system", "package", "source", "try_package", "test_package",
                                                "plays-a-sound")


def missing_licence(path, text):
    if is_code(path) and text.strip() and LICENCE not in "".join(text.splitlines(True)[:3]):
        yield "no licence line"


def too_long(path, text):
    if is_code(path) and text.count("\n") > MOST_LINES:
        yield f"{text.count(chr(10))} lines"


def left_overs(path, text):
    if is_code(path):
        yield from (f"line {text.count(chr(10), 0, m.start()) + 1}: {m.group()}" for m in LEFT_OVERS.finditer(text))


def sleeping_tests(path, text):
    if path.parts[0] == "tests" and is_code(path):
        yield from (f"line {text.count(chr(10), 0, m.start()) + 1}: {m.group()}" for m in SLEEPS.finditer(text))


def machine_places(_path, text):
    yield from (f"line {text.count(chr(10), 0, m.start()) + 1}: {m.group()}" for m in MACHINE_PLACES.finditer(text))


RULES = {
    "each source file has its licence line": missing_licence,
    f"no file is longer than {MOST_LINES} lines": too_long,
    "nothing is left over": left_overs,
    "no test sleeps": sleeping_tests,
    "no place of one machine is named": machine_places,
}


def executables():
    """What is run by name can be run."""
    for name in ("play", "check", ".ci/run", "tests/e2e/run.py", "tests/package/installed.py", "tools/on_system", "tools/package", "tools/session.py", "tools/try_package"):
        if not os.access(PROJECT / name, os.X_OK):
            yield name
    # One that cannot be run is passed over by ./check without a word.
    yield from (path.name for path in sorted((PROJECT / "tests" / "rules").glob("*.py")) if not os.access(path, os.X_OK))


def seen_failing():
    here = pathlib.Path("tests/unit/x.cpp")
    bad = {missing_licence: "int x;\n", too_long: "\n" * (MOST_LINES + 1), left_overs: "// TO" "DO later\n",
           sleeping_tests: "std::this_thread::sleep" "_for(1s);", machine_places: 'open("/ro' 'ot/x")'}
    bad_too = list(left_overs(here, "<" * 7 + " HEAD\nint x;\n"))
    good = f"// {LICENCE} GPL-3.0-or-later\nint x;\n"
    return bad_too and all(list(rule(here, text)) for rule, text in bad.items()) and not any(list(rule(here, good)) for rule in bad)


def main():
    found = {name: [] for name in RULES}
    for path, text in files():
        for name, rule in RULES.items():
            found[name] += [f"{path}: {what}" for what in rule(path, text)]
    found["what is run by name can be run"] = list(executables())
    for name, places in found.items():
        print(f"FAIL {name}: {'; '.join(places[:6])}" if places else f"PASS {name}")
    seen = seen_failing()
    print("PASS the rules catch what they must" if seen else "FAIL the rules catch what they must")
    return 0 if seen and not any(found.values()) else 1


if __name__ == "__main__":
    sys.exit(main())
