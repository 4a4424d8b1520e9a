#!/usr/bin/env bash
# Runs the programs of examples/, and fails when one does not print what stands beside its source.
#
#   run_examples.sh PROGRAMS SOURCE_DIRECTORY     PROGRAMS has consumer/first_program and so on
set -euo pipefail
programs=$1 examples=$2/examples

"$programs/consumer/whole_table"
diff "$examples/consumer/first_program.txt" <("$programs/consumer/first_program")
for example in grid_view export_html sqlite_rows; do
  diff "$examples/$example/expected.txt" <("$programs/$example/$example")
done
diff "$examples/explain_cell/expected.txt" \
  <("$programs/explain_cell/explain_cell" "$examples/demo.xlsx" Invoices E4)
python3 "$examples/live/test_live_sheet.py" "$programs/live/live_sheet" 100000
