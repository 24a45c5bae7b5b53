#!/usr/bin/env bash
# Makes the sequences that all languages play.
#
#   generate.sh GENERATOR COUNT SEQUENCES
set -euo pipefail

"$1" 1 "$2" >"$3"
