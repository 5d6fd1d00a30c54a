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
    "Start Recording" Network "Waterfall gain" "Waterfall minimum" "Update waterfall" Waterfall Volume \
    Pre-emphasis "Audio device"; do
    grep -qF "'$name'" "$work/names.txt" || fail "no control is named $name"
done
threshold=$(ui spoken "AGC threshold")
echo "the threshold says: $threshold"
[ "$threshold" = "-130 dB" ] || fail "the threshold says $threshold"

level=$(ui spoken S-meter)
echo "the S-meter says: $level"
[ "$level" = "-127 dBm" ] || fail "the S-meter says $level"

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

# The wheel over a popup leaves it and the keyboard alone.
read -r left top width height <<<"$(ui place Mode)"
xdotool mousemove $((left + width / 2)) $((top + height / 2)) click --repeat 3 5
sleep 0.3
[ "$(ui focused)" = "Receiver address" ] || fail "the wheel gave the keyboard to $(ui focused)"
stop_console || fail "the console ended with code $?"
