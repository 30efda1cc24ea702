#!/usr/bin/env bash
# The real program runs the resource commands from autoexec.vbt: the lightmap
# quality, a location load with its texture pre-caching line, a texture purge,
# a video restart (a new window and context, textures made again) and a
# lightmap bake, each answering in the log, and then quits cleanly.
# Arguments: build directory, source directory.
set -uo pipefail
build="$(cd "$1" && pwd)"
scratch="$build/test-scratch/e2e_resource_commands"
rm -rf "$scratch"
mkdir -p "$scratch/data"
cd "$scratch" || exit 1
export ALSOFT_DRIVERS=null LIBGL_ALWAYS_SOFTWARE=1 VANTLE_NO_MESSAGE_BOX=1

fail() {
    echo "FAIL: $*"
    for f in out.txt err.txt; do
        [ -f "$f" ] && { echo "--- $f"; cat -A "$f" | head -80; }
    done
    exit 1
}

printf '%s\r\n' "LMAP_QUALITY" "LMAP_QUALITY 5" "LOCATION_LOAD levels\\none.vlc" "VID_PURGE" \
    "VID_SIZE 400,300" "VID_RESTART" "LMAP_BUILD" "QUIT" >autoexec.vbt
timeout 120 "$build/vantle2" >out.txt 2>err.txt
status=$?
[ "$status" -eq 0 ] || fail "exit status $status"

grep -qx 'LMAP_QUALITY <VALUE> (0.10)' out.txt || fail "no usage line with the default quality"
grep -qx 'Lightmap quality set to 0.50' out.txt || fail "quality not set"
grep -Eqx 'Texture set cached \([0-9]+ms\)' out.txt || fail "no pre-caching line"
grep -Eqx 'Lightmaps processed \([0-9]+ms\)' out.txt || fail "no lightmap line"
grep -q 'Unknown Command' out.txt && fail "a command was not known"
cached="$(grep -n 'Texture set cached' out.txt | cut -d: -f1)"
baked="$(grep -n 'Lightmaps processed' out.txt | cut -d: -f1)"
[ "$cached" -lt "$baked" ] || fail "the lines came out of order"
echo "PASS"
