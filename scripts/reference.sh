#!/usr/bin/env bash
# Builds the reference of the public interface, with Doxygen: build/reference/html/index.html.
# Fails when a public name is not documented.
set -euo pipefail
cd "$(dirname "$0")/.."
if ! command -v doxygen >/dev/null; then
    echo "Doxygen is not installed (the package doxygen)." >&2
    exit 1
fi
mkdir -p build/reference
# What TlvnMisc.h includes, and what framework.h does.
headers=$(sed -n 's/^#include "\(.*\)"/\1/p' TlvnMisc.h framework/framework.h | sort -u)
{
    cat docs/Doxyfile
    echo "OUTPUT_DIRECTORY = build/reference"
    echo "INPUT =" $headers
} | doxygen -
