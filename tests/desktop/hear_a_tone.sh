#!/usr/bin/env bash
# From a click on Connect to the tone in the loudspeaker.
. "$(dirname "$0")/lib.sh"

start_receivers
start_console
connect_console
sleep 3 # one second of silence goes ahead of the sound

sound_server_record speakers "$work/heard.wav"
sleep 5
sound_server_record_stop
heard=$("$build_dir/bin/larkspool-heard" "$work/heard.wav") || fail "nothing was heard"
echo "heard: $heard"
# The time station at 10,000 kHz carries a steady tone of 1,000 Hz.
echo "$heard" | awk '{ exit !($1 > 998 && $1 < 1002 && $4 > 3 && $4 < 30) }' ||
    fail "that is not the station's tone"

meter=$(ui read ' dBm ')
echo "meter: $meter"
echo "$meter" | awk '{ exit !($1 > -65 && $1 < -55) }' || fail "the S-meter does not show the station"

ui press Disconnect
sleep 2.5 # the second that was queued plays on
sound_server_record speakers "$work/after.wav"
sleep 2
sound_server_record_stop
loudest=$(sox "$work/after.wav" -n stat 2>&1 | awk '/Maximum amplitude/ { print $3 }')
awk -v loudest="$loudest" 'BEGIN { exit !(loudest < 0.001) }' || fail "still sounding: $loudest"

stop_console || fail "the console ended with code $?"
