#!/usr/bin/env bash
# The real program plays level 01 of the shipped data from its solution replay
# (DEMO_PLAY in autoexec.vbt), draws it (a screenshot that is not blank and not
# the title) and reaches level 02. Skipped (77) while the data has no level 01.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_demo_level_one "$1" "$2"
solution="$src/content/solutions/01.replay"
if [ ! -f "$solution" ] || [ -z "$(find -L "$build/run/data" -iname 'levels.vpk' -o -ipath '*levels/01.vlc' | head -1)" ]; then
    echo "SKIP: no level 01 or no solution for it"
    exit 77
fi
ln -s "$build/run/data" data
printf 'VID_SIZE 800 600\n' >config.vbt
printf 'DEMO_PLAY %s\n' "$solution" >autoexec.vbt

"$build/vantle2" >out.txt 2>err.txt &
pid=$!
wait_line '^Level 01: ' 60 || fail "the demo did not start level 01"
grep -q '^Playing demo ' out.txt || fail "no demo line"
win="$(xdotool search --all --onlyvisible --pid "$pid" --name 'Vantle2' 2>/dev/null | head -1)"
[ -n "$win" ] || fail "no window"
sleep 2
import -window "$win" level01.png || fail "no screenshot"
spread="$(convert level01.png -colorspace Gray -format '%[fx:standard_deviation]' info:)"
awk -v s="$spread" 'BEGIN { exit !(s > 0.05) }' || fail "level 01 is drawn blank"
# The solution finishes the level: the tally runs and the next level loads.
wait_line '^Level 02: ' 300 || fail "the solution did not reach level 02"
kill -TERM "$pid"
wait "$pid"
echo "PASS"
