#!/usr/bin/env bash
# Where datagrams for everyone go, and that a peer on the same computer gets each exactly once.
#   broadcast.sh PROBE
. "$(dirname "$0")/../../scripts/lib/network.sh"

trap network_stop EXIT
probe=$1
failures=0

# expect ADDRESS WHERE
expect() {
    local went code
    went=$(network_run "$probe")
    code=$?
    echo "$2: sent to $went"
    [ "$code" -eq 0 ] && [ "$went" = "$1" ] || failures=$((failures + 1))
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
exit "$((failures > 0))"
