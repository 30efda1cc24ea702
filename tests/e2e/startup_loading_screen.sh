#!/usr/bin/env bash
# The real program under X: start-up draws the loading box in the top-right corner, with its
# caption over the empty bar, before it runs autoexec.vbt. Here autoexec.vbt is a named pipe,
# so start-up stops in its open with the box as the last frame it presented, however slow or
# busy the machine is. The frame is read back then and kept as a test artefact; a "QUIT"
# written into the pipe lets start-up finish and the program end.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
e2e_need_data
mkfifo autoexec.vbt
# An open of the pipe that never got its writer would ignore a polite kill.
trap '[ -n "$pid" ] && kill -9 "$pid" 2>/dev/null' EXIT
e2e_start
e2e_wait_window

# The window is 640 x 480, so the 800 x 600 canvas is scaled by 0.8: the box spans
# (570, 8)-(630, 36), the caption (578, 12)-(622, 20), the faint red bar (574, 25)-(626, 31).
pixel() { awk -F'[,:()]' -v x="$1" -v y="$2" '$1 == x && $2 == y { print $4, $5, $6; exit }' shot.txt; }
shows_box() {
    local r g b
    read -r r g b <<<"$(pixel 572 10)"
    [ "$r" -le 8 ] && [ "$g" -le 8 ] && [ "$b" -le 8 ] || return 1
    read -r r g b <<<"$(pixel 600 28)"
    [ "$r" -ge 50 ] && [ "$r" -le 80 ] && [ "$g" -le 8 ]
}
# The frame can only change by the box being drawn late: a few tries cover a window that is
# mapped before its first frame arrives.
for attempt in $(seq 1 20); do
    import -window "$win" -depth 8 shot.ppm 2>/dev/null && convert shot.ppm shot.txt && shows_box && break
    [ "$attempt" -eq 20 ] && fail "no loading box in the window"
    sleep 0.5
done
# The caption: bright grey pixels in its rows.
lit="$(awk -F'[,:()]' '$1 >= 576 && $1 <= 624 && $2 >= 11 && $2 <= 21 && $4 >= 90 && $5 >= 90 { n++ } END { print n + 0 }' shot.txt)"
[ "$lit" -ge 20 ] || fail "no caption: $lit lit pixels"
mkdir -p "$build/test-artefacts"
convert shot.ppm "$build/test-artefacts/startup_loading_screen.png" || fail "screenshot not written"

echo "QUIT" >autoexec.vbt
e2e_wait_exit " after QUIT from autoexec.vbt"
grep -qx "Script 'autoexec.vbt' completed successfully" out.txt || fail "autoexec.vbt did not run"
echo "PASS ($lit caption pixels, frame $attempt)"
