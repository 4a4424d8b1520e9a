#!/usr/bin/env bash
# Installs the Python module with what it needs into a directory of its own, and uses it from there:
# it finds its libraries, and the module that draws.
#
# check_install.sh BUILD_DIRECTORY PYTHON, from the root of the sources
set -euo pipefail
build=$1 python=$2
prefix=$build/python-install-check

rm -rf "$prefix"
for component in zorvhost conditionalformatters tool python; do
  cmake --install "$build" --prefix "$prefix" --component "$component" >/dev/null
done
module=$(find "$prefix" -name '_core*.so')
if readelf -d "$module" | grep -F "$build" || ldd "$module" | grep 'not found'; then
  exit 1
fi
cd "$prefix"
PYTHONPATH=$(dirname "$(dirname "$module")") "$python" -B - "$OLDPWD/examples/demo.xlsx" <<'END'
import pathlib
import sys

import conditional_formatters as cf

assert pathlib.Path(cf.__file__).is_relative_to(pathlib.Path.cwd()), cf.__file__
book = cf.open(sys.argv[1])
assert book.render(format="png").startswith(b"\x89PNG")
assert (pathlib.Path(cf.__file__).parent / "py.typed").exists()
END
