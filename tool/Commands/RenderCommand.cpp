#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "analysis/Shared/TargetFile.h"
#include "render/Drawing.h"
#include "render/Html/Page.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/DrawnSheets.h"
#include "tool/Input/Errors.h"
#include "words/Amounts.h"

namespace Zorv::Tool {

namespace {

/// A file that bytes are written to.
class ByteFile {
public:
  explicit ByteFile(std::filesystem::path const& path) : _stream(path, std::ios::binary) {}

  void write(std::string_view bytes) {
    _stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    _count += bytes.size();
    check();
  }

  void close() {
    _stream.close();
    check();
  }

  [[nodiscard]] std::uint64_t getCount() const noexcept { return _count; }

private:
  void check() const {
    if (!_stream) {
      throw ContentError("the picture could not be written; is the disk full?");
    }
  }

  std::ofstream _stream;
  std::uint64_t _count = 0;
};

bool showsOneSheet(PictureFormat format) noexcept {
  return format == PictureFormat::Png || format == PictureFormat::Svg;
}

/// The sheets that the format shows of those that are selected.
std::vector<Render::SheetSelection> chooseSheets(CommandContext const& context) {
  auto const& options = context.selection.getOptions();
  auto sheets = listDrawnSheets(context.selection);
  if (sheets.empty()) {
    throw ContentError(fmt::format("{}: no sheet can be seen; --sheet names a hidden one",
                                   context.selection.getFile()));
  }
  if (showsOneSheet(options.render.format)) {
    if (options.sheets.size() > 1 || options.ranges.size() > 1) {
      throw ContentError(
          "a .png or .svg shows one range of one sheet; .html and .pdf show several");
    }
    sheets.resize(1);
  }
  return sheets;
}

void checkNotInput(CommandContext const& context, std::filesystem::path const& target) {
  auto const& file = context.selection.getOptions().files.front();
  std::error_code ignored;
  if (file != "-" && std::filesystem::equivalent(target, file, ignored)) {
    throw ContentError(fmt::format("-o: {} is the workbook itself; name another file", file));
  }
}

Render::DrawingFormat toDrawingFormat(PictureFormat format) noexcept {
  return format == PictureFormat::Png   ? Render::DrawingFormat::Png
         : format == PictureFormat::Svg ? Render::DrawingFormat::Svg
                                        : Render::DrawingFormat::Pdf;
}

void writePicture(CommandContext const& context, Render::Picture const& picture, ByteFile& file) {
  auto const& options = context.selection.getOptions();
  auto const sink = [&file](std::string_view bytes) { file.write(bytes); };
  if (options.render.format == PictureFormat::Html) {
    auto const accounts = Render::makePageAccounts(
        context.selection.getDocument(), options.localeName, options.timeZone, &context.budget);
    Render::PageOptions page;
    page.theme = options.render.theme;
    Render::writePage(picture, page, accounts.get(), sink);
  } else {
    Render::DrawOptions drawing;
    drawing.scale = options.render.scale;
    drawing.budget = &context.budget;
    Render::draw(picture, toDrawingFormat(options.render.format), drawing, sink);
  }
}

/// Writes the picture beside its place, and puts it there.
void renderToTarget(CommandContext const& context) {
  std::filesystem::path const path = context.selection.getOptions().render.target;
  checkNotInput(context, path);
  auto sheets = chooseSheets(context);
  Analysis::TargetFile target(path, path, true);
  ByteFile file(target.getTemporaryPath());
  auto const picture = makePicture(context, std::move(sheets));
  writePicture(context, picture, file);
  file.close();
  target.commit();
  context.report.tell(fmt::format("wrote {}: {}, {}", path.string(),
                                  Words::countOf(picture.sheets.size(), "sheet"),
                                  Words::countOf(file.getCount(), "byte")));
}

}  // namespace

void runRender(CommandContext const& context) {
  try {
    renderToTarget(context);
  } catch (...) {
    context.report.setIncomplete();
    throw;
  }
}

}  // namespace Zorv::Tool
