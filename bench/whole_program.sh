#!/usr/bin/env bash
# The console beside a window that only repaints the waterfall's area, a program that only reads the
# two links and, where Chromium is installed, a page that plays and draws them in a browser:
# processor time, wake-ups, memory, start.
#   whole_program.sh BUILD_FOLDER [ROUNDS [STARTS]]
# All that is compared runs at once through every round, so that any other load of the computer
# affects all of it. The browser has a scenario of its own, because it is such a load. A wake-up is
# a voluntary context switch, as the kernel counts them.
here=$(cd "$(dirname "$0")" && pwd)
. "$here/../scripts/lib/network.sh"
network_enter "$0" "$@"
[ -z "$network_obstacle" ] || echo "$network_obstacle: taking this computer's"
. "$here/../scripts/lib/remote.sh"
rounds=${2:-12}
starts=${3:-15}
round=4 # seconds
browser_page=$here/browser_peer.html
screen=$(mktemp -d "${TMPDIR:-/tmp}/larkspool-screen.XXXXXX")
desktop_x_options="-fbdir $screen"
. "$here/../tests/desktop/lib.sh"
programs=() # beside the console
browser=""
# shellcheck disable=SC2317  # called by the trap
finish() {
    local code=$?
    kill "${programs[@]}" 2>/dev/null
    [ -z "$browser" ] || wait "$browser"
    rm -rf "$screen"
    (exit "$code")
    clean_up
}
trap finish EXIT

# family PID: it and all its children's children
family() {
    local child
    echo "$1"
    for child in $(cat /proc/"$1"/task/*/children 2>/dev/null); do family "$child"; done
}

# Nanoseconds of processor time so far, all threads of all these processes.
spent() {
    local id
    for id in "$@"; do cat /proc/"$id"/task/*/schedstat; done 2>/dev/null |
        awk '{ sum += $1 } END { printf "%.0f\n", sum }'
}

# wakeups FILE...: voluntary context switches so far
wakeups() { awk '/^voluntary/ { sum += $2 } END { printf "%.0f\n", sum }' "$@"; }

kilobytes() { awk -v name="^$2(:|_[CD])" '$1 ~ name { sum += $2 } END { print sum }' "/proc/$1/smaps_rollup"; }
median() { sort -n | awk '{ v[NR] = $1 } END { print NR % 2 ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
# ratio I J: the median of all rounds' ratios, because both programs slow down in the same rounds
ratio() {
    paste "$work/spent-$1" "$work/spent-$2" | awk '{ printf "%.3f\n", $1 / $2 }' | median |
        awk '{ printf "%.2f\n", $1 }'
}
quotient() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.2f\n", a / b; else print "-" }'; }

# As for a user without a screen reader.
plain=(env -u QT_LINUX_ACCESSIBILITY_ALWAYS_ON HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data")

open_console() {
    "${plain[@]}" QT_SCALE_FACTOR="$1" "$build_dir/bin/larkspool" >"$work/console.log" 2>&1 &
    console=$!
    remote_wait "$console" || fail "the console did not come up"
}

open_session() {
    remote_say connect
    sleep 4
    [ "$1" = full ] || return 0
    remote_say staud:1
    remote_say togglerecord
    sleep 1
}

open_browser() {
    HOME=$work/chromium chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
        --disable-background-networking --disable-component-update --disable-sync \
        --autoplay-policy=no-user-gesture-required --user-data-dir="$work/chromium" \
        --window-size=1064,391 --enable-logging=stderr \
        "file://$browser_page#127.0.0.1:$receiver_port" >"$work/chromium.log" 2>&1 &
    browser=$!
    programs+=("$browser")
    sleep 5
}

browser_heard() { sed -n 's/.*"heard \([0-9]*\) drawn \([0-9]*\) running.*/\1 \2/p' "$work/chromium.log" | tail -n 1; }

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

# measure_rounds PID...: microseconds of processor a second, by program and round
measure_rounds() {
    local i number before ids=("$@") families=() woken
    rm -f "$work"/spent-* "$work"/woken-*
    for i in "${!ids[@]}"; do families[i]=$(family "${ids[i]}"); done
    for number in $(seq "$rounds"); do
        before=()
        woken=("$(wakeups /proc/"$console"/status)" "$(wakeups /proc/"$console"/task/*/status)")
        # shellcheck disable=SC2086  # lists of numbers
        for i in "${!ids[@]}"; do before[i]=$(spent ${families[i]}); done
        sleep "$round"
        # shellcheck disable=SC2086
        for i in "${!ids[@]}"; do
            echo "$((($(spent ${families[i]}) - before[i]) / round / 1000))" >>"$work/spent-$i"
        done
        echo "$((($(wakeups /proc/"$console"/status) - woken[0]) / round))" >>"$work/woken-main"
        echo "$((($(wakeups /proc/"$console"/task/*/status) - woken[1]) / round))" >>"$work/woken-all"
    done
}

row() { printf '%-26s %9s %10s %8s %8s | %7s %9s %7s %6s\n' "$@"; }

# scenario TITLE SCALE idle|plain|full|browser
scenario() {
    local i time=(- - - -) browser_ratio=- before
    [ "$3" != browser ] || command -v chromium >/dev/null || return 0
    open_console "$2"
    [ "$3" = idle ] || open_session "$3"
    programs=()
    "${plain[@]}" QT_SCALE_FACTOR="$2" "$build_dir/bench/repaint_floor" >"$work/floor.log" 2>&1 &
    programs+=($!)
    "$build_dir/bench/socket_floor" 127.0.0.1 "$receiver_port" >"$work/sockets.log" 2>&1 &
    programs+=($!)
    [ "$3" != browser ] || open_browser
    sleep 2
    before=$(grep -c '^sound' "$work/peer.log")
    measure_rounds "$console" "${programs[@]}"
    check_peers
    check_"$3" "$before"
    for i in 0 1 2 3; do
        [ ! -s "$work/spent-$i" ] || time[i]=$(median <"$work/spent-$i")
    done
    [ "${time[3]}" = - ] || browser_ratio=$(ratio 3 0)
    row "$1" "${time[@]}" "$(ratio 0 1)" "$browser_ratio" \
        "$(median <"$work/woken-main")" "$(median <"$work/woken-all")"
    [ "$3" != full ] || [ "$2" != 1 ] || measure_memory
    [ -z "${KEEP_SESSION:-}" ] || { echo "console $console"; sleep "$KEEP_SESSION"; }
    stop_console || fail "the console ended with code $?"
    kill "${programs[@]}" 2>/dev/null
    wait "${programs[@]}" 2>/dev/null
    browser=""
}

# What was measured must have happened.
check_idle() { :; }
check_plain() { :; }
check_browser() {
    local heard drawn
    read -r heard drawn <<<"$(browser_heard)"
    [ "${heard:-0}" -gt $((rounds * round * 10)) ] && [ "${drawn:-0}" -gt $((rounds * round * 20)) ] ||
        fail "the browser neither played nor drew: $heard $drawn"
}
check_full() {
    local heard=$(($(grep -c '^sound' "$work/peer.log") - $1))
    [ "$heard" -gt $((rounds * round * 20)) ] || fail "the stream stopped"
    [ -n "$(find "$work/home/Documents" -name 'KiwiRecording-*' -size +$((rounds * round * 20))k)" ] ||
        fail "nothing was recorded"
}

measure_memory() {
    local kind i ids=("$console" "${programs[@]}")
    for kind in Rss Pss Private; do
        for i in 0 1 2; do memory[i]=$(kilobytes "${ids[i]}" "$kind"); done
        memory_rows+=("$kind ${memory[*]} $(quotient "${memory[0]}" "${memory[1]}")")
    done
}

# check_peers: what the console is measured beside still runs
check_peers() {
    kill -0 "${programs[0]}" 2>/dev/null || fail "the repainting window has ended: $(tail -n 1 "$work/floor.log")"
    kill -0 "${programs[1]}" 2>/dev/null || fail "the reading program has ended: $(tail -n 1 "$work/sockets.log")"
}

for tool in bin/larkspool bin/larkspool-demo bench/first_paint bench/repaint_floor bench/socket_floor; do
    [ -x "$build_dir/$tool" ] || fail "$build_dir/$tool is not built"
done
memory_rows=()
mkdir -p "$work/home/Documents" "$work/chromium"
start_receivers
remote_prepare "$build_dir/bin" "$work/home/config" 127.0.0.1 "$receiver_port" || fail "no settings"
measure_starts
python3 "$root/tests/desktop/peer.py" >"$work/peer.log" 2>&1 &
peer=$!
echo "processor, us a second       console repainting  reading  browser | console   browser   wake-ups a second"
echo "                                                                  | by rep.   by con.     main    all"
scenario "no session" 1 idle
scenario "session" 1 plain
scenario "session, with a browser" 1 browser
scenario "with stream and recording" 1 full
scenario "the same at scale 2" 2 full
echo
for line in "${memory_rows[@]}"; do
    # shellcheck disable=SC2086  # words
    printf 'memory %-8s kB: console %s, repainting %s, reading %s; console by repainting %s\n' $line
done
for i in 0 1; do
    wait_time[i]=$(cut -d' ' -f1 "$work/start-$i" | median)
    start_cost[i]=$(cut -d' ' -f2 "$work/start-$i" | median)
done
printf '%s: console %s, repainting %s; console by repainting %s\n' \
    "start to painted, ms" "${wait_time[@]}" "$(quotient "${wait_time[@]}")" \
    "processor until then, ms" "${start_cost[@]}" "$(quotient "${start_cost[@]}")"
