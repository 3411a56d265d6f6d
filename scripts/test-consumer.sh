#!/usr/bin/env bash
# Installs the library of a preset and builds and runs an outside project against it:
#   scripts/test-consumer.sh PRESET
# The Windows build needs a screen.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
preset=$1
build=build/$preset-consumer
rm -rf "$build" "build/$preset/install"
cmake --install "build/$preset" >/dev/null

options=(-G Ninja -DCMAKE_PREFIX_PATH="$root/build/$preset/install")
if [ "$preset" = windows ]; then
    options+=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake")
elif [ "$preset" = asan ]; then
    options+=(-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined)
fi
cmake -S tests/consumer -B "$build" "${options[@]}" >/dev/null
cmake --build "$build" -- --quiet
if [ "$preset" = windows ]; then
    cp "build/$preset/install/bin/"*.dll "$build"
fi

run() {
    if [ "$preset" = windows ]; then
        scripts/wine-run.sh "$build/$1.exe"
    else
        "$build/$1"
    fi
}
run consumer
written=$(run embed_editor | tr -d '\r')
if [ "$written" != $'拝啓\n本文です\n敬具' ]; then
    echo "The example with the editor wrote: $written" >&2
    exit 1
fi
if [[ $(<docs/embedding.md) != *"$(<docs/examples/embed_editor.cpp)"* ]]; then
    echo "docs/embedding.md does not show docs/examples/embed_editor.cpp as it is." >&2
    exit 1
fi
echo "An outside project builds and runs against the installed library ($preset)."
