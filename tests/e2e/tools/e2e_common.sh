# Sourced by every end-to-end script. Each script is called with the build directory and the
# source directory, and runs in a scratch folder of its own.

# e2e_begin BUILD SOURCE: sets build, src and scratch (BUILD/test-scratch/<script name>, made
# empty and entered), quiets sound and message boxes, and clears pid.
e2e_begin() {
    build="$(cd "$1" && pwd)"
    src="$(cd "$2" && pwd)"
    scratch="$build/test-scratch/$(basename "$0" .sh)"
    rm -rf "$scratch"
    mkdir -p "$scratch"
    cd "$scratch" || exit 1
    export ALSOFT_DRIVERS=null LIBGL_ALWAYS_SOFTWARE=1 VANTLE_NO_MESSAGE_BOX=1
    pid=""
}

# e2e_need_data: links the built game data into the scratch folder, or skips (77) without it.
e2e_need_data() {
    [ -f "$build/run/data/base.vpk" ] || { echo "SKIP: no game data built in $build/run/data"; exit 77; }
    ln -s "$build/run/data" data
}

# fail MESSAGE: reports the failure with the ends of the scratch folder's logs and config.vbt,
# stops the game if it still runs, and ends the script with status 1.
fail() {
    echo "FAIL: $*"
    for f in *.txt config.vbt; do
        [ -f "$f" ] && { echo "--- $f"; cat -A "$f" | tail -40; }
    done
    [ -n "${pid:-}" ] && kill "$pid" 2>/dev/null
    exit 1
}

# e2e_start [COMMAND...]: starts the game (or COMMAND) in the background with its output in
# out.txt and err.txt; sets pid.
e2e_start() {
    [ $# -gt 0 ] || set -- "$build/vantle2"
    "$@" >out.txt 2>err.txt &
    pid=$!
}

# own_display: starts a private X server and points DISPLAY at it until the script exits, for
# a test that changes the server's own state (its keymap). -noreset: a short-lived client such
# as setxkbmap is otherwise the last one to leave, and the server resets as it goes.
own_display() {
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>display.id 2>/dev/null &
    own_display_pid=$!
    # Waited for, so that the next test's server never meets this one still shutting down.
    trap 'kill "$own_display_pid" 2>/dev/null; wait "$own_display_pid" 2>/dev/null' EXIT
    for _ in $(seq 1 100); do
        [ -s display.id ] && break
        sleep 0.1
    done
    [ -s display.id ] || fail "no X display of its own"
    export DISPLAY=":$(head -n 1 display.id)"
}

# e2e_wait_window [LINE...]: waits up to 60 s for a visible window of the game ($pid) whose
# `xdotool getwindowgeometry --shell` output holds every LINE given (WIDTH=800, X=0, ...);
# sets win and geometry. Fails when the game ends first or no such window appears.
e2e_wait_window() {
    local w line matches
    win=""
    geometry=""
    for _ in $(seq 1 600); do
        kill -0 "$pid" 2>/dev/null || fail "the game ended before showing a window"
        for w in $(xdotool search --all --onlyvisible --pid "$pid" --name 'Vantle2' 2>/dev/null); do
            geometry="$(xdotool getwindowgeometry --shell "$w" 2>/dev/null)"
            matches=1
            for line in "$@"; do
                grep -qx "$line" <<<"$geometry" || matches=0
            done
            [ "$matches" = 1 ] && { win="$w"; return 0; }
        done
        sleep 0.1
    done
    fail "no visible window ${*:-at all}: $geometry"
}

# e2e_centred W H: the window's geometry is W x H, centred on the screen.
e2e_centred() {
    local screen_w screen_h line
    read -r screen_w screen_h < <(xdotool getdisplaygeometry)
    for line in "WIDTH=$1" "HEIGHT=$2" "X=$(((screen_w - $1) / 2))" "Y=$(((screen_h - $2) / 2))"; do
        grep -qx "$line" <<<"$geometry" || fail "not a centred $1x$2 window: $geometry"
    done
}

# wait_line PATTERN SECONDS [COUNT]: waits until COUNT (1) lines of out.txt match PATTERN;
# 1 when the game ($pid) ends first or the time runs out.
wait_line() {
    for _ in $(seq 1 $(($2 * 10))); do
        [ "$(grep -cE "$1" out.txt)" -ge "${3:-1}" ] && return 0
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# e2e_wait_exit [WHEN]: waits up to 60 s for the game ($pid) to end and fails unless it ended
# with status 0; WHEN (" after QUIT") finishes the failure messages.
e2e_wait_exit() {
    local when="${1:-}" status
    for _ in $(seq 1 600); do
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.1
    done
    kill -0 "$pid" 2>/dev/null && fail "the game is still running$when"
    wait "$pid"
    status=$?
    pid=""
    [ "$status" -eq 0 ] || fail "exit status $status$when"
}

# e2e_close_window: asks the game's window ($win) to close as a window manager would and
# expects the game to end with status 0.
e2e_close_window() {
    python3 "$src/tests/e2e/tools/x_close_window.py" "$win" || fail "could not ask the window to close"
    e2e_wait_exit " after its window was closed"
}

# e2e_not_blank NAME MIN: a screenshot of the window ($win) as NAME.png whose grey levels
# spread more than MIN (a blank picture has none).
e2e_not_blank() {
    local spread
    import -window "$win" "$1.png" || fail "no screenshot of $1"
    spread="$(convert "$1.png" -colorspace Gray -format '%[fx:standard_deviation]' info:)"
    awk -v s="$spread" -v min="$2" 'BEGIN { exit !(s > min) }' || fail "$1 is drawn blank ($spread)"
}

# press KEY: one key held long enough for the game's frame step to see it, then released. The
# game samples a key table rather than queueing characters, so a press and its release must not
# both arrive while one slow frame is drawn (software GL on a busy machine); a quarter of a
# second is still short of the keyboard's auto-repeat, and one xdotool holds it so that a slow
# start of a second one cannot stretch it into repeats.
press() {
    xdotool keydown "$1" sleep 0.25 keyup "$1" || fail "xdotool could not press $1"
    sleep 0.1
}

# line_after HEADING [N]: the N-th line (1, the next) after the first line of out.txt equal
# to HEADING.
line_after() {
    awk -v heading="$1" -v n="${2:-1}" 'found && ++seen == n { print; exit } $0 == heading { found = 1 }' out.txt
}
