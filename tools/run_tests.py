#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs every test of a finished build and adds up the counts; ./check builds first and calls this.

Groups: rule scripts (tests/rules/*.py), shipped files (samples, skins, the installed tree), test programs of build/release, the
same of build/asan (portable core), as many at once as there are processors, the end-to-end stories (tests/e2e/run.py) and
some of them under a memory checker (tests/memcheck). What passed and has not
changed since is counted and not run again.
The last line is "N passed, N failed, N skipped".
"""

import argparse
import contextlib
import hashlib
import json
import os
import pathlib
import queue
import re
import signal
import subprocess
import sys
import threading
import time

from session import Session, SessionError, end_process
from wine import Wine, windows_path

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = ROOT / "build"
REPORTS = BUILD / "reports"
PASSED_BEFORE = BUILD / "check-passed.json"
PROGRAM_SECONDS = 900  # for one test program
STORIES_SECONDS = 1800
MEMORY_SECONDS = 900
RUNNING = set()  # processes that are waited for
AT_ONCE = os.cpu_count() or 1  # test programs; each has a private desktop
SHIPPED_SECONDS = 180
SHOWN_FAILURES = 12
TESTED_DATA = ("PANELSET", "samples", "tests/data", "tests/golden", "tests/contract")
STORY_DATA = ("PANELSET", "samples", "tests/e2e", "tools")


class Counts:
    """Adds up results and prints one line a group."""

    def __init__(self):
        self.passed = self.failed = self.skipped = 0
        self._lock = threading.Lock()
        self.groups = []  # of tests that this run is about, whether they had to be run again or not

    def add(self, name, passed, failed, skipped, remark):
        with self._lock:
            self.passed += passed
            self.failed += failed
            self.skipped += skipped
        counts = f"{passed} passed" + (f", {failed} FAILED" if failed else "") + (f", {skipped} skipped" if skipped else "")
        print(f"   {name:28} {counts}  ({remark})", flush=True)

    def last_line(self):
        return f"{self.passed} passed, {self.failed} failed, {self.skipped} skipped"


class Memory:
    """Which groups passed with which content, across runs."""

    def __init__(self, use):
        self.use = use
        self._lock = threading.Lock()
        try:
            self.known = json.loads(PASSED_BEFORE.read_text())
        except (OSError, ValueError):
            self.known = {}

    def recall(self, name, key):
        entry = self.known.get(name)
        return entry["counts"] if self.use and entry and entry["key"] == key else None

    def keep(self, name, key, counts):
        with self._lock:
            if counts[1] or counts[2]:  # what was skipped may be possible by the next time: another user, another package
                self.known.pop(name, None)
            else:
                self.known[name] = {"key": key, "counts": counts}
            PASSED_BEFORE.write_text(json.dumps(self.known, indent=1))


def content_key(*paths):
    """A hash over files and whole folders, and over the installed packages."""
    total = hashlib.sha256()
    for path in (*paths, pathlib.Path("/var/lib/dpkg/status")):
        files = sorted(p for p in path.rglob("*") if p.is_file() and p.suffix != ".pyc") if path.is_dir() else [path]
        for file in files:
            total.update(str(file).encode())
            total.update(file.read_bytes() if file.exists() else b"-")
    return total.hexdigest()


def show_failure(name, text):
    print(f"   FAILED {name}")
    for line in text.strip().splitlines()[:SHOWN_FAILURES]:
        print(f"      {line[:200]}")
    sys.stdout.flush()


def test_programs(preset):
    """Name and command of each test program that the build knows."""
    folder = BUILD / preset
    if not (folder / "CTestTestfile.cmake").exists():
        return []
    listing = subprocess.run(["ctest", "--show-only=json-v1"], cwd=folder, capture_output=True, text=True, check=True).stdout
    tests = json.loads(listing)["tests"]
    # Rule scripts are run once, as a group of their own.
    return [(t["name"], t.get("command") or [t["name"]]) for t in tests if not t["name"].startswith("rules_")]


def run_bounded(command, seconds, session=None, **options):
    """Exit code (None: ended for taking too long) and joined output of a program."""
    options.update(stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
    if session:
        process = session.popen(command, **options)
    else:
        process = subprocess.Popen(command, start_new_session=True, **options)
    RUNNING.add(process)
    try:
        output, _ = process.communicate(timeout=seconds)
        return process.returncode, output
    except subprocess.TimeoutExpired:
        end_process(process)
        return None, process.communicate()[0]
    except BaseException:
        end_process(process)
        raise
    finally:
        RUNNING.discard(process)


def tells_stories(name):
    return name.removeprefix("windows:").startswith(("e2e", "memory"))


def report_of(name):
    """Where a group's results lie: of test programs as JSON, of the stories as their lines."""
    return REPORTS / (re.sub(r"[^\w.]+", "-", name) + (".log" if tells_stories(name) else ".json"))


def google_test(name, command, session, wine=None):
    """One process a program; counts (passed, failed, skipped) come from its own report. wine: what runs a Windows one."""
    report = report_of(name)
    report.parent.mkdir(parents=True, exist_ok=True)
    report.unlink(missing_ok=True)
    command = [*command, f"--gtest_output=json:{windows_path(report) if wine else report}"]
    options = {"env": wine.environment} if wine else {}
    code, output = run_bounded(wine.command(*command) if wine else command, PROGRAM_SECONDS, session, cwd=BUILD, **options)
    report.with_suffix(".log").write_text(output)
    if not report.exists():
        why = f"did not end within {PROGRAM_SECONDS} s" if code is None else f"ended with code {code}"
        interesting = [line for line in output.splitlines() if re.search(r"ERROR:|runtime error|Assert|\[ RUN", line)][-6:]
        show_failure(name, "\n".join([why, *interesting, *output.splitlines()[-6:]]))
        return output.count("[       OK ]"), 1 + output.count("[  FAILED  ]"), 0
    passed = failed = skipped = 0
    for suite in json.loads(report.read_text()).get("testsuites", []):
        for case in suite["testsuite"]:
            if case.get("failures"):
                failed += 1
                show_failure(f"{name}: {suite['name']}.{case['name']}", case["failures"][0]["failure"])
            elif case.get("result") == "SKIPPED":
                skipped += 1
                print(f"   skipped {name}: {suite['name']}.{case['name']}")
            elif case.get("status") == "RUN":
                passed += 1
    if code != 0 and not failed:
        failed = 1
        why = "did not end" if code is None else f"ended with code {code} after its tests"
        show_failure(name, "\n".join([why, *output.splitlines()[-10:]]))
    return passed, failed, skipped


def lines_test(name, command, seconds, session=None):
    """A script that prints "PASS name", "FAIL name: why" and "SKIP name" lines; without any, its exit code counts."""
    code, output = run_bounded(command, seconds, session, cwd=ROOT)
    if tells_stories(name):
        REPORTS.mkdir(parents=True, exist_ok=True)
        report_of(name).write_text(output)
    words = [line.split(" ", 1)[0] for line in output.splitlines()]
    passed, failed, skipped = words.count("PASS"), words.count("FAIL"), words.count("SKIP")
    for line in output.splitlines():
        if line.startswith("FAIL"):
            show_failure(name, line[5:])
        elif line.startswith("SKIP"):
            print(f"   skipped {name}: {line[5:]}", flush=True)
    if code != 0 and not failed:
        show_failure(name, "did not end in time" if code is None else "\n".join(output.splitlines()[-SHOWN_FAILURES:]))
        return passed, 1, skipped
    if not passed and not failed and not skipped:
        passed = 1
    return passed, failed, skipped


def run_group(counts, memory, name, key, run):
    known = memory.recall(name, key)
    # The rule book reads the reports of the tests.
    if known and (name.startswith(("rules:", "shipped:")) or report_of(name).exists()):
        counts.add(name, *known, "unchanged since it passed, not run again")
        return
    began = time.monotonic()
    result = run()
    memory.keep(name, key, result)
    counts.add(name, *result, f"{time.monotonic() - began:.1f} s")


def rule_command(script):
    return ["/usr/bin/python3", str(script), *(["--check"] if script.stem == "book" else [])]


def rule_scripts(counts, memory, wanted):
    scripts = sorted((ROOT / "tests" / "rules").glob("*.py")) if (ROOT / "tests" / "rules").is_dir() else []
    scripts = [s for s in scripts if os.access(s, os.X_OK) and wanted(f"rules:{s.stem}")]
    if scripts:
        print("== Rules", flush=True)
    for script in scripts:
        key = content_key(ROOT / "src", ROOT / "tests", ROOT / "tools")
        run_group(counts, memory, f"rules:{script.stem}", key, lambda s=script: lines_test(s.stem, rule_command(s), 120))


def shipped(counts, memory, wanted):
    """Files that are drawn and computed are what they should be, and a build installs as it should."""
    build = BUILD / "release"
    scripts = (("samples", "tools/samples/verify.py", [], ("samples", "tools/samples")),
               ("skins", "tools/skin/verify.py", [], ("PANELSET", "tools/skin")),
               ("installed", "tests/package/installed.py", [str(build)], ("PANELSET", "docs/manual", "packaging", "tests/package")),
               ("hardened", "tests/package/hardened.py", [str(build)], ("cmake", "tests/package")))
    scripts = [s for s in scripts if wanted(f"shipped:{s[0]}")]
    if scripts:
        print("== Shipped files", flush=True)
    for name, script, words, reads in scripts:
        key = content_key(*(ROOT / r for r in reads), *(build / p for p in ("corvane", "corvane-skin") if words))
        command = ["/usr/bin/python3", str(ROOT / script), *words]
        run_group(counts, memory, f"shipped:{name}", key, lambda n=name, c=command: lines_test(n, c, SHIPPED_SECONDS))


def programs(counts, memory, preset, prefix, wanted):
    found = [(prefix + name, command) for name, command in test_programs(preset) if wanted(prefix + name)]
    if not found:
        return
    print(f"== Test programs ({preset})", flush=True)
    counts.groups += [name for name, _ in found]
    data = [ROOT / folder for folder in TESTED_DATA]

    def run(name, command, session):
        if not pathlib.Path(command[0]).exists():
            counts.add(name, 0, 1, 0, "was not built")
            return
        key = content_key(pathlib.Path(command[0]), *data)
        run_group(counts, memory, name, key, lambda: google_test(name, command, session))

    # Those that wait for real windows and sounds take longest: they begin.
    side_by_side(counts, sorted(found, key=lambda each: "desktop" not in each[0]), run)


def side_by_side(counts, jobs, run):
    """Runs each job, run(*job, session), as many at once as there are processors, each of these on a desktop of its own."""
    left = queue.SimpleQueue()
    for job in jobs:
        left.put(job)

    def work(session):
        try:
            while True:
                run(*left.get_nowait(), session)
        except queue.Empty:
            return
        except Exception as error:  # noqa: BLE001: whatever it is, what was not run must not look passed
            counts.add("test programs", 0, 1, 0, f"{type(error).__name__}: {error}")

    with contextlib.ExitStack() as desktops:
        sessions = [desktops.enter_context(Session()) for _ in range(min(AT_ONCE, len(jobs)))]
        workers = [threading.Thread(target=work, args=(session,), daemon=True) for session in sessions]
        try:
            for worker in workers:
                worker.start()
            for worker in workers:
                worker.join()
        except BaseException:
            for process in list(RUNNING):
                end_process(process)
            raise


def windows_programs(counts, memory, wanted, whole):
    """Test programs of build/windows under Wine; without `whole` those of the portable core alone."""
    found = [(f"windows:{name}", command) for name, command in test_programs("windows")
             if wanted(f"windows:{name}") and (whole or not name.endswith("_windows"))]
    if not found:
        return
    print("== Test programs (windows)", flush=True)
    counts.groups += [name for name, _ in found]
    data = [ROOT / folder for folder in TESTED_DATA]
    with Session() as session, Wine(session.environment) as wine:
        for name, command in found:
            if not pathlib.Path(command[0]).exists():
                counts.add(name, 0, 1, 0, "was not built")
                continue
            key = content_key(pathlib.Path(command[0]), *data)
            run_group(counts, memory, name, key, lambda n=name, c=command: google_test(n, c, session, wine))


def fuzz(counts, memory, wanted):
    """A short run of each fuzz target."""
    folder = BUILD / "fuzz" / "tests" / "fuzz"
    targets = [path for path in sorted(folder.glob("fuzz_*")) if os.access(path, os.X_OK) and path.is_file()]
    if not targets or not wanted("fuzz"):
        return
    print("== Made-up input", flush=True)
    command = ["/usr/bin/python3", str(ROOT / "tests" / "fuzz" / "run"), "--short"]
    key = content_key(*targets, ROOT / "tests" / "fuzz")
    run_group(counts, memory, "fuzz", key, lambda: lines_test("fuzz", command, PROGRAM_SECONDS))


def stories(counts, memory, only, windows=False):
    runner = ROOT / "tests" / "e2e" / "run.py"
    program = BUILD / "windows" / "corvane.exe" if windows else BUILD / "release" / "corvane"
    if not runner.exists() or not program.exists():
        return
    print("== End to end", flush=True)
    pattern = only.removeprefix("e2e:") if only else ""
    command = ["/usr/bin/python3", str(runner), *(["--windows"] if windows else []), str(program), *([pattern] if pattern else [])]
    key = content_key(program, *(ROOT / folder for folder in STORY_DATA))
    name = ("windows:e2e" if windows else "e2e") + (f":{pattern}" if pattern else "")
    counts.groups.append(name)
    run_group(counts, memory, name, key, lambda: lines_test(name, command, STORIES_SECONDS))


def memory_sample(counts, memory, wanted):
    """Some stories under a memory checker."""
    program = BUILD / "release" / "corvane"
    if not program.exists() or not wanted("memory"):
        return
    print("== Memory checker", flush=True)
    command = ["/usr/bin/python3", str(ROOT / "tests" / "memcheck"), "--sample"]
    key = content_key(program, *(ROOT / folder for folder in STORY_DATA), ROOT / "tests" / "memcheck", ROOT / "tests" / "memcheck.supp")
    run_group(counts, memory, "memory", key, lambda: lines_test("memory", command, MEMORY_SECONDS))


def windows_run(counts, memory, only, wanted):
    build = BUILD / "windows"
    if wanted("shipped:windows hardened") and (build / "corvane.exe").exists():
        print("== Shipped files", flush=True)
        key = content_key(build / "corvane.exe", ROOT / "tests" / "package")
        command = ["/usr/bin/python3", str(ROOT / "tests" / "package" / "hardened.py"), str(build)]
        run_group(counts, memory, "shipped:windows hardened", key, lambda: lines_test("hardened", command, SHIPPED_SECONDS))
    windows_programs(counts, memory, wanted, whole=True)
    if not only or only.startswith("e2e"):
        stories(counts, memory, only, windows=True)
    if not counts.passed and not counts.failed:
        print("   no test has that name" if only else "   no test was found")
        counts.failed = 1
    print(counts.last_line(), flush=True)
    return 1 if counts.failed else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--windows", action="store_true")
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--only", default="")
    parser.add_argument("--failed-build", action="append", default=[])
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))

    counts, memory = Counts(), Memory(not options.again)
    for preset in options.failed_build:
        counts.add(f"build {preset}", 0, 1, 0, "see above")

    def wanted(name):
        return options.only in name

    try:
        if options.windows:
            return windows_run(counts, memory, options.only, wanted)
        rule_scripts(counts, memory, wanted)
        shipped(counts, memory, wanted)
        programs(counts, memory, "release", "", wanted)
        if not options.quick:
            programs(counts, memory, "asan", "asan:", wanted)
            windows_programs(counts, memory, wanted, whole=False)
            fuzz(counts, memory, wanted)
            if not options.only or options.only.startswith("e2e"):
                stories(counts, memory, options.only)
            memory_sample(counts, memory, wanted)
    except SessionError as error:
        counts.add("private desktop", 0, 1, 0, str(error))
    if not counts.passed and not counts.failed and not counts.skipped:
        print("   no test has that name" if options.only else "   no test was found")
        counts.failed = 1
    print(counts.last_line(), flush=True)
    return 1 if counts.failed else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
