#pragma once

#include <string>
#include <string_view>

#include "render/Draw/TextPlace.h"

namespace Zorv::Render::Draw {

/// The part of a text that can be seen in its place, and some more. For texts that are laid out
/// line by line, which would cost much for what lies outside.
[[nodiscard]] std::string_view cutToPlace(std::string_view text, TextPlace const& place) noexcept;

/// The letters of a text one below the other. Marks stay with their letters.
[[nodiscard]] std::string stackLetters(std::string_view text);

/// Is the first letter one of a script that is written from right to left?
[[nodiscard]] bool beginsRightToLeft(std::string_view text) noexcept;

}  // namespace Zorv::Render::Draw
