#!/usr/bin/env bash
# scripts/run.sh as a player uses it: it brings the build up to date, assembles build/run and
# hands its process over to the game there; the window carries the title with the trade-mark
# sign, the shipped autoexec.vbt runs, the loop runs until the window is closed, and config.vbt
# is written into build/run.
# Only meaningful for the build directory run.sh itself uses (<source>/build); any other
# build directory skips (exit 77). Whatever build/run held before is put back afterwards.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
[ "$build" = "$src/build" ] || { echo "SKIP: run.sh builds $src/build, the tests run in $build"; exit 77; }
run="$build/run"
mkdir saved
for f in config.vbt autoexec.vbt; do
    [ -f "$run/$f" ] && mv "$run/$f" saved/
done
trap '[ -n "$pid" ] && kill "$pid" 2>/dev/null; rm -f "$run/config.vbt" "$run/autoexec.vbt"; cp -p saved/* "$run/" 2>/dev/null' EXIT

# A fresh run directory as a new player has it: no config.vbt, the shipped autoexec.vbt.
e2e_start bash "$src/scripts/run.sh"
for _ in $(seq 1 3000); do
    [ "$(readlink "/proc/$pid/exe")" = "$build/vantle2" ] && break
    kill -0 "$pid" 2>/dev/null || fail "run.sh ended without starting build/vantle2"
    sleep 0.1
done
e2e_wait_window
[ "$(readlink "/proc/$pid/cwd")" = "$run" ] || fail "the game does not run in build/run"
title="$(xprop -id "$win" _NET_WM_NAME)"
[ "$title" = "_NET_WM_NAME(UTF8_STRING) = \"Vantle2™\"" ] || fail "window title: $title"
[ -f "$run/data/base.vpk" ] || fail "build/run/data holds no packages"
cmp -s "$run/autoexec.vbt" "$src/run/autoexec.vbt" || fail "build/run lacks the shipped autoexec.vbt"
wait_line "^Script 'autoexec.vbt' completed successfully$" 30 || fail "the shipped autoexec.vbt did not run"

# The loop keeps running until the player closes the window.
sleep 2
kill -0 "$pid" 2>/dev/null || fail "the game ended without being closed"
e2e_close_window
head -c 9 "$run/config.vbt" | grep -qx '//\*\*\*\*\*\*\*' || fail "no config.vbt written into build/run"
echo "PASS"
