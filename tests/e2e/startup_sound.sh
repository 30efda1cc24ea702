#!/usr/bin/env bash
# The real program's sound start-up under X, three runs that end at once
# (autoexec.vbt says QUIT):
#   1. OpenAL's null output: the OpenAL heading, the device, the AL strings and
#      the extension list, then the separator; no failure line
#   2. no usable OpenAL driver: the failure line right after the socket lines'
#      separator, and the program still runs and ends normally
#   3. ALSA with no such sound card: the game's own line is all there is to
#      hear of it, nothing from ALSA or OpenAL on stderr, unless ALSOFT_LOGLEVEL
#      asks for OpenAL's log
#   4. the wave writer: the program opens it, and on exit the device leaves a
#      finished wave file behind
# Arguments: build directory, source directory.
set -uo pipefail
build="$(cd "$1" && pwd)"
scratch="$build/test-scratch/e2e_startup_sound"
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1
export LIBGL_ALWAYS_SOFTWARE=1 VANTLE_NO_MESSAGE_BOX=1
separator="$(printf '=%.0s' $(seq 1 83))"

fail() {
    echo "FAIL: $*"
    for f in out.txt err.txt; do
        [ -f "$f" ] && { echo "--- $f"; cat -A "$f" | head -60; }
    done
    exit 1
}

run_game() {
    printf 'QUIT\n' >autoexec.vbt
    timeout 60 "$build/vantle2" >out.txt 2>err.txt
    status=$?
    [ "$status" -eq 0 ] || fail "exit status $status with ALSOFT_DRIVERS=$ALSOFT_DRIVERS"
}

# The n-th line (1 = the next) after the first line equal to $1.
line_after() {
    awk -v heading="$1" -v n="${2:-1}" 'found && ++seen == n { print; exit } $0 == heading { found = 1 }' out.txt
}

# 1. The null output.
export ALSOFT_DRIVERS=null
run_game
line_after "Initialising OpenAL:" | grep -q "^Device found: ." || fail "no device line for the null output"
line_after "Initialising OpenAL:" 2 | grep -q "OpenAL Soft" || fail "no AL version, renderer and vendor line"
line_after "Initialising OpenAL:" 3 | grep -q "^Listing extensions: AL_" || fail "no extension list"
awk -v sep="$separator" '/^Listing extensions: / { on = 1 } on && $0 == sep { ok = 1; exit } END { exit !ok }' out.txt ||
    fail "no separator after the OpenAL lines"
grep -qx "Could not initialise OpenAL" out.txt && fail "a failure line although a device opened"
socket_at="$(grep -nx "Initialising Winsock 2.2:" out.txt | cut -d: -f1)"
sound_at="$(grep -nx "Initialising OpenAL:" out.txt | cut -d: -f1)"
[ -n "$socket_at" ] && [ "$socket_at" -lt "$sound_at" ] || fail "the OpenAL lines do not follow the socket lines"

# 2. No driver that works. (The 83-character separator wraps into an empty console line.)
export ALSOFT_DRIVERS=no-such-driver
run_game
[ "$(line_after "Initialising Winsock 2.2:" 4)" = "Could not initialise OpenAL" ] ||
    fail "the failure line does not follow the socket lines' separator"
[ "$(line_after "Could not initialise OpenAL")" = "$separator" ] || fail "no separator after the failure line"
grep -qx "Initialising OpenAL:" out.txt && fail "an OpenAL heading without a device"

# 3. A sound card that is not there.
export ALSOFT_DRIVERS=alsa ALSA_CARD=vantle_no_such_card
run_game
grep -qx "Could not initialise OpenAL" out.txt || grep -q "^Device found: " out.txt ||
    fail "neither the failure line nor a device"
grep -E "^(ALSA lib|AL lib)" err.txt && fail "the device attempts talked on stderr"
ALSOFT_LOGLEVEL=3 run_game
grep -q "^AL lib" err.txt || fail "ALSOFT_LOGLEVEL=3 gives no OpenAL log"
unset ALSA_CARD

# 4. The wave writer.
export ALSOFT_DRIVERS=wave ALSOFT_CONF="$scratch/alsoft.conf"
printf '[general]\nfrequency = 44100\n[wave]\nfile = %s/out.wav\n' "$scratch" >alsoft.conf
run_game
line_after "Initialising OpenAL:" | grep -q "^Device found: ." || fail "no device line for the wave writer"
[ -s out.wav ] || fail "no wave file"
[ "$(head -c 4 out.wav)" = "RIFF" ] || fail "the wave file has no RIFF header"
# A closed writer fills in the RIFF size: file length - 8.
riff_size="$(od -An -tu4 -j4 -N4 out.wav | tr -d ' ')"
[ "$riff_size" -eq $(($(stat -c %s out.wav) - 8)) ] || fail "the wave file was not finished (RIFF size $riff_size)"
echo "PASS"
