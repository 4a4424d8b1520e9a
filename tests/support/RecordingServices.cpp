#include "support/RecordingServices.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

namespace Zorv::TestSupport {

namespace {

using OfficeUtils::FormulaValueCast::CastMode;

std::atomic<RecordingServices*> servicesInForce = nullptr;

[[noreturn]] void fail(char const* message) {
  std::fprintf(stderr, "RecordingServices: %s\n", message);
  std::abort();
}

struct Describe : boost::static_visitor<std::string> {
  std::string operator()(FormulaModel::FormulaEmpty const& /*empty*/) const { return "empty"; }
  std::string operator()(FormulaModel::FormulaNumber const& number) const {
    return std::to_string(number.value.get());
  }
  std::string operator()(FormulaModel::FormulaString const& text) const {
    return '"' + text.value + '"';
  }
  std::string operator()(FormulaModel::FormulaBoolean const& boolean) const {
    return boolean.value ? "TRUE" : "FALSE";
  }
  std::string operator()(FormulaModel::FormulaError const& error) const {
    return "error " + std::to_string(static_cast<int>(error.code));
  }
};

std::string describe(FormulaValue const& value) { return boost::apply_visitor(Describe(), value); }

}  // namespace

RecordingServices::RecordingServices(Journal& journal)
    : _journal(journal),
      _rangesAnswer([](DOM::Table const&) {
        return std::vector{TableRange{0, 0, 1, 1}};
      }),
      _truthAnswer([](FormulaValue const&) { return false; }),
      _textAnswer([](FormulaValue const&) { return std::string(); }) {
  if (servicesInForce.exchange(this) != nullptr) {
    fail("two in force");
  }
}

RecordingServices::~RecordingServices() { servicesInForce = nullptr; }

RecordingServices& RecordingServices::getInForce() {
  RecordingServices* const services = servicesInForce;
  if (services == nullptr) {
    fail("a service is called without a double in force");
  }
  return *services;
}

std::vector<TableRange> RecordingServices::convertRanges(DOM::Table const& table) const {
  _journal.note("convertToTableRanges");
  return _rangesAnswer(table);
}

bool RecordingServices::castToBool(FormulaValue const& value,
                                   OfficeUtils::LocaleContext const& locale, CastMode mode,
                                   bool strict) const {
  _journal.note("toBool(" + describe(value) + "," + locale.getName() + "," +
                std::to_string(static_cast<unsigned>(mode)) + (strict ? ",true)" : ",false)"));
  return _truthAnswer(value);
}

std::string RecordingServices::castToString(
    FormulaValue const& value, OfficeUtils::LocaleContext const& locale,
    OfficeUtils::GeneralNumberFormatter const* formatter) const {
  _journal.note("toString(" + describe(value) + "," + locale.getName() +
                (formatter == nullptr ? ",null)" : ",a formatter)"));
  return _textAnswer(value);
}

}  // namespace Zorv::TestSupport

namespace Zorv {

std::vector<TableRange> DOM::convertToTableRanges(Table const& table,
                                                  std::vector<TableRangeByID> const& /*ranges*/) {
  return TestSupport::RecordingServices::getInForce().convertRanges(table);
}

bool OfficeUtils::FormulaValueCast::toBool(FormulaValue const& value, LocaleContext const& locale,
                                           CastMode mode, bool strict) {
  return TestSupport::RecordingServices::getInForce().castToBool(value, locale, mode, strict);
}

std::string OfficeUtils::FormulaValueCast::toString(FormulaValue const& value,
                                                    LocaleContext const& locale,
                                                    GeneralNumberFormatter const* formatter) {
  return TestSupport::RecordingServices::getInForce().castToString(value, locale, formatter);
}

}  // namespace Zorv
