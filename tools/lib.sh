# SPDX-License-Identifier: GPL-3.0-or-later
# What ./play and ./check share: plain messages, packages, the build. Sourced by bash; the caller has set ROOT.
# shellcheck shell=bash

export CCACHE_BASEDIR="$ROOT"

# What the program is built from and runs with.
BUILD_PACKAGES="ccache cmake ninja-build g++ pkg-config qt6-base-dev libmpv-dev libfluidsynth-dev timgm6mb-soundfont
  libcdio-dev libcdio-paranoia-dev libcdio-cdda-dev libpulse-dev libseccomp-dev linux-libc-dev libxcb1-dev libx11-dev libegl-dev libavformat-dev libavcodec-dev
  libavutil-dev libswresample-dev libjpeg62-turbo-dev libpng-dev qt6-wayland fonts-vlgothic fonts-noto-color-emoji fonts-dejavu-core"
# What decodes pictures of further kinds: the first of the names with | between them that the system has; one with | at its end
# where it has it at all. Debian 12 has no decoders of AVIF, HEIC and JXL for the tool kit.
BUILD_PACKAGES="$BUILD_PACKAGES qt6-image-formats-plugins qt6-svg-plugins|libqt6svg6 kimageformat6-plugins|"
# A private desktop for machines without a screen.
DISPLAY_PACKAGES="python3 xvfb openbox xdotool x11-utils imagemagick pulseaudio pulseaudio-utils dbus playerctl"
# The usual encoders of sounds and pictures.
ENCODER_PACKAGES="flac vorbis-tools opus-tools lame wavpack musepack-tools libavif-bin libheif-examples libjxl-tools"
# What the tests look, listen and drop with.
TEST_PACKAGES="libgtest-dev wmctrl dbus-x11 at-spi2-core gir1.2-atspi-2.0 python3-gi pcmanfm ffmpeg python3-numpy
  python3-pil python3-cairo fluidsynth libfaketime strace valgrind xsettingsd libc6-dbg desktop-file-utils appstream shared-mime-info zsh fish
  clang libclang-rt-dev clang-format clang-tidy $ENCODER_PACKAGES"
# What builds the portable core for Windows and runs its tests, and what the whole Windows desktop needs besides:
# the decoders behind Wine's movies and the installer's maker.
WINDOWS_CORE_PACKAGES="g++-mingw-w64-x86-64-posix wine64 wine"
WINDOWS_PACKAGES="$WINDOWS_CORE_PACKAGES nsis gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-ugly
  gstreamer1.0-plugins-bad gstreamer1.0-libav"
# What tests/mutation/run needs besides.
MUTATION_PACKAGES="python3-clang"
# The window managers, compositors and sound servers that ./check --sessions plays in; those with | at their end are not on every system.
SESSION_PACKAGES="util-linux x11-xserver-utils xfwm4 metacity mutter kwin-x11 i3-wm kwin-wayland sway labwc| weston xwayland
  pipewire wireplumber pipewire-pulse"
# What the Debian package is made and judged with.
PACKAGE_PACKAGES="dpkg-dev file lintian desktop-file-utils appstream"
# What runs its own tests (debian/tests).
AUTOPKGTEST_PACKAGES="autopkgtest"

step() { printf '== %s\n' "$*"; }
note() { printf '   %s\n' "$*"; }
die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    die "installing packages needs root: run it as root, or install sudo"
  fi
}

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Whether apt could install it, as far as it has read what there is.
is_offered() { apt-cache policy "$1" 2>/dev/null | grep -q '^  Candidate: [^(]'; }

has_read_offers() { compgen -G '/var/lib/apt/lists/*_Packages*' >/dev/null; }

# missing_packages NAME...: of names, NAME|OTHER and NAME|, those of which nothing is installed.
missing_packages() {
  local wanted name
  for wanted in "$@"; do
    for name in ${wanted//|/ }; do
      is_installed "$name" && continue 2
    done
    # One with | at its end is missing as long as nobody knows that there is none.
    [ "${wanted%|}" = "$wanted" ] || is_offered "${wanted%|}" || ! has_read_offers || continue
    printf '%s ' "$wanted"
  done
}

# chosen_packages NAME...: the packages to install of names, NAME|OTHER and NAME|, by what apt has read.
chosen_packages() {
  local wanted name
  for wanted in "$@"; do
    for name in ${wanted//|/ }; do
      is_offered "$name" || continue
      printf '%s ' "$name"
      continue 2
    done
    # Told as it is to apt, which says that there is none.
    [ "${wanted%|}" != "$wanted" ] || printf '%s ' "${wanted%%|*}"
  done
}

# install_packages NAME...: installs those that are not there; asks the network nothing when all are.
install_packages() {
  command -v dpkg-query >/dev/null || die "this needs Debian 12 or later, or a system with its packages (no dpkg found)"
  local missing log="$ROOT/build/packages.log"
  missing=$(missing_packages "$@")
  if [ -z "$missing" ]; then
    step "Packages: all installed"
    return
  fi
  step "Packages: installing $missing"
  mkdir -p "$ROOT/build"
  # shellcheck disable=SC2046,SC2086 # lists of names
  {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q &&
      as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $(chosen_packages $missing)
  } >"$log" 2>&1 || {
    grep -E '^(E|W|Err)[:0-9]' "$log" | head -15 >&2
    die "the packages could not be installed (network? rights?); the whole log is $log"
  }
}

# Fewer compilers at once where memory is short: each takes up to a gigabyte.
build_jobs() {
  local cores memory
  cores=$(nproc)
  memory=$(awk '/^MemAvailable/ {print int($2 / 1048576)}' /proc/meminfo)
  [ "$memory" -lt "$cores" ] && cores=$memory
  [ "$cores" -ge 1 ] && echo "$cores" || echo 1
}

show_errors() {
  { grep -E -A 6 '(error:|Error |undefined reference|FAILED:)' "$1" || tail -30 "$1"; } | cut -c 1-300 | head -40 >&2
}

# build PRESET TARGET [CMAKE_OPTION...]: configures where needed and builds; TARGET may be "all".
# A failing build shows its first errors and returns 1; what could be built has been built.
build() {
  local preset=$1 target=$2 folder log
  shift 2
  folder="$ROOT/build/$preset"
  log="$ROOT/build/$preset.log"
  mkdir -p "$ROOT/build"
  step "Build: $preset"
  if ! (cd "$ROOT" && cmake --preset "$preset" "$@") >"$log" 2>&1; then
    { grep -A 8 'CMake Error' "$log" || tail -20 "$log"; } | head -40 >&2
    note "configuring failed; the whole log is $log"
    return 1
  fi
  if ! cmake --build "$folder" --target "$target" -j "$(build_jobs)" -- -k 0 >"$log" 2>&1; then
    show_errors "$log"
    note "the build failed; the whole log is $log"
    return 1
  fi
}
