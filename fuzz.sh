#!/usr/bin/env bash
# Runs every fuzz target for so many seconds (default 30), starting from fuzz/corpus:
#   ./fuzz.sh [SECONDS] [TARGET...]
# What a target finds is left in build/fuzz/found/<target>; put it into fuzz/corpus/<target>.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/install.sh
seconds=${1:-30}
shift || true

install_packages native fuzz
configure_and_build fuzz

status=0
for program in build/fuzz/fuzz/*_fuzz; do
    name=$(basename "$program")
    if [ $# -gt 0 ] && [[ " $* " != *" $name "* ]]; then
        continue
    fi
    echo "== $name, $seconds s"
    mkdir -p "build/fuzz/corpus/$name" "build/fuzz/found/$name" "fuzz/corpus/$name"
    "$program" -max_total_time="$seconds" -max_len=65536 -timeout=20 -print_final_stats=0 \
        -verbosity=0 -artifact_prefix="build/fuzz/found/$name/" \
        "build/fuzz/corpus/$name" "fuzz/corpus/$name" || status=1
    if [ -z "$(ls -A "fuzz/corpus/$name")" ]; then
        rmdir "fuzz/corpus/$name"
    fi
done
[ $status = 0 ] && echo "No target found a fault." || echo "Faults found: see build/fuzz/found." >&2
exit $status
