#!/usr/bin/env bash
# scripts/install-deps.sh against stand-in package tools (apt-get, sudo and, for the
# "missing" runs, dpkg-query) that record what they were asked:
#   1. everything installed: apt-get is never called, exit status 0
#   2. two packages missing: "apt-get update" first, then one install of exactly those two
#   3. the install fails: the script fails too
# Arguments: build directory, source directory.
set -uo pipefail
# shellcheck source=tools/e2e_common.sh
. "$(dirname "$0")/tools/e2e_common.sh"
e2e_begin "$1" "$2"
log="$scratch/calls.txt"
real_dpkg_query="$(command -v dpkg-query)" || fail "no dpkg-query"
mkdir bin
cat >bin/apt-get <<STUB
#!/usr/bin/env bash
echo "apt-get \$*" >>"$log"
[ "\${FAIL_INSTALL:-0}" = 1 ] && [ "\$1" = install ] && exit 100
exit 0
STUB
printf '#!/usr/bin/env bash\nexec "$@"\n' >bin/sudo
# Reports the packages named in MISSING as not installed; asks the real tool for the rest.
cat >bin/dpkg-query <<STUB
#!/usr/bin/env bash
for p in \${MISSING:-}; do
    [ "\${@: -1}" = "\$p" ] && exit 1
done
exec "$real_dpkg_query" "\$@"
STUB
chmod +x bin/*
export PATH="$scratch/bin:$PATH"

# 1. A second run on a machine that has everything asks apt-get nothing.
bash "$src/scripts/install-deps.sh" >out1.txt 2>&1 || fail "run 1 failed"
[ -s "$log" ] && fail "apt-get was called although nothing is missing"

# 2. Only what is missing is installed, after refreshing the lists.
MISSING="xdotool cmake" bash "$src/scripts/install-deps.sh" >out2.txt 2>&1 || fail "run 2 failed"
[ "$(wc -l <"$log")" -eq 2 ] || fail "expected two apt-get calls"
head -1 "$log" | grep -qE '^apt-get update( |$)' || fail "the lists were not refreshed first"
install="$(sed -n 2p "$log")"
echo "$install" | grep -qE '^apt-get install ' || fail "no install call"
words="$(echo "$install" | tr ' ' '\n' | grep -vE '^(apt-get|install|-.*)$' | sort | tr '\n' ' ')"
[ "$words" = "cmake xdotool " ] || fail "installed '$words' instead of exactly the two missing packages"

# 3. A failed install is reported as a failure.
: >"$log"
MISSING="xdotool" FAIL_INSTALL=1 bash "$src/scripts/install-deps.sh" >out3.txt 2>&1 && fail "a failed install passed"
grep -q '^apt-get install' "$log" || fail "the failing install was not attempted"
echo "PASS"
