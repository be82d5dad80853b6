#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>

#include "support/platform.h"
#include "support/session_builder.h"
#include "support/temporary_folder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
namespace fs = boost::filesystem;

/// B and the Cyrillic station are moved onto A, the base, by -5 and by -9 along x.
class MatrixFiles : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  Session session{
      {{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}, {"C", triangle("T1", "T2", "T3", 9)}}};

  void solve() {
    Outputs out;
    session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
    std::map<RefPointId, double> discrepancies;
    ASSERT_TRUE(session->registerPairwise(discrepancies));
  }
};

TEST_F(MatrixFiles, TwoFormatsAreOffered) {
  std::map<std::uint64_t, std::string> formats{{9, "gone"}};
  session->getMatrixFormats(formats);
  EXPECT_EQ(formats, (std::map<std::uint64_t, std::string>{{0, "PolyWorks TRF Matrix Files (*.txt)"},
                                                           {1, "PolyWorks 4x4 Matrix Files (*.txt)"}}));
}

TEST_F(MatrixFiles, OneFileForEachGroupWithATransformation) {
  solve();
  EXPECT_TRUE(session->saveAllMatrices(folder.narrow(), 1));
  EXPECT_EQ(folder.fileNames(), (std::set<std::string>{"B.txt", "C.txt"}));
  const std::string start = inTextMode("VERSION\t=\t1\nMATRIX\t=\n ");
  EXPECT_EQ(folder.textOf("B.txt").substr(0, start.size()), start);
}

TEST_F(MatrixFiles, BothFormatsGiveTheSameFileName) {
  solve();
  EXPECT_TRUE(session->saveGroupMatrices({1}, folder.narrow(), 1));
  EXPECT_TRUE(session->saveGroupMatrices({1}, folder.narrow(), 0));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{"B.txt"});
  EXPECT_NE(folder.textOf("B.txt").find(inTextMode("SHIFT_X:\t-5.000000\n")), std::string::npos)
      << folder.textOf("B.txt");
}

TEST_F(MatrixFiles, ABadFormatSetOrFolderIsRefused) {
  solve();
  folder.write("plain", "file");
  EXPECT_FALSE(session->saveAllMatrices(folder.narrow(), 2));
  EXPECT_FALSE(session->saveGroupMatrices({}, folder.narrow(), 0));
  EXPECT_FALSE(session->saveAllMatrices("", 0));
  EXPECT_FALSE(session->saveAllMatrices((folder.path() / "plain").string(), 0));
  EXPECT_FALSE(session->saveAllMatrices((folder.path() / "missing").string(), 0));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{"plain"});
}

TEST_F(MatrixFiles, WithoutResultsThereIsNoSetToSave) {
  EXPECT_FALSE(session->saveAllMatrices(folder.narrow(), 0));
  EXPECT_TRUE(session->saveGroupMatrices({1}, folder.narrow(), 0));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{});
}

TEST_F(MatrixFiles, GroupsThatCannotBeSavedAreSkippedInSilence) {
  solve();
  fs::create_directory(folder.path() / "C.txt");
  EXPECT_TRUE(session->saveGroupMatrices({0, 1, 2, 77}, folder.narrow(), 0));
  EXPECT_EQ(folder.fileNames(), (std::set<std::string>{"B.txt", "C.txt"}));
  EXPECT_TRUE(fs::is_directory(folder.path() / "C.txt"));
}

TEST(MatrixFilesOfOddNames, ANameThatTheHostsPlatformForbidsIsSkipped) {
  TemporaryFolder folder;
  Session session({{"a:b", triangle("T1", "T2", "T3")}, {"ok", triangle("T1", "T2", "T3", 5)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_TRUE(session->saveAllMatrices(folder.narrow(), 0));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{"ok.txt"});
}

TEST(MatrixFilesOfOddNames, ANarrowNameIsReadAsWindows1251) {
  TemporaryFolder folder;
  Session session({{"\xC0", triangle("T1", "T2", "T3")}, {"ok", triangle("T1", "T2", "T3", 5)}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  EXPECT_TRUE(session->saveAllMatrices(folder.narrow(), 0));
  EXPECT_EQ(folder.fileNames(), (std::set<std::string>{"ok.txt", "\xD0\x90.txt"}));
}

}  // namespace
