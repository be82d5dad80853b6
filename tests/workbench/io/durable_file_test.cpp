#include "workbench/io/durable_file.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "workbench/temporary_folder.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tiepoint::workbench::replaceFile;
using tiepoint::workbench::WholeFile;

namespace {

std::string refusalOf(const std::string& file) {
  try {
    replaceFile(file, "new");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "no refusal";
}

}  // namespace

TEST(ReplaceFile, MakesAFileThatIsMissing) {
  const TemporaryFolder folder;
  replaceFile(folder.file("a.txt"), std::string("one\ntwo\0three", 13));
  EXPECT_EQ(readBytes(folder.file("a.txt")), std::string("one\ntwo\0three", 13));
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(WholeFile, LeavesNothingBehindUntilItIsPutInPlace) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "old");
  {
    WholeFile file(folder.file("a.txt"));
    file.write("half");
    EXPECT_EQ(readBytes(folder.file("a.txt")), "old");
  }
  EXPECT_EQ(readBytes(folder.file("a.txt")), "old");
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(WholeFile, IsWrittenPieceByPiece) {
  const TemporaryFolder folder;
  WholeFile file(folder.file("a.txt"));
  file.write("one ");
  file.write("two");
  file.putInPlace();
  EXPECT_EQ(readBytes(folder.file("a.txt")), "one two");
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(ReplaceFile, PutsTheNewFileInThePlaceOfTheOldAndNeverWritesIntoIt) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "old");
  std::filesystem::create_hard_link(folder.path() / "a.txt", folder.path() / "held.txt");
  replaceFile(folder.file("a.txt"), "new");
  EXPECT_EQ(readBytes(folder.file("a.txt")), "new");
  EXPECT_EQ(readBytes(folder.file("held.txt")), "old");
}

TEST(ReplaceFile, TakesANameOutsideAscii) {
  const TemporaryFolder folder;
  replaceFile(folder.file("профиль ü.json"), "x");
  EXPECT_THAT(folder.names(), ElementsAre("профиль ü.json"));
}

TEST(ReplaceFile, NamesTheFileWhoseFolderIsMissing) {
  const TemporaryFolder folder;
  const std::string file = folder.file("missing/a.txt");
  EXPECT_THAT(refusalOf(file), StartsWith(file + ": "));
  EXPECT_THAT(refusalOf(file), Not(HasSubstr("\n")));
}

TEST(ReplaceFile, LeavesNothingBehindWhenTheFileCannotBeReplaced) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder.path() / "a.txt" / "inside");
  EXPECT_THAT(refusalOf(folder.file("a.txt")), HasSubstr("can't be written"));
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

#ifndef _WIN32
TEST(ReplaceFile, LeavesAPipeWhereItIs) {
#ifdef _WIN32
  GTEST_SKIP() << "named pipes have no place among files there";
#else
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
  EXPECT_THAT(refusalOf(folder.file("pipe")), HasSubstr("can't be written"));
  EXPECT_TRUE(std::filesystem::is_fifo(folder.path() / "pipe"));
  EXPECT_THAT(folder.names(), ElementsAre("pipe"));
#endif
}

TEST(ReplaceFile, KeepsThePermissionsOfTheFile) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "old");
  std::filesystem::permissions(folder.path() / "a.txt", std::filesystem::perms{0600});
  replaceFile(folder.file("a.txt"), "new");
  EXPECT_EQ(std::filesystem::status(folder.path() / "a.txt").permissions(), std::filesystem::perms{0600});
}

TEST(ReplaceFile, WritesBehindASymbolicLinkAndKeepsTheLink) {
  const TemporaryFolder folder;
  writeBytes(folder.file("real.txt"), "old");
  std::filesystem::create_symlink("real.txt", folder.path() / "link.txt");
  replaceFile(folder.file("link.txt"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link.txt"));
  EXPECT_EQ(readBytes(folder.file("real.txt")), "new");
}
#endif
