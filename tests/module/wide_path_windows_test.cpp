// Paths as Windows writes them, in a program whose narrow text is in the system's own code page.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "module/point_file.h"
#include "module/wide_path.h"
#include "workbench/temporary_folder.h"

namespace ZOR::reg {
namespace {

namespace fs = std::filesystem;

TEST(StemOfWindows, EndsAtTheLastSeparatorOfEitherKind) {
  EXPECT_EQ(stemOf(L"C:\\data\\hall.old\\scan.01.txt"), L"scan.01");
  EXPECT_EQ(stemOf(L"C:/data/hall.old\\scan.01.txt"), L"scan.01");
}

TEST(StemOfWindows, TakesNoDriveForAName) {
  EXPECT_EQ(stemOf(L"C:a.txt"), L"a");
  EXPECT_EQ(stemOf(L"C:\\a"), L"a");
}

TEST(StemOfWindows, TakesPathsOfTheNetwork) {
  EXPECT_EQ(stemOf(L"\\\\server\\share\\\u0421\u0442\u0430\u043D\u0446\u0438\u044F.txt"),
            L"\u0421\u0442\u0430\u043D\u0446\u0438\u044F");
  EXPECT_EQ(stemOf(L"\\\\?\\C:\\data\\a.b.txt"), L"a.b");
}

/// A character that the system's code page lacks: none has Chinese and Cyrillic both.
std::wstring characterOutside(UINT codePage) {
  for (const wchar_t* text : {L"\u0416", L"\u6E2C"}) {
    BOOL isReplaced = FALSE;
    WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, text, 1, nullptr, 0, nullptr, &isReplaced);
    if (isReplaced) return text;
  }
  return {};
}

class PointFileWindows : public testing::Test {
 protected:
  std::wstring write(const std::wstring& name) const {
    const fs::path path = folder.path() / name;
    std::ofstream(path) << "P1 1 2 3\nP2 4 5 6\n";
    return path.wstring();
  }

  TemporaryFolder folder;
};

TEST_F(PointFileWindows, IsReadInTextMode) {
  StoredPointArray points;
  EXPECT_TRUE(readPointFile(write(L"a.txt"), 1, points));
  EXPECT_EQ(points.size(), 2u);
  EXPECT_EQ(readBytes(folder.file("a.txt")), "P1 1 2 3\r\nP2 4 5 6\r\n");
}

TEST_F(PointFileWindows, IsReadThoughAnotherProgramWritesIt) {
  const std::wstring path = write(L"a.txt");
  const HANDLE writer = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(writer, INVALID_HANDLE_VALUE);
  StoredPointArray points;
  EXPECT_TRUE(readPointFile(path, 1, points));
  EXPECT_EQ(points.size(), 2u);
  CloseHandle(writer);
}

TEST_F(PointFileWindows, CannotBeOpenedByAPathThatTheSystemsCodePageLacks) {
  const std::wstring name = characterOutside(GetACP());
  if (name.empty()) GTEST_SKIP() << "this system's own code page has every character";
  StoredPointArray points;
  EXPECT_FALSE(readPointFile(write(name + L".txt"), 1, points));
  EXPECT_EQ(points.size(), 0u);
  EXPECT_EQ(stemOf(folder.path() / (name + L".txt")), name);
}

TEST_F(PointFileWindows, IsReadByAPathWithItsDriveAndByOneOfTheDevice) {
  const std::wstring path = write(L"a.txt");
  EXPECT_EQ(path.substr(1, 2), L":\\");
  StoredPointArray points;
  EXPECT_TRUE(readPointFile(L"\\\\?\\" + path, 1, points));
  EXPECT_EQ(points.size(), 2u);
}

}  // namespace
}  // namespace ZOR::reg
