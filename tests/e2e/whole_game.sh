#!/usr/bin/env bash
# The whole game from the command line: vantle-sim plays content/solutions/
# game.replay from level 1 to the winning scene, and its last line names the
# points that the levels' own solutions score one by one, with all three lives.
set -euo pipefail
build="$1"
source="$2"
sim="$build/vantle-sim"
cd "$build/run"
[ -f data/levels.vpk ] || { echo "no built content in $build/run/data"; exit 1; }

points=0
levels=0
for replay in "$source"/content/solutions/[0-9][0-9].replay; do
    n="$(basename "$replay" .replay)"
    line="$("$sim" "$replay" | grep "^level $n: completed" || true)"
    [ -n "$line" ] || { echo "$replay does not finish level $n"; exit 1; }
    points=$((points + $(sed 's/.*, score \([0-9]*\),.*/\1/' <<<"$line")))
    levels=$((levels + 1))
done

"$sim" "$source/content/solutions/game.replay" >"$build/whole_game.txt"
cat "$build/whole_game.txt"
[ "$(grep -c ': completed at tick' "$build/whole_game.txt")" -eq "$levels" ]
! grep -q ' died ' "$build/whole_game.txt"
[ "$(tail -n 1 "$build/whole_game.txt")" = "game: won, score $points, lives 3" ]
