#pragma once

#include <cstddef>
#include <cstdint>

namespace Zorv::Workbook {

/// Resources that loading one file may use; a file that needs more is refused.
///
/// The defaults accept every ordinary workbook that fits into the memory of an ordinary machine.
struct Limits {
  /// Files in the archive.
  std::uint64_t partCount = 100'000;
  /// Unpacked bytes of all parts that are read, together.
  std::uint64_t unpackedBytes = 4'294'967'296;
  /// Unpacked bytes of a part that is held in memory as a whole: every part except sheets.
  std::uint64_t wholePartBytes = 536'870'912;
  /// Ratio of unpacked to packed bytes of one part; checked after the first `ratioFreeBytes`.
  std::uint64_t unpackRatio = 250;
  std::uint64_t ratioFreeBytes = 33'554'432;
  /// Depth of nested elements.
  std::size_t xmlDepth = 256;
  /// Bytes of one tag with its attributes, or of the text between two tags.
  std::size_t xmlTokenBytes = 16'777'216;
  std::size_t sheets = 10'000;
  /// Cells of all sheets together.
  std::uint64_t cells = 50'000'000;
  /// Cells that formulas without results in the file refer to, together.
  std::uint64_t calculatedPositions = 300'000'000;
  /// Conditional-formatting rules of all sheets together.
  std::size_t rules = 200'000;
  /// Ranges of all rules together; each rule counts with all its ranges.
  std::size_t ruleAreas = 2'000'000;
};

}  // namespace Zorv::Workbook
