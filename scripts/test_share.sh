#!/usr/bin/env bash
# How big the tests are beside the code they test. Counts the tracked files' lines that are
# neither blank nor only a comment (// in C++, # in shell, Python and CMake), tests/ against
# src/ + tools/, and prints
#   test share: tests N lines, code M lines, P% of all code
# Tests are meant to stay at most a third of all code.
set -euo pipefail
cd "$(dirname "$0")/.."

count() {
    git ls-files -z -- "$@" | xargs -0 -r awk '
        { line = $0; sub(/^[ \t\r]+/, "", line) }
        line == "" { next }
        FILENAME ~ /\.(c|cc|cpp|h|hpp|inl)$/ && line ~ /^\/\// { next }
        FILENAME ~ /(\.(sh|py|cmake)|CMakeLists\.txt)$/ && line ~ /^#/ { next }
        { n++ }
        END { print n + 0 }' | awk '{ total += $1 } END { print total + 0 }'
}

tests="$(count tests)"
code="$(count src tools)"
# Rounded to the nearest whole per cent.
share=$(((200 * tests + tests + code) / (2 * (tests + code))))
echo "test share: tests $tests lines, code $code lines, $share% of all code"
