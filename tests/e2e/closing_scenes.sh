#!/usr/bin/env bash
# Both closing scenes in the real program, each reached through the rules from
# a replay that starts there: a level past the last one ends the game won
# ("levels\done.vlc"), no lives left ends it lost ("levels\end.vlc"). Each is
# drawn (not blank), ignores Escape, and after its first second a key brings
# the title menu back.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_closing_scenes "$1" "$2"
ln -s "$build/run/data" data
printf 'VID_SIZE 800 600\n' >config.vbt

count() {
    grep -cE "$1" out.txt
}

# Waits up to $3 seconds until the pattern $1 has matched $2 lines of out.txt.
wait_count() {
    for _ in $(seq 1 $(($3 * 10))); do
        [ "$(count "$1")" -ge "$2" ] && return 0
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

press() {
    xdotool keydown "$1" && sleep 0.3 && xdotool keyup "$1"
}

# scene <name> <level> <lives> <scene file>
scene() {
    printf 'vantle2-replay 1\nlevel %s\nlives %s\nscore 0\nhighscore 0\nrand 1\ndebug 0\nticks 50\n' \
        "$2" "$3" >"$1.replay"
    printf 'DEMO_PLAY %s.replay\n' "$1" >autoexec.vbt
    "$build/vantle2" >out.txt 2>err.txt &
    pid=$!
    wait_count "^Closing scene levels\\\\$4\$" 1 60 || fail "$1: no closing scene $4"
    local win
    win="$(xdotool search --all --onlyvisible --pid "$pid" --name 'Vantle2' 2>/dev/null | head -1)"
    [ -n "$win" ] || fail "$1: no window"
    xdotool windowfocus --sync "$win" 2>/dev/null
    local titles
    titles="$(count '^Title menu$')"
    press Escape
    sleep 1.5
    [ "$(count '^Title menu$')" -eq "$titles" ] || fail "$1: Escape left the closing scene"
    import -window "$win" "$1.png" || fail "$1: no screenshot"
    local spread
    spread="$(convert "$1.png" -colorspace Gray -format '%[fx:standard_deviation]' info:)"
    awk -v s="$spread" 'BEGIN { exit !(s > 0.02) }' || fail "$1: the closing scene is blank"
    press Return
    wait_count '^Title menu$' $((titles + 1)) 30 || fail "$1: a key did not bring the title back"
    kill -TERM "$pid"
    wait "$pid"
    pid=""
}

scene won 99 3 done.vlc
# Without a level 01 in the data the game cannot be lost: the missing level ends it won first.
if [ -n "$(find -L data -iname 'levels.vpk' -o -ipath '*levels/01.vlc' | head -1)" ]; then
    scene lost 1 0 end.vlc
else
    scene lost 1 0 done.vlc
fi
echo "PASS"
