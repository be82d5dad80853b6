#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>

#include "support/platform.h"
#include "support/session_builder.h"
#include "support/temporary_folder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
namespace fs = boost::filesystem;

class CommonPointsFile : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  const std::string cyrillic = "\xD2\x5F";
  const std::vector<Target> shared{{"T1", 1, 2.5, 1.5}, {cyrillic, 11, 3.5, 1.5}, {"T3", 1, 7.1234567, 2}};
  Session session{{{"A", with(shared, {"lone", 3, -4, 5, 0.25})}, {"B", shared}}};

  static std::vector<Target> with(std::vector<Target> targets, const Target& further) {
    targets.push_back(further);
    return targets;
  }

  void solve() {
    std::map<RefPointId, double> discrepancies;
    ASSERT_TRUE(session->registerPairwise(discrepancies));
  }
};

TEST_F(CommonPointsFile, HasOneLineForEachMergedTarget) {
  solve();
  ASSERT_TRUE(session->saveCommonPointsFile("merged", folder.narrow()));
  EXPECT_EQ(folder.textOf("merged.txt"), inTextMode("T1 1.000000 2.500000 1.500000 1.00\n"
                                                    "\xD2\x5F 11.000000 3.500000 1.500000 1.00\n"
                                                    "T3 1.000000 7.123457 2.000000 1.00\n"
                                                    "lone 3.000000 -4.000000 5.000000 0.25\n"));
}

TEST_F(CommonPointsFile, ReplacesWhatIsThere) {
  solve();
  folder.write("merged.txt", std::string(10000, 'x'));
  ASSERT_TRUE(session->saveCommonPointsFile("merged", folder.narrow()));
  EXPECT_EQ(folder.textOf("merged.txt").substr(0, 3), "T1 ");
  EXPECT_LT(folder.textOf("merged.txt").size(), 200u);
}

TEST_F(CommonPointsFile, IsRefusedWithoutResultsNameOrFolder) {
  EXPECT_FALSE(session->saveCommonPointsFile("merged", folder.narrow()));
  solve();
  EXPECT_FALSE(session->saveCommonPointsFile("", folder.narrow()));
  EXPECT_FALSE(session->saveCommonPointsFile("merged", ""));
  EXPECT_FALSE(session->saveCommonPointsFile("merged", (folder.path() / "missing").string()));
  folder.write("plain", "file");
  EXPECT_FALSE(session->saveCommonPointsFile("merged", (folder.path() / "plain").string()));
}

TEST_F(CommonPointsFile, NamesThatTheHostsPlatformForbidsAreRefused) {
  solve();
  for (const char* refused : {"a:b", "a/b", "a\\b", " a", "a ", "a.", "a|b", "a<b", "a\"b", "a\x01"}) {
    EXPECT_FALSE(session->saveCommonPointsFile(refused, folder.narrow())) << refused;
  }
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{});
  EXPECT_TRUE(session->saveCommonPointsFile("a.b", folder.narrow()));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{"a.b.txt"});
}

TEST_F(CommonPointsFile, ANarrowNameGivesAFileOfThatNameInWindows1251) {
  solve();
  EXPECT_TRUE(session->saveCommonPointsFile("\xD6\xE5\xF5", folder.narrow()));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{"\xD0\xA6\xD0\xB5\xD1\x85.txt"});
}

TEST_F(CommonPointsFile, AFileThatCannotBeOpenedIsRefused) {
  solve();
  fs::create_directory(folder.path() / "merged.txt");
  EXPECT_FALSE(session->saveCommonPointsFile("merged", folder.narrow()));
}

// As with the matrix files: whoever asked for the file looks whether it is whole.
TEST_F(CommonPointsFile, AFullDiskIsNoRefusalOnceTheFileIsOpen) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  solve();
  fs::create_symlink("/dev/full", folder.path() / "merged.txt");
  EXPECT_TRUE(session->saveCommonPointsFile("merged", folder.narrow()));
}

TEST_F(CommonPointsFile, ANameThatWasLostIsEmpty) {
  solve();
  Outputs out;
  GroupId group = 0;
  // Both points of T1 are renamed, so the table loses it; its merged target still stands.
  ASSERT_TRUE(session->renamePoint(0, "N", group, out.inactiveGroups, out.inactivePoints));
  ASSERT_TRUE(session->renamePoint(4, "N", group, out.inactiveGroups, out.inactivePoints));
  ASSERT_TRUE(session->saveCommonPointsFile("merged", folder.narrow()));
  EXPECT_EQ(folder.textOf("merged.txt").substr(0, 10), " 1.000000 ");
}

}  // namespace
