#!/usr/bin/env bash
# demo_program.sh PROGRAM: the demo receivers as a process: serves a session beside hostile clients,
# although the reader of its output has ended, stops on a signal, and says why it can't start.
set -u
program=$1

fail() {
    echo "FAILED: $*"
    exit 1
}

open_link() { exec 3<>"/dev/tcp/127.0.0.1/$1"; }

# expect STATUS START [REST]: what the first receiver answers a request; both are formats of printf,
# and there is a pause between them
expect() {
    local answer
    open_link "$port"
    # shellcheck disable=SC2059
    printf "$2" >&3 && sleep 0.05 && printf "${3:-}" >&3
    read -r -t 10 answer <&3
    [ "${answer:0:12}" = "HTTP/1.1 $1" ] || fail "'$answer' instead of $1: $2"
}

# page TARGET HOST: what the web server answers
page() {
    open_link "$http_port"
    printf 'GET %s HTTP/1.1\r\nHost: %s\r\n\r\n' "$1" "$2" >&3
    timeout 10 cat <&3
}

# command TEXT: as a client sends it, under a mask of zeros
command() { printf '\x82'"\\x$(printf %x $((128 + ${#1})))"'\0\0\0\0%s' "$1" >&3; }

exec 4< <(exec "$program" --ports 0 --http-port 0 --newest 1.4.0)
receivers=$!
trap 'kill "$receivers" 2>/dev/null' EXIT
port=""
for _ in 1 2 3 4 5 6 7 8; do
    read -r -t 20 -u 4 line || fail "the receivers did not start"
    [[ $line =~ :([0-9]+) ]] && http_port=${BASH_REMATCH[1]}
    port=${port:-$http_port}
done
exec 4<&-

exec 5<>"/dev/tcp/127.0.0.1/$port" # says nothing
expect 431 "GET / HTTP/1.1\r\nX: $(printf %09000d 0)"
expect 400 '\x82\x85\r\n\r\n'
for target in / /kiwi/1700000000/snd /kiwi//SND /kiwi/12ab/SND; do
    expect 404 "GET $target HTTP/1.1\r\nUpgrade: websocket\r\n\r\n"
done
expect 404 'GET /kiwi/1700000000/SND HTTP/1.1\r\nHost: x\r\n\r\n'
expect 101 'GET /kiwi/1700000000/W/F HT' 'TP/1.1\r\nupgrade:WEBSOCKET\r\n\r\n'
expect 101 'GET /kiwi/1700000000/SND HTTP/1.1\r\nUpgrade: webSocket
Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n'
while read -r -t 10 line <&3 && [ "$line" != $'\r' ]; do
    headers+=$line
done
[[ $headers == *s3pPLMBiTxaQ9kYGzzhZRbK+xOo=* ]] || fail "another key: $headers"
command "SET auth t=kiwi p=#"
command "SET AR OK in=12000 out=44100"
command "SET mod=am low_cut=-5000 high_cut=5000 freq=10000"
frames=$(timeout 20 head -c 15000 <&3 | grep -aoF SND | wc -l)
[ "$frames" -ge 12 ] || fail "only $frames frames came"

[ "$(page /public/ radio.local:8080 | grep -c "'http://radio.local:[0-9]*'")" = 7 ] ||
    fail "the receivers are not in the list"
[[ $(page /public/ "a'><script>:80") != *script* ]] || fail "the name of a host isn't checked"
[[ $(page "/version/versionb.html?p=0001130M1207" x) == *1.4.0 ]] || fail "no newer version"
[[ $(page "/version/versionb.html?p=0001140M1207" x) == *LATEST ]] || fail "not the latest version"

for mistake in --prots=1 --ports=8073-8075 --ports=65530 --ports=1,2,3 --ports=1,2,3,4,5,6,7,8 \
    --ports= --rate=nan --rate=0 --rate=12000x --http-port=70000 --jitter-ms=-1 "--newest=a<b>" --rate; do
    message=$(timeout 20 "$program" "$mistake" 2>&1)
    [ $? = 2 ] && [[ $message == *${mistake%%=*}* ]] || fail "$mistake is not named: $message"
done
message=$(timeout 20 "$program" --ports 0 --http-port "$http_port" 2>&1)
[ $? = 1 ] && [[ $message == *$http_port* ]] || fail "a port that is taken: $message"

kill "$receivers"
wait "$receivers" || fail "the receivers ended with code $?"
