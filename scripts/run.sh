#!/usr/bin/env bash
# Installs what is missing, builds the game and its data (Release, into build/)
# and starts it in its run directory build/run.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"
bash scripts/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build -j "$(nproc 2>/dev/null || echo 2)"
cd build/run
exec ../vantle2 "$@"
