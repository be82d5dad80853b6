#include "workbench/io/stand_in_names.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <boost/locale/utf.hpp>
#include <iterator>
#include <set>

#include "files/line_grammar.h"
#include "workbench/io/text_encoding.h"

namespace {

using namespace tiepoint::workbench;

struct Row {
  const char* name;
  const char* standIn;
};

TEST(StandInNames, AreTheNamesThatTheModuleCarries) {
  for (const char* name : {"P1", "Т-12", "Пункт№5", "a_b", "_x", "_x12", "x0041_", "T\"1\"", "?", "ЇЄ°", "a/b:c*"}) {
    EXPECT_EQ(standInName(name), name);
    EXPECT_EQ(nameOfStandIn(name), name);
  }
}

TEST(StandInNames, EscapeWhatItCant) {
  const Row rows[] = {
      {"P 1", "P_x0020_1"},         {"a,b;c", "a_x002C_b_x003B_c"},     {"tab\tbed", "tab_x0009_bed"},
      {"Höhe", "H_x00F6_he"},       {"測站", "_x6E2C__x7AD9_"},         {"\xF0\x9F\x98\x80", "_x1F600_"},
      {"_x0041_", "_x005F_x0041_"}, {"_x0041 ", "_x005F_x0041_x0020_"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(standInName(row.name), row.standIn);
    EXPECT_EQ(nameOfStandIn(row.standIn), row.name);
  }
}

TEST(StandInNames, OfOtherOriginStayAsTheyAre) {
  for (const char* name : {"_x0041_", "_x00f6_", "_x000020_", "_xD800_", "_x110000_", "_xFFFFFF_", "_x0020"}) {
    EXPECT_EQ(nameOfStandIn(name), name);
  }
}

TEST(StandInNames, OfGroupsKeepBlanksAndCommas) {
  EXPECT_EQ(standInGroupName("Station 1, west; north"), "Station 1, west; north");
  EXPECT_EQ(standInGroupName("測站 1"), "_x6E2C__x7AD9_ 1");
  EXPECT_EQ(nameOfStandIn("_x6E2C__x7AD9_ 1"), "測站 1");
}

TEST(StandInNames, RefuseWhatIsNoText) { EXPECT_THROW(standInName("\xFF"), EncodingError); }

TEST(StandInNames, OfGroupsEscapeWhatNoNameCarries) {
  EXPECT_EQ(standInGroupName("tab\there"), "tab_x0009_here");
  EXPECT_EQ(standInGroupName("_x0041_"), "_x005F_x0041_");
  EXPECT_THROW(standInGroupName("\xFF"), EncodingError);
}

TEST(StandInNames, OfTheDeletionCharacterAreEscaped) {
  EXPECT_EQ(standInName("a\x7F"), "a_x007F_");
  EXPECT_EQ(nameOfStandIn("a_x007F_"), "a\x7F");
}

TEST(StandInNames, LookLikeAnEscapeFromFourDigitsOn) {
  EXPECT_EQ(standInName("_x004"), "_x004");
  EXPECT_EQ(standInName("_x0041"), "_x005F_x0041") << "whatever follows the fourth";
  EXPECT_EQ(standInName("__x0041"), "__x005F_x0041");
  EXPECT_EQ(standInName("_x00f6_"), "_x00f6_") << "digits are capital";
}

TEST(StandInNames, ReachTheModuleInItsOwnEncoding) {
  EXPECT_EQ(moduleName("Т 1"), "\xD2_x0020_1");
  EXPECT_EQ(moduleGroupName("Т 1"), "\xD2 1");
  EXPECT_EQ(moduleName("測"), "_x6E2C_");
  EXPECT_EQ(nameOfModule("\xD2_x0020_1"), "Т 1");
  EXPECT_EQ(nameOfModule("_x6E2C_"), "測");
  EXPECT_EQ(nameOfModule("plain"), "plain");
}

/// Characters that escapes are made of, those that need one, and any others.
rc::Gen<std::string> anyText() {
  using Utf8 = boost::locale::utf::utf_traits<char>;
  const auto character = rc::gen::weightedOneOf<std::uint32_t>(
      {{6, rc::gen::cast<std::uint32_t>(rc::gen::elementOf(std::string("_x0041FAaf")))},
       {2, rc::gen::cast<std::uint32_t>(rc::gen::elementOf(std::string(" ,;\t\"?P")))},
       {2, rc::gen::inRange<std::uint32_t>(1, 0x600)},
       {1, rc::gen::suchThat(rc::gen::inRange<std::uint32_t>(1, 0x110000),
                             [](std::uint32_t c) { return c < 0xD800 || c > 0xDFFF; })}});
  return rc::gen::map(rc::gen::container<std::vector<std::uint32_t>>(character), [](const auto& characters) {
    std::string text;
    for (const std::uint32_t c : characters) Utf8::encode(c, std::back_inserter(text));
    return text;
  });
}

RC_GTEST_PROP(StandInNameLaws, EveryTextComesBack, ()) {
  const std::string text = *anyText();
  RC_ASSERT(nameOfStandIn(standInName(text)) == text);
  RC_ASSERT(nameOfStandIn(standInGroupName(text)) == text);
}

RC_GTEST_PROP(StandInNameLaws, AStandInIsOneFieldOfTheModulesGrammar, ()) {
  const std::string text = *anyText();
  RC_PRE(!text.empty());
  const std::string name = nameFromUtf8(standInName(text));
  ZOR::reg::ParsedPoint point;
  RC_ASSERT(ZOR::reg::parseLineNXYZ(name + " 1 2 3", point));
  RC_ASSERT(point.name == name);
}

RC_GTEST_PROP(StandInNameLaws, TwoNamesNeverShareAStandIn, ()) {
  const std::set<std::string> texts = *rc::gen::container<std::set<std::string>>(anyText());
  std::set<std::string> standIns;
  for (const std::string& text : texts) standIns.insert(standInName(text));
  RC_ASSERT(standIns.size() == texts.size());
}

}  // namespace
