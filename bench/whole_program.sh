#!/usr/bin/env bash
# Processor time of the console in a full session (sound, waterfall at 25 rows a second) beside a
# window that only repaints the waterfall's area at the same rate.
#   whole_program.sh BUILD_FOLDER [SECONDS]
seconds=${2:-20}
. "$(dirname "$0")/../tests/desktop/lib.sh"

# Processor time of a process so far, in ticks.
ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }

# percent PID: of one core, over the next seconds
percent() {
    local before
    before=$(ticks "$1")
    sleep "$seconds"
    awk -v a="$before" -v b="$(ticks "$1")" -v s="$seconds" -v hz="$(getconf CLK_TCK)" \
        'BEGIN { printf "%.2f\n", 100 * (b - a) / hz / s }'
}

start_receivers
start_console
ui press Update
connect_console
sleep 3
session=$(percent "$console")
memory=$(awk '/VmRSS/ { print $2 / 1024 }' "/proc/$console/status")
stop_console
"$build_dir/bench/repaint_floor" >"$work/floor.log" 2>&1 &
console=$!
sleep 2
floor=$(percent "$console")
floor_memory=$(awk '/VmRSS/ { print $2 / 1024 }' "/proc/$console/status")
stop_console
[ -n "$memory" ] && [ -n "$floor_memory" ] || fail "one of the two did not run"
printf 'console in a session   %6s %% of a core  %6.1f MB\n' "$session" "$memory"
printf 'repainting alone       %6s %% of a core  %6.1f MB\n' "$floor" "$floor_memory"
awk -v a="$session" -v b="$floor" 'BEGIN { if (b > 0) printf "ratio                  %6.2f\n", a / b }'
