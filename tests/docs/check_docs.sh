#!/usr/bin/env bash
# Checks the pages README.md, CONTRIBUTING.md, SECURITY.md and those below docs/ and examples/: their
# examples and the paths that they name.
#
# check_docs.sh DIRECTORY_OF_CNDFRMT, from the root of the sources.
#   - In a block marked "console", the lines after "$ COMMAND" are the output of the command.
#   - A block after a line "<!-- FILE -->" is the whole of FILE; after "<!-- FILE: TAG -->" it is the
#     region of FILE between two lines that hold "[TAG]". Another test compiles and runs FILE.
#   - The target of each link exists, and so does each path in backticks: one that begins with a
#     folder of the root, or that ends like a source file (then also below host/, as in an include).
#   - Each test that docs/semantics.md names exists.
# With CNDFRMT_REWRITE_GOLDEN=1 in the environment the examples are rewritten first.
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

# Prints the paths that a document names, each relative to the root: in links, then in backticks.
list_paths() {
  local prose
  prose=$(sed '/^```/,/^```/d' "$1")
  grep -oP '\]\(\K[^)#]+' <<<"$prose" | grep -v '^https\?:' | sed "s|^|$(dirname "$1")/|"
  grep -oP '`\K[A-Za-z0-9_.*/-]+(?=`)' <<<"$prose" |
    grep -E "^($roots)/|/.*\.(h|cpp|sh|py|md|txt|cmake)$"
}

# Complains about each path of a document that does not exist.
check_paths() {
  local path found=0
  while IFS= read -r path; do
    path=${path%/}  # a pattern that ends with a slash matches itself
    if [ -z "$(compgen -G "$path")$(compgen -G "host/$path")" ]; then
      echo "$1: there is no $path" >&2
      found=1
    fi
  done < <(list_paths "$1")
  return $found
}

# Complains about each test of the form SUITE.NAME that a document names and the sources do not have.
check_tests() {
  local name found=0
  while IFS= read -r name; do
    if ! grep -rqE "^TEST(_F|_P)?\\(${name%.*}, ${name#*.}\\)" tests; then
      echo "$1: there is no test $name" >&2
      found=1
    fi
  done < <(grep -oP '`\K[A-Z][A-Za-z]+\.[A-Z][A-Za-z0-9]+(?=`)' "$1")
  return $found
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
roots=$(find . -mindepth 1 -maxdepth 1 -type d ! -name build ! -name '.*' -printf '%f|')
roots=${roots%|}
fresh=$(mktemp)
trap 'rm -f "$fresh"' EXIT
for document in README.md CONTRIBUTING.md SECURITY.md docs/*.md docs/*/*.md examples/README.md; do
  regenerate "$document" >"$fresh"
  if [ "${CNDFRMT_REWRITE_GOLDEN:-}" = 1 ]; then
    cp "$fresh" "$document"
  else
    diff -u --label "$document" --label "$document as it should be" "$document" "$fresh" || failed=1
  fi
  check_paths "$document" || failed=1
done
check_tests docs/semantics.md || failed=1
exit $failed
