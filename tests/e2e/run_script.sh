#!/usr/bin/env bash
# scripts/run.sh as a player uses it: it brings the build up to date, assembles build/run and
# starts the game there; the window carries the title with the trade-mark sign, the loop
# runs until the window is closed, and config.vbt is written into build/run.
# Only meaningful for the build directory run.sh itself uses (<source>/build); any other
# build directory skips (exit 77). Whatever build/run held before is put back afterwards.
# Arguments: build directory, source directory.
set -uo pipefail
build="$(cd "$1" && pwd)"
src="$(cd "$2" && pwd)"
if [ "$build" != "$src/build" ]; then
    echo "skipped: run.sh builds $src/build, the tests run in $build"
    exit 77
fi
scratch="$build/test-scratch/e2e_run_script"
rm -rf "$scratch"
mkdir -p "$scratch/saved"
run="$build/run"
export ALSOFT_DRIVERS=null LIBGL_ALWAYS_SOFTWARE=1 VANTLE_NO_MESSAGE_BOX=1
pid=""

for f in config.vbt autoexec.vbt; do
    [ -f "$run/$f" ] && cp -p "$run/$f" "$scratch/saved/$f"
done
restore() {
    [ -n "$pid" ] && kill "$pid" 2>/dev/null
    rm -f "$run/config.vbt" "$run/autoexec.vbt"
    cp -p "$scratch/saved/"* "$run/" 2>/dev/null
}
trap restore EXIT

# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
# Its own fail: the game's output lies in the scratch folder, not the working directory, and the
# restore trap stops the game.
fail() {
    echo "FAIL: $*"
    for f in "$scratch/out.txt" "$scratch/err.txt"; do
        [ -f "$f" ] && { echo "--- $f"; tail -40 "$f"; }
    done
    exit 1
}

# A fresh run directory as a new player has it: no config.vbt, the shipped autoexec.vbt.
rm -f "$run/config.vbt" "$run/autoexec.vbt"
bash "$src/scripts/run.sh" >"$scratch/out.txt" 2>"$scratch/err.txt" &
pid=$!
win=""
for _ in $(seq 1 3000); do
    win="$(xdotool search --all --onlyvisible --pid "$pid" --name 'Vantle2' 2>/dev/null | head -1)"
    [ -n "$win" ] && break
    kill -0 "$pid" 2>/dev/null || fail "run.sh ended before a window appeared"
    sleep 0.1
done
[ -n "$win" ] || fail "no window appeared"

# run.sh hands its process over to the game, whose working directory is build/run.
[ "$(readlink "/proc/$pid/exe")" = "$build/vantle2" ] || fail "the process is not build/vantle2"
[ "$(readlink "/proc/$pid/cwd")" = "$run" ] || fail "the game does not run in build/run"
title="$(xprop -id "$win" _NET_WM_NAME)"
[ "$title" = "_NET_WM_NAME(UTF8_STRING) = \"Vantle2™\"" ] || fail "window title: $title"
[ -f "$run/data/base.vpk" ] || fail "build/run/data holds no packages"
cmp -s "$run/autoexec.vbt" "$src/run/autoexec.vbt" || fail "build/run lacks the shipped autoexec.vbt"
# The window opens before autoexec.vbt runs: wait for its line.
for _ in $(seq 1 300); do
    grep -qx "Script 'autoexec.vbt' completed successfully" "$scratch/out.txt" && break
    sleep 0.1
done
grep -qx "Script 'autoexec.vbt' completed successfully" "$scratch/out.txt" ||
    fail "the shipped autoexec.vbt did not run"

# The loop keeps running until the player closes the window.
sleep 2
kill -0 "$pid" 2>/dev/null || fail "the game ended without being closed"
e2e_close_window
head -c 9 "$run/config.vbt" | grep -qx '//\*\*\*\*\*\*\*' || fail "no config.vbt written into build/run"
echo "run.sh: built, started the game in build/run, closed by the user"
