#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Installs a finished build and holds against each other what knows the programs' options: their help, the pages of the
handbook, and what bash, zsh and fish complete, each asked as it runs: options.py BUILD.

Prints "PASS name", "SKIP name: why" and "FAIL name: why" lines; ends with 1 when one failed.
"""

import gzip
import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time

PROGRAMS = {"corvane": set(), "corvane-skin": {"new", "check", "preview"}}  # the commands of each
PROJECT = pathlib.Path(__file__).resolve().parents[2]
SECONDS = 30
# How each is begun without the user's settings, and told where its completion lies.
BASH = (["bash", "--norc", "--noprofile", "-i"], "bind 'set bell-style none'; bind 'set enable-bracketed-paste off'; "
        "bind 'set show-all-if-ambiguous on'; for f in share/bash-completion/completions/*; do . $f; done")
ZSH = (["zsh", "-f", "-i"], "fpath=($PWD/share/zsh/vendor-completions $fpath); autoload -U compinit; compinit -u -D; setopt nobeep autolist; "
       "zstyle ':completion:*' verbose no; zstyle ':completion:*' insert-tab false; LISTMAX=9999")


def offered_by_terminal(shell, typed, tree):
    """What a shell shows when Tab is pressed twice behind what was typed."""
    command, setting = shell
    process, terminal = pty.fork()
    if process == 0:
        os.chdir(tree)
        environment = {"PATH": f"{tree}/bin:{os.environ['PATH']}", "HOME": str(tree / "home"), "TERM": "dumb", "PS1": "@@ ", "LANG": "C.UTF-8",
                       "COLUMNS": "200"}
        os.execvpe(command[0], command, environment)
    said, until = b"", time.monotonic() + SECONDS
    try:
        # What is echoed is not what is looked for; keys are the shell's own from its prompt on.
        for line, end in ((f"{setting}\necho RE''ADY\n", rb"READY\r*\n(?:.|\n)*@@ "), (f"{typed}\t\t\x15echo DO''NE\n", rb"DONE\r*\n")):
            os.write(terminal, line.encode())
            said = b""
            while not re.search(end, said):
                if time.monotonic() > until or not select.select([terminal], [], [], 1)[0]:
                    if time.monotonic() > until:
                        raise TimeoutError(f"{command[0]} says no more: {said[-200:]!r}")
                    continue
                said += os.read(terminal, 4096)
    finally:
        os.close(terminal)
        os.waitpid(process, 0)
    return re.sub(r"\x1b\[[0-9;?]*[a-zA-Z]", "", said.decode(errors="replace"))


def offered_by_fish(typed, tree):
    environment = {"PATH": os.environ["PATH"], "HOME": str(tree / "home"), "LANG": "C.UTF-8", "TYPED": typed}
    script = "for f in share/fish/vendor_completions.d/*.fish; source $f; end; complete -C \"$TYPED\""
    return subprocess.run(["fish", "--no-config", "-c", script], cwd=tree, env=environment, capture_output=True, text=True, check=True,
                          stdin=subprocess.DEVNULL, timeout=SECONDS).stdout


SHELLS = {"bash": lambda *words: offered_by_terminal(BASH, *words), "zsh": lambda *words: offered_by_terminal(ZSH, *words), "fish": offered_by_fish}


def long_options(text):
    return set(re.findall(r"(?<![\w-])--[a-z]+", text))


class Tree:
    def __init__(self, place):
        self.place = place
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(place / "home")}

    def help_of(self, program):
        return subprocess.run([self.place / "bin" / program, "--help"], env=self.environment, capture_output=True, text=True, check=True,
                              timeout=SECONDS).stdout

    def page_of(self, program):
        return gzip.decompress((self.place / "share/man/man1" / f"{program}.1.gz").read_bytes()).decode().replace("\\-", "-")

    def rows_of_help(self, program):
        """Options and commands that have a row of their own, each with a text."""
        return re.findall(r"^  (?:-\w, )?(--\w+|[a-z]+) +\S", self.help_of(program), re.M)

    def the_help_has_a_row_for_each(self):
        for program, commands in PROGRAMS.items():
            rows = self.rows_of_help(program)
            if len(rows) != len(set(rows)) or not commands | {"--help", "--version"} <= set(rows) or not long_options(self.help_of(program)) <= set(rows):
                return f"{program}: {rows}"
        return ""

    def the_page_has_exactly_these(self):
        for program in PROGRAMS:
            sections = dict(re.findall(r"^\.SH ([A-Z ]+)\n(.*?)(?=^\.SH |\Z)", self.page_of(program), re.M | re.S))
            headed = re.findall(r"^\.TP\n(.*)$", sections["OPTIONS"] + sections.get("COMMANDS", ""), re.M)
            told = [each for head in headed for each in re.findall(r"--[a-z]+|(?<=^\.BR )[a-z]+", head)]
            if sorted(told) != sorted(self.rows_of_help(program)):
                return f"{program}: {sorted(told)}, the help has {sorted(self.rows_of_help(program))}"
        return ""

    def the_page_tells_every_variable_that_is_read(self):
        read = set()
        for path in (PROJECT / "src").rglob("*.cpp"), (PROJECT / "src").rglob("*.h"):
            for file in path:
                if not {"windows", "winapi"} & set(file.relative_to(PROJECT).parts[:2]):
                    read |= set(re.findall(r'"(CORVANE_[A-Z]+)"', file.read_text(encoding="utf-8")))
        page = re.search(r"^\.SH ENVIRONMENT\n(.*?)(?=^\.SH )", self.page_of("corvane"), re.M | re.S)[1]
        told = set(re.findall(r"^\.TP\n\.B (CORVANE_[A-Z]+)$", page, re.M))
        helped = set(re.findall(r"^  (CORVANE_[A-Z]+) ", self.help_of("corvane"), re.M))
        return "" if read and read == told == helped else f"read: {sorted(read)}, the page: {sorted(told)}, the help: {sorted(helped)}"

    def completed(self, shell):
        asked = SHELLS[shell]
        (self.place / "tune one.mid").write_bytes(b"")
        for program, commands in PROGRAMS.items():
            wanted = {row for row in self.rows_of_help(program) if row.startswith("--")}
            found = long_options(re.sub(rf"{program} --(?![a-z])", "", asked(f"{program} --", self.place)))
            if found != wanted:
                return f"{program}: it offers {sorted(found)}, the help has {sorted(wanted)}"
            words = asked(f"{program} ", self.place)
            missing = {word for word in commands or {"tune"} if not re.search(rf"\b{word}\b", words)}
            if missing:
                return f"{program}: of its first words {sorted(missing)} are not offered: {words[-300:]!r}"
        if "--about" not in asked("corvane --ab", self.place):
            return "--ab is not made whole"
        for typed in ("corvane tu", "corvane --open tu", "corvane --open x.mid tu", "corvane-skin check tu"):
            if not re.search(r"tune\\? one\.mid", asked(typed, self.place)):
                return f"behind {typed!r} no file is offered"
        if long_options(asked("corvane --open x.mid --", self.place).replace("--open x", "")):
            return "options are offered where all are files"
        return "" if "tune" not in asked("corvane-skin preview --scale tu", self.place) else "files are offered for a number"


def main():
    failed = False
    with tempfile.TemporaryDirectory(prefix="corvane-options-") as folder:
        place = pathlib.Path(folder) / "tree"
        done = subprocess.run(["cmake", "--install", pathlib.Path(sys.argv[1]).resolve(), "--prefix", place], capture_output=True, text=True, check=False)
        if done.returncode:
            print(f"FAIL the build can be installed: {(done.stdout + done.stderr)[-300:]}")
            return 1
        (place / "home").mkdir()
        tree = Tree(place)
        tests = {name.replace("_", " "): getattr(tree, name) for name in
                 ("the_help_has_a_row_for_each", "the_page_has_exactly_these", "the_page_tells_every_variable_that_is_read")}
        tests |= {f"{shell} completes what the help has": lambda shell=shell: tree.completed(shell) for shell in SHELLS}
        for name, test in tests.items():
            shell = name.split()[0]
            if shell in SHELLS and not shutil.which(shell):
                print(f"SKIP {name}: {shell} is not installed")
                continue
            try:
                why = test()
            except (OSError, KeyError, TypeError, TimeoutError, subprocess.SubprocessError) as error:
                why = f"{type(error).__name__}: {error}"
            print(f"FAIL {name}: {why}" if why else f"PASS {name}")
            failed = failed or bool(why)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
