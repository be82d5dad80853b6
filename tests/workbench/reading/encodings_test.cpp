#include "workbench/reading/encodings.h"

#include <gmock/gmock.h>

namespace {

using namespace tiepoint::workbench;
using testing::ElementsAre;

constexpr auto ascii = TextEncoding::ascii;
constexpr auto utf8 = TextEncoding::utf8;
constexpr auto cyrillic = TextEncoding::windows1251;
constexpr auto western = TextEncoding::windows1252;

std::vector<TextEncoding> possibleFor(const std::vector<std::string>& names) {
  NameEvidence evidence;
  for (const std::string& name : names) evidence.take(name);
  return evidence.possible();
}

TEST(Encodings, AreKnownByName) {
  EXPECT_EQ(encodingByName("UTF-8"), utf8);
  EXPECT_EQ(encodingByName("Windows-1251"), cyrillic);
  EXPECT_EQ(encodingByName("cp1252"), western);
  EXPECT_EQ(encodingByName("latin1"), western);
  EXPECT_EQ(encodingByName("utf-16be"), TextEncoding::utf16BigEndian);
  EXPECT_EQ(encodingByName("koi8-r"), std::nullopt);
  EXPECT_EQ(encodingByName("ascii"), std::nullopt);
}

TEST(Encodings, GiveTheTextOfBytes) {
  EXPECT_EQ(decodedText("H\xF6he", western), "Höhe");
  EXPECT_EQ(decodedText("\x80\x92\x8A\xFF", western), "€’Šÿ");
  EXPECT_EQ(decodedText("\xCF\xF3\xED\xEA\xF2\xB9", cyrillic), "Пункт№");
  EXPECT_EQ(decodedText("Höhe", utf8), "Höhe");
  EXPECT_EQ(decodedText("P1", ascii), "P1");
}

TEST(Encodings, GiveNothingForBytesThatAreNoText) {
  for (const char* bytes : {"\x81", "\x8D", "\x8F", "\x90", "\x9D"}) {
    EXPECT_EQ(decodedText(bytes, western), std::nullopt) << static_cast<int>(bytes[0]);
  }
  for (const char* bytes : {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80"})
    EXPECT_EQ(decodedText(bytes, utf8), std::nullopt);
  EXPECT_EQ(decodedText("\xE9", ascii), std::nullopt);
}

TEST(NameEvidence, IsNoneInAscii) { EXPECT_THAT(possibleFor({"P1", "P2"}), ElementsAre(ascii)); }

TEST(NameEvidence, IsUtf8WhereAllNamesAre) {
  EXPECT_THAT(possibleFor({"Höhe", "Т1", "測站"}), ElementsAre(utf8));
  EXPECT_THAT(possibleFor({"Т1"}), ElementsAre(utf8));
}

TEST(NameEvidence, IsTheCodePageInWhichWordsKeepToOneScript) {
  EXPECT_THAT(possibleFor({"H\xF6he"}), ElementsAre(western));
  EXPECT_THAT(possibleFor({"Geb\xE4ude 5", "T\xFCr"}), ElementsAre(western));
  EXPECT_THAT(possibleFor({"\xCF\xF3\xED\xEA\xF2"}), ElementsAre(cyrillic));
  EXPECT_THAT(possibleFor({"\xD2-1", "\xD0\xE5\xEF\xE5\xF0"}), ElementsAre(cyrillic));
}

TEST(NameEvidence, LeavesBothWhereShortWordsFitBoth) {
  EXPECT_THAT(possibleFor({"\xD2"
                           "1",
                           "\xD2\xCF"
                           "2"}),
              ElementsAre(cyrillic, western));
  EXPECT_THAT(possibleFor({"\xC4"
                           "1"}),
              ElementsAre(cyrillic, western));
}

TEST(NameEvidence, LeavesBothWhereNeitherFits) {
  EXPECT_THAT(possibleFor({"H\xF6he", "\xCF\xF3\xED\xEA\xF2"}), ElementsAre(cyrillic, western));
}

TEST(NameEvidence, TakesAnyWhereBothReadTheSame) {
  EXPECT_THAT(possibleFor({"5\xB0",
                           "\xAB"
                           "A\xBB"}),
              ElementsAre(cyrillic));
}

TEST(NameEvidence, IsUnclearWhereSomeNamesAreUtf8AndOthersNot) {
  EXPECT_THAT(possibleFor({"Т1", "\xCF\xF3\xED\xEA\xF2"}), ElementsAre(utf8, cyrillic, western));
}

// A benchmark numbered in windows-1251, whose two bytes are one letter of UTF-8.
TEST(NameEvidence, LeavesBothWhereANumeroSignLooksLikeUtf8) {
  EXPECT_THAT(possibleFor({"\xD0\xB9"
                           "1",
                           "\xD0\xB9"
                           "2"}),
              ElementsAre(utf8, cyrillic));
}

}  // namespace
