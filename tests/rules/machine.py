#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Nothing of the core touches the machine other than through a port, and threads are made by workers alone.

Prints "PASS name" and "FAIL name: where" lines; ends with 1 when one failed.
"""

import pathlib
import re
import sys

SOURCE = pathlib.Path(__file__).resolve().parents[2] / "src"
DESKTOPS = {"linux", "windows", "drives", "media", "files", "confinement", "winapi", "workers", "skintool", "main"}  # the rooms that may; all others are the core
STANDARD_HEADERS = set("""algorithm any array atomic bit bitset cassert cctype cerrno cfloat charconv cinttypes climits cmath
    compare complex concepts cstddef cstdio cstdint cstring cwchar deque exception functional initializer_list iomanip ios istream
    iterator limits list locale map memory new numbers numeric optional ostream queue random ranges ratio regex set span
    sstream stack stdexcept streambuf string string_view tuple type_traits typeindex typeinfo unordered_map unordered_set
    utility valarray variant vector version""".split())
BANNED_WORDS = re.compile(
    r"\b(getenv|setenv|system|fopen|ifstream|ofstream|fstream|std::filesystem|std::thread|std::jthread|std::async|std::mutex"
    r"|std::chrono|std::this_thread|clock_gettime|gettimeofday|localtime|std::time|std::exit|std::abort|std::terminate"
    r"|quick_exit|_exit|fork|execv\w*|popen|rand|srand|random_device|std::cout|std::cerr|printf|fputs|puts|fwrite|fread|freopen|thread_local)\s*[({<;:&]")
# Calls without an object or namespace in front, of names that the file does not declare itself.
BARE_CALLS = re.compile(r"(?<![\w.>:])(?:::)?(exit|abort|atexit|time|clock|localtime|gmtime|mktime|strftime|sleep|usleep|nanosleep|random"
                        r"|remove|rename|unlink|open|close|read|write|stat|kill|signal)\s*\(")
DECLARED = re.compile(r"(?<!\breturn)(?<!\belse)(?<!\bthrow)(?<=[\w>&*])\s+(?:\w+::)*(\w+)\s*\(")


def without_comments(text):
    text = re.sub(r"//[^\n]*|/\*.*?\*/", lambda m: "\n" * m.group().count("\n"), text, flags=re.S)
    return re.sub(r'(?<!#include )"(\\.|[^"\\\n])*"', '""', text)


def machine_touched(text):
    for header in re.findall(r"#include\s+<([^>]+)>", text):
        if header not in STANDARD_HEADERS:
            yield f"<{header}>"
    code = without_comments(text)
    for word in BANNED_WORDS.finditer(code):
        yield word.group(1)
    own = set(DECLARED.findall(code))
    for call in BARE_CALLS.finditer(code):
        if call.group(0).startswith("::") or call.group(1) not in own:
            yield call.group(1)


THREADS = re.compile(r"\bstd::(?:j?thread\b(?!::id)|async\b)|\bpthread_create\b|\bQThreadPool\b|\bQThread::create\b|\bpublic\s+QThread\b|\b(?:_begin|Create)Thread\w*\s*\(|\b_beginthread")


def threads_made(text):
    for made in THREADS.finditer(without_comments(text)):
        yield made.group()


def findings():
    """(rule, where) of everything that is wrong."""
    for path in sorted(SOURCE.rglob("*")):
        folder = path.relative_to(SOURCE).parts[0]
        if path.suffix not in (".cpp", ".h"):
            continue
        text = path.read_text(encoding="utf-8")
        if folder != "workers":
            for what in threads_made(text):
                yield "threads are made by workers alone", f"{path.relative_to(SOURCE)}: {what}"
        if folder not in DESKTOPS:
            for what in machine_touched(text):
                yield "the core does not touch the machine", f"{path.relative_to(SOURCE)}: {what}"


def seen_failing():
    """What each rule must catch, and what it must let pass."""
    caught = [list(machine_touched("#include <thread>\n")), list(machine_touched("auto t = std::chrono::now();")),
              list(machine_touched('std::exit(1);')), list(machine_touched("int n = rand();")),
              list(machine_touched("#include <unistd.h>")), list(machine_touched("return time(nullptr);")),
              list(machine_touched("void f() { exit(1); }")), list(machine_touched("void remove(int a); void f() { ::remove(name); }"))]
    passed = [list(machine_touched('// std::exit(1)\nsay("rand(");')),
              list(machine_touched("files.read(path, 1); loop->close(); mdl::open(1); setTime(2);")),
              list(machine_touched("virtual std::optional<std::string> read(int n) = 0;")),
              list(machine_touched("void A::remove(B& b) {}\nA::~A() { remove(b_); }"))]
    caught += [list(threads_made(text)) for text in ("std::thread([] {}).detach();", "std::async(f);", "#include <QThreadPool>", "_beginthreadex(f)")]
    passed += [list(threads_made(text)) for text in ("std::this_thread::yield();", "std::thread::id by;", "// std::thread")]
    return all(caught) and not any(passed)


def main():
    rules = {"the core does not touch the machine": [], "threads are made by workers alone": []}
    for rule, where in findings():
        rules[rule].append(where)
    for rule, places in rules.items():
        print(f"FAIL {rule}: {'; '.join(places[:6])}" if places else f"PASS {rule}")
    seen = seen_failing()
    print("PASS the rules catch what they must" if seen else "FAIL the rules catch what they must")
    return 0 if seen and not any(rules.values()) else 1


if __name__ == "__main__":
    sys.exit(main())
