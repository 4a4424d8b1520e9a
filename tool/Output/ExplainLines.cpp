#include "tool/Output/ExplainLines.h"

#include <algorithm>

#include <fmt/format.h>

#include "tool/Text/Swatch.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

constexpr std::size_t widthWithoutTerminal = 80;
constexpr std::size_t narrowestLine = 40;
constexpr std::size_t levelWidth = 2;

// Codes of ISO/IEC 6429, SGR.
constexpr char const* boldCode = "\x1B[1m";
constexpr char const* endCode = "\x1B[0m";

char const* codeOf(Words::Tone tone) noexcept {
  switch (tone) {
    case Words::Tone::Good:
      return "\x1B[1;32m";
    case Words::Tone::Bad:
      return "\x1B[1;31m";
    case Words::Tone::Faint:
      return "\x1B[2m";
    case Words::Tone::Plain:
      break;
  }
  return boldCode;
}

}  // namespace

ExplainLines::ExplainLines(Terminal const& terminal, OutputBuffer& out) noexcept
    : _width(std::max(terminal.width.value_or(widthWithoutTerminal), narrowestLine)),
      _colours(terminal.colours),
      _out(out) {}

void ExplainLines::addHeading(std::string_view cell, std::string_view value) {
  auto const place = Words::shorten(cell, _width / 2);
  paint(place, boldCode);
  _out.text() += ": ";
  addWords(0, Words::displayWidth(place) + 2, value);
}

void ExplainLines::addTitle(std::string_view title, std::string_view rest, Words::Tone tone) {
  paint(title, codeOf(tone));
  _out.text() += rest.empty() ? ":" : ": ";
  addWords(0, Words::displayWidth(title) + 2, rest);
}

void ExplainLines::add(std::size_t level, std::string_view text) {
  beginLine(level);
  addWords(level, level * levelWidth, text);
}

void ExplainLines::addBlank() { endLine(); }

void ExplainLines::addPhrases(std::size_t level, std::string_view label,
                              std::span<Words::StylePhrase const> phrases, std::string_view end) {
  if (phrases.empty()) {
    return;
  }
  beginLine(level);
  _out.text() += label;
  std::size_t used = level * levelWidth + label.size();
  bool isFirst = true;
  for (auto const& phrase : phrases) {
    auto const text = Words::shorten(phrase.text, _width / 2);
    std::size_t const swatch = hasColours() && phrase.colour ? swatchWidth + 1 : 0;
    std::size_t const width = swatch + Words::displayWidth(text) + levelWidth;
    if (!isFirst) {
      _out.text() += ',';
      if (used + width > _width) {
        endLine();
        beginLine(level + 1);
        used = (level + 1) * levelWidth;
      } else {
        _out.text() += ' ';
      }
    }
    if (swatch > 0) {
      appendSwatch(_out.text(), *phrase.colour, _colours);
      _out.text() += ' ';
    }
    _out.text() += text;
    used += width;
    isFirst = false;
  }
  _out.text() += end;
  endLine();
}

void ExplainLines::addPhrase(std::size_t level, Words::StylePhrase const& phrase, std::size_t width,
                             std::string_view right) {
  beginLine(level);
  if (hasColours() && phrase.colour) {
    appendSwatch(_out.text(), *phrase.colour, _colours);
    _out.text() += ' ';
  } else if (hasColours()) {
    _out.text().append(swatchWidth + 1, ' ');
  }
  addPair(0, phrase.text, width, right);
}

void ExplainLines::addPair(std::size_t level, std::string_view left, std::size_t width,
                           std::string_view right) {
  constexpr std::size_t gap = 2;
  beginLine(level);
  auto const first = Words::shorten(left, width);
  _out.text() += first;
  _out.text().append(width - Words::displayWidth(first) + gap, ' ');
  std::size_t const used = level * levelWidth + width + gap;
  _out.text() +=
      Words::shorten(right, std::max(_width - std::min(used, _width), narrowestLine / 2));
  endLine();
}

void ExplainLines::beginLine(std::size_t level) { _out.text().append(level * levelWidth, ' '); }

void ExplainLines::endLine() { _out.text() += '\n'; }

void ExplainLines::paint(std::string_view text, char const* code) {
  _out.text() += hasColours() ? code : "";
  _out.text() += text;
  _out.text() += hasColours() ? endCode : "";
}

void ExplainLines::addWords(std::size_t level, std::size_t used, std::string_view text) {
  constexpr std::size_t mostText = 2'000;
  auto const printable = Words::shorten(text, mostText);
  std::string_view rest = printable;
  while (used + Words::displayWidth(rest) > _width) {
    auto line = Words::cutToWidth(rest, _width - std::min(used, _width - narrowestLine / 2));
    auto const space = line.find_last_of(' ');
    if (rest[line.size()] != ' ' && space != std::string::npos && space > 0) {
      line.resize(space);
    }
    _out.text() += line;
    rest.remove_prefix(line.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    endLine();
    beginLine(level + 2);
    used = (level + 2) * levelWidth;
  }
  _out.text() += rest;
  endLine();
}

}  // namespace Zorv::Tool
