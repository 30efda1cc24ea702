# Sourced by end-to-end scripts that run the game in a scratch folder of their own.
# e2e_begin NAME BUILD SOURCE: sets build, src and scratch (BUILD/test-scratch/NAME, made
# empty and entered), quiets sound and message boxes, and clears pid.
e2e_begin() {
    build="$(cd "$2" && pwd)"
    src="$(cd "$3" && pwd)"
    scratch="$build/test-scratch/$1"
    rm -rf "$scratch"
    mkdir -p "$scratch"
    cd "$scratch" || exit 1
    export ALSOFT_DRIVERS=null LIBGL_ALWAYS_SOFTWARE=1 VANTLE_NO_MESSAGE_BOX=1
    pid=""
}

# fail MESSAGE: reports the failure with the ends of the game's output and config.vbt,
# stops the game if it still runs, and ends the script with status 1.
fail() {
    echo "FAIL: $*"
    for f in out.txt err.txt config.vbt; do
        [ -f "$f" ] && { echo "--- $f"; cat -A "$f" | tail -40; }
    done
    [ -n "${pid:-}" ] && kill "$pid" 2>/dev/null
    exit 1
}

# e2e_wait_window [LINE...]: waits up to 30 s for a visible window of the game ($pid) whose
# `xdotool getwindowgeometry --shell` output holds every LINE given (WIDTH=800, X=0, ...);
# sets win and geometry. Fails when the game ends first or no such window appears.
e2e_wait_window() {
    local w line matches
    win=""
    geometry=""
    for _ in $(seq 1 300); do
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

# wait_line PATTERN SECONDS: waits for a line of out.txt matching PATTERN; 1 when the game
# ($pid) ends first or the time runs out.
wait_line() {
    for _ in $(seq 1 $(($2 * 10))); do
        grep -qE "$1" out.txt && return 0
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# e2e_wait_exit [WHEN]: waits up to 30 s for the game ($pid) to end and fails unless it ended
# with status 0; WHEN (" after QUIT") finishes the failure messages.
e2e_wait_exit() {
    local when="${1:-}" status
    for _ in $(seq 1 300); do
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

# press KEY: one key held long enough for the game's frame step to see it, then released. The
# game samples a key table rather than queueing characters, so a press and its release must not
# both arrive while one slow frame is drawn (software GL on a busy machine); a quarter of a
# second is still short of the keyboard's auto-repeat.
press() {
    xdotool keydown "$1" || fail "xdotool could not press $1"
    sleep 0.25
    xdotool keyup "$1"
    sleep 0.1
}
