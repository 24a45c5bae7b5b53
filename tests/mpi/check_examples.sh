#!/usr/bin/env bash
# Runs solvers on one rank and on several, and checks that the joined models are equal: all solvers compute the same.
#
#   check_examples.sh MOX SOLVER... -- MPIRUN...
set -euo pipefail
. "${BASH_SOURCE%/*}/scratch.sh"

mox=$1
shift
take_programs "$@"

"${mpirun[@]}" -np 1 "${programs[0]}" one.moxs
"$mox" join one.moxs one.mox
for solver in "${programs[@]}"; do
    for ranks in 1 4 6; do
        "${mpirun[@]}" -np $ranks "$solver" some.moxs
        "$mox" verify some.moxs >/dev/null
        "$mox" check some.moxs >/dev/null
        said=$("$mox" join some.moxs some.mox --overwrite 2>&1)
        [[ -z $said ]] || { echo "$said" >&2; exit 1; }
        "$mox" check some.mox
        "$mox" diff one.mox some.mox
    done
done
