#!/usr/bin/env bash
# Installs the library with the module for Fortran into a clean prefix, and builds and runs the host in
# project_fortran/ against it, by CMake and by pkg-config.
#
#   check_fortran.sh SOURCE WORK shared|static GENERATOR
set -euo pipefail

source=$1 work=$2 kind=$3 generator=$4
case $kind in
    shared) shared=ON ;;
    static) shared=OFF ;;
esac
# The library of check_host.sh, to which only the module is added.
folder=$work/$kind-Release
library=$folder/library
prefix=$folder/prefix-fortran
host=$folder/host-fortran

cmake -S "$source" -B "$library" -G "$generator" -DCMAKE_BUILD_TYPE=Release \
    -DBUILD_SHARED_LIBS=$shared -DMOXWRITER_BUILD_TOOLS=OFF -DMOXWRITER_BUILD_TESTS=OFF \
    -DMOXWRITER_BUILD_EXAMPLES=OFF -DMOXWRITER_WARNINGS_AS_ERRORS=ON -DMOXWRITER_COMPILE_TOGETHER=ON -DMOXWRITER_BUILD_PYTHON=OFF -DMOXWRITER_BUILD_FORTRAN=ON
cmake --build "$library"
rm -rf "$prefix" "$host"
cmake --install "$library" --prefix "$prefix"

with_mpi=OFF
[[ -z $(find "$prefix" -name moxwriterFortranMpiTargets.cmake) ]] || with_mpi=ON
cmake -S "$source/tests/host/project_fortran" -B "$host" -G "$generator" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_PREFIX_PATH="$prefix" -DWITH_MPI=$with_mpi
cmake --build "$host"
ctest --test-dir "$host" --output-on-failure --no-tests=error

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
read -r -a flags <<<"$(pkg-config --cflags --libs moxwriter-fortran)"
gfortran -o "$host/by_pkg_config" "$source/tests/host/project_fortran/host.f90" "${flags[@]}" \
    -Wl,-rpath,"$prefix/lib"
"$host/by_pkg_config" "$host/by_pkg_config.mox"
