#include "platform/sdk/od_code_page.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

#include "platform/sdk/od_error.h"
#include "platform/sdk/od_test_objects.h"

namespace {

std::string allBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

}  // namespace

TEST(OdCodePage, ReadsBytesAsWindows1251) {
  EXPECT_EQ(odToWide("A\x7F"), L"A\x7F");
  EXPECT_EQ(odToWide("\x80\x81\x82"), L"\x0402\x0403\x201A");
  EXPECT_EQ(odToWide("\x88\x8F\x99"), L"\x20AC\x040F\x2122");
  EXPECT_EQ(odToWide("\xA0\xA8\xB8\xB9\xBF"), L"\x00A0\x0401\x0451\x2116\x0457");
  EXPECT_EQ(odToWide("\xC0\xDF\xE0\xFF"), L"\x0410\x042F\x0430\x044F");
}

TEST(OdCodePage, WritesTheAlphabetIntoItsBytes) {
  EXPECT_EQ(odToNarrow(L"\x041C\x0430\x0440\x043A\x0430 \x2116 5"), "\xCC\xE0\xF0\xEA\xE0 \xB9 5");
}

TEST(OdCodePage, TheByteWithoutACharacterIsTheControlCharacterOfItsNumber) {
  EXPECT_EQ(odToWide("\x98"), std::wstring(1, L'\x98'));
  EXPECT_EQ(odToNarrow(std::wstring(1, L'\x98')), "\x98");
}

TEST(OdCodePage, All256BytesSurviveARoundTrip) {
  EXPECT_EQ(odToWide(allBytes()).size(), 256u);
  EXPECT_EQ(odToNarrow(odToWide(allBytes())), allBytes());
}

TEST(OdCodePage, No2BytesShareACharacter) {
  std::wstring characters = odToWide(allBytes());
  std::sort(characters.begin(), characters.end());
  EXPECT_EQ(std::adjacent_find(characters.begin(), characters.end()), characters.end());
}

TEST(OdCodePage, ACharacterThatItLacksBecomesAQuestionMark) {
  EXPECT_EQ(odToNarrow(L"\x00C4"
                       L"b"),
            "?b");
  EXPECT_EQ(odToNarrow(L"\x0080"), "?");
  EXPECT_EQ(odToNarrow(L"\x0450\x040D"), "??");
  EXPECT_EQ(odToNarrow(L"\x4E2D"), "?");
}

TEST(OdCodePage, ACharacterOfTwoUnitsBecomesOneQuestionMark) {
  EXPECT_EQ(odToNarrow(L"a\U0001F600z"), "a?z");
  const wchar_t pair[] = {L'a', 0xD83D, 0xDE00, L'z'};
  EXPECT_EQ(odToNarrow(std::wstring_view(pair, 4)), "a?z");
}

TEST(OdCodePage, AHalfOfAPairBecomesOneQuestionMark) {
  const wchar_t high[] = {0xD83D, L'z'};
  const wchar_t low[] = {0xDE00, L'z'};
  EXPECT_EQ(odToNarrow(std::wstring_view(high, 2)), "?z");
  EXPECT_EQ(odToNarrow(std::wstring_view(low, 2)), "?z");
  EXPECT_EQ(odToNarrow(std::wstring_view(high, 1)), "?");
}

TEST(OdCodePage, KeepsNullCharactersWithinAText) {
  EXPECT_EQ(odToWide(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
  EXPECT_EQ(odToNarrow(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(OdCodePage, TheUndefinedPageIsTheSystems) {
  EXPECT_EQ(odToWide("\xC0", CP_UNDEFINED), L"\x0410");
  EXPECT_EQ(odToNarrow(L"\x0410", CP_UNDEFINED), "\xC0");
  EXPECT_TRUE(odHasNarrowForm(L"\x0410", CP_UNDEFINED));
}

TEST(OdCodePage, RefusesAPageThatItDoesNotKnow) {
  const auto unknown = static_cast<OdCodePageId>(45);
  EXPECT_EQ(codeOf([=] { odToWide("a", unknown); }), eInvalidInput);
  EXPECT_EQ(codeOf([=] { odToNarrow(L"a", unknown); }), eInvalidInput);
  EXPECT_EQ(codeOf([=] { (void)odHasNarrowForm(L"a", unknown); }), eInvalidInput);
}

TEST(OdCodePage, TellsWhetherATextHasANarrowForm) {
  EXPECT_TRUE(odHasNarrowForm(L""));
  EXPECT_TRUE(odHasNarrowForm(L"?"));
  EXPECT_TRUE(odHasNarrowForm(odToWide(allBytes())));
  EXPECT_FALSE(odHasNarrowForm(L"a\x00C4"));
  EXPECT_FALSE(odHasNarrowForm(L"\U0001F600"));
}

RC_GTEST_PROP(OdCodePageLaws, NarrowToWideAndBackGivesTheSameBytes, (const std::string& bytes)) {
  RC_ASSERT(odToNarrow(odToWide(bytes)) == bytes);
}

RC_GTEST_PROP(OdCodePageLaws, WideToNarrowAndBackGivesTheSameTextExactlyWhenThereIsANarrowForm,
              (const std::vector<std::uint16_t>& units)) {
  const std::wstring text(units.begin(), units.end());
  RC_ASSERT((odToWide(odToNarrow(text)) == text) == odHasNarrowForm(text));
}
