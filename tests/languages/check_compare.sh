#!/usr/bin/env bash
# Checks that the comparison of players tells each kind of difference.
#
#   check_compare.sh COMPARE EXPECTED WORK
set -euo pipefail

compare=$1 expected=$2 work=$3
rm -rf "$work"
mkdir -p "$work/same"
models=("$expected"/*.mox)
cp "$expected/log" "${models[@]:0:3}" "$work/same"
"$compare" "$work/same" "$work/same"

# must_differ WHAT: the folder that was changed is refused.
must_differ() {
    if "$compare" "$work/same" "$work/other"; then
        echo "$1 is not told" >&2
        exit 1
    fi
    rm -r "$work/other"
}

cp -r "$work/same" "$work/other"
rm "$work/other/$(basename "${models[0]}")"
must_differ "a missing model"

cp -r "$work/same" "$work/other"
# A byte of a block's name in the root index.
printf 'X' | dd of="$work/other/$(basename "${models[1]}")" bs=1 seek=30 conv=notrunc status=none
must_differ "another byte"

cp -r "$work/same" "$work/other"
sed -i '7s/$/ more/' "$work/other/log"
must_differ "another line"

cp -r "$work/same" "$work/other"
sed -i '$d' "$work/other/log"
must_differ "a missing line"

cp -r "$work/same" "$work/other"
echo 'more' >>"$work/other/log"
must_differ "a line too many"
