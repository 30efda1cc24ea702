#!/usr/bin/env bash
# The real program with the shipped data, from the won closing scene to a level: a replay that
# starts past the last level ends the game won at once ("levels\done.vlc"). The scene is drawn
# (not blank) and ignores Escape; after its first second a key brings the title menu back,
# drawn too; a key there starts level 01, drawn unlike the title.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
e2e_need_data

printf 'vantle2-replay 1\nlevel 99\nlives 3\nscore 0\nhighscore 0\nrand 1\ndebug 0\nticks 50\n' >won.replay
printf 'DEMO_PLAY won.replay\n' >autoexec.vbt
e2e_start
wait_line '^Closing scene levels\\done\.vlc$' 60 || fail "no closing scene"
e2e_wait_window
xdotool windowfocus --sync "$win" 2>/dev/null
titles="$(grep -c '^Title menu$' out.txt)"
press Escape
sleep 1.5
[ "$(grep -c '^Title menu$' out.txt)" -eq "$titles" ] || fail "Escape left the closing scene"
e2e_not_blank scene 0.02

press Return
wait_line '^Title menu$' 30 $((titles + 1)) || fail "a key did not bring the title back"
# The title takes no key in its first second.
sleep 1.5
e2e_not_blank title 0.05
press Return
wait_line '^Level 01: ' 60 || fail "the key did not start level 01"
sleep 1.5
e2e_not_blank game 0.02
[ "$(compare -metric AE title.png game.png null: 2>&1)" != "0" ] || fail "the game looks like the title"
e2e_close_window
echo "PASS"
