#!/usr/bin/env bash
# The real program plays the first shipped level from its solution replay, started by
# "DEMO_PLAY" in autoexec.vbt: the level is drawn (not blank), the demo drives the key table
# through the game's own ticks until level 02 loads, in the tick where the headless runner
# (vantle-sim, from the command line) says level 01 is completed, and config.vbt at exit holds
# the high score the runner says the level earned. The window is then closed like a user would.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
e2e_need_data
cp "$src/content/solutions/01.replay" 01.replay || fail "level 01 ships without a solution"

"$build/vantle-sim" 01.replay >sim.txt || fail "vantle-sim could not play the solution"
read -r completed score < <(sed -n 's/^level 01: completed at tick \([0-9]*\), score \([0-9]*\),.*/\1 \2/p' sim.txt)
[ -n "$completed" ] || fail "the solution does not finish level 01 headless"

printf 'DEMO_PLAY 01.replay\n' >autoexec.vbt
e2e_start
wait_line '^Level 01: ' 60 || fail "the demo did not start level 01"
e2e_wait_window
sleep 2
e2e_not_blank level01 0.05
wait_line '^Demo finished after' 300 || fail "the demo did not run to its end"
e2e_close_window

grep -qx 'Playing demo 01.replay' out.txt || fail "the demo did not start from autoexec.vbt"
grep -qx "Demo: level 02 loaded at tick $completed" out.txt ||
    fail "level 02 did not load in tick $completed as vantle-sim says"
grep -qx "HIGHSCORE $score"$'\r' config.vbt || fail "config.vbt lacks the high score $score"
echo "PASS: level 02 loaded at tick $completed"
