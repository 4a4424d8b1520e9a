#!/usr/bin/env bash
# Fails when an include points against the layers:
#   tool -> workbook -> ConditionalFormatters -> host, and inside the host
#   Formulas -> DOM -> OfficeUtils -> FormulaModel -> Utils.
set -euo pipefail
cd "$(dirname "$0")/.."

failed=0
# forbid FOLDER PATTERN: no source below the folder may include a header that matches.
forbid() {
  if grep -rnE "^#include [\"<]($2)" --include='*.h' --include='*.cpp' "$1"; then
    echo "check_layers: the lines above include against the layers ($1 may not see $2)" >&2
    failed=1
  fi
}

above_host='ConditionalFormatters/|workbook/|tool/|host/'
forbid host/Utils "$above_host|FormulaModel/|OfficeUtils/|DOM/|Formulas/"
forbid host/FormulaModel "$above_host|OfficeUtils/|DOM/|Formulas/"
forbid host/OfficeUtils "$above_host|DOM/|Formulas/"
forbid host/DOM "$above_host|Formulas/"
forbid host/Formulas "$above_host"
forbid ConditionalFormatters 'workbook/|tool/|host/'
forbid workbook 'tool/|host/'
forbid tool 'host/'
exit $failed
