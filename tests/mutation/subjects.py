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
    folders = ("types", "discs", "pictures", "engine", "storage", "startup", "panel", "players", "listedit", "dialogs", "shell")
    left_out = (("src", "linux"), ("src", "drives"), ("src", "media"), ("src", "main"), ("src", "windows"), ("tests", "e2e"))
    copied = ("CMakeLists.txt", "cmake", "src", "tests", "PANELSET", "samples")
    headers = True
    shared_screen = False
    start_seconds = 5
    before = staticmethod(limits)

    def parser_flags(self):
        return []

    def build(self, tree, jobs, mutants):
        """Builds the test programs over the breakable copy; the mutants that are in them."""
        switch = tree / "switch.o"
        command("g++", "-std=c++20", "-O1", "-c", "-o", switch, HERE / "switch.cpp")
        flags = f"-O1 -g0 -w -fpermissive -Wno-narrowing -D_GLIBCXX_ASSERTIONS -I{tree}/src"
        command("cmake", "-S", tree, "-B", tree / "b", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None", "-DCORVANE_DESKTOP=OFF",
                f"-DCMAKE_CXX_FLAGS={flags}", f"-DCMAKE_CXX_STANDARD_LIBRARIES={switch}")
        command("cmake", "--build", tree / "b", "-j", jobs, env={**os.environ, "CCACHE_BASEDIR": str(PROJECT)})
        return mutants

    def test_programs(self, tree):
        return sorted(path for path in (tree / "b" / "tests").glob("test_*") if os.access(path, os.X_OK))

    @contextlib.contextmanager
    def stage(self):
        """While it lasts, run(program, options) gives the command, and environment is what programs get."""
        self.environment = dict(os.environ)
        yield

    def run(self, program, *options):
        return [str(program), *options]


class Desktop(Rules):
    """Code that touches the machine, sources alone. Its tests share one screen."""

    left_out = (("tests", "e2e"),)
    copied = (*Rules.copied, "packaging", "docs", "LICENSE", "THIRD_PARTY.md")
    headers = False
    shared_screen = True
    test_names = ()

    def configure(self, tree, switch):
        raise NotImplementedError

    def build(self, tree, jobs, mutants):
        """What does not build when it can be broken stays whole and is left out."""
        folder, library = self.folders[0], f"corvane_{self.folders[0]}"
        rules = tree / "src" / folder / "CMakeLists.txt"
        loose = f"target_compile_options({library} PRIVATE -w -fpermissive -Wno-narrowing)\n"
        if loose not in rules.read_text():
            rules.write_text(rules.read_text() + loose)
        self.configure(tree, tree / "switch.o")
        make = ["cmake", "--build", str(tree / "b"), "-j", str(jobs), "--target"]
        environment = {**os.environ, "CCACHE_BASEDIR": str(tree)}
        done = subprocess.run([*make, library, "--", "-k", "0"], capture_output=True, text=True, errors="replace",
                              check=False, env=environment)
        refused = set(re.findall(rf"FAILED: .*?{library}\.dir/(\S+?)\.obj?\b", done.stdout))
        for name in refused:
            shutil.copy(tree / "plain" / "src" / folder / name, tree / "src" / folder / name)
        if refused:
            print(f"left out, because they do not build when they can be broken: {', '.join(sorted(refused))}", flush=True)
        command(*make, *self.test_names, env=environment)
        return [mutant for mutant in mutants if mutant["file"].removeprefix(f"{folder}/") not in refused]

    def test_programs(self, tree):
        return [path for path in super().test_programs(tree) if path.stem in self.test_names]


class Linux(Desktop):
    """The desktop of Linux."""

    tree = PROJECT / "build" / "mutation_linux"
    folders = ("linux", "drives", "media")
    test_names = ("test_unit_linux", "test_contract_linux")
    packages = ("Qt6Widgets", "Qt6DBus", "mpv", "fluidsynth", "libcdio", "libcdio_paranoia", "libcdio_cdda", "libpulse",
                "libseccomp", "xcb", "libavformat", "libavcodec", "libavutil", "libswresample")

    def parser_flags(self):
        told = subprocess.run(["pkg-config", "--cflags", *self.packages], check=True, capture_output=True, text=True).stdout
        return told.split()

    def configure(self, tree, switch):
        command("g++", "-std=c++20", "-O1", "-fPIC", "-c", "-o", switch, HERE / "switch.cpp")
        command("cmake", "-S", tree, "-B", tree / "b", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                "-DCMAKE_SHARED_LINKER_FLAGS=", f"-DCMAKE_CXX_STANDARD_LIBRARIES={switch}")

    @contextlib.contextmanager
    def stage(self):
        from session import Session
        with Session() as session:
            self.environment = {**os.environ, **session.environment}
            yield


class Windows(Desktop):
    """The desktop of Windows, built here and run under Wine."""

    tree = PROJECT / "build" / "mutation_windows"
    folders = ("windows",)
    test_names = ("test_unit_windows", "test_contract_windows")
    start_seconds = 20
    before = None  # Wine reserves more addresses than it uses memory
    googletest = pathlib.Path("/usr/src/googletest/googletest/include")
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

    def configure(self, tree, switch):
        command(self.compiler, "-std=c++20", "-O1", f"-I{self.googletest}", "-c", "-o", switch, HERE / "switch.cpp")
        usual = "-lkernel32 -luser32 -lgdi32 -lwinspool -lshell32 -lole32 -loleaut32 -luuid -lcomdlg32 -ladvapi32"
        command("cmake", "-S", tree, "-B", tree / "b", "-G", "Ninja", *(f"-D{key}={value}" for key, value in self.preset.items()),
                f"-DCMAKE_CXX_STANDARD_LIBRARIES={switch} {usual}")

    def test_programs(self, tree):
        return [tree / "b" / "tests" / f"{name}.exe" for name in self.test_names]

    @contextlib.contextmanager
    def stage(self):
        from session import Session
        from wine import Wine
        with Session() as session, Wine(session.environment) as wine:
            self.environment, self.wine = wine.environment, wine
            yield

    def run(self, program, *options):
        return self.wine.command(program, *options)
