#!/usr/bin/env bash
# Checks that the manual pages are sound, and that there is one for each command, which names each of
# its options.
#
#   check_man.sh FOLDER MOX MANDOC
set -euo pipefail

folder=$1 mox=$2 mandoc=$3

"$mandoc" -T lint "$folder"/*.1

status=0
complain()
{
    echo "$1" >&2
    status=1
}

for option in $("$mox" --help | sed -n '/^Options:/,/^$/s/^  \(-[a-z],\)\?\(--[a-z-]*\).*/\2/p'); do
    grep -qF -e "${option//-/\\-}" "$folder/mox.1" || complain "mox.1 does not name $option"
done

commands=$("$mox" --help | sed -n '/^Subcommands:/,$s/^  \([a-z]\+\) .*/\1/p')
[[ -n $commands ]] || { echo "no commands are known" >&2; exit 1; }
for command in $commands; do
    page=$folder/mox-$command.1
    grep -q "mox-$command " "$folder/mox.1" || complain "mox.1 does not name $command"
    if [[ ! -e $page ]]; then
        complain "mox $command has no page"
        continue
    fi
    options=$("$mox" "$command" --help | sed -n '/^Options:/,$s/^  \(-[a-z],\)\?\(--[a-z-]*\).*/\2/p')
    [[ -n $options ]] || complain "mox $command has no options"
    for option in $options; do
        grep -qF -e "${option//-/\\-}" "$page" || complain "$page does not name $option"
    done
done
exit "$status"
