#!/usr/bin/env bash
# Plays through the sound library into a private sound server and judges what
# arrives there.
#   sound-server-test.sh PROBE short    some ten seconds, the part of every test run
#   sound-server-test.sh PROBE long     a minute with a busy computer, for the soak
set -u
probe=$1
length=${2:-short}
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=../../scripts/lib/sound-server.sh
. "$here/../../scripts/lib/sound-server.sh"

if ! reason=$(sound_server_available); then
    echo "SKIPPED: $reason"
    exit 77
fi

work=$(mktemp -d)
clean_up() {
    sound_server_stop
    # shellcheck disable=SC2046 # one word a process
    kill $(jobs -pr) 2>/dev/null
    wait
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 1' INT TERM

# The client library forgets an operation or two when a stream dies under it.
export LSAN_OPTIONS=suppressions=$here/leaks.supp:print_suppressions=0

failures=0
expect() {
    local what=$1
    shift
    if "$@"; then
        echo "good: $what"
    else
        echo "BAD: $what"
        failures=$((failures + 1))
    fi
}

plays_whole() { # seconds ppm jitter
    sound_server_record main "$work/tone.raw"
    "$probe" play "$1" "$2" "$3" || return 1
    sound_server_record_stop
    "$probe" judge "$work/tone.raw" "$1"
}

lists_by_description() {
    "$probe" list >"$work/list"
    cat "$work/list"
    grep -qx '0 2 Main Speakers' "$work/list" && grep -qx '0 2 USB Headset' "$work/list" &&
        [ "$(grep -c '^2 0 Monitor of ' "$work/list")" = 2 ]
}

remove_sink() { sound_server_remove "$(pactl list short modules | awk "/sink_name=$1/ {print \$1}")"; }

returns_after_reload() {
    "$probe" play 5 0 0.05 >/dev/null &
    local player=$!
    sleep 1.5
    remove_sink main || return 1
    sleep 0.7
    sound_server_add_sink "main=Main Speakers" >/dev/null || return 1
    sound_server_record main "$work/back.raw"
    sleep 2
    sound_server_record_stop
    "$probe" judge "$work/back.raw" && wait "$player"
}

calls_return() { timeout 20 "$probe" play 0.5 0 0; }
without_server() { PULSE_SERVER=unix:$work/nobody calls_return; }
with_hanging_server() {
    kill -STOP "${sound_server_pid:?}"
    calls_return
    local result=$?
    kill -CONT "$sound_server_pid"
    return $result
}

sound_server_start "$work/server" "main=Main Speakers" "usb=USB Headset" || exit 1
if [ "$length" = long ]; then
    for _ in $(seq "$(nproc)"); do
        (while :; do :; done) &
    done
    expect "a minute at +200 ppm with 300 ms of jitter, computer busy" plays_whole 60 200 0.3
else
    expect "devices are listed by their descriptions" lists_by_description
    expect "a tone with jitter arrives whole" plays_whole 4 200 0.1
    expect "without a server every call returns at once" without_server
    remove_sink usb
    expect "the last device comes back and sounds within 2 s" returns_after_reload
    expect "with a server that hangs every call returns in time" with_hanging_server
fi
[ "$failures" = 0 ]
