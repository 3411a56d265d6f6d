#!/usr/bin/env bash
# Draws docs/editor.svg from a native build in build/linux, and docs/editor.png from the real
# window of a Windows build in build/windows, on a virtual screen.
#   scripts/draw-editor.sh [NATIVE_BUILD [WINDOWS_BUILD]]
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
native=${1:-build/linux}
windows=${2:-build/windows}
. scripts/display.sh
. scripts/wine-env.sh

${CXX:-c++} -std=c++20 -I. ${CXXFLAGS:-} scripts/draw_editor.cpp -o "$native/draw-editor" \
    -L"$native" -lTlvnMisc -Wl,-rpath,"$(realpath "$native")"
"$native/draw-editor" docs/editor.svg

x86_64-w64-mingw32-g++-posix -std=c++20 -I. scripts/show_editor.cpp \
    -o "$windows/bin/show-editor.exe" -L"$windows" -lTlvnMisc -lgdi32 -limm32
start_display 640x420
start_wine
trap 'stop_wine; stop_display' EXIT
run_wine "$windows/bin/show-editor.exe" &
sleep 4
import -window root docs/editor.png
wait $!
