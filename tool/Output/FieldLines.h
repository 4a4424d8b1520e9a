#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "tool/Input/Selection.h"
#include "tool/Text/Delimited.h"
#include "tool/Text/OutputBuffer.h"

namespace Zorv::Tool {

/// Lines of separated values about a selection, in the format of its options. Where the options
/// name several files, each line begins with its file.
///
/// Borrows the selection and the buffer.
class FieldLines {
public:
  FieldLines(Selection const& selection, OutputBuffer& out) noexcept
      : FieldLines(selection.getOptions(),
                   selection.getOptions().files.size() > 1 ? &selection.getFile() : nullptr, out) {}
  /// `file` begins each line; null for none. Borrowed.
  FieldLines(Options const& options, std::string const* file, OutputBuffer& out) noexcept
      : _separator(separatorOf(options)), _file(file), _out(out) {}

  /// Writes the line of headings.
  void addHeadings(std::initializer_list<std::string_view> headings) { addLine("file", headings); }

  /// Writes a line; the fields are made printable.
  void addLine(std::initializer_list<std::string_view> fields) {
    addLine(_file != nullptr ? std::string_view(*_file) : std::string_view(), fields);
  }

  [[nodiscard]] static Separator separatorOf(Options const& options) noexcept {
    return options.format == OutputFormat::Csv ? Separator::Comma : Separator::Tab;
  }

private:
  void addLine(std::string_view file, std::initializer_list<std::string_view> fields) {
    auto& line = _out.text();
    bool isFirst = true;
    auto const add = [&](std::string_view field) {
      if (!isFirst) {
        line += static_cast<char>(_separator);
      }
      appendField(line, field, _separator);
      isFirst = false;
    };
    if (_file != nullptr) {
      add(file);
    }
    for (auto const field : fields) {
      add(field);
    }
    line += '\n';
    _out.endEntry();
  }

  Separator _separator;
  std::string const* _file;  ///< null where there is one file alone
  OutputBuffer& _out;
};

}  // namespace Zorv::Tool
