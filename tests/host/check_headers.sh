#!/usr/bin/env bash
# Looks through all that the public headers include, by way of others as well: hosts need neither Eigen nor
# Boost.Variant for them.
#
#   check_headers.sh SOURCE COMPILER
set -euo pipefail

source=$1 compiler=$2

# What a source that includes a header of that name would be compiled from, a file in each line. Those of MPI need
# not be here.
files_behind()
{
    echo "#include <$1>" | "$compiler" -std=c++17 -I"$source/include" -I"$source/src" -x c++ -M -MG - |
        tr -s ' \\' '\n\n'
}

is_foreign() { grep -E '/(Eigen|unsupported/Eigen|boost/variant)(/|\.hpp)'; }

# What is not public needs them: the look can find them.
files_behind Zyl2/Mox2/AttributeMap.h | is_foreign >/dev/null || { echo "nothing can be found" >&2; exit 1; }

cd "$source/include"
status=0
while read -r header; do
    files=$(files_behind "$header")
    if found=$(is_foreign <<<"$files"); then
        echo "$header needs ${found%%$'\n'*}" >&2
        status=1
    fi
done < <(find Zyl2 -name '*.h' | sort)
exit $status
