#!/usr/bin/env bash
# What a running game costs the machine: the real program under Xvfb with
# Mesa's software rasteriser in an 800 x 600 window, measured twice side by
# side in one run: 10 s idling at the title menu, and 10 s of level 01 played
# by its solution replay. Reports the processor time used (user + system, all
# threads, in centiseconds per 10 s) and the resident memory at the end, for
# each of SCENE_COST_RUNS runs (3 unless set); the last line gives the middle
# values:
#   scene cost: title <cs> cs/10 s <MiB> MiB, level01 <cs> cs/10 s <MiB> MiB
# Usage: bench/scene_cost.sh [build directory]   (default build/)
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "${1:-$root/build}" && pwd)"
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1024x768x24 -noreset" bash "$0" "$build"
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

# The part of it that is Mesa's software rasteriser's own mapped files (libLLVM, the swrast
# driver, libgallium): what any GL program pays on this renderer before drawing anything.
mesa_mib() {
    awk '/^[0-9a-f]+-[0-9a-f]+ / { mesa = ($6 ~ /(libLLVM|swrast_dri|libgallium)/) }
         mesa && /^Rss:/ { kb += $2 }
         END { printf "%.1f", kb / 1024 }' "/proc/$1/smaps"
}

# measure <name> <log line to wait for> <autoexec lines...>:
# prints "<cs> <MiB> <anonymous MiB> <Mesa MiB>".
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
        echo "- - - -"
        return
    fi
    local before after rss anon mesa
    before="$(cpu_cs "$pid")"
    sleep 10
    after="$(cpu_cs "$pid")"
    rss="$(rss_mib "$pid")"
    anon="$(anon_mib "$pid")"
    mesa="$(mesa_mib "$pid")"
    kill -TERM "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
    echo "$((after - before)) $rss $anon $mesa"
}

# The middle one of several runs: a shared machine's figures wander by a tenth or so from
# one 10 s run to the next, and the middle run is what a reader can expect again.
median() {
    printf '%s\n' "$@" | sort -n | awk '{ v[NR] = $1 } END { print (NR ? v[int((NR + 1) / 2)] : "-") }'
}

runs="${SCENE_COST_RUNS:-3}"
solution="$root/content/solutions/01.replay"
[ -f "$solution" ] || echo "no solution replay $solution: level 01 not measured" >&2
title_cs=() title_mib=() level_cs=() level_mib=()
for run in $(seq 1 "$runs"); do
    read -r cs mib anon mesa < <(measure "title$run" '^Title menu$')
    echo "title, run $run: $cs cs of processor time in 10 s, $mib MiB resident ($anon MiB anonymous, $mesa MiB Mesa's rasteriser code)"
    title_cs+=("$cs") title_mib+=("$mib")
    [ -f "$solution" ] || continue
    read -r cs mib anon mesa < <(measure "level$run" '^Level 01:' "DEMO_PLAY $solution")
    echo "level01, run $run: $cs cs of processor time in 10 s, $mib MiB resident ($anon MiB anonymous, $mesa MiB Mesa's rasteriser code)"
    level_cs+=("$cs") level_mib+=("$mib")
done
echo "scene cost: title $(median "${title_cs[@]}") cs/10 s $(median "${title_mib[@]}") MiB," \
    "level01 $(median "${level_cs[@]}") cs/10 s $(median "${level_mib[@]}") MiB"
