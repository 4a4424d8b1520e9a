#!/usr/bin/env bash
# Takes docs/page.png: the page of the demonstration workbook, with the account of one cell.
#
#   make_page_picture.sh [CNDFRMT]
set -euo pipefail
cd "$(dirname "$0")/.."
cndfrmt=$(realpath "${1:-build/release/bin/cndfrmt}")
folder=build/page_picture
mkdir -p "$folder"

cp tests/page/package.json tests/page/package-lock.json tests/page/*.mjs "$folder"
npm --prefix "$folder" ci --ignore-scripts --no-audit --no-fund --loglevel=error
"$cndfrmt" render examples/demo.xlsx -o "$folder/demo.html" --now 2026-11-21T12:00:00
node "$folder/take_picture.mjs" docs/page.png
