#!/usr/bin/env bash
# faults.sh BUILD_FOLDER FAULT: does one bad thing to the real program and looks at what its user
# has afterwards. In a network and with mounts of its own where those may be made.
here=$(dirname "$0")
. "$here/../../scripts/lib/network.sh"
network_enter "$0" "$@"
fault=${2:?the fault}
. "$here/../../scripts/lib/remote.sh"
. "$here/lib.sh"

home=$work/home
settings="$home/config/larkspool/Larkspool Prefs"

# The folders of the user on a small disk of their own.
small_home() {
    [ -n "${LARKSPOOL_OWN_NETWORK:-}" ] || skip "no right to mount a disk of its own"
    mkdir -p "$home"
    mount -t tmpfs -o "size=$1" tmpfs "$home" 2>/dev/null || skip "no right to mount a small disk"
    mounted=$home
}

# playable FILE LEAST: finished, so many seconds at least, and with the tone
tone_tolerance=10 # Hz: some are short
playable() {
    is_finished "$1" || fail "unfinished: $(basename "$1")"
    check_tone "$1" "$2" 999
}

is_receiving() { ui read '^[1-9][0-9.]* samples/sec' "${1:-10}" >/dev/null; }

# A session that is being recorded.
start_recording() {
    start_console
    connect_console
    ui press "Start Recording"
    ui read '^00:00:0[2-9]$' 20 >/dev/null || fail "no recording"
}

# So that there are settings to lose.
save_settings() {
    remote_prepare "$build_dir/bin" "$home/config" saved.example.net 8073 || fail "no settings"
    cp "$settings" "$work/saved"
}
settings_are_as_saved() { cmp -s "$settings" "$work/saved"; }

restart_shows_saved() {
    start_console
    [ "$(ui value "Receiver address")" = saved.example.net ] ||
        fail "the settings are gone: $(ui value "Receiver address")"
}

fault_killed() {
    save_settings
    start_recording
    kill -KILL "$console"
    wait "$console" 2>/dev/null
    ! is_finished "$(recordings)" || fail "this recording was not cut short at all"
    settings_are_as_saved || fail "the settings have changed"
    restart_shows_saved
    eventually 10 is_finished "$(recordings)" || fail "the recording was not finished"
    playable "$(recordings)" 2
}

fault_two_programs() {
    start_recording
    local first=$console
    HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data \
        "$build_dir/bin/larkspool" >"$work/second.log" 2>&1 &
    console=$!
    sleep 9 # it has looked through the recordings by now
    ! is_finished "$(recordings)" || fail "the second has finished the recording of the first"
    stop_console || fail "the second ended with code $?"
    console=$first
    is_receiving || fail "the first has stopped"
    stop_console || fail "the first ended with code $?"
    [ "$(recordings | wc -l)" -eq 1 ] || fail "not one recording"
    playable "$(recordings)" 9
    start_console
    [ "$(ui value "Receiver address")" = 127.0.0.1 ] || fail "whoever ends last has saved last"
}

fault_full_disk() {
    small_home 160k
    save_settings
    start_console
    connect_console
    ui press "Start Recording"
    ui read '^The recording has ended' 30 || fail "nothing was said of it"
    ui press OK
    is_receiving || fail "the session has ended"
    playable "$(recordings)" 3
    stop_console || fail "the console ended with code $?"
    settings_are_as_saved || fail "the settings are not as they were saved"
    rm "$(recordings)"
    restart_shows_saved
}

fault_read_only() {
    small_home 1m
    save_settings
    mkdir -p "$home/Documents"
    mount -o remount,ro "$home" || skip "no right to make a disk read-only"
    start_console
    connect_console
    ui press "Start Recording"
    ui read '^The recording could not begin' 10 || fail "nothing was said of it"
    ui press OK
    is_receiving || fail "the session has ended"
    stop_console || fail "the console ended with code $?"
    [ -z "$(recordings)" ] || fail "that disk was not read-only"
    settings_are_as_saved || fail "the settings have changed"
    mount -o remount,rw "$home"
    restart_shows_saved
}

fault_sound_server() {
    local server=$sound_server_dir bus=$DBUS_SESSION_BUS_ADDRESS
    start_recording
    kill -KILL "$sound_server_pid"
    wait "$sound_server_pid" 2>/dev/null
    sleep 3
    is_receiving || fail "the session has ended with the sound server"
    rm -rf "$server/pulse"
    sound_server_start "$server" speakers=Speakers headphones=Headphones || fail "no second server"
    export DBUS_SESSION_BUS_ADDRESS=$bus # the sound server has done without
    eventually 15 sounds_again || fail "the sound does not come back"
    ui press "Stop Recording" || fail "the recording does not run any more"
    eventually 5 is_finished "$(recordings)"
    playable "$(recordings)" 5
    stop_console || fail "the console ended with code $?"
}

sounds_again() {
    sound_server_record speakers "$work/again.wav"
    sleep 1.5
    sound_server_record_stop
    sox "$work/again.wav" -n stat 2>&1 |
        awk '/^Maximum amplitude/ { found = $3 > 0.01 } END { exit !found }'
}

fault_half_open() {
    [ -n "${LARKSPOOL_OWN_NETWORK:-}" ] || skip "no right to make a network of its own"
    start_recording
    ui press Reconnect
    ip link set lo down
    local from=$SECONDS
    eventually 40 is_finished "$(recordings)" || fail "the dead link was not noticed"
    echo "noticed after $((SECONDS - from)) s"
    ip link set lo up
    eventually 90 two_recordings || fail "the recording does not go on in a new file"
    is_receiving || fail "the session is not back"
    echo "back after $((SECONDS - from)) s"
    sleep 3
    stop_console || fail "the console ended with code $?"
    playable "$(recordings | head -n 1)" 2
    playable "$(recordings | tail -n 1)" 1
}
two_recordings() { [ "$(recordings | wc -l)" -eq 2 ]; }

fault_silent_receiver() {
    start_recording
    kill -STOP "$receivers"
    ui read '^0 samples/sec.*nothing received for' 10 || fail "the silence does not show"
    ui press Disconnect
    kill -CONT "$receivers"
    eventually 5 is_finished "$(recordings)" || fail "the recording was not ended"
    playable "$(recordings)" 1
    ui press Connect
    is_receiving 20 || fail "the receiver can't be heard again"
    stop_console || fail "the console ended with code $?"
}

# The name server never answers, so that a lookup takes many seconds.
fault_quit_in_lookup() {
    [ -n "${LARKSPOOL_OWN_NETWORK:-}" ] || skip "no right to make a network of its own"
    /usr/bin/python3 -c 'import socket, time
server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
server.bind(("10.77.0.2", 53))
time.sleep(60)' &
    peer=$!
    echo "nameserver 10.77.0.2" >"$work/resolv.conf"
    mount --bind "$work/resolv.conf" /etc/resolv.conf 2>/dev/null || skip "no right to mount"
    mounted=/etc/resolv.conf
    start_console
    ui type "Receiver address" sdr.example.net
    ui press Connect
    ui read '^Connecting to' 10 >/dev/null || fail "no connection was tried"
    sleep 1
    local from=${EPOCHREALTIME/./}
    stop_console
    local code=$? took=$(((${EPOCHREALTIME/./} - from) / 1000))
    echo "ended after $took ms"
    [ "$code" -eq 0 ] || fail "the console ended with code $code"
    [ "$took" -lt 3000 ] || fail "it has waited for the name server"
}

start_receivers
"fault_$fault"
