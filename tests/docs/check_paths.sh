#!/usr/bin/env bash
# Checks that what the documents refer to is there: the targets of links, with the headings that they
# name, and the paths that they write as code, such as `src/Zyl2/Wvf`, `tests/fuzz/run` or `Wvf/Index.cpp`.
#
#   check_paths.sh SOURCE
set -euo pipefail

cd "$1"
documents=(README.md CONTRIBUTING.md CHANGELOG.md docs/*.md docs/*/*.md)

# Headings as the anchors that they get: lower case, without punctuation, blanks as hyphens.
anchors()
{
    sed -n '/^```/,/^```/!s/^#\+ //p' "$1" | tr '[:upper:]' '[:lower:]' | sed 's/[^a-z0-9_ -]//g; s/ /-/g'
}

# What is written between brackets behind a bracketed text, for links and pictures. Programs have such
# brackets, too.
links()
{
    sed '/^```/,/^```/d' "$1" | grep -o '](\([^)]*\))' | sed 's/^](\(.*\))$/\1/'
}

# Code without blanks that has a slash, and either begins with a folder of this tree or ends like a source
# file. What stands for several files (tests/host/*) is none.
paths()
{
    grep -o '`[^` ]*/[^` ]*`' "$1" | tr -d '`' | grep -v '[*<>{}]' |
        grep -E "^($folders)/|^[A-Z][A-Za-z0-9]*/.*\.(h|cpp)$" || true
}

# Sources are also called as they are included, or from their layer on.
isThere()
{
    local root
    for root in . include src src/Zyl2 tools tests; do
        [[ ! -e $root/$1 ]] || return 0
    done
    return 1
}

folders=$(find . -mindepth 1 -maxdepth 1 -type d ! -name '.*' ! -name build -printf '%f|' | sed 's/|$//')
status=0 checked=0
complain()
{
    echo "$1" >&2
    status=1
}

for document in "${documents[@]}"; do
    folder=$(dirname "$document")
    while IFS= read -r link; do
        [[ -n $link && $link != *://* ]] || continue
        checked=$((checked + 1))
        file=${link%%#*} anchor=
        [[ $link != *'#'* ]] || anchor=${link#*#}
        target=$document
        [[ -z $file ]] || target=$folder/$file
        if [[ ! -e $target ]]; then
            complain "$document: there is no $link"
        elif [[ -n $anchor ]] && ! anchors "$target" | grep -qxF -e "$anchor"; then
            complain "$document: $target has no heading #$anchor"
        fi
    done < <(links "$document" || true)
    while IFS= read -r path; do
        [[ -n $path ]] || continue
        checked=$((checked + 1))
        isThere "$path" || complain "$document: there is no $path"
    done < <(paths "$document")
done
[[ $checked -gt 0 ]] || complain "nothing to check was found"
echo "$checked references"
exit "$status"
