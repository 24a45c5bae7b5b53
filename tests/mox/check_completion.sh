#!/usr/bin/env bash
# Completes command lines as bash would and compares what is offered.
#
#   check_completion.sh COMPLETION MOX
set -euo pipefail

completion=$(realpath "$1") mox=$(realpath "$2")
# shellcheck source=/dev/null
source "$completion"

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
mkdir models
touch beam.mox "big beam.mox" beam.frd models/deep.mox

failures=0

# offered WORD... : what completes the last word, sorted, separated by "|".
offered()
{
    COMP_WORDS=(mox "$@")
    COMP_CWORD=$#
    _mox
    printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd '|'
}

expect()
{
    local expected=$1 found
    shift
    found=$(offered "$@")
    if [[ $found != "$expected" ]]; then
        echo "mox $*: \"$found\" is offered, not \"$expected\"" >&2
        failures=$((failures + 1))
    fi
}

expect 'diff|dump' d
expect 'verify|view' v
expect 'translate' t
expect '--help|--version' --
expect 'check' c
expect '' check beam.mox ''
expect '' paint ''
expect 'beam.mox|big beam.mox|models' ls ''
expect 'big beam.mox' ls bi
expect 'models/deep.mox' verify models/
expect '' ls beam.mox ''
expect 'beam.mox|big beam.mox|models' verify beam.mox ''
expect 'beam.mox|big beam.mox|models' diff beam.mox ''
expect '' diff beam.mox beam.mox ''
expect 'beam.mox|big beam.mox|models' diff --tolerance 1 ''
expect 'beam.frd|beam.mox|big beam.mox|models' translate ''
expect '--threads|--tolerance' diff --t
expect 'csv|npy|text' dump beam.mox a b --format ''
expect 'csv' dump --format c
expect 'beam.frd|beam.mox|big beam.mox|models' dump beam.mox a b -o ''
expect '' dump beam.mox a b --step ''
expect 'iso' view --camera i
expect '--overwrite' export beam.mox out.vtu --o

# Every command, and every option that a command's help names, is offered.
commands=$("$mox" --help | sed -n '/^Subcommands:/,$s/^  \([a-z]\+\) .*/\1/p')
[[ -n $commands ]] || { echo "no commands are known" >&2; exit 1; }
for command in $commands; do
    expect "$command" "$command"
    options=$("$mox" "$command" --help | sed -n '/^Options:/,$s/^  \(-[a-z],\)\?\(--[a-z-]*\).*/\2/p')
    [[ -n $options ]] || { echo "$command has no options" >&2; exit 1; }
    for option in $options; do
        found=$(offered "$command" "$option")
        if [[ "|$found|" != *"|$option|"* ]]; then
            echo "mox $command: $option is not offered" >&2
            failures=$((failures + 1))
        fi
    done
done

[ "$failures" -eq 0 ]
