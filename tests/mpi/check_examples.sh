#!/usr/bin/env bash
# Runs a solver on one rank and on several, and checks that the joined models are equal.
#
#   check_examples.sh MOX SOLVER MPIRUN...
set -euo pipefail

mox=$1 solver=$2
shift 2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

"$@" -np 1 "$solver" one.moxs
"$mox" join one.moxs one.mox
for ranks in 4 6; do
    "$@" -np $ranks "$solver" some.moxs
    "$mox" verify some.moxs >/dev/null
    "$mox" check some.moxs >/dev/null
    said=$("$mox" join some.moxs some.mox --overwrite 2>&1)
    [[ -z $said ]] || { echo "$said" >&2; exit 1; }
    "$mox" check some.mox
    "$mox" diff one.mox some.mox
done
