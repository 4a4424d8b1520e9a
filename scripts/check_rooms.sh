#!/usr/bin/env bash
# Fails when a source of the loader or the tool includes what it should not:
#   workbook: face -> Read -> Xml -> Package, and face, Read -> Recalculation -> model, where the
#   model (Document.h and what it is made of) and the face lie in workbook/ itself;
#   render: no room sees another one;
#   analysis: no room sees another one but analysis/Shared, and Tidy sees Diff;
#   tool: main -> Commands -> Output -> Input -> Help, Text, and main -> Process, which is about the
#   process alone; of the libraries installed headers only.
set -euo pipefail
cd "$(dirname "$0")/.."

. scripts/forbid_includes.sh

face='workbook/(LoadWorkbook|LoadError|DocumentResolver|DocumentValueProvider|SheetResolver)\.h'
model='workbook/(Document|DocumentContextProvider|Finding|Rule|Sheet)\.h'
forbid "$face|$model|workbook/(Xml|Read|Recalculation)/" workbook/Package
forbid "$face|$model|workbook/(Read|Recalculation)/" workbook/Xml
forbid "$face|workbook/(Package|Xml|Read)/" workbook/Recalculation
forbid "$face" workbook/Read
forbid 'workbook/[A-Z][A-Za-z]*/' workbook/*.h

forbid 'tool/(Commands|Output|Input|Help)/' tool/Text
forbid 'tool/(Commands|Output|Input|Text)/' tool/Help
forbid 'tool/(Commands|Output)/' tool/Input
forbid 'tool/Commands/' tool/Output
forbid 'tool/Process/' tool/Commands tool/Output tool/Input tool/Help tool/Text
forbid 'tool/(Commands|Output|Input|Text)/' tool/Process

for room in render/*/; do
  others=$(printf '%s\n' render/*/ | grep -vxF "$room")
  forbid "${others//$'\n'/|}" "$room"
done
for room in analysis/*/; do
  seen="$room|analysis/Shared/"
  [ "$room" != analysis/Tidy/ ] || seen+='|analysis/Diff/'
  others=$(printf '%s\n' analysis/*/ | grep -vxE "$seen" || true)
  [ -z "$others" ] || forbid "${others//$'\n'/|}" "$room"
done

# What the tool includes of the libraries, and what of that is not installed.
installed=$(grep -oE '(host|ConditionalFormatters)/[A-Za-z0-9_/]+\.h' cmake/PublicHeaders.cmake |
  sed 's|^host/||' | sort -u)
used=$(grep -rhoE '^#include "[^"]+"' --include='*.h' --include='*.cpp' tool |
  sed -E 's|^#include "(.*)"$|\1|' | grep -vE '^(tool|render|records|words|analysis|workbook|visuals)/' | sort -u)
hidden=$(comm -13 <(echo "$installed") <(echo "$used"))
if [ -n "$hidden" ]; then
  grep -rnF --include='*.h' --include='*.cpp' -f <(sed 's|.*|#include "&"|' <<<"$hidden") tool
  echo "check_rooms: the tool includes the headers above, which are not installed" >&2
  failed=1
fi
exit $failed
