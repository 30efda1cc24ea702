#!/usr/bin/env bash
# The installed game: `cmake --install` into a scratch DESTDIR (prefix /usr/local), then the
# installed program started from a folder of its own that holds a data/ of its own, with HOME
# a scratch folder:
#   1. the menu entry and the AppStream file pass their validators; the icons have their sizes
#   2. the title is drawn with the sky that a loose file in the player's data/ gives (magenta),
#      not the shipped one nor the starting folder's (green); closing the window writes
#      config.vbt into ~/.local/share/vantle2 beside a commented autoexec.vbt, and the starting
#      folder is left as it was
#   3. the player's folder cannot be written (read-only for a user, and over a file-size limit
#      of 0 for root, whom permissions do not stop): the game still starts and quits on +QUIT,
#      says why config.vbt was not written, and the older config.vbt is untouched
#   4. the installed data gone: status 1, every folder searched named, nothing written
# and before all of it --version and an unknown argument (the usage, status 2).
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
e2e_need_data
rm data
root="$scratch/root"
DESTDIR="$root" cmake --install "$build" --prefix /usr/local >install.txt 2>&1 || fail "cmake --install failed"
game="$root/usr/local/games/vantle2"
share="$root/usr/local/share"

# The command line: the version, and the usage with status 2 for anything unknown.
"$game" --version | grep -qx 'vantle2 [0-9]*\.[0-9]*\.[0-9]*' || fail "--version: $("$game" --version)"
"$game" --fullscreen >usage.txt 2>&1
[ $? -eq 2 ] && grep -q '^usage: vantle2 ' usage.txt || fail "an unknown argument: $(head -1 usage.txt)"

# 1. What the desktop reads.
desktop-file-validate "$share/applications/vantle2.desktop" || fail "the desktop entry is not valid"
appstreamcli validate --no-net "$share/metainfo/vantle2.metainfo.xml" || fail "the AppStream file is not valid"
for size in 48 128 256; do
    [ "$(identify -format '%m %wx%h' "$share/icons/hicolor/${size}x$size/apps/vantle2.png")" = "PNG ${size}x$size" ] ||
        fail "no ${size}x$size PNG icon"
done

# A 16 x 16 TGA of one colour (R G B).
solid_tga() {
    python3 -c 'import sys; c = [int(v) for v in sys.argv[1:]]; sys.stdout.buffer.write(bytes([0, 0, 2] + [0] * 9 + [16, 0, 16, 0, 24, 0]) + bytes(c[::-1]) * 256)' "$@"
}
# Pixels of shot.png whose colour is near R G B.
count_near() {
    convert shot.png txt:- | awk -F'[,:()]' -v r="$1" -v g="$2" -v b="$3" '
        function near(v, want) { return want ? v >= 60 : v <= 30 }
        near($4, r) && near($5, g) && near($6, b) { n++ } END { print n + 0 }'
}

# 2. From a folder of its own, the player's sky.
export HOME="$scratch/home"
unset XDG_DATA_HOME
player="$HOME/.local/share/vantle2"
mkdir -p start/data/textures/01 "$player/data/textures/01"
solid_tga 255 0 255 >"$player/data/textures/01/sky.tga"
solid_tga 0 255 0 >start/data/textures/01/sky.tga
listing() { find start | sort; }
before="$(listing)"
(cd start && exec "$game") >out.txt 2>err.txt &
pid=$!
e2e_wait_window
wait_line '^Title menu$' 60 || fail "no title menu"
# Console lines are cut at 83 characters.
tr -d '\n' <out.txt | grep -qF "Player folder: $player" || fail "the log does not name the player's folder"
for attempt in $(seq 1 20); do
    import -window "$win" -depth 8 shot.png 2>/dev/null && [ "$(count_near 1 0 1)" -ge 20000 ] && break
    [ "$attempt" -eq 20 ] && fail "no magenta sky: $(count_near 1 0 1) pixels"
    sleep 0.5
done
[ "$(count_near 0 1 0)" -lt 2000 ] || fail "the starting folder's green sky is drawn"
e2e_close_window
grep -q '^VID_SIZE 640,480' "$player/config.vbt" || fail "no config.vbt in $player"
grep -q '^// autoexec.vbt' "$player/autoexec.vbt" || fail "no commented autoexec.vbt in $player"
[ "$(listing)" = "$before" ] || fail "the starting folder changed: $(listing)"

# 3. A player's folder that takes nothing: the run goes on, the old config.vbt stays.
cp "$player/config.vbt" old.vbt
chmod a-w "$player"
trap 'chmod u+w "$player"' EXIT
# Through a pipe: the size limit would stop the log too if it went into a file.
(cd start && trap '' XFSZ && ulimit -f 0 && exec timeout 120 "$game" +VID_QUALITY 2 +QUIT 2>&1) | cat >ro.txt
status=${PIPESTATUS[0]}
chmod u+w "$player"
[ "$status" -eq 0 ] || fail "exit status $status with a folder that cannot be written"
grep -q '^config.vbt not written: ' ro.txt || fail "no console line about config.vbt: $(tail -3 ro.txt)"
grep -q "^vantle2: config.vbt not written in $player: " ro.txt || fail "stderr does not say why"
cmp -s old.vbt "$player/config.vbt" || fail "the older config.vbt changed"

# 4. No installed data: a message names the folders searched, nothing is written.
mv "$share/games/vantle2/data" data.away
HOME="$scratch/home2" VANTLE_NO_MESSAGE_BOX=1 timeout 60 "$game" >nodata.txt 2>&1
status=$?
mv data.away "$share/games/vantle2/data"
[ "$status" -eq 1 ] || fail "exit status $status without data"
grep -qF "$share/games/vantle2/data" nodata.txt || fail "the folder searched is not named: $(cat nodata.txt)"
[ ! -e "$scratch/home2" ] || fail "something was written without data"
echo "PASS"
