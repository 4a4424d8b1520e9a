#!/usr/bin/env bash
# Checks what the commands tidy and diff do to files, and their exit statuses.
#
# check_tidy_diff.sh CNDFRMT, from the root of the sources
set -uo pipefail
cndfrmt=$1
failed=0
folder=$(mktemp -d)
trap 'chmod -R u+w "$folder"; rm -rf "$folder"' EXIT
fragments=tests/workbooks/acr_checklist.en.xlsx
moment='--now 2026-11-21'

# Takes much longer than a millisecond, so that the end of the time is noticed on a busy machine, too.
long=$folder/long.xlsx
python3 -B benchmarks/make_workbook.py "$long" 30000

complain() {
  echo "check_tidy_diff: $1" >&2
  failed=1
}

# expect STATUS MESSAGE COMMAND...: the exit status, and what standard error must hold.
expect() {
  local status=$1 message=$2 actual
  shift 2
  "$cndfrmt" "$@" >"$folder/stdout" 2>"$folder/stderr"
  actual=$?
  [ $actual = "$status" ] || complain "$*: status $actual, not $status: $(cat "$folder/stderr")"
  [ -z "$message" ] || grep -qF -- "$message" "$folder/stderr" ||
    complain "$*: no \"$message\" in $(cat "$folder/stderr")"
}

# The rules fall, every cell looks as before, and a second time nothing is left to do.
expect 0 '' tidy $fragments -o "$folder/out.xlsx" $moment
grep -q '31 rules before, 8 after' "$folder/stdout" || complain "tidy: $(cat "$folder/stdout")"
expect 0 '' tidy "$folder/out.xlsx" --dry-run $moment
grep -q 'nothing to tidy' "$folder/stdout" || complain "tidy twice: $(cat "$folder/stdout")"
expect 1 '' diff $fragments "$folder/out.xlsx" $moment
grep -q ', 0 cells different$' "$folder/stdout" || complain "diff: $(cat "$folder/stdout")"
expect 0 '' diff $fragments $fragments $moment
[ -s "$folder/stdout" ] && complain "diff of a file with itself prints something"

# Separated values, and some cells alone.
moments='--now 2026-11-21 --now 2026-11-22'
expect 1 '' diff examples/demo.xlsx $moments --range Invoices!C9:D9 --format csv
diff - "$folder/stdout" <<'END' || complain 'diff as separated values'
what,sheet,cells,rule,then,change,condition,first,second
cell,Invoices,C9,,,changed,,-,"fill #FFC7CE, text #9C0006"
cell,Invoices,D9,,,changed,,"fill #FFEB9C, text #7F6000, bold","fill #FFC7CE, text #9C0006"
END
expect 0 '' diff examples/demo.xlsx $moments --range Invoices!A1:G4
expect 1 '' diff $fragments "$folder/out.xlsx" $moment --range H300 --format tsv
grep -q "^rule	Checklist	G8:P57 G59:P86	22	5	ranges	" "$folder/stdout" ||
  complain "diff of rules: $(cat "$folder/stdout")"
grep -q '	13	' "$folder/stdout" && complain 'diff prints rules outside of its range'

# The file itself, a link to it, and other files that are there.
cp $fragments "$folder/same.xlsx"
ln -s same.xlsx "$folder/link.xlsx"
expect 0 '' tidy "$folder/same.xlsx" -o "$folder/link.xlsx" $moment
[ -L "$folder/link.xlsx" ] || complain 'tidy replaces a symbolic link'
expect 0 '' diff "$folder/same.xlsx" "$folder/out.xlsx" $moment
echo other >"$folder/other.xlsx"
expect 1 'exists already; name another file, or replace it with --force' \
  tidy $fragments -o "$folder/other.xlsx" $moment
[ "$(cat "$folder/other.xlsx")" = other ] || complain 'tidy wrote over another file'
expect 0 '' tidy $fragments -o "$folder/other.xlsx" --force $moment
expect 1 'is a folder' tidy $fragments -o "$folder" $moment
expect 1 'there is no folder' tidy $fragments -o "$folder/none/out.xlsx" $moment
if [ "$(id -u)" != 0 ]; then
  mkdir -m 500 "$folder/locked"
  expect 1 'cannot be written into its folder' tidy $fragments -o "$folder/locked/out.xlsx" $moment
fi

# Arguments that make no sense.
expect 2 'tidy needs -o FILE' tidy $fragments
expect 2 'name a file in place of -' tidy - --dry-run
expect 2 'tidy writes a file' tidy $fragments -o -
expect 2 'needs a second file' diff $fragments
expect 2 'compares two files' diff $fragments $fragments $fragments
expect 2 'compares two files' diff $fragments --now 2026-11-21 --now 2026-11-22 --now 2026-11-23

# Trouble of diff is status 2, since 1 says that something differs.
expect 2 'there is no such file' diff $fragments "$folder/none.xlsx"
expect 2 'takes more processor time' diff "$long" "$long" --timeout 1ms
expect 1 '' diff examples/demo.xlsx --now 2026-11-21 --now 2026-11-30

# Hostile files: a message, and nothing is written.
head -c 3000 $fragments >"$folder/cut.xlsx"
expect 1 'cut.xlsx' tidy "$folder/cut.xlsx" -o "$folder/result.xlsx"
expect 1 'takes more processor time' tidy "$long" -o "$folder/result.xlsx" --timeout 1ms
[ -e "$folder/result.xlsx" ] && complain 'a file is written although tidy failed'
leftovers=$(find "$folder" -name '.*.xlsx.*')
[ -z "$leftovers" ] || complain "files are left over: $leftovers"
exit $failed
