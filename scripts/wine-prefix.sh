#!/usr/bin/env bash
# Makes the project's Wine prefix when there is none: a Windows without the extra packages that
# Wine would offer, on which "ＭＳ ゴシック" is drawn with the IPA font.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/wine-env.sh"
[ ! -f "$WINEPREFIX/prepared" ] || exit 0

run_wine wineboot --init
# Debian's Wine does not look where its own fonts are; this one has the marks of window buttons.
cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true
fonts=$(mktemp --suffix=.reg)
{
    printf 'Windows Registry Editor Version 5.00\r\n\r\n'
    printf '[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]\r\n'
    for face in 'ＭＳ ゴシック' 'MS Gothic' 'ＭＳ Ｐゴシック' 'MS PGothic' 'MS UI Gothic'; do
        printf '"%s"="IPAGothic"\r\n' "$face"
    done
} | { printf '\xff\xfe' && iconv -f UTF-8 -t UTF-16LE; } >"$fonts"
run_wine regedit /S "$fonts"
rm -f "$fonts"
wineserver -w
touch "$WINEPREFIX/prepared"
