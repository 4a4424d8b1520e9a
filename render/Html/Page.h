#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "render/Html/PageAccounts.h"
#include "render/Html/Theme.h"
#include "render/Picture.h"

namespace Zorv::Render {

struct PageOptions {
  Theme theme = Theme::Auto;
  /// Most cells that get the whole account of how they come to look so. The others get a short one:
  /// the rules that are on them, and those that have a part in how they look.
  std::size_t accountLimit = 5'000;
  /// Most bytes that the accounts may take.
  std::size_t accountBytes = 4'194'304;
};

/// Takes a page, piece after piece.
using PageSink = std::function<void(std::string_view)>;

/// Writes sheets as one HTML page that needs no other file and no network.
///
/// Each sheet is a table with headings, readable without scripts. With scripts the page tells why
/// cells look as they do, shows where rules are, and finds and copies cells. Texts of the workbook
/// never become markup or script, and the page's Content-Security-Policy allows its own style and
/// script alone.
///
/// `accounts` may be null: the page then tells the short ones. Throws what they and the sink throw.
/// Cost: linear in the positions of the picture. Memory: the page, but for the sink's.
void writePage(Picture const& picture, PageOptions const& options, PageAccounts* accounts,
               PageSink const& sink);

}  // namespace Zorv::Render
