#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

#include "Utils/WorkBudget.h"
#include "render/Picture.h"
#include "render/Terminal/Escapes.h"

namespace Zorv::Render {

struct TerminalOptions {
  /// Columns of the terminal; nothing: as many as are needed.
  std::optional<std::size_t> width = std::nullopt;
  ColourDepth colours = ColourDepth::None;
  WorkBudget* budget = nullptr;  ///< borrowed, null for no bound
};

/// Takes a line, without its end.
using LineSink = std::function<void(std::string_view)>;

/// Draws a sheet with characters, under the letters of its columns and beside the numbers of its
/// rows. Returns how many columns fit.
///
/// The sheet has the white ground that its colours are made for, whatever the terminal has. Texts
/// are made printable: nothing from a file reaches the terminal as it is. See CharacterGrid for the
/// sizes.
/// Throws what the budget and the sink throw. Cost: linear in the characters drawn; the memory is
/// that of some numbers for each row, and of the lines of one row.
std::size_t drawOnTerminal(SheetPicture const& sheet, TerminalOptions const& options,
                           LineSink const& sink);

}  // namespace Zorv::Render
