#!/usr/bin/env bash
# The real program with the shipped data opens on the title menu, draws it
# (a screenshot that is not blank), and a held key after the first second
# starts the game: level 01 when the data has it, else the won closing scene at
# once. A key in the closing scene brings the title back.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_title_to_game "$1" "$2"
ln -s "$build/run/data" data
printf 'VID_SIZE 800 600\n' >config.vbt

# A held key: the key table is read once per tick, so a tap shorter than a tick could be lost.
press() {
    xdotool keydown "$1" && sleep 0.3 && xdotool keyup "$1"
}

# Standard deviation of the window's pixels (0 for a blank picture).
spread() {
    convert "$1" -colorspace Gray -format '%[fx:standard_deviation]' info:
}

"$build/vantle2" >out.txt 2>err.txt &
pid=$!
wait_line '^Title menu$' 60 || fail "no title menu"
e2e_wait_window
xdotool windowfocus --sync "$win" 2>/dev/null
sleep 1.5
import -window "$win" title.png || fail "no screenshot of the title"
awk -v s="$(spread title.png)" 'BEGIN { exit !(s > 0.05) }' || fail "the title screen is blank"

press Return
if [ -n "$(find -L data -iname 'levels.vpk' -o -ipath '*levels/01.vlc' | head -1)" ]; then
    wait_line '^Level 01: ' 60 || fail "the key did not start level 01"
else
    wait_line '^Closing scene levels\\done\.vlc$' 60 || fail "the key did not start the game"
fi
sleep 1.5
import -window "$win" game.png || fail "no screenshot of the game"
awk -v s="$(spread game.png)" 'BEGIN { exit !(s > 0.02) }' || fail "the game screen is blank"
[ "$(compare -metric AE title.png game.png null: 2>&1)" != "0" ] || fail "the game looks like the title"

# Without levels the game ended at once: after its first second a key returns to the title.
if grep -q '^Closing scene' out.txt; then
    sleep 1
    press space
    for _ in $(seq 1 100); do
        [ "$(grep -c '^Title menu$' out.txt)" -ge 2 ] && break
        sleep 0.1
    done
    [ "$(grep -c '^Title menu$' out.txt)" -ge 2 ] || fail "the closing scene did not return to the title"
fi

kill -TERM "$pid"
wait "$pid"
echo "PASS"
