#!/usr/bin/env bash
# Installs a build into a clean prefix, moves the prefix away, and runs commands that need the
# libraries of other formats, by way of a link and with no folder of the prefix in PATH.
#
#   check_installed.sh BUILD WORK MODEL COMPONENT...
set -euo pipefail

build=$1 work=$2 model=$3
shift 3

rm -rf "$work"
mkdir -p "$work/output"
cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"
ln -s ../prefix/bin/mox "$work/output/command"
cd "$work/output"

check_vtk()
{
    ./command export "$model" grid.vtu
    ./command view "$model" picture.png
    ./command translate grid.vtu of_vtk.mox
    ./command verify of_vtk.mox
}

check_gmsh()
{
    cat >line.msh <<'END'
$MeshFormat
4.1 0 8
$EndMeshFormat
$Entities
0 1 0 0
1 0 0 0 1 0 0 0 0
$EndEntities
$Nodes
1 2 7 8
1 1 0 2
8
7
0 0 0
1 0 0
$EndNodes
$Elements
1 1 1 1
1 1 1 1
1 8 7
$EndElements
END
    ./command translate line.msh of_gmsh.mox
    ./command verify of_gmsh.mox
}

# Nothing here makes such a file, but it is this format's reader that complains.
check_exodus()
{
    printf 'CDF\x01 floating_point_word_size' >cut.exo
    local status=0
    ./command translate cut.exo of_exodus.mox 2>refusal || status=$?
    cat refusal
    [ "$status" -eq 1 ]
    grep -q '^mox translate: cut.exo: The file is ' refusal
}

for component in "$@"; do
    "check_${component,,}"
done
