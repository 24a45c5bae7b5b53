#!/usr/bin/env bash
# Kills a rank of a program anywhere, and checks that the program ends, and that the index tells which files
# are whole: those that are verify as models, and no others.
#
#   check_killed.sh MOX HOST MPIRUN...
#
# MOXWRITER_MPI_KILLS: how often, 6 unless set.
set -euo pipefail
. "${BASH_SOURCE%/*}/scratch.sh"

mox=$1 host=$2
shift 2

runs=${MOXWRITER_MPI_KILLS:-6}
ended=0
for ((run = 0; run < runs; ++run)); do
    # The calls of four ranks; behind the last of them nothing is killed any more.
    call=$(((run * 37 + 5) % 48))
    if timeout 30 "$@" -np 4 "$host" wave.moxs 1 "$call" >log 2>&1; then
        "$mox" verify wave.moxs >/dev/null
        continue
    else
        status=$?
    fi
    [[ $status -ne 124 ]] || { echo "run $run hangs" >&2; exit 1; }
    ended=$((ended + 1))
    ! "$mox" verify wave.moxs >/dev/null 2>said || { echo "run $run: the set is called whole" >&2; exit 1; }
    list=$("$mox" ls --parts wave.moxs)
    for part in 0 1 2 3; do
        line=$(grep "\"wave.$part.mox\" of rank $part" <<<"$list")
        if "$mox" verify "wave.$part.mox" >/dev/null 2>&1; then
            [[ $line == *": ok" ]] || { echo "run $run: $line, but it is whole" >&2; exit 1; }
        else
            [[ $line == *" is incomplete: "* || $line == *" is empty" ]] || { echo "run $run: $line, but it is not whole" >&2; exit 1; }
        fi
    done
done
[[ $ended -gt 0 ]] || { echo "no rank was killed" >&2; exit 1; }
echo "$ended of $runs programs were ended by a killed rank"
