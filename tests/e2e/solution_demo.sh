#!/usr/bin/env bash
# The real program plays the first shipped level from its solution replay,
# started by "DEMO_PLAY" in autoexec.vbt: the demo drives the key table through
# the game's own ticks until level 02 loads, in the tick where the headless
# runner says level 01 is completed. The window is then closed like a user
# would. Skipped (77) while the built data has no level 01.
# Arguments: build directory, source directory.
set -uo pipefail
build="$(cd "$1" && pwd)"
source_dir="$(cd "$2" && pwd)"
scratch="$build/test-scratch/e2e_solution_demo"
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1
export ALSOFT_DRIVERS=null LIBGL_ALWAYS_SOFTWARE=1 VANTLE_NO_MESSAGE_BOX=1

fail() {
    echo "FAIL: $*"
    for f in out.txt err.txt sim.txt; do
        [ -f "$f" ] && { echo "--- $f"; tail -40 "$f"; }
    done
    exit 1
}

if [ -z "$(ls "$build/run/data" 2>/dev/null)" ]; then
    echo "SKIP: no game data built in $build/run/data"
    exit 77
fi
ln -s "$build/run/data" data
cp "$source_dir/content/solutions/01.replay" 01.replay || fail "level 01 ships without a solution"

# What the headless runner makes of the solution: the tick in which level 01 ends.
"$build/vantle-sim" 01.replay >sim.txt || fail "vantle-sim could not play the solution"
if ! grep -q '^level 01:' sim.txt; then
    echo "SKIP: the game data has no level 01"
    exit 77
fi
completed="$(sed -n 's/^level 01: completed at tick \([0-9]*\),.*/\1/p' sim.txt)"
[ -n "$completed" ] || fail "the solution does not finish level 01 headless"

printf 'DEMO_PLAY 01.replay\n' >autoexec.vbt
"$build/vantle2" >out.txt 2>err.txt &
pid=$!
for _ in $(seq 1 1800); do
    grep -q '^Demo finished after' out.txt && break
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
done
win="$(xdotool search --all --onlyvisible --pid "$pid" --name Vantle2 2>/dev/null | head -1)"
[ -n "$win" ] && python3 "$source_dir/tests/e2e/tools/x_close_window.py" "$win"
for _ in $(seq 1 300); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
done
kill "$pid" 2>/dev/null && fail "the program did not close with its window"
wait "$pid"
status=$?
[ "$status" -eq 0 ] || fail "exit status $status"

grep -qx 'Playing demo 01.replay' out.txt || fail "the demo did not start from autoexec.vbt"
grep -q '^Level 01: ' out.txt || fail "level 01 was not played"
grep -q '^Level 02: ' out.txt || fail "level 02 did not load"
grep -qx "Demo: level 02 loaded at tick $completed" out.txt ||
    fail "level 02 did not load in tick $completed as vantle-sim says"
grep -q '^Demo finished after' out.txt || fail "the demo did not run to its end"
echo "PASS: level 02 loaded at tick $completed"
