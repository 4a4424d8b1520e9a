#!/usr/bin/env bash
# Holds the examples in README.md and docs/ against what they show.
#
# check_docs.sh DIRECTORY_OF_CNDFRMT, from the root of the sources.
#   - In a block marked "console", what follows a line "$ COMMAND" is what the command prints.
#   - A block after a line "<!-- FILE -->" is the whole of FILE; after "<!-- FILE: TAG -->" it is the
#     region of FILE between two lines that hold "[TAG]". Another test compiles and runs FILE.
# With CNDFRMT_REWRITE_GOLDEN=1 in the environment the examples are rewritten instead.
set -euo pipefail
PATH=$1:$PATH

# Prints FILE, or its lines between those that hold [TAG], without the indent of the first.
print_region() {
  if [ $# = 1 ]; then
    cat "$1"
    return
  fi
  awk -v tag="[$2]" '
    index($0, tag) { inside = !inside; next }
    inside && !seen { seen = 1; match($0, /^ */); indent = RLENGTH }
    inside { print substr($0, 1, indent) ~ /^ *$/ ? substr($0, indent + 1) : $0 }
    END { exit !seen }
  ' "$1"
}

# Prints a document with every example as it should be.
regenerate() {
  local line region='' mode=text
  while IFS= read -r line; do
    if [ $mode != text ] && [ "$line" = '```' ]; then
      mode=text
      printf '%s\n' "$line"
    elif [ $mode = console ]; then
      [[ $line == '$ '* ]] || continue
      printf '%s\n' "$line"
      bash -c "${line#??}" 2>&1 || true
    elif [ $mode = text ]; then
      printf '%s\n' "$line"
      if [ "$line" = '```console' ]; then
        mode=console
      elif [ -n "$region" ] && [[ $line == '```'* ]]; then
        # shellcheck disable=SC2086  # the region is a file, or a file and a tag
        print_region $region
        region='' mode=code
      elif [[ $line =~ ^'<!-- '([^ :]+\.[a-z]+)(': '([^ ]+))?' -->'$ ]]; then
        region="${BASH_REMATCH[1]} ${BASH_REMATCH[3]}"
      fi
    fi
  done <"$1"
}

failed=0
fresh=$(mktemp)
trap 'rm -f "$fresh"' EXIT
for document in README.md docs/*.md; do
  regenerate "$document" >"$fresh"
  if [ "${CNDFRMT_REWRITE_GOLDEN:-}" = 1 ]; then
    cp "$fresh" "$document"
  else
    diff -u --label "$document" --label "$document as it should be" "$document" "$fresh" || failed=1
  fi
done
exit $failed
