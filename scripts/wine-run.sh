#!/usr/bin/env bash
# Runs a Windows program under Wine in the project's own prefix:
#   scripts/wine-run.sh PROGRAM.exe [ARGUMENT...]
# Set TLVN_WINE_LOCALE to run it on a Windows of another language (default ja_JP.UTF-8).
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/wine-env.sh"
run_wine "$@"
