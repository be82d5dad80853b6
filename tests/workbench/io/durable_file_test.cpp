#include "workbench/io/durable_file.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <system_error>

#include "workbench/temporary_folder.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#endif

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tiepoint::workbench::pathBehindLinks;
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

/// The system's reason why a file can't be begun.
std::error_code reasonOf(const std::string& file) {
  try {
    const WholeFile whole(file);
  } catch (const std::system_error& error) {
    return error.code();
  }
  return {};
}

TEST(WholeFile, TellsTheSystemsReason) {
  const TemporaryFolder folder;
  EXPECT_EQ(reasonOf(folder.file("missing/a.txt")), std::errc::no_such_file_or_directory);
  EXPECT_EQ(reasonOf(folder.path().u8string()), std::errc::is_a_directory);
  EXPECT_EQ(reasonOf(folder.file("a.txt")), std::error_code());
  EXPECT_THAT(folder.names(), ElementsAre());
}

TEST(PathBehindLinks, IsThePathItselfWhereThereIsNoLink) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "there");
  EXPECT_EQ(pathBehindLinks(folder.file("a.txt")), folder.file("a.txt"));
  EXPECT_EQ(pathBehindLinks(folder.file("none.txt")), folder.file("none.txt"));
  EXPECT_EQ(pathBehindLinks(folder.file("зал.txt")), folder.file("зал.txt"));
}

TEST(WholeFile, MayBeEmpty) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "old");
  WholeFile file(folder.file("a.txt"));
  file.putInPlace();
  EXPECT_EQ(readBytes(folder.file("a.txt")), "");
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(WholeFile, StaysWhereItWasPutWhenTheObjectGoes) {
  const TemporaryFolder folder;
  {
    WholeFile file(folder.file("a.txt"));
    file.write("new");
    file.putInPlace();
  }
  EXPECT_EQ(readBytes(folder.file("a.txt")), "new");
}

TEST(WholeFile, HoldsPiecesOfAnyBytesAndAnySize) {
  const TemporaryFolder folder;
  const std::string large(3000000, '\xFF'), zeros("\0\r\n\0", 4);
  WholeFile file(folder.file("a.bin"));
  file.write(large);
  file.write("");
  file.write(zeros);
  file.putInPlace();
  EXPECT_TRUE(readBytes(folder.file("a.bin")) == large + zeros);
}

TEST(WholeFile, OfOneTargetTwoDontMeetAndTheLaterCounts) {
  const TemporaryFolder folder;
  WholeFile one(folder.file("a.txt"));
  WholeFile two(folder.file("a.txt"));
  EXPECT_EQ(folder.names().size(), 2u);
  one.write("one");
  two.write("two");
  two.putInPlace();
  one.putInPlace();
  EXPECT_EQ(readBytes(folder.file("a.txt")), "one");
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(WholeFile, LeavesOthersOfSuchNamesAlone) {
  const TemporaryFolder folder;
  for (const char* name : {"a.txt.new", "a.txt.part", "a.txt.new-1"}) writeBytes(folder.file(name), "the user's");
  replaceFile(folder.file("a.txt"), "new");
  EXPECT_THAT(folder.names(), ElementsAre("a.txt", "a.txt.new", "a.txt.new-1", "a.txt.part"));
  EXPECT_EQ(readBytes(folder.file("a.txt.new-1")), "the user's");
}

TEST(WholeFile, LeavesTheTargetWhenItCantBePutInPlace) {
  const TemporaryFolder folder;
  {
    WholeFile file(folder.file("a.txt"));
    file.write("new");
    std::filesystem::create_directories(folder.path() / "a.txt" / "inside");
    EXPECT_THROW(file.putInPlace(), std::system_error);
  }
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
  EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "a.txt" / "inside"));
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
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
  EXPECT_THAT(refusalOf(folder.file("pipe")), HasSubstr("can't be written"));
  EXPECT_TRUE(std::filesystem::is_fifo(folder.path() / "pipe"));
  EXPECT_THAT(folder.names(), ElementsAre("pipe"));
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

TEST(ReplaceFile, FollowsALinkToAFileThatIsMissing) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("real.txt", folder.path() / "link.txt");
  replaceFile(folder.file("link.txt"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link.txt"));
  EXPECT_EQ(readBytes(folder.file("real.txt")), "new");
}

TEST(PathBehindLinks, IsTheLastOfTheChain) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("second", folder.path() / "first");
  std::filesystem::create_symlink(folder.path() / "зал.txt", folder.path() / "second");
  EXPECT_EQ(pathBehindLinks(folder.file("first")), folder.file("зал.txt"));
}

TEST(PathBehindLinks, IsNoneOfLinksInACircle) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("a", folder.path() / "a");
  EXPECT_THROW(pathBehindLinks(folder.file("a")), std::system_error);
}

TEST(ReplaceFile, FollowsAChainOfLinksThroughFolders) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder.path() / "sub");
  std::filesystem::create_symlink("sub/second.txt", folder.path() / "first.txt");
  std::filesystem::create_symlink(folder.path() / "real.txt", folder.path() / "sub" / "second.txt");
  replaceFile(folder.file("first.txt"), "new");
  EXPECT_EQ(readBytes(folder.file("real.txt")), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "sub" / "second.txt"));
}

TEST(WholeFile, IsRefusedBehindLinksThatLeadInACircle) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("b.txt", folder.path() / "a.txt");
  std::filesystem::create_symlink("a.txt", folder.path() / "b.txt");
  EXPECT_EQ(reasonOf(folder.file("a.txt")), std::errc::too_many_symbolic_link_levels);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "a.txt"));
  EXPECT_THAT(folder.names(), ElementsAre("a.txt", "b.txt"));
}

/// As long as it stands no file of this process may grow beyond some bytes.
class SmallFiles {
 public:
  explicit SmallFiles(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
  }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

 private:
  void (*handler)(int);
  rlimit before{};
};

TEST(ReplaceFile, LeavesTheOldFileWhereTheNewOneHasNoRoom) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "old");
  for (const std::size_t size : {2000u, 2000000u}) {
    const SmallFiles limit(1000);
    EXPECT_THROW(replaceFile(folder.file("a.txt"), std::string(size, 'x')), std::runtime_error) << size;
  }
  EXPECT_EQ(readBytes(folder.file("a.txt")), "old");
  EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}
#endif
