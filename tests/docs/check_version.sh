#!/usr/bin/env bash
# Checks that both changelogs begin with the version of the project and that every manual page names it.
#
#   check_version.sh SOURCE VERSION
set -euo pipefail

source=$1 version=$2

status=0
complain()
{
    echo "$1" >&2
    status=1
}

latest=$(sed -n 's/^## \([0-9.]*\).*/\1/p' "$source/CHANGELOG.md" | head -n 1)
[[ $latest == "$version" ]] || complain "CHANGELOG.md begins with \"$latest\", not with $version"
packaged=$(sed -n '1s/^moxwriter (\([^)]*\)).*/\1/p' "$source/debian/changelog")
[[ $packaged == "$version" ]] || complain "debian/changelog begins with \"$packaged\", not with $version"
for page in "$source"/docs/man/*.1; do
    head -n 1 "$page" | grep -qF "\"moxwriter $version\"" || complain "$page is not of $version"
done
exit "$status"
