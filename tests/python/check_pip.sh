#!/usr/bin/env bash
# Installs the package with pip, from what the system has alone, into a virtual environment, and writes and
# reads a model with it.
#
#   check_pip.sh SOURCE WORK PYTHON MOX VERSION
set -euo pipefail

source=$1 work=$2 python=$3 mox=$4 version=$5

rm -rf "$work"
"$python" -m venv --without-pip --system-site-packages "$work/venv"
# As the presets compile, so that a compiler cache knows the sources already.
CMAKE_ARGS="-DMOXWRITER_WARNINGS_AS_ERRORS=ON -DMOXWRITER_COMPILE_TOGETHER=ON" "$work/venv/bin/python" -m pip install \
    --quiet --no-index --no-build-isolation --disable-pip-version-check "$source"

cd "$work"
"$work/venv/bin/python" -I "$(dirname "$0")/write_and_read.py" "$work/venv" model.mox | tee said
grep -qxF "moxwriter $version" said
"$mox" verify model.mox
"$work/venv/bin/python" -m pip show --files moxwriter >files
grep -q 'moxwriter/_writer\.pyi$' files
