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
  /// Bytes of a file that can be read only once, such as a pipe, and is held in memory.
  std::uint64_t pipeBytes = 268'435'456;
  /// Unpacked bytes of a part that is held in memory as a whole: every part except sheets and
  /// shared texts.
  std::uint64_t wholePartBytes = 33'554'432;
  /// Elements, attributes and texts that are held in memory together: of a part that is held as a
  /// whole, or of one list of conditional-formatting rules.
  std::size_t treeItems = 4'000'000;
  /// Ratio of unpacked to packed bytes, of one part and of the file; checked after the first
  /// `ratioFreeBytes` of the part, and eight times as many of the file.
  std::uint64_t unpackRatio = 250;
  std::uint64_t ratioFreeBytes = 33'554'432;  ///< see `unpackRatio`
  /// Depth of nested elements.
  std::size_t xmlDepth = 256;
  /// Bytes of one tag with its attributes, or of the text between two tags.
  std::size_t xmlTokenBytes = 16'777'216;
  /// Attributes of one element.
  std::size_t xmlAttributes = 1'000;
  /// Namespace prefixes that are declared at one place.
  std::size_t xmlNamespaces = 256;
  std::size_t sheets = 10'000;  ///< sheets of all kinds
  /// Texts that cells share.
  std::size_t sharedTexts = 10'000'000;
  /// Bytes that shared texts take in all cells together, as each cell has a copy. A file may have
  /// `textBytesPerFileByte` of them for each of its bytes if that is more.
  std::uint64_t sharedTextBytes = 268'435'456;
  std::uint64_t textBytesPerFileByte = 64;  ///< see `sharedTextBytes`
  /// Formats of each kind: fonts, fills, borders, cell formats, differential formats.
  std::size_t formats = 100'000;
  std::size_t definedNames = 200'000;  ///< names that stand for formulas
  /// Hyperlinks of all sheets together, and runs of rich text. What goes beyond is left out.
  std::size_t hyperlinks = 500'000;
  std::size_t textRuns = 2'000'000;  ///< see `hyperlinks`
  /// Columns of all tables (ISO/IEC 29500-1, 18.5.1.2) together.
  std::size_t tableColumns = 1'000'000;
  /// Tables of one sheet that a style formats. Styles of what goes beyond are left out.
  std::size_t styledTables = 1'000;
  /// Cells of all sheets together.
  std::uint64_t cells = 50'000'000;
  /// Cells that formulas without results in the file refer to, together.
  std::uint64_t calculatedPositions = 300'000'000;
  /// Steps that these formulas take, together; a step is about the reading of one cell.
  std::uint64_t calculatedSteps = 5'000'000'000;
  /// Bytes of the texts that they yield, together.
  std::uint64_t calculatedTextBytes = 268'435'456;
  /// Cells that array formulas fill, together; as many as the file has cells if that is more.
  std::uint64_t arrayCells = 2'000'000;
  /// Conditional-formatting rules of all sheets together.
  std::size_t rules = 200'000;
  /// Ranges of all rules together; each rule counts with all its ranges.
  std::size_t ruleAreas = 2'000'000;
  /// Bytes of the formulas of rules and defined names together, which are kept parsed.
  std::uint64_t formulaBytes = 16'777'216;
};

}  // namespace Zorv::Workbook
