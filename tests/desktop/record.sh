#!/usr/bin/env bash
# From the record button to files that any player takes: one that the user stops, and one that a
# signal cuts short.
. "$(dirname "$0")/lib.sh"

command -v soxi >/dev/null || skip "missing: soxi (Debian package sox)"
documents=$work/home/Documents

# check_recording FILE SHORTEST LONGEST (seconds): as others read it, and by its sound.
check_recording() {
    local file=$1 seconds heard told
    [ "$(soxi -t "$file")" = wav ] && [ "$(soxi -r "$file")" = 12000 ] &&
        [ "$(soxi -c "$file")" = 1 ] && [ "$(soxi -e "$file")" = "Signed Integer PCM" ] &&
        [ "$(soxi -b "$file")" = 16 ] || fail "not the format of a recording: $(soxi "$file")"
    [ $((44 + 2 * $(soxi -s "$file"))) -eq "$(stat -c %s "$file")" ] ||
        fail "the header does not tell how much there is"
    sox "$file" -n stat >"$work/sox.log" 2>&1 || fail "sox can't read it: $(cat "$work/sox.log")"
    grep -i warn "$work/sox.log" && fail "sox is not content with it"
    if command -v sndfile-info >/dev/null; then
        told=$(sndfile-info "$file") || fail "libsndfile can't read it: $told"
        echo "$told" | grep -Eqi 'error|should be|bad|truncat' && fail "libsndfile: $told"
    fi
    seconds=$(soxi -D "$file")
    echo "$(basename "$file"): $seconds s"
    awk -v s="$seconds" -v least="$2" -v most="$3" 'BEGIN { exit !(s >= least && s <= most) }' ||
        fail "it should last from $2 to $3 s"
    heard=$("$build_dir/bin/larkspool-heard" "$file") || fail "nothing is to be heard in it"
    echo "heard: $heard"
    echo "$heard" | awk '{ exit !($1 > 998 && $1 < 1002) }' || fail "that is not the station's tone"
}

recordings() { find "$documents" -name 'KiwiRecording-*.WAV' | sort; }

start_receivers
start_console
connect_console

ui press "Start Recording"
started=$SECONDS
ui read '^00:00:0[4-9]$' 30 >"$work/status" || fail "the time of the recording does not show"
ui press "Stop Recording"
lasted=$((SECONDS - started + 1))
ui wait "Start Recording" 5 || fail "the button does not show that the recording has ended"
[ "$(recordings | wc -l)" -eq 1 ] || fail "there should be one recording: $(recordings)"
first=$(recordings)
check_recording "$first" 4 "$((lasted + 1))"

sleep 1.1 # another second, another name
ui press "Start Recording"
ui read '^00:00:0[3-9]$' 30 >>"$work/status" || fail "the second recording does not run"
stop_console || fail "the console ended with code $?"
[ "$(recordings | wc -l)" -eq 2 ] || fail "there should be two recordings: $(recordings)"
check_recording "$(recordings | tail -n 1)" 3 60
