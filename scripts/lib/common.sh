# What the scripts share. To be sourced from a script in scripts/.
set -u

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# Clones in different folders share what is compiled.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
# Without this, files that use a precompiled header are not cached.
export CCACHE_SLOPPINESS=pch_defines,time_macros

# Debian packages, by what they are for.
packages_build="g++ cmake ninja-build ccache qt6-base-dev zlib1g-dev libcubeb-dev libsoxr-dev"
packages_run="fonts-dejavu-core"
packages_headless="xvfb openbox xdotool x11-utils imagemagick dbus-daemon at-spi2-core
    gir1.2-atspi-2.0 python3 python3-gi pulseaudio pulseaudio-utils sox"
packages_test="libgtest-dev libbenchmark-dev clang clang-format clang-tidy cppcheck wmctrl xclip
    libwslay-dev libsamplerate0-dev sndfile-programs iproute2 dpkg-dev desktop-file-utils appstream
    librsvg2-bin debootstrap libhamlib-utils"
packages_bench="chromium" # a peer of the whole program

say() { printf '\n== %s\n' "$*"; }
complain() { printf '%s\n' "$*" >&2; }
die() {
    complain "$@"
    exit 1
}

installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# install_packages NAME...: installs what is missing. If that fails, it says so and goes
# on: what needs the missing package is left out later, by name.
install_packages() {
    command -v dpkg-query >/dev/null || {
        complain "This isn't a Debian system: install what these packages hold by hand: $*"
        return 0
    }
    local name missing=() privilege=()
    for name in "$@"; do
        installed "$name" || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    say "Installing ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            complain "Not installed, for want of root's rights: ${missing[*]}. Going on without."
            return 0
        }
        privilege=(sudo)
    fi
    local log
    log=$(mktemp)
    if ! { "${privilege[@]}" apt-get update &&
        DEBIAN_FRONTEND=noninteractive "${privilege[@]}" apt-get install -y \
            --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 5 "$log" >&2
        complain "Could not install ${missing[*]}. Going on with what is there."
    fi
    rm -f "$log"
}

# build PRESET [TARGET...]: with what build_options adds to the configure step.
build_options=()
build() {
    local preset=$1 target arguments=()
    shift
    for target in "$@"; do
        arguments+=(--target "$target")
    done
    say "Building ($preset)"
    (cd "$root" && cmake --preset "$preset" -G Ninja "${build_options[@]}" \
        >"$root/build/$preset.log" 2>&1) || {
        cat "$root/build/$preset.log" >&2
        die "Configuring the build has failed."
    }
    grep '^-- Left out' "$root/build/$preset.log"
    (cd "$root" && cmake --build "build/$preset" "${arguments[@]}") || die "The build has failed."
}

mkdir -p "$root/build"
