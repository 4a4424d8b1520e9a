#!/usr/bin/env bash
# Checks the manual page and the completions of the tool. check_help.sh CNDFRMT
set -euo pipefail
cndfrmt=$1
failed=0

complain() {
  echo "check_help: $1" >&2
  failed=1
}

# What bash offers at the end of a command line.
offer_bash() {
  COMP_WORDS=("$@")
  COMP_CWORD=$(($# - 1))
  _cndfrmt
  echo "${COMPREPLY[*]}"
}

# expect OFFER WORDS...
expect() {
  local expected=$1 actual
  shift
  actual=$(offer_bash "$@")
  [ "$actual" = "$expected" ] || complain "\"$*\" is completed to \"$actual\", not \"$expected\""
}

eval "$("$cndfrmt" completion bash)"
expect resolve cndfrmt res
expect '--sheet --semantics --strict' cndfrmt rules --s
expect 'auto always' cndfrmt resolve --colour a
expect 'own' cndfrmt check file.xlsx --semantics o
expect 'jsonl' cndfrmt verdicts file.xlsx --format j
expect 'examples/demo.xlsx' cndfrmt rules examples/demo.x

for shell in zsh fish; do
  if command -v $shell >/dev/null; then
    "$cndfrmt" completion $shell | $shell -n /dev/stdin || complain "$shell cannot read its completions"
  fi
done

# Each command, and each of its options, stands in the manual.
page=$("$cndfrmt" manual)
for command in $("$cndfrmt" --help | awk '/^Subcommands:/ {inside = 1; next} inside && NF {print $1}' |
  grep -vE '^(manual|completion|cndfrmt)$'); do
  for option in "$command" $("$cndfrmt" $command --help | grep -oE '^  -[^ ]+' | tr ',' ' '); do
    grep -qF "${option//-/\\-}" <<<"$page" || complain "the manual does not name $option"
  done
done
if command -v groff >/dev/null; then
  warnings=$(groff -man -ww -z - <<<"$page" 2>&1)
  [ -z "$warnings" ] || complain "groff: $warnings"
fi
exit $failed
