#!/usr/bin/env bash
# Checks that each preset takes warnings as errors, which nobody else is asked to.
#
#   check_presets.sh SOURCE
set -euo pipefail

cd "$1"
presets=$(cmake --list-presets | sed -n 's/^ *"\([^"]*\)".*/\1/p')
[[ -n $presets ]] || { echo "there are no presets" >&2; exit 1; }
for preset in $presets; do
    cmake -N --preset "$preset" 2>/dev/null | grep -q '^ *MOXWRITER_WARNINGS_AS_ERRORS="ON"$' ||
        { echo "$preset takes no warnings as errors" >&2; exit 1; }
done
grep -q '^option(MOXWRITER_WARNINGS_AS_ERRORS .* OFF)$' CMakeLists.txt ||
    { echo "who builds without a preset has warnings as errors" >&2; exit 1; }
