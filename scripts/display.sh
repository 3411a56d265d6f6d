# Sourced: a virtual screen for windows. Needs $root and the X server Xvfb.

# start_display WIDTHxHEIGHT: starts a screen and puts its name into DISPLAY. It ends with the
# script, or by stop_display.
start_display() {
    local number
    mkdir -p "$root/build"
    exec {display_pipe}<> <(:)
    Xvfb -displayfd "$display_pipe" -screen 0 "$1x24" -nolisten tcp >/dev/null 2>&1 &
    display_process=$!
    trap stop_display EXIT
    if ! read -r -t 30 -u "$display_pipe" number; then
        echo "The virtual screen did not start." >&2
        return 1
    fi
    export DISPLAY=:$number
}

stop_display() {
    if [ -n "${display_process:-}" ]; then
        kill "$display_process" 2>/dev/null || true
        wait "$display_process" 2>/dev/null || true
        display_process=
    fi
}
