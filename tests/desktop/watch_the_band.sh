#!/usr/bin/env bash
# A lone carrier stands in the waterfall where it belongs, in the table's colour, and a click on it
# tunes to it.
. "$(dirname "$0")/lib.sh"

start_receivers
start_console
ui type "Frequency in kHz" 10015
ui press "Update waterfall"
connect_console
sleep 3
read -r left top width height < <(ui place Waterfall)
[ "$width" = 1024 ] && [ "$height" = 105 ] || fail "the waterfall is $width by $height"

# The carrier at 10,020 kHz is 5 kHz above the centre; 1,024 points show 14.656 kHz.
expected=$(awk 'BEGIN { printf "%d", 512 + 5 * 1024 / 14.656 }')
import -window root -crop "${width}x1+$left+$((top + 20))" +repage "$work/row.png"
# One line a pixel: column, red, green, blue. The trace is the greenest run far from the marks.
convert "$work/row.png" -depth 8 txt:- |
    sed -n 's/^\([0-9]*\),0: *(\([0-9]*\),\([0-9]*\),\([0-9]*\).*/\1 \2 \3 \4/p' >"$work/row.txt"
trace=$(awk '$1 > 700 { brightness = $2 + $3 - $4; if (brightness > best) { best = brightness; at = $1 } }
    END { print at }' "$work/row.txt")
echo "the trace stands at $trace, the geometry says $expected"
awk -v a="$trace" -v b="$expected" 'BEGIN { exit !(a - b <= 1 && b - a <= 1) }' ||
    fail "the trace is off"

# -70 dBm is 130 above the bottom of the range: entry 520 of the scale is (77, 255, 0).
colour=$(awk -v at="$trace" '$1 == at { print $2, $3, $4 }' "$work/row.txt")
echo "its colour is $colour"
echo "$colour" | awk '{ exit !($1 > 40 && $1 < 115 && $2 > 250 && $3 < 5) }' || fail "that is not its colour"

# The passband's mark, -5,000 to 5,000 Hz, is 349 points to each side of the carrier's.
import -window root -crop "${width}x1+$left+$((top + 1))" +repage "$work/marks.png"
marks=$(convert "$work/marks.png" -crop 1x1+200+0 -format '%[pixel:p{0,0}]' info:)
centre=$(convert "$work/marks.png" -crop 1x1+511+0 -format '%[pixel:p{0,0}]' info:)
echo "marks: $marks, carrier: $centre"
case "$marks $centre" in
*"255,255,0"*"255,0,0"*) ;;
*yellow*red*) ;;
*) fail "the marks are missing" ;;
esac

xdotool mousemove $((left + trace)) $((top + 50)) click 1
sleep 1
tuned=$(ui value "Frequency in kHz")
echo "the click tuned to $tuned"
awk -v f="$tuned" 'BEGIN { exit !(f > 10019.97 && f < 10020.03) }' || fail "the click missed"

stop_console || fail "the console ended with code $?"
