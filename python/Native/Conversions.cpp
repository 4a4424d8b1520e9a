#include "python/Native/Conversions.h"

#include <array>
#include <stdexcept>

#include <fmt/format.h>
#include <boost/variant/get.hpp>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "python/Native/Rendering.h"
#include "words/Moment.h"
#include "workbook/LoadError.h"

namespace Zorv::Python {

namespace {

/// A limit of a file that has a name in Python.
struct LimitEntry {
  char const* name;
  std::uint64_t Workbook::Limits::*member;
};

constexpr std::array limitEntries{
    LimitEntry{"part_count", &Workbook::Limits::partCount},
    LimitEntry{"unpacked_bytes", &Workbook::Limits::unpackedBytes},
    LimitEntry{"pipe_bytes", &Workbook::Limits::pipeBytes},
    LimitEntry{"whole_part_bytes", &Workbook::Limits::wholePartBytes},
    LimitEntry{"tree_items", &Workbook::Limits::treeItems},
    LimitEntry{"unpack_ratio", &Workbook::Limits::unpackRatio},
    LimitEntry{"ratio_free_bytes", &Workbook::Limits::ratioFreeBytes},
    LimitEntry{"xml_depth", &Workbook::Limits::xmlDepth},
    LimitEntry{"xml_token_bytes", &Workbook::Limits::xmlTokenBytes},
    LimitEntry{"xml_attributes", &Workbook::Limits::xmlAttributes},
    LimitEntry{"xml_namespaces", &Workbook::Limits::xmlNamespaces},
    LimitEntry{"sheets", &Workbook::Limits::sheets},
    LimitEntry{"shared_texts", &Workbook::Limits::sharedTexts},
    LimitEntry{"shared_text_bytes", &Workbook::Limits::sharedTextBytes},
    LimitEntry{"text_bytes_per_file_byte", &Workbook::Limits::textBytesPerFileByte},
    LimitEntry{"formats", &Workbook::Limits::formats},
    LimitEntry{"defined_names", &Workbook::Limits::definedNames},
    LimitEntry{"hyperlinks", &Workbook::Limits::hyperlinks},
    LimitEntry{"text_runs", &Workbook::Limits::textRuns},
    LimitEntry{"table_columns", &Workbook::Limits::tableColumns},
    LimitEntry{"styled_tables", &Workbook::Limits::styledTables},
    LimitEntry{"cells", &Workbook::Limits::cells},
    LimitEntry{"calculated_positions", &Workbook::Limits::calculatedPositions},
    LimitEntry{"calculated_steps", &Workbook::Limits::calculatedSteps},
    LimitEntry{"calculated_text_bytes", &Workbook::Limits::calculatedTextBytes},
    LimitEntry{"array_cells", &Workbook::Limits::arrayCells},
    LimitEntry{"rules", &Workbook::Limits::rules},
    LimitEntry{"rule_areas", &Workbook::Limits::ruleAreas},
    LimitEntry{"formula_bytes", &Workbook::Limits::formulaBytes}};

std::uint64_t Workbook::Limits::*findLimit(std::string_view name) {
  for (LimitEntry const& entry : limitEntries) {
    if (name == entry.name) {
      return entry.member;
    }
  }
  throw OptionError(fmt::format("limits: there is no limit \"{}\"", name));
}

Workbook::Limits readLimits(py::dict const& settings) {
  Workbook::Limits limits;
  for (auto const& [name, value] : settings) {
    limits.*findLimit(name.cast<std::string>()) = value.cast<std::uint64_t>();
  }
  return limits;
}

Workbook::Semantics readSemantics(std::string const& name) {
  if (name != "own" && name != "widespread") {
    throw OptionError("semantics: write own or widespread");
  }
  return name == "own" ? Workbook::Semantics::Own : Workbook::Semantics::Widespread;
}

DOM::TimeZone readTimeZone(std::string const& name) {
  try {
    return DOM::TimeZone(name);
  } catch (BaseRuntimeError const&) {
    throw OptionError(fmt::format(
        "time_zone: there is no zone \"{}\"; write a name such as UTC or Europe/Berlin", name));
  }
}

OfficeUtils::Clock::TimePoint readNow(py::object const& now, DOM::TimeZone const& timeZone) {
  if (now.is_none()) {
    return OfficeUtils::Clock::readCurrent();
  }
  auto const text = now.cast<std::string>();
  auto const civil = Words::parseCivilTime(text);
  auto const moment = civil ? Words::toMoment(*civil, timeZone) : std::nullopt;
  if (!moment) {
    throw OptionError(fmt::format(
        "now: \"{}\" is no date and time; write one such as 2026-11-21T12:00:00", text));
  }
  return *moment;
}

py::module_ importPart(char const* name) {
  return py::module_::import(fmt::format("conditional_formatters.{}", name).c_str());
}

/// Raises an exception of the package. `attributes` are set on it.
void raise(char const* type, std::string_view message, py::dict const& attributes = {}) {
  auto const raised = importPart("_errors").attr(type);
  auto const error = raised(toPython(message), **attributes);
  PyErr_SetObject(raised.ptr(), error.ptr());
}

void translate(std::exception_ptr exception) {
  try {
    std::rethrow_exception(std::move(exception));
  } catch (RaisedBySignal const&) {
    // It is set already.
  } catch (Workbook::LoadError const& error) {
    raise("LoadError", error.what(),
          py::dict(py::arg("part") = toPython(error.getPart()),
                   py::arg("place") = toPython(error.getPlace()),
                   py::arg("problem") = toPython(error.getProblem())));
  } catch (OptionError const& error) {
    raise("OptionError", error.what());
  } catch (RenderError const& error) {
    raise("RenderError", error.what());
  } catch (WorkEnded const& error) {
    raise("BudgetExceeded", error.what());
  } catch (BaseRuntimeError const& error) {
    raise("Error", error.what());
  }
}

}  // namespace

TableRange toRange(Corners const& corners) {
  auto const& [firstRow, firstColumn, endRow, endColumn] = corners;
  TableRange const range{firstRow, firstColumn, endRow, endColumn};
  if (range.isEmpty() || endRow > DOM::Table::rowCount || endColumn > DOM::Table::columnCount) {
    throw std::invalid_argument("a range must have a position, and lie inside the sheet");
  }
  return range;
}

Corners toCorners(TableRange const& range) {
  return {range.firstRow, range.firstColumn, range.endRow, range.endColumn};
}

Allowance readAllowance(AllowanceParts const& parts) {
  auto const& [steps, bytes, seconds] = parts;
  return {.steps = steps, .bytes = bytes, .seconds = seconds};
}

py::str toPython(std::string_view text) {
  return py::reinterpret_steal<py::str>(
      PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace"));
}

py::object toPython(DOM::Cell const* cell) {
  if (cell == nullptr) {
    return py::none();
  }
  auto const& value = cell->value;
  switch (value.which()) {
    case FormulaModel::Number:
      return py::float_(boost::get<FormulaModel::FormulaNumber>(value).value.get());
    case FormulaModel::String:
      return toPython(boost::get<FormulaModel::FormulaString>(value).value);
    case FormulaModel::Boolean:
      return py::bool_(boost::get<FormulaModel::FormulaBoolean>(value).value);
    case FormulaModel::Error:
      return importPart("_codec").attr("CellError")(
          toPython(FormulaModel::toText(boost::get<FormulaModel::FormulaError>(value).code)));
    default:
      return py::none();
  }
}

std::optional<Corners> parseCorners(std::string const& text) {
  auto const range = DOM::A1Notation::parseRange(text);
  return range ? std::optional(toCorners(*range)) : std::nullopt;
}

std::string toAddress(Corners const& corners) {
  return DOM::A1Notation::toAddress(toRange(corners));
}

std::span<std::int32_t> toNumbers(py::buffer_info const& array, TableRange const& range) {
  auto const count = (range.endRow - range.firstRow) * (range.endColumn - range.firstColumn);
  bool const isDense =
      array.itemsize == sizeof(std::int32_t) && static_cast<std::size_t>(array.size) == count;
  if (array.format != py::format_descriptor<std::int32_t>::format() || !isDense) {
    throw std::invalid_argument("the array must have one 32-bit number for each position");
  }
  return {static_cast<std::int32_t*>(array.ptr), count};
}

BookOptions readOptions(py::dict const& settings) {
  auto const text = [&](char const* name) { return settings[name].cast<std::string>(); };
  auto const timeZone = readTimeZone(text("time_zone"));
  return {.name = settings["name"].cast<py::bytes>(),
          .localeName = text("locale"),
          .timeZone = timeZone,
          .now = readNow(settings["now"], timeZone),
          .semantics = readSemantics(text("semantics")),
          .limits = readLimits(settings["limits"])};
}

std::map<std::string, std::uint64_t> listDefaultLimits() {
  Workbook::Limits const limits;
  std::map<std::string, std::uint64_t> defaults;
  for (LimitEntry const& entry : limitEntries) {
    defaults.emplace(entry.name, limits.*entry.member);
  }
  return defaults;
}

void registerErrors() { py::register_exception_translator(&translate); }

}  // namespace Zorv::Python
