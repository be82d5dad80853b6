// Files of a session in a host whose narrow text is in the system's own code page, as that of most CAD
// hosts is: a program without the manifest of the others.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/session_builder.h"
#include "workbench/temporary_folder.h"

namespace {

using namespace ZOR::reg;
using tiepoint::testing::Session;
using tiepoint::testing::triangle;
namespace fs = std::filesystem;

class SystemCodePage : public ::testing::Test {
 protected:
  void SetUp() override {
    if (GetACP() == CP_UTF8) GTEST_SKIP() << "this system's own code page is UTF-8";
    std::map<RefPointId, double> discrepancies;
    ASSERT_TRUE(session->registerPairwise(discrepancies));
  }
  std::string narrow() const { return folder.path().string(); }

  ::TemporaryFolder folder;
  Session session{{{"\xC0", triangle("T1", "T2", "T3")}, {"ok", triangle("T1", "T2", "T3", 5)}}};
};

TEST_F(SystemCodePage, AMatrixFileBearsANameThatItMayLack) {
  EXPECT_TRUE(session->saveAllMatrices(narrow(), 1));
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"ok.txt", "\xD0\x90.txt"}));
  EXPECT_EQ(readBytes(folder.file("\xD0\x90.txt")).substr(0, 23), "VERSION\t=\t1\r\nMATRIX\t=\r\n");
}

TEST_F(SystemCodePage, TheFileOfMergedTargetsBearsANameThatItMayLack) {
  EXPECT_TRUE(session->saveCommonPointsFile("\xD6\xE5\xF5", narrow()));
  EXPECT_EQ(folder.names(), std::vector<std::string>{"\xD0\xA6\xD0\xB5\xD1\x85.txt"});
}

TEST_F(SystemCodePage, AReportIsUtf8WhateverItIs) {
  session->getGroupsReport({0});
  EXPECT_TRUE(session->saveReport((folder.path() / "report.html").string(), 1));
  EXPECT_NE(readBytes(folder.file("report.html")).find("<td>\xD0\x90</td>"), std::string::npos);
}

TEST_F(SystemCodePage, AFileThatIsOpenElsewhereIsReplacedAllTheSame) {
  const std::wstring path = (folder.path() / "report.html").wstring();
  const HANDLE reader = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  session->getGroupsReport({0});
  EXPECT_TRUE(session->saveReport(fs::path(path).string(), 1));
  EXPECT_GT(fs::file_size(path), 0u);
  CloseHandle(reader);
}

}  // namespace
