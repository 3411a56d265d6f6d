#!/usr/bin/env bash
# Benchmarks beside their peers, natively:
#   ./bench.sh [SUBSYSTEM...]      (default: all)
# One table for each subsystem; the last column is how many times faster than the peer we are.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/install.sh

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
