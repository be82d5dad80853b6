#include "module/wide_path.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <boost/filesystem/path.hpp>
#include <boost/locale/utf8_codecvt.hpp>
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

/// The library's conversion of paths for the length of a test.
class PathConversion : public testing::Test {
 protected:
  ~PathConversion() override { boost::filesystem::path::imbue(before); }

  void convertByUtf8() {
    before =
        boost::filesystem::path::imbue(std::locale(std::locale::classic(), new boost::locale::utf8_codecvt<wchar_t>));
  }
  void convertAscii() { before = boost::filesystem::path::imbue(std::locale::classic()); }

 private:
  std::locale before;
};

#ifndef _WIN32
TEST_F(PathConversion, MakesAPathNarrow) {
  convertByUtf8();
  EXPECT_EQ(narrowPath(L"/hall/\u0421\u0442.txt"), "/hall/\xD0\xA1\xD1\x82.txt");
}

TEST_F(PathConversion, ThrowsForAPathThatTheEncodingLacks) {
  convertAscii();
  EXPECT_EQ(narrowPath(L"/hall/a.txt"), "/hall/a.txt");
  EXPECT_THROW(narrowPath(L"/hall/\u0421\u0442.txt"), std::runtime_error);
}
#endif

}  // namespace
}  // namespace ZOR::reg
