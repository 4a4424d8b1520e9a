#!/usr/bin/env bash
# Opens pages of cndfrmt in headless Chromium and tests them.
#
#   check_pages.sh CNDFRMT FOLDER     FOLDER keeps what npm installs, and the pages
#
# With CNDFRMT_REWRITE_GOLDEN=1 in the environment, the pictures in golden/ are written anew.
set -euo pipefail
cndfrmt=$(realpath "$1")
mkdir -p "$2"
folder=$(realpath "$2")
cd "$(dirname "$0")"

if ! cmp -s package-lock.json "$folder/package-lock.json" || [ ! -d "$folder/node_modules" ]; then
  cp package.json package-lock.json "$folder"
  npm --prefix "$folder" ci --ignore-scripts --no-audit --no-fund --loglevel=error ||
    { rm -f "$folder/package-lock.json"; exit 1; }
fi

# write FILE: its page, with the same clock each time.
write() {
  "$cndfrmt" render "$1" -o "$folder/$(basename "$1" .xlsx).html" --now 2026-11-21T12:00:00 2>"$folder/log" ||
    { cat "$folder/log" >&2; exit 1; }
}
./make_workbooks.py "$folder"
write ../../examples/demo.xlsx
write "$folder/hostile.xlsx"
write "$folder/tall.xlsx"
for name in ConditionalFormattingSamples NewStyleConditionalFormattings Risk_Register; do
  write "../workbooks/$name.xlsx"
done

# Modules look for packages in the folders above them.
cp ./*.mjs "$folder"
GOLDEN=$PWD/golden node --test --test-reporter=tap "$folder/pages.test.mjs"
