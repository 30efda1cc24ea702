#!/usr/bin/env bash
# The real program under X: start-up draws the loading box in the top-right
# corner, with its caption and the empty bar, before it runs autoexec.vbt.
# Here autoexec.vbt is a named pipe, so start-up stops in its open with the
# box as the last frame it presented, however slow or busy the machine is.
# The window is read back then and the frame kept as a test artefact; a
# "QUIT" written into the pipe lets start-up finish and the program end.
set -euo pipefail
build="$1"
work="$(mktemp -d)"
pid=""
cleanup() {
    if [ -n "$pid" ]; then
        # An open of the pipe that never got its writer would ignore the polite request.
        kill "$pid" 2>/dev/null || true
        sleep 1
        kill -9 "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    fi
    rm -rf "$work"
}
trap cleanup EXIT

ln -s "$build/run/data" "$work/data"
mkfifo "$work/autoexec.vbt"
(cd "$work" && exec "$build/vantle2" >"$work/log.txt" 2>&1) &
pid=$!
window="$(timeout 60 xdotool search --sync --onlyvisible --name 'Vantle2' | head -1)"
[ -n "$window" ] || { echo "no window"; cat "$work/log.txt"; exit 1; }

# The window is 640 x 480, so the 800 x 600 canvas is scaled by 0.8: the box spans
# (570, 8)-(630, 36), the caption (578, 12)-(622, 20), the faint bar (574, 25)-(626, 31).
pixel() { awk -F'[,:()]' -v x="$1" -v y="$2" '$1 == x && $2 == y { print $4, $5, $6; exit }' "$work/shot.txt"; }
count_lit() {
    awk -F'[,:()]' -v x0="$1" -v x1="$2" -v y0="$3" -v y1="$4" \
        '$1 >= x0 && $1 <= x1 && $2 >= y0 && $2 <= y1 && $4 >= 90 && $5 >= 90 { n++ } END { print n + 0 }' \
        "$work/shot.txt"
}
shows_box() {
    local r g b
    read -r r g b <<<"$(pixel 572 10)"
    [ "$r" -le 8 ] && [ "$g" -le 8 ] && [ "$b" -le 8 ] || return 1
    read -r r g b <<<"$(pixel 600 28)"
    [ "$r" -ge 50 ] && [ "$r" -le 80 ] && [ "$g" -le 8 ] || return 1
    return 0
}
# Start-up is held in the pipe's open; the frame can only change by the box being drawn
# late, so a few tries cover a window that is mapped before its first frame arrives.
found=0
for attempt in $(seq 1 20); do
    if import -window "$window" -depth 8 "$work/shot.ppm" 2>/dev/null &&
        convert "$work/shot.ppm" "$work/shot.txt" && shows_box; then
        found=1
        break
    fi
    sleep 0.5
done
[ "$found" -eq 1 ] || { echo "no loading box in the window"; cat "$work/log.txt"; exit 1; }

# The screenshot is part of the check: a frame that cannot be kept fails the test.
mkdir -p "$build/test-artefacts"
shot="$build/test-artefacts/startup_loading_screen.png"
rm -f "$shot"
convert "$work/shot.ppm" "$shot" || { echo "screenshot not written"; exit 1; }
[ -s "$shot" ] || { echo "empty screenshot"; exit 1; }

# Caption pixels: bright and grey, in the caption's rows and nowhere else in the box.
lit="$(count_lit 576 624 11 21)"
[ "$lit" -ge 20 ] || { echo "no caption: $lit lit pixels"; exit 1; }
stray="$(count_lit 566 634 22 40)"
[ "$stray" -eq 0 ] || { echo "$stray lit pixels under the caption"; exit 1; }
grep -q 'Initialising OpenGL:' "$work/log.txt" || { echo "no start-up log"; cat "$work/log.txt"; exit 1; }

# Start-up goes on once autoexec.vbt can be read, and the script's "QUIT" ends the run.
echo "QUIT" >"$work/autoexec.vbt"
for _ in $(seq 1 120); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.5
done
if kill -0 "$pid" 2>/dev/null; then
    echo "the program did not end after QUIT from autoexec.vbt"
    exit 1
fi
status=0
wait "$pid" || status=$?
pid=""
[ "$status" -eq 0 ] || { echo "exit status $status"; cat "$work/log.txt"; exit 1; }
grep -q "Script 'autoexec.vbt' completed successfully" "$work/log.txt" ||
    { echo "autoexec.vbt did not run"; cat "$work/log.txt"; exit 1; }
echo "loading screen ok ($lit caption pixels, frame $attempt)"
