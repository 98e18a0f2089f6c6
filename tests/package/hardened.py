#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads off the built programs what they are hardened with: hardened.py BUILD [PROGRAM...].

BUILD: a build folder; its corvane and corvane-skin, or corvane.exe, are looked at unless programs are named. Each check
first proves that it bites: a small program that is compiled with all the flags passes, and one without the flag of the
check does not. Prints "PASS name", "SKIP name: why" and "FAIL name: why" lines; ends with 1 when one failed.
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

# It has what each flag acts on: a large frame, a buffer filled to a length that comes from outside, an index into a vector.
SAMPLE = """
#include <cstdio>
#include <cstring>
#include <vector>
#ifdef WRITTEN_CODE
__asm__(".pushsection .both,\\"awx\\"\\nboth: nop\\n.popsection");
#endif
int main(int argc, char** argv) {
    char large[70000];
    char small[16];
    std::vector<int> numbers(static_cast<std::size_t>(argc));
    std::memcpy(small, argv[0], static_cast<std::size_t>(argc));
    std::snprintf(large, sizeof large, argv[0], small);
    std::puts(large);
    return numbers[static_cast<std::size_t>(argc - 1)];
}
"""
SAMPLE_FLAGS = ["-fPIE", "-pie", "-O2", "-U_FORTIFY_SOURCE", "-D_FORTIFY_SOURCE=2", "-D_GLIBCXX_ASSERTIONS",
                "-fstack-protector-strong", "-fstack-clash-protection", "-fcf-protection=full",
                "-Wl,-z,relro,-z,now,-z,noexecstack"]


def said(*command):
    return subprocess.run(command, capture_output=True, text=True, errors="replace", check=True).stdout


class Elf:
    """A program of Linux, as readelf and objdump tell it."""

    def __init__(self, path):
        self.path = path
        self.header = said("readelf", "-hW", str(path))
        self.segments = said("readelf", "-lW", str(path))
        self.dynamic = said("readelf", "-dW", str(path))
        self.imported = said("readelf", "--dyn-syms", "-W", str(path))

    def segment_flags(self, kind):
        return re.findall(rf"^ +{kind} +(?:0x\w+ +){{5}}([RWE ]{{3}})", self.segments, re.M)

    def code(self):
        return said("objdump", "-d", "--no-show-raw-insn", str(self.path))


def is_of_this_family(elf):
    return "X86-64" in elf.header


# Each returns what is wrong, "" when nothing is.


def loads_anywhere(elf):
    return "" if re.search(r"Type: +DYN", elf.header) and re.search(r"FLAGS_1.*\bPIE\b", elf.dynamic) else "not position-independent"


def relocations_are_read_only(elf):
    return "" if elf.segment_flags("GNU_RELRO") else "no RELRO"


def everything_is_bound_at_the_start(elf):
    return "" if re.search(r"FLAGS_1.*\bNOW\b", elf.dynamic) else "bound late"


def stack_is_no_code(elf):
    return "" if elf.segment_flags("GNU_STACK") == ["RW "] else f"stack {elf.segment_flags('GNU_STACK')}"


def nothing_is_written_and_run(elf):
    flags = elf.segment_flags("LOAD")
    return "" if flags and not any("W" in f and "E" in f for f in flags) and "TEXTREL" not in elf.dynamic else f"{flags}"


def frames_are_guarded(elf):
    return "" if " __stack_chk_fail@" in elf.imported else "no stack protector"


def copies_are_bounded(elf):
    return "" if re.search(r" __\w+_chk@GLIBC", elf.imported.replace("__stack_chk_fail", "")) else "no _FORTIFY_SOURCE"


def large_frames_touch_each_page(elf):
    return "" if re.search(r"\borq? +\$0x0,(?:0x\w+)?\(%rsp\)", elf.code()) else "no stack clash protection"


def jumps_are_checked(elf):
    # Not the note of the whole program: the linker leaves it out where the C library's own start has none (Debian 12).
    code = elf.code()
    marked = "endbr64" in re.search(r"<main>:\n(.*)", code).group(1) if "<main>:" in code else code.count("endbr64") >= 100
    return "" if marked else "no control-flow protection"


def indexes_are_checked(elf):
    return "" if "__glibcxx_assert_fail" in elf.imported else "no _GLIBCXX_ASSERTIONS"


def libraries_come_from_the_system(elf):
    return "" if not re.search(r"\((RPATH|RUNPATH)\)", elf.dynamic) else "a path of its own for libraries"


# The check, and the flag without which it must fail ("+" before one that is added).
CHECKS = ((loads_anywhere, "-pie", "+-no-pie"), (relocations_are_read_only, "+-Wl,-z,norelro"),
          (everything_is_bound_at_the_start, "+-Wl,-z,lazy"), (stack_is_no_code, "+-Wl,-z,execstack"),
          (nothing_is_written_and_run, "+-DWRITTEN_CODE"), (frames_are_guarded, "-fstack-protector-strong", "+-fno-stack-protector"),
          (copies_are_bounded, "-D_FORTIFY_SOURCE=2"),
          (large_frames_touch_each_page, "-fstack-clash-protection", "+-fno-stack-clash-protection"),
          (jumps_are_checked, "-fcf-protection=full", "+-fcf-protection=none"), (indexes_are_checked, "-D_GLIBCXX_ASSERTIONS"),
          (libraries_come_from_the_system, "+-Wl,-rpath,/nowhere"))
OF_THE_FAMILY = (large_frames_touch_each_page, jumps_are_checked)  # their signs in the code are one family's


def sample(folder, compiler, changes=()):
    """The small program, with some flags taken away and others added."""
    flags = [f for f in SAMPLE_FLAGS if f not in changes] + [c[1:] for c in changes if c.startswith("+")]
    source, program = folder / "sample.cpp", folder / "sample"
    source.write_text(SAMPLE)
    subprocess.run([compiler, "-w", *flags, str(source), "-o", str(program)], check=True, capture_output=True, timeout=60)
    return Elf(program)


def judge(name, why):
    print(f"FAIL {name}: {why}" if why else f"PASS {name}", flush=True)
    return bool(why)


def look_at_linux(programs, compiler):
    failed = False
    with tempfile.TemporaryDirectory(prefix="corvane-hardened-") as folder:
        good = sample(pathlib.Path(folder), compiler)
        for test, *changes in CHECKS:
            name = test.__name__.replace("_", " ")
            if test in OF_THE_FAMILY and not is_of_this_family(good):
                print(f"SKIP {name}: what shows it is known for x86-64 alone")
                continue
            why = test(good) and f"the small program: {test(good)}"
            if not why and not test(sample(pathlib.Path(folder), compiler, changes)):
                why = f"not noticed when it is built with {changes}"
            for path in programs if not why else ():
                why = why or (test(Elf(path)) and f"{path.name}: {test(Elf(path))}")
            failed |= judge(name, why)
    return failed


def highest_fortify(compiler):
    known = subprocess.run([compiler, "-x", "c++", "-E", "-P", "-"], input="__has_builtin(__builtin_dynamic_object_size)",
                           capture_output=True, text=True, check=False).stdout
    return 3 if known.strip() == "1" else 2


def look_at_commands(build, compiler):
    """Each file of the programs is compiled with all of them, also those that leave no trace of their own."""
    commands = [e for e in json.loads((build / "compile_commands.json").read_text()) if "/src/" in e["file"]]
    wanted = [f"-D_FORTIFY_SOURCE={highest_fortify(compiler)}", "-D_GLIBCXX_ASSERTIONS", "-fstack-protector-strong",
              "-fstack-clash-protection", "-O3"]
    missing = [f"{pathlib.Path(e['file']).name} {flag}" for e in commands for flag in wanted if flag not in e["command"].split()]
    return judge("every file is compiled with them", "" if commands and not missing else "; ".join(missing[:6]) or "no files")


def look_at_windows(path):
    told = said("x86_64-w64-mingw32-objdump", "-p", str(path))
    relocations = re.search(r"Entry 5 \w+ (\w+) Base Relocation Directory", told)
    failed = False
    for name, good in (("loads anywhere", "DYNAMIC_BASE" in told and relocations and int(relocations.group(1), 16) > 0),
                       ("anywhere is anywhere in 64 bits", "HIGH_ENTROPY_VA" in told), ("data is no code", "NX_COMPAT" in told),
                       ("frames are guarded", b"stack smashing detected" in path.read_bytes())):
        failed |= judge(f"{path.name}: {name}", "" if good else "it does not")
    return failed


def compiler_of(build):
    found = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", (build / "CMakeCache.txt").read_text(), re.M)
    return found.group(1)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    named = [pathlib.Path(name) for name in sys.argv[2:]]
    windows = [path for path in named or [build / "corvane.exe"] if path.suffix == ".exe" and path.exists()]
    linux = [path for path in named or [build / "corvane", build / "corvane-skin"] if path.suffix != ".exe" and path.exists()]
    if not windows and not linux:
        print(f"FAIL programs: none in {build}")
        return 1
    failed = any([look_at_windows(path) for path in windows])
    if linux:
        failed |= look_at_linux(linux, compiler_of(build))
        failed |= look_at_commands(build, compiler_of(build))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
