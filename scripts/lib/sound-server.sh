# A private PulseAudio with null sinks, for tests and demonstrations: it needs
# no sound card and never touches the user's own server. To be sourced.
#
#   sound_server_available          says on stdout what is missing and fails, or succeeds
#   sound_server_start DIR SINK...  starts a server in DIR, which it makes, with these sinks;
#                                   SINK is NAME or NAME=DESCRIPTION. Exports what clients need.
#   sound_server_add_sink SINK      loads one more sink and prints its module number
#   sound_server_remove MODULE      unloads it
#   sound_server_record NAME FILE   records what the sink NAME plays until sound_server_record_stop;
#                                   raw 32-bit floats, 48 kHz, stereo, or a WAV file where
#                                   FILE ends in .wav
#   sound_server_record_stop
#   sound_server_stop               ends recording and server, and removes what it made in DIR
#
# Call sound_server_stop from an EXIT trap.

sound_server_dir=""
sound_server_pid=""
sound_server_recorder=""

sound_server_available() {
    local tool missing=""
    for tool in pulseaudio pactl parec; do
        command -v "$tool" >/dev/null 2>&1 || missing="$missing $tool"
    done
    [ -z "$missing" ] && return 0
    echo "missing:$missing (Debian packages pulseaudio, pulseaudio-utils)"
    return 1
}

sound_server_sink_arguments() {
    local name=${1%%=*} description=${1#*=}
    printf '%s' "norewinds=1 sink_name=$name rate=48000 channels=2 format=float32le"
    printf ' %s' "sink_properties=device.description=\"${description// /\\ }\""
}

sound_server_start() {
    sound_server_dir=$1
    shift
    mkdir -p "$sound_server_dir/pulse" || return 1
    chmod 700 "$sound_server_dir" "$sound_server_dir/pulse"
    unset DBUS_SESSION_BUS_ADDRESS
    export XDG_RUNTIME_DIR=$sound_server_dir PULSE_RUNTIME_PATH=$sound_server_dir/pulse
    export PULSE_SERVER=unix:$sound_server_dir/pulse/native PULSE_COOKIE=$sound_server_dir/cookie
    local sink
    local modules=(-L "module-native-protocol-unix socket=$sound_server_dir/pulse/native auth-anonymous=1")
    for sink in "$@"; do
        modules+=(-L "module-null-sink $(sound_server_sink_arguments "$sink")")
    done
    HOME=$sound_server_dir pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 \
        --disable-shm=yes --realtime=no --high-priority=no "${modules[@]}" \
        >"$sound_server_dir/server.log" 2>&1 &
    sound_server_pid=$!
    for _ in $(seq 100); do
        pactl info >/dev/null 2>&1 && return 0
        kill -0 "$sound_server_pid" 2>/dev/null || break
        sleep 0.05
    done
    echo "the sound server did not start:" >&2
    cat "$sound_server_dir/server.log" >&2
    sound_server_stop
    return 1
}

sound_server_add_sink() {
    pactl load-module module-null-sink "$(sound_server_sink_arguments "$1")"
}

sound_server_remove() { pactl unload-module "$1"; }

sound_server_record() {
    local format=--raw
    case $2 in *.wav) format=--file-format=wav ;; esac
    parec -d "$1.monitor" "$format" --format=float32le --rate=48000 --channels=2 \
        --latency-msec=20 >"$2" 2>/dev/null &
    sound_server_recorder=$!
}

sound_server_record_stop() {
    [ -n "$sound_server_recorder" ] || return 0
    kill -INT "$sound_server_recorder" 2>/dev/null
    wait "$sound_server_recorder" 2>/dev/null
    sound_server_recorder=""
    return 0
}

sound_server_stop() {
    sound_server_record_stop
    if [ -n "$sound_server_pid" ]; then
        kill "$sound_server_pid" 2>/dev/null
        kill -CONT "$sound_server_pid" 2>/dev/null
        wait "$sound_server_pid" 2>/dev/null
        sound_server_pid=""
    fi
    if [ -n "$sound_server_dir" ]; then
        rm -rf "$sound_server_dir/pulse" "$sound_server_dir/.config" "$sound_server_dir/cookie" \
            "$sound_server_dir/server.log"
        rmdir "$sound_server_dir" 2>/dev/null
        sound_server_dir=""
    fi
    return 0
}
