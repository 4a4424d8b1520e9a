#!/usr/bin/env bash
# Uses the Debian packages as a stranger would, without installing them on this machine:
#   - lintian finds neither errors nor warnings in them, but for two: the packages are not uploaded to
#     Debian, where the first upload closes a bug; and CPack writes scripts that call ldconfig;
#   - they name no folder of the machine that built them;
#   - unpacked into an empty root, the tool lists the rules of a real workbook and draws it;
#   - the programs of examples/ build there by find_package() and by pkg-config, run, and print what
#     they should;
#   - the web pages have those of the concepts, of the Python module and of the classes;
#   - the Python module, where it is packaged, gives the style of a cell;
#   - packed once more, they have the same bytes.
#
# check_packages.sh BUILD_DIRECTORY SOURCE_DIRECTORY, with SOURCE_DATE_EPOCH of the packages
set -euo pipefail
build=$(realpath "$1") sources=$(realpath "$2")
packages=$build/packages
work=$build/packages-check
root=$work/root
workbook=$sources/tests/workbooks/ConditionalFormattingSamples.xlsx

lintian --fail-on error,warning --suppress-tags \
  initial-upload-closes-no-bugs,maintscript-calls-ldconfig "$packages"/*.deb

rm -rf "$work"
mkdir -p "$work"
for package in "$packages"/*.deb; do
  dpkg-deb --extract "$package" "$root"
done
if grep -rlF "$sources" "$root"; then
  echo "check_packages: the files above name $sources" >&2
  exit 1
fi
libraries=$(dirname "$(find "$root" -name 'libZorvHost.so')")

# The libraries are where the loader looks on a machine that has the packages installed.
in_root() { LD_LIBRARY_PATH=$libraries "$@"; }
in_root "$root/usr/bin/cndfrmt" rules "$workbook" >"$work/rules.txt"
grep -q 'date in this month' "$work/rules.txt"
in_root "$root/usr/bin/cndfrmt" render "$workbook" -o "$work/page.png"
file "$work/page.png" | grep -q 'PNG image'

pages=$root/usr/share/doc/conditionalformatters-doc/html
for page in index page_docs_concepts_priority page_docs_python \
  classZorv_1_1ConditionalFormatters_1_1ConditionalFormattingPropsCalculator; do
  grep -q '</html>' "$pages/$page.html"
done

# By find_package().
cmake -G Ninja -S "$sources/examples" -B "$work/found" -DCMAKE_PREFIX_PATH="$root/usr" >/dev/null
cmake --build "$work/found" >"$work/found.log" || (cat "$work/found.log"; exit 1)
in_root "$sources/tests/install/run_examples.sh" "$work/found" "$sources"

# By pkg-config.
PKG_CONFIG_PATH=$libraries/pkgconfig
export PKG_CONFIG_PATH
# build EXAMPLE/PROGRAM "PACKAGE..." SOURCE...
build() {
  local program=$work/configured/$1 flags
  read -ra flags < <(pkg-config --cflags --libs $2)  # shellcheck disable=SC2086
  mkdir -p "$(dirname "$program")"
  (cd "$sources/examples/$(dirname "$1")" && c++ -pthread "${@:3}" "${flags[@]}" -o "$program")
}
library=ConditionalFormatters
build consumer/first_program $library first_program.cpp
build consumer/whole_table $library whole_table.cpp
build grid_view/grid_view $library grid_view.cpp
build export_html/export_html $library export_html.cpp
build live/live_sheet $library document.cpp live_sheet.cpp terminal.cpp
build sqlite_rows/sqlite_rows "$library sqlite3" sqlite_rows.cpp
build explain_cell/explain_cell $library-Workbook explain_cell.cpp
in_root "$sources/tests/install/run_examples.sh" "$work/configured" "$sources"

module=$root/usr/lib/python3/dist-packages
if [ -d "$module" ]; then
  in_root env PYTHONPATH="$module" /usr/bin/python3 -c '
import sys
import conditional_formatters
book = conditional_formatters.open(sys.argv[1], now="2026-11-21T12:00:00")
assert book["Invoices"]["E5"].style.fill_colour == "#FFC7CE"
' "$sources/examples/demo.xlsx"
fi

cpack --config "$build/CPackConfig.cmake" -B "$work/again" >/dev/null
for package in "$packages"/*.deb; do
  cmp "$package" "$work/again/$(basename "$package")"
done
echo "check_packages: $(find "$packages" -maxdepth 1 -name '*.deb' | wc -l) packages are as they should be"
