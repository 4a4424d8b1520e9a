#pragma once

#include <functional>
#include <string>
#include <vector>

#include "DOM/TableRangeByID.h"
#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "support/Journal.h"

namespace Zorv::TestSupport {

/// Doubles of the host's services that are plain functions: convertToTableRanges(), toBool() and
/// toString().
///
/// Their definitions come with this object. A program that links it and the host as a shared
/// library calls them in place of the host's own, which is how the linker resolves names.
///
/// One is in force at a time, from its construction to its destruction; without one the functions
/// stop the process. Notes "convertToTableRanges", "toBool(VALUE,LOCALE,MODE,STRICT)" and
/// "toString(VALUE,LOCALE,FORMATTER)" in the journal. The functions may be called from several
/// threads; everything else belongs to the test's thread.
class RecordingServices {
public:
  using RangesAnswer = std::function<std::vector<TableRange>(DOM::Table const&)>;
  using TruthAnswer = std::function<bool(FormulaValue const&)>;
  using TextAnswer = std::function<std::string(FormulaValue const&)>;

  explicit RecordingServices(Journal& journal);
  RecordingServices(RecordingServices const&) = delete;
  RecordingServices& operator=(RecordingServices const&) = delete;
  ~RecordingServices();

  /// Every conversion gives what the function returns or throws; the position A1 by default.
  void convertRangesBy(RangesAnswer answer) { _rangesAnswer = std::move(answer); }
  /// Every cast to a truth value gives what the function returns or throws; false by default.
  void castToBoolBy(TruthAnswer answer) { _truthAnswer = std::move(answer); }
  /// Every cast to a text gives what the function returns or throws; the empty text by default.
  void castToStringBy(TextAnswer answer) { _textAnswer = std::move(answer); }

  // For the functions that stand in for the host's.
  [[nodiscard]] static RecordingServices& getInForce();
  [[nodiscard]] std::vector<TableRange> convertRanges(DOM::Table const& table) const;
  [[nodiscard]] bool castToBool(FormulaValue const& value, OfficeUtils::LocaleContext const& locale,
                                OfficeUtils::FormulaValueCast::CastMode mode, bool strict) const;
  [[nodiscard]] std::string castToString(
      FormulaValue const& value, OfficeUtils::LocaleContext const& locale,
      OfficeUtils::GeneralNumberFormatter const* formatter) const;

private:
  Journal& _journal;
  RangesAnswer _rangesAnswer;
  TruthAnswer _truthAnswer;
  TextAnswer _textAnswer;
};

}  // namespace Zorv::TestSupport
