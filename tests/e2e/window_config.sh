#!/usr/bin/env bash
# The real program under X, four runs in one scratch directory:
#   1. no config.vbt: a centred 640x480 window; the user closes it; exit status 0 and the
#      default config.vbt byte for byte
#   2. config.vbt asks for 1024x768 and holds a high score: the window has that size;
#      the window is destroyed from outside; the high score survives into the new file
#   3. autoexec.vbt says QUIT: the program ends by itself and still writes config.vbt
#   4. no display at all: the error goes to stderr, exit status 0, nothing written
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin e2e_window_config "$1" "$2"

# Starts the game and waits (at most 30 s) for its visible window; sets pid and win.
start_game() {
    "$build/vantle2" >out.txt 2>err.txt &
    pid=$!
    e2e_wait_window
    # The title menu has run a tick (and placed the camera) once its line is in the log.
    for _ in $(seq 1 300); do
        grep -qx "Title menu" out.txt && return 0
        sleep 0.1
    done
    fail "the title menu did not start"
}

expect_size() {
    local geometry
    geometry="$(xdotool getwindowgeometry --shell "$win")"
    echo "$geometry" | grep -qx "WIDTH=$1" || fail "window width is not $1: $geometry"
    echo "$geometry" | grep -qx "HEIGHT=$2" || fail "window height is not $2: $geometry"
    local screen_w screen_h
    read -r screen_w screen_h < <(xdotool getdisplaygeometry)
    echo "$geometry" | grep -qx "X=$(((screen_w - $1) / 2))" || fail "window is not centred: $geometry"
    echo "$geometry" | grep -qx "Y=$(((screen_h - $2) / 2))" || fail "window is not centred: $geometry"
}

# The camera is saved where the last scene left it: the title menu places it every tick, a run
# that quits from autoexec.vbt ends before the first tick.
menu_camera=("CAMERA_POS 5.90,48.00,660.50" "CAMERA_ROT 4.60,180.00,0.00")
start_camera=("CAMERA_POS 0.00,0.00,0.00" "CAMERA_ROT 0.00,0.00,0.00")
camera=("${menu_camera[@]}")

# The file the game writes, built here line by line: $1 = the size, then extra lines.
expected_config() {
    local rule="//***********************************************************"
    printf '%s\r\n' "$rule" "//Created by Vantle2. Do not modify as any changes may be lost" "$rule" \
        "VID_FULL 0" "VID_VSYNC 0" "VID_SIZE $1" "VID_QUALITY 0" "${camera[@]}"
    shift
    [ $# -gt 0 ] && printf '%s\r\n' "$@"
}

# 1. First run, closed with the window's close button.
start_game
expect_size 640 480
# The start-up log as echoed on stdout: its fixed lines, in order, with the network and
# the (null) sound device up. Each 83-character separator fills a whole log line.
sep="$(printf '=%.0s' $(seq 1 83))"
sed -E -e 's/^(GLSL shader system initialised succesfully|Could not initialise GLSL shaders)$/SHADERS/' \
    -e 's/^Device found: .+$/DEVICE/' out.txt |
    grep -xE 'Initialising (OpenGL|Shader system|Winsock 2.2|OpenAL):|SHADERS|DEVICE|Winsock 2.2 .*|=+' >log.txt
printf '%s\n' "Initialising OpenGL:" "$sep" "Initialising Shader system:" SHADERS "$sep" \
    "Initialising Winsock 2.2:" "Winsock 2.2 initialised successfully" "$sep" \
    "Initialising OpenAL:" DEVICE "$sep" >expected_log.txt
cmp log.txt expected_log.txt || fail "start-up log: $(diff expected_log.txt log.txt | tr '\n' ' ')"
head -1 out.txt | grep -qx "Initialising OpenGL:" || fail "the start-up log does not begin the output"
e2e_close_window
expected_config "640,480" >expected.vbt
cmp config.vbt expected.vbt || fail "config.vbt differs from the defaults"

# 2. The configuration is read back before the window opens.
printf 'VID_SIZE 1024,768\r\nHIGHSCORE 1234\r\n' >config.vbt
start_game
expect_size 1024 768
xdotool windowclose "$win" || fail "could not destroy the window"
e2e_wait_exit " after the window was destroyed"
expected_config "1024,768" "HIGHSCORE 1234" >expected.vbt
cmp config.vbt expected.vbt || fail "config.vbt did not keep the size and the high score"

# 3. A script can end the run.
rm -f config.vbt
printf '// leave at once\nVID_FOV 45\nQUIT\n' >autoexec.vbt
"$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_exit " after QUIT"
grep -qx "Script 'autoexec.vbt' completed successfully" out.txt || fail "autoexec.vbt did not run"
camera=("${start_camera[@]}")
expected_config "640,480" >expected.vbt
cmp config.vbt expected.vbt || fail "QUIT did not write config.vbt"
rm -f autoexec.vbt config.vbt

# 4. Without a display the game says why and writes nothing.
env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER "$build/vantle2" >out.txt 2>err.txt &
pid=$!
e2e_wait_exit " without a display"
grep -q "WinMain : Could not create OpenGL Rendering device" err.txt || fail "no error message on stderr"
[ -e config.vbt ] && fail "config.vbt was written although no window opened"
echo "PASS"
