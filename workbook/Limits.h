#pragma once

#include <cstddef>
#include <cstdint>

namespace Zorv::Workbook {

/// What a workbook file may demand of the loader; a file that demands more is refused.
///
/// The defaults let every honest workbook pass that fits the memory of an ordinary machine.
struct Limits {
  /// Files in the archive.
  std::uint64_t partCount = 100'000;
  /// Unpacked bytes of all parts that are read, together.
  std::uint64_t unpackedBytes = 4'294'967'296;
  /// Unpacked bytes of a part that is kept whole in memory: every part but the sheets.
  std::uint64_t wholePartBytes = 536'870'912;
  /// Unpacked over packed bytes of one part, looked at once `ratioFreeBytes` have been unpacked.
  std::uint64_t unpackRatio = 250;
  std::uint64_t ratioFreeBytes = 33'554'432;
  /// Elements inside one another.
  std::size_t xmlDepth = 256;
  /// Bytes of one tag with its attributes, or of one stretch of text between two tags.
  std::size_t xmlTokenBytes = 16'777'216;
  std::size_t sheets = 10'000;
  /// Cells of all sheets together.
  std::uint64_t cells = 50'000'000;
  /// Formulas whose results are not in the file: the cells to which they refer, together.
  std::uint64_t calculatedPositions = 300'000'000;
  /// Conditional-formatting rules of all sheets together.
  std::size_t rules = 200'000;
  /// Areas of all rules together, each rule counted with all its areas.
  std::size_t ruleAreas = 2'000'000;
};

}  // namespace Zorv::Workbook
