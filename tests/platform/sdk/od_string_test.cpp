#include "platform/sdk/od_string.h"

#include <gtest/gtest.h>

#include <string>

TEST(OdString, IsEmptyAtFirst) {
  const OdString text;
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(text.getLength(), 0);
  EXPECT_STREQ(text.c_str(), L"");
}

TEST(OdString, TakesNarrowTextBySystemCodePage) {
  EXPECT_EQ(OdString("\xD2"
                     "1")
                .wideText(),
            L"\x0422"
            L"1");
  EXPECT_EQ(OdString(std::string("\xD2"
                                 "1"))
                .wideText(),
            L"\x0422"
            L"1");
  EXPECT_EQ(OdString(std::string("\xD2"), CP_UNDEFINED).wideText(), L"\x0422");
}

TEST(OdString, NarrowAssignmentReadsTheSystemCodePage) {
  OdString text;
  text = "\xD2";
  EXPECT_EQ(text.wideText(), L"\x0422");
  text = std::string("\xD3");
  EXPECT_EQ(text.wideText(), L"\x0423");
}

TEST(OdString, WideTextStaysAsItIs) {
  OdString text = L"\x4E2D";
  EXPECT_EQ(text.wideText(), L"\x4E2D");
  text = L"wide";
  EXPECT_STREQ(text.c_str(), L"wide");
  EXPECT_EQ(text.getLength(), 4);
}

TEST(OdString, NarrowGivesQuestionMarksForWhatTheCodePageLacks) {
  EXPECT_EQ(OdString(L"\x0422\x4E2D").narrow(), "\xD2?");
}

TEST(OdString, NullPointersGiveTheEmptyText) {
  EXPECT_TRUE(OdString(static_cast<const char*>(nullptr)).isEmpty());
  EXPECT_TRUE(OdString(static_cast<const wchar_t*>(nullptr)).isEmpty());
}

TEST(OdString, AssigningItsOwnTextKeepsIt) {
  OdString text = L"a text that is too long for a short string";
  text = text.c_str();
  EXPECT_EQ(text.wideText(), L"a text that is too long for a short string");
}

TEST(OdString, ComparesCharacterByCharacter) {
  EXPECT_EQ(OdString(L"T1"), OdString("T1"));
  EXPECT_NE(OdString(L"T1"), OdString(L"t1"));
  EXPECT_LT(OdString(L"T1"), OdString(L"t1"));
  EXPECT_FALSE(OdString(L"T1") < OdString(L"T1"));
}
