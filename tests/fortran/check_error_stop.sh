#!/usr/bin/env bash
# Checks that a program stops with the exit status 1, and says why.
#
#   check_error_stop.sh SENTENCE PROGRAM ARGUMENT...
set -euo pipefail

sentence=$1
shift
status=0
said=$("$@" 2>&1) || status=$?
if [ "$status" -ne 1 ] || [[ $said != *"$sentence"* ]]; then
    printf 'exit status %s: %s\n' "$status" "$said" >&2
    exit 1
fi
