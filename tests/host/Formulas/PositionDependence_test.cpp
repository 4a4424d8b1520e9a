#include "Formulas/PositionDependence.h"

#include <gtest/gtest.h>

#include "Formulas/ParseExpr.h"

namespace Zorv::Formulas {
namespace {

constexpr PositionDependence onNothing{};
constexpr PositionDependence onRow{.row = true};
constexpr PositionDependence onColumn{.column = true};
constexpr PositionDependence onBoth{.row = true, .column = true};

TEST(PositionDependence, IsOfTheCoordinatesThatTheReferencesLeaveOpen) {
  struct {
    char const* formula;
    PositionDependence expected;
  } const cases[] = {
      {"1+2", onNothing},
      {"SUM($A$1:$B$9)>5", onNothing},
      {"$L1=\"x\"", onRow},
      {"AND($L1>1,$M2<Other!$A7)", onRow},
      {"SUM($A1:$C1)", onRow},
      {"COUNTIF($A$1:$A$9,$A1)>1", onRow},
      {"IF($A1=\"\",1,$B1)", onRow},
      {"A$1=\"x\"", onColumn},
      {"MATCH(1,A$1:A$9,0)", onColumn},
      {"$A1=A$1", onBoth},
      {"A1", onBoth},
      {"$A1:B$9", onBoth},
      // One cell of the range is taken, by the position of the formula's own cell.
      {"$A$1:$A$9=1", onBoth},
      {"@$A$1:$A$9", onBoth},
      {"$A1:$C1=1", onBoth},
      // Ask for the position, for the moment, or for what is known at run time only.
      {"ROW()", onBoth},
      {"$A1+COLUMN()", onBoth},
      {"$A1+ROW($B$7)", onRow},
      {"$A1>TODAY()", onBoth},
      {"RAND()>$A1", onBoth},
      {"OFFSET($A$1,0,1)", onBoth},
      {"INDIRECT(\"A1\")", onBoth},
      {"SomeName>$A1", onBoth},
      {"List[@One]", onBoth},
      {"LET(x,$A1,x>1)", onBoth},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(findPositionDependence(parseExpr(c.formula)), c.expected) << c.formula;
  }
}

}  // namespace
}  // namespace Zorv::Formulas
