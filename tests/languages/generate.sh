#!/usr/bin/env bash
# Makes the sequences that all languages play.
#
#   generate.sh GENERATOR SEQUENCES
set -euo pipefail

"$1" 1 500 >"$2"
