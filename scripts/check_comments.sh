#!/usr/bin/env bash
# Fails when a doc comment opens with "What" or "Whether": its first line names the thing.
set -euo pipefail
cd "$(dirname "$0")/.."

found=$(git ls-files '*.h' '*.cpp' | xargs awk '
  FNR == 1 { inside = 0 }
  !inside && /^ *\/\/\/ (What|Whether) / { print FILENAME ":" FNR ": " $0 }
  { inside = /^ *\/\/\// }')
if [ -n "$found" ]; then
  printf '%s\n' "$found"
  echo 'check_comments: the comments above do not name what they are about' >&2
  exit 1
fi
