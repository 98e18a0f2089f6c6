#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""How large the rooms are, and what stands twice in the two desktops: counts.py [FOLDER OF A PROJECT]

A line of code stands twice when it is the same one, in the same order, in two files of one name (but for qt_ and windows_ in
front): blank lines, comments, includes and lone braces do not count. A comparison on the kind of media counts where it stands
outside players/ and types/, which are for that."""

import difflib
import pathlib
import re
import sys

TEST = re.compile(r"^TEST(?:_F|_P)?\(", re.M)
KIND = re.compile(r"(?:\bcase|==|!=) (?:mdlDefinePublic::)?mk[A-Z]\w+")
NO_CODE = ("//", "#include", "#pragma", "*", "/*", "namespace", "}  // namespace")


def sources(folder):
    return [path for path in sorted(folder.rglob("*")) if path.suffix in (".cpp", ".h")]


def lines(paths):
    return sum(path.read_text(encoding="utf-8").count("\n") for path in paths)


def code(path):
    stripped = (line.strip() for line in path.read_text(encoding="utf-8").splitlines())
    return [line for line in stripped if len(line) > 3 and not line.startswith(NO_CODE)]


def twins(one, other):
    """(files of one name, lines that stand in both)"""
    def by_name(folder):
        return {re.sub(r"^(?:qt|windows|linux|desktop)_", "", path.name): path for path in sources(folder)}
    ours, theirs = by_name(one), by_name(other)
    pairs = [(code(path), code(theirs[name])) for name, path in ours.items() if name in theirs]
    return len(pairs), sum(match.size for a, b in pairs
                           for match in difflib.SequenceMatcher(None, a, b, autojunk=False).get_matching_blocks())


def main():
    project = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parents[1]
    source, tests = project / "src", project / "tests"
    print("| Room | files | lines | over 300 lines | tests | lines of tests |\n|---|---|---|---|---|---|")
    for room in sorted(path for path in source.iterdir() if path.is_dir()):
        own, tried = sources(room), sources(tests / "unit" / room.name)
        print(f"| `{room.name}/` | {len(own)} | {lines(own)} | {sum(lines([path]) > 300 for path in own)} "
              f"| {sum(len(TEST.findall(path.read_text(encoding='utf-8'))) for path in tried)} | {lines(tried)} |")
    pairs, same = twins(source / "linux", source / "windows")
    kinds = sum(len(KIND.findall(path.read_text(encoding="utf-8"))) for path in sources(source)
                if path.relative_to(source).parts[0] not in ("players", "types"))
    print(f"\n{pairs} files of one name in both desktops, {same} lines stand in both; {kinds} comparisons on the kind of media; "
          f"{lines(sources(source))} lines of code, {lines(sources(tests))} of tests in C++, "
          f"{lines(tests.rglob('*.py'))} in Python")


if __name__ == "__main__":
    main()
