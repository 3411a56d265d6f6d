#!/usr/bin/env bash
# Takes the pictures of docs/viewer.md anew: the program's own test drives it on a virtual screen.
# Needs a Windows build in build/windows, or the folder given.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${1:-build/windows}
. scripts/display.sh
. scripts/wine-env.sh
pictures=$(mktemp -d)
start_display 1000x700
start_wine
trap 'stop_wine; stop_display; rm -rf "$pictures"' EXIT
TLVN_PICTURES=$pictures run_wine explorer /desktop=TolvanView,1000x700 \
    "$build/bin/test_window.exe" '--gtest_filter=ViewProgram.*'
mv "$pictures/view-open.bmp" "$pictures/view.bmp"
for picture in "$pictures"/*.bmp; do
    convert "$picture" -fuzz 1% -trim +repage +dither -colors 64 -define png:compression-level=9 \
        "PNG8:docs/$(basename "$picture" .bmp).png"
done
