#!/usr/bin/env bash
# Compares the interface of a library with its baseline. What was taken away or changed breaks hosts that were
# linked against an earlier version, and fails, unless the library has another SONAME than its baseline, so that both
# can be installed, and the latest version in the changelog has a line that begins with "- Breaks NAME:". What was
# added breaks nobody.
#
#   check_abi.sh LIBRARY HEADERS BASELINE.xz CHANGELOG
set -euo pipefail

library=$1 headers=$2 baseline=$3 changelog=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

soname() { grep -om 1 "soname='[^']*'" "$1" | cut -d"'" -f2; }

xz --decompress --stdout "$baseline" >"$work/before"
bash "$(dirname "$0")/describe.sh" "$library" "$headers" "$work/after"
# An empty description would be equal to any that lacks nothing but additions.
grep -q '<elf-function-symbols>' "$work/after" || { echo "$library exports no function" >&2; exit 1; }
grep -q '<abi-instr' "$work/after" || { echo "$library has no debug information" >&2; exit 1; }

status=0
abidiff --no-added-syms --suppressions "$(dirname "$0")/std.abignore" "$work/before" "$work/after" >"$work/report" 2>&1 || status=$?
[[ $status -ne 0 ]] || exit 0
# 1 and 2 are the command's own failures.
if (((status & 3) != 0)); then
    cat "$work/report" >&2
    exit 1
fi

before=$(soname "$work/before") after=$(soname "$work/after")
name=${after%%.so*}
if [[ $before != "$after" ]] &&
    sed -n '/^## /{n;:a;p;n;/^## /q;ba}' "$changelog" | grep -q "^- Breaks $name:"; then
    exit 0
fi
cat "$work/report" >&2
echo "$name breaks hosts of $before: docs/releasing.md tells what to do" >&2
exit 1
