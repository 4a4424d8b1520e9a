#include "render/Html/Page.h"

#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/Html/ContentHash.h"
#include "render/Html/PageAssets.h"
#include "render/MakePicture.h"

namespace Zorv::Render {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Accounts that name the cell and are all different.
class NumberedAccounts final : public PageAccounts {
public:
  Words::AccountText explain(std::size_t /*sheet*/, CellIndex /*cell*/) override {
    Words::AccountText account;
    account.value = "account " + std::to_string(++count);
    return account;
  }
  std::size_t count = 0;
};

class PageTest : public testing::Test {
protected:
  std::string write() {
    std::string page;
    writePage(made.picture, options, accounts, [&](std::string_view piece) { page += piece; });
    return page;
  }
  /// Text between two texts of a page.
  static std::string between(std::string const& page, std::string_view begin,
                             std::string_view end) {
    auto const from = page.find(begin) + begin.size();
    return page.substr(from, page.find(end, from) - from);
  }

  TestSupport::MadePicture made{3, 3};
  PageOptions options;
  PageAccounts* accounts = nullptr;
};

TEST_F(PageTest, HashesAreThoseOfTheStandard) {
  EXPECT_EQ(hashOfContent("abc"), "'sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0='");
}

TEST_F(PageTest, ThePolicyAllowsThePagesOwnStyleAndScriptAlone) {
  made.add(0, 0, "x").textColour = DOM::Colour{1, 2, 3};
  auto const page = write();
  auto const policy = between(page, "http-equiv=\"Content-Security-Policy\" content=\"", "\"");
  auto const style = between(page, "<style>", "</style>");
  EXPECT_THAT(style, HasSubstr("color:#010203"));
  EXPECT_EQ(policy,
            "default-src 'none'; style-src " + hashOfContent(style) + "; script-src " +
                hashOfContent(pageScript) +
                "; base-uri 'none'; form-action 'none'; require-trusted-types-for 'script'");
  EXPECT_THAT(page, HasSubstr("<script type=\"module\">" + std::string(pageScript) + "</script>"));
  EXPECT_THAT(page, Not(HasSubstr(" style=\"")));
}

TEST_F(PageTest, TextsOfTheWorkbookNeverBecomeMarkup) {
  std::string const hostile = "</script><script>alert(1)</script><img src=x onerror='alert(2)'>\"";
  made.picture.name = hostile;
  made.picture.findings = {hostile};
  made.sheet().name = hostile;
  made.add(0, 0, hostile).decision = made.addRule({0, 0, 1, 1}, hostile);
  made.sheet().rules[0].ranges = made.sheet().rules[0].style = hostile;
  NumberedAccounts numbered;
  accounts = &numbered;
  auto const page = write();
  EXPECT_THAT(page, Not(HasSubstr("<img")));
  EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
  EXPECT_EQ(page.find("</script>"), page.find("</script>\n<script type=\"module\">"))
      << "the data end at their end";
}

TEST_F(PageTest, AccountsStandBesideTheTable) {
  made.addRule({1, 1, 3, 2}, "cell > 5");
  NumberedAccounts numbered;
  accounts = &numbered;
  auto const data = between(write(), "id=\"data\">", "</script>");
  EXPECT_EQ(numbered.count, 2U);
  EXPECT_THAT(data, HasSubstr("\"cells\":{\"1\":[1,0],\"2\":[1,1]}"));
  EXPECT_THAT(data, HasSubstr("\"account 2\""));
  EXPECT_THAT(data, HasSubstr("\"areas\":[[1,1,3,2]]"));
}

TEST_F(PageTest, AccountsAreBoundedAndThePageSaysSo) {
  made.addRule({0, 0, 3, 3}, "cell > 5");
  NumberedAccounts numbered;
  accounts = &numbered;
  EXPECT_THAT(write(), Not(HasSubstr("id=\"short\"")));
  EXPECT_EQ(numbered.count, 9U);
  numbered.count = 0;
  options.accountLimit = 4;
  EXPECT_THAT(write(), HasSubstr("The first 4 cells"));
  EXPECT_EQ(numbered.count, 4U);
  numbered.count = 0;
  options.accountBytes = 1;
  EXPECT_THAT(write(), HasSubstr("The first 1 cells"));
  EXPECT_EQ(numbered.count, 1U);
}

TEST_F(PageTest, ThemesAreAnAttributeOfThePage) {
  EXPECT_THAT(write(), HasSubstr("data-theme=\"auto\""));
  options.theme = Theme::Dark;
  EXPECT_THAT(write(), HasSubstr("data-theme=\"dark\""));
}

TEST_F(PageTest, SheetsAreSectionsWithALink) {
  made.picture.sheets.push_back(made.sheet());
  made.picture.sheets[1].name = "Second";
  auto const page = write();
  EXPECT_THAT(page, HasSubstr("<a id=\"tab-1\" href=\"#sheet-1\">Second</a>"));
  EXPECT_THAT(page,
              HasSubstr("<section class=\"sheet\" id=\"sheet-1\" aria-labelledby=\"name-1\">"));
}

TEST_F(PageTest, RulesAreListedWithoutScripts) {
  made.addRule({0, 0, 1, 1}, "cell > 5");
  auto& rule = made.sheet().rules[0];
  rule.number = 7;
  rule.priority = 2;
  rule.stopsWhereTrue = true;
  rule.style = "bold";
  rule.colour = DOM::Colour{1, 2, 3};
  rule.cellCount = 1;
  EXPECT_THAT(write(), HasSubstr("fill=\"#010203\"/></svg><b>Rule 7: cell &gt; 5</b>"
                                 "<span>on somewhere, priority 2, stops</span>"
                                 "<span>bold</span><span>1 cell</span></li>"));
}

TEST_F(PageTest, APictureWithoutSheetsIsAPage) {
  made.picture.sheets.clear();
  EXPECT_THAT(write(), HasSubstr("</html>"));
}

TEST_F(PageTest, WhatTheSinkThrowsEndsThePage) {
  EXPECT_THROW(writePage(made.picture, options, nullptr,
                         [](std::string_view) { throw std::runtime_error("full"); }),
               std::runtime_error);
}

}  // namespace
}  // namespace Zorv::Render
