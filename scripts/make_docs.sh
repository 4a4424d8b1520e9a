#!/usr/bin/env bash
# Writes the documentation as web pages: the pages of the repository, and the reference of the
# installed headers. Fails if Doxygen warns, as of a member without a comment, or if a page names a
# member that does not exist.
#
#   make_docs.sh [DIRECTORY]     build/docs unless told otherwise; it is replaced
set -euo pipefail
out=$(realpath --canonicalize-missing "${1:-$(dirname "$0")/../build/docs}")
cd "$(dirname "$0")/.."

rm -rf "$out"
mkdir -p "$out"
# run_doxygen SETTING...
run_doxygen() {
  (cat docs/Doxyfile && printf '%s\n' "OUTPUT_DIRECTORY = $out" \
    "STRIP_FROM_PATH = $out/include $out/pages" "STRIP_FROM_INC_PATH = $out/include" "$@") |
    doxygen -
}

scripts/stage_docs.py headers "$out/include"
run_doxygen "INPUT = docs/namespaces.dox $out/include" "GENERATE_HTML = NO" \
  "GENERATE_TAGFILE = $out/tags.xml"
scripts/stage_docs.py pages "$out/pages" "$out/tags.xml"
run_doxygen "INPUT = docs/namespaces.dox $out/include $out/pages" \
  "USE_MDFILE_AS_MAINPAGE = $out/pages/README.md"
# Nothing leads to the pages of folders, whose names depend on where the sources lie.
rm "$out"/html/dir_*.html
rm -r "$out/include" "$out/pages" "$out/tags.xml"
echo "$out/html/index.html"
