#include "analysis/Tidy/TidyFile.h"

#include <array>
#include <utility>

#include <zip.h>

#include "DOM/A1Notation.h"
#include "analysis/Tidy/WriteTidied.h"
#include "workbook/LoadWorkbook.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::TestSupport {

std::map<std::string, std::string> readParts(std::filesystem::path const& file) {
  std::map<std::string, std::string> parts;
  zip_t* const archive = zip_open(file.c_str(), ZIP_RDONLY, nullptr);
  if (archive == nullptr) {
    throw BaseRuntimeError("the test's archive cannot be read");
  }
  auto const count = static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0));
  for (zip_uint64_t place = 0; place < count; ++place) {
    std::string bytes;
    zip_file_t* const part = zip_fopen_index(archive, place, 0);
    std::array<char, 4096> piece{};
    for (auto size = zip_fread(part, piece.data(), piece.size()); size > 0;
         size = zip_fread(part, piece.data(), piece.size())) {
      bytes.append(piece.data(), static_cast<std::size_t>(size));
    }
    zip_fclose(part);
    parts[zip_get_name(archive, place, 0)] = std::move(bytes);
  }
  zip_discard(archive);
  return parts;
}

TidiedFile tidyFile(std::filesystem::path const& file) {
  TidiedFile result;
  result.before = Workbook::loadWorkbook(file);
  result.plan = Analysis::planTidy(file, result.before, {});
  TemporaryFile const target("");
  Analysis::writeTidied(file, result.before, result.plan, {},
                        {.target = target.getPath(), .mayReplace = true});
  result.after = Workbook::loadWorkbook(target.getPath());
  result.partsBefore = readParts(file);
  result.partsAfter = readParts(target.getPath());
  return result;
}

TidiedFile tidyBytes(std::string const& bytes) {
  TemporaryFile const file(bytes);
  return tidyFile(file.getPath());
}

std::string describe(Analysis::TidyPlan const& plan) {
  std::string text;
  auto const separate = [&text] { text += text.empty() ? "" : ", "; };
  for (auto const& sheet : plan.sheets) {
    for (auto const& rules : sheet.joined) {
      separate();
      text += std::to_string(rules.rule);
      for (std::size_t const joined : rules.joined) {
        text += "+" + std::to_string(joined);
      }
      text += " " + DOM::A1Notation::toAddress(rules.ranges);
    }
    for (auto const& rule : sheet.dead) {
      separate();
      text += "dead " + std::to_string(rule.rule);
      text += rule.cover ? " by " + std::to_string(*rule.cover) : "";
    }
  }
  return text;
}

}  // namespace Zorv::TestSupport
