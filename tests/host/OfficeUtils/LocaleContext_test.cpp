#include "OfficeUtils/LocaleContext.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Utils/Exceptions.h"

namespace Zorv::OfficeUtils {
namespace {

using std::chrono::Monday;
using std::chrono::Saturday;
using std::chrono::Sunday;

TEST(LocaleContext, IsAmericanSince1900ByDefault) {
  LocaleContext const locale;
  EXPECT_EQ(locale.getName(), "en-US");
  EXPECT_EQ(locale.getDateSystem(), DateSystem::Since1900);
  EXPECT_EQ(locale.getFirstDayOfWeek(), Sunday);
  EXPECT_EQ(locale.getDecimalSeparator(), ".");
  EXPECT_EQ(locale.getGroupingSeparator(), ",");
}

struct LocaleCase {
  char const* name;
  std::chrono::weekday firstDayOfWeek;
  char const* decimalSeparator;
  char const* groupingSeparator;
  char const* trueText;
  char const* falseText;
};

TEST(LocaleContext, KnowsLocalesByTagOrName) {
  for (LocaleCase const& row : std::vector<LocaleCase>{
           {"en_US", Sunday, ".", ",", "TRUE", "FALSE"},
           {"en-GB", Monday, ".", ",", "TRUE", "FALSE"},
           {"de-DE", Monday, ",", ".", "WAHR", "FALSCH"},
           {"de", Monday, ",", ".", "WAHR", "FALSCH"},
           {"de_DE.UTF-8", Monday, ",", ".", "WAHR", "FALSCH"},
           {"de-CH", Monday, ".", "\xE2\x80\x99", "WAHR", "FALSCH"},
           {"fr-FR", Monday, ",", "\xE2\x80\xAF", "VRAI", "FAUX"},
           {"es-ES", Monday, ",", ".", "VERDADERO", "FALSO"},
           {"pt-BR", Sunday, ",", ".", "VERDADEIRO", "FALSO"},
           {"ru-RU", Monday, ",", "\xC2\xA0", "ИСТИНА", "ЛОЖЬ"},
           {"ar-EG", Saturday, "\xD9\xAB", "\xD9\xAC", "TRUE", "FALSE"},
       }) {
    LocaleContext const locale(row.name);
    EXPECT_EQ(locale.getName(), row.name);
    EXPECT_EQ(locale.getFirstDayOfWeek(), row.firstDayOfWeek) << row.name;
    EXPECT_EQ(locale.getDecimalSeparator(), row.decimalSeparator) << row.name;
    EXPECT_EQ(locale.getGroupingSeparator(), row.groupingSeparator) << row.name;
    EXPECT_EQ(locale.getTrueText(), row.trueText) << row.name;
    EXPECT_EQ(locale.getFalseText(), row.falseText) << row.name;
  }
}

TEST(LocaleContext, KeepsTheDateSystem) {
  EXPECT_EQ(LocaleContext("de-DE").getDateSystem(), DateSystem::Since1900);
  EXPECT_EQ(LocaleContext("de-DE", DateSystem::Since1904).getDateSystem(), DateSystem::Since1904);
}

TEST(LocaleContext, CopiesShareTheirData) {
  LocaleContext const locale("it-IT");
  LocaleContext const copy = locale;
  EXPECT_EQ(&copy.getTrueText(), &locale.getTrueText());
}

TEST(LocaleContext, RefusesUnknownLocales) {
  for (char const* unknown : {"", "xx", "xx-YY", "deutsch", "!!", "12"}) {
    EXPECT_THROW(LocaleContext{unknown}, BaseRuntimeError) << unknown;
  }
}

}  // namespace
}  // namespace Zorv::OfficeUtils
