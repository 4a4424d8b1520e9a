#include "FormulaModel/FormulaArray.h"

#include <vector>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

namespace Zorv::FormulaModel {
namespace {

FormulaValue number(double value) { return FormulaNumber{FloatNumber(value)}; }

double read(FormulaValue const& value) { return boost::get<FormulaNumber>(value).value.get(); }

FormulaArray makeArray() {
  return {2, 3, {number(1), number(2), number(3), number(4), number(5), number(6)}};
}

TEST(FormulaArray, IsStoredRowByRow) {
  FormulaArray const array = makeArray();
  EXPECT_EQ(array.getHeight(), 2U);
  EXPECT_EQ(array.getWidth(), 3U);
  EXPECT_EQ(read(array.at(0, 2)), 3.0);
  EXPECT_EQ(read(array.at(1, 0)), 4.0);
}

TEST(FormulaArray, IteratesRowByRow) {
  FormulaArray const array = makeArray();
  std::vector<double> seen;
  for (auto it = array.begin(); !(it == array.end()); ++it) {
    seen.push_back(read(*it));
  }
  EXPECT_EQ(seen, (std::vector<double>{1, 2, 3, 4, 5, 6}));
}

TEST(FormulaArray, ElementsMayBeReplaced) {
  FormulaArray array = makeArray();
  array.at(1, 2) = number(9);
  EXPECT_EQ(read(array.at(1, 2)), 9.0);
}

}  // namespace
}  // namespace Zorv::FormulaModel
