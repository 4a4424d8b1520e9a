#!/usr/bin/env bash
# Fails when a binary lost one of the guards that cmake/Hardening.cmake gives to the release build.
#
#   check_hardening.sh BINARY...
set -euo pipefail
export LC_ALL=C

failed=0
# require BINARY GUARD PATTERN READELF_OPTION...: what readelf prints of the binary has the pattern.
require() {
  local binary=$1 guard=$2 pattern=$3
  shift 3
  if ! grep -qE "$pattern" <<<"$(readelf --wide "$@" "$binary")"; then
    echo "check_hardening: $binary has no $guard" >&2
    failed=1
  fi
}

for binary in "$@"; do
  require "$binary" 'address that the loader chooses' 'Type: +DYN' --file-header
  require "$binary" 'stack that holds no code' 'GNU_STACK .* RW +0x' --program-headers
  require "$binary" 'read-only relocations' 'GNU_RELRO' --program-headers
  require "$binary" 'binding before the start' '\(FLAGS_1\).*\bNOW\b' --dynamic
  require "$binary" 'stack protector' '__stack_chk_fail' --dyn-syms
done

# A library that never copies into a buffer of known size has no such call, but not all of them.
if ! grep -qE ' __[a-z]+_chk@' <<<"$(readelf --wide --dyn-syms "$@")"; then
  echo "check_hardening: none of the binaries has checked calls of the C library" >&2
  failed=1
fi
exit $failed
