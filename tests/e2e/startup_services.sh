#!/usr/bin/env bash
# The real program under X with Mesa reports both ready services in its start-up
# log: the shader system (Mesa offers the ARB shader objects) and the socket
# layer, each heading followed directly by its success line. autoexec.vbt ends
# the run at once.
# Arguments: build directory, source directory.
set -uo pipefail
build="$(cd "$1" && pwd)"
scratch="$build/test-scratch/e2e_startup_services"
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1
export ALSOFT_DRIVERS=null LIBGL_ALWAYS_SOFTWARE=1 VANTLE_NO_MESSAGE_BOX=1

fail() {
    echo "FAIL: $*"
    for f in out.txt err.txt; do
        [ -f "$f" ] && { echo "--- $f"; cat -A "$f" | head -60; }
    done
    exit 1
}

printf 'QUIT\n' >autoexec.vbt
timeout 60 "$build/vantle2" >out.txt 2>err.txt
status=$?
[ "$status" -eq 0 ] || fail "exit status $status"

# The line that follows the first line equal to $1.
line_after() {
    awk -v heading="$1" 'found { print; exit } $0 == heading { found = 1 }' out.txt
}

[ "$(line_after "Initialising Shader system:")" = "GLSL shader system initialised succesfully" ] ||
    fail "the shader system did not report ready"
[ "$(line_after "Initialising Winsock 2.2:")" = "Winsock 2.2 initialised successfully" ] ||
    fail "the socket layer did not report ready"
shader_at="$(grep -nx "Initialising Shader system:" out.txt | cut -d: -f1)"
socket_at="$(grep -nx "Initialising Winsock 2.2:" out.txt | cut -d: -f1)"
[ "$shader_at" -lt "$socket_at" ] || fail "the shader lines do not come before the socket lines"
echo "PASS"
