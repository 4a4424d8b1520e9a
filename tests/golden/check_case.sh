#!/usr/bin/env bash
# Runs the tool as a case says and compares what it prints.
#
# check_case.sh CNDFRMT CASE_DIRECTORY, from the root of the sources. A case is a directory with
#   args      the command line, as one would type it
#   stdout, stderr, status   what must come of it
#   reason    one line: what the case is for
# With CNDFRMT_REWRITE_GOLDEN=1 in the environment the expectations are rewritten instead; read the
# difference before committing it.
set -uo pipefail
cndfrmt=$1 case=$2
actual=$(mktemp -d)
trap 'rm -rf "$actual"' EXIT

export COLORTERM=truecolor  # so that colours do not depend on the terminal at hand
eval "set -- $(cat "$case/args")"
"$cndfrmt" "$@" >"$actual/stdout" 2>"$actual/stderr"
echo $? >"$actual/status"

if [ "${CNDFRMT_REWRITE_GOLDEN:-}" = 1 ]; then
  cp "$actual"/* "$case/"
  exit 0
fi
failed=0
for name in stdout stderr status; do
  diff -u --label "expected $name" --label "actual $name" "$case/$name" "$actual/$name" || failed=1
done
[ $failed -eq 0 ] || echo "check_case: $case: $(cat "$case/reason")" >&2
exit $failed
