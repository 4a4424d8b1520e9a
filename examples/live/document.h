#pragma once

#include <memory>
#include <string>

#include <zorv/ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h>
#include <zorv/DOM/ConditionalFormatOperator.h>
#include <zorv/DOM/Styles.h>
#include <zorv/DOM/Table.h>

/// A sheet of two columns, amounts and states, under a rule of each kind.
struct Document {
  explicit Document(unsigned long rowCount);

  Zorv::DOM::Table table;
  Zorv::DOM::Styles styles;
  std::unique_ptr<Zorv::ConditionalFormatters::ConditionalFormattingPropsCalculator> calculator;

private:
  void addRule(Zorv::TableRange const& range, Zorv::DOM::ConditionalFormatOperator condition,
               Zorv::DOM::Colour fill);
};

/// The text of a cell: a number in its shortest form, or a text.
[[nodiscard]] std::string toText(Zorv::DOM::CellInfo const& cell);

/// Value that a typed text stands for: a number where it is one.
[[nodiscard]] Zorv::FormulaValue toValue(std::string const& text);
