#include "Formulas/FollowedAreas.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "Formulas/CriterionText.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/LookupCache.h"
#include "Formulas/ParseExpr.h"
#include "host/Formulas/LookupFormulas.h"
#include "support/Sanitized.h"

namespace Zorv::Formulas {

namespace {

/// Four numbers, 1, 2, 2 and 5, and a sum and a count that no walk over a document's cells gives.
class ToldArea final : public FollowedArea {
public:
  AreaSummary summary{.sum = 10.5, .numberCount = 4, .valueCount = 9, .firstError = std::nullopt};

  [[nodiscard]] AreaSummary const& getSummary() const noexcept override { return summary; }
  [[nodiscard]] double numberAt(std::uint64_t index) const noexcept override {
    return std::vector<double>{1, 2, 2, 5}[index];
  }
  [[nodiscard]] RankCounts countAround(double number) const noexcept override {
    return number == 2 ? RankCounts{1, 2, 1} : RankCounts{};
  }
  [[nodiscard]] std::uint64_t countEqual(FormulaValue const& value) const override {
    return value.which() == FormulaModel::FormulaValueKind::Number ? 3 : 2;
  }
};

/// Knows A1:A100 of one table, and of it one aspect at least.
class ToldAreas final : public FollowedAreas {
public:
  explicit ToldAreas(DOM::Table const& table) : _table(table) {}

  ToldArea area;
  std::optional<AreaAspect> only;

  [[nodiscard]] FollowedArea const* find(DOM::Table const& table, TableRange const& range,
                                         AreaAspect aspect) const noexcept override {
    bool const isKnown = &table == &_table && range == TableRange{0, 0, 100, 1};
    return isKnown && (!only || *only == aspect) ? &area : nullptr;
  }

private:
  DOM::Table const& _table;
};

class FollowedAreasTest : public testing::Test {
protected:
  FollowedAreasTest() {
    for (int row = 1; row <= 100; ++row) {
      document.set("A" + std::to_string(row), "7");
      document.set("B" + std::to_string(row), "7");
    }
    document.addSheet("Other");
    lookups.follow(areas);
  }

  std::string calc(std::string_view formula) {
    EvaluationSession session(lookups);
    return LookupFormulas::calcInSession(document, document.sheet(), parseExpr(formula), 0,
                                         session);
  }

  FormulaDocument document;
  ToldAreas areas{document.sheet().table};
  LookupCache lookups;
};

TEST_F(FollowedAreasTest, AnswerInThePlaceOfAWalk) {
  struct Case {
    char const* formula;
    char const* expected;
    AreaAspect aspect;
  };
  Case const cases[] = {
      {"SUM($A$1:$A$100)", "10.5", AreaAspect::Summary},
      {"AVERAGE($A$1:$A$100)", "2.625", AreaAspect::Summary},
      {"COUNT($A$1:$A$100)", "4", AreaAspect::Summary},
      {"COUNTA($A$1:$A$100)", "9", AreaAspect::Summary},
      {"MIN($A$1:$A$100)", "1", AreaAspect::Order},
      {"MAX($A$1:$A$100)", "5", AreaAspect::Order},
      {"MEDIAN($A$1:$A$100)", "2", AreaAspect::Order},
      {"LARGE($A$1:$A$100,1)", "5", AreaAspect::Order},
      {"SMALL($A$1:$A$100,1)", "1", AreaAspect::Order},
      {"LARGE($A$1:$A$100,5)", "#NUM!", AreaAspect::Order},
      {"PERCENTILE($A$1:$A$100,0.25)", "1.75", AreaAspect::Order},
      {"PERCENTILE.EXC($A$1:$A$100,0.2)", "1", AreaAspect::Order},
      {"QUARTILE($A$1:$A$100,4)", "5", AreaAspect::Order},
      {"RANK(2,$A$1:$A$100)", "2", AreaAspect::Order},
      {"RANK.AVG(2,$A$1:$A$100,1)", "2.5", AreaAspect::Order},
      {"RANK(3,$A$1:$A$100)", "#N/A", AreaAspect::Order},
      {"COUNTIF($A$1:$A$100,\"<2\")", "1", AreaAspect::Order},
      {"COUNTIF($A$1:$A$100,\"<=2\")", "3", AreaAspect::Order},
      {"COUNTIF($A$1:$A$100,\">2\")", "1", AreaAspect::Order},
      {"COUNTIF($A$1:$A$100,\">=2\")", "3", AreaAspect::Order},
      {"COUNTIF($A$1:$A$100,2)", "3", AreaAspect::Classes},
      {"COUNTIF($A$1:$A$100,\"x\")", "2", AreaAspect::Classes},
      {"COUNTIF($A$1:$A$100,\"<>2\")", "97", AreaAspect::Classes},
      {"COUNTIF($A$1:$A$100,\"\")", "93", AreaAspect::Classes},
      {"COUNTIF($A$1:$A$100,\"=\")", "91", AreaAspect::Classes},
  };
  for (Case const& each : cases) {
    areas.only = each.aspect;
    EXPECT_EQ(calc(each.formula), each.expected) << each.formula;
  }
}

TEST_F(FollowedAreasTest, AreAskedForNothingElse) {
  areas.only = AreaAspect::Summary;
  for (char const* const formula :
       {"SUM($A$1:$A$100,1)", "SUM($B$1:$B$100)", "SUM($A$1:$A$99)", "SUM(Other!$A$1:$A$100)",
        "SUM($A$1:$A$100*1)", "MAX($A$1:$A$100)", "COUNTIF($A$1:$A$100,7)",
        "COUNTIF($A$1:$A$100,\">x\")", "COUNTIF($A$1:$A$100,\"7*\")", "SUMIF($A$1:$A$100,7)"}) {
    EXPECT_EQ(calc(formula), document.calc(formula)) << formula;
  }
  areas.only = std::nullopt;
  EXPECT_EQ(calc("COUNTIF($A$1:$A$100,\">x\")"), "0") << "no number is compared with a text";
}

TEST_F(FollowedAreasTest, GiveTheFirstErrorWhereAWalkDoes) {
  document.set("A50", "#N/A");
  areas.area.summary.firstError = FormulaModel::FormulaErrorCode::NotAvailable;
  for (char const* const formula :
       {"SUM($A$1:$A$100)", "AVERAGE($A$1:$A$100)", "MIN($A$1:$A$100)", "MAX($A$1:$A$100)",
        "MEDIAN($A$1:$A$100)", "LARGE($A$1:$A$100,1)", "QUARTILE($A$1:$A$100,1)",
        "RANK(2,$A$1:$A$100)"}) {
    EXPECT_EQ(calc(formula), "#N/A") << formula;
  }
  EXPECT_EQ(calc("COUNT($A$1:$A$100)"), "4");
  EXPECT_EQ(calc("COUNTIF($A$1:$A$100,2)"), "3");
}

TEST_F(FollowedAreasTest, WithoutNumbersAreAsCellsWithoutNumbers) {
  for (int row = 1; row <= 100; ++row) {
    document.set("A" + std::to_string(row), "\"x\"");
  }
  areas.area.summary = {.sum = 0, .numberCount = 0, .valueCount = 100, .firstError = std::nullopt};
  for (char const* const formula :
       {"AVERAGE($A$1:$A$100)", "MIN($A$1:$A$100)", "MAX($A$1:$A$100)", "MEDIAN($A$1:$A$100)",
        "SMALL($A$1:$A$100,1)", "PERCENTILE($A$1:$A$100,0)"}) {
    EXPECT_EQ(calc(formula), document.calc(formula)) << formula;
  }
}

TEST(CriterionText, IsTheNumberThatATextReadsAsOrTheTextInFoldedCase) {
  OfficeUtils::LocaleContext const locale("en-US");
  auto const read = [&](std::string_view text) { return readCriterionText(text, locale); };
  EXPECT_EQ(read("5"), CriterionText(5.0));
  EXPECT_EQ(read(" 5.0 "), CriterionText(5.0));
  EXPECT_EQ(read("$1,000"), CriterionText(1000.0));
  EXPECT_EQ(read("Total"), CriterionText(std::string("total")));
  EXPECT_EQ(read(""), CriterionText(std::string()));
  EXPECT_EQ(read("\xC3\x84pfel"), read("\xC3\xA4PFEL"));
  EXPECT_NE(read("\xC3\x84pfel"), read("apfel"));
  EXPECT_NE(read("\xE4"), read("\xC3\xA4")) << "a stray byte is no letter";
  EXPECT_NE(read("5a"), read("5"));
}

/// A column of texts too short to lie outside of their cells, and a number for each row.
void fillWithTexts(FormulaDocument& document) {
  for (int row = 1; row <= 100; ++row) {
    document.set("B" + std::to_string(row),
                 row % 10 == 0 ? "\"ten\"" : "\"t" + std::to_string(row) + "\"");
    document.set("C" + std::to_string(row), std::to_string(row));
  }
}

TEST(LookupCacheOfAnEditedDocument, SeesNewValuesThatItIsTold) {
  FormulaDocument document;
  fillWithTexts(document);
  LookupCache lookups;
  char const* const formulas[] = {
      "COUNTIF($B$1:$B$100,\"ten\")", "COUNTIF($C$1:$C$100,\">90\")", "SUM($C$1:$C$100)",
      "MATCH(95,$C$1:$C$100,0)",      "RANK(95,$C$1:$C$100)",         "SUMIF($B:$B,\"ten\",$C:$C)"};
  for (int edit = 0; edit < 3; ++edit) {
    for (char const* const formula : formulas) {
      EvaluationSession session(lookups);
      for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(LookupFormulas::calcInSession(document, document.sheet(), parseExpr(formula), 0,
                                                session),
                  document.calc(formula))
            << formula;
      }
    }
    document.set("C40", std::to_string(95 + edit));
    document.set("B" + std::to_string(edit + 1), "\"ten\"");
    DOM::Table const& table = document.sheet().table;
    lookups.valuesChanged(table, std::vector<TableRange>{{0, 1, 3, 2}});
    lookups.valuesChanged(table, std::vector<TableRange>{{39, 2, 40, 3}});
  }
}

TEST(LookupCacheOfAnEditedDocument, FindsTextsThatMovedInMemory) {
  FormulaDocument document;
  fillWithTexts(document);
  LookupCache lookups;
  auto const count = [&] {
    EvaluationSession session(lookups);
    std::string counted;
    for (int i = 0; i < 4; ++i) {
      counted = LookupFormulas::calcInSession(
          document, document.sheet(), parseExpr("COUNTIF($B$1:$B$100,\"ten\")"), 0, session);
    }
    return counted;
  };
  EXPECT_EQ(count(), "10");
  // New cells beside the texts, outside of the range that was looked up.
  for (unsigned long row = 0; row < 100; ++row) {
    document.set("A" + std::to_string(row + 1), "\"ten\"");
    lookups.valuesChanged(document.sheet().table, std::vector<TableRange>{{row, 0, row + 1, 1}});
    ASSERT_EQ(count(), "10") << row;
  }
}

/// The index of a part of a column is that of the whole column, where a new value beside the part
/// may give all others another place.
TEST(LookupCacheOfAnEditedDocument, SeesNewValuesBesideTheRangesThatItIsAskedFor) {
  FormulaDocument document;
  for (int row = 1; row <= 200; ++row) {
    document.set("A" + std::to_string(row), std::to_string(row % 5));
    document.set("B" + std::to_string(row), std::to_string(row % 2));
    document.set("C" + std::to_string(row), std::to_string(row));
  }
  LookupCache lookups;
  DOM::Table const& table = document.sheet().table;
  lookups.valuesChanged(table, {});  // cells have moved since there was no cache
  for (int edit = 0; edit < 3; ++edit) {
    for (char const* const formula :
         {"SUMIF($A$101:$A$200,A4,$C$101:$C$200)", "COUNTIF($A$101:$A$200,A4)",
          "SUMIFS($C$101:$C$200,$A$101:$A$200,A4,$B$101:$B$200,B4)",
          "COUNTIFS($A$101:$A$200,A4,$B$101:$B$200,B4)"}) {
      auto const expr = parseExpr(formula);
      for (unsigned long row = 0; row < 20; ++row) {
        EvaluationSession session(lookups);
        EXPECT_EQ(LookupFormulas::calcInSession(document, document.sheet(), expr, row, session),
                  LookupFormulas::calcPlainly(document, formula, row))
            << formula << " in row " << row + 1 << " after edit " << edit;
      }
    }
    auto const column = static_cast<unsigned long>(edit);
    document.set(edit == 0 ? "A1" : "B1", "77");
    lookups.valuesChanged(table, std::vector<TableRange>{{0, column, 1, column + 1}});
  }
}

/// Rows of classes, numbers whose sums are rounded, and some errors and texts among them.
class SummedDocument {
public:
  explicit SummedDocument(std::uint32_t seed) : _random(seed) {
    document.addSheet("Other");
    for (unsigned long row = 0; row < rows; ++row) {
      setAtRandom(row, 0, 5);
      setAtRandom(row, 1, 2);
      setAtRandom(row, 2, 9);
      setAtRandom(row, 3, 9);
      document.sheet(1).table.setValue(row, 0, drawValue(9));
    }
    lookups.valuesChanged(document.sheet().table, {});  // cells have moved since there was no cache
    lookups.valuesChanged(document.sheet(1).table, {});
  }

  void expectPlainAnswers() {
    for (char const* const formula :
         {"SUMIF($A$11:$A$200,A4,$C$11:$C$200)", "SUMIF($A:$A,A4,$D:$D)",
          "AVERAGEIF($A$11:$A$200,A4,Other!$A$1:$A$190)", "SUMIF($A$11:$B$200,A4,$C$11:$D$200)",
          "SUMIFS($C$11:$C$200,$A$11:$A$200,A4,$B$11:$B$200,B4)",
          "MAXIFS($D$1:$D$190,$A$11:$A$200,A4)"}) {
      auto const expr = parseExpr(formula);
      for (unsigned long row = 0; row < 8; ++row) {
        EvaluationSession session(lookups);
        ASSERT_EQ(LookupFormulas::calcInSession(document, document.sheet(), expr, row, session),
                  LookupFormulas::calcPlainly(document, formula, row))
            << formula << " in row " << row + 1;
      }
    }
  }

  /// Sets some cells or removes them, and tells of them.
  void edit() {
    std::vector<TableRange> areas;
    for (auto cells = 1 + _random() % 3; cells > 0; --cells) {
      unsigned long const row = _random() % rows;
      unsigned long const column = _random() % 4;
      if (_random() % 4 == 0) {
        document.sheet().table.removeCell(row, column);
      } else {
        setAtRandom(row, column, column == 0 ? 5 : column == 1 ? 2 : 9);
      }
      areas.push_back({row, column, row + 1, column + 1});
    }
    lookups.valuesChanged(document.sheet().table, areas);
    unsigned long const row = _random() % rows;
    document.sheet(1).table.setValue(row, 0, drawValue(9));
    lookups.valuesChanged(document.sheet(1).table, std::vector<TableRange>{{row, 0, row + 1, 1}});
  }

  static constexpr unsigned long rows = 220;
  FormulaDocument document;
  LookupCache lookups;

private:
  FormulaValue drawValue(std::uint32_t count) {
    auto const drawn = static_cast<std::uint32_t>(_random() % count);
    if (drawn == 7) {
      return FormulaModel::FormulaNumber{FloatNumber(_random() % 2 == 0 ? 1e16 : -1e16)};
    }
    if (drawn == 8) {
      return _random() % 16 == 0 ? FormulaValue(FormulaModel::FormulaError{
                                       FormulaModel::FormulaErrorCode::NotAvailable})
                                 : FormulaModel::FormulaString{"text"};
    }
    return FormulaModel::FormulaNumber{FloatNumber(count < 9 ? drawn : drawn * 0.1)};
  }
  void setAtRandom(unsigned long row, unsigned long column, std::uint32_t count) {
    document.sheet().table.setValue(row, column, drawValue(count));
  }

  std::mt19937 _random;
};

TEST(LookupCacheOfAnEditedDocument, SumsClassesToTheBitThroughRandomEdits) {
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    SummedDocument summed(seed);
    for (int edit = 0; edit < 40; ++edit) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", edit " + std::to_string(edit));
      ASSERT_NO_FATAL_FAILURE(summed.expectPlainAnswers());
      summed.edit();
    }
  }
}

/// Values that are easily taken for each other, and formulas with indexes of them, while cells get
/// other values, appear and disappear.
class LookedUpDocument {
public:
  explicit LookedUpDocument(std::uint32_t seed) : _random(seed) {
    document.addSheet("Other");
    LookupFormulas::fill(document, [this](std::size_t count) { return choose(count); });
    lookups.valuesChanged(table, {});  // cells have moved since there was no cache
  }

  void expectPlainAnswers() {
    for (std::string_view const formula : LookupFormulas::getFormulas()) {
      auto const expr = parseExpr(formula);
      EvaluationSession session(lookups);
      for (unsigned long row = 0; row < 12; ++row) {
        auto const expected = LookupFormulas::calcPlainly(document, formula, row);
        ASSERT_EQ(LookupFormulas::calcInSession(document, document.sheet(), expr, row, session),
                  expected)
            << formula << " in row " << row + 1;
      }
    }
  }

  /// Copies some cells to others, or removes these, and tells areas that overlap.
  void edit() {
    std::vector<TableRange> areas;
    for (std::size_t cells = 1 + choose(4); cells > 0; --cells) {
      unsigned long const row = choose(LookupFormulas::rows);
      unsigned long const column = choose(4);
      DOM::Cell const* const copied = table.findCell(choose(LookupFormulas::rows), choose(4));
      if (copied == nullptr) {
        table.removeCell(row, column);
      } else {
        table.setValue(row, column, FormulaValue(copied->value));
      }
      areas.push_back({row, column, row + 1 + choose(3), column + 1 + choose(2)});
    }
    lookups.valuesChanged(table, areas);
  }

  FormulaDocument document;
  DOM::Table& table = document.sheet().table;
  LookupCache lookups;

private:
  std::size_t choose(std::size_t count) { return _random() % count; }

  std::mt19937 _random;
};

TEST(LookupCacheOfAnEditedDocument, AnswersAsAWalkThroughRandomEdits) {
  for (std::uint32_t seed = 1; seed <= (TestSupport::sanitized ? 2 : 6); ++seed) {
    LookedUpDocument edited(seed);
    for (int edit = 0; edit < 12; ++edit) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", edit " + std::to_string(edit));
      ASSERT_NO_FATAL_FAILURE(edited.expectPlainAnswers());
      edited.edit();
    }
  }
}

/// A change that is not told is not seen: the index is not built again.
TEST(LookupCacheOfAnEditedDocument, FollowsNewValuesOfCriteria) {
  FormulaDocument document;
  for (int row = 1; row <= 100; ++row) {
    document.set("A" + std::to_string(row), "\"class " + std::to_string(row % 4) + "\"");
    document.set("B" + std::to_string(row), std::to_string(row % 2));
    document.set("C" + std::to_string(row), "1");
  }
  LookupCache lookups;
  struct Case {
    char const* formula;
    char const* before;
    char const* after;
  };
  Case const cases[] = {
      {"SUMIF($A$1:$A$100,\"class 1\",$C$1:$C$100)", "25", "26"},
      {"SUMIF($A$1:$A$100,\"class 2\",$C$1:$C$100)", "25", "24"},
      {"COUNTIF($A$1:$A$100,\"Class 1\")", "25", "26"},
      {"AVERAGEIF($A$1:$A$100,\"class 1\",$C$1:$C$100)", "1", "1"},
      {"COUNTIFS($A$1:$A$100,\"class 1\",$B$1:$B$100,0)", "0", "1"},
      {"SUMIFS($C$1:$C$100,$A$1:$A$100,\"class 2\",$B$1:$B$100,0)", "25", "24"},
      {"MATCH(\"class 1\",$A$1:$A$100,0)", "1", "1"},
      {"MATCH(\"class 2\",$A$1:$A$100,0)", "2", "6"},
  };
  auto const calc = [&](char const* formula) {
    EvaluationSession session(lookups);
    std::string result;
    for (int i = 0; i < 4; ++i) {
      result =
          LookupFormulas::calcInSession(document, document.sheet(), parseExpr(formula), 0, session);
    }
    return result;
  };
  for (Case const& each : cases) {
    EXPECT_EQ(calc(each.formula), each.before) << each.formula;
  }
  document.set("A1", "\"class 3\"");
  document.set("A2", "\"class 1\"");
  lookups.valuesChanged(document.sheet().table, std::vector<TableRange>{{1, 0, 2, 1}});
  for (Case const& each : cases) {
    EXPECT_EQ(calc(each.formula), each.after) << each.formula;
  }
}

/// A change that is not told is not seen: the sums of the other classes are kept.
TEST(LookupCacheOfAnEditedDocument, SumsAgainTheClassesWithNewValuesAlone) {
  FormulaDocument document;
  for (int row = 1; row <= 100; ++row) {
    document.set("A" + std::to_string(row), std::to_string(row % 4));
    document.set("B" + std::to_string(row), "1");
  }
  LookupCache lookups;
  auto const sum = [&](char const* formula) {
    EvaluationSession session(lookups);
    std::string summed;
    for (int i = 0; i < 4; ++i) {
      summed =
          LookupFormulas::calcInSession(document, document.sheet(), parseExpr(formula), 0, session);
    }
    return summed;
  };
  DOM::Table const& table = document.sheet().table;
  lookups.valuesChanged(table, {});  // cells have moved since there was no cache
  EXPECT_EQ(sum("SUMIF($A$1:$A$100,1,$B$1:$B$100)"), "25");
  EXPECT_EQ(sum("SUMIF($A$1:$A$100,A2,$B$1:$B$100)"), "25");
  EXPECT_EQ(sum("SUMIF($A$1:$A$100,A1,$B$1:$B$100)"), "25");
  document.set("B5", "10");
  document.set("B6", "20");
  lookups.valuesChanged(table, std::vector<TableRange>{{4, 1, 5, 2}});
  EXPECT_EQ(sum("SUMIF($A$1:$A$100,A1,$B$1:$B$100)"), "34");
  EXPECT_EQ(sum("SUMIF($A$1:$A$100,A2,$B$1:$B$100)"), "25");
  lookups.valuesChanged(table, std::vector<TableRange>{{0, 1, 100, 2}});
  EXPECT_EQ(sum("SUMIF($A$1:$A$100,A2,$B$1:$B$100)"), "44");
}

/// A change that is not told is not seen: the index is kept.
TEST(LookupCacheOfAnEditedDocument, KeepsIndexesThatNewValuesDoNotReach) {
  FormulaDocument document;
  fillWithTexts(document);
  LookupCache lookups;
  auto const count = [&](char const* formula) {
    EvaluationSession session(lookups);
    std::string counted;
    for (int i = 0; i < 4; ++i) {
      counted =
          LookupFormulas::calcInSession(document, document.sheet(), parseExpr(formula), 0, session);
    }
    return counted;
  };
  DOM::Table const& table = document.sheet().table;
  lookups.valuesChanged(table, {});  // cells have moved since there was no cache
  EXPECT_EQ(count("COUNTIF($C$1:$C$100,5)"), "1");
  document.set("C6", "5");
  lookups.valuesChanged(table, std::vector<TableRange>{{0, 1, 100, 2}});
  EXPECT_EQ(count("COUNTIF($C$1:$C$100,5)"), "1");
  lookups.valuesChanged(table, std::vector<TableRange>{{5, 2, 6, 3}});
  EXPECT_EQ(count("COUNTIF($C$1:$C$100,5)"), "2");
}

}  // namespace

}  // namespace Zorv::Formulas
