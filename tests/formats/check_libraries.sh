#!/usr/bin/env bash
# Checks that each library that takes long to load is loaded by the one program that the command leaves its
# formats to, so that no name is looked for in vain, and neither by the command nor by the other programs.
#
#   check_libraries.sh FOLDER PROGRAM=LIBRARY...
set -euo pipefail

folder=$1
shift
programs=$(printf '%s\n' mox "${@%%=*}" | sort -u)

status=0
for pair in "$@"; do
    library=${pair#*=}
    for program in $programs; do
        loads=no wanted=no
        [[ $(ldd "$folder/$program") != *$library* ]] || loads=yes
        [[ $program != "${pair%%=*}" ]] || wanted=yes
        [[ $loads != "$wanted" ]] || continue
        echo "$program loads $library: $loads" >&2
        status=1
    done
done
exit "$status"
