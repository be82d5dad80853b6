#include "workbench/drawing/kept_text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "platform/sdk/od_error.h"

using tiepoint::workbench::keptFormOf;
using tiepoint::workbench::textFromKeptForm;

namespace {

std::wstring unit(unsigned number) { return std::wstring(1, static_cast<wchar_t>(number)); }

}  // namespace

TEST(KeptText, IsUtf8) {
  EXPECT_EQ(keptFormOf(L""), "");
  EXPECT_EQ(keptFormOf(L"T7"), "T7");
  EXPECT_EQ(keptFormOf(L"\u007f\u0080\u07ff\u0800\uffff"), "\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf");
  EXPECT_EQ(keptFormOf(L"\U0001f600"), "\xf0\x9f\x98\x80");
  EXPECT_EQ(keptFormOf(L"\U0010ffff"), "\xf4\x8f\xbf\xbf");
}

TEST(KeptText, KeepsANullInTheMiddle) {
  EXPECT_EQ(keptFormOf({L"a\0b", 3}), std::string("a\0b", 3));
  EXPECT_EQ(textFromKeptForm({"a\0b", 3}), std::wstring(L"a\0b", 3));
}

TEST(KeptText, KeepsASurrogateThatStandsAlone) {
  EXPECT_EQ(keptFormOf(unit(0xd800)), "\xed\xa0\x80");
  EXPECT_EQ(keptFormOf(unit(0xdfff) + L"x"), "\xed\xbf\xbfx");
  EXPECT_EQ(textFromKeptForm("\xed\xa0\x80"), unit(0xd800));
}

TEST(KeptText, RefusesANumberBeyondUnicode) {
  if (sizeof(wchar_t) == 2) GTEST_SKIP() << "every wide text is within Unicode here";
  EXPECT_THROW(keptFormOf(unit(0x110000)), OdError);
  EXPECT_THROW(keptFormOf(unit(0xffffffffU)), OdError);
}

TEST(KeptText, RefusesBytesThatItNeverGives) {
  for (const char* bytes : {"\x80", "\xc2", "\xc2x", "\xe0\xa0", "\xf0\x9f\x98", "\xff", "\xf8\x88\x80\x80\x80"}) {
    EXPECT_EQ(textFromKeptForm(bytes), std::nullopt) << bytes;
  }
}

TEST(KeptText, RefusesLongFormsAndNumbersBeyondUnicode) {
  for (const char* bytes : {"\xc0\x80", "\xc1\xbf", "\xe0\x9f\xbf", "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80"}) {
    EXPECT_EQ(textFromKeptForm(bytes), std::nullopt) << bytes;
  }
}

RC_GTEST_PROP(KeptText, ComesBackAsItWas, ()) {
  const auto units = *rc::gen::container<std::vector<unsigned>>(rc::gen::inRange(0u, 0x10000u));
  std::wstring text;
  for (const unsigned number : units) text += unit(number);
  RC_ASSERT(textFromKeptForm(keptFormOf(text)) == text);
}
