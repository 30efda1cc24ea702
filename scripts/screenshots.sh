#!/usr/bin/env bash
# Takes the README's pictures from the real program: the title screen, every
# level played by its solution replay, and both closing scenes, each
# an 800 x 600 PNG in docs/images/. Runs itself under xvfb-run with Mesa's
# software rasteriser when no display is set. Uses the program and data of a
# built tree (default build/, data in build/run/data), and builds build/ when
# it is missing.
#   scripts/screenshots.sh [build directory]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1024x768x24 -noreset" bash "$0" "$@"
fi
export LIBGL_ALWAYS_SOFTWARE=1 ALSOFT_DRIVERS=null VANTLE_NO_MESSAGE_BOX=1
if [ $# -eq 0 ] && [ ! -x build/vantle2 ]; then
    cmake -S . -B build -DCMAKE_BUILD_TYPE=Release >/dev/null && cmake --build build -j "$(nproc)"
fi
build="$(cd "${1:-build}" && pwd)"

out="$root/docs/images"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$out"

# shoot <picture> <seconds> <autoexec lines...>: runs the program with those autoexec lines
# and saves its window after that many seconds of the first scene line in its log.
shoot() {
    local name="$1" seconds="$2"
    shift 2
    local run="$work/$name"
    mkdir -p "$run"
    ln -s "$build/run/data" "$run/data"
    printf 'VID_SIZE 800 600\n' >"$run/config.vbt"
    printf '%s\n' "$@" >"$run/autoexec.vbt"
    (cd "$run" && exec "$build/vantle2" >log.txt 2>&1) &
    local pid=$! win=""
    for _ in $(seq 1 600); do
        grep -qE '^(Title menu|Level [0-9]+:|Closing scene)' "$run/log.txt" 2>/dev/null && break
        sleep 0.1
    done
    for _ in $(seq 1 100); do
        win="$(xdotool search --all --onlyvisible --pid "$pid" --name 'Vantle2' 2>/dev/null | head -1)"
        [ -n "$win" ] && break
        sleep 0.1
    done
    sleep "$seconds"
    if [ -n "$win" ]; then
        import -window "$win" -strip -define png:exclude-chunks=date,time "$out/$name.png"
        echo "$name.png: $(grep -E '^(Title menu|Level [0-9]+:|Closing scene)' "$run/log.txt" | tail -1)"
    else
        echo "$name.png: no window" >&2
    fi
    kill -TERM "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
}

# A replay with no input from a given start: the closing scenes are reached through the rules
# (a level past the last one ends the game won, no lives left ends it lost).
write_start() {
    printf 'vantle2-replay 1\nlevel %s\nlives %s\nscore 1230\nhighscore 4560\nrand 1\ndebug 0\nticks 400\n' \
        "$2" "$3" >"$1"
}

shoot title 4
for source in "$root"/content/levels/[0-9][0-9].lvl; do
    n="$(basename "$source" .lvl)"
    solution="$root/content/solutions/$n.replay"
    if [ -f "$solution" ]; then
        shoot "level$n" 6 "DEMO_PLAY $solution"
    else
        echo "level$n.png: no solution replay $solution, not taken" >&2
    fi
done
write_start "$work/won.replay" 99 3
shoot closing_won 3 "DEMO_PLAY $work/won.replay"
write_start "$work/lost.replay" 1 0
shoot closing_lost 1.1 "DEMO_PLAY $work/lost.replay"
