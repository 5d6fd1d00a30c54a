#!/usr/bin/env bash
# Another program at the controls: connects, tunes, changes the mode, takes the sound, records. Then
# rigctl, by rig control. In a network of its own where that may be made, else in this computer's if
# the ports are free there.
here=$(dirname "$0")
. "$here/../../scripts/lib/network.sh"
network_enter "$0" "$@"
[ -z "$network_obstacle" ] || echo "$network_obstacle: taking this computer's"
. "$here/../../scripts/lib/remote.sh"
. "$here/lib.sh"

# heard LINE [SECONDS]: waits until the peer has heard it
heard() {
    eventually "${2:-5}" grep -qx "$1" "$work/peer.log" || fail "the peer has not heard '$1'"
}

sounds() { grep -c '^sound' "$work/peer.log"; }

! remote_port_taken || skip "something listens on port $remote_port already"
python3 "$here/peer.py" >"$work/peer.log" 2>&1 &
peer=$!
until grep -q '^ready' "$work/peer.log"; do
    kill -0 "$peer" 2>/dev/null || skip "the ports of the peer: $(cat "$work/peer.log")"
    sleep 0.05
done

start_receivers
remote_prepare "$build_dir/bin" "$work/home/config" 127.0.0.1 "$receiver_port" || fail "no settings"
start_console
remote_port_taken || fail "the console does not listen"

remote_say "vrxct:"
heard "text vrxcount:1"
heard "text streamrate:12001"
remote_say connect
ui read '^[1-9][0-9.]* samples/sec' 20 || fail "no samples came"

remote_say "07ofreq:10020000"
heard "text freq:010020000"
ui read '^-(6[5-9]|7[0-5])[0-9.]* dBm' || fail "that is not the carrier at 10020 kHz"
remote_say "mode:3"
remote_say "lowcut:300"
remote_say "highcut:2700"
ui read '^-1[0-9][0-9][0-9.]* dBm' || fail "the passband still holds the carrier: no upper sideband"

remote_say "staud:1"
heard "text streamrate:12000"
heard "sound 60" 20
remote_say "staud:0"
sleep 0.5
first=$(sounds)
sleep 0.5
[ "$(sounds)" -eq "$first" ] || fail "the stream did not stop"
sed -n 's/^sound //p' "$work/peer.log" | cmp - <(seq 0 $((first - 1))) ||
    fail "the stream has a gap or a repetition"

remote_say togglerecord
sleep 2
remote_say togglerecord
sleep 0.5
is_finished "$(recordings)" || fail "nothing was recorded"

rig() { timeout 20 rigctl -m 2 -r 127.0.0.1:4532 "$@" 2>>"$work/rigctl.log" | tr '\n' ' '; }
# expect_rig ANSWER COMMAND...
expect_rig() {
    local answer
    answer=$(rig "${@:2}")
    [ "$answer" = "$1" ] || fail "rigctl says '$answer', not '$1': ${*:2}"
}

if command -v rigctl >/dev/null; then
    expect_rig "10019000 " F 10019000 f # the carrier sounds at 1 kHz
    heard "text freq:010019000"
    expect_rig "USB 2400 " m
    ui read '^-(6[5-9]|7[0-5])[0-9.]* dBm' >/dev/null || fail "the receiver is not where rigctl wants it"
    strength=$(rig l STRENGTH)
    [ "$strength" -ge -2 ] && [ "$strength" -le 8 ] || fail "the carrier is no $strength dB over S9"
    expect_rig "AM 6000 VFOA " M AM 6000 m v
fi

remote_say disconnect
ui read '^Disconnected' || fail "the session goes on"

if command -v rigctl >/dev/null; then
    ui press Network
    [ "$(rig f)" = "" ] || fail "rig control answers with Network unticked"
fi
stop_console || fail "the console ended with code $?"
command -v rigctl >/dev/null || skip "rig control: missing: rigctl (Debian package libhamlib-utils)"
