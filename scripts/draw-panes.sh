#!/bin/sh
# Draws docs/panes.svg and docs/panes.png anew, from a native build in build/linux.
# Needs rsvg-convert or ImageMagick for the second.
set -eu
cd "$(dirname "$0")/.."
library=${1:-build/linux}
${CXX:-c++} -std=c++20 -I. ${CXXFLAGS:-} scripts/draw_panes.cpp -o "$library/draw-panes" \
    -L"$library" -lTlvnMisc -Wl,-rpath,"$(realpath "$library")"
"$library/draw-panes" docs/panes.svg
if command -v rsvg-convert >/dev/null; then
    rsvg-convert docs/panes.svg -o docs/panes.png
else
    convert docs/panes.svg docs/panes.png
fi
