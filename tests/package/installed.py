#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Installs a finished build into a folder of its own and looks at what lies there: installed.py BUILD.

Prints "PASS name" and "FAIL name: why" lines; ends with 1 when one failed.
"""

import json
import os
import pathlib
import re
import shutil
import stat
import struct
import subprocess
import sys
import tempfile

PROJECT = pathlib.Path(__file__).resolve().parents[2]
# Those of the player's own table, a row each.
EXTENSIONS = [extension.lower() for extension in re.findall(
    r'^ +\{"(\w+)",', (PROJECT / "src/types/media_types.cpp").read_text(encoding="utf-8"), re.M)]
SIZES = (16, 22, 24, 32, 48, 64, 128, 256)


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, stdin=subprocess.DEVNULL, timeout=60, **options)


def said(done):
    return (done.stdout + done.stderr).strip()[-300:]


class Installed:
    def __init__(self, place, build):
        self.place, self.build = place, build
        self.share = place / "share"
        # Neither a display nor the session's folders: what is asked here needs none.
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(place / "home"), "XDG_RUNTIME_DIR": str(place / "none")}

    def program(self, name, *words):
        return run(self.place / "bin" / name, *words, env=self.environment)

    def files_are_there(self):
        wanted = ["bin/corvane", "bin/corvane-skin", "share/corvane/PANELSET/DEFAULT.BMP", "share/corvane/PANELSET/DEFAULT.CSV",
                  "share/corvane/manual/index.html", "share/corvane/manual/skins.html", "share/applications/corvane.desktop",
                  "share/mime/packages/corvane.xml", "share/metainfo/org.corvane.corvane.metainfo.xml",
                  "share/icons/hicolor/scalable/apps/corvane.svg", "share/man/man1/corvane.1.gz", "share/man/man1/corvane-skin.1.gz",
                  *(f"share/{place}" for name in ("corvane", "corvane-skin") for place in
                    (f"bash-completion/completions/{name}", f"zsh/vendor-completions/_{name}", f"fish/vendor_completions.d/{name}.fish")),
                  "share/doc/corvane/copyright", "share/doc/corvane/corvane.cdx.json", "share/doc/corvane/GPL-3.0.txt", "share/doc/corvane/CC0-1.0.txt"]
        return ", ".join(name for name in wanted if not (self.place / name).is_file())

    def modes_are_ordinary(self):
        def wrong(path):
            executable = path.is_dir() or path.parent.name == "bin"
            return stat.S_IMODE(path.stat().st_mode) != (0o755 if executable else 0o644)

        return ", ".join(str(p.relative_to(self.place)) for p in self.place.rglob("*") if not p.is_symlink() and wrong(p))

    def pictures_of_the_manual_are_there(self):
        manual = self.share / "corvane" / "manual"
        names = {n for page in manual.glob("*.html") for n in re.findall(r'(?:src|href)="([^"#:]+)', page.read_text(encoding="utf-8"))}
        return ", ".join(sorted(n for n in names if not (manual / n).is_file())) if names else "no links"

    def programs_speak_without_a_display(self):
        for name in ("corvane", "corvane-skin"):
            words = (("--version", f"{name} "), ("--help", f"Usage: {name}"), *([("--about", f"{name} ")] if name == "corvane" else []))
            for word, start in words:
                done = self.program(name, word)
                if done.returncode != 0 or not done.stdout.startswith(start):
                    return f"{name} {word}: code {done.returncode}: {said(done)}"
        return "" if not (self.place / "home").exists() else "they made a folder"

    def a_start_without_a_display_is_one_line_and_code_1(self):
        """Whatever is set to something that nobody serves; and what the line must name."""
        for settings, told in (({}, "neither DISPLAY nor WAYLAND_DISPLAY"), ({"DISPLAY": ":4711"}, ":4711"), ({"DISPLAY": "nonsense"}, "nonsense"),
                               ({"DISPLAY": "x" * 9000}, "xxx"), ({"DISPLAY": ":4711\n\x1b[2J"}, ":4711"),
                               ({"WAYLAND_DISPLAY": "wayland-4711"}, "wayland-4711"),
                               ({"WAYLAND_DISPLAY": "wayland-4711", "DISPLAY": ":4711"}, "DISPLAY=:4711"),
                               ({"QT_QPA_PLATFORM": "nonsense"}, "nonsense"), ({"QT_QPA_PLATFORM": "xcb"}, "xcb"),
                               ({"QT_QPA_PLATFORM": "xcb;wayland", "DISPLAY": ":4711"}, "xcb;wayland"),
                               ({"QT_QPA_PLATFORM_PLUGIN_PATH": str(self.place / "none"), "DISPLAY": ":4711"}, ":4711")):
            done = run(self.place / "bin" / "corvane", env=self.environment | {"CORVANE_FOLDER": str(self.place / "home")} | settings)
            lines = done.stderr.splitlines()
            if done.returncode != 1 or len(lines) != 1 or not lines[0].startswith("corvane: ") or told not in lines[0] or "\x1b" in lines[0]:
                return f"{str(settings)[:60]}: code {done.returncode}: {said(done)}"
        shutil.rmtree(self.place / "home", ignore_errors=True)
        return ""

    def skins_are_in_order(self):
        for text in sorted((self.share / "corvane" / "PANELSET").glob("*.CSV")):
            done = self.program("corvane-skin", "check", text)
            if done.returncode != 0:
                return said(done)
        return ""

    def a_skin_can_be_begun_checked_and_shown(self):
        skin = self.place / "home" / "skin" / "MINE"
        for words in (("new", "MINE", skin.parent), ("check", skin), ("preview", skin, skin.parent, "--scale", "2")):
            done = self.program("corvane-skin", *words)
            if done.returncode != 0:
                return f"{words[0]}: {said(done)}"
        size = struct.unpack(">2I", (skin.parent / "rest.png").read_bytes()[16:24])
        if size != (800, 240):
            return f"a picture of {size}"
        if self.program("corvane-skin", "new", "MINE", skin.parent).returncode != 2:
            return "it was overwritten"
        text = skin.with_suffix(".CSV")
        text.write_text(text.read_text() + "x,12,0,0,0,0,9999,9,1\n")
        done = self.program("corvane-skin", "check", skin)
        if done.returncode != 1 or f"{text}:43: error: record 12 (Stop)" not in done.stdout:
            return f"a mistake: code {done.returncode}: {said(done)}"
        if self.program("corvane-skin", "preview", skin, skin.parent).returncode != 1:
            return "a skin that cannot be shown was shown"
        for words in (("draw",), ("check",), ("preview", skin, skin.parent, "--scale", "9"), ("new", "a/b", skin.parent)):
            if self.program("corvane-skin", *words).returncode != 2:
                return f"{words} was taken"
        return "" if self.program("corvane-skin", "check", skin.parent / "NONE").returncode == 1 else "a skin that is not there"

    def icons_have_their_sizes(self):
        for size in SIZES:
            png = (self.share / "icons" / "hicolor" / f"{size}x{size}" / "apps" / "corvane.png").read_bytes()
            if struct.unpack(">2I", png[16:24]) != (size, size):
                return f"{size}"
        return ""

    def the_bill_of_materials_names_all_that_is_linked(self):
        """Each of its components stands in our table, is installed with just that version, and of the libraries that the
        programs name and those that they load later none is left out."""
        bill = json.loads((self.share / "doc" / "corvane" / "corvane.cdx.json").read_text(encoding="utf-8"))
        parts = {part["name"]: part for part in bill["components"]}
        table = re.search(r"## In the program\n(.*?)\nThe Windows program", (PROJECT / "THIRD_PARTY.md").read_text(encoding="utf-8"), re.S)[1]
        listed = set(re.findall(r"`([^`]+)`", "".join(line.split("|")[2] for line in table.splitlines() if line.startswith("| "))))
        if (bill["bomFormat"], bill["specVersion"], bill["metadata"]["component"]["name"]) != ("CycloneDX", "1.5", "corvane"):
            return "not of its kind"
        if set(parts) != listed or sorted(bill["dependencies"][0]["dependsOn"]) != sorted(parts) or len(parts) != len(bill["components"]):
            return f"other parts than the table: {sorted(set(parts) ^ listed)}"
        if not shutil.which("dpkg-query"):
            return ""
        asked = {name: run("dpkg-query", "-W", "-f", "${Version} ${source:Package}\n", name).stdout.split() for name in parts}
        wrong = [name for name, part in parts.items() if not asked[name] or part.get("version") != asked[name][0] or not part["licenses"][0]["license"]["name"]]
        if wrong:
            return f"other versions than are installed: {wrong}"
        sources, left_out = {told[1] for told in asked.values()}, []
        for program in (self.place / "bin/corvane", self.place / "bin/corvane-skin", self.build / "packaging/libcorvane_loaded.so"):
            needed = set(re.findall(r"NEEDED.*\[(.*)\]", run("readelf", "-dW", program).stdout))
            found = dict(re.findall(r"(\S+) => (/\S+)", run("ldd", program).stdout))
            for name in needed & set(found):  # not the loader, which is the C library's
                path = os.path.realpath(found[name])
                owner = next((done.stdout.split(": ")[0] for place in (path, path.removeprefix("/usr")) if (done := run("dpkg", "-S", place)).returncode == 0), "")
                if not owner or run("dpkg-query", "-W", "-f", "${source:Package}", owner).stdout not in sources:
                    left_out.append(f"{name} ({owner or 'of nobody'})")
            if not needed & set(found):
                return f"{program} names no libraries"
        return ", ".join(sorted(set(left_out)))

    def desktop_file_is_valid(self):
        done = run("desktop-file-validate", self.share / "applications" / "corvane.desktop")
        return said(done) if done.returncode else ""

    def metadata_are_valid(self):
        file = self.share / "metainfo" / "org.corvane.corvane.metainfo.xml"
        # Newer judges miss a site, which the project does not have; older ones do not know that complaint.
        for words in (["--override=url-homepage-missing=info"], []):
            done = run("appstreamcli", "validate", "--no-net", *words, file)
            if done.returncode == 0:
                return ""
        return said(done)

    def every_file_type_is_opened(self):
        """Each extension has a type in the shared database, with our additions, that the desktop file names."""
        packages = self.share / "mime" / "packages"
        shutil.copy("/usr/share/mime/packages/freedesktop.org.xml", packages)
        done = run("update-mime-database", self.share / "mime")
        if done.returncode:
            return said(done)
        desktop = (self.share / "applications" / "corvane.desktop").read_text(encoding="utf-8")
        opened = set(re.search(r"^MimeType=(.*)$", desktop, re.M).group(1).strip(";").split(";"))
        globs = [line.split(":")[:3] for line in (self.share / "mime" / "globs2").read_text().splitlines() if line[:1] != "#"]
        types = {e: {kind for _, kind, pattern in globs if pattern.lower() == f"*.{e}"} for e in EXTENSIONS}
        return ", ".join(e for e in EXTENSIONS if not types[e] or not types[e] <= opened)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    failed = False
    with tempfile.TemporaryDirectory(prefix="corvane-installed-") as folder:
        place = pathlib.Path(folder) / "tree"
        done = run("cmake", "--install", build, "--prefix", place)
        if done.returncode:
            print(f"FAIL the build can be installed: {said(done)}")
            return 1
        installed = Installed(place, build)
        # Modes first: what follows writes into the tree.
        for test in ("modes_are_ordinary", "files_are_there", "pictures_of_the_manual_are_there", "programs_speak_without_a_display",
                     "a_start_without_a_display_is_one_line_and_code_1",
                     "skins_are_in_order", "a_skin_can_be_begun_checked_and_shown", "icons_have_their_sizes",
                     "the_bill_of_materials_names_all_that_is_linked", "desktop_file_is_valid", "metadata_are_valid", "every_file_type_is_opened"):
            name = test.replace("_", " ")
            try:
                why = getattr(installed, test)()
            except (OSError, AttributeError, KeyError, TypeError, ValueError, struct.error, subprocess.SubprocessError) as error:
                why = f"{type(error).__name__}: {error}"
            print(f"FAIL {name}: {why}" if why else f"PASS {name}")
            failed = failed or bool(why)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
