#pragma once

#include "ConditionalFormatters/WholeTable/CndFrmt_ValueCondition.h"

// Conditions that compare a cell with one number which is found from those of their ranges, by
// several threads and without keeping them all.
namespace Zorv::ConditionalFormatters {

class AverageCondition final : public ValueCondition {
public:
  using ValueCondition::ValueCondition;

private:
  void make(unsigned threadCount) const override;
};

class TopBottomCondition final : public ValueCondition {
public:
  using ValueCondition::ValueCondition;

private:
  void make(unsigned threadCount) const override;
};

}  // namespace Zorv::ConditionalFormatters
