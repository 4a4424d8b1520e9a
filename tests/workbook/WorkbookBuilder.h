#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "workbook/Document.h"
#include "workbook/LoadWorkbook.h"

namespace Zorv::TestSupport {

/// The bytes of a zip archive with these parts.
[[nodiscard]] std::string makeArchive(std::map<std::string, std::string> const& parts);

/// A file of the test that is removed with the object.
class TemporaryFile {
public:
  explicit TemporaryFile(std::string const& bytes, std::string const& extension = ".xlsx");
  ~TemporaryFile();
  TemporaryFile(TemporaryFile const&) = delete;
  TemporaryFile& operator=(TemporaryFile const&) = delete;

  [[nodiscard]] std::filesystem::path const& getPath() const noexcept { return _path; }

private:
  std::filesystem::path _path;
};

/// Makes small workbook files out of pieces of XML: one sheet named Sheet1, unless sheets are
/// added.
class WorkbookBuilder {
public:
  WorkbookBuilder();

  /// Adds a sheet; the inner XML of its `worksheet` element.
  WorkbookBuilder& addSheet(std::string const& name, std::string const& worksheet,
                            std::string const& attributes = "");
  /// The inner XML of the first sheet's `worksheet` element: its cells and what follows them.
  WorkbookBuilder& setSheet(std::string const& rows, std::string const& afterRows = "");
  /// The first sheet with one rule, or several, for an area; no cells.
  WorkbookBuilder& setRules(std::string const& area, std::string const& rules);
  /// Inner XML of the `workbook` element besides the sheets.
  WorkbookBuilder& setWorkbook(std::string const& beforeSheets,
                               std::string const& afterSheets = "");
  WorkbookBuilder& setSharedStrings(std::string const& items);
  WorkbookBuilder& setStyles(std::string const& inner);
  /// Adds or replaces a part.
  WorkbookBuilder& setPart(std::string const& name, std::string const& content);
  WorkbookBuilder& removePart(std::string const& name);
  /// Adds a relationship of the workbook.
  WorkbookBuilder& addRelationship(std::string const& kind, std::string const& target);

  [[nodiscard]] std::map<std::string, std::string> makeParts() const;
  [[nodiscard]] std::string makeBytes() const { return makeArchive(makeParts()); }
  [[nodiscard]] Workbook::Document load(Workbook::LoadOptions const& options = {}) const;
  /// The message, without the file's name, with which the workbook is refused; empty where it is
  /// not.
  [[nodiscard]] std::string loadMessage(Workbook::LoadOptions const& options = {}) const;

private:
  std::map<std::string, std::string> _parts;
  std::string _beforeSheets;
  std::string _sheets;
  std::string _afterSheets;
  std::string _relationships;
  int _sheetCount = 0;
  int _relationshipCount = 0;
  std::string _removed;
};

/// The message, without the file's name, with which a file of these bytes is refused; empty where
/// it is not.
[[nodiscard]] std::string loadMessage(std::string const& bytes,
                                      Workbook::LoadOptions const& options = {});

/// Inner XML of a `worksheet` element around rows.
[[nodiscard]] std::string sheetData(std::string const& rows);

}  // namespace Zorv::TestSupport
