#include "render/Html/Page.h"

#include <string>
#include <vector>

#include <fmt/format.h>

#include "render/Html/ContentHash.h"
#include "render/Html/Markup.h"
#include "render/Html/PageAssets.h"
#include "render/Html/PageData.h"
#include "render/Html/PageGraphics.h"
#include "render/Html/SheetTable.h"
#include "render/Html/StyleSheet.h"
#include "words/Amounts.h"
#include "words/Printable.h"

namespace Zorv::Render {

namespace {

constexpr std::size_t widestLabel = 300;

void appendLabel(std::string& out, std::string_view text) {
  appendText(out, Words::shorten(text, widestLabel));
}

std::string_view nameOf(Theme theme) noexcept {
  switch (theme) {
    case Theme::Light:
      return "light";
    case Theme::Dark:
      return "dark";
    case Theme::Auto:
      break;
  }
  return "auto";
}

/// The rules of a sheet as a list; the script of the page makes its entries buttons.
void appendRules(std::string& out, SheetPicture const& sheet, std::size_t number) {
  if (sheet.rules.empty()) {
    out += "<p class=\"norules\">This sheet has no conditional format.</p>";
    return;
  }
  out += fmt::format(
      "<h3 id=\"rules-{0}\">Rules</h3><ol class=\"rules\" aria-labelledby=\"rules-{0}\">\n",
      number);
  for (auto const& rule : sheet.rules) {
    out += "<li>";
    if (rule.colour) {
      out +=
          "<svg class=\"swatch\" aria-hidden=\"true\"><rect width=\"100%\" height=\"100%\" "
          "fill=\"" +
          toCss(*rule.colour) + "\"/></svg>";
    }
    out += fmt::format("<b>Rule {}: ", rule.number);
    appendLabel(out, rule.text);
    out += "</b><span>on ";
    appendLabel(out, rule.ranges);
    out += rule.priority ? fmt::format(", priority {}", *rule.priority) : std::string();
    out += rule.stopsWhereTrue ? ", stops" : "";
    out += "</span><span>";
    appendLabel(out, rule.style);
    out += "</span><span>" + Words::countOf(rule.cellCount, "cell") + "</span></li>\n";
  }
  out += "</ol>";
}

void appendTabs(std::string& out, Picture const& picture) {
  out += "<nav aria-label=\"Sheets\"><div class=\"tabs\">";
  for (std::size_t number = 0; number < picture.sheets.size(); ++number) {
    out += fmt::format("<a id=\"tab-{0}\" href=\"#sheet-{0}\">", number);
    appendLabel(out, picture.sheets[number].name);
    out += "</a>";
  }
  out += "</div></nav>\n";
}

void appendSheetSection(std::string& out, SheetPicture const& sheet, std::size_t number,
                        StyleSheet& styles, PageGraphics& graphics) {
  out += fmt::format(
      "<section class=\"sheet\" id=\"sheet-{0}\" aria-labelledby=\"name-{0}\"><h2 id=\"name-{0}\">",
      number);
  appendLabel(out, sheet.name);
  out += fmt::format(
      "</h2>\n<div class=\"view\" tabindex=\"0\" role=\"region\" aria-labelledby=\"name-{}\">",
      number);
  SheetTable(sheet, fmt::format("t{}", number), styles, graphics).append(out);
  out += "</div>\n<div class=\"about\">";
  appendRules(out, sheet, number);
  out += "</div></section>\n";
}

void appendFindings(std::string& out, Picture const& picture) {
  if (picture.findings.empty()) {
    return;
  }
  out +=
      "<details class=\"findings\"><summary>What could not be drawn as the file means "
      "it</summary><ul>";
  for (auto const& finding : picture.findings) {
    out += "<li>";
    appendLabel(out, finding);
    out += "</li>";
  }
  out += "</ul></details>\n";
}

std::string makeHead(Picture const& picture, PageOptions const& options, std::string const& style) {
  auto const policy = fmt::format(
      "default-src 'none'; style-src {}; script-src {}; base-uri 'none'; form-action 'none'; "
      "require-trusted-types-for 'script'",
      hashOfContent(style), hashOfContent(pageScript));
  std::string head = fmt::format(
      "<!DOCTYPE html>\n<html lang=\"en\" data-theme=\"{}\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"{}\">\n"
      "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">\n"
      "<meta name=\"referrer\" content=\"no-referrer\">\n<title>",
      nameOf(options.theme), policy);
  appendLabel(head, picture.name);
  return head + "</title>\n<style>" + style + "</style>\n</head>\n";
}

}  // namespace

void writePage(Picture const& picture, PageOptions const& options, PageAccounts* accounts,
               PageSink const& sink) {
  StyleSheet styles;
  PageGraphics graphics;
  std::vector<std::string> sheets(picture.sheets.size());
  for (std::size_t number = 0; number < sheets.size(); ++number) {
    appendSheetSection(sheets[number], picture.sheets[number], number, styles, graphics);
  }
  auto const data = writePageData(picture, accounts, options.accountLimit, options.accountBytes);
  sink(makeHead(picture, options, std::string(pageStyle) + styles.getText()));
  std::string out = "<body>\n<header><h1>";
  appendLabel(out, picture.name);
  out += "</h1><div id=\"tools\"></div></header>\n" + graphics.getMarkup();
  appendTabs(out, picture);
  out += "<main>\n";
  sink(out);
  for (auto const& sheet : sheets) {
    sink(sheet);
  }
  out = "</main>\n";
  if (data.isCut) {
    out += fmt::format(
        "<p class=\"note\" id=\"short\">The first {} cells in the ranges of rules tell "
        "in full how they come to look so. The others name their rules.</p>\n",
        data.accountCount);
  }
  appendFindings(out, picture);
  out += "<script type=\"application/json\" id=\"data\">";
  sink(out);
  sink(data.json);
  sink("</script>\n<script type=\"module\">");
  sink(pageScript);
  sink("</script>\n</body>\n</html>\n");
}

}  // namespace Zorv::Render
