#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Lets ctest run the tests of the finished builds side by side and adds up single ones; ./check builds first and calls this.

What the tests are, their labels, times and what they read stands in tests/registry.cmake. What passed and reads the same as
then is counted and not run again (--again runs it). The last line is "N passed, N failed, N skipped".
"""

import argparse
import json
import os
import pathlib
import re
import signal
import subprocess
import sys

from results import all_results, key_of
from session import end_process

BUILD = pathlib.Path(__file__).resolve().parents[1] / "build"
FOLDER = BUILD / "check"  # the builds' tests as one
PASSED_BEFORE, REPORT = FOLDER / "passed.json", FOLDER / "junit.xml"
AT_ONCE = 2 * (os.cpu_count() or 1)  # most wait for sounds and clocks
SHOWN_LINES = 12


def registered(presets):
    """What ctest knows of these builds: name, labels, files that it reads, GoogleTest's report."""
    FOLDER.mkdir(parents=True, exist_ok=True)
    builds = [BUILD / preset for preset in presets if (BUILD / preset / "CTestTestfile.cmake").exists()]
    (FOLDER / "CTestTestfile.cmake").write_text("".join(f'subdirs("{build}")\n' for build in builds))
    listing = subprocess.run(["ctest", "--show-only=json-v1"], cwd=FOLDER, capture_output=True, text=True, check=True).stdout
    for test in json.loads(listing)["tests"]:
        told = {each["name"]: each["value"] for each in test["properties"]}
        output = [re.sub(r".*xml:(Z:)?", "", value) for value in told.get("ENVIRONMENT", []) if value.startswith("GTEST_OUTPUT")]
        yield {"name": test["name"], "labels": told.get("LABELS", []), "reads": told.get("REQUIRED_FILES", []),
               "report": pathlib.Path(output[0]) if output else None}


def run(tests):
    """Name to (passed, skipped, failures), also of what the tests need; each is told when it ends."""
    states = {}
    for path in [REPORT, *(test["report"] for test in tests if test["report"])]:
        path.unlink(missing_ok=True)
    chosen = "|".join(test["name"].replace(".", "\\.") for test in tests)
    command = ["ctest", "-j", str(AT_ONCE), "-R", f"^({chosen})$", "--output-junit", str(REPORT)]
    command += ["--test-output-size-passed", "9999999", "--test-output-size-failed", "9999999"]
    process = subprocess.Popen(command, cwd=FOLDER, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, start_new_session=True)
    try:
        for line in process.stdout:
            found = re.match(r"\s*\d+/\d+ Test +#\d+: (\S+) \.*\s*(.*)", line)
            if found:
                states[found[1]] = re.sub(r"\s+", " ", found[2].replace("*", ""))
                print(f"   {found[1]:32} {states[found[1]]}", flush=True)
    finally:
        end_process(process)
    return all_results(REPORT, tests, states)


def is_wanted(test, options):
    if "setup" in test["labels"] or "windows" in test["labels"] and not options.windows:
        return False
    if options.only.startswith("e2e:"):  # stories by their titles
        return "story" in test["labels"] and options.only[4:] in pathlib.Path(test["reads"][0]).read_text(encoding="utf-8")
    return options.only in test["name"] and not (options.quick and {"story", "memory"} & set(test["labels"]))


def told(tests, results, kept, failed):
    """Prints each group, then what was skipped and what failed; the exit code."""
    for group in sorted({" ".join(test["labels"]) for test in tests}):
        names = [test["name"] for test in tests if " ".join(test["labels"]) == group]
        before = sum(name in kept for name in names)
        print(f"== {group}: {sum(results[name][0] for name in names)} passed"
              + (f" ({before} of {len(names)} unchanged since they passed, not run again)" if before else ""))
    skipped = [f"{name}: {text}" for name, result in results.items() for text in result[1]]
    failed += [(name, text) for name, result in results.items() for text in result[2]]
    print("".join(f"   skipped {text}\n" for text in skipped), end="")
    for name, text in failed:
        print(f"   FAILED {name}: " + "\n      ".join(line[:200] for line in text.strip().splitlines()[:SHOWN_LINES]))
    print(f"{sum(result[0] for result in results.values())} passed, {len(failed)} failed, {len(skipped)} skipped", flush=True)
    return 1 if failed else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("--quick", "--windows", "--again"):
        parser.add_argument(name, action="store_true")
    parser.add_argument("--only", default="")
    parser.add_argument("--build", action="append", default=[], help="preset whose tests are run")
    parser.add_argument("--failed-build", action="append", default=[])
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    if options.only.startswith("e2e:"):
        os.environ["CORVANE_STORIES"] = options.only[4:]
    tests = [test for test in registered(options.build) if is_wanted(test, options)]
    known = json.loads(PASSED_BEFORE.read_text()) if PASSED_BEFORE.exists() else {}
    keys = {test["name"]: key_of(test) for test in tests}
    kept = {name for name, key in keys.items() if known.get(name, {}).get("key") == key and not options.again}
    left = [test for test in tests if test["name"] not in kept]
    results = {name: (known[name]["passed"], [], []) for name in sorted(kept)} | (run(left) if left else {})
    for test in left:
        passed, skipped, failures = results.setdefault(test["name"], (0, [], ["ctest did not run it"]))
        known[test["name"]] = {"key": "" if skipped or failures else keys[test["name"]], "passed": passed}
    PASSED_BEFORE.write_text(json.dumps(known, indent=1))
    failed = [(f"build {preset}", "see above") for preset in options.failed_build]
    if not tests:
        failed.append(("nothing", "no test has that name" if options.only else "no test was found"))
    return told(tests, results, kept, failed)


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
