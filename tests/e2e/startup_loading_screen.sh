#!/usr/bin/env bash
# The real program under X: start-up draws the loading box in the top-right
# corner, with its caption and the empty bar, before the first scene is drawn.
# The window is read back over and over from the moment it appears until a
# frame shows the box (start-up is still loading then), and that frame is kept
# as a test artefact. autoexec.vbt is a named pipe: start-up reads it after the
# box is drawn and waits there until the test has looked, since the title menu
# draws over the box as soon as start-up is done.
set -euo pipefail
build="$1"
work="$(mktemp -d)"
pid=""
release() {
    # Opening the pipe for writing lets the waiting start-up read an empty script and go on.
    [ -p "$work/autoexec.vbt" ] && timeout 5 sh -c ": >'$work/autoexec.vbt'" || true
}
cleanup() {
    release
    if [ -n "$pid" ]; then kill "$pid" 2>/dev/null || true; wait "$pid" 2>/dev/null || true; fi
    rm -rf "$work"
}
trap cleanup EXIT

ln -s "$build/run/data" "$work/data"
mkfifo "$work/autoexec.vbt"
(cd "$work" && exec "$build/vantle2" >"$work/log.txt" 2>&1) &
pid=$!
window="$(timeout 20 xdotool search --sync --onlyvisible --name 'Vantle2' | head -1)"
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
found=0
for attempt in $(seq 1 100); do
    import -window "$window" -depth 8 "$work/shot.txt" 2>/dev/null || continue
    if shows_box; then found=1; break; fi
    sleep 0.05
done
[ "$found" -eq 1 ] || { echo "no loading box in any frame"; exit 1; }
release
# The screenshot is part of the check: a frame that cannot be kept fails the test.
mkdir -p "$build/test-artefacts"
shot="$build/test-artefacts/startup_loading_screen.png"
rm -f "$shot"
convert "$work/shot.txt" "$shot" || { echo "screenshot not written"; exit 1; }
[ -s "$shot" ] || { echo "empty screenshot"; exit 1; }

# Caption pixels: bright and grey, in the caption's rows and nowhere else in the box.
lit="$(count_lit 576 624 11 21)"
[ "$lit" -ge 20 ] || { echo "no caption: $lit lit pixels"; exit 1; }
stray="$(count_lit 566 634 22 40)"
[ "$stray" -eq 0 ] || { echo "$stray lit pixels under the caption"; exit 1; }
grep -q 'Initialising OpenGL:' "$work/log.txt" || { echo "no start-up log"; cat "$work/log.txt"; exit 1; }
echo "loading screen ok ($lit caption pixels, frame $attempt)"
