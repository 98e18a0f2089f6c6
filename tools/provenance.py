# SPDX-License-Identifier: GPL-3.0-or-later
"""Says of what a figure was measured and how, so that it can be measured again."""

import pathlib
import shlex
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]


def commit():
    """The commit of the sources, and whether something was changed since; "unknown" outside of a repository."""
    def git(*words):
        return subprocess.run(["git", "-C", str(ROOT), *words], capture_output=True, text=True, check=True).stdout.strip()

    try:
        changed = git("status", "--porcelain", "--untracked-files=no")
        return git("rev-parse", "--short=10", "HEAD") + (" with changes" if changed else "")
    except (OSError, subprocess.CalledProcessError):
        return "unknown"


def told():
    """One line: the command as it was given, the commit, the day."""
    words = [pathlib.Path(sys.argv[0]).resolve(), *sys.argv[1:]]
    words = [str(pathlib.Path(word).relative_to(ROOT)) if pathlib.Path(word).is_absolute() and
             pathlib.Path(word).is_relative_to(ROOT) else str(word) for word in words]
    return f"`{shlex.join(words)}` at commit {commit()}, {time.strftime('%Y-%m-%d %H:%M', time.gmtime())} UTC"
