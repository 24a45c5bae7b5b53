#!/usr/bin/env bash
# Checks that what is marked as deprecated is compiled with a warning that says what to use instead, and
# without one where it isn't used, in every language standard that the public headers promise.
#
#   check_deprecation.sh INCLUDE COMPILER
set -euo pipefail

include=$1 compiler=$2

# compile STANDARD STATEMENT : prints what the compiler says; fails when it warns.
compile()
{
    "$compiler" -std="c++$1" -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I "$include" -x c++ - 2>&1 <<END
#include <Zyl2/Deprecated.h>
struct Host { ZYL2_DEPRECATED("use open") void start() {} void open() {} };
ZYL2_DEPRECATED("use now") inline int before() { return 1; }
inline int now() { return 2; }
int main() { Host host; $2; }
END
}

# Both compilers know C++23 by its former name.
for standard in 11 14 17 20 2b; do
    if ! said=$(compile "$standard" 'host.open(); return now()'); then
        echo "C++$standard: a warning of what is not used: $said" >&2
        exit 1
    fi
    for use in 'host.start():use open' 'host.open(); return before():use now'; do
        if said=$(compile "$standard" "${use%:*}") || [[ $said != *"${use##*:}"* ]]; then
            echo "C++$standard: no warning of ${use%:*}: $said" >&2
            exit 1
        fi
    done
done
