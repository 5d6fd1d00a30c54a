#!/usr/bin/env bash
# Started with two schedules that are enabled at once, and left alone: the one leaves a recording,
# the other the reason why there is none, and the program ends as a service manager ends it.
. "$(dirname "$0")/lib.sh"

# row RECEIVER FROM TO: an entry that runs from so many seconds from now
row() { echo "$1;;$(date -u -d "$2 seconds" +%T)-$(date -u -d "$3 seconds" +%T);10000;am;5000"; }

start_receivers
cd "$work" || fail "no folder"
printf '1\n%s\n' "$(row 127.0.0.1 1 9)" >"$work/no port.txt"
printf '1\n%s\n' "$(row "127.0.0.1:$receiver_port" 10 22)" >"$work/night.txt"
start_console --enable "no port.txt" "$work/night.txt"
log=$work/home/state/larkspool/log.txt
both_have_ended() { [ "$(grep -c 'Entry ended' "$log" 2>/dev/null)" = 2 ]; }
eventually 40 both_have_ended
stop_console || fail "the console ended with code $?"
cat "$log"

set -- "$work"/home/Documents/*.WAV
[ $# -eq 1 ] && [ -f "$1" ] || fail "not one recording: $*"
for told in 'Schedules enabled, entries: 1' "no address and port in \"127.0.0.1\"" \
    "Entry started: 127.0.0.1:$receiver_port" "Recording started: $(basename "$1")" \
    "Recording finished: $(basename "$1"), 00:00:" 'Larkspool ends, because of a signal'; do
    grep -qF "$told" "$log" || fail "the log doesn't tell: $told"
done
check_tone "$1" 8 13
