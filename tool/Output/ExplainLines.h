#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"
#include "words/AccountText.h"
#include "words/StyleText.h"

namespace Zorv::Tool {

/// Lines of an explanation, indented by levels. Everything is made printable. On a terminal, and
/// where there is none at 80 columns, a line that is too long goes on in further ones, which are
/// indented one level more.
///
/// Borrows its arguments.
class ExplainLines {
public:
  ExplainLines(Terminal const& terminal, OutputBuffer& out) noexcept;

  /// The cell that is explained, and its value.
  void addHeading(std::string_view cell, std::string_view value);

  /// Adds a title, such as the outcome of a rule, and the text behind it.
  void addTitle(std::string_view title, std::string_view rest,
                Words::Tone tone = Words::Tone::Plain);

  void add(std::size_t level, std::string_view text);
  void addBlank();

  /// A line of phrases behind a label, each with a swatch of its colour if the terminal has
  /// colours. Nothing without phrases.
  void addPhrases(std::size_t level, std::string_view label,
                  std::span<Words::StylePhrase const> phrases, std::string_view end);

  /// A row of a phrase, padded to `width`, and a text. The swatch, or its place, stands before it.
  void addPhrase(std::size_t level, Words::StylePhrase const& phrase, std::size_t width,
                 std::string_view right);

  /// A row of two columns, the first padded to `width`; both are cut to fit the line.
  void addPair(std::size_t level, std::string_view left, std::size_t width, std::string_view right);

  /// The columns of a line.
  [[nodiscard]] std::size_t getWidth() const noexcept { return _width; }

private:
  [[nodiscard]] bool hasColours() const noexcept { return _colours != Render::ColourDepth::None; }
  void beginLine(std::size_t level);
  void endLine();
  void paint(std::string_view text, char const* code);
  /// Words that go on in further lines.
  void addWords(std::size_t level, std::size_t used, std::string_view text);

  std::size_t _width;
  Render::ColourDepth _colours;
  OutputBuffer& _out;
};

}  // namespace Zorv::Tool
