#!/usr/bin/env bash
# The console panel in the real program under X: the key left of "1" slides it
# down over the title scene, darkening it down to canvas row 242 with the
# start-up log written in it and ending at the grey rule on window row 194
# (640 x 480); the frame is kept as a test artefact. The same key slides it
# away again.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_console_panel "$1" "$2"
# shellcheck source=tools/own_display.sh
. "$src/tests/e2e/tools/own_display.sh"

# The console's state in the window now, as tools/console_shot.py sees it ("open ...",
# "closed ..." or "between ..."); the picture is left in shot.ppm.
panel_state() {
    import -window "$win" -depth 8 shot.ppm 2>/dev/null || { echo "none"; return; }
    python3 "$src/tests/e2e/tools/console_shot.py" shot.ppm
}

# Looks for up to 10 s until the panel is in state $1; leaves the last answer in $state.
wait_panel() {
    for _ in $(seq 1 40); do
        state="$(panel_state)"
        [ "${state%% *}" = "$1" ] && return 0
        sleep 0.25
    done
    return 1
}

own_display "$scratch" || fail "no X display of its own"
ln -s "$build/run/data" data
"$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_window WIDTH=640 HEIGHT=480
wait_line '^Title menu$' 30 || fail "the title menu did not start"
sleep 1
wait_panel closed || fail "the title does not show without the console: $state"

xdotool windowfocus --sync "$win" 2>/dev/null || xdotool windowfocus "$win"
sleep 0.3
press grave
wait_panel open || fail "the console key did not bring the panel down: $state"
# The slide takes five ticks; once it is over the panel must still end at the rule.
sleep 0.5
state="$(panel_state)"
[ "${state%% *}" = open ] || fail "the panel moved on after the slide: $state"
mkdir -p "$build/test-artefacts"
convert shot.ppm "$build/test-artefacts/console_open_program.png" || fail "screenshot not written"
open_state="$state"

press grave
wait_panel closed || fail "the console stayed down after the console key: $state"
e2e_close_window
echo "PASS ($open_state)"
