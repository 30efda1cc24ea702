#!/usr/bin/env bash
# The content tool and the package tool from the command line: a build into folders that do
# not exist yet makes them and gives the very packages the build directory's run/data holds;
# vpk lists them and refuses a file that is no package with a non-zero status; a broken score
# stops the content build with its file and line.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
e2e_need_data
tool="$build/vantle-content"

"$tool" --content "$src/content" --out a/deeper >a.txt || fail "the content build failed"
grep -q '^vantle-content: [0-9]* assets' a.txt || fail "no summary line"
for f in data/*.vpk; do
    cmp "$f" "a/deeper/$(basename "$f")" || fail "two builds made different $(basename "$f")"
done
"$build/vpk" list a/deeper/levels.vpk | grep -qF '  levels\01.vlc' || fail "vpk does not list level 01"
"$build/vpk" list a.txt 2>vpk.txt && fail "vpk listed a file that is no package"
grep -q 'bad magic' vpk.txt || fail "vpk does not say why"

cp -r "$src/content" broken
printf 'length 100\nstep 2\nvoice a piano\n  C4 Q7\n' >broken/music/level.txt
"$tool" --content broken --out c 2>err.txt && fail "a broken score was accepted"
grep -q 'level.txt:4:' err.txt || fail "the error does not name the score's file and line"
echo "PASS"
