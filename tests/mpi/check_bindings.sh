#!/usr/bin/env bash
# Lets programs in other languages write the bar that the one in C++ writes, and compares the models; then lets one
# of their ranks fail in several ways, and looks whether all of them end, and know why.
#
#   check_bindings.sh MOX HOST BAR... -- MPIRUN...
#
# Each BAR is a program, or an interpreter and a program in one word with a colon between.
set -euo pipefail
. "${BASH_SOURCE%/*}/scratch.sh"

mox=$1 host=$2
shift 2
take_programs "$@"

# How rank 1 is refused something, and what all ranks say then.
declare -A sentences=(
    [width]="Rank 1: Invalid arguments: Displacement needs 3 columns, the array has 1"
    [steps]="Rank 1: Invalid arguments: steps, and another step beside them"
    [name]="Rank 1: Invalid arguments: the name is null"
    [own]="Rank 1: the solver does not converge"
    [type]="Rank 1: TypeError: a name, path or text is str or bytes, not int"
    [block]="Rank 1: ArithmeticError: the time step is 0"
    [options]="Rank 0: Invalid arguments: the path or the options are not the same on all ranks"
    [path]="Rank 0: Invalid arguments: the path or the options are not the same on all ranks"
    [handle]="Rank 0: Invalid arguments: the path or the options are not the same on all ranks")

"${mpirun[@]}" -np 4 "$host" cpp.moxs 2
for bar in "${programs[@]}"; do
    IFS=: read -ra program <<<"$bar"
    "${mpirun[@]}" -np 4 "${program[@]}" bar.moxs 2
    "$mox" verify bar.moxs >/dev/null
    "$mox" diff cpp.moxs bar.moxs || fail "$bar writes another model"
    for fault in $("${program[@]}" faults); do
        status=0
        timeout 30 "${mpirun[@]}" -np 4 "${program[@]}" bar.moxs 2 "$fault" >said 2>log || status=$?
        [[ $status -ne 124 ]] || fail "$bar hangs after $fault"
        # Rank 1 may tell what it was refused itself, and lines of two ranks may run into each other.
        [[ $(grep -oF "${sentences[$fault]}" said | wc -l) -ge 3 ]] || fail "$bar says after $fault: $(cat said log)"
        ! "$mox" verify bar.moxs >/dev/null 2>&1 || fail "the model of $bar is whole after $fault"
        rm -f bar.moxs
    done
done
