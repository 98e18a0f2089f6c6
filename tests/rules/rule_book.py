#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The rule book (tests/rules.md and the tables that it names): each row is whole, its id stands once, and the tests that it
names exist. So do the tests that docs/reliability.md names in its table of what was reviewed. With --ran FOLDER and the groups of a run: each named test ran and passed, as the reports in that folder say;
--partly leaves out tests of other groups. --windows: the run is that of the Windows program, which alone answers for the
groups that run nowhere else. Tests that this machine cannot do are named, and are no failure. With --list
prints id and rule of each row.

Prints "PASS name", "SKIP name: where" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import argparse
import fnmatch
import functools
import json
import pathlib
import re
import sys
import tempfile
from typing import NamedTuple

TESTS = pathlib.Path(__file__).resolve().parents[1]
BOOK = TESTS / "rules.md"
REVIEW = TESTS.parent / "docs" / "reliability.md"
REVIEW_HEADING = "## What was reviewed, and what shows it"
HEADINGS = ["Id", "Rule", "Test", "Runs"]
ID = re.compile(r"[A-Z]{2,6}-\d{2,3}")
NO_TEST = "none"
LEAST_REASON = 20  # characters that say why a row has no test here
# Where each group of tests runs. "fake": the machine in memory; "real": the desktop's own parts; "end to end": the
# built program, driven as a person would.
PLACES = {"walk": "fake", "contract_fake": "fake", "contract_linux": "real", "unit_linux": "real", "golden": "real",
          "e2e": "end to end", "windows:contract_windows": "Wine", "windows:unit_windows": "Wine",
          "windows:e2e": "Wine end to end"}
WINDOWS_RUN = {group for group in PLACES if group.startswith("windows:")}  # what ./check --windows alone runs
FOLDERS = {"walk": ["unit/walk"], "golden": ["golden"], "contract_fake": ["contract", "contract/fake"],
           "contract_linux": ["contract", "contract/linux"],
           "windows:contract_windows": ["contract", "contract/windows"], "windows:unit_windows": ["unit/windows"]}
STORIES = {"e2e": "stories", "windows:e2e": "windows_stories"}
MACRO = re.compile(r"^TEST(_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\)", re.M)
INSTANCE = re.compile(r"INSTANTIATE_TEST_SUITE_P\(\s*(\w+)\s*,\s*(\w+)")
STORY = re.compile(r'^@story\("((?:[^"\\]|\\.)*)"\)', re.M)


class Row(NamedTuple):
    place: str  # file and line
    id: str
    rule: str
    tests: list  # "group: test"
    runs: str


def place_of(group):
    return PLACES.get(group, "fake" if group.startswith("unit_") else None)


def tables():
    """The book's index and every table that it links to."""
    links = re.findall(r"\]\((rules/[\w-]+\.md)\)", BOOK.read_text(encoding="utf-8"))
    return [BOOK.parent / link for link in links]


def read_rows(path, text, broken):
    rows = []
    for number, line in enumerate(text.splitlines(), 1):
        if not line.startswith("|"):
            continue
        place = f"{path.name}:{number}"
        cells = [cell.strip().replace("\\|", "|") for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
        if cells == HEADINGS or all(set(cell) <= set("-:") and cell for cell in cells):
            continue
        if len(cells) != len(HEADINGS) or not all(cells):
            broken.append(f"{place} is not whole")
            continue
        tests = re.findall(r"`([^`]+)`", cells[2])
        rows.append(Row(place, cells[0], cells[1], tests, cells[3]))
    return rows


def reason_is_missing(row):
    return not row.runs.startswith("not here: ") or len(row.runs) - len("not here: ") < LEAST_REASON


def wrong_rows(rows):
    """Rows whose id or whose tests' places are not what they must be."""
    seen = {}
    for row in rows:
        if not ID.fullmatch(row.id):
            yield f"{row.place}: id {row.id}"
        if row.id in seen:
            yield f"{row.place}: {row.id} stands in {seen[row.id]} too"
        seen[row.id] = row.place
        if not row.tests:
            if reason_is_missing(row):
                yield f"{row.place}: {row.id} has neither test nor reason"
            continue
        places = []
        for test in row.tests:
            place = place_of(test.partition(": ")[0])
            if place is None:
                yield f"{row.place}: {test} is in no group of tests"
            elif place not in places:
                places.append(place)
        if row.runs != ", ".join(places):
            yield f"{row.place}: {row.id} runs in {', '.join(places)}"


def known_tests(group):
    """Names that the group's sources hold; tests with parameters once for each instance."""
    if group in STORIES:
        return {name for file in (TESTS / "e2e" / STORIES[group]).glob("*.py") for name in STORY.findall(file.read_text())}
    names, tables, instances = set(), [], {}
    for folder in FOLDERS.get(group, [f"unit/{group.removeprefix('unit_')}"]):
        for file in sorted((TESTS / folder).glob("*.*")):
            text = file.read_text(encoding="utf-8", errors="replace")
            found = MACRO.findall(text)
            names.update(f"{suite}.{test}" for kind, suite, test in found if kind != "_P")
            tables += [(suite, test) for kind, suite, test in found if kind == "_P"]
            for instance, suite in INSTANCE.findall(text):
                instances.setdefault(suite, []).append(instance)
    return names | {f"{instance}/{suite}.{test}" for suite, test in tables for instance in instances.get(suite, [])}


def unknown_tests(rows):
    known = {}
    for row in rows:
        for test in row.tests:
            group, _, name = test.partition(": ")
            if name not in known.setdefault(group, known_tests(group)):
                yield f"{row.id}: {test}"


@functools.cache
def every_test():
    """Names of all tests with their suites, whatever runs them, and titles of all stories."""
    groups = {*PLACES} | {f"unit_{folder.name}" for folder in (TESTS / "unit").iterdir()}
    return {name for group in groups if group not in STORIES for name in known_tests(group)}, known_tests("e2e") | known_tests("windows:e2e")


def is_proof(name, tests, stories):
    """Whether a proof of that name exists. Of a test the instance and the suite's beginning, of a story its end may be left
    out: "Suite.*", "Suite.Test", "group: title …"; else it is a file of the project, or a fuzz target."""
    if ": " in name or name.endswith(":"):
        beginning = name.removesuffix("…").rstrip()
        return any(story == name or (beginning != name or name.endswith(":")) and story.startswith(beginning) for story in stories)
    if name.startswith("fuzz_"):
        return (TESTS / "fuzz" / f"{name.removeprefix('fuzz_')}_fuzz.cpp").exists()
    if "/" in name and (TESTS.parent / name.split()[0]).exists():
        return True
    return "." in name and any(fnmatch.fnmatchcase(test.rpartition("/")[2], name) for test in tests)


def unproved(text):
    """Rows of the review's table that name no test, and names in it that nothing bears."""
    tests, stories = every_test()
    rows = [line for line in text.partition(REVIEW_HEADING)[2].partition("\n## ")[0].splitlines() if line.startswith("|")][2:]
    if not rows:
        yield "no rows"
    for row in rows:
        what, _, shown = row.strip("|").partition("|")
        names = re.findall(r"`([^`]+)`", shown.partition("|")[0])
        if not names:
            yield f"{what.strip()[:60]}: no test"
        yield from (f"{what.strip()[:60]}: {name}" for name in names if not is_proof(name, tests, stories))


def answers_for(group, windows):
    """Whether such a run is the one that runs the group."""
    return (group in WINDOWS_RUN) == windows


def story_results(lines, group):
    """Stories that passed, and those that were skipped; a reason follows the name, which may hold colons of its own."""
    passed = {re.sub(r" \([\d.]+ s\)$", "", line[5:]) for line in lines if line.startswith("PASS ")}
    told = [line[5:] for line in lines if line.startswith("SKIP ")]
    return passed, {name for name in known_tests(group) if any(line.startswith(f"{name}: ") for line in told)}


def results_of(folder, group):
    """What passed and what was skipped: for tests with parameters the name without its number, when it holds of all."""
    report = re.sub(r"[^\w.]+", "-", group)
    if group in STORIES:
        return story_results((folder / f"{report}.log").read_text().splitlines(), group)
    passed, skipped, failed = set(), set(), set()
    for suite in json.loads((folder / f"{report}.json").read_text()).get("testsuites", []):
        for case in suite["testsuite"]:
            name = f"{suite['name']}.{case['name'].partition('/')[0]}"
            ran = case.get("status") == "RUN" and not case.get("failures")
            word = case.get("result") if ran else None
            {"COMPLETED": passed, "SKIPPED": skipped}.get(word, failed).add(name)
    return passed - skipped - failed, skipped - failed


def tests_not_passed(rows, folder, groups, partly, skipped, windows=False):
    """Rows whose tests did neither pass nor, for a reason of this machine, get skipped; those are added to `skipped`."""
    results = {}
    for row in rows:
        for test in row.tests:
            group, _, name = test.partition(": ")
            if not answers_for(group, windows):
                continue
            if group not in groups:
                if not partly:
                    yield f"{row.id}: {group} did not run"
                continue
            if group not in results:
                try:
                    results[group] = results_of(folder, group)
                except (OSError, ValueError) as error:
                    yield f"no report of {group}: {error}"
                    results[group] = None
            if results[group] is None or name in results[group][0]:
                continue
            if name in results[group][1]:
                skipped.append(f"{row.id}: {test}")
            else:
                yield f"{row.id}: {test}"


def results_seen_failing():
    """Of what ran, what passed, what was skipped and what failed are told apart."""
    cases = [("Passed", "COMPLETED", []), ("Skipped", "SKIPPED", []), ("Failed", "COMPLETED", [{}]), ("Missing", "SUPPRESSED", [])]
    told = [{"name": f"Of{name}", "status": "RUN", "result": word, "failures": failures} for name, word, failures in cases]
    rows = [Row("", name, "", [f"walk: A.Of{name}"], "fake") for name in ("Passed", "Skipped", "Failed", "Missing", "NotThere")]
    skipped = []
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "walk.json").write_text(json.dumps({"testsuites": [{"name": "A", "testsuite": told}]}))
        failed = list(tests_not_passed(rows, pathlib.Path(folder), ["walk"], False, skipped))
        elsewhere = [Row("", "Wine", "", ["windows:unit_windows: A.B"], "Wine")]
        failed_elsewhere = [list(tests_not_passed(elsewhere, pathlib.Path(folder), ["walk"], False, [], windows))
                            for windows in (False, True)]
    names = sorted(known_tests("e2e"))[:3]
    told = [f"PASS {names[0]} (1.0 s)", f"SKIP {names[1]}: a reason: this", f"FAIL {names[2]}: why"]
    stories = story_results(told, "e2e")
    return (failed_elsewhere == [[], ["Wine: windows:unit_windows did not run"]] and skipped == ["Skipped: walk: A.OfSkipped"]
            and [line.partition(":")[0] for line in failed] == ["Failed", "Missing", "NotThere"]
            and stories == ({names[0]}, {names[1]}))


def seen_failing():
    """The checks see what they must."""
    table = "| Id | Rule | Test | Runs |\n|---|---|---|---|\n"
    bad = ["| X-1 | rule | `walk: A.B` | fake |", "| XY-01 | rule | `walk: A.B` | real |", "| XY-01 | rule | `none: A.B` | fake |",
           "| XY-01 | rule | none | fake |", "| XY-01 | a | `walk: A.B` | fake |\n| XY-01 | b | `walk: A.B` | fake |"]
    for line in bad:
        if not list(wrong_rows(read_rows(BOOK, table + line, []))):
            return False
    wrong = ["no test", "`KilledSave.Other`", "`Killed.*`", "`Killed*`", "`start: no such story`", "`start: power off`", "`nothing: …`",
             "`fuzz_none`", "`tests/none.py`", "`KilledSave.*`, `None.*`"]
    right = ("`KilledSave.*`, `MovieShape.*`", "`start: power off ends …`, `memory:`, `fuzz_cue`",
             "`tests/fuzz/run`, `DiscContract.*`, `Worker.RunsItsTaskAndWaitsForIt`")
    review = REVIEW_HEADING + "\n\n| a | b |\n|---|---|\n| what | {} |\n"
    if any(not list(unproved(review.format(each))) for each in wrong) or any(list(unproved(review.format(each))) for each in right):
        return False
    broken = []
    read_rows(BOOK, table + "| XY-01 | | `walk: A.B` | fake |\n| XY-02 | rule | `walk: A.B` |", broken)
    good = read_rows(BOOK, table + "| XY-01 | a \\| b | `walk: A.B` | fake |", broken)
    return results_seen_failing() and len(broken) == 2 and not list(wrong_rows(good)) and len(list(unknown_tests(good))) == 1


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--ran", type=pathlib.Path, metavar="FOLDER")
    parser.add_argument("--partly", action="store_true")
    parser.add_argument("--windows", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("groups", nargs="*")
    options = parser.parse_args()
    broken, rows = [], []
    for path in tables():
        rows += read_rows(path, path.read_text(encoding="utf-8"), broken)
    if options.list:
        print("\n".join(f"{row.id} {row.rule}" for row in rows))
        return 0
    if options.ran:
        skipped = []
        rows = [row for row in rows if any(answers_for(test.partition(": ")[0], options.windows) for test in row.tests)]
        not_passed = list(tests_not_passed(rows, options.ran, options.groups, options.partly, skipped, options.windows))
        if skipped:
            print(f"SKIP rules that this machine cannot prove: {'; '.join(skipped)}")
        results = {f"the tests of {len(rows)} rules ran and passed": not_passed}
    else:
        results = {"each row of the rule book is whole": broken + list(wrong_rows(rows)) or ([] if rows else ["no rows"]),
                   "each test of the rule book exists": list(unknown_tests(rows)),
                   "each test that the review's table names exists": list(unproved(REVIEW.read_text(encoding="utf-8"))),
                   "the rule book's checks catch what they must": [] if seen_failing() else ["they do not"]}
    for name, places in results.items():
        print(f"FAIL {name}: {'; '.join(places[:12])}" if places else f"PASS {name}")
    return 1 if any(results.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
