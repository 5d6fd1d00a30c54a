#!/usr/bin/env bash
# Installs a package into a clean root and starts it there from its menu entry.
#   try-package.sh PACKAGE.deb BUILD_FOLDER [PICTURE.png]
# The root has its own network, in which the demo receivers of BUILD_FOLDER play the public list, so
# that an error box at the start shows. Exit code 77: this can't be done here, and why.
. "$(dirname "$0")/common.sh"
. "$root/scripts/lib/desktop.sh"
package=$(realpath "${1:?a package}")
build_dir=${2:?a build folder}
picture=${3:-}
directory_host=$(dpkg-deb --fsys-tarfile "$package" | tar -xO ./usr/bin/larkspool |
    strings | grep -m 1 -x 'kiwisdr\.com')

work=$(mktemp -d "${TMPDIR:-/tmp}/larkspool-package.XXXXXX")
clean_root=$work/root
program=""
receivers=""

skip() {
    echo "SKIPPED: $*"
    exit 77
}

fail() {
    echo "FAILED: $*"
    cat "$work/program.log" "$work/desktop/wm.log" 2>/dev/null
    xwininfo -root -tree 2>/dev/null
    exit 1
}

# shellcheck disable=SC2317  # called by the trap
clean_up() {
    stop_all
    desktop_stop
    rm -rf "$work"
}

stop_all() {
    [ -n "$program" ] && kill "$program" 2>/dev/null && wait "$program" 2>/dev/null
    [ -n "$receivers" ] && kill "$receivers" 2>/dev/null && wait "$receivers" 2>/dev/null
    program=""
    receivers=""
    return 0
}

make_clean_root() {
    # shellcheck disable=SC1091  # the system's own
    debootstrap --variant=minbase "$(. /etc/os-release && echo "$VERSION_CODENAME")" \
        "$clean_root" >"$work/root.log" 2>&1 || {
        tail -n 3 "$work/root.log"
        skip "no clean root could be made"
    }
    cp "$package" "$clean_root/package.deb"
    DEBIAN_FRONTEND=noninteractive chroot "$clean_root" \
        apt-get install -y --no-install-recommends /package.deb >"$work/install.log" 2>&1 || {
        tail -n 20 "$work/install.log"
        fail "the package can't be installed"
    }
    printf '127.0.0.1 localhost %s\n' "$directory_host" >"$clean_root/etc/hosts"
    mkdir -p "$clean_root/tmp/.X11-unix" "$clean_root/root"
}

# start_installed with|without: the program from its menu entry, in a network with or without the
# public list
start_installed() {
    local entry=$clean_root/usr/share/applications/larkspool.desktop exec_line
    exec_line=$(sed -n 's/^Exec=//p' "$entry")
    exec_line=${exec_line% %F} # started without a file
    # shellcheck disable=SC2016  # for the inner shell
    unshare --net --mount bash -c '
        ip link set lo up
        mount --bind /tmp/.X11-unix "$1/tmp/.X11-unix" || exit 1
        if [ "$2" = with ]; then
            "$3/bin/larkspool-demo" --ports 0 --http-port 80 >"$5/receivers.log" 2>&1 &
            for i in $(seq 100); do grep -q "^http" "$5/receivers.log" && break; sleep 0.05; done
        fi
        chroot "$1" env -i HOME=/root PATH=/usr/bin:/bin DISPLAY="$DISPLAY" $4 &
        trap "kill %+ 2>/dev/null; wait %+; kill \$(jobs -p) 2>/dev/null; exit 0" TERM
        wait $!
    ' sh "$clean_root" "$1" "$build_dir" "$exec_line" "$work" >"$work/program.log" 2>&1 &
    program=$!
}

titles() { wmctrl -l 2>/dev/null | cut -d' ' -f5- | sort; }

# wait_for_windows COUNT: a first start from a cold disk may take its time
wait_for_windows() {
    local end=$((SECONDS + 60))
    while [ "$(titles | wc -l)" -lt "$1" ] && [ "$SECONDS" -lt "$end" ]; do
        sleep 0.1
    done
    sleep 3 # for a box that shouldn't be there
}

[ "$(id -u)" -eq 0 ] || skip "only root can make a clean root"
for tool in debootstrap unshare ip wmctrl strings; do
    command -v "$tool" >/dev/null || skip "no $tool"
done
unshare --net --mount true 2>/dev/null || skip "no right to make a network of its own"
missing=$(desktop_available) || skip "$missing"
[ -n "$directory_host" ] || fail "the program in the package doesn't know the public list"
trap clean_up EXIT
make_clean_root
desktop_start "$work/desktop" || fail "no desktop"

start_installed without
wait_for_windows 2
without=$(titles | wc -l)
stop_all
start_installed with
wait_for_windows 1
with=$(titles)
[ -z "$picture" ] || desktop_screenshot "$picture"
class=$(xprop -id "$(wmctrl -l | awk 'NR == 1 { print $1 }')" WM_CLASS)
kill -0 "$program" 2>/dev/null || fail "the installed program has ended"
[ "$without" -eq 2 ] || fail "without a list there should be the console and a box, not $without windows"
[ "$with" = Larkspool ] || fail "with a list there should be the console alone, not: $with"
grep -qi "StartupWMClass=$(sed 's/.*"\(.*\)"/\1/' <<<"$class")" \
    "$clean_root/usr/share/applications/larkspool.desktop" || fail "the menu entry's class isn't $class"
echo "Installed into a clean root and started from its menu entry; no box where the list can be had."
