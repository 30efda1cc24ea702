#!/usr/bin/env bash
# scripts/package.sh makes the Debian package (lintian reports no error, or the script fails),
# whose Depends names the libraries the program links; the package unpacked in a scratch
# folder with `dpkg-deb -x` runs from an empty folder, ends on +QUIT with status 0 and leaves
# config.vbt in the player's folder under HOME.
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
e2e_need_data
rm data
bash "$src/scripts/package.sh" "$build" >package.txt 2>&1 || fail "scripts/package.sh failed: $(tail -5 package.txt)"
deb="$(sed -n 's/^package: \(.*\.deb\), .*/\1/p' package.txt)"
[ -f "$deb" ] || fail "no package named in package.txt"
depends="$(dpkg-deb -f "$deb" Depends)"
for library in libc6 libsdl2-2.0-0 libopenal1 libvorbisfile3; do
    grep -q "\(^\|, \)$library\( \|,\|$\)" <<<"$depends" || fail "Depends lacks $library: $depends"
done
dpkg-deb -x "$deb" unpacked || fail "dpkg-deb -x failed"
mkdir empty
(cd empty && HOME="$scratch/home" XDG_DATA_HOME="" exec timeout 120 "$scratch/unpacked/usr/games/vantle2" +QUIT) \
    >out.txt 2>err.txt
status=$?
[ "$status" -eq 0 ] || fail "the unpacked game ended with status $status"
[ -s "$scratch/home/.local/share/vantle2/config.vbt" ] || fail "no config.vbt in the player's folder"
[ -z "$(ls -A empty)" ] || fail "the game wrote into the folder it was started in"
echo "PASS $(grep '^package: ' package.txt | sed 's/.*, //'), Depends: $depends"
