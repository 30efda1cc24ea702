#!/usr/bin/env bash
# The built vpk program from the command line: a package made from files,
# listed, edited and unpacked again to the same bytes; errors exit non-zero.
set -euo pipefail
build="$1"
vpk="$build/vpk"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"

mkdir -p src/levels
head -c 5000 /dev/urandom >src/levels/01.vlc
printf 'hello' >src/readme.txt

"$vpk" create game.vpk --name "E2E" src/levels/01.vlc src/readme.txt=docs\\readme.txt
"$vpk" list game.vpk >list.txt
grep -q '^name: E2E$' list.txt
grep -q '^entries: 2$' list.txt
grep -q '      5000  src\\levels\\01.vlc$' list.txt

"$vpk" extract game.vpk -C out
cmp src/levels/01.vlc out/src/levels/01.vlc
cmp src/readme.txt out/docs/readme.txt

"$vpk" remove game.vpk 'SRC\LEVELS\01.VLC'
"$vpk" list game.vpk | grep -q '^entries: 1$'
# 76-byte header, one 133-byte record, 5 data bytes.
[ "$(stat -c %s game.vpk)" -eq 214 ]

if "$vpk" add game.vpk missing.txt 2>err.txt; then
    echo "adding a missing file succeeded"
    exit 1
fi
grep -q "cannot read 'missing.txt'" err.txt
if "$vpk" list src/readme.txt 2>err.txt; then
    echo "listing a non-package succeeded"
    exit 1
fi
grep -q "bad magic" err.txt
ls game.vpk* | grep -v '^game.vpk$' && { echo "temporary file left behind"; exit 1; }
echo "vpk e2e: ok"
