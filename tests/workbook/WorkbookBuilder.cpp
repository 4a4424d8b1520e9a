#include "workbook/WorkbookBuilder.h"

#include <atomic>
#include <fstream>
#include <memory>
#include <stdexcept>

#include <unistd.h>
#include <zip.h>

namespace Zorv::TestSupport {

namespace {

constexpr char const* declaration = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";
constexpr char const* mainNamespace =
    R"(xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )"
    R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships")";
constexpr char const* typeBase =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string element(std::string const& name, std::string const& inner) {
  return declaration + ("<" + name + " " + mainNamespace + ">") + inner + "</" + name + ">";
}

std::string relationships(std::string const& inner) {
  return declaration +
         std::string(
             "<Relationships "
             "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">") +
         inner + "</Relationships>";
}

std::string relationship(std::string const& id, std::string const& kind,
                         std::string const& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + typeBase + kind + "\" Target=\"" + target +
         "\"/>";
}

void check(bool condition) {
  if (!condition) {
    throw std::runtime_error("the test's archive cannot be made");
  }
}

}  // namespace

std::string makeArchive(std::map<std::string, std::string> const& parts) {
  zip_error_t error;
  zip_source_t* const target = zip_source_buffer_create(nullptr, 0, 0, &error);
  check(target != nullptr);
  zip_source_keep(target);
  zip_t* const archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
  check(archive != nullptr);
  for (auto const& [name, content] : parts) {
    zip_source_t* const source = zip_source_buffer(archive, content.data(), content.size(), 0);
    check(zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) >= 0);
  }
  check(zip_close(archive) == 0);
  check(zip_source_open(target) == 0);
  zip_stat_t stat;
  check(zip_source_stat(target, &stat) == 0);
  std::string bytes(stat.size, '\0');
  check(zip_source_read(target, bytes.data(), bytes.size()) ==
        static_cast<zip_int64_t>(bytes.size()));
  zip_source_close(target);
  zip_source_free(target);
  return bytes;
}

TemporaryFile::TemporaryFile(std::string const& bytes, std::string const& extension) {
  static std::atomic<int> count{0};
  _path = std::filesystem::temp_directory_path() / ("workbook_test_" + std::to_string(::getpid()) +
                                                    "_" + std::to_string(++count) + extension);
  std::ofstream stream(_path, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

TemporaryFile::~TemporaryFile() {
  std::error_code error;
  std::filesystem::remove(_path, error);
}

WorkbookBuilder::WorkbookBuilder() {
  _parts["[Content_Types].xml"] =
      declaration + std::string(
                        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/"
                        "content-types\"/>");
  _parts["_rels/.rels"] = relationships(relationship("rId1", "officeDocument", "xl/workbook.xml"));
}

WorkbookBuilder& WorkbookBuilder::addSheet(std::string const& name, std::string const& worksheet,
                                           std::string const& attributes) {
  std::string const number = std::to_string(++_sheetCount);
  _parts["xl/worksheets/sheet" + number + ".xml"] = element("worksheet", worksheet);
  _sheets += "<sheet name=\"" + name + "\" sheetId=\"" + number + "\" r:id=\"sheet" + number +
             "\" " + attributes + "/>";
  _relationships +=
      relationship("sheet" + number, "worksheet", "worksheets/sheet" + number + ".xml");
  return *this;
}

WorkbookBuilder& WorkbookBuilder::setSheet(std::string const& rows, std::string const& afterRows) {
  return addSheet("Sheet1", sheetData(rows) + afterRows);
}

WorkbookBuilder& WorkbookBuilder::setRules(std::string const& area, std::string const& rules) {
  return setSheet(
      "", "<conditionalFormatting sqref=\"" + area + "\">" + rules + "</conditionalFormatting>");
}

WorkbookBuilder& WorkbookBuilder::setWorkbook(std::string const& beforeSheets,
                                              std::string const& afterSheets) {
  _beforeSheets = beforeSheets;
  _afterSheets = afterSheets;
  return *this;
}

WorkbookBuilder& WorkbookBuilder::setSharedStrings(std::string const& items) {
  addRelationship("sharedStrings", "sharedStrings.xml");
  return setPart("xl/sharedStrings.xml", element("sst", items));
}

WorkbookBuilder& WorkbookBuilder::setStyles(std::string const& inner) {
  addRelationship("styles", "styles.xml");
  return setPart("xl/styles.xml", element("styleSheet", inner));
}

WorkbookBuilder& WorkbookBuilder::setPart(std::string const& name, std::string const& content) {
  _parts[name] = content;
  return *this;
}

WorkbookBuilder& WorkbookBuilder::removePart(std::string const& name) {
  _removed = name;
  return *this;
}

WorkbookBuilder& WorkbookBuilder::addRelationship(std::string const& kind,
                                                  std::string const& target) {
  _relationships += relationship("rId" + std::to_string(++_relationshipCount), kind, target);
  return *this;
}

std::map<std::string, std::string> WorkbookBuilder::makeParts() const {
  auto parts = _parts;
  parts.emplace("xl/workbook.xml", element("workbook", _beforeSheets + "<sheets>" + _sheets +
                                                           "</sheets>" + _afterSheets));
  parts.emplace("xl/_rels/workbook.xml.rels", relationships(_relationships));
  parts.erase(_removed);
  return parts;
}

Workbook::Document WorkbookBuilder::load(Workbook::LoadOptions const& options) const {
  TemporaryFile const file(makeBytes());
  return Workbook::loadWorkbook(file.getPath(), options);
}

std::string WorkbookBuilder::loadMessage(Workbook::LoadOptions const& options) const {
  return TestSupport::loadMessage(makeBytes(), options);
}

std::string loadMessage(std::string const& bytes, Workbook::LoadOptions const& options) {
  TemporaryFile const file(bytes);
  try {
    static_cast<void>(Workbook::loadWorkbook(file.getPath(), options));
  } catch (Workbook::LoadError const& error) {
    return std::string(error.what()).substr(file.getPath().string().size() + 2);
  }
  return {};
}

std::string sheetData(std::string const& rows) { return "<sheetData>" + rows + "</sheetData>"; }

}  // namespace Zorv::TestSupport
