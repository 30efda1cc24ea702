#!/usr/bin/env bash
# Full screen in a mode the display offers (the virtual screen's own 1280x1024): the window
# covers the screen from (0, 0); Alt+Enter through the X server leaves full screen, snaps
# the size by its width to 1280x960 and opens that as a centred window; config.vbt at exit
# records it, windowed.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_full_screen "$1" "$2"

read -r screen_w screen_h < <(xdotool getdisplaygeometry)
# Widths above 1152 snap to 1280x960, which must fit on the screen.
[ "$screen_w" -gt 1152 ] && [ "$screen_h" -ge 960 ] || fail "the screen is too small: ${screen_w}x$screen_h"
printf 'VID_FULL 1\r\nVID_SIZE %d,%d\r\n' "$screen_w" "$screen_h" >config.vbt
"$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_window X=0 Y=0 "WIDTH=$screen_w" "HEIGHT=$screen_h"

xdotool mousemove --window "$win" 300 200 && sleep 0.3
xdotool keydown Alt_L && sleep 0.1
xdotool keydown Return && sleep 0.05
xdotool keyup Return
xdotool keyup Alt_L
e2e_wait_window "X=$(((screen_w - 1280) / 2))" "Y=$(((screen_h - 960) / 2))" WIDTH=1280 HEIGHT=960

e2e_close_window
grep -q 'ERROR' err.txt && fail "an error box was shown"
grep -qx $'VID_FULL 0\r' config.vbt || fail "config.vbt does not record windowed mode"
grep -qx $'VID_SIZE 1280,960\r' config.vbt || fail "config.vbt lacks the snapped size"
echo "PASS"
