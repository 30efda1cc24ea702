#!/usr/bin/env bash
# Builds everything and runs every test label:
#   unit  in an AddressSanitizer + UndefinedBehaviorSanitizer build (build-asan/)
#   gl    in the release build (build/) under xvfb-run with Mesa's software rasteriser
#   e2e   the real program in the release build, under xvfb-run
# The unit and GL programs each run whole, in a shuffled order; their test cases are counted
# one by one. Ends with the summary line "tests: N passed, N failed" and the tests' share of
# the code (scripts/test_share.sh).
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"

bash scripts/install-deps.sh || exit 1

jobs="$(nproc 2>/dev/null || echo 2)"
export LIBGL_ALWAYS_SOFTWARE=1
export ALSOFT_DRIVERS=null
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DVANTLE_TESTS=ON >/dev/null || exit 1
cmake --build build -j "$jobs" || exit 1
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DVANTLE_SANITIZE=ON -DVANTLE_BENCH=OFF \
    -DVANTLE_CONTENT=OFF -DVANTLE_CONTENT_RUN_DIR="$root/build/run" >/dev/null || exit 1
cmake --build build-asan -j "$jobs" || exit 1

passed=0
failed=0
skipped=0
log="$(mktemp)"
run_label() {
    local dir="$1" label="$2"
    shift 2
    echo "== $label tests =="
    rm -rf "$dir/test-results"
    (cd "$dir" && "$@" ctest -L "^$label\$" --output-on-failure -j "$jobs" --timeout 900) 2>&1 | tee "$log"
    if grep -q 'No tests were found' "$log"; then
        return
    fi
    read -r p f s < <(python3 scripts/test_counts.py "$log" "$dir/test-results")
    if [ $((p + f + s)) -eq 0 ]; then
        f=1  # ctest itself failed
    fi
    passed=$((passed + p))
    failed=$((failed + f))
    skipped=$((skipped + s))
}

# -noreset: when a short-lived client (xdotool asking the screen size) is the last to leave,
# the server otherwise resets, and a game connecting in that moment finds no display.
xvfb=(xvfb-run -a -s "-screen 0 1280x1024x24 -noreset")
run_label build-asan unit
run_label build gl "${xvfb[@]}"
run_label build e2e "${xvfb[@]}"
rm -f "$log"

if [ "$skipped" -gt 0 ]; then
    echo "tests: $passed passed, $failed failed, $skipped skipped"
else
    echo "tests: $passed passed, $failed failed"
fi
bash scripts/test_share.sh
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
