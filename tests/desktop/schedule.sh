#!/usr/bin/env bash
# An entry made from the console's own settings leaves one recording of its fifteen seconds.
. "$(dirname "$0")/lib.sh"

command -v xdotool >/dev/null || skip "missing: xdotool"

# Opens the list's context menu at the pointer and goes down to the item of that number.
choose_in_list() {
    local downs
    mapfile -t downs < <(yes Down | head -n "$1")
    xdotool mousemove --window "$schedule" 300 200 click 3
    sleep 0.5
    xdotool key --delay 50 "${downs[@]}" Return
}
enable_schedules=1
add_entry=3

start_receivers
start_console
ui type "Receiver address" 127.0.0.1
ui type "Receiver port" "$receiver_port"
ui press "New Schedule Window"
schedule=$(timeout 10 xdotool search --sync --onlyvisible --name '^Schedules  Disabled' | head -n 1)
[ -n "$schedule" ] || fail "no schedule window came up"

choose_in_list "$add_entry"
choose_in_list "$enable_schedules"
ui cell "127.0.0.1:$receiver_port" 5 || fail "the entry does not show"
timeout 10 xdotool search --sync --onlyvisible --name 'Enabled .* state: 1$' >/dev/null ||
    fail "the entry did not start: $(xdotool getwindowname "$schedule")"
timeout 30 xdotool search --sync --onlyvisible --name 'Enabled .* state: 0$' >/dev/null ||
    fail "the entry did not end: $(xdotool getwindowname "$schedule")"

set -- "$work"/home/Documents/*.WAV
[ $# -eq 1 ] && [ -f "$1" ] || fail "not one recording: $*"
echo "$(basename "$1")"
seconds=$(soxi -D "$1") || fail "the recording can't be read"
echo "recorded: $seconds s"
# It takes the connection a second or two to begin, and the end is noticed a second late.
awk -v seconds="$seconds" 'BEGIN { exit !(seconds > 12.5 && seconds < 16.5) }' ||
    fail "that is not the entry's length"
heard=$("$build_dir/bin/larkspool-heard" "$1") || fail "the recording is silent"
echo "heard: $heard"
echo "$heard" | awk '{ exit !($1 > 998 && $1 < 1002) }' || fail "that is not the station's tone"

stop_console || fail "the console ended with code $?"
