#!/usr/bin/env bash
# Runs solvers on one rank and on several, and checks that the joined models are equal: all solvers compute the same.
#
#   check_examples.sh MOX SOLVER... -- MPIRUN...
set -euo pipefail

mox=$1
shift
solvers=()
while [[ $1 != -- ]]; do
    solvers+=("$1")
    shift
done
shift
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

"$@" -np 1 "${solvers[0]}" one.moxs
"$mox" join one.moxs one.mox
for solver in "${solvers[@]}"; do
    for ranks in 1 4 6; do
        "$@" -np $ranks "$solver" some.moxs
        "$mox" verify some.moxs >/dev/null
        "$mox" check some.moxs >/dev/null
        said=$("$mox" join some.moxs some.mox --overwrite 2>&1)
        [[ -z $said ]] || { echo "$said" >&2; exit 1; }
        "$mox" check some.mox
        "$mox" diff one.mox some.mox
    done
done
