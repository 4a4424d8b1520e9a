#!/usr/bin/env bash
# Fails when an include points against the layers:
#   tool, python -> render, records -> words -> analysis -> workbook -> visuals -> ConditionalFormatters -> host, and
#   inside the host
#   Formulas -> DOM -> OfficeUtils -> FormulaModel -> Utils.
#   In the library:
#   Live -> WholeTable -> Following -> Parallel -> Formats -> Operators -> Operands -> Predicates.
# In visuals: face -> Prepare -> Draw -> records; of the rooms of the library it includes those that
# know of ranges alone.
# The rooms of the formula engine have an order of their own, and the public headers at its top
# include none of them.
set -euo pipefail
cd "$(dirname "$0")/.."

. scripts/forbid_includes.sh

# check_order SOURCES INCLUDES FOLDERS...: folders from the lowest to the highest; none may include
# one that comes after it. They lie in SOURCES, and includes name them below INCLUDES.
check_order() {
  local sources=$1 includes=$2
  shift 2
  while (($# > 1)); do
    local folder=$1
    shift
    forbid "$includes($(IFS='|'; echo "$*"))/" "$sources$folder"
  done
}

check_order '' '' host ConditionalFormatters visuals workbook analysis words records render python tool
check_order host/ '' Utils FormulaModel OfficeUtils DOM Formulas
check_order ConditionalFormatters/ ConditionalFormatters/ Predicates Operands Operators Formats \
  Parallel Following WholeTable Live
# The rooms of the library know of its face only what its own headers need.
forbid 'ConditionalFormatters/CndFrmt_(ConditionalFormattingPropsCalculator|TableResolver|Live[A-Za-z]*)\.h' \
  ConditionalFormatters/*/
check_order host/Formulas/ Formulas/ Limits Text Values Parsing Lookups Evaluation Functions \
  Tracing
forbid 'Formulas/[A-Z][A-Za-z0-9]*/' host/Formulas/*.h
# Headers of the host are included without its folder's name.
forbid 'host/' host ConditionalFormatters visuals workbook analysis words records render python tool
# Writers of records and of pictures know nothing of each other.
forbid 'records/' render
forbid 'python/' tool
forbid 'visuals/VisualResolver\.h' visuals/Draw visuals/Prepare
forbid 'visuals/Prepare/' visuals/Draw
forbid 'visuals/[A-Z][A-Za-z]*/' visuals/*.h
forbid 'ConditionalFormatters/(Predicates|Operands|Operators|WholeTable)/' visuals
exit $failed
