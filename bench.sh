#!/usr/bin/env bash
# Benchmarks beside their peers, natively:
#   ./bench.sh [SUBSYSTEM...]      (default: all)
# One table for each subsystem; the last column is how many times faster than the peer we are.
# The editor is also timed under Wine, where it measures with the real font.
set -euo pipefail
cd "$(dirname "$0")"
root=$PWD
. scripts/install.sh
. scripts/display.sh

load_under_wine() {
    cmake --preset windows -DTLVN_BUILD_BENCH=ON >/dev/null
    configure_and_build windows bench_editor_load
    . scripts/wine-env.sh
    start_display 1280x1024
    start_wine
    run_wine build/windows/bin/bench_editor_load.exe
    stop_wine
    stop_display
}

install_packages native bench
subsystems=("$@")
if [ ${#subsystems[@]} = 0 ]; then
    for source in bench/*_bench.cpp; do
        subsystems+=("$(basename "$source" _bench.cpp)")
    done
fi
# Regular expressions and archives have programs of their own, but belong to persist.
if [[ " ${subsystems[*]} " == *" persist "* ]]; then
    for part in regexp zip; do
        [[ " ${subsystems[*]} " == *" $part "* ]] || subsystems+=("$part")
    done
fi
# The peers are needed for this only, so the preset leaves the benchmarks out.
cmake --preset linux -DTLVN_BUILD_BENCH=ON >/dev/null
configure_and_build linux $(printf 'bench_%s ' "${subsystems[@]}")
for subsystem in "${subsystems[@]}"; do
    echo "== $subsystem"
    "build/linux/bench/bench_$subsystem"
done
if [[ " ${subsystems[*]} " == *" editor "* ]]; then
    echo "== editor, under Wine"
    if install_packages native windows; then
        (load_under_wine)
    else
        echo "NOT MEASURED: MinGW-w64 and Wine cannot be installed here."
    fi
fi
