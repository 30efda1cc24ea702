#!/usr/bin/env bash
# Alt+Enter through the X server: a 700x500 window from config.vbt becomes a centred 800x600
# window (the virtual screen refuses that full-screen mode, so the toggle ends windowed);
# held down, the keys re-create the window pass after pass; config.vbt at exit records the
# snapped size, windowed.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_alt_enter "$1" "$2"

printf 'VID_SIZE 700,500\r\n' >config.vbt
"$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_window WIDTH=700 HEIGHT=500
first="$win"
xdotool mousemove --window "$win" 350 250 && sleep 0.3
xdotool keydown Alt_L && sleep 0.1
xdotool keydown Return && sleep 0.3
xdotool keyup Return && sleep 0.1
xdotool keyup Alt_L
e2e_wait_window WIDTH=800 HEIGHT=600
[ "$win" != "$first" ] || fail "the window was not created again"
read -r screen_w screen_h < <(xdotool getdisplaygeometry)
echo "$geometry" | grep -qx "X=$(((screen_w - 800) / 2))" || fail "not centred: $geometry"
echo "$geometry" | grep -qx "Y=$(((screen_h - 600) / 2))" || fail "not centred: $geometry"
# Only one window of the game is left.
[ "$(xdotool search --all --pid "$pid" --name 'Vantle2' 2>/dev/null | wc -l)" -eq 1 ] ||
    fail "old windows were left behind"

# Held, the keys toggle again on every pass: one window after another while they stay down.
xdotool mousemove --window "$win" 400 300 && sleep 0.3
xdotool keydown Alt_L && sleep 0.1
xdotool keydown Return
: >ids.txt
end=$((SECONDS + 2))
while [ "$SECONDS" -lt "$end" ]; do
    xdotool search --all --pid "$pid" --name 'Vantle2' >>ids.txt 2>/dev/null
done
xdotool keyup Return && sleep 0.1
xdotool keyup Alt_L
windows="$(sort -u ids.txt | wc -l)"
[ "$windows" -ge 3 ] || fail "holding Alt+Enter made $windows windows, not one after another"
e2e_wait_window WIDTH=800 HEIGHT=600

e2e_close_window
grep -qx $'VID_SIZE 800,600\r' config.vbt || fail "config.vbt lacks the snapped size"
grep -qx $'VID_FULL 0\r' config.vbt || fail "config.vbt does not record a window"
echo "PASS"
