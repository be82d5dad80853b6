#include "module/wide_path.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <boost/filesystem/path.hpp>
#include <locale>
#include <string>

namespace ZOR::reg {
namespace {

TEST(StemOf, EndsBeforeTheLastDotOfTheLastElement) {
  EXPECT_EQ(stemOf(L"a.txt"), L"a");
  EXPECT_EQ(stemOf(L"scan.01.txt"), L"scan.01");
  EXPECT_EQ(stemOf(L"a.b"), L"a");
  EXPECT_EQ(stemOf(L"/data/hall/a.txt"), L"a");
  EXPECT_EQ(stemOf(L"hall.old/a.txt"), L"a");
  EXPECT_EQ(stemOf(L"a."), L"a");
  EXPECT_EQ(stemOf(L"a..txt"), L"a.");
}

TEST(StemOf, IsTheWholeElementWithoutADot) {
  EXPECT_EQ(stemOf(L"a"), L"a");
  EXPECT_EQ(stemOf(L"hall.old/a"), L"a");
}

TEST(StemOf, IsEmptyForANameThatIsAnEndingAlone) {
  EXPECT_EQ(stemOf(L".txt"), L"");
  EXPECT_EQ(stemOf(L"/data/.txt"), L"");
}

TEST(StemOf, LeavesTheNamesOfFoldersAsTheyAre) {
  EXPECT_EQ(stemOf(L"."), L".");
  EXPECT_EQ(stemOf(L".."), L"..");
  EXPECT_EQ(stemOf(L"hall/.."), L"..");
  EXPECT_EQ(stemOf(L"hall/"), L".");
  EXPECT_EQ(stemOf(L"/"), L"/");
  EXPECT_EQ(stemOf(L""), L"");
}

TEST(StemOf, KeepsCharactersThatHaveNoNarrowForm) {
  const std::wstring name = L"\u0421\u0442\u0430\u043D\u0446\u0438\u044F \u6E2C";
  EXPECT_EQ(stemOf(L"/\u0434\u0430\u043D\u043D\u044B\u0435/" + name + L".1.txt"), name + L".1");
  const std::wstring loneSurrogate(1, wchar_t{0xD800});
  EXPECT_EQ(stemOf(L"hall/" + loneSurrogate + L".txt"), loneSurrogate);
}

RC_GTEST_PROP(StemOfLaw, EqualsTheLibrarysStemOfANarrowPath, ()) {
  const std::string path = *rc::gen::container<std::string>(rc::gen::element('a', 'b', '.', '.', '/', '/', ' ', '-'));
  const std::string stem = boost::filesystem::path(path).stem().string();
  RC_ASSERT(stemOf(std::wstring(path.begin(), path.end())) == std::wstring(stem.begin(), stem.end()));
}

#ifndef _WIN32
/// Takes the library's conversion of paths away for the length of a test.
class NarrowPath : public testing::Test {
 protected:
  ~NarrowPath() override { boost::filesystem::path::imbue(before); }

 private:
  std::locale before = boost::filesystem::path::imbue(std::locale::classic());
};

TEST_F(NarrowPath, IsUtf8WhateverConversionTheHostHasSet) {
  EXPECT_EQ(narrowPath(L"/hall/\u0421\u0442 \U0001F600.txt"), "/hall/\xD0\xA1\xD1\x82 \xF0\x9F\x98\x80.txt");
}

TEST_F(NarrowPath, ThrowsForTextThatHasNoUtf8Form) {
  for (const wchar_t character : {wchar_t{0xD800}, wchar_t{0xDFFF}, wchar_t{0x110000}}) {
    EXPECT_THROW(narrowPath(L"/hall/" + std::wstring(1, character) + L".txt"), std::runtime_error) << character;
  }
  EXPECT_EQ(narrowPath(std::wstring(1, wchar_t{0x10FFFF})), "\xF4\x8F\xBF\xBF");
}
#endif

}  // namespace
}  // namespace ZOR::reg
