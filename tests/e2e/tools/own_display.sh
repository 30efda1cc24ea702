# Sourced by end-to-end scripts that send real keys and clicks. X delivers them
# to whichever window has the focus or lies under the pointer, and every game
# window opens centred in the same place, so on a display shared with other
# tests running at the same time one test's input would reach another's game.
# own_display starts a private X server (the server picks a free display
# number itself) and points DISPLAY at it; it is stopped when the script exits.
# Argument: a scratch directory for the server's files.
own_display() {
    local dir="$1"
    rm -f "$dir/display"
    # -noreset: a short-lived client such as setxkbmap is otherwise the last one to leave, and
    # the server resets as it goes, keymap included.
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$dir/display" 2>"$dir/xvfb.txt" &
    own_display_pid=$!
    # Waited for, so that the next test's server never meets this one still shutting down.
    trap 'kill "$own_display_pid" 2>/dev/null; wait "$own_display_pid" 2>/dev/null' EXIT
    for _ in $(seq 1 100); do
        [ -s "$dir/display" ] && break
        sleep 0.1
    done
    [ -s "$dir/display" ] || return 1
    export DISPLAY=":$(head -n 1 "$dir/display")"
}
