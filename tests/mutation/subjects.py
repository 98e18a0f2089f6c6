# SPDX-License-Identifier: GPL-3.0-or-later
"""What can be broken: the rules, the desktop of Linux, that of Windows. Each says which sources those are, how the compiler's
tree of them is read, how they are built breakable, and how their tests are run."""

import contextlib
import json
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
sys.path.insert(0, str(PROJECT / "tools"))

MOST_MEMORY = 4 << 30
MOST_ROUNDS = 8  # of a build, each without what the one before stumbled over
BUILD = "build/b"  # in the copy: as deep as a preset's, so that the compiler's cache knows the names in it


def command(*words, **options):
    done = subprocess.run([str(word) for word in words], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", check=False, **options)
    if done.returncode:
        sys.exit(f"run: {' '.join(map(str, words[:4]))} failed\n" + "\n".join(done.stdout.splitlines()[-30:]))


def limits():
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))


class Rules:
    """The portable core, against the machine in memory."""

    tree = PROJECT / "build" / "mutation"
    folders = ("types", "discs", "lists", "pictures", "controls", "engine", "storage", "startup", "panel", "players", "listedit", "dialogs", "program", "shell")
    left_out = (("src", "linux"), ("src", "drives"), ("src", "media"), ("src", "files"), ("src", "confinement"), ("src", "main"), ("src", "windows"), ("src", "winapi"), ("tests", "e2e"))
    copied = ("CMakeLists.txt", "cmake", "src", "tests", "PANELSET", "samples", "packaging", "docs", "LICENSE", "THIRD_PARTY.md")
    headers = True
    shared_screen = False
    start_seconds = 5
    patience = 20  # times as long as with nothing broken
    before = staticmethod(limits)

    def parser_flags(self):
        return []

    def built_tests(self):
        """The targets that are tried."""
        return ["core_tests"]

    def build_rules(self):
        """The project's, and what they need beside for what can be broken."""
        return (PROJECT / "CMakeLists.txt").read_text()

    def configure_few(self, tree):
        switch = tree / "switch.o"
        command("g++", "-std=c++20", "-O1", "-c", "-o", switch, HERE / "switch.cpp")
        command("cmake", "-S", tree, "-B", tree / BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCORVANE_DESKTOP=OFF",
                f"-DCMAKE_CXX_STANDARD_LIBRARIES={switch}")

    @staticmethod
    def failed(name, said):
        room, inner = name.split("/", 1)
        return re.search(rf"^FAILED: \S*\bcorvane_{room}\.dir/{re.escape(inner)}\.o(?:bj)?\b", said, re.M) is not None

    def build_few(self, tree, jobs, mutants, files):
        """As build(), but these sources alone can be broken. The others are built as they are always built, so that the
        compiler's cache has them."""
        source, plain = tree / "src", tree / "plain" / "src"
        for path in (path for room in self.folders for path in (plain / room).rglob("*") if path.is_file()):
            name = path.relative_to(plain)
            if str(name) not in files and (source / name).read_bytes() != path.read_bytes():
                shutil.copy(path, source / name)
        rules = self.build_rules()
        for name in sorted(files):
            rules += (f"set_source_files_properties({source / name} DIRECTORY src/{name.split('/')[0]} PROPERTIES COMPILE_OPTIONS"
                      f' "-w;-Wno-error;-fpermissive;-Wno-narrowing;-O1;-I{source}")\n')
        (tree / "CMakeLists.txt").write_text(rules)
        self.configure_few(tree)
        make = ["ninja", "-C", str(tree / BUILD), "-j", str(jobs), "-k", "0", *self.built_tests()]
        whole = set()
        for _ in range(MOST_ROUNDS):
            done = subprocess.run(make, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                                  check=False, env={**os.environ, "CCACHE_BASEDIR": str(tree), "CCACHE_NOHASHDIR": "1"})
            refused = {name for name in files - whole if self.failed(name, done.stdout)}
            if not done.returncode or not refused:
                break
            for name in refused:
                shutil.copy(plain / name, source / name)
            whole |= refused
        if done.returncode:
            sys.exit("run: the breakable copy does not build\n" + "\n".join(done.stdout.splitlines()[-30:]))
        if whole:
            print(f"left out, because they do not build when they can be broken: {', '.join(sorted(whole))}", flush=True)
        return [mutant for mutant in mutants if mutant["file"] in files - whole]

    def build(self, tree, jobs, mutants):
        """Builds the test programs over the breakable copy; the mutants that are in them. What does not build when it can be
        broken stays whole and is left out."""
        switch = tree / "switch.o"
        command("g++", "-std=c++20", "-O1", "-c", "-o", switch, HERE / "switch.cpp")
        flags = f"-O1 -g0 -w -fpermissive -Wno-narrowing -D_GLIBCXX_ASSERTIONS -I{tree}/src"
        command("cmake", "-S", tree, "-B", tree / BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None", "-DCORVANE_DESKTOP=OFF",
                f"-DCMAKE_CXX_FLAGS={flags}", f"-DCMAKE_CXX_STANDARD_LIBRARIES={switch}")
        make = ["cmake", "--build", str(tree / BUILD), "-j", str(jobs), "--target", "core_tests", "--", "-k", "0"]
        whole = set()
        for _ in range(MOST_ROUNDS):
            done = subprocess.run(make, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                                  check=False, env={**os.environ, "CCACHE_BASEDIR": str(PROJECT)})
            refused = self.refused(done.stdout) - whole
            if not done.returncode or not refused:
                break
            for name in refused:
                shutil.copy(tree / "plain" / "src" / name, tree / "src" / name)
            whole |= refused
        if done.returncode:
            sys.exit("run: the breakable copy does not build\n" + "\n".join(done.stdout.splitlines()[-30:]))
        if whole:
            print(f"left out, because they do not build when they can be broken: {', '.join(sorted(whole))}", flush=True)
        return [mutant for mutant in mutants if mutant["file"] not in whole]

    def refused(self, said):
        """The sources that the compiler complained of, or that it named where it complained of what uses them."""
        rooms = "|".join(self.folders)
        found = set()
        for block in re.split(r"\n(?=FAILED: )", said)[1:]:
            at_fault = re.findall(rf"\bsrc/((?:{rooms})/[\w/]+\.(?:cpp|h)):\d+:\d+: error", block)
            found |= set(at_fault or re.findall(rf"\bsrc/((?:{rooms})/[\w/]+\.h)[:,]\d+", block))
        return found

    def test_programs(self, tree):
        return sorted(path for path in (tree / BUILD / "tests").glob("test_*") if os.access(path, os.X_OK))

    @contextlib.contextmanager
    def stage(self):
        """While it lasts, run(program, options) gives the command, and environment is what programs get."""
        self.environment = dict(os.environ)
        yield

    def run(self, program, *options):
        return [str(program), *options]


class Desktop(Rules):
    """Code that touches the machine, sources alone. Its tests share one screen, and they wait: each counts for seconds."""

    left_out = (("tests", "e2e"),)
    headers = False
    shared_screen = True
    patience = 3
    test_names = ()

    def built_tests(self):
        return list(self.test_names)

    def build_rules(self):
        """The switch belongs to the test programs alone: a library of their own that had it, too, would be a second one."""
        return super().build_rules() + "".join(
            f"target_sources({name} PRIVATE ${{PROJECT_SOURCE_DIR}}/tests/mutation/switch.cpp)\n" for name in self.test_names)

    def build(self, tree, jobs, mutants):
        return self.build_few(tree, jobs, mutants, {mutant["file"] for mutant in mutants})

    def test_programs(self, tree):
        return [path for path in super().test_programs(tree) if path.stem in self.test_names]


class Linux(Desktop):
    """The desktop of Linux."""

    tree = PROJECT / "build" / "mutation_linux"
    folders = ("linux", "drives", "media", "files", "confinement")
    test_names = ("test_unit_linux", "test_contract_linux")
    start_seconds = 30
    packages = ("Qt6Widgets", "Qt6DBus", "mpv", "fluidsynth", "libcdio", "libcdio_paranoia", "libcdio_cdda", "libpulse",
                "libseccomp", "xcb", "libavformat", "libavcodec", "libavutil", "libswresample")

    def parser_flags(self):
        told = subprocess.run(["pkg-config", "--cflags", *self.packages], check=True, capture_output=True, text=True).stdout
        return told.split()

    def configure_few(self, tree):
        command("cmake", "-S", tree, "-B", tree / BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release")

    @contextlib.contextmanager
    def stage(self):
        from session import Session
        with Session() as session:
            home = session.folder / "home"  # not the user's: what is broken may write
            home.mkdir()
            self.environment = {**session.environment, "HOME": str(home)}
            yield


class Windows(Desktop):
    """The desktop of Windows, built here and run under Wine."""

    tree = PROJECT / "build" / "mutation_windows"
    folders = ("windows", "winapi")
    test_names = ("test_unit_windows", "test_contract_windows")
    start_seconds = 60
    before = None  # Wine reserves more addresses than it uses memory
    definitions = ("UNICODE", "_UNICODE", "NOMINMAX", "WIN32_LEAN_AND_MEAN", "_WIN32_WINNT=0x0A00")

    def __init__(self):
        presets = json.loads((PROJECT / "CMakePresets.json").read_text())["configurePresets"]
        self.preset = next(one for one in presets if one["name"] == "windows")["cacheVariables"]
        self.compiler = self.preset["CMAKE_CXX_COMPILER"]

    def parser_flags(self):
        """The other compiler's headers, but those that belong to a compiler itself are the parser's own."""
        told = subprocess.run([self.compiler, "-std=c++20", "-E", "-v", "-xc++", os.devnull], check=True, capture_output=True,
                              text=True).stderr
        told = told.split("search starts here:")[-1].split("End of search list")[0].split()
        folders = [pathlib.Path(folder).resolve() for folder in told]
        library = [folder for folder in folders if "c++" in folder.parts]
        system = [folder for folder in folders if "gcc" not in folder.parts]
        parser = sorted(pathlib.Path("/usr/lib").glob("llvm-*/lib/clang/*/include"))[-1:]
        return ["--target=x86_64-w64-windows-gnu", "-nostdinc", "-nostdinc++", *(f"-D{word}" for word in self.definitions),
                *(word for folder in (*library, *parser, *system) for word in ("-isystem", str(folder)))]

    def configure_few(self, tree):
        command("cmake", "-S", tree, "-B", tree / BUILD, "-G", "Ninja", *(f"-D{key}={value}" for key, value in self.preset.items()))

    def test_programs(self, tree):
        return [tree / BUILD / "tests" / f"{name}.exe" for name in self.test_names]

    @contextlib.contextmanager
    def stage(self):
        from session import Session
        from wine import Wine
        with Session() as session, Wine(session.environment) as wine:
            self.environment, self.wine = wine.environment, wine
            yield

    def run(self, program, *options):
        return self.wine.command(program, *options)
