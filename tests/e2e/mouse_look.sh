#!/usr/bin/env bash
# Real mouse input through the X server over the title scene: a right drag of 100 pixels
# left and 48 down turns the mouse camera (yaw +25, pitch +12) at the start of a tick, but
# the title's own update comes later in the same tick and puts its camera back, so
# config.vbt at exit holds the title's camera exactly. A mouse camera run after the scene
# update, or a scene update skipped on ticks with mouse input, shows here.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_mouse_look "$1" "$2"

"$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_window

# Each step waits well over one 20 ms tick, so every tick sees the state it should.
xdotool mousemove --window "$win" 400 240 && sleep 0.3
xdotool mousedown 3 && sleep 0.3
xdotool mousemove --window "$win" 300 288 && sleep 0.3
xdotool mouseup 3 && sleep 0.3
# Moving without a button must not turn the camera any further.
xdotool mousemove --window "$win" 100 100 && sleep 0.3

e2e_close_window
grep -qx $'CAMERA_ROT 4.60,180.00,0.00\r' config.vbt || fail "the drag turned the title's camera"
grep -qx $'CAMERA_POS 5.90,48.00,660.50\r' config.vbt || fail "the drag moved the title's camera"
echo "PASS"
