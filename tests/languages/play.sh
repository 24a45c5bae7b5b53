#!/usr/bin/env bash
# Lets a player play in an empty folder, with its log beside the models.
#
#   play.sh FOLDER PLAYER ARGUMENT...
set -euo pipefail

folder=$1
shift
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
"$@" >log
