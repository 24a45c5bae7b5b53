#!/usr/bin/env bash
# Checks that the command starts without libraries that take long to load. Each of them is loaded by
# the program that the command leaves other formats to, so that no name is looked for in vain.
#
#   check_libraries.sh MOX MOX_FORMATS LIBRARY...
set -euo pipefail

of_mox=$(ldd "$1") of_formats=$(ldd "$2")
shift 2

status=0
for library in "$@"; do
    if [[ $of_mox == *$library* ]]; then
        echo "mox loads $library" >&2
        status=1
    fi
    if [[ $of_formats != *$library* ]]; then
        echo "mox-formats does not load $library" >&2
        status=1
    fi
done
exit "$status"
