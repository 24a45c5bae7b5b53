#!/usr/bin/env bash
# Runs in a root that has nothing of moxwriter: installs its Debian packages, compiles and runs hosts in each
# language, by CMake and by pkg-config, looks at what they wrote with mox, and removes the packages.
#
#   check_packages.sh PACKAGES HOSTS
#
# HOSTS has the folders host and project of the tests, their host with ranks in Python, and the examples.
set -euo pipefail

packages=$1 hosts=$2
work=$(mktemp -d)
export DEBIAN_FRONTEND=noninteractive

say() { printf '\n== %s\n' "$*"; }

# The compilers' packages stay, and those that ours need.
install() {
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends g++ gfortran cmake make pkg-config openmpi-bin >/dev/null
    apt-get install -y -qq --no-install-recommends "$packages"/*.deb >/dev/null
    ours=$(for file in "$packages"/*.deb; do dpkg-deb --field "$file" Package; done)
    # shellcheck disable=SC2086
    dpkg --listfiles $ours | sort -u >"$work/files"
}

by_cmake() {
    cmake -S "$1" -B "$work/$2" -DCMAKE_BUILD_TYPE=Debug "${@:3}" >/dev/null
    cmake --build "$work/$2" >/dev/null
}

by_pkg_config() {
    local output=$1 packages=$2
    shift 2
    # shellcheck disable=SC2046
    "$@" $(pkg-config --cflags --libs $packages) -o "$work/$output"
}

hosts_by_cmake() {
    say "hosts by CMake"
    export OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1
    by_cmake "$hosts/host/project" cpp -DWITH_MPI=ON
    by_cmake "$hosts/host/project_c" c -DWITH_MPI=ON
    by_cmake "$hosts/host/project_fortran" fortran -DWITH_MPI=ON
    for folder in cpp c fortran; do
        ctest --test-dir "$work/$folder" --output-on-failure --no-tests=error
    done
    by_cmake "$hosts/project" reader
}

hosts_by_pkg_config() {
    say "hosts by pkg-config"
    for kind in shared static; do
        bash "$hosts/host/check_pkg_config.sh" "$hosts/host" "$work/$kind" $kind zlib libdeflate isal
    done
    cd "$work"
    by_pkg_config meshes moxwriter g++ -std=c++11 "$hosts/examples/06_meshes.cpp"
    by_pkg_config heat moxwriter gcc -std=c99 "$hosts/examples/c/01_transient_heat.c" -lm
    by_pkg_config frame moxwriter-fortran gfortran "$hosts/examples/fortran/01_shaken_frame.f90"
    by_pkg_config wave moxwriter-mpi mpicxx -std=c++11 "$hosts/examples/mpi/01_wave.cpp"
    by_pkg_config wave_in_fortran moxwriter-fortran-mpi mpifort "$hosts/examples/mpi/02_wave.f90"
    by_pkg_config read moxread g++ -std=c++17 "$hosts/project/list_datasets.cpp"
    ./meshes meshes.mox
    ./heat heat.mox
    ./frame frame.mox
    mpirun --oversubscribe -np 2 ./wave wave.moxs
    mpirun --oversubscribe -np 2 ./wave_in_fortran wave_in_fortran.moxs
    python3 "$hosts/examples/python/01_modal_analysis.py" modal.mox
    mpirun --oversubscribe -np 2 python3 "$hosts/bar.py" bar.moxs 2
}

what_they_wrote() {
    say "mox"
    cd "$work"
    mox translate "$hosts/examples/data/cantilever.frd" cantilever.mox
    mox join wave.moxs wave.mox
    mox verify ./*.mox ./*.moxs shared/*.mox static/*.mox
    mox check meshes.mox
    mox export meshes.mox exported.pvd
    mox translate exported.pvd again.mox
    mox view cantilever.mox cantilever.png
    "$work/reader/list_datasets" meshes.mox | diff - <(./read meshes.mox)
    [[ -s cantilever.png ]]
    man_page=/usr/share/man/man1/mox-view.1.gz
    gzip --test "$man_page" /usr/share/man/man1/mox.1.gz
    grep -q '^complete .*mox' /usr/share/bash-completion/completions/mox
    [[ -s /usr/share/doc/moxwriter-doc/html/start.html ]]
}

remove() {
    say "nothing is left"
    # shellcheck disable=SC2086
    apt-get purge -y -qq $ours >/dev/null
    local status=0 file
    while IFS= read -r file; do
        [[ -e $file || -L $file ]] && ! dpkg --search "$file" >/dev/null 2>&1 || continue
        # Folders that the base system made itself belong to nobody.
        [[ $file == /. || -d $file && $(grep -cxF "$file" /before) -gt 0 ]] && continue
        echo "left: $file" >&2
        status=1
    done <"$work/files"
    left=$(find / -xdev \( -path "$packages" -o -path "$hosts" -o -path "$work" -o -path /proc -o -path /sys \
        -o -path '/var/lib/apt/*' -o -path '/var/cache/*' \) -prune -o -iname '*mox*' -print)
    [[ -z $left ]] || { echo "left: $left" >&2; status=1; }
    ! dpkg --list | grep -E 'mox(writer|read)?' || status=1
    return $status
}

find / -xdev -type d >/before
install
hosts_by_cmake
hosts_by_pkg_config
what_they_wrote
remove
say "packages are whole"
