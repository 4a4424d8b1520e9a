#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/CalcResult.h"
#include "OfficeUtils/Clock.h"
#include "Utils/WorkBudget.h"
#include "workbook/Document.h"
#include "workbook/LoadWorkbook.h"

// What the fuzz targets share.
namespace Zorv::Fuzzing {

/// Reads values from the bytes of one fuzz case, from the front; after the last byte it reads
/// zeros. Borrows the bytes.
class FuzzInput {
public:
  FuzzInput(std::uint8_t const* bytes, std::size_t size) noexcept;

  std::uint8_t takeByte() noexcept;
  /// A number from 0 to `end - 1`. Requires 0 < end <= 256.
  unsigned takeBelow(unsigned end) noexcept;
  bool takeBoolean() noexcept { return takeBelow(2) == 1; }
  /// Any double but NaN: small numbers, serial numbers around today, and raw bits.
  double takeNumber() noexcept;
  /// The text up to the next line end, which is dropped.
  std::string takeLine();
  std::string takeRest();
  FormulaValue takeValue();
  /// Fills up to 32 cells in the first 8 rows and 4 columns of a table.
  void fillTable(DOM::Table& table);

private:
  std::string_view _rest;
};

/// Limits of one input of formulas: some milliseconds. Longer ones find nothing more, and the
/// fuzzer would collect them.
inline constexpr WorkBudget::Limits formulaLimits = {.steps = 200'000, .bytes = 67'108'864};

/// True for formulas that may call RAND and its kin, and so may give another result each time.
[[nodiscard]] bool mayCallChance(std::string_view formula);

/// Ends the process, so that the fuzzer keeps the input, if a condition is false.
void require(bool condition, std::string_view claim) noexcept;

/// Puts the claim's two sides in front of it and ends the process if they differ.
void requireEqual(std::string const& actual, std::string const& expected, std::string_view claim);

/// All of a result as text: equal texts mean equal results, to the last bit of their numbers.
[[nodiscard]] std::string describe(Formulas::CalcResult const& result);

/// Noon on 21 November 2026, so that a case gives the same result on any day.
[[nodiscard]] OfficeUtils::Clock::TimePoint getFixedMoment() noexcept;

/// The bytes of a workbook whose sheet has this inner XML, with some names, texts and styles.
[[nodiscard]] std::string makeWorkbook(std::string_view sheet);

using DocumentUser =
    std::function<void(Workbook::Document const& document, Workbook::LoadOptions const& options)>;

/// Loads a workbook file from its bytes under small limits, and calls `use`, which shares them. A
/// file that is refused is no failure.
void loadAndUse(std::string_view fileBytes, DocumentUser const& use);

/// Loads a workbook file as loadAndUse() does, and resolves every sheet of it.
void loadAndResolve(std::string_view fileBytes);

}  // namespace Zorv::Fuzzing
