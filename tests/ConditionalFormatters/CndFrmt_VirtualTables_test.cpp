#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_NullaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"

// The order of virtual functions, on which programs rely that were compiled earlier.
//
// A pointer to a virtual member function holds the function's place in the virtual table and
// nothing else of its class (Itanium C++ ABI). So classes whose functions stand in the expected
// order give the pointers that the library's must equal.
namespace Zorv::ConditionalFormatters {
namespace {

template <class MemberFunction>
auto placeOf(MemberFunction function) {
  return std::bit_cast<std::array<std::byte, sizeof(MemberFunction)>>(function);
}

struct ExpectedProvider {
  virtual ~ExpectedProvider() = default;
  [[nodiscard]] virtual int getCellValue() const = 0;
  [[nodiscard]] virtual int getTimeZone() const = 0;
  [[nodiscard]] virtual int getFormulasContextProvider() const = 0;
};
struct AfterExpectedProvider : ExpectedProvider {
  virtual void next() const = 0;
};
struct AfterProvider : ValueContextProvider {
  virtual void next() const = 0;
};

TEST(VirtualTables, TheProvidersDestructorComesFirst) {
  EXPECT_EQ(placeOf(&ValueContextProvider::getCellValue), placeOf(&ExpectedProvider::getCellValue));
  EXPECT_EQ(placeOf(&ValueContextProvider::getTimeZone), placeOf(&ExpectedProvider::getTimeZone));
  EXPECT_EQ(placeOf(&ValueContextProvider::getFormulasContextProvider),
            placeOf(&ExpectedProvider::getFormulasContextProvider));
  EXPECT_EQ(placeOf(&AfterProvider::next), placeOf(&AfterExpectedProvider::next));
}

struct ExpectedOperator {
  [[nodiscard]] virtual bool operator()() const = 0;
  virtual ~ExpectedOperator() = default;
};
struct AfterExpectedOperator : ExpectedOperator {
  virtual void next() const = 0;
};
struct AfterOperator : Operator {
  virtual void next() const = 0;
};

TEST(VirtualTables, TheOperatorsCallComesBeforeItsDestructor) {
  auto const call = placeOf(&ExpectedOperator::operator());
  EXPECT_EQ(placeOf(&Operator::operator()), call);
  EXPECT_EQ(placeOf(&AfterOperator::next), placeOf(&AfterExpectedOperator::next));

  EXPECT_EQ(placeOf(&AboveAverageOperator::operator()), call);
  EXPECT_EQ(placeOf(&BinaryOperator::operator()), call);
  EXPECT_EQ(placeOf(&NullaryOperator::operator()), call);
  EXPECT_EQ(placeOf(&TextOperator::operator()), call);
  EXPECT_EQ(placeOf(&TopBottomOperator::operator()), call);
  EXPECT_EQ(placeOf(&UnaryOperator::operator()), call);
  EXPECT_EQ(placeOf(&UniquenessOperator::operator()), call);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
