#!/usr/bin/env bash
# Installs every Debian package the game, its tools and its tests need.
# Idempotent: only missing packages are installed, and the package lists are
# refreshed only when something has to be installed.
set -euo pipefail

PACKAGES=(
    build-essential cmake pkg-config
    libgl-dev libglu1-mesa-dev libgl1-mesa-dri libglx-mesa0
    libsdl2-dev libx11-dev
    libopenal-dev libopenal1
    libogg-dev libvorbis-dev
    libfreetype-dev fonts-dejavu-core
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth xdotool x11-utils x11-xkb-utils imagemagick
    clang libclang-rt-14-dev
    python3 ccache
    lintian desktop-file-utils appstream
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -q
$SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
