#!/usr/bin/env bash
# What a user does in one evening, in one start of the program: finds the way with the keys and a
# screen reader, picks receivers, looks at the band, listens, records, starts a schedule.
. "$(dirname "$0")/lib.sh"

value_is() { [ "$(ui value "$1")" = "$2" ]; }
await_value() { eventually 5 value_is "$1" "$2" || fail "$1 is $(ui value "$1"), not $2"; }
# await_title PATTERN SECONDS: the first window of that title
await_title() {
    timeout "$2" xdotool search --sync --onlyvisible --name "$1" | head -n 1 | grep . ||
        fail "no window's title is $1"
}
favorites=$work/home/data/larkspool/favorite-kiwi.txt

# Somebody who can't see the console can use it: every control has a name, and sliders say their
# values with the unit.
evening_screen_reader() {
    ui names >"$work/names.txt"
    local nameless name next
    nameless=$(awk -F'\t' '$1 ~ /^(text|push button|check box|combo box|slider|progress bar|table|drawing area|canvas)$/ && ($2 == "'"''"'" || $2 == "None")' "$work/names.txt")
    [ -z "$nameless" ] || fail "nameless controls: $nameless"
    for name in "Your name" "Your location" "Receiver address" "Receiver port" Connect Disconnect \
        Reconnect Mode "Frequency in kHz" "Passband low edge in Hz" "Passband high edge in Hz" \
        S-meter AGC "AGC threshold" "AGC decay" Squelch "Squelch tail" Hang "AGC slope" \
        "Manual gain" "Start Recording" Network "Waterfall gain" "Waterfall minimum" \
        "Update waterfall" Waterfall Volume Pre-emphasis "Audio device"; do
        grep -qF "'$name'" "$work/names.txt" || fail "no control is named $name"
    done
    [ "$(ui spoken "AGC threshold")" = "-130 dB" ] || fail "the AGC threshold has another unit"
    [ "$(ui spoken S-meter)" = "-127 dBm" ] || fail "the S-meter has another unit"

    # The keys alone get from one field to the next, in the order of the rows.
    xdotool search --all --name '^Larkspool$' windowactivate 2>/dev/null
    sleep 0.5
    ui focus "Your name"
    for next in "Your location" Off Speakers Volume "Receiver address"; do # a popup says its row
        xdotool key Tab
        sleep 0.3
        case "$(ui focused)" in
        "$next"*) ;;
        *) fail "Tab went to $(ui focused) instead of $next" ;;
        esac
    done
}

# The directory's page over the network into the popup, and a pick out of it.
evening_directory() {
    local row
    row_is_there() { ui rows Receivers >"$work/rows.log" && grep -Fxq "$1" "$work/rows.log"; }
    eventually 10 row_is_there "Grüße vom Bodensee, Loop 60 cm" || fail "the list does not come"
    for row in "Shed antenna" "Harbour light, long wire" "北の受信所 ループアンテナ"; do
        grep -Fxq "$row" "$work/rows.log" || fail "the popup lacks: $row"
    done
    ui pick Receivers "Ħal Lark, vertical on the roof"
    await_value "Receiver address" lark.example
    await_value "Receiver port" 8075
    # The open list is searched by typing.
    ui press Receivers
    sleep 0.5
    xdotool type --delay 20 "northern"
    xdotool key Return
    await_value "Receiver address" 203.0.113.5
    await_value "Receiver port" 18073
}

# A favorite is typed over in place and is in the popup as soon as its window is closed.
evening_favorites() {
    local window
    ui press "Favorites..."
    window=$(await_title '^Favorite Kiwis$' 10) || fail "$window"
    ui focus Favorites
    xdotool windowactivate --sync "$window" key Home F2
    sleep 0.3
    xdotool type --delay 20 "10.0.0.1"
    sleep 0.3
    wmctrl -i -c "$window"
    eventually 10 grep -Fxq "10.0.0.1;8099;Shed antenna" "$favorites"
    [ "$(cat "$favorites")" = "10.0.0.1;8099;Shed antenna" ] ||
        fail "the favorite was not saved: $(cat "$favorites")"
}

# pixel_colors ROW: one line a pixel of that row of the waterfall: column, red, green, blue
pixel_colors() {
    import -window root -crop "${width}x1+$left+$((top + $1))" +repage "$work/row.png"
    convert "$work/row.png" -depth 8 txt:- |
        sed -n 's/^\([0-9]*\),0: *(\([0-9]*\),\([0-9]*\),\([0-9]*\).*/\1 \2 \3 \4/p'
}

# A lone carrier stands in the waterfall where it belongs, and a click on it tunes to it.
evening_band() {
    local left top width height expected trace tuned
    ui type "Frequency in kHz" 10015
    ui press "Update waterfall"
    connect_console
    sleep 3
    read -r left top width height < <(ui place Waterfall)
    [ "$width" = 1024 ] && [ "$height" = 105 ] || fail "the waterfall is $width by $height"

    # The carrier at 10,020 kHz is 5 kHz above the center; 1,024 points show 14.656 kHz.
    expected=$(awk 'BEGIN { printf "%d", 512 + 5 * 1024 / 14.656 }')
    pixel_colors 20 >"$work/row.txt"
    # The trace is the greenest run far from the marks.
    trace=$(awk '$1 > 700 { brightness = $2 + $3 - $4; if (brightness > best) { best = brightness; at = $1 } }
        END { print at }' "$work/row.txt")
    echo "the trace stands at $trace, the geometry says $expected"
    [ $((trace - expected)) -ge -1 ] && [ $((trace - expected)) -le 1 ] || fail "the trace is off"
    # The passband's mark, -5,000 to 5,000 Hz, is 349 points to each side of the carrier's.
    pixel_colors 1 >"$work/marks.txt"
    grep -qx '200 255 255 0' "$work/marks.txt" && grep -qx '511 255 0 0' "$work/marks.txt" ||
        fail "the marks are missing"

    xdotool mousemove $((left + trace)) $((top + 50)) click 1
    sleep 1
    tuned=$(ui value "Frequency in kHz")
    echo "the click tuned to $tuned"
    awk -v f="$tuned" 'BEGIN { exit !(f > 10019.97 && f < 10020.03) }' || fail "the click missed"
}

# From the receiver to the loudspeaker.
evening_tone() {
    ui type "Frequency in kHz" 10000
    sleep 3 # a second and more of the sound is on its way
    sound_server_record speakers "$work/heard.wav"
    sleep 5
    sound_server_record_stop
    check_tone "$work/heard.wav" 3 30
}

# check_recording FILE SHORTEST LONGEST (seconds): as others read it, and by its sound.
check_recording() {
    local file=$1
    [ "$(soxi -t "$file")" = wav ] && [ "$(soxi -r "$file")" = 12000 ] &&
        [ "$(soxi -c "$file")" = 1 ] && [ "$(soxi -e "$file")" = "Signed Integer PCM" ] &&
        [ "$(soxi -b "$file")" = 16 ] || fail "not the format of a recording: $(soxi "$file")"
    is_finished "$file" || fail "the header does not tell how much there is"
    sox "$file" -n stat >"$work/sox.log" 2>&1 || fail "sox can't read it: $(cat "$work/sox.log")"
    grep -i warn "$work/sox.log" && fail "sox is not content with it"
    check_tone "$@"
}

evening_record() {
    local started=$SECONDS
    ui press "Start Recording"
    ui read '^00:00:0[4-9]$' 30 >/dev/null || fail "the time of the recording does not show"
    ui press "Stop Recording"
    local lasted=$((SECONDS - started + 1))
    ui wait "Start Recording" 5 || fail "the button does not show that the recording has ended"
    check_recording "$(recordings)" 4 "$((lasted + 1))"
}

# An entry made from the console's own settings starts.
evening_schedule() {
    local schedule downs item
    ui press Disconnect
    ui press "New Schedule Window"
    schedule=$(await_title '^Schedules  Disabled' 10) || fail "$schedule"
    for item in 3 1; do # of the list's context menu: add an entry, enable the schedules
        mapfile -t downs < <(yes Down | head -n "$item")
        xdotool mousemove --window "$schedule" 300 200 click 3
        sleep 0.5
        xdotool key --delay 50 "${downs[@]}" Return
    done
    ui cell "127.0.0.1:$receiver_port" 5 || fail "the entry does not show"
    await_title 'Enabled .* state: 1$' 10 >/dev/null || fail "the entry did not start"
}

mkdir -p "${favorites%/*}"
echo "192.0.2.99;8099;Shed antenna" >"$favorites"
start_receivers
start_console
for matter in screen_reader directory favorites band tone record schedule; do
    if [ "$matter" = directory ] && [ "$http_port" != "$directory_port" ]; then
        without="the list of receivers: this build looks for it elsewhere, or its port is taken"
        continue
    fi
    echo "--- $matter"
    "evening_$matter"
done
stop_console || fail "the console ended with code $?"
[ -z "${without:-}" ] || skip "$without"
