# A console's remote control, for scripts that drive one. To be sourced.
#
#   remote_port_taken              whether something listens on the port of the remote control
#   remote_prepare PROGRAMS CONFIG HOST PORT
#                                  in the folder CONFIG, which will be the console's
#                                  XDG_CONFIG_HOME, switches the remote control on and fills in the
#                                  receiver; PROGRAMS is the folder of the executables
#   remote_wait PID                until the console PID listens; fails if it ends before
#   remote_say TEXT                sends one command

remote_port=58284

# The kernel's table gives ports in hexadecimal digits.
remote_port_taken() {
    awk -v port=":$(printf '%04X' "$remote_port")" \
        'substr($2, length($2) - 4) == port { found = 1 } END { exit !found }' \
        /proc/net/udp /proc/net/udp6 2>/dev/null
}

remote_prepare() {
    mkdir -p "$2/larkspool" && "$1/larkspool-demo-settings" "$3" "$4" >"$2/larkspool/Larkspool Prefs"
}

remote_wait() {
    local tries
    for tries in $(seq 400); do
        remote_port_taken && return 0
        kill -0 "$1" 2>/dev/null || return 1
        sleep 0.05
    done
    return 1
}

remote_say() { printf '%s' "$1" >"/dev/udp/127.0.0.1/$remote_port"; }
