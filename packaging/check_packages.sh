#!/usr/bin/env bash
# Uses the Debian packages as a stranger would, without installing them on this machine:
#   - lintian finds neither errors nor warnings in them, but for two: the packages are not uploaded to
#     Debian, where the first upload closes a bug; and CPack writes scripts that call ldconfig;
#   - they name no folder of the machine that built them;
#   - unpacked into an empty root, the tool lists the rules of a real workbook and draws it;
#   - programs build there by find_package() and by pkg-config, and run;
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

# build_consumer FOLDER NAME: into $work/NAME.
build_consumer() {
  cmake -G Ninja -S "$sources/$1" -B "$work/$2" -DCMAKE_PREFIX_PATH="$root/usr" >/dev/null
  cmake --build "$work/$2" >/dev/null
}
build_consumer examples/consumer consumer
diff "$sources/examples/consumer/first_program.txt" <(in_root "$work/consumer/first_program")
in_root "$work/consumer/whole_table"

PKG_CONFIG_PATH=$libraries/pkgconfig
export PKG_CONFIG_PATH
read -ra flags < <(pkg-config --cflags --libs ConditionalFormatters-Workbook)
c++ "$sources/tests/install/consumer/read_workbook.cpp" "${flags[@]}" -o "$work/read-workbook"
in_root "$work/read-workbook" "$workbook" >"$work/formatted.txt"
[ -s "$work/formatted.txt" ]

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
