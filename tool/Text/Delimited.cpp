#include "tool/Text/Delimited.h"

#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

void appendQuoted(std::string& line, std::string_view text) {
  line += '"';
  for (char const c : text) {
    line.append(c == '"' ? 2 : 1, c);
  }
  line += '"';
}

void appendPrintable(std::string& line, std::string_view text, Separator separator) {
  if (separator == Separator::Comma && text.find_first_of(",\"") != std::string_view::npos) {
    appendQuoted(line, text);
  } else {
    line += text;
  }
}

}  // namespace

void appendField(std::string& line, std::string_view text, Separator separator) {
  if (Words::isPlain(text)) {
    appendPrintable(line, text, separator);
  } else {
    appendPrintable(line, Words::toPrintable(text), separator);
  }
}

}  // namespace Zorv::Tool
