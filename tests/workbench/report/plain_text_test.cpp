#include "workbench/report/plain_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

TEST(Printable, ControlCharactersBecomeQuestionMarks) {
  EXPECT_EQ(printable("a\x1B[31m\n\x7F"), "a?[31m??");
  EXPECT_EQ(printable("\xC2\x9B"), "?") << "U+009B starts a sequence on some terminals";
}

TEST(Printable, BytesThatArentUtf8BecomeQuestionMarks) { EXPECT_EQ(printable("a\xFF\xD0"), "a??"); }

TEST(Printable, OtherTextStays) { EXPECT_EQ(printable("Цех 1, \xC2\xA0°"), "Цех 1, \xC2\xA0°"); }

TEST(ColumnsOf, CountsCharacters) { EXPECT_EQ(columnsOf("Цех 1"), 5u); }

TEST(Joined, WhatIsLeftOutIsCounted) {
  EXPECT_EQ(joined({"a", "b", "c"}, 3), "a, b, c");
  EXPECT_EQ(joined({"a", "b", "c", "d"}, 2), "a, b and 2 more");
  EXPECT_EQ(joined({}), "");
}

TEST(Joined, TakesTwelveUnlessToldOtherwise) {
  const std::vector<std::string> thirteen(13, "x");
  EXPECT_EQ(joined(thirteen), "x, x, x, x, x, x, x, x, x, x, x, x and 1 more");
}

TEST(JoinedWithin, TakesAsManyAsFit) {
  EXPECT_EQ(joinedWithin({"T01", "T02", "T03"}, 13), "T01, T02, T03");
  EXPECT_EQ(joinedWithin({"T01", "T02", "T03", "T04"}, 15), "T01 and 3 more");
  EXPECT_EQ(joinedWithin({"T01", "T02", "T03", "T04", "T05"}, 19), "T01, T02 and 3 more");
}

TEST(JoinedWithin, TakesTwelveAtMost) {
  EXPECT_EQ(joinedWithin(std::vector<std::string>(13, "x"), 1000), "x, x, x, x, x, x, x, x, x, x, x, x and 1 more");
}

TEST(JoinedWithin, TakesOneHoweverNarrowItIs) {
  EXPECT_EQ(joinedWithin({"a long name", "another"}, 0), "a long name and 1 more");
}

TEST(JoinedWithin, CountsCharactersNotBytes) { EXPECT_EQ(joinedWithin({"Цех1", "Цех2"}, 10), "Цех1, Цех2"); }

TEST(Plural, HasAnSUnlessThereIsOne) {
  EXPECT_EQ(plural(0, "point"), "0 points");
  EXPECT_EQ(plural(1, "point"), "1 point");
  EXPECT_EQ(plural(2, "point"), "2 points");
}

TEST(Wrapped, BreaksAtBlanksAndIndentsAllButTheFirstLine) {
  EXPECT_EQ(wrapped("one two three", 80, 2), "one two three");
  EXPECT_EQ(wrapped("one two three", 8, 2), "one two\n  three");
  EXPECT_EQ(wrapped("Цех Цех", 7, 0), "Цех Цех") << "characters count, not bytes";
  EXPECT_EQ(wrapped("unbreakable", 4, 2), "unbreakable");
}

TEST(TextTable, ColumnsLineUpByCharactersAndLinesEndWithoutBlanks) {
  TextTable table({TextTable::Side::left, TextTable::Side::right, TextTable::Side::left});
  table.add({"group", "n", "note"});
  table.add({"Цех", "12", ""});
  EXPECT_EQ(table.text(), "  group   n  note\n  Цех    12\n");
}

TEST(TextTable, AShortRowIsFine) {
  TextTable table({TextTable::Side::left, TextTable::Side::right});
  table.add({"a"});
  table.add({"bb", "1"});
  EXPECT_EQ(table.text(), "  a\n  bb  1\n");
}

}  // namespace
}  // namespace tiepoint::workbench
