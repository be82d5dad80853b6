// Drawings as they shouldn't be.
#include <gmock/gmock.h>
#include <sqlite3.h>

#include "workbench/cli/survey_files.h"
#include "workbench/drawing/drawing.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tiepoint::testing::inTextMode;
using tiepoint::testing::onWindows;
using tiepoint::workbench::Drawing;

class BadDrawings : public SurveyFiles {
 protected:
  BadDrawings() { EXPECT_EQ(run({"import", "--document", "d", "base.txt", "shifted.txt"}).status, 0); }

  /// Every command that opens a drawing must fail with this one line.
  void expectRefused(const std::string& drawing, const std::string& error) {
    for (const std::string command : {"groups", "clouds", "register"}) {
      const ProcessResult result = run({command, "--document", drawing});
      EXPECT_EQ(result.status, 3) << command;
      EXPECT_EQ(result.out, "") << command;
      EXPECT_EQ(result.err, "tiepoint: " + error + "\n") << command;
    }
  }
  void setSchema(int version) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(folder.file("d").c_str(), &database), SQLITE_OK);
    const std::string statement = "PRAGMA user_version = " + std::to_string(version);
    EXPECT_EQ(sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
  }
  std::size_t groupCount() { return runJson({"groups", "--document", "d"})["groups"].size(); }
};

TEST_F(BadDrawings, AMissingOneIsntMade) {
  expectRefused("none", "none: there is no such drawing; check the path");
  EXPECT_FALSE(exists("none"));
}

TEST_F(BadDrawings, AFolderIsNone) { expectRefused(".", ".: this is a folder, not a drawing; choose a file"); }

TEST_F(BadDrawings, ATextFileIsNoneAndStaysAsItIs) {
  expectRefused("base.txt", "base.txt: not a drawing; choose another file");
  EXPECT_EQ(run({"import", "--document", "base.txt", "shifted.txt"}).status, 3);
  EXPECT_EQ(read("base.txt"), baseLines);
}

TEST_F(BadDrawings, ALockedOneIsLeftAlone) {
  const auto holder = Drawing::open(folder.file("d"), false);
  expectRefused("d", "d: the drawing is open in another process; close it there and try again");
  EXPECT_EQ(run({"import", "--document", "d", "base.txt"}).status, 3);
}

TEST_F(BadDrawings, ANewerOneIsLeftAlone) {
  setSchema(99);
  const std::string before = read("d");
  const ProcessResult result = run({"groups", "--document", "d"});
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, StartsWith("tiepoint: d: the drawing has format 99, and this program supports up to "));
  EXPECT_EQ(read("d"), before);
}

TEST_F(BadDrawings, AReadOnlyOneCanBeReadAndRegisteredButNotChanged) {
  std::filesystem::permissions(folder.path() / "d", std::filesystem::perms(0444));
  std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
  write("third.txt", baseLines);
  ProcessSetup setup;
  setup.withoutRights = true;
  const ProcessResult listed = run({"groups", "--document", "d"}, setup);
  if (listed.status == notStarted) GTEST_SKIP() << "the build isn't readable for other users";
  EXPECT_EQ(listed.status, 0) << listed.err;
  EXPECT_EQ(run({"register", "--document", "d"}, setup).status, 0);

  const std::string error =
      "tiepoint: d: the drawing can't be changed because its file or folder is read-only; make it writable or work on "
      "a copy\n";
  const ProcessResult imported = run({"import", "--document", "d", "third.txt"}, setup);
  EXPECT_EQ(imported.status, 3);
  EXPECT_EQ(imported.err, error);
  const ProcessResult stored = run({"register", "--document", "d", "--store", "merged"}, setup);
  EXPECT_EQ(stored.status, 3);
  EXPECT_EQ(stored.err, error);
  EXPECT_EQ(groupCount(), 2u);
}

/// More than fits on the small disks below.
std::string manyLines() {
  std::string lines;
  for (int i = 0; i < 20000; ++i) lines += "P" + std::to_string(i) + " 1.5 2.5 3.5\n";
  return lines;
}

TEST_F(BadDrawings, AFileThatMayNotGrowKeepsWhatItHeld) {
  if (onWindows) GTEST_SKIP() << "no limit on the size of files there";
  write("large.txt", manyLines());
  ProcessSetup setup;
  setup.largestFile = 64UL * 1024;
  const ProcessResult result = run({"import", "--document", "d", "large.txt"}, setup);
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, HasSubstr("d: the drawing can't be read or written"));
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
  EXPECT_EQ(groupCount(), 2u);
}

TEST_F(BadDrawings, AFullDiskIsNamed) {
  write("large.txt", manyLines());
  std::filesystem::create_directory(folder.path() / "disk");
  ProcessSetup setup;
  setup.smallDisk = folder.file("disk");
  setup.smallDiskSize = 256UL * 1024;
  const ProcessResult result = run({"import", "--document", "disk/d", "large.txt"}, setup);
  if (result.status == noSmallDisk) GTEST_SKIP() << "no right to mount a small disk here";
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, HasSubstr("disk/d: the drawing can't be written, as the disk is full"));
}

TEST_F(BadDrawings, CommonPointsOnAFullDiskArentCalledWritten) {
  if (onWindows) GTEST_SKIP() << "no limit on the size of files there";
  std::string lines;
  for (int i = 0; i < 3000; ++i) {
    lines += "P" + std::to_string(i) + " " + std::to_string(i % 7) + " " + std::to_string(i % 11) + " " +
             std::to_string(i % 13) + "\n";
  }
  write("a.txt", lines);
  write("b.txt", lines);
  ProcessSetup setup;
  setup.largestFile = 16UL * 1024;
  const ProcessResult result =
      run({"register", "--quiet", "--method", "pairwise", "a.txt", "b.txt", "--common-points", "common.txt"}, setup);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: common.txt: the common points can't be written completely; is the disk full?\n");
  EXPECT_FALSE(exists("common.txt"));
}

TEST_F(BadDrawings, CommonPointsAreWholeThoughANameHoldsALineFeed) {
  const std::string points =
      R"("points":[{"name":"T\n1","x":1,"y":2,"z":3,"w":1},{"name":"T2","x":11,"y":2,"z":3,"w":1},)"
      R"({"name":"T3","x":1,"y":9,"z":5,"w":1}]}})";
  ProcessSetup setup;
  for (const std::string group : {"A", "B"}) {
    setup.input +=
        R"({"jsonrpc":"2.0","id":1,"method":"document.storeGroup","params":{"name":")" + group + "\"," + points + "\n";
  }
  ASSERT_EQ(run({"rpc", "--document", "named"}, setup).status, 0);
  const ProcessResult result = run({"register", "--quiet", "--document", "named", "--common-points", "common.txt"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(read("common.txt"), inTextMode("T\n1 1.000000 2.000000 3.000000 1.00\n"
                                           "T2 11.000000 2.000000 3.000000 1.00\n"
                                           "T3 1.000000 9.000000 5.000000 1.00\n"));
  const auto ofModule =
      run({"register", "--quiet", "--method", "pairwise", "--document", "named", "--common-points", "module.txt"});
  ASSERT_EQ(ofModule.status, 0) << ofModule.err;
  EXPECT_EQ(read("module.txt"), read("common.txt"));
}

TEST_F(BadDrawings, CommonPointsThatCantBeWrittenLeaveTheOlderOnesWhole) {
  if (onWindows) GTEST_SKIP() << "no limit on the size of files there";
  std::string lines;
  for (int i = 0; i < 3000; ++i)
    lines += "P" + std::to_string(i) + " " + std::to_string(i % 7) + " " + std::to_string(i % 11) + " 1\n";
  write("a.txt", lines);
  write("b.txt", lines);
  write("common.txt", "older");
  ProcessSetup setup;
  setup.largestFile = 16UL * 1024;
  EXPECT_EQ(
      run({"register", "--method", "pairwise", "a.txt", "b.txt", "--common-points", "common.txt", "--force"}, setup)
          .status,
      3);
  EXPECT_EQ(read("common.txt"), "older");
}

}  // namespace
