#!/usr/bin/env bash
# Builds a host that takes the library into its own build by FetchContent and asks for a warning that the library's
# sources give: it is told of, and nothing fails for it, as it would in the presets.
#
#   check_fetch.sh SOURCE WORK
set -euo pipefail

source=$1 work=$2

rm -rf "$work"
# In folders of other depths a compiler cache does not know the library again: what compiles soonest is enough.
cmake -S "$source/tests/host/project_fetch" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS_RELEASE=-O0 -DCMAKE_CXX_FLAGS=-Wpadded \
    -DMOXWRITER_SOURCE="$source" -DMOXWRITER_PRECOMPILE_HEADERS=ON -DMOXWRITER_COMPILE_TOGETHER=ON
cmake --build "$work" --target host >"$work/said" || { cat "$work/said"; exit 1; }
grep -q '/src/Zyl2/.*: warning: ' "$work/said" ||
    { echo "the library's sources did not warn: this shows nothing" >&2; exit 1; }
ctest --test-dir "$work" --output-on-failure --no-tests=error
