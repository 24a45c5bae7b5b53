#!/usr/bin/env bash
# Builds a host that takes the library into its own build by FetchContent. Then the host asks for a warning that
# the library's sources give: it is told of, and nothing fails for it, as it does in the presets.
#
#   check_fetch.sh SOURCE WORK
set -euo pipefail

source=$1 work=$2

rm -rf "$work"
# Compiled as by the preset: a compiler cache knows the library.
cmake -S "$source/tests/host/project_fetch" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DMOXWRITER_SOURCE="$source" -DMOXWRITER_PRECOMPILE_HEADERS=ON -DMOXWRITER_WARNINGS_AS_ERRORS=ON
cmake --build "$work" --target host
ctest --test-dir "$work" --output-on-failure --no-tests=error

cmake "$work" -UMOXWRITER_PRECOMPILE_HEADERS -UMOXWRITER_WARNINGS_AS_ERRORS -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS=-Waggregate-return
ninja -C "$work" _deps/moxwriter-build/src/Zyl2/CMakeFiles/moxwriter_objects.dir/Mox/Group.cpp.o >"$work/said" ||
    { cat "$work/said"; exit 1; }
grep -q '/src/Zyl2/.*: warning: ' "$work/said" ||
    { echo "the library's sources did not warn: this shows nothing" >&2; exit 1; }
