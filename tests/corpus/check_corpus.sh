#!/usr/bin/env bash
# Compares the tool's verdicts on real workbooks with those on which two independent spreadsheet
# programs agree, and prints the agreement by kind of rule.
#
# check_corpus.sh CNDFRMT WORKBOOKS
#
# WORKBOOKS holds the files, expected/FILE.tsv for each, and differences.tsv, which lists where the
# library differs on purpose: the file, the rule, how many of the rule's verdicts differ, and the
# row of docs/semantics.md that says why. Fails when a file does not load, when a verdict is
# missing, and when a difference is not listed or a listed one is gone. With --semantics widespread
# at least 99.9 percent of the verdicts, and 99.5 percent of those that hold, must agree.
set -euo pipefail
cndfrmt=$1 workbooks=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# pair_verdicts WORKBOOK OPTION...: prints each expected verdict with the actual one, and leaves the
# tool's messages in a file.
pair_verdicts() {
  local workbook=$1 name
  name=$(basename "$workbook")
  "$cndfrmt" verdicts "$@" --now 2026-11-21T12:00:00 >"$work/verdicts" 2>"$work/messages" || {
    cat "$work/messages" >&2
    return 1
  }
  # Both files have a line of headings: sheet, cell, rule; then kind, holds and type, operator, holds.
  awk -F '\t' -v OFS='\t' -v name="$name" '
    FNR == 1 { next }
    FILENAME == ARGV[1] { actual[$1, $2, $3] = $5; next }
    { print name, $1, $2, $3, $4, $6, ($1, $2, $3) in actual ? actual[$1, $2, $3] : "missing" }
  ' "$work/verdicts" "$workbooks/expected/$name.tsv"
}

failed=0
for workbook in "$workbooks"/*.xlsx; do
  pair_verdicts "$workbook" >>"$work/pairs" || { failed=1; continue; }
  tail -n 1 "$work/messages"
  pair_verdicts "$workbook" --semantics widespread >>"$work/widespread" || failed=1
done

awk -F '\t' -v semantics="$workbooks/../../docs/semantics.md" '
  BEGIN {
    while ((getline line < semantics) > 0)
      if (split(line, cell, " *[|] *") > 2) row[cell[2]] = 1
  }
  FILENAME == ARGV[1] {
    if (FNR > 1) {
      listed[$1, $2] = $3
      if (!($4 in row)) { print "no such row in docs/semantics.md: " $4; failed = 1 }
    }
    next
  }
  {
    total[$5]++
    if ($6 == $7) { agreed[$5]++; next }
    differing[$1, $4]++
    kind[$1, $4] = $5
    if (differing[$1, $4] <= 3)
      example[$1, $4] = example[$1, $4] "  " $2 "!" $3 " expected " $6 ", is " $7
  }
  END {
    for (rule in differing) {
      split(rule, part, SUBSEP)
      if (listed[rule] == differing[rule]) documented[kind[rule]] += differing[rule]
      else {
        printf "%s: rule %s (%s): %d verdicts differ, %d are listed:%s\n", part[1], part[2],
          kind[rule], differing[rule], listed[rule], example[rule]
        failed = 1
      }
    }
    for (rule in listed)
      if (!(rule in differing) && listed[rule] > 0) {
        split(rule, part, SUBSEP)
        printf "%s: rule %s: %d differences are listed, and there are none\n", part[1], part[2],
          listed[rule]
        failed = 1
      }
    printf "%-20s %8s %8s %11s %11s\n", "kind", "verdicts", "agree", "documented", "unexplained"
    for (k in total) {
      printf "%-20s %8d %8d %11d %11d\n", k, total[k], agreed[k], documented[k],
        total[k] - agreed[k] - documented[k] | "sort"
      all += total[k]; allAgreed += agreed[k]; allDocumented += documented[k]
    }
    close("sort")
    printf "%-20s %8d %8d %11d %11d\n", "together", all, allAgreed, allDocumented,
      all - allAgreed - allDocumented
    exit failed
  }
' "$workbooks/differences.tsv" "$work/pairs" || failed=1

awk -F '\t' '
  { ++all; holding += $6; agreed += $6 == $7; agreedHolding += $6 == 1 && $7 == 1 }
  $6 != $7 { print "widespread: " $1 ": " $2 "!" $3 ", rule " $4 " (" $5 "): expected " $6 ", is " $7 }
  END {
    printf "widespread semantics: %d of %d verdicts agree, and %d of %d that hold\n",
      agreed, all, agreedHolding, holding
    exit all == 0 || agreed < 0.999 * all || agreedHolding < 0.995 * holding
  }
' "$work/widespread" || failed=1
exit $failed
