#!/usr/bin/env bash
# What a running game costs the machine: the real program under Xvfb with
# Mesa's software rasteriser in an 800 x 600 window, measured twice side by
# side in one run: 10 s idling at the title menu, and 10 s of level 01 played
# by its solution replay. Reports the processor time used (user + system, all
# threads, in centiseconds per 10 s) and the resident memory at the end.
# Last line:
#   scene cost: title <cs> cs/10 s <MiB> MiB, level01 <cs> cs/10 s <MiB> MiB
# Usage: bench/scene_cost.sh [build directory]   (default build/)
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "${1:-$root/build}" && pwd)"
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1024x768x24" bash "$0" "$build"
fi
export LIBGL_ALWAYS_SOFTWARE=1 ALSOFT_DRIVERS=null VANTLE_NO_MESSAGE_BOX=1
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
hz="$(getconf CLK_TCK)"

# Processor time of a process so far, in centiseconds.
cpu_cs() {
    awk -v hz="$hz" '{ sub(/^.*\) /, ""); print int(($12 + $13) * 100 / hz) }' "/proc/$1/stat"
}

rss_mib() {
    awk '/^VmRSS:/ { printf "%.1f", $2 / 1024 }' "/proc/$1/status"
}

# The anonymous part of it (heap, GL driver buffers), without mapped code such as Mesa's LLVM.
anon_mib() {
    awk '/^RssAnon:/ { printf "%.1f", $2 / 1024 }' "/proc/$1/status"
}

# measure <name> <log line to wait for> <autoexec lines...>: prints "<cs> <MiB>".
measure() {
    local name="$1" ready="$2"
    shift 2
    local run="$work/$name"
    mkdir -p "$run"
    ln -s "$build/run/data" "$run/data"
    printf 'VID_SIZE 800 600\n' >"$run/config.vbt"
    printf '%s\n' "$@" >"$run/autoexec.vbt"
    (cd "$run" && exec "$build/vantle2" >log.txt 2>&1) &
    local pid=$!
    for _ in $(seq 1 600); do
        grep -qE "$ready" "$run/log.txt" 2>/dev/null && break
        sleep 0.1
    done
    if ! grep -qE "$ready" "$run/log.txt"; then
        kill -TERM "$pid" 2>/dev/null
        wait "$pid" 2>/dev/null
        echo "- - -"
        return
    fi
    local before after rss anon
    before="$(cpu_cs "$pid")"
    sleep 10
    after="$(cpu_cs "$pid")"
    rss="$(rss_mib "$pid")"
    anon="$(anon_mib "$pid")"
    kill -TERM "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
    echo "$((after - before)) $rss $anon"
}

read -r title_cs title_mib title_anon < <(measure title '^Title menu$')
echo "title: $title_cs cs of processor time in 10 s, $title_mib MiB resident ($title_anon MiB anonymous)"
solution="$root/content/solutions/01.replay"
if [ -f "$solution" ]; then
    read -r level_cs level_mib level_anon < <(measure level01 '^Level 01:' "DEMO_PLAY $solution")
else
    echo "no solution replay $solution: level 01 not measured" >&2
    level_cs=- level_mib=- level_anon=-
fi
echo "level01: $level_cs cs of processor time in 10 s, $level_mib MiB resident ($level_anon MiB anonymous)"
echo "scene cost: title $title_cs cs/10 s $title_mib MiB, level01 $level_cs cs/10 s $level_mib MiB"
