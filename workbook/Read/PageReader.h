#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/PageLayout.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Reader of the elements of a sheet that lay it out on paper. Values that are no paper's are left
/// as they are by default.
class PageReader {
public:
  /// Borrows both.
  PageReader(PageLayout& page, XmlReader& reader) noexcept : _page(page), _reader(reader) {}

  /// After the start of one of the elements `pageSetUpPr`, `pageMargins`, `pageSetup`,
  /// `printOptions`, `rowBreaks`, `colBreaks` and `brk`.
  void readElement();
  /// After the start of the element `headerFooter`: reads up to its end.
  void readTexts();

  /// After the last element: orders the breaks.
  void finish();

private:
  void readMargins();
  void readSetup();
  void readOptions();
  void readBreak();
  void readText(std::string_view element, std::string text);
  void readMargin(std::string_view attribute, double& margin) const;
  void readCount(std::string_view attribute, unsigned least, unsigned most, unsigned& count) const;
  [[nodiscard]] bool getFlag(std::string_view attribute) const;

  PageLayout& _page;
  XmlReader& _reader;
  std::vector<unsigned long>* _breaks = nullptr;  ///< those of the open list
};

}  // namespace Zorv::Workbook
