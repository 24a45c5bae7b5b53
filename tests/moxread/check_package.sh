#!/usr/bin/env bash
# Installs a build into a clean prefix, moves the prefix away, builds a tool against the reader that
# is in it, and runs the tool on a model file, a sound one and one that is cut short.
#
#   check_package.sh BUILD WORK GENERATOR MODEL
set -euo pipefail

build=$1 work=$2 generator=$3 model=$4

rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"
cmake -S "$(dirname "$0")/project" -B "$work/tool" -G "$generator" \
    -DCMAKE_PREFIX_PATH="$work/prefix"
cmake --build "$work/tool"

"$work/tool/list_datasets" "$model" | tee "$work/listed"
expected=$("$work/prefix/bin/mox" ls "$model" | grep -c '^ *dataset ')
[ "$expected" -gt 0 ] || { echo "the model has no datasets" >&2; exit 1; }
[ "$(wc -l <"$work/listed")" -eq "$expected" ] || { echo "$expected lines expected" >&2; exit 1; }

# The same by pkg-config, which knows the library wherever it lies.
export PKG_CONFIG_PATH=$work/prefix/lib/pkgconfig
read -r -a flags <<<"$(pkg-config --cflags --libs moxread)"
g++ -std=c++17 -o "$work/by_pkg_config" "$(dirname "$0")/project/list_datasets.cpp" "${flags[@]}" \
    -Wl,-rpath,"$work/prefix/lib"
"$work/by_pkg_config" "$model" | diff "$work/listed" -

head -c 1000 "$model" >"$work/short.mox"
status=0
"$work/tool/list_datasets" "$work/short.mox" 2>"$work/refusal" || status=$?
[ "$status" -eq 1 ] || { echo "status $status for a file that is cut short" >&2; exit 1; }
grep -q ': incomplete: ' "$work/refusal"
