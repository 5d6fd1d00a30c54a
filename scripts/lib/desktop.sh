# A private desktop without a screen: an X server in memory, a window manager, a session bus with
# the accessibility service. To be sourced; it needs common.sh.
#
#   desktop_available     says on stdout what is missing and fails, or succeeds
#   desktop_start DIR     starts it; exports DISPLAY and what clients need
#   desktop_screenshot FILE
#   desktop_stop          ends all of it; call it from an EXIT trap
#   ui ...                see ui.py beside this file

desktop_pids=()

desktop_available() {
    local tool missing=""
    for tool in Xvfb openbox xprop import dbus-daemon; do
        command -v "$tool" >/dev/null 2>&1 || missing="$missing $tool"
    done
    /usr/bin/python3 -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null ||
        missing="$missing python3-gi"
    [ -z "$missing" ] && return 0
    echo "missing:$missing (Debian packages xvfb, openbox, x11-utils, imagemagick, dbus-daemon, python3-gi, gir1.2-atspi-2.0)"
    return 1
}

desktop_start() {
    local dir=$1 number address
    mkdir -p "$dir"
    # The X server prints its display number when it accepts clients.
    # shellcheck disable=SC2086  # a list of options
    coproc desktop_x { exec Xvfb -displayfd 1 -screen 0 1400x1000x24 -nolisten tcp \
        ${desktop_x_options:-} 2>"$dir/x.log"; }
    desktop_pids+=("$desktop_x_PID")
    read -r -t 20 number <&"${desktop_x[0]}" || {
        cat "$dir/x.log" >&2
        return 1
    }
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY
    exec 9< <(exec dbus-daemon --session --nofork --print-address=1 2>"$dir/bus.log")
    desktop_pids+=("$!")
    read -r -t 20 address <&9 || {
        cat "$dir/bus.log" >&2
        return 1
    }
    export DBUS_SESSION_BUS_ADDRESS=$address
    export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb NO_AT_BRIDGE=1
    # A window that opens while Openbox starts may never be shown: Openbox sleeps on requests that it
    # has read ahead. Its startup command runs at the end of its start; a change to the root wakes it.
    rm -f "$dir/wm.up"
    openbox --sm-disable --startup "touch '$dir/wm.up'" >"$dir/wm.log" 2>&1 &
    desktop_pids+=("$!")
    local tries
    for tries in $(seq 400); do
        [ -e "$dir/wm.up" ] && xprop -root -format WM_UP 8s -set WM_UP yes && return 0
        sleep 0.05
    done
    complain "the window manager did not start"
    return 1
}

desktop_screenshot() { import -window root "$1"; }

ui() { /usr/bin/python3 "$root/scripts/lib/ui.py" "$@"; }

desktop_stop() {
    local i
    for ((i = ${#desktop_pids[@]} - 1; i >= 0; i--)); do
        kill "${desktop_pids[$i]}" 2>/dev/null
    done
    wait "${desktop_pids[@]}" 2>/dev/null
    desktop_pids=()
    return 0
}
