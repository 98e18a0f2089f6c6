#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What ./check --systems does: on each system of tools/on_system, in a clean clone, plays the samples, builds and runs the tests
of ./check --quick, makes the Debian package, runs its own tests and tries it in a fresh system of that release.

Within SECONDS together; what there was no time for is skipped and told. What was said lies in build/systems/SYSTEM.log, the
pictures of the played samples in build/systems/SYSTEM/. The last line is "N passed, N failed, N skipped".
"""

import argparse
import re
import signal
import subprocess
import sys
import time

import systems

SECONDS = 55 * 60
ORDER = ("trixie", "sid", "bookworm")  # the one that is run here anyway is the last
# The package's own tests install it, which goes with the layer.
STEPS = {"./play": "./play", "./check --quick": "./check --quick", "tools/package": "tools/package", "tools/test_package": "tools/test_package"}
TRIAL = "tools/try_package"
LEAST_SECONDS = 120  # for less nothing is begun
TAKEN = ("build/pictures", "build/autopkgtest", "build/package/package", "build/release.log", "build/package.log", "build/packages.log")
VERSIONS = {"GCC": "g++", "Qt": "qt6-base-dev", "FFmpeg": "libavcodec-dev", "libmpv": "libmpv-dev", "FluidSynth": "libfluidsynth-dev"}
SCRIPT = ("".join(f'\n{line}\necho "ENDED {name}: $?"' for name, line in STEPS.items())
          + "".join(f"\necho \"VERSION {name} $(dpkg-query -W -f '${{Version}}' {package})\"" for name, package in VERSIONS.items()))


def ended(name, text):
    """What a step came to: None where it did not end, else how its tests ended or what its code was."""
    found = re.search(rf"^ENDED {re.escape(name)}: (\d+)$", text, re.M)
    if not found:
        return None
    counts = re.findall(r"^(\d+) passed, (\d+) failed, (\d+) skipped$", text[: found.start()], re.M) if "check" in name else []
    if counts:
        return tuple(map(int, counts[-1]))
    return (1, 0, 0) if found[1] == "0" else (0, 1, 0)


def short_version(text):
    """A package's version without what Debian adds in front and behind."""
    found = re.match(r"(?:\d+:)?(\d+(\.\d+)*)", text)
    return found[1] if found else "unknown"


def trial_of(name, deadline):
    """Tries the package that was made there; what it came to, or None."""
    target = systems.PROJECT / "build" / "systems" / name
    found = sorted((target / "build/package/package").glob("*.deb"))
    left = deadline - time.monotonic()
    if not found or left < LEAST_SECONDS:
        return None
    with open(target.parent / f"{name}.trial.log", "w") as log:
        try:
            done = subprocess.run(["/usr/bin/python3", systems.PROJECT / TRIAL, "--system", name, "--folder", target / "trial", found[-1]],
                                  stdout=log, stderr=subprocess.STDOUT, timeout=left, check=False)
        except subprocess.TimeoutExpired:
            return None
    told = (target.parent / f"{name}.trial.log").read_text()
    failed = told.count("FAIL ") + (done.returncode not in (0, 1))
    return told.count("PASS "), failed, 0


def results_on(name, deadline, kept):
    """Step to (passed, failed, skipped), or to None where it was not done; and the system's versions."""
    log = systems.PROJECT / "build" / "systems" / f"{name}.log"
    log.parent.mkdir(parents=True, exist_ok=True)
    left = deadline - time.monotonic()
    if left < LEAST_SECONDS:
        return dict.fromkeys([*STEPS, TRIAL]), ""
    with open(log, "w") as output:
        systems.run_inside(name, ["bash", "-c", SCRIPT], kept=kept, taken=TAKEN, target=log.parent / name, seconds=left, output=output)
    text = log.read_text(errors="replace")
    versions = ", ".join(f"{what} {short_version(version)}" for what, version in re.findall(r"^VERSION (\S+) (\S*)$", text, re.M))
    return {step: ended(step, text) for step in STEPS} | {TRIAL: trial_of(name, deadline)}, versions


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default="", help="systems whose name holds it")
    parser.add_argument("--keep", action="store_true", help="goes on with the systems that tools/on_system --keep left")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    deadline = time.monotonic() + SECONDS
    sums = [0, 0, 0]
    for name in [each for each in ORDER if options.only in each]:
        print(f"== {name} ({systems.SYSTEMS[name]})", flush=True)
        try:
            results, versions = results_on(name, deadline, options.keep)
        except systems.NoSystem as error:
            print(f"   FAILED {error}")
            sums[1] += 1
            continue
        print(f"   {versions or 'versions unknown'}")
        for step, counts in results.items():
            sums = [total + count for total, count in zip(sums, counts or (0, 0, 1))]
            print(f"   {step:18} " + ("{} passed, {} failed, {} skipped".format(*counts) if counts else "skipped: it was not done, or not in time"), flush=True)
    print("{} passed, {} failed, {} skipped".format(*sums))
    return 1 if sums[1] or not any(sums) else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
