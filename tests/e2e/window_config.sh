#!/usr/bin/env bash
# The real program's window, start-up log and config.vbt under X, five runs in one folder:
#   1. no config.vbt: a centred 640x480 window, the services' start-up log in order; the close
#      button ends the run with status 0 and config.vbt written
#   2. config.vbt asks for 1024x768 and holds a high score: the window has that size; a right
#      click opens the developer menu below the pointer and a left click on "Quit to desktop"
#      ends the run, keeping the high score
#   3. ALSA with no sound device at all (an empty configuration, so no sound server answers in
#      its place): the failure line after the socket lines, nothing from ALSA or OpenAL on
#      stderr; the window destroyed from outside still ends the run cleanly
#   4. autoexec.vbt says QUIT: the program ends by itself and still writes config.vbt
#   5. no display at all: the error goes to stderr, exit status 0, nothing written
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
sep="$(printf '=%.0s' $(seq 1 83))"

start_title() {
    e2e_start
    e2e_wait_window
    # The title menu has run a tick (and placed the camera) once its line is in the log.
    wait_line '^Title menu$' 30 || fail "the title menu did not start"
}

# 1. First run, closed with the window's close button.
start_title
e2e_centred 640 480
# Mesa offers the shader objects, the null driver a sound device. Each 83-character separator
# fills a whole log line.
sed -E 's/^Device found: .+$/DEVICE/' out.txt |
    grep -xE 'Initialising (OpenGL|Shader system|Winsock 2.2|OpenAL):|GLSL .*|DEVICE|Winsock 2.2 .*|=+' >log.txt
printf '%s\n' "Initialising OpenGL:" "$sep" "Initialising Shader system:" \
    "GLSL shader system initialised succesfully" "$sep" "Initialising Winsock 2.2:" \
    "Winsock 2.2 initialised successfully" "$sep" "Initialising OpenAL:" DEVICE "$sep" >expected_log.txt
cmp -s log.txt expected_log.txt || fail "start-up log: $(diff expected_log.txt log.txt | tr '\n' ' ')"
head -1 out.txt | grep -qx "Initialising OpenGL:" || fail "the start-up log does not begin the output"
e2e_close_window
grep -qx $'VID_SIZE 640,480\r' config.vbt || fail "config.vbt lacks the window's size"

# 2. The configuration is read back before the window opens.
printf 'VID_SIZE 1024,768\r\nHIGHSCORE 1234\r\n' >config.vbt
start_title
e2e_centred 1024 768
xdotool windowfocus --sync "$win" 2>/dev/null || xdotool windowfocus "$win"
# at X Y: the pointer to canvas units (800 x 600) X, Y. Every step waits well over a 20 ms tick,
# so that every tick sees the state it should.
at() {
    xdotool mousemove --window "$win" "$(($1 * 1024 / 800))" "$(($2 * 768 / 600))"
    sleep 0.3
}
button() {
    xdotool mousedown "$1" && sleep 0.3
    xdotool mouseup "$1" && sleep 0.3
}
# The menu opens 10 units below the pointer; its sixth item, "Quit to desktop", lies 75 to 90
# below the box's top.
at 400 300
button 3
at 450 392
button 1
e2e_wait_exit " after choosing Quit to desktop"
grep -qx $'VID_SIZE 1024,768\r' config.vbt || fail "config.vbt lost the size"
grep -qx $'HIGHSCORE 1234\r' config.vbt || fail "config.vbt lost the high score"

# 3. No sound device: the game's own line is all there is to hear of it.
: >alsa.conf
ALSOFT_DRIVERS=alsa ALSA_CONFIG_PATH="$scratch/alsa.conf" start_title
[ "$(line_after "Initialising Winsock 2.2:" 4)" = "Could not initialise OpenAL" ] ||
    fail "no failure line after the socket lines' separator"
grep -E "^(ALSA lib|AL lib)" err.txt && fail "the device attempts talked on stderr"
xdotool windowclose "$win" || fail "could not destroy the window"
e2e_wait_exit " after the window was destroyed"

# 4. A script can end the run.
rm -f config.vbt
printf '// leave at once\nVID_FOV 45\nQUIT\n' >autoexec.vbt
e2e_start
e2e_wait_exit " after QUIT"
grep -qx "Script 'autoexec.vbt' completed successfully" out.txt || fail "autoexec.vbt did not run"
grep -qx $'VID_SIZE 640,480\r' config.vbt || fail "QUIT did not write config.vbt"
rm -f autoexec.vbt config.vbt

# 5. Without a display the game says why and writes nothing.
e2e_start env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER "$build/vantle2"
e2e_wait_exit " without a display"
grep -q "WinMain : Could not create OpenGL Rendering device" err.txt || fail "no error message on stderr"
[ -e config.vbt ] && fail "config.vbt was written although no window opened"
echo "PASS"
