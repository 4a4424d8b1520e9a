#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "DOM/SharedStyle.h"
#include "render/Picture.h"
#include "workbook/Sheet.h"

namespace Zorv::Render {

/// Rows, or columns, of a part of a sheet: those that are seen, and where they are in the picture.
///
/// Indices of the table count from 0; those of the picture count the lines that are seen.
class ShownLines {
public:
  /// A line that is seen, before the looks are known.
  struct Entry {
    unsigned long index = 0;                        ///< in the table
    double size = 0;                                ///< in pixels
    DOM::SharedStyle<DOM::CellStyle> const* style;  ///< of positions without a cell; may be null
    bool hasOwnSize = false;                        ///< the file gives its size
  };

  /// The rows of `layout` from `begin` to `end`. Linear in their number.
  [[nodiscard]] static ShownLines ofRows(Workbook::SheetLayout const& layout, unsigned long begin,
                                         unsigned long end);
  /// The columns; `digitWidth` is that of the default font. Of several entries for one column, the
  /// first counts.
  [[nodiscard]] static ShownLines ofColumns(Workbook::SheetLayout const& layout, double digitWidth,
                                            unsigned long begin, unsigned long end);

  [[nodiscard]] std::vector<Entry> const& get() const noexcept { return _entries; }
  [[nodiscard]] std::uint32_t size() const noexcept {
    return static_cast<std::uint32_t>(_entries.size());
  }
  [[nodiscard]] Entry const& operator[](std::uint32_t line) const noexcept {
    return _entries[line];
  }

  /// The first line of the picture that is not before a line of the table.
  [[nodiscard]] std::uint32_t atOrAfter(unsigned long index) const noexcept;
  /// The line of the picture that shows a line of the table; nothing if none does.
  [[nodiscard]] std::optional<std::uint32_t> find(unsigned long index) const noexcept;

  /// Makes a line at least that large.
  void grow(std::uint32_t line, double size) noexcept;

private:
  explicit ShownLines(unsigned long begin, unsigned long end) : _begin(begin), _end(end) {}
  void add(Entry const& entry, bool isHidden);

  unsigned long _begin;
  unsigned long _end;
  std::vector<Entry> _entries;
  /// By line of the table, from `_begin` on: the first line of the picture that is not before it.
  std::vector<std::uint32_t> _places;
};

}  // namespace Zorv::Render
