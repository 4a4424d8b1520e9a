#include "tool/Commands/DrawnSheets.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "DOM/Table.h"

namespace Zorv::Tool {

namespace {

/// True if the options name sheets: then even those are drawn that nobody sees by default.
bool namesSheets(Options const& options) {
  return !options.sheets.empty() ||
         (!options.ranges.empty() &&
          std::ranges::all_of(options.ranges,
                              [](SheetRange const& range) { return range.sheet.has_value(); }));
}

}  // namespace

std::vector<Render::SheetSelection> listDrawnSheets(Selection const& selection) {
  auto const& options = selection.getOptions();
  bool const drawsAll = namesSheets(options);
  std::vector<Render::SheetSelection> sheets;
  for (std::size_t const index : selection.getSheets()) {
    auto const& sheet = selection.getDocument().getSheets()[index];
    if (!drawsAll && (sheet.hidden || !sheet.isWorksheet)) {
      continue;
    }
    if (options.ranges.empty()) {
      sheets.push_back({.sheet = index, .range = std::nullopt});
      continue;
    }
    for (TableRange const& range : selection.getRanges(index)) {
      sheets.push_back({.sheet = index, .range = range});
    }
  }
  return sheets;
}

Render::Picture makePicture(CommandContext const& context,
                            std::vector<Render::SheetSelection> sheets) {
  auto const& selection = context.selection;
  auto const& options = selection.getOptions();
  Render::PictureOptions picture;
  picture.sheets = std::move(sheets);
  picture.localeName = options.localeName;
  picture.timeZone = options.timeZone;
  picture.threadCount = options.threadCount;
  picture.budget = &context.budget;
  auto built = Render::buildPicture(selection.getDocument(), picture);
  // Where the file lies is nobody's concern who gets the picture.
  built.name = std::filesystem::path(selection.getFile()).filename().string();
  for (auto const& finding : built.findings) {
    context.report.addFinding(finding);
  }
  return built;
}

}  // namespace Zorv::Tool
