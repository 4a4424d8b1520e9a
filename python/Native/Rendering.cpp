#include "python/Native/Rendering.h"

#include <string_view>

#include "OfficeUtils/PinnedMoment.h"
#include "render/BuildPicture.h"
#include "render/Drawing.h"
#include "render/Html/Page.h"

namespace Zorv::Python {

namespace {

std::vector<Render::SheetSelection> chooseSheets(Book const& book, RenderRequest const& request) {
  std::vector<Render::SheetSelection> chosen;
  for (std::size_t const sheet : request.sheets) {
    chosen.push_back({.sheet = sheet, .range = request.range});
  }
  auto const& sheets = book.getDocument().getSheets();
  for (std::size_t sheet = 0; request.sheets.empty() && sheet < sheets.size(); ++sheet) {
    if (!sheets[sheet].hidden && sheets[sheet].isWorksheet) {
      chosen.push_back({.sheet = sheet, .range = request.range});
    }
  }
  if (chosen.empty()) {
    throw RenderError("no sheet can be seen; name a hidden one");
  }
  bool const showsOne = request.format == "png" || request.format == "svg";
  chosen.resize(showsOne ? 1 : chosen.size());
  return chosen;
}

Render::Theme readTheme(std::string_view name) {
  if (name == "light") {
    return Render::Theme::Light;
  }
  if (name == "dark") {
    return Render::Theme::Dark;
  }
  if (name != "auto") {
    throw OptionError("theme: write one of auto, light and dark");
  }
  return Render::Theme::Auto;
}

/// The format of a picture; nothing for a page.
std::optional<Render::DrawingFormat> readFormat(std::string_view name) {
  if (name == "png") {
    return Render::DrawingFormat::Png;
  }
  if (name == "svg") {
    return Render::DrawingFormat::Svg;
  }
  if (name == "pdf") {
    return Render::DrawingFormat::Pdf;
  }
  if (name != "html") {
    throw OptionError("format: write one of html, svg, png and pdf");
  }
  return std::nullopt;
}

void writeTo(std::string& bytes, Book const& book, Render::Picture const& picture,
             RenderRequest const& request, WorkBudget& budget) {
  auto const sink = [&](std::string_view piece) {
    budget.takeMemory(piece.size());
    bytes += piece;
  };
  auto const& options = book.getOptions();
  auto const format = readFormat(request.format);
  if (!format) {
    auto const accounts =
        Render::makePageAccounts(book.getDocument(), options.localeName, options.timeZone, &budget);
    Render::writePage(picture, {.theme = readTheme(request.theme)}, accounts.get(), sink);
    return;
  }
  Render::DrawOptions drawing;
  drawing.scale = request.scale;
  drawing.budget = &budget;
  drawing.module = request.module;
  Render::draw(picture, *format, drawing, sink);
}

}  // namespace

Rendered renderSheets(Book const& book, RenderRequest const& request, WorkBudget& budget) {
  OfficeUtils::PinnedMoment const moment(book.getOptions().now);
  Render::PictureOptions options;
  options.sheets = chooseSheets(book, request);
  options.localeName = book.getOptions().localeName;
  options.timeZone = book.getOptions().timeZone;
  options.threadCount = request.threadCount;
  options.budget = &budget;
  try {
    auto picture = Render::buildPicture(book.getDocument(), options);
    picture.name = request.title;
    Rendered rendered{.bytes = {}, .findings = picture.findings};
    writeTo(rendered.bytes, book, picture, request, budget);
    return rendered;
  } catch (WorkEnded const&) {
    throw;
  } catch (OptionError const&) {
    throw;
  } catch (BaseRuntimeError const& error) {
    throw RenderError(error.what());
  }
}

}  // namespace Zorv::Python
