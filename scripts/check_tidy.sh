#!/usr/bin/env bash
# Fails when clang-tidy finds fault with a source; needs the configured build tree build/tidy.
# With arguments, checks only the sources whose path matches one of them, all of them otherwise.
set -euo pipefail
cd "$(dirname "$0")/.."

git ls-files 'host/*.cpp' 'ConditionalFormatters/*.cpp' 'workbook/*.cpp' 'analysis/*.cpp' \
  'words/*.cpp' 'render/*.cpp' 'tool/*.cpp' |
  grep -E "$(IFS='|'; echo "${*:-.}")" |
  xargs --max-procs="$(nproc)" --max-args=4 clang-tidy -p build/tidy --quiet \
    --extra-arg=-Wno-unknown-warning-option \
    2> >(grep -vE '^[0-9]+ warnings? generated\.$' >&2)
