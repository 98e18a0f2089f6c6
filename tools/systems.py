#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Minimal systems of other releases, made once and kept: which there are, what making one needs, and a command inside.

They lie in CORVANE_SYSTEMS, else in KEPT. A command sees a layer over its system, in mounts and processes of its own: with
them goes all that it mounted, started and changed.
"""

import contextlib
import fcntl
import os
import pathlib
import shutil
import subprocess
import tempfile

PROJECT = pathlib.Path(__file__).resolve().parents[1]
KEPT = "/var/cache/corvane-systems"
SYSTEMS = {"bookworm": "Debian 12", "trixie": "Debian 13", "sid": "what comes next"}
CLONE, USER = "/srv/corvane", "listener"
# Of apt's settings here, those without which it would not reach the same archive there.
APT_SETTINGS = ("Acquire::http", "Acquire::https", "Acquire::Check-Valid-Until", "Acquire::Check-Date")
PASSED_ON = ("http_proxy", "https_proxy", "no_proxy", "TERM")

# As the first process of its own: $1 the layer, $2 the system below, $3 the project, $4 the caches, $5 the user, "" for root;
# then a file with the words to run, one that names what is taken out afterwards, and where that goes.
INSIDE = r"""
set -u
layer=$1 below=$2 project=$3 caches=$4 user=$5 words=$6 taken=$7 target=$8
root=$layer/root
fail() { echo "on_system: $*" >&2; exit 125; }
mount -t overlay overlay -o "lowerdir=$below,upperdir=$layer/changes,workdir=$layer/work" "$root" || fail "no layer over the system"
mount -t proc proc "$root/proc" && mount -t sysfs -o ro sysfs "$root/sys" && mount --bind /dev "$root/dev" &&
  mount -t devpts -o newinstance,ptmxmode=0666,mode=0620 devpts "$root/dev/pts" && mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm" ||
  fail "the system's own mounts failed"
for cache in ccache:/var/cache/ccache archives:/var/cache/apt/archives; do
  mkdir -p "$root/${cache#*:}" && mount --bind "$caches/${cache%%:*}" "$root/${cache#*:}" || fail "no cache ${cache%%:*}"
done
cp /etc/resolv.conf /etc/hosts "$root/etc/"
rm -rf "$root@CLONE@" && git clone -q --no-hardlinks "$project" "$root@CLONE@" || fail "the project could not be cloned"
if [ -n "$user" ]; then
  chroot "$root" sh -c 'id "$1" >/dev/null 2>&1 || useradd --create-home --shell /bin/bash "$1"
    command -v sudo >/dev/null || { apt-get update && apt-get install -y --no-install-recommends sudo; } >/dev/null 2>&1
    echo "$1 ALL=(ALL) NOPASSWD: ALL" >/etc/sudoers.d/all && chown -R "$1:" "$2" && chmod 1777 /var/cache/ccache' - "$user" @CLONE@ ||
    fail "no ordinary user with sudo"
fi
mapfile -d "" -t words <"$words"
mapfile -d "" -t taken <"$taken"
chroot ${user:+"--userspec=$user:$user"} "$root" env -i "HOME=$(chroot "$root" sh -c "echo ~${user:-root}")" "USER=${user:-root}" "${words[@]}"
code=$?
for path in "${taken[@]}"; do
  [ -e "$root@CLONE@/$path" ] || { echo "   not there: $path"; continue; }
  mkdir -p "$target/$(dirname "$path")" && rm -rf "${target:?}/$path" && cp -a "$root@CLONE@/$path" "$target/$path" && echo "   taken: $target/$path"
done
exit "$code"
""".replace("@CLONE@", CLONE)


class NoSystem(Exception):
    """What keeps a system from being made, in words for who called."""


def mirror():
    """The archive of Debian's own packages that apt here is told of; "" where it is told of none."""
    if not shutil.which("apt-get"):
        return ""
    told = subprocess.run(["apt-get", "indextargets", "--format", "$(ORIGIN) $(REPO_URI)", "Created-By: Packages"],
                          capture_output=True, text=True, check=False).stdout
    archives = [uri for origin, _, uri in (line.partition(" ") for line in told.splitlines()) if origin == "Debian"]
    return archives[0] if archives else ""


def what_is_wrong(name, user_id, tools, archive):
    """Why no system of this name can be made, in one line; "" where it can. tools: whether a program is there, by its name."""
    if name not in SYSTEMS:
        return f"there is no system {name!r}; there are {', '.join(SYSTEMS)}"
    if user_id != 0:
        return "needs root, to mount and to install (sudo tools/on_system ...)"
    for tool, package in (("debootstrap", "debootstrap"), ("unshare", "util-linux"), ("git", "git")):
        if not tools(tool):
            return f"{tool} is not installed (apt-get install {package})"
    if not archive:
        return "apt here is told of no archive of Debian (apt-get update?)"
    return ""


def folder():
    return pathlib.Path(os.environ.get("CORVANE_SYSTEMS") or KEPT)


@contextlib.contextmanager
def alone(path):
    """Holds the lock that lies there."""
    path.parent.mkdir(parents=True, exist_ok=True)
    with open(path, "w") as held:
        fcntl.flock(held, fcntl.LOCK_EX)
        yield


def apt_settings():
    """Apt's own settings here that a system must share, as lines of its configuration."""
    told = subprocess.run(["apt-config", "dump", *APT_SETTINGS], capture_output=True, text=True, check=False).stdout
    return "".join(line + "\n" for line in told.splitlines() if not line.endswith('"";'))


def set_up(made):
    """Makes apt inside reach the archive, dpkg quick, and nothing start servers."""
    (made / "etc/apt/apt.conf.d/90archive").write_text(apt_settings())
    (made / "etc/dpkg/dpkg.cfg.d").mkdir(parents=True, exist_ok=True)
    (made / "etc/dpkg/dpkg.cfg.d/thrown-away").write_text("force-unsafe-io\n")
    policy = made / "usr/sbin/policy-rc.d"
    policy.write_text("#!/bin/sh\nexit 101\n")
    policy.chmod(0o755)


def base(name, anew=False):
    """The folder of that system, minimal; made where it is not there, which takes minutes, or anew."""
    wrong = what_is_wrong(name, os.geteuid(), shutil.which, mirror())
    if wrong:
        raise NoSystem(wrong)
    place = folder() / name
    with alone(folder() / f"{name}.lock"):
        if anew:
            subprocess.run(["rm", "-rf", "--one-file-system", place], check=True)
        if (place / "base").exists():
            return place / "base"
        made, log = place / "base.part", folder() / f"{name}.log"
        subprocess.run(["rm", "-rf", "--one-file-system", made], check=True)
        place.mkdir(parents=True, exist_ok=True)
        with open(log, "w") as said:
            done = subprocess.run(["debootstrap", "--variant=minbase", name, made, mirror()], stdout=said, stderr=said, check=False)
        if done.returncode != 0:
            raise NoSystem(f"debootstrap made no {name}: {log.read_text(errors='replace').strip()[-300:]}")
        set_up(made)
        made.rename(place / "base")
    return place / "base"


def clear_up(place):
    """Removes the layers of calls that were killed."""
    for layer in place.glob("layer-*"):
        if not pathlib.Path("/proc", layer.name.split("-")[1]).exists():
            subprocess.run(["rm", "-rf", "--one-file-system", layer], check=False)


def layer_of(place, kept, closing):
    """A layer over a system: one of this call alone, or the one that stays."""
    if kept:
        closing.enter_context(alone(place / "kept.lock"))
        layer = place / "kept"
    else:
        layer = pathlib.Path(tempfile.mkdtemp(prefix=f"layer-{os.getpid()}-", dir=place))
        closing.callback(subprocess.run, ["rm", "-rf", "--one-file-system", layer], check=False)
    subprocess.run(["rm", "-rf", "--one-file-system", layer / "work"], check=True)
    for part in ("root", "changes", "work"):
        (layer / part).mkdir(parents=True, exist_ok=True)
    return layer


def run_inside(name, command, ordinary_user=False, kept=False, taken=(), target=None, seconds=None, output=None):
    """Runs a command in a clean clone of the project inside that system; its exit code, 124 when it did not end in time.

    kept: the system stays as the command leaves it, and the next such call goes on with it. taken: paths in the clone that
    are copied to the folder target afterwards. output: where stdout and stderr go."""
    below = base(name)
    place = below.parent
    clear_up(place)
    caches = place / "caches"
    for cache in ("ccache", "archives/partial"):
        (caches / cache).mkdir(parents=True, exist_ok=True)
    settings = {"PATH": "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin", "LANG": "C.UTF-8", "CCACHE_DIR": "/var/cache/ccache"}
    settings |= {word: os.environ[word] for word in PASSED_ON if word in os.environ}
    words = [f"{key}={value}" for key, value in settings.items()]
    words += ["sh", "-c", f'cd {CLONE} && exec "$@"', "sh", *command]
    with contextlib.ExitStack() as closing:
        layer = layer_of(place, kept, closing)
        (layer / "words").write_bytes(b"".join(word.encode() + b"\0" for word in words))
        (layer / "taken").write_bytes(b"".join(str(path).encode() + b"\0" for path in taken))
        process = subprocess.Popen(
            ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--propagation", "private", "bash", "-c", INSIDE, "on_system", layer,
             below, PROJECT, caches, USER if ordinary_user else "", layer / "words", layer / "taken", target or ""],
            stdout=output, stderr=output and subprocess.STDOUT)
        try:
            code = process.wait(seconds)
            return code if code >= 0 else 128 - code
        except subprocess.TimeoutExpired:
            return 124
        finally:
            process.kill()
            process.wait()
