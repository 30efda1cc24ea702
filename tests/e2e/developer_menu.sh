#!/usr/bin/env bash
# The developer menu in the real program under X: a right click in the window
# opens it below the pointer, a left click on "Quit to desktop" ends the run
# the way QUIT does (exit status 0, config.vbt written). A right drag first
# opens nothing, so a left click where that item would stand ends nothing.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_developer_menu "$1" "$2"
# shellcheck source=tools/own_display.sh
. "$src/tests/e2e/tools/own_display.sh"

own_display "$scratch" || fail "no X display of its own"
"$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_window
sleep 1
xdotool windowfocus --sync "$win" 2>/dev/null || xdotool windowfocus "$win"

# Window pixels from the virtual 800 x 600 screen (the window is 640 x 480).
at() {
    xdotool mousemove --window "$win" "$(($1 * 4 / 5))" "$(($2 * 4 / 5))"
    sleep 0.2
}
# Buttons are held across several 20 ms ticks (and slow frames): the game samples the button
# state once a tick.
button() {
    xdotool mousedown "$1"
    sleep 0.3
    xdotool mouseup "$1"
    sleep 0.3
}

# A right drag is the camera's: it opens no menu, so a left click where the last item would
# stand does nothing.
at 400 300
xdotool mousedown 3
sleep 0.3
for x in 420 440 460 480 500; do
    at "$x" 300
done
xdotool mouseup 3
sleep 0.3
at 450 392
button 1
sleep 0.3
kill -0 "$pid" 2>/dev/null || fail "the run ended without a menu"

# A right click opens the menu 10 units below the pointer: its items are 15 units tall, the
# sixth, "Quit to desktop", from 75 to 90 below the box's top.
at 400 300
button 3
at 450 392
button 1

e2e_wait_exit " after choosing Quit to desktop"
[ -f config.vbt ] || fail "config.vbt was not written"
echo "PASS"
