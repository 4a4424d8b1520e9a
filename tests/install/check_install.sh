#!/usr/bin/env bash
# Installs the build into a directory of its own and uses it as a stranger would:
#   - the programs in examples/ and tests/install/consumer, configured with CMake against the
#     installed package, build and run, and print what they should. Where headers are looked up
#     first, there is a broken file of the name of every header without its zorv/. That each
#     example includes what it uses is seen where packages are checked;
#   - a component that is not installed is refused by its name;
#   - the first program builds with what pkg-config says, and runs. Every installed header compiles
#     in front of it against the installed tree alone, with the zorv/ before its name and without;
#   - a header that includes one that is not installed cannot be installed.
#
# check_install.sh BUILD_DIRECTORY SOURCE_DIRECTORY COMPILER
set -euo pipefail
build=$1 sources=$2 compiler=$3
work=$build/install-check
prefix=$work/prefix

rm -rf "$work"
cmake --install "$build" --prefix "$prefix" >/dev/null
[ -x "$prefix/bin/cndfrmt" ]
"$prefix/bin/cndfrmt" --help >/dev/null
# The module that draws is where the tool looks for it, finds all that it needs, and is not loaded
# before it is needed.
module=$(find "$prefix" -path '*/cndfrmt/cndfrmt_draw.so')
[ -n "$module" ]
if ldd "$module" | grep 'not found' || ldd "$prefix/bin/cndfrmt" | grep -i cairo; then
  exit 1
fi

# What each installed header is called.
(cd "$prefix/include" && find zorv -name '*.h' | sort) >"$work/headers.txt"
[ "$(wc -l <"$work/headers.txt")" -gt 80 ]

# An application that has a file of the name of each, without the zorv/.
while IFS= read -r header; do
  mkdir -p "$work/application/$(dirname "${header#zorv/}")"
  echo "#error \"the application's own ${header#zorv/}\"" >"$work/application/${header#zorv/}"
done <"$work/headers.txt"

# The headers are parsed once for all programs: they are most of what these take to compile.
flags=(-Wall -Wextra -Werror "-I$work/application")
sed 's|.*|#include <&>|' "$work/headers.txt" >"$work/every_header.h"
"$compiler" -std=gnu++20 "${flags[@]}" "-I$prefix/include" -x c++-header "$work/every_header.h" \
  -o "$work/every_header.h.gch"
cmake -G Ninja -S "$sources/tests/install/programs" -B "$work/programs" \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_CXX_FLAGS="${flags[*]}" -DHEADERS="$work/every_header.h" >/dev/null
cmake --build "$work/programs"

"$sources/tests/install/run_examples.sh" "$work/programs/examples" "$sources"
workbook=$sources/examples/demo.xlsx
diff <("$prefix/bin/cndfrmt" resolve --format csv "$workbook" 2>/dev/null | sed 1d | cut -d, -f1,2) \
  <("$work/programs/consumer/read_workbook" "$workbook")

# refuse MESSAGE COMMAND...: the command fails, and its standard error has the message.
refuse() {
  local message=$1
  shift
  if "$@" >/dev/null 2>"$work/refusal.txt" || ! grep -qF "$message" "$work/refusal.txt"; then
    echo "check_install: not refused with \"$message\": $*" >&2
    cat "$work/refusal.txt" >&2
    exit 1
  fi
}

refuse 'Its component Charts is not installed' \
  cmake -S "$sources/tests/install/missing_component" -B "$work/missing" \
  -DCMAKE_PREFIX_PATH="$prefix"

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name ConditionalFormatters.pc)")
export PKG_CONFIG_PATH
read -ra compile_flags < <(pkg-config --cflags ConditionalFormatters-Workbook)
read -ra link_flags < <(pkg-config --libs ConditionalFormatters)
libraries=$(pkg-config --variable=libdir ConditionalFormatters)
{
  sed -E 's|^zorv/(.*)$|#include <&>\n#include <\1>|' "$work/headers.txt"
  cat "$sources/examples/consumer/first_program.cpp"
} >"$work/first_program.cpp"
"$compiler" "${compile_flags[@]}" "$work/first_program.cpp" \
  "${link_flags[@]}" -Wl,-rpath,"$libraries" -o "$work/first-program-by-pkg-config"
"$work/first-program-by-pkg-config" >/dev/null

mkdir -p "$work/hidden/zorv"
echo '#include "DOM/Hidden.h"' >"$work/hidden/zorv/Open.h"
refuse 'Open.h includes "DOM/Hidden.h", which is not installed' \
  cmake -D CNDFRMT_HEADER_ROOT="$work/hidden/zorv" \
  -D CMAKE_INSTALL_MANIFEST_FILES="$work/hidden/zorv/Open.h" \
  -P "$sources/cmake/RootIncludes.cmake"
