#!/usr/bin/env bash
# Installs the library of a preset and builds and runs an outside project against it:
#   scripts/test-consumer.sh PRESET
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
preset=$1
build=build/$preset-consumer
rm -rf "$build" "build/$preset/install"
cmake --install "build/$preset" >/dev/null

options=(-G Ninja -DCMAKE_PREFIX_PATH="$root/build/$preset/install")
run=("$build/consumer")
if [ "$preset" = windows ]; then
    options+=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake")
    run=(scripts/wine-run.sh "$build/consumer.exe")
elif [ "$preset" = asan ]; then
    options+=(-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined)
fi
cmake -S tests/consumer -B "$build" "${options[@]}" >/dev/null
cmake --build "$build" -- --quiet
if [ "$preset" = windows ]; then
    cp "build/$preset/install/bin/"*.dll "$build"
fi
"${run[@]}"
echo "An outside project builds and runs against the installed library ($preset)."
