#!/usr/bin/env bash
# Fails when clang-tidy finds fault with a source; needs the configured build tree build/tidy.
# With arguments, checks only the sources whose path matches one of them, and those that are read
# together with them: most of the time goes into the headers, which many sources share.
set -euo pipefail
cd "$(dirname "$0")/.."

# Each source, and the file by which clang-tidy reads it.
list_sources() {
  local unit
  grep -oE '"file": "[^"]+"' build/tidy/compile_commands.json | cut -d'"' -f4 | sort -u |
    while read -r unit; do
      case $unit in
        */Unity/*) sed -nE "s|^#include \"$PWD/(.*)\"$|\1 $unit|p" "$unit" ;;
        *) echo "${unit#"$PWD"/} $unit" ;;
      esac
    done
}
sources=$(list_sources | grep -v '^build/')

unread=$(git ls-files '*.cpp' | grep -vE '^(tests|benchmarks|fuzz|examples)/' |
  grep -vxFf <(cut -d' ' -f1 <<<"$sources") || true)
if [[ $unread ]]; then
  printf 'not part of build/tidy:\n%s\n' "$unread" >&2
  exit 1
fi

# The analyzer passes over included sources unless it is told to analyze headers.
awk -v wanted="$(IFS='|'; echo "${*:-.}")" '$1 ~ wanted { print $2 }' <<<"$sources" | sort -u |
  xargs --max-procs="$(nproc)" --max-args=1 clang-tidy -p build/tidy --quiet \
    --extra-arg=-Xclang --extra-arg=-analyzer-opt-analyze-headers \
    2> >(grep -vE '^[0-9]+ warnings? generated\.$' >&2)
