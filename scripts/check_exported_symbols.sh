#!/usr/bin/env bash
# Fails when a shared library exports other symbols than its list says; writes the list with
# --write, whose difference is then to be read.
#
#   check_exported_symbols.sh [--write] LIBRARY LIST
set -euo pipefail
export LC_ALL=C

write=no
if [ "${1:-}" = "--write" ]; then
  write=yes
  shift
fi
library=$1
list=$2

# Without addresses and kinds: a symbol may be weak or not as the compiler likes. The marks of the
# address sanitizer are no symbols of the library, and neither are functions of the standard library
# that a compiler does not inline.
exported=$(nm --dynamic --defined-only "$library" | awk '{ print $3 }' | grep -v '^__odr_asan' |
  c++filt | grep -vE '^([^(]* )?std::' | sort -u)
if [ "$write" = yes ]; then
  printf '%s\n' "$exported" >"$list"
elif ! diff --unified=0 "$list" - <<<"$exported"; then
  echo "check_exported_symbols: $library exports other symbols than $list says" >&2
  echo "check_exported_symbols: if that is meant, run: $0 --write $library $list" >&2
  exit 1
fi
