#pragma once

#include <cstddef>
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
  PageReader(PageLayout& page, XmlReader const& reader) noexcept : _page(page), _reader(reader) {}

  /// After the start of one of the elements `pageSetUpPr`, `pageMargins`, `pageSetup`,
  /// `printOptions`, `rowBreaks`, `colBreaks` and `brk`.
  void readElement();

  /// After the last element: orders the breaks.
  void finish();

private:
  void readMargins();
  void readSetup();
  void readOptions();
  void readBreak();
  void readMargin(std::string_view attribute, double& margin) const;
  void readCount(std::string_view attribute, unsigned least, unsigned most, unsigned& count) const;
  [[nodiscard]] bool getFlag(std::string_view attribute) const;

  PageLayout& _page;
  XmlReader const& _reader;
  std::vector<unsigned long>* _breaks = nullptr;  ///< those of the open list
};

}  // namespace Zorv::Workbook
