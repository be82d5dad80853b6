#include "workbench/session/staging_folder.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <cstdlib>

#include "support/temporary_folder.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

namespace fs = boost::filesystem;

class StagingFolders : public ::testing::Test {
 protected:
  static void write(const std::string& path, const std::string& bytes) {
    fs::ofstream(fs::path(path), std::ios::binary) << bytes;
  }

  /// Makes narrow paths UTF-8, as the workbench does.
  const tiepoint::testing::TemporaryFolder paths;
};

TEST_F(StagingFolders, AreEmptyFoldersOfTheirOwn) {
  const StagingFolder first, second;
  EXPECT_NE(first.path(), second.path());
  EXPECT_TRUE(fs::is_directory(first.path()));
  EXPECT_TRUE(fs::is_empty(first.path()));
}

TEST_F(StagingFolders, GoWithAllThatWasWrittenIntoThem) {
  std::string path;
  {
    const StagingFolder staging;
    path = staging.path();
    write(staging.file("a.txt"), "a");
    fs::create_directories(fs::path(path) / "deeper" / "still");
    write((fs::path(path) / "deeper" / "b.txt").string(), "b");
  }
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(StagingFolders, HoldAFileUnderItsName) {
  const StagingFolder staging;
  EXPECT_EQ(fs::path(staging.file("a.txt")).parent_path(), fs::path(staging.path()));
  EXPECT_EQ(fs::path(staging.file("a.txt")).filename(), "a.txt");
}

TEST_F(StagingFolders, GiveEveryByteOfAFile) {
  const StagingFolder staging;
  const std::string bytes("\0\r\n\x1A\xFF \n", 7);
  write(staging.file("a.txt"), bytes);
  EXPECT_EQ(staging.content("a.txt"), bytes);
}

TEST_F(StagingFolders, TakeNamesBeyondAscii) {
  const StagingFolder staging;
  write(staging.file("\xD0\xA6\xD0\xB5\xD1\x85.txt"), "hall");
  EXPECT_EQ(staging.content("\xD0\xA6\xD0\xB5\xD1\x85.txt"), "hall");
  EXPECT_TRUE(fs::exists(fs::path(staging.path()) / fs::path(L"\u0426\u0435\u0445.txt")));
}

TEST_F(StagingFolders, GiveNothingOfAFileThatIsNotThere) {
  const StagingFolder staging;
  EXPECT_EQ(staging.content("a.txt"), "");
}

// Windows has its own ways of finding the folder.
#ifndef _WIN32
TEST_F(StagingFolders, AreRefusedWhereTheSystemHasNoPlaceForThem) {
  const char* const before = std::getenv("TMPDIR");
  const std::string kept = before ? before : "";
  setenv("TMPDIR", (paths.path() / "none").c_str(), 1);
  try {
    const StagingFolder staging;
    ADD_FAILURE() << staging.path();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::noTemporaryFolder);
    EXPECT_EQ(refused.refusal().cause, "No such file or directory");
  }
  if (before) {
    setenv("TMPDIR", kept.c_str(), 1);
  } else {
    unsetenv("TMPDIR");
  }
}
#endif

}  // namespace
}  // namespace tiepoint::workbench
