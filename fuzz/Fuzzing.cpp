#include "fuzz/Fuzzing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

#include <fmt/format.h>
#include <boost/variant/static_visitor.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "FormulaModel/FormulaArray.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/CaseFolding.h"
#include "Utils/Exceptions.h"
#include "Utils/WorkBudget.h"
#include "fuzz/WorkbookFrame.h"
#include "tests/workbook/WorkbookBuilder.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Fuzzing {

namespace {

struct DescribeValue : boost::static_visitor<std::string> {
  std::string operator()(FormulaModel::FormulaEmpty const&) const { return "empty"; }
  std::string operator()(FormulaModel::FormulaNumber const& number) const {
    return fmt::format("{:a}", number.value.get());
  }
  std::string operator()(FormulaModel::FormulaString const& text) const {
    return fmt::format("\"{}\"", text.value);
  }
  std::string operator()(FormulaModel::FormulaBoolean const& boolean) const {
    return boolean.value ? "TRUE" : "FALSE";
  }
  std::string operator()(FormulaModel::FormulaError const& error) const {
    return fmt::format("#{}", static_cast<unsigned>(error.code));
  }
};

struct DescribeResult : boost::static_visitor<std::string> {
  std::string operator()(FormulaValue const& value) const {
    return boost::apply_visitor(DescribeValue(), value);
  }
  std::string operator()(std::shared_ptr<FormulaModel::FormulaArray const> const& array) const {
    auto text = fmt::format("{{{}x{}", array->getHeight(), array->getWidth());
    for (FormulaValue const& value : *array) {
      text += ";" + (*this)(value);
    }
    return text + "}";
  }
  std::string operator()(std::shared_ptr<Formulas::Reference const> const& reference) const {
    auto const& range = reference->range;
    return fmt::format("[{} {}:{} {}:{}]", reference->table.get(), range.firstRow, range.endRow,
                       range.firstColumn, range.endColumn);
  }
  std::string operator()(
      std::vector<std::shared_ptr<Formulas::Reference const>> const& references) const {
    std::string text;
    for (auto const& reference : references) {
      text += (*this)(reference);
    }
    return "(" + text + ")";
  }
};

void resolveSheets(Workbook::Document const& document, Workbook::LoadOptions const& options) {
  using namespace ConditionalFormatters;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<Workbook::DocumentValueProvider>(document, options.localeName,
                                                        options.timeZone));
  for (auto const& sheet : document.getSheets()) {
    auto const resolver = calculator.prepare(document.getStyles(), *sheet.table);
    resolver.visit({.range = sheet.table->getUsedRange(),
                    .onFailure = TablePass::OnFailure::Skip,
                    .budget = options.budget},
                   [](ResolvedCell const& cell) {
                     require(!cell.style || !cell.formats.empty(),
                             "a style comes from a format that holds");
                   });
  }
}

}  // namespace

FuzzInput::FuzzInput(std::uint8_t const* bytes, std::size_t size) noexcept
    : _rest(reinterpret_cast<char const*>(bytes), size) {}

std::uint8_t FuzzInput::takeByte() noexcept {
  if (_rest.empty()) {
    return 0;
  }
  auto const byte = static_cast<std::uint8_t>(_rest.front());
  _rest.remove_prefix(1);
  return byte;
}

unsigned FuzzInput::takeBelow(unsigned end) noexcept { return takeByte() % end; }

double FuzzInput::takeNumber() noexcept {
  constexpr double today = 46347;  // 2026-11-21
  switch (takeBelow(4)) {
    case 0:
      return takeByte() - 128.0;
    case 1:
      return takeByte() / 8.0;
    case 2:
      return today + takeByte() - 128.0;
    default: {
      std::array<std::uint8_t, sizeof(double)> bytes{};
      std::generate(bytes.begin(), bytes.end(), [this] { return takeByte(); });
      double number = 0.0;
      std::memcpy(&number, bytes.data(), bytes.size());
      return std::isfinite(number) ? number : 0.0;
    }
  }
}

std::string FuzzInput::takeLine() {
  std::string line(_rest.substr(0, _rest.find('\n')));
  _rest.remove_prefix(std::min(line.size() + 1, _rest.size()));
  return line;
}

std::string FuzzInput::takeRest() {
  std::string rest(_rest);
  _rest = {};
  return rest;
}

FormulaValue FuzzInput::takeValue() {
  using namespace FormulaModel;
  switch (takeBelow(6)) {
    case 0:
      return FormulaEmpty{};
    case 1:
      return FormulaBoolean{takeBoolean()};
    case 2:
      return FormulaError{static_cast<FormulaErrorCode>(1 + takeBelow(7))};
    case 3:
      return FormulaString{takeLine()};
    default:
      return FormulaNumber{FloatNumber(takeNumber())};
  }
}

void FuzzInput::fillTable(DOM::Table& table) {
  for (unsigned left = takeBelow(33); left > 0; --left) {
    unsigned const position = takeBelow(32);
    table.setValue(position / 4, position % 4, takeValue());
  }
}

bool mayCallChance(std::string_view formula) {
  return toAsciiUpper(formula).find("RAND") != std::string::npos;
}

void require(bool condition, std::string_view claim) noexcept {
  if (!condition) {
    std::fprintf(stderr, "not true: %.*s\n", static_cast<int>(claim.size()), claim.data());
    std::abort();
  }
}

void requireEqual(std::string const& actual, std::string const& expected, std::string_view claim) {
  if (actual != expected) {
    std::fprintf(stderr, "actual:   %.2000s\nexpected: %.2000s\n", actual.c_str(),
                 expected.c_str());
    require(false, claim);
  }
}

std::string describe(Formulas::CalcResult const& result) {
  return boost::apply_visitor(DescribeResult(), result);
}

OfficeUtils::Clock::TimePoint getFixedMoment() noexcept {
  using namespace std::chrono;
  return sys_days(2026y / November / 21) + hours(12);
}

std::string makeWorkbook(std::string_view sheet) {
  static WorkbookFrame const frame(
      TestSupport::WorkbookBuilder()
          .setWorkbook("",
                       "<definedNames><definedName name='Rate'>Sheet1!$A$1</definedName>"
                       "<definedName name='List'>Sheet1!$A$1,Sheet1!A1</definedName>"
                       "</definedNames>")
          .setSharedStrings("<si><t>one</t></si><si><r><t>t</t></r><r><t>wo</t></r></si>")
          .setStyles("<cellXfs><xf/><xf numFmtId='14'/></cellXfs><dxfs><dxf><fill><patternFill>"
                     "<bgColor rgb='FFFF0000'/></patternFill></fill></dxf><dxf/></dxfs>")
          .addSheet("Sheet1", "")
          .makeParts(),
      {"xl/worksheets/sheet1.xml"});
  return frame.fill({sheet});
}

void loadAndUse(std::string_view fileBytes, DocumentUser const& use) {
  WorkBudget budget({.steps = 300'000, .bytes = 67'108'864});
  Workbook::LoadOptions options;
  options.limits.unpackedBytes = 1'048'576;
  options.limits.cells = 20'000;
  options.limits.calculatedPositions = 100'000;
  options.budget = &budget;
  OfficeUtils::PinnedMoment const moment(getFixedMoment());
  try {
    use(Workbook::loadWorkbook(std::as_bytes(std::span(fileBytes)), options), options);
  } catch (BaseRuntimeError const&) {
    // The file is refused with a message, or takes more than the budget.
  }
}

void loadAndResolve(std::string_view fileBytes) { loadAndUse(fileBytes, resolveSheets); }

}  // namespace Zorv::Fuzzing
