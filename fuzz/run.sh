#!/usr/bin/env bash
# Runs the fuzz targets under libFuzzer.
#
#   fuzz/run.sh [SECONDS] [fuzz_name...]     default: 60 seconds each, every fuzz/fuzz_*.cpp
#
# Builds the targets with clang and -DVANTLE_LIBFUZZER=ON into build-fuzz/, writes
# each target's seeds with the ordinary build's `--write-seeds DIR` (the seeds
# are made by the engine's own writers, none are kept in the repository), then
# fuzzes each target for SECONDS. New inputs collect in build-fuzz/corpus/NAME;
# a crash leaves its input in build-fuzz/crashes/ and makes the script fail.
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"

seconds=60
if [ $# -gt 0 ] && [[ "$1" =~ ^[0-9]+$ ]]; then
    seconds="$1"
    shift
fi
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for src in fuzz/fuzz_*.cpp; do
        targets+=("$(basename "$src" .cpp)")
    done
fi
jobs="$(nproc 2>/dev/null || echo 2)"

bash scripts/install-deps.sh || exit 1

# The seed writers come from the ordinary build.
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release >/dev/null || exit 1
cmake --build build -j "$jobs" --target "${targets[@]}" || exit 1

CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVANTLE_LIBFUZZER=ON \
    -DVANTLE_TESTS=OFF -DVANTLE_BENCH=OFF -DVANTLE_CONTENT=OFF >/dev/null || exit 1
cmake --build build-fuzz -j "$jobs" --target "${targets[@]}" || exit 1

mkdir -p build-fuzz/crashes
# Leaks in system libraries are not ours to fix (the file says which and why).
export LSAN_OPTIONS="suppressions=$root/fuzz/lsan.supp${LSAN_OPTIONS:+:$LSAN_OPTIONS}"
failed=0
for name in "${targets[@]}"; do
    corpus="build-fuzz/corpus/$name"
    mkdir -p "$corpus"
    build/fuzz/"$name" --write-seeds "$corpus" || exit 1
    echo "== $name: $seconds s =="
    if ! build-fuzz/fuzz/"$name" -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="build-fuzz/crashes/$name-" "$corpus"; then
        echo "fuzz: $name FAILED (see build-fuzz/crashes/)"
        failed=$((failed + 1))
    fi
done
echo "fuzz: ${#targets[@]} targets, $failed failed"
[ "$failed" -eq 0 ]
