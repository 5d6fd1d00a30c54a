# What the desktop tests share. Each runs as  NAME.sh BUILD_FOLDER  and has a desktop, a sound server
# and the demo receivers to itself, all on ports and in folders of its own.
set -u
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/../../scripts/lib/common.sh"
. "$root/scripts/lib/desktop.sh"
. "$root/scripts/lib/sound-server.sh"

build_dir=${1:?the build folder}
work=$(mktemp -d "${TMPDIR:-/tmp}/larkspool-desktop-test.XXXXXX")
receivers=""
console=""
peer="" # a process that a test starts beside them
mounted="" # a disk that it has made for itself
receiver_port=""
http_port=""

# shellcheck disable=SC2317  # called by the trap
clean_up() {
    local code=$?
    [ "$code" -ne 0 ] && [ "$code" -ne 77 ] && show_what_happened
    stop_console >/dev/null 2>&1
    [ -n "$peer" ] && kill "$peer" 2>/dev/null && wait "$peer" 2>/dev/null
    [ -n "$receivers" ] && kill "$receivers" 2>/dev/null && wait "$receivers" 2>/dev/null
    desktop_stop
    sound_server_stop
    [ -n "$mounted" ] && umount "$mounted"
    rm -rf "$work"
    exit "$code"
}

show_what_happened() {
    local log
    for log in "$work"/*.log; do
        [ -s "$log" ] && { echo "--- $(basename "$log")"; tail -n 30 "$log"; }
    done
    desktop_screenshot "$build_dir/failed-$(basename "$0" .sh).png" 2>/dev/null &&
        echo "what was on the screen: $build_dir/failed-$(basename "$0" .sh).png"
}

skip() {
    echo "SKIPPED: $*"
    exit 77
}

fail() {
    echo "FAILED: $*"
    exit 1
}

# Where this build looks for the list of receivers was decided when it was configured. If something
# else sits there, the list can't be had, and the console says so in a box.
directory_port=$(sed -n 's/^LARKSPOOL_DIRECTORY_HOST:[A-Z]*=127\.0\.0\.1://p' \
    "$build_dir/CMakeCache.txt")
port_is_free() { ! (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null; }

start_receivers() {
    local http=0
    [ -n "$directory_port" ] && port_is_free "$directory_port" && http=$directory_port
    "$build_dir/bin/larkspool-demo" --ports 0 --http-port "$http" "$@" >"$work/receivers.log" 2>&1 &
    receivers=$!
    local tries
    for tries in $(seq 200); do
        grep -q '^http' "$work/receivers.log" && break
        sleep 0.05
    done
    receiver_port=$(sed -n 's/^receiver 1 on [^:]*:\([0-9]*\).*/\1/p' "$work/receivers.log")
    http_port=$(sed -n 's/^http on [^:]*:\([0-9]*\).*/\1/p' "$work/receivers.log")
    [ -n "$receiver_port" ] && [ -n "$http_port" ] || fail "the demo receivers did not start"
}

# start_console [ARGUMENT...]: settings, recordings and the log go to folders of the test's own.
start_console() {
    mkdir -p "$work/home/Documents"
    HOME=$work/home XDG_CONFIG_HOME=$work/home/config XDG_DATA_HOME=$work/home/data \
        XDG_STATE_HOME=$work/home/state "$build_dir/bin/larkspool" "$@" >"$work/console.log" 2>&1 &
    console=$!
    ui wait "Receiver address" 30 || fail "the console did not come up"
    [ "$http_port" = "$directory_port" ] || ui press OK
}

# Ends the console as a logout or a service manager would; its exit code is the result.
stop_console() {
    [ -n "$console" ] || return 0
    kill "$console" 2>/dev/null
    wait "$console"
    local code=$?
    console=""
    return "$code"
}

connect_console() {
    ui type "Receiver address" 127.0.0.1
    ui type "Receiver port" "$receiver_port"
    ui press Connect
    ui read '^[1-9][0-9.]* samples/sec' 20 || fail "no samples came"
}

# eventually SECONDS COMMAND...
eventually() {
    local tries
    for tries in $(seq $(($1 * 5))); do
        "${@:2}" && return 0
        sleep 0.2
    done
    return 1
}

recordings() { find "$work/home/Documents" -name 'KiwiRecording-*.WAV' 2>/dev/null | sort; }

# Its header tells what is in it, and something is.
is_finished() {
    local size
    size=$(stat -c %s "$1")
    [ "$size" -gt 44 ] && [ "$(od -An -tu4 -j40 -N4 "$1" | tr -d ' ')" -eq $((size - 44)) ]
}

# check_tone FILE LEAST MOST: it lasts so many seconds, and the tone of 1,000 Hz that the time
# station at 10,000 kHz carries is in it.
check_tone() {
    local seconds heard
    seconds=$(soxi -D "$1" 2>/dev/null) || fail "$1 can't be read"
    heard=$("$build_dir/bin/larkspool-heard" "$1") || fail "nothing was heard in $1"
    echo "$(basename "$1"): $seconds s, heard: $heard"
    awk -v s="$seconds" -v least="$2" -v most="$3" -v hertz="${heard%% *}" -v off="$tone_tolerance" \
        'BEGIN { exit !(s >= least && s <= most && hertz > 1000 - off && hertz < 1000 + off) }' ||
        fail "it should last from $2 to $3 s, with the station's tone"
}
tone_tolerance=2 # Hz

missing=$(desktop_available) || skip "$missing"
missing=$(sound_server_available) || skip "$missing"
for tool in soxi xdotool wmctrl; do
    command -v "$tool" >/dev/null || skip "missing: $tool"
done
# Leaks of libraries that we only use.
export LSAN_OPTIONS=suppressions=$here/leaks.supp:print_suppressions=0
trap clean_up EXIT
sound_server_start "$work/sound" speakers=Speakers headphones=Headphones || fail "no sound server"
desktop_start "$work/desktop" || fail "no desktop"
