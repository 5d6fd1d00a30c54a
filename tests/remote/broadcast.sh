#!/usr/bin/env bash
# Where datagrams for everyone go: asked of the system, in networks of its own.
#   broadcast.sh PROBE
. "$(dirname "$0")/../../scripts/lib/network.sh"

trap network_stop EXIT
probe=$1
failures=0

# expect ADDRESS WHERE
expect() {
    local went
    went=$(network_run "$probe")
    echo "$2: sent to $went"
    [ "$went" = "$1" ] || failures=1
}

network_start || {
    echo "SKIPPED: $network_obstacle"
    exit 77
}
expect 10.77.0.255 "on the default route"
network_ip route delete default
expect 10.77.0.255 "without a default route"
network_ip link set wire down
expect 127.255.255.255 "without any network"
exit "$failures"
