#!/usr/bin/env bash
# The real program under X, driven by real key presses in its window: the key left of "1"
# opens the console, "HIGHSCORE 777" is typed (capitals with Shift held) and entered, then
# "QUIT" and Enter end the run. The program exits with 0, echoed the typed line to its log and
# wrote the new high score as the last of config.vbt's own lines, followed only by the
# VID_ASPECT 1 that a first run (no config.vbt before it) starts with.
# A second run with the server's keymap set to the United Kingdom layout ("gb"): the same key
# still opens the console (as the UK board's own key code), and the line goes on with Shift+'
# and Shift+3, which a UK board types as "@" and the pound sign.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
# The keymap is the server's: a private server keeps it from other tests.
own_display

shifted() {
    xdotool keydown Shift_L && sleep 0.1
    press "$1"
    xdotool keyup Shift_L && sleep 0.1
}

# Types text with the X key names of its characters; capitals hold Shift.
type_text() {
    local text="$1" c
    for ((i = 0; i < ${#text}; i++)); do
        c="${text:i:1}"
        case "$c" in
            " ") press space ;;
            [A-Z]) shifted "${c,,}" ;;
            *) press "$c" ;;
        esac
    done
}

for keymap in us gb; do
    rm -f config.vbt
    # The game reads the layout when its window opens, so it is set before the start.
    setxkbmap -layout "$keymap" || fail "setxkbmap could not set the $keymap layout"
    e2e_start
    e2e_wait_window
    # Start-up is over once the frame loop runs; give it a moment, then take the keyboard.
    sleep 1
    xdotool windowfocus --sync "$win" 2>/dev/null || xdotool windowfocus "$win"
    sleep 0.3
    press grave
    type_text "HIGHSCORE 777"
    expected="HIGHSCORE 777"
    if [ "$keymap" = gb ]; then
        press space
        shifted apostrophe
        shifted 3
        expected=$'HIGHSCORE 777 @\xA3'
    fi
    press Return
    type_text "QUIT"
    press Return
    e2e_wait_exit " after QUIT ($keymap)"
    LC_ALL=C grep -qxF "$expected" out.txt || fail "$keymap: the entered line was not logged as '$expected'"
    grep -qx "QUIT" out.txt || fail "$keymap: QUIT was not logged"
    last="$(tail -n 2 config.vbt | tr -d '\r' | paste -sd '|')"
    [ "$last" = "HIGHSCORE 777|VID_ASPECT 1" ] || fail "$keymap: config.vbt ends with '$last'"
done
echo "PASS"
