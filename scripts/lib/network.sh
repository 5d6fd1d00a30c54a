# A private network of one computer, for tests that send to everyone on it. To be sourced.
#
#   network_start      makes it: a loopback and an interface "wire" with 10.77.0.2/24 and the default
#                      route. Where that may not be done it fails, and network_obstacle says why
#   network_run COMMAND...
#   network_enter SCRIPT ARGUMENTS...
#                      runs the calling script again in such a network and ends as it does; where that
#                      may not be done, or is done already, it returns
#   network_ip ARGUMENTS...  the ip command in it
#   network_stop       call it from an EXIT trap

network_name=""
network_obstacle=""

network_start() {
    command -v ip >/dev/null 2>&1 || {
        network_obstacle="no ip command (Debian package iproute2)"
        return 1
    }
    ip netns add "larkspool-$$" 2>/dev/null || {
        network_obstacle="no right to make a network of its own"
        return 1
    }
    network_name=larkspool-$$
    network_ip link set lo up && network_add_wire && return 0
    network_obstacle="no interface for a network of its own"
    network_stop
    return 1
}

# Without a dummy interface in the kernel, one end of a virtual cable is enough.
network_add_wire() {
    network_ip link add wire type dummy 2>/dev/null ||
        { network_ip link add wire type veth peer name far && network_ip link set far up; } ||
        return 1
    network_ip address add 10.77.0.2/24 brd 10.77.0.255 dev wire &&
        network_ip link set wire up && network_ip route add default via 10.77.0.1 dev wire
}

network_ip() { ip -n "$network_name" "$@"; }

network_run() { ip netns exec "$network_name" "$@"; }

network_enter() {
    [ -z "${LARKSPOOL_OWN_NETWORK:-}" ] || return 0
    trap network_stop EXIT
    if network_start; then
        LARKSPOOL_OWN_NETWORK=yes network_run "$@"
        exit
    fi
}

network_stop() {
    [ -n "$network_name" ] && ip netns delete "$network_name"
    network_name=""
    return 0
}
