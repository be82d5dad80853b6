#include "workbench/reading/header_line.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace tiepoint::workbench;
using Words = std::vector<std::string>;

Words wordsOf(const std::string& line, Separator separator) {
  const auto header = headerLine(line, separator, std::nullopt);
  return header ? header->words : Words{"no header"};
}

const Words none{"no header"};

TEST(HeaderLines, AreThreeWordsAtLeast) {
  EXPECT_EQ(wordsOf("X;Y;Z", Separator::semicolon), (Words{"X", "Y", "Z"}));
  EXPECT_EQ(wordsOf("X;Y", Separator::semicolon), none);
  EXPECT_EQ(wordsOf("X;;Y;", Separator::semicolon), none);
  EXPECT_EQ(wordsOf(";X;Y;Z;", Separator::semicolon), (Words{"", "X", "Y", "Z", ""}));
  EXPECT_EQ(wordsOf("", Separator::semicolon), none);
}

TEST(HeaderLines, HoldNoNumber) {
  for (const char* line : {"A;1;Y;Z", "A;X;Y;-1,5", "A;X;Y;.5", "A;X;Y;nan", "A;X;Y;-inf", "A;X;Y;1e999", "A;X;Y;1'234",
                           "A;X;Y;1O", "A;X;Y;5m", "A 1.5;X;Y;Z", "A -1,5;X;Y;Z"}) {
    EXPECT_EQ(wordsOf(line, Separator::semicolon), none) << line;
  }
  EXPECT_EQ(wordsOf("Name;X1;Y1;Z.1", Separator::semicolon), (Words{"Name", "X1", "Y1", "Z.1"}));
}

TEST(HeaderLines, LeaveOutUnitsThatBlanksDivide) {
  EXPECT_EQ(wordsOf("Name X [m] Y (m) Z", Separator::blank), (Words{"Name", "X", "Y", "Z"}));
  EXPECT_EQ(wordsOf("Name, X [m], Y (m), Z", Separator::mixed), (Words{"Name", "X", "Y", "Z"}));
  EXPECT_EQ(wordsOf("Name;X [m];[m];Z", Separator::semicolon), (Words{"Name", "X [m]", "[m]", "Z"}));
}

TEST(HeaderLines, MayBeQuoted) {
  EXPECT_EQ(wordsOf("\"Point; No\";\"X\";\"Y\"", Separator::semicolon), (Words{"Point; No", "X", "Y"}));
  EXPECT_EQ(wordsOf("\"Name;X;Y;Z", Separator::semicolon), none);
  EXPECT_EQ(wordsOf("\"Name\"s;X;Y;Z", Separator::semicolon), none);
}

TEST(HeaderLines, TellTheEncodingInWhichTheirWordsAreKnown) {
  const auto encodingOf = [](const std::string& line) {
    return headerLine(line, Separator::semicolon, std::nullopt)->encoding;
  };
  EXPECT_EQ(encodingOf("Name;X;Y;Z"), std::nullopt);
  EXPECT_EQ(encodingOf("Name;X;Y;Höhe"), TextEncoding::utf8);
  EXPECT_EQ(encodingOf("Name;X;Y;H\xF6he"), TextEncoding::windows1252);
  EXPECT_EQ(encodingOf("\xC8\xEC\xFF;X;Y;Z"), TextEncoding::windows1251);
  EXPECT_EQ(encodingOf("\xC8\xEC;X;Y;Z"), std::nullopt) << "a word that is known in none";
}

TEST(HeaderLines, AreTextInTheEncodingThatTheyTell) {
  EXPECT_EQ(wordsOf("Name;X;Y;H\xF6he", Separator::semicolon), (Words{"Name", "X", "Y", "Höhe"}));
  EXPECT_EQ(wordsOf("\xC8\xEC\xFF;X;Y;Z", Separator::semicolon), (Words{"Имя", "X", "Y", "Z"}));
}

TEST(HeaderLines, AreReadInTheEncodingThatIsSaid) {
  const auto header = headerLine("\xC8\xEC\xFF;X;Y;Z", Separator::semicolon, TextEncoding::windows1252);
  ASSERT_TRUE(header);
  EXPECT_EQ(header->words, (Words{"Èìÿ", "X", "Y", "Z"}));
  EXPECT_EQ(header->encoding, std::nullopt);
  EXPECT_EQ(headerLine("H\xF6he;X;Y;Z", Separator::semicolon, TextEncoding::utf8)->words, (Words{"", "X", "Y", "Z"}));
}

}  // namespace
