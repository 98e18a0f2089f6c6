#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The rule book, read off the tests: prints every rule with the tests that prove it.

A rule stands above the first test that proves it, as a comment of one form; the others name its id alone:

    /// OPEN-05: The path is looked up, hidden files included
    /// OPEN-12, OPEN-13
    TEST(MissingFiles, HiddenFilesCanBeOpened) {

A longer sentence goes on in lines that are indented by four blanks. Above a story, "#" stands for "///". An id is a topic and
a number; it stays: a rule that goes takes it along, a new one gets the topic's next (--next TOPIC).

--check prints "PASS name" and "FAIL name: where" lines instead, and ends with 1 when one failed: each rule has one
sentence, each id that a test names is a rule's, each rule stands above a test, no test stands twice, and the tests that
docs/reliability.md names in its table of what was reviewed exist.
"""

import argparse
import collections
import fnmatch
import pathlib
import re
import sys
from typing import NamedTuple

TESTS = pathlib.Path(__file__).resolve().parents[1]
REVIEW = TESTS.parent / "docs" / "reliability.md"
REVIEW_HEADING = "## What was reviewed, and what shows it"
TOPICS = {
    "SET": "The settings file", "START": "Start and end", "LIST": "Play-list files", "CMD": "The command line", "SKIN": "Skins",
    "PANEL": "The panel's construction and end", "BTN": "Buttons, holds and the mouse on the panel", "KEY": "Keys",
    "SEQ": "Next, previous and holds through a file", "DISP": "The display", "SLIDER": "The seek slider",
    "DROP": "Files dropped on the panel", "KIND": "Kinds of media", "OPEN": "Opening and starting a file",
    "MOVE": "Pause, next, previous, close", "TIME": "Times as texts", "PIC": "Pictures, fitted and zoomed", "ANIM": "Pictures that move", "VOL": "Volume",
    "MCI": "The window of sounds and tracks", "MOVIE": "The movie window", "IMG": "The image window",
    "EDIT": "The play-list editor", "MENU": "The popup menu", "DIAL": "The settings dialog", "COM": "What all windows share",
    "MEDIA": "Sounds, discs and movies as devices", "REM": "Media keys and remote controls", "FAULT": "Faults, long life, safety",
    "TEXT": "Texts of tags", "LOUD": "Loudness and seams", "ACC": "Assistive programs and the keyboard on the panel", "WIN": "The Windows program",
    "HAND": "Today's ways of the mouse and the keys", "FIND": "The window that finds an entry",
    "RESUME": "What goes on at the next start", "SESS": "Desktops of every make",
    "DESK": "The desktop's manners and its session"}
# Where tests lie and run. "fake": the machine in memory; "real": the desktop's own parts; "end to end": the built program,
# driven as a person would. Contracts are written once and run against all that answer them.
PLACES = {"unit/linux": "real", "unit/windows": "Wine", "contract/linux": "real", "contract/windows": "Wine", "golden": "real",
          "e2e/stories": "end to end", "e2e/session_stories": "every desktop", "e2e/sound_stories": "PipeWire", "e2e/windows_stories": "Wine end to end", "contract": "fake and real"}
ID = re.compile(r"[A-Z]{2,6}-\d{2,3}")
IDS = re.compile(rf"{ID.pattern}(?:, {ID.pattern})*,?")
TEST = re.compile(r'^TEST(?:_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\)|^@story\("((?:[^"\\]|\\.)*)"\)')
COMMENT = re.compile(r"^(?:///|#) (.*)$")


class Test(NamedTuple):
    folder: str  # below tests/
    name: str  # "Suite.Name", or a story's title
    says: list  # (id, sentence, or "" for one that stands elsewhere)


def said_by(lines, wrong, place):
    """(id, sentence) of the comment that these lines are."""
    said = []
    for line in lines:
        text = COMMENT.match(line)
        if not text:
            continue
        if text[1].startswith("    ") and said:
            said[-1] = (said[-1][0], f"{said[-1][1]} {text[1].strip()}")
        elif IDS.fullmatch(text[1]):
            said += [(each, "") for each in ID.findall(text[1])]
        elif ID.match(text[1]):
            each, _, sentence = text[1].partition(": ")
            if not ID.fullmatch(each) or not sentence:
                wrong.append(f"{place}: {text[1][:60]}")
            said.append((each, sentence))
    return said


def tests_of(text, folder, place, wrong):
    """Every test of a source, with what stands above it."""
    above = []
    for line in text.splitlines():
        found = TEST.match(line)
        if found:
            name = found[3] if found[3] is not None else f"{found[1]}.{found[2]}"
            yield Test(folder, name, said_by(above, wrong, place))
        if line.startswith(("//", "#")):
            above.append(line)
            continue
        if not found:
            wrong += [f"{place}: {each} stands above no test" for each, _ in said_by(above, [], place)]
        above = []


def sources():
    for file in sorted(TESTS.rglob("*")):
        folder = file.relative_to(TESTS).parts[0]
        if file.suffix in (".cpp", ".h") and folder in ("unit", "contract", "golden") or file.suffix == ".py" and folder == "e2e":
            yield file


def every_test(wrong):
    return [test for file in sources() for test in
            tests_of(file.read_text(encoding="utf-8"), str(file.parent.relative_to(TESTS)), str(file.relative_to(TESTS)), wrong)]


def rules_of(tests, wrong):
    """Id to (sentence, tests), by topic and number."""
    sentences, proofs = {}, collections.defaultdict(list)
    for test in tests:
        for each, sentence in test.says:
            proofs[each].append(test)
            if sentence and each in sentences:
                wrong.append(f"{each} has two sentences, the second at {test.name}")
            if sentence:
                sentences[each] = sentence
            if each.partition("-")[0] not in TOPICS:
                wrong.append(f"{each} at {test.name} is of no topic")
    wrong += [f"{each} at {proofs[each][0].name} has no sentence" for each in proofs if each not in sentences]
    topics = list(TOPICS)
    known = [each for each in sentences if each.partition("-")[0] in TOPICS]
    order = sorted(known, key=lambda each: (topics.index(each.partition("-")[0]), int(each.partition("-")[2])))
    return {each: (sentences[each], proofs[each]) for each in order}


def place_of(test):
    return PLACES.get(test.folder, "fake")


def printed(rules):
    topic = None
    for each, (sentence, tests) in rules.items():
        if each.partition("-")[0] != topic:
            topic = each.partition("-")[0]
            yield f"\n{TOPICS[topic]}\n"
        yield f"{each} {sentence}"
        yield from (f"    {test.folder}: {test.name} ({place_of(test)})" for test in tests)


def is_proof(name, tests, stories):
    """Whether a proof of that name exists. Of a test the suite's beginning, of a story its end may be left
    out: "Suite.*", "Suite.Test", "group: title …"; else it is a file of the project, or a fuzz target."""
    if ": " in name or name.endswith(":"):
        beginning = name.removesuffix("…").rstrip()
        return any(story == name or (beginning != name or name.endswith(":")) and story.startswith(beginning) for story in stories)
    if name.startswith("fuzz_"):
        return (TESTS / "fuzz" / f"{name.removeprefix('fuzz_')}_fuzz.cpp").exists()
    if "/" in name and (TESTS.parent / name.split()[0]).exists():
        return True
    return "." in name and any(fnmatch.fnmatchcase(test, name) for test in tests)


def unproved(text, found):
    """Rows of the review's table that name no test, and names in it that nothing bears."""
    tests = {test.name for test in found if not test.folder.startswith("e2e")}
    stories = {test.name for test in found if test.folder.startswith("e2e")}
    rows = [line for line in text.partition(REVIEW_HEADING)[2].partition("\n## ")[0].splitlines() if line.startswith("|")][2:]
    if not rows:
        yield "no rows"
    for row in rows:
        what, _, shown = row.strip("|").partition("|")
        names = re.findall(r"`([^`]+)`", shown.partition("|")[0])
        if not names:
            yield f"{what.strip()[:60]}: no test"
        yield from (f"{what.strip()[:60]}: {name}" for name in names if not is_proof(name, tests, stories))


def rules_seen_failing():
    def wrong_of(text):
        wrong = []
        rules = rules_of(list(tests_of(text, "unit/x", "x", wrong)), wrong)
        return wrong, rules

    good = "// why\n/// KEY-01: a\n///     b\n/// KEY-02: c\nTEST(A, B) {\n}\n/// KEY-01, KEY-02\nTEST_F(A, C) {\n}\n# KEY-03: d\n@story(\"e: f\")\n"
    wrong, rules = wrong_of(good)
    proofs = {each: (sentence, [test.name for test in tests]) for each, (sentence, tests) in rules.items()}
    bad = (good + "/// KEY-04\nTEST(A, D) {\n", good + "/// KEY-01: x\nTEST(A, D) {\n", good + "/// KEY-04: x\nint y;\n",
           good + "/// NONE-01: x\nTEST(A, D) {\n", good + "/// KEY-04:\nTEST(A, D) {\n", good + "/// KEY-04 x\nTEST(A, D) {\n",
           good + "/// KEY-04: x\n\nTEST(A, D) {\n")
    same = [Test("x", "A.B", [])]
    return (not wrong and twice(2 * same) and not twice(same) and proofs == {"KEY-01": ("a b", ["A.B", "A.C"]), "KEY-02": ("c", ["A.B", "A.C"]), "KEY-03": ("d", ["e: f"])}
            and all(wrong_of(text)[0] for text in bad))


def review_seen_failing(tests):
    wrong = ["no test", "`KilledSave.Other`", "`Killed.*`", "`Killed*`", "`start: no such story`", "`start: power off`", "`nothing: …`",
             "`fuzz_none`", "`tests/none.py`", "`KilledSave.*`, `None.*`"]
    right = ("`KilledSave.*`, `MovieShape.*`", "`start: power off ends …`, `memory:`, `fuzz_cue`",
             "`tests/fuzz/run`, `DiscContract.*`, `Worker.RunsItsTaskAndWaitsForIt`")
    review = REVIEW_HEADING + "\n\n| a | b |\n|---|---|\n| what | {} |\n"
    return (all(list(unproved(review.format(each), tests)) for each in wrong)
            and not any(list(unproved(review.format(each), tests)) for each in right))


def twice(tests):
    """Tests of one program that have one name: a file that was moved and came back."""
    return [f"{folder}: {name}" for (folder, name), times in collections.Counter((t.folder, t.name) for t in tests).items() if times > 1]


def check(tests, rules, wrong):
    results = {"each rule has one sentence and stands above a test": wrong or ([] if rules else ["no rules"]),
               "each test stands once": twice(tests),
               "each test that the review's table names exists": list(unproved(REVIEW.read_text(encoding="utf-8"), tests)),
               "the rule book's checks catch what they must": [] if rules_seen_failing() and review_seen_failing(tests) else ["they do not"]}
    for name, places in results.items():
        print(f"FAIL {name}: {'; '.join(places[:12])}" if places else f"PASS {name}")
    return 1 if any(results.values()) else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--next", metavar="TOPIC", choices=TOPICS)
    options = parser.parse_args()
    wrong = []
    tests = every_test(wrong)
    rules = rules_of(tests, wrong)
    if options.check:
        return check(tests, rules, wrong)
    if options.next:
        print(f"{options.next}-{max([0, *(int(each.partition('-')[2]) for each in rules if each.startswith(options.next + '-'))]) + 1:02}")
        return 0
    print("\n".join(printed(rules)).lstrip("\n"))
    return 0


if __name__ == "__main__":
    sys.exit(main())
