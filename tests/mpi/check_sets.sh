#!/usr/bin/env bash
# Checks what mox says of the files that the ranks of a program leave, whole and otherwise.
#
#   check_sets.sh MOX HOST MPIRUN...
set -euo pipefail
. "${BASH_SOURCE%/*}/scratch.sh"

mox=$1 host=$2
shift 2

# The text that a command prints, all of it, has to have this in it.
expect()
{
    local text=$1 said
    shift
    said=$("$@" 2>&1) || true
    [[ $said == *"$text"* ]] || fail "$* says: $said, not: $text"
}

"$@" -np 4 "$host" wave.moxs 2
"$mox" verify wave.moxs >/dev/null
expect "wave.moxs: ok (12 blocks" "$mox" verify wave.moxs
expect "2 files, 0 bad" "$mox" verify --parts wave.moxs
expect "wave.moxs: ok (4 shapes, 28 datasets, 3 steps)" "$mox" check wave.moxs
expect "wave.1.mox: ok (2 shapes" "$mox" check --parts wave.moxs
expect '"wave.1.mox" of ranks 2 to 3: ok' "$mox" ls --parts wave.moxs
expect '"Rank" = 3' "$mox" ls wave.moxs
expect "mox set 1: 2 files of 4 ranks" "$mox" info wave.moxs
expect "wave.1.mox:" "$mox" info --parts wave.moxs
"$mox" diff wave.moxs wave.moxs
"$mox" diff --threads 2 wave.moxs wave.moxs
[[ $("$mox" dump wave.moxs '#10' 'Node Ids' | tail -n 1) == 65 ]] || fail "values of the last rank are not found"
expect 'several nodes have the path "Wave/Parts/Bar"' "$mox" dump wave.moxs Wave/Parts/Bar 'Node Ids'

# A model that outlives MPI can't ask the other ranks whether it is whole.
said=$("$@" -np 2 "$host" late late.moxs)
[[ $(grep -c "^MPI is not initialised$" <<<"$said") == 4 ]] || fail "without MPI a rank says: $said"
expect '"late.0.mox" of ranks 0 to 1 is incomplete' "$mox" verify late.moxs

# Joined, it is what one rank writes alone, however many ranks there are and share a file.
"$host" serial serial.mox
mkdir every
"$@" -np 8 "$host" every every
sets=(every/*.moxs)
[[ ${#sets[@]} -eq 9 ]] || fail "there are the sets ${sets[*]}"
for set in "${sets[@]}"; do
    "$mox" verify --parts "$set" >/dev/null
    "$mox" verify "$set" >/dev/null
    "$mox" check --parts "$set" >/dev/null
    "$mox" check "$set" >/dev/null
    "$mox" join "$set" joined.mox --overwrite >said 2>&1
    [[ ! -s said ]] || fail "join says: $(cat said)"
    "$mox" diff serial.mox joined.mox || fail "$set, joined, is another model"
    "$mox" verify joined.mox >/dev/null
    expect "joined.mox: ok (1 shape, 7 datasets, 3 steps)" "$mox" check joined.mox
done
expect "joined.mox: " "$mox" join wave.moxs joined.mox

# File by file.
"$mox" diff --parts wave.moxs every/4.2.moxs
"$@" -np 4 "$host" other.moxs 4
expect "other.moxs: its files are of other ranks than those of wave.moxs" "$mox" diff --parts wave.moxs other.moxs
mkdir twice
cp wave.0.mox twice/
cp wave.0.mox twice/wave.1.mox
sed -e 's/"complete": true/"complete": false/' -e 's/, "size".*"}/}/' wave.moxs >twice/wave.moxs
expect $'wave.1.mox and twice/wave.1.mox:\n"Wave/Parts/Bar" dataset "Coordinates"' "$mox" diff --parts wave.moxs twice/wave.moxs
expect $'every/4.1.3.mox:\n49' "$mox" dump --parts every/4.1.moxs Wave/Parts/Bar 'Node Ids'
"$mox" dump --parts every/4.1.moxs Wave/Parts/Bar 'Node Ids' -o ids.csv
[[ $(tail -n 1 ids.3.csv) == 65 && $(tail -n 1 ids.0.csv) == 17 ]] || fail "dump --parts -o"
expect "this is one of the files to join" "$mox" join wave.moxs wave.0.mox --overwrite
expect "this is no index of a partitioned model" "$mox" join serial.mox joined.mox --overwrite
[[ $("$mox" join wave.moxs joined.mox --overwrite --json) == *'"shapes": 1'* ]] || fail "JSON of join"

# What is wrong with a file is said in one sentence.
cp wave.1.mox whole.mox
rm wave.1.mox
expect 'wave.moxs: "wave.1.mox" of ranks 2 to 3 is missing' "$mox" verify wave.moxs
expect '"wave.1.mox" of ranks 2 to 3 is missing' "$mox" ls --parts wave.moxs
! "$mox" ls wave.moxs >/dev/null 2>&1 || fail "a set without a file is listed"
: >wave.1.mox
expect 'wave.moxs: "wave.1.mox" of ranks 2 to 3 is empty' "$mox" verify wave.moxs
head -c 3000 whole.mox >wave.1.mox
expect 'wave.moxs: "wave.1.mox" of ranks 2 to 3 is incomplete: ' "$mox" check wave.moxs
cp wave.0.mox wave.1.mox
expect 'wave.moxs: "wave.1.mox" of ranks 2 to 3 is of another run: its root index is' "$mox" verify --parts wave.moxs
sed -e 's/"complete": true/"complete": false/' -e 's/, "size".*"}/}/' wave.moxs >begun.moxs
expect 'begun.moxs: "wave.1.mox": it is of another run: it has values of rank 0, not only of ranks 2 to 3' "$mox" ls begun.moxs
cp whole.mox wave.1.mox
"$mox" verify wave.moxs >/dev/null
expect "begun.moxs: incomplete: the program ended before it finished the index" "$mox" verify begun.moxs
expect '"Rank" = 3' "$mox" ls begun.moxs

# An index is not believed.
sed 's/wave.1.mox/..\/wave.1.mox/' wave.moxs >bad.moxs
expect "leads out of the index's folder" "$mox" verify bad.moxs
sed 's/\[\[2, 3\]\]/[[0, 3], [2, 3]]/' wave.moxs >bad.moxs
expect "bad.moxs: the files of the index are not of each rank once" "$mox" verify bad.moxs
sed 's/\[\[2, 3\]\]/[[2, 4]]/' wave.moxs >bad.moxs
expect "bad.moxs: the files of the index are not of each rank once" "$mox" verify bad.moxs
sed 's/"version": 1/"version": 2/' wave.moxs >bad.moxs
expect "bad.moxs: the version of the index is 2, not 1" "$mox" ls --parts bad.moxs
head -c 100 wave.moxs >bad.moxs
expect "bad.moxs: this is no index" "$mox" info bad.moxs

# What a killed rank has left is recovered file by file, and the index finished when all are whole.
! MOXWRITER_RECOVERABLE=1 "$@" -np 4 "$host" killed.moxs 2 26 >/dev/null 2>&1 || fail "no rank was killed"
cp -r . ../"$(basename "$folder").copy"
copy=../$(basename "$folder").copy
trap 'rm -rf "$folder" "$folder.copy"' EXIT
expect 'killed.moxs: "killed.0.mox" of ranks 0 to 1 is incomplete' "$mox" verify killed.moxs
expect "The files of an index are recovered in their places" "$mox" recover killed.moxs -o other.mox
"$mox" recover killed.moxs >said || fail "recover says: $(cat said)"
[[ $(<said) == *"killed.1.mox: "*"killed.moxs: finished: all files are whole"* ]] || fail "recover says: $(cat said)"
"$mox" verify killed.moxs >/dev/null
"$mox" join killed.moxs joined.mox --overwrite >/dev/null 2>&1
"$mox" verify joined.mox >/dev/null
expect "killed.moxs: whole; there is nothing to recover" "$mox" recover killed.moxs
# Files that went on for longer, and files that nothing can be made of.
cd "$copy"
rm -r killed.0.mox.recovery
cp wave.0.mox killed.0.mox
cp killed.moxs begun.moxs
said=$("$mox" recover killed.moxs)
[[ $said == *"killed.moxs: finished: all files are whole; they have "[12]" to 3 steps: the last ones are not there of all ranks" ]] ||
    fail "recover says: $said"
cp begun.moxs killed.moxs
head -c 3000 wave.1.mox >killed.1.mox
! "$mox" recover killed.moxs >said 2>errors || fail "what can't be recovered is"
[[ $(<said) == "killed.0.mox: whole; there is nothing to recover" ]] || fail "recover says: $(cat said)"
[[ $(<errors) == "killed.1.mox: There is nothing to recover from"* ]] || fail "recover says: $(cat errors)"
cmp begun.moxs killed.moxs
