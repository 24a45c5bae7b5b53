#!/usr/bin/env bash
# Installs a build into a clean prefix, moves the prefix away, and writes and reads a model with the package
# for Python that is in it.
#
#   check_installed.sh BUILD WORK PYTHON MOX SITE
set -euo pipefail

build=$1 work=$2 python=$3 mox=$4 site=$5

rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"

cd "$work"
PYTHONPATH=$work/prefix/$site "$python" -B "$(dirname "$0")/write_and_read.py" "$work/prefix" model.mox
"$mox" verify model.mox
