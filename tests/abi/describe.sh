#!/usr/bin/env bash
# Describes the interface of a library that was built with debug information: its exported symbols, and what its
# headers say of the types behind them.
#
#   describe.sh LIBRARY HEADERS OUTPUT
set -euo pipefail

abidw --headers-dir "$2" --drop-private-types --exported-interfaces-only --no-show-locs --no-corpus-path \
    --no-comp-dir-path --no-elf-needed --no-architecture --out-file "$3" "$1"
