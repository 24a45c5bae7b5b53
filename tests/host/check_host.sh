#!/usr/bin/env bash
# Installs the library into a clean prefix and builds and runs the hosts in project/ and project_c/
# against it.
#
#   check_host.sh SOURCE WORK shared|static Release|Debug COMPILER GENERATOR
set -euo pipefail

source=$1 work=$2 kind=$3 config=$4 compiler=$5 generator=$6
case $kind in
    shared) shared=ON ;;
    static) shared=OFF ;;
esac
# Hosts of all kinds find their prefix by the same relative path, so that a compiler cache can tell that
# they are compiled alike.
folder=$work/$kind-$config
library=$folder/library
prefix=$folder/prefix
host=$folder/host-$compiler
case $compiler in
    g++) c_compiler=gcc ;;
    clang++) c_compiler=clang ;;
esac

cmake -S "$source" -B "$library" -G "$generator" -DCMAKE_BUILD_TYPE="$config" \
    -DBUILD_SHARED_LIBS=$shared -DMOXWRITER_BUILD_TOOLS=OFF -DMOXWRITER_BUILD_TESTS=OFF \
    -DMOXWRITER_BUILD_EXAMPLES=OFF -DMOXWRITER_WARNINGS_AS_ERRORS=ON -DMOXWRITER_COMPILE_TOGETHER=ON -DMOXWRITER_BUILD_PYTHON=OFF -DMOXWRITER_BUILD_FORTRAN=OFF
cmake --build "$library"
rm -rf "$prefix" "$host" "$host-c"
cmake --install "$library" --prefix "$prefix"

with_mpi=OFF
[[ -z $(find "$prefix" -name moxwriterMpiTargets.cmake) ]] || with_mpi=ON
cmake -S "$source/tests/host/project" -B "$host" -G "$generator" -DCMAKE_BUILD_TYPE="$config" \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$prefix" -DWITH_MPI=$with_mpi
cmake --build "$host"
ctest --test-dir "$host" --output-on-failure --no-tests=error

# How C finds and links the library does not depend on how that was optimised.
[[ $config == Release ]] || exit 0
cmake -S "$source/tests/host/project_c" -B "$host-c" -G "$generator" -DCMAKE_BUILD_TYPE="$config" \
    -DCMAKE_C_COMPILER="$c_compiler" -DCMAKE_PREFIX_PATH="$prefix" -DWITH_MPI=$with_mpi
cmake --build "$host-c"
ctest --test-dir "$host-c" --output-on-failure --no-tests=error

# Once for each kind of library: what pkg-config says is the same for all compilers.
command -v pkg-config >/dev/null || exit 0
encoders=$(sed -n 's/^MOXWRITER_ENCODERS:INTERNAL=//p' "$library/CMakeCache.txt")
PKG_CONFIG_PATH=$prefix/lib/pkgconfig bash "$(dirname "$0")/check_pkg_config.sh" "$source/tests/host" \
    "$folder/by_pkg_config" "$kind" ${encoders//,/}
