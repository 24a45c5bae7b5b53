#!/usr/bin/env bash
# Builds hosts in C++ and in C by what pkg-config says alone, and has them write with each of the encoders that
# the library was built with. pkg-config finds the library by its own path, or by PKG_CONFIG_PATH.
#
#   check_pkg_config.sh SOURCE WORK shared|static ENCODER...
set -euo pipefail

source=$1 work=$2 kind=$3
shift 3
mkdir -p "$work"

query=()
[[ $kind == shared ]] || query=(--static)
read -r -a flags <<<"$(pkg-config --cflags --libs "${query[@]}" moxwriter)"
case $kind in
    shared) flags+=("-Wl,-rpath,$(pkg-config --variable=libdir moxwriter)") ;;
    # By its file's name, because the shared one may stand beside it. What it stands on may be shared: ISA-L has
    # no static library in Debian.
    static) flags=("${flags[@]/#-lmoxwriter/-l:libmoxwriter.a}") ;;
esac
g++ -o "$work/in_cpp" "$source/project/ten_lines.cpp" "${flags[@]}"
gcc -o "$work/in_c" "$source/project_c/host.c" "${flags[@]}"
needed=$(objdump -p "$work/in_cpp" "$work/in_c" | grep -c 'NEEDED *libmoxwriter' || true)
[[ $kind:$needed == shared:2 || $kind:$needed == static:0 ]] ||
    { echo "$needed of the hosts need a shared libmoxwriter" >&2; exit 1; }

cd "$work"
for encoder in "$@"; do
    export MOXWRITER_ENCODER=$encoder
    ./in_cpp
    ./in_c "in_c_$encoder.mox"
    mv ten_lines.mox "in_cpp_$encoder.mox"
done
# The variable is heard at all.
if MOXWRITER_ENCODER=none ./in_cpp 2>refusal; then
    echo "an encoder that is not there was not refused" >&2
    exit 1
fi
