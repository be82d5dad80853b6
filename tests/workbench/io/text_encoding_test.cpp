#include "workbench/io/text_encoding.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <boost/filesystem/path.hpp>
#include <string>

namespace tiepoint::workbench {
namespace {

std::string messageOf(std::string (*convert)(const std::string&), const std::string& text) {
  try {
    convert(text);
  } catch (const EncodingError& error) {
    return error.what();
  }
  return "no error";
}

std::string wideAndBack(const std::string& text) { return utf8FromWide(wideFromUtf8(text)); }

TEST(TextEncoding, ReadsCharactersOfOneToFourBytes) {
  EXPECT_EQ(wideFromUtf8("A\xD0\x96\xE2\x82\xAC\xF0\x9F\x98\x80"), L"A\u0416\u20AC\U0001F600");
}

TEST(TextEncoding, WritesCharactersOfOneToFourBytes) {
  EXPECT_EQ(utf8FromWide(L"A\u0416\u20AC\U0001F600"), "A\xD0\x96\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(TextEncoding, KeepsZeroBytes) {
  EXPECT_EQ(wideFromUtf8(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
  EXPECT_EQ(utf8FromWide(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(TextEncoding, NamesTheFirstByteThatIsNotUtf8) {
  EXPECT_EQ(messageOf(wideAndBack, "ab\xFF\xFE"), "the byte 0xFF at offset 2 isn't UTF-8");
}

TEST(TextEncoding, RefusesACharacterThatEndsTooEarly) {
  EXPECT_EQ(messageOf(wideAndBack, "\xE2\x82"), "the byte 0xE2 at offset 0 isn't UTF-8");
}

TEST(TextEncoding, RefusesOverlongFormsAndSurrogates) {
  EXPECT_EQ(messageOf(wideAndBack, "\xC0\x80"), "the byte 0xC0 at offset 0 isn't UTF-8");
  EXPECT_EQ(messageOf(wideAndBack, "\xED\xA0\x80"), "the byte 0xED at offset 0 isn't UTF-8");
}

TEST(TextEncoding, WritesALoneSurrogateAsTheReplacementCharacter) {
  const std::wstring lone{L'a', static_cast<wchar_t>(0xD800), L'b'};
  EXPECT_EQ(utf8FromWide(lone),
            "a\xEF\xBF\xBD"
            "b");
}

TEST(TextEncoding, WritesWhatIsNoCodePointAsTheReplacementCharacter) {
  if (sizeof(wchar_t) < 4) GTEST_SKIP() << "every value of wchar_t is a code unit here";
  EXPECT_EQ(utf8FromWide(std::wstring(1, static_cast<wchar_t>(0x110000))), "\xEF\xBF\xBD");
}

TEST(TextEncoding, TurnsCyrillicIntoItsBytesOfWindows1251) {
  EXPECT_EQ(nameFromUtf8("\xD0\xA2"
                         "1 \xE2\x84\x96"),
            "\xD2"
            "1 \xB9");
}

TEST(TextEncoding, PairsByte0x98WithU0098) {
  EXPECT_EQ(nameFromUtf8("\xC2\x98"), "\x98");
  EXPECT_EQ(utf8FromName("\x98"), "\xC2\x98");
}

TEST(TextEncoding, NamesTheFirstCharacterOutsideWindows1251) {
  EXPECT_EQ(messageOf(nameFromUtf8, "T\xC3\xA9\xE6\x97\xA5"),
            "the character \"\xC3\xA9\" (U+00E9) isn't in windows-1251");
  EXPECT_EQ(messageOf(nameFromUtf8, "\xF0\x9F\x98\x80"),
            "the character \"\xF0\x9F\x98\x80\" (U+1F600) isn't in windows-1251");
}

TEST(TextEncoding, ANameMustBeUtf8Too) {
  EXPECT_EQ(messageOf(nameFromUtf8, "\x80"), "the byte 0x80 at offset 0 isn't UTF-8");
}

TEST(TextEncoding, JoinsAFolderAndAFile) {
  EXPECT_EQ(boost::filesystem::path(joinedPath("out", "S1.txt")), boost::filesystem::path("out/S1.txt"));
  EXPECT_EQ(joinedPath("", "S1.txt"), "S1.txt");
  EXPECT_EQ(joinedPath("out/", "S1.txt"), "out/S1.txt");
}

TEST(TextEncoding, JoinsOnlyTextThatIsUtf8) {
  EXPECT_THROW(joinedPath("out\xFF", "S1.txt"), EncodingError);
  EXPECT_THROW(joinedPath("out", "S1\xFF.txt"), EncodingError);
}

TEST(TextEncoding, EmptyTextStaysEmpty) {
  EXPECT_EQ(wideFromUtf8(""), L"");
  EXPECT_EQ(utf8FromWide(L""), "");
  EXPECT_EQ(nameFromUtf8(""), "");
  EXPECT_EQ(utf8FromName(""), "");
}

RC_GTEST_PROP(TextEncodingLaw, EveryNarrowNameSurvivesTheWayThroughUtf8, (const std::string& name)) {
  RC_ASSERT(nameFromUtf8(utf8FromName(name)) == name);
}

RC_GTEST_PROP(TextEncodingLaw, EveryTextSurvivesTheWayThroughWideText, ()) {
  const auto codePoints = *rc::gen::container<std::u32string>(
      rc::gen::suchThat(rc::gen::inRange<char32_t>(0, 0x110000), [](char32_t c) { return c < 0xD800 || c > 0xDFFF; }));
  std::wstring wide;
  for (char32_t c : codePoints) {
    if (sizeof(wchar_t) == 4 || c < 0x10000) wide += static_cast<wchar_t>(c);
  }
  RC_ASSERT(wideFromUtf8(utf8FromWide(wide)) == wide);
}

}  // namespace
}  // namespace tiepoint::workbench
