#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""No shell, no other program, and no format that a file could have written.

Prints "PASS name" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import re
import sys

from machine import SOURCE, without_comments

# Starts a program or a shell, or has another program open something.
STARTS = re.compile(r"(?<![\w.>])(?:std::|::)?(_?w?system|_?w?popen|exec[lv]p?e?|execveat|fexecve|posix_spawnp?|v?fork|clone3?|wordexp"
                    r"|ShellExecute(?:Ex)?[AW]?|CreateProcess(?:AsUser)?[AW]?|WinExec)\s*\(|\b(QProcess|QDesktopServices)\b")
# Where it may: the manual, a file of the program's own, is shown by the system's browser.
STARTED = {"windows/windowing/windows_dialogs.cpp": ["ShellExecuteW"]}
# Functions with a format, and which argument it is.
FORMATTED = {0: "v?w?printf|w?scanf|qDebug|qWarning|qCritical|qFatal|qInfo",
             1: "v?fw?printf|v?sprintf|v?dprintf|v?asprintf|syslog|sscanf|swscanf|fscanf|wsprintf[AW]?",
             2: "v?snprintf|v?swprintf|v?_snprintf|v?_snwprintf|wnsprintf[AW]?|strftime|wcsftime"}
FORMATS = {place: re.compile(rf"(?<![\w.>])(?:std::|::|QString::)?({names})\s*\(") for place, names in FORMATTED.items()}
VALUE_FORMATS = re.compile(r"\bstd::(?:v?format(?:_to(?:_n)?)?|v?print(?:ln)?)\s*\(")
LITERAL = re.compile(r'^(?:u8|L|u|U)?"')


def arguments(code, begin):
    """The arguments of a call whose parenthesis was opened right before `begin`."""
    depth, current, found, quoted = 0, begin, [], False
    start = begin
    while current < len(code):
        letter = code[current]
        if quoted:
            current += letter == "\\"
            quoted = letter != '"'
        elif letter == '"':
            quoted = True
        elif letter in "([{":
            depth += 1
        elif letter in ")]}":
            if depth == 0:
                return [*found, code[start:current].strip()]
            depth -= 1
        elif letter == "," and depth == 0:
            found.append(code[start:current].strip())
            start = current + 1
        current += 1
    return found


def with_texts(text):
    """Without comments, the texts kept."""
    return re.sub(r'("(?:\\.|[^"\\\n])*")|//[^\n]*|/\*.*?\*/', lambda m: m.group(1) or "\n" * m.group().count("\n"), text, flags=re.S)


def starts(text):
    return [found.group(1) or found.group(2) for found in STARTS.finditer(without_comments(text))]


def open_formats(text):
    """Calls whose format is not a text in the source."""
    code = with_texts(text)
    bare = re.sub(r'"(?:\\.|[^"\\\n])*"', lambda m: '"' + " " * (len(m.group()) - 2) + '"', code)  # of the same length
    found = [found.group().strip() for found in VALUE_FORMATS.finditer(bare)]
    for place, names in FORMATS.items():
        for call in names.finditer(bare):
            given = arguments(code, call.end())
            if len(given) > place and not LITERAL.match(given[place]):
                found.append(f"{call.group(1)}({given[place]})")
    return found


def seen_failing():
    """What each rule must catch, and what it must let pass."""
    caught = [starts('std::system("ls");'), starts("::execvp(name, words);"), starts("QProcess tool;"), starts("fork();"),
              starts("popen(name, mode);"), starts("ShellExecuteW(a, b, c);"), open_formats("std::printf(title.c_str());"),
              open_formats("std::snprintf(out, sizeof(out), format, 1);"), open_formats("fprintf(stderr, text);"),
              open_formats("qWarning(name);"), open_formats("std::vformat(text, values);"), open_formats("vfprintf(f, text, list);")]
    passed = [starts("// system(\nsay(\"popen(\");"), starts("drive.system(); loop->exec(); QApplication::exec();"),
              open_formats('std::printf("%s: %d", name, f(1, 2));'), open_formats('std::snprintf(a.data(), a.size(), "-%08x", n);'),
              open_formats('swprintf(digits, 17, L"%016llx", hash);'), open_formats('// printf(text)\nsay("printf(text)");'),
              open_formats('std::fprintf(stderr, "corvane-skin: %s\\n", reason.c_str());')]
    return all(caught) and not any(passed)


def main():
    started, formats = [], []
    for path in sorted(SOURCE.rglob("*")):
        if path.suffix not in (".cpp", ".h"):
            continue
        inner, text = path.relative_to(SOURCE).as_posix(), path.read_text(encoding="utf-8")
        started += [f"{inner}: {what}" for what in starts(text) if what not in STARTED.get(inner, [])]
        formats += [f"{inner}: {what}" for what in open_formats(text)]
    print(f"FAIL no other program is started: {'; '.join(started[:6])}" if started else "PASS no other program is started")
    print(f"FAIL each format is a text of the source: {'; '.join(formats[:6])}" if formats else "PASS each format is a text of the source")
    seen = seen_failing()
    print("PASS the rules catch what they must" if seen else "FAIL the rules catch what they must")
    return 0 if seen and not started and not formats else 1


if __name__ == "__main__":
    sys.exit(main())
