#pragma once

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

// Python's own header must come first.
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>

#include "DOM/Cell.h"
#include "Utils/TableRange.h"
#include "python/Native/Book.h"
#include "python/Native/RunWork.h"

/// Arguments and results of the module, between Python and C++.
namespace Zorv::Python {

namespace py = pybind11;

/// First row, first column, end row, end column: a half-open rectangle of positions from 0.
using Corners = std::tuple<unsigned long, unsigned long, unsigned long, unsigned long>;

/// Steps, bytes and seconds of an Allowance.
using AllowanceParts =
    std::tuple<std::optional<std::uint64_t>, std::optional<std::uint64_t>, std::optional<double>>;

/// Throws std::invalid_argument for an empty range, and for one that is not inside the sheet.
[[nodiscard]] TableRange toRange(Corners const& corners);
[[nodiscard]] Corners toCorners(TableRange const& range);
[[nodiscard]] Allowance readAllowance(AllowanceParts const& parts);

/// A text of the workbook; bytes that are not UTF-8 become the replacement character.
[[nodiscard]] py::str toPython(std::string_view text);
/// The value of a cell, which may be null: None, a float, a text, a bool or a CellError.
[[nodiscard]] py::object toPython(DOM::Cell const* cell);

/// The corners of a range in A1 notation, or None.
[[nodiscard]] std::optional<Corners> parseCorners(std::string const& text);
/// `B3`, or `B3:C9`.
[[nodiscard]] std::string toAddress(Corners const& corners);

/// The numbers of an array that has one for each position of a range, in the order of rows. Throws
/// std::invalid_argument for an array of another shape.
[[nodiscard]] std::span<std::int32_t> toNumbers(py::buffer_info const& array,
                                                TableRange const& range);

/// The options of a dictionary: the texts `name`, `locale`, `time_zone`, `now` (which may be None)
/// and `semantics`, and `limits`, numbers by their names. Throws OptionError.
[[nodiscard]] BookOptions readOptions(py::dict const& settings);

/// The limits of Workbook::Limits that a caller may set, by name, with their defaults.
[[nodiscard]] std::map<std::string, std::uint64_t> listDefaultLimits();

/// Has C++ exceptions raise those of conditional_formatters._errors.
void registerErrors();

}  // namespace Zorv::Python
