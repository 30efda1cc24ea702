#!/usr/bin/env bash
# The content tool from the command line: two builds give byte-identical
# packages holding every name, and a broken source file stops the build with
# its file and line.
set -euo pipefail
build="$1"
source="$2"
tool="$build/vantle-content"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# The output folders do not exist yet: the tool makes them.
"$tool" --content "$source/content" --out "$work/a" >"$work/a.log"
"$tool" --content "$source/content" --out "$work/b/deeper" >/dev/null
grep -q '^vantle-content: [0-9]* assets' "$work/a.log"
for f in "$work"/a/*.vpk; do
    cmp "$f" "$work/b/deeper/$(basename "$f")"
done

"$build/vpk" list "$work/a/base.vpk" >"$work/list.txt"
for name in 'gui_font.tga' 'gui\level_bar.tga' 'logo\logotext_main.tga' 'particle_fire.tga' \
    'sound\run04.wav' 'sound\blip.wav' 'sound\music_menu.ogg' 'sound\music_win.ogg' 'piano.vpr'; do
    grep -qF "  $name" "$work/list.txt" || { echo "missing $name"; exit 1; }
done
"$build/vpk" list "$work/a/levels.vpk" >"$work/levels.txt"
for name in 'logo\logo.vlc' 'levels\01.vlc' 'levels\02.vlc' 'levels\done.vlc' 'levels\end.vlc'; do
    grep -qF "  $name" "$work/levels.txt" || { echo "missing $name"; exit 1; }
done

# A score with a bad note: the tool fails and names the file and line.
cp -r "$source/content" "$work/broken"
printf 'length 100\nstep 2\nvoice a piano\n  C4 Q7\n' >"$work/broken/music/level.txt"
if "$tool" --content "$work/broken" --out "$work/c" 2>"$work/err.txt"; then
    echo "a broken score was accepted"
    exit 1
fi
grep -q 'level.txt:4:' "$work/err.txt"

# A level naming a texture nobody makes: the level file and the piece's line.
rm -rf "$work/broken"
cp -r "$source/content" "$work/broken"
printf 'location Typo\n\npiece floor textures\\01\\gras.tga solid\n    box 0 0 0 1 1 1\n' >"$work/broken/levels/03.lvl"
if "$tool" --content "$work/broken" --out "$work/c" 2>"$work/err.txt"; then
    echo "a level with an unknown texture was accepted"
    exit 1
fi
grep -q '03.lvl:3: texture' "$work/err.txt"
