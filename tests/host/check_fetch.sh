#!/usr/bin/env bash
# Builds a host that takes the library into its own build by FetchContent and asks for a warning that the
# library's sources give: it is told of, and nothing fails for it, as it does in the presets. The shared libraries
# are there then with debug information, for tests/abi.
#
#   check_fetch.sh SOURCE WORK GENERATOR
set -euo pipefail

source=$1 work=$2 generator=$3

rm -rf "$work"
# Not optimised, and several sources at a time: two minutes become one.
cmake -S "$source/tests/host/project_fetch" -B "$work" -G "$generator" -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS="-O0 -Waggregate-return" -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 \
    -DMOXWRITER_SOURCE="$source" -DMOXWRITER_BUILD_TOOLS=ON -DMOXWRITER_WITH_VTK=OFF \
    -DMOXWRITER_WITH_EXODUS=OFF -DMOXWRITER_WITH_GMSH=OFF
libraries=(moxread)
! grep -q '^MOXWRITER_HAS_MPI:INTERNAL=ON$' "$work/CMakeCache.txt" || libraries+=(moxwriter_mpi)
cmake --build "$work" --target host "${libraries[@]}" >"$work/said" 2>&1 || { cat "$work/said"; exit 1; }
grep -q '/src/Zyl2/.*: warning: ' "$work/said" ||
    { echo "the library's sources did not warn: this shows nothing" >&2; exit 1; }
ctest --test-dir "$work" --output-on-failure --no-tests=error
