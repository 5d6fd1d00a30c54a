#!/usr/bin/env bash
# The console in a full session (sound, waterfall at 25 rows a second, recording and stream on)
# beside a program that only reads the two links and a window that only repaints the waterfall's
# area: processor time, memory, start.
#   whole_program.sh BUILD_FOLDER [ROUNDS [STARTS]]
# All three run at once through every round, so that whatever else the computer does hits all alike.
here=$(cd "$(dirname "$0")" && pwd)
. "$here/../scripts/lib/network.sh"
network_enter "$0" "$@"
[ -z "$network_obstacle" ] || echo "$network_obstacle: taking this computer's"
. "$here/../scripts/lib/remote.sh"
rounds=${2:-15}
starts=${3:-21}
round=4 # seconds
screen=$(mktemp -d "${TMPDIR:-/tmp}/larkspool-screen.XXXXXX")
desktop_x_options="-fbdir $screen"
. "$here/../tests/desktop/lib.sh"
programs=()
# shellcheck disable=SC2317  # called by the trap
finish() {
    local code=$?
    kill "${programs[@]}" 2>/dev/null
    rm -rf "$screen"
    (exit "$code")
    clean_up
}
trap finish EXIT

# Nanoseconds of processor time so far, all threads.
spent() { cat /proc/"$1"/task/*/schedstat 2>/dev/null | awk '{ sum += $1 } END { printf "%d\n", sum }'; }
kilobytes() { awk -v name="^$2(:|_[CD])" '$1 ~ name { sum += $2 } END { print sum }' "/proc/$1/smaps_rollup"; }
median() { sort -n | awk '{ v[NR] = $1 } END { print NR % 2 ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
quotient() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.2f\n", a / b; else print "-" }'; }

# As for a user to whom nobody reads the screen aloud.
plain=(env -u QT_LINUX_ACCESSIBILITY_ALWAYS_ON HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data")

open_session() {
    "${plain[@]}" "$build_dir/bin/larkspool" >"$work/console.log" 2>&1 &
    console=$!
    remote_wait "$console" || fail "the console did not come up"
    remote_say connect
    sleep 4
    remote_say staud:1
    remote_say togglerecord
    sleep 1
}

# start_times RUNS PROGRAM: milliseconds and processor milliseconds, a line a run
start_times() { "${plain[@]}" "$build_dir/bench/first_paint" "$screen/Xvfb_screen0" "$@"; }

measure_starts() {
    local run
    start_times 1 "$build_dir/bin/larkspool" >/dev/null && start_times 1 "$build_dir/bench/repaint_floor" >/dev/null
    for run in $(seq "$starts"); do
        start_times 1 "$build_dir/bin/larkspool" >>"$work/start-0" || fail "no window of the console"
        start_times 1 "$build_dir/bench/repaint_floor" >>"$work/start-1" || fail "no window of the floor"
    done
}

measure_rounds() {
    local i number before
    for number in $(seq "$rounds"); do
        before=()
        for i in 0 1 2; do before[i]=$(spent "${pids[i]}"); done
        sleep "$round"
        for i in 0 1 2; do
            echo "$((($(spent "${pids[i]}") - before[i]) / round / 1000))" >>"$work/spent-$i"
        done
    done
}

mkdir -p "$work/home/Documents"
start_receivers
remote_prepare "$build_dir/bin" "$work/home/config" 127.0.0.1 "$receiver_port" || fail "no settings"
measure_starts
python3 "$root/tests/desktop/peer.py" >"$work/peer.log" 2>&1 &
peer=$!
open_session
"${plain[@]}" "$build_dir/bench/repaint_floor" >"$work/floor.log" 2>&1 &
programs+=($!)
"$build_dir/bench/socket_floor" 127.0.0.1 "$receiver_port" >"$work/sockets.log" 2>&1 &
programs+=($!)
pids=("$console" "${programs[@]}")
sleep 2
heard=$(grep -c '^sound' "$work/peer.log")
measure_rounds
heard=$(($(grep -c '^sound' "$work/peer.log") - heard))
[ "$heard" -gt $((rounds * round * 20)) ] || fail "the stream stopped"
[ -n "$(find "$work/home/Documents" -name 'KiwiRecording-*' -size +$((rounds * round * 20))k)" ] || fail "nothing was recorded"

echo "                          console  repainting  reading | console by repainting"
row() { printf '%-24s %8s  %10s %8s | %s\n' "$@"; }
for i in 0 1 2; do time[i]=$(median <"$work/spent-$i"); done
row "processor, us a second" "${time[@]}" "$(quotient "${time[0]}" "${time[1]}")"
for kind in Rss Pss Private; do
    for i in 0 1 2; do memory[i]=$(kilobytes "${pids[i]}" "$kind"); done
    row "memory $kind, kB" "${memory[@]}" "$(quotient "${memory[0]}" "${memory[1]}")"
done
for i in 0 1; do
    wait_time[i]=$(cut -d' ' -f1 "$work/start-$i" | median)
    start_cost[i]=$(cut -d' ' -f2 "$work/start-$i" | median)
done
row "start to painted, ms" "${wait_time[@]}" - "$(quotient "${wait_time[@]}")"
row "processor until then, ms" "${start_cost[@]}" - "$(quotient "${start_cost[@]}")"
[ -z "${KEEP_SESSION:-}" ] || { echo "console $console"; echo "${pids[@]}"; sleep "$KEEP_SESSION"; }
stop_console || fail "the console ended with code $?"
