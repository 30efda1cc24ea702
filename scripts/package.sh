#!/usr/bin/env bash
# Makes the Debian package BUILD/vantle2_<version>_amd64.deb (BUILD is build/ unless given):
# builds the game and its data in Release, has CPack's DEB generator package what
# `cmake --install` installs, with /usr as the prefix and Depends worked out by dpkg-shlibdeps
# from the libraries the program really links, then runs lintian on it: any error fails the
# script. Prints the package's path, its size and its Depends line.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(mkdir -p "${1:-$root/build}" && cd "${1:-$root/build}" && pwd)"
cd "$root"
bash scripts/install-deps.sh
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DVANTLE_CONTENT=ON >/dev/null
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)"
version="$("$build/vantle2" --version | cut -d' ' -f2)"
deb="$build/vantle2_${version}_$(dpkg --print-architecture).deb"
rm -f "$deb"
(cd "$build" && cpack -G DEB >/dev/null)
[ -f "$deb" ] || { echo "package.sh: cpack made no $deb" >&2; exit 1; }
lintian --fail-on error --suppress-tags-from-file /dev/null "$deb"
echo "package: $deb, $(($(stat -c %s "$deb") / 1024)) KiB"
echo "Depends: $(dpkg-deb -f "$deb" Depends)"
