#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What ./check --sessions does: plays the stories of tests/e2e/session_stories in each session of tests/e2e/harness/sessions.py,
which are X servers with other window managers or none, and Wayland compositors with and without their XWayland.

Within SECONDS together; a session whose programs are not installed, or that there was no time for, is skipped and told. What each
said lies in build/sessions/KIND.log, the pictures of its windows in build/e2e/KIND/seen. The last line is "N passed, N failed,
N skipped". PROGRAM: build/release/corvane unless told otherwise.
"""

import argparse
import pathlib
import re
import signal
import subprocess
import sys
import time

PROJECT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tests" / "e2e"))

from harness.sessions import KINDS, missing_programs  # noqa: E402

SECONDS = 55 * 60
LEAST_SECONDS = 60  # for less nothing is begun
SESSION_SECONDS = 6 * 60


def play(kind, program, seconds):
    """Its (passed, failed, skipped), and the lines of what failed."""
    log = PROJECT / "build" / "sessions" / f"{kind.name}.log"
    log.parent.mkdir(parents=True, exist_ok=True)
    command = ["/usr/bin/python3", PROJECT / "tests/e2e/run.py", "--workers", "1", "--session", kind.name, program]
    late = []
    with open(log, "w") as output:
        try:
            subprocess.run(command, stdout=output, stderr=subprocess.STDOUT, check=False, timeout=seconds)
        except subprocess.TimeoutExpired:
            late = [f"FAIL {kind.name}: not done within {seconds:.0f} s"]
    lines = [*log.read_text(errors="replace").splitlines(), *late]
    failed = [line for line in lines if line.startswith("FAIL ")]
    counts = [sum(line.startswith(word) for line in lines) for word in ("PASS ", "FAIL ", "SKIP ")]
    if not any(counts):
        failed, counts = [f"FAIL nothing was played: see {log}"], [0, 1, 0]
    return counts, failed


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default="", help="sessions whose name holds it")
    parser.add_argument("--list", action="store_true", help="names them and what each lacks")
    parser.add_argument("program", nargs="?", default=PROJECT / "build" / "release" / "corvane", type=pathlib.Path)
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    deadline = time.monotonic() + SECONDS
    sums = [0, 0, 0]
    for kind in [each for each in KINDS.values() if options.only in each.name]:
        missing, left = missing_programs(kind), deadline - time.monotonic()
        if options.list:
            print(f"{kind.name:16} {'lacks ' + ', '.join(missing) if missing else 'is there'}")
            continue
        if missing or left < LEAST_SECONDS:
            why = f"not installed here: {', '.join(missing)}" if missing else "not in time"
            print(f"   {kind.name:16} skipped: {why}", flush=True)
            sums[2] += 1
            continue
        counts, failed = play(kind, options.program, min(left, SESSION_SECONDS))
        sums = [total + count for total, count in zip(sums, counts)]
        print(f"   {kind.name:16} {counts[0]} passed, {counts[1]} failed, {counts[2]} skipped", flush=True)
        for line in failed:
            print(f"      {re.sub(r'^FAIL ', '', line)[:300]}", flush=True)
    if options.list:
        return 0
    print("{} passed, {} failed, {} skipped".format(*sums))
    return 1 if sums[1] or not any(sums) else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
