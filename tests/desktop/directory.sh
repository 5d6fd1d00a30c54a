#!/usr/bin/env bash
# The directory's page over the network into the popup, and a pick out of it; then a favourite of
# one's own, from the menu to the popup.
. "$(dirname "$0")/lib.sh"

# Where this build looks for the directory is decided when it is configured.
directory=$(sed -n 's/^LARKSPOOL_DIRECTORY_HOST:[A-Z]*=//p' "$build_dir/CMakeCache.txt")
port=${directory#127.0.0.1:}
[ "$port" != "$directory" ] || skip "this build's directory is elsewhere: $directory"
(exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null && skip "something else uses port $port"

row_is_there() { ui rows Receivers >"$work/rows.log" && grep -Fxq "$1" "$work/rows.log"; }

await_row() {
    local tries
    for tries in $(seq 100); do
        row_is_there "$1" && return 0
        sleep 0.1
    done
    fail "the popup doesn't show: $1"
}

# await_value FIELD TEXT
await_value() {
    local tries
    for tries in $(seq 50); do
        [ "$(ui value "$1")" = "$2" ] && return 0
        sleep 0.1
    done
    fail "$1 is $(ui value "$1"), not $2"
}

start_receivers --http-port "$port"
mkdir -p "$work/home/data/larkspool"
echo "192.0.2.99;8099;Shed antenna" >"$work/home/data/larkspool/favorite-kiwi.txt"
start_console

await_row "Grüße vom Bodensee, Loop 60 cm"
for row in "Shed antenna" "Harbour light, long wire" "北の受信所 ループアンテナ"; do
    grep -Fxq "$row" "$work/rows.log" || fail "the popup lacks: $row"
done
for row in "No port given" "Address too far down" "Numbers with colons" "Not on the plain web"; do
    grep -Fxq "$row" "$work/rows.log" && fail "the popup shows what can't be reached: $row"
done

ui pick Receivers "Ħal Lark, vertical on the roof"
await_value "Receiver address" lark.example
await_value "Receiver port" 8075
ui pick Receivers "Shed antenna"
await_value "Receiver address" 192.0.2.99
await_value "Receiver port" 8099

# The open list is searched by typing.
ui press Receivers
sleep 0.5
xdotool type --delay 20 "northern"
xdotool key Return
await_value "Receiver address" 203.0.113.5
await_value "Receiver port" 18073

# A favourite is typed over in place and is in the popup as soon as its window is closed.
ui press "Favorites..."
window=$(xdotool search --sync --onlyvisible --name '^Favorite Kiwis$' | head -n 1)
ui focus Favorites
xdotool windowactivate --sync "$window" key Home F2
sleep 0.3
xdotool type --delay 20 "10.0.0.1"
sleep 0.3
wmctrl -i -c "$window"
for tries in $(seq 50); do
    grep -Fxq "10.0.0.1;8099;Shed antenna" "$work/home/data/larkspool/favorite-kiwi.txt" && break
    sleep 0.1
done
[ "$(cat "$work/home/data/larkspool/favorite-kiwi.txt")" = "10.0.0.1;8099;Shed antenna" ] ||
    fail "the favourite was not saved: $(cat "$work/home/data/larkspool/favorite-kiwi.txt")"

stop_console || fail "the console ended with code $?"
