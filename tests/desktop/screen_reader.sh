#!/usr/bin/env bash
# Somebody who can't see the console can use it: every control has a name, and sliders say their
# values with the unit.
. "$(dirname "$0")/lib.sh"

start_receivers
start_console
ui names >"$work/names.txt"
nameless=$(awk -F'\t' '$1 ~ /^(text|push button|check box|combo box|slider|progress bar|table|drawing area|canvas)$/ && ($2 == "'"''"'" || $2 == "None")' "$work/names.txt")
[ -z "$nameless" ] || fail "nameless controls: $nameless"
for name in "Your name" "Your location" "Receiver address" "Receiver port" Connect Disconnect \
    Reconnect Mode "Frequency in kHz" "Passband low edge in Hz" "Passband high edge in Hz" S-meter \
    AGC "AGC threshold" "AGC decay" Squelch "Squelch tail" Hang "AGC slope" "Manual gain" \
    "Start Recording" Network "Waterfall gain" "Waterfall minimum" Update Waterfall Volume; do
    grep -qF "'$name'" "$work/names.txt" || fail "no control is named $name"
done
threshold=$(ui spoken "AGC threshold")
echo "the threshold says: $threshold"
[ "$threshold" = "-130 dB" ] || fail "the threshold says $threshold"

# The keys alone get from one field to the next, in the order of the rows.
xdotool search --all --name '^Larkspool$' windowactivate 2>/dev/null
sleep 0.5
ui focus "Your name"
for next in "Your location" Off Speakers Volume "Receiver address"; do # a popup says its row
    xdotool key Tab
    sleep 0.3
    focused=$(ui focused)
    case "$focused" in
    "$next"*) ;;
    *) fail "Tab went to $focused instead of $next" ;;
    esac
done
stop_console || fail "the console ended with code $?"
