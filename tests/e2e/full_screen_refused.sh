#!/usr/bin/env bash
# A full-screen mode the display does not offer: config.vbt asks for 1000x700 full screen
# (the virtual screen has only its own mode), the game opens a centred 1000x700 window
# instead without any error box, and config.vbt at exit records windowed mode.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_full_screen_refused "$1" "$2"

printf 'VID_FULL 1\r\nVID_SIZE 1000,700\r\n' >config.vbt
"$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_window
geometry="$(xdotool getwindowgeometry --shell "$win")"
read -r screen_w screen_h < <(xdotool getdisplaygeometry)
for line in "WIDTH=1000" "HEIGHT=700" "X=$(((screen_w - 1000) / 2))" "Y=$(((screen_h - 700) / 2))"; do
    echo "$geometry" | grep -qx "$line" || fail "expected $line: $geometry"
done

e2e_close_window
grep -q 'ERROR' err.txt && fail "an error box was shown"
grep -qx $'VID_FULL 0\r' config.vbt || fail "config.vbt does not record windowed mode"
grep -qx $'VID_SIZE 1000,700\r' config.vbt || fail "config.vbt lost the size"
echo "PASS"
