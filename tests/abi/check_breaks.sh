#!/usr/bin/env bash
# Shows on a small library what check_abi.sh finds: a symbol that is gone, and a structure, an enumeration or a
# table of virtual functions that has changed; and what it lets pass.
set -euo pipefail

folder=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/include"

header='
struct Options { int threads; double tolerance; };
enum class Kind { Solid, Shell };
struct Log { virtual ~Log(); virtual void write(int); };
int solve(Options const& options, Kind kind, Log& log);
int version();'
source='
#include "include/small.h"
Log::~Log() {}
void Log::write(int) {}
int solve(Options const& options, Kind kind, Log& log) { log.write(int(kind)); return options.threads; }
int version() { return 1; }'

# build SONAME [EXPRESSION] : the library, its sources changed by an expression of sed
build()
{
    sed "${2:-}" <<<"$header" >"$work/include/small.h"
    sed "${2:-}" <<<"$source" >"$work/small.cpp"
    g++ -g -shared -fPIC -Wl,-soname,"$1" -o "$work/libsmall.so" "$work/small.cpp"
}

check()
{
    bash "$folder/check_abi.sh" "$work/libsmall.so" "$work/include" "$work/baseline.xz" "$work/changelog" \
        >"$work/said" 2>&1
}

passes()
{
    build "$2" "$3"
    check || { echo "$1: refused" >&2; cat "$work/said" >&2; exit 1; }
}

# breaks CASE WHAT-IS-SAID SONAME EXPRESSION
breaks()
{
    build "$3" "$4"
    if check; then
        echo "$1: not found" >&2
        exit 1
    fi
    grep -q "$2" "$work/said" || { echo "$1: not said" >&2; cat "$work/said" >&2; exit 1; }
}

printf '# Changelog\n\n## 0.9.1\n\n- Repairs.\n\n## 0.9.0\n\n- Breaks libsmall: long ago.\n' >"$work/changelog"
build libsmall.so.0
bash "$folder/describe.sh" "$work/libsmall.so" "$work/include" "$work/baseline"
xz "$work/baseline"

passes "the same" libsmall.so.0 ''
passes "a function more" libsmall.so.0 's/^int version() *{.*/& int more() { return 2; }/; s/^int version();/& int more();/'
breaks "a function less" 'version()' libsmall.so.0 '/^int version/d'
breaks "a structure's first field" 'struct Options' libsmall.so.0 's/int threads;/int first; &/'
breaks "a structure's size" 'struct Options' libsmall.so.0 's/double tolerance;/& double more;/'
breaks "a kind that is another" 'Kind' libsmall.so.0 's/Solid, Shell/Shell, Solid/'
breaks "a virtual function before others" 'Log' libsmall.so.0 's/virtual void write(int);/virtual void flush(){} &/'
breaks "another SONAME that nothing is said of" 'SONAME' libsmall.so.1 's/double tolerance;/& double more;/'
sed -i 's/^- Repairs\./- Breaks libsmall: Options has more./' "$work/changelog"
passes "another SONAME, and the changelog says so" libsmall.so.1 's/double tolerance;/& double more;/'
breaks "the changelog alone" 'struct Options' libsmall.so.0 's/double tolerance;/& double more;/'
