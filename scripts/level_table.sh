#!/usr/bin/env bash
# Writes the table of shipped levels into docs/levels.md (between its two
# marker lines) from what the tools say: vantle-levelinfo loads each built
# level with the engine's loader for its name and counts and times its bake
# again, vantle-sim plays its solution for the air and score at the end, and
# the level source's "# teaches:" line says what it is for. Nothing in the
# table is typed by hand. Run after a build:  scripts/level_table.sh [BUILD]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "${1:-$root/build}" && pwd)"
doc="$root/docs/levels.md"
begin='<!-- level table: written by scripts/level_table.sh -->'
end='<!-- end of level table -->'

table="$(mktemp)"
trap 'rm -f "$table"' EXIT
{
    echo "$begin"
    echo
    echo "| level | name | teaches | pieces | entities | triangles | solution ticks | air left | score | bake |"
    echo "|---|---|---|---|---|---|---|---|---|---|"
    cd "$build/run"
    for n in $(seq -w 1 99); do
        [ -f "$root/content/levels/$n.lvl" ] || break
        info="$("$build/vantle-levelinfo" --bake "levels\\$n.vlc")"
        name="${info#*, name }"
        count() { sed "s/.* $1 \([0-9]*\).*/\1/" <<<"$info"; }
        teaches="$(sed -n 's/^# teaches: //p' "$root/content/levels/$n.lvl")"
        done_line="$("$build/vantle-sim" "$root/content/solutions/$n.replay" | grep "^level $n: completed")"
        ticks="$(sed 's/.* at tick \([0-9]*\),.*/\1/' <<<"$done_line")"
        air="$(sed 's/.*, air \([0-9.]*\),.*/\1/' <<<"$done_line")"
        score="$(sed 's/.*, score \([0-9]*\),.*/\1/' <<<"$done_line")"
        echo "| $n | $name | $teaches | $(count pieces) | $(count entities) | $(count triangles) | $ticks | $air | $score | $(count bake) ms |"
    done
    echo
    echo "The whole game, \`content/solutions/game.replay\`: \`$("$build/vantle-sim" "$root/content/solutions/game.replay" | tail -n 1)\`."
    scratch="$(mktemp -d)"
    made="$("$build/vantle-content" --content "$root/content" --out "$scratch")"
    rm -rf "$scratch"
    echo "The content build with every bake: ${made##* in } on $(nproc) cores."
    echo
    echo "$end"
} >"$table"

if grep -qF "$begin" "$doc"; then
    awk -v b="$begin" -v e="$end" -v t="$table" '
        $0 == b { while ((getline line < t) > 0) print line; skip = 1; next }
        $0 == e { skip = 0; next }
        !skip { print }' "$doc" >"$doc.new"
else
    { cat "$doc"; echo; echo "## The shipped levels"; echo; cat "$table"; } >"$doc.new"
fi
mv "$doc.new" "$doc"
echo "level_table: $doc"
