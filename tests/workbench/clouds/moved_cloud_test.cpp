#include "workbench/clouds/moved_cloud.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <cstdlib>

#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

/// A quarter turn about z, then a shift: (x, y, z) goes to (-y + 10, x + 20, z + 30).
OdGeMatrix3d quarterTurn() {
  OdGeMatrix3d motion;
  motion(0, 0) = 0.0;
  motion(0, 1) = -1.0;
  motion(1, 0) = 1.0;
  motion(1, 1) = 0.0;
  motion(0, 3) = 10.0;
  motion(1, 3) = 20.0;
  motion(2, 3) = 30.0;
  return motion;
}

std::string moved(std::string line) {
  EXPECT_TRUE(moveLine(line, quarterTurn()));
  return line;
}

TEST(MoveLine, OnlyTheCoordinatesChange) {
  EXPECT_EQ(moved("1 2 3 255 0 0 text"), "8 21 33 255 0 0 text");
  EXPECT_EQ(moved("  1;2;\t3,200\r"), "  8;21;\t33,200\r");
  EXPECT_EQ(moved("+1 -2.5 3e0"), "12.5 21 33");
}

TEST(MoveLine, ALineWithoutThreeNumbersStays) {
  for (const std::string text : {"", "300", "1 2", "X Y Z", "P1 1 2 3", "1 2 3m", "1 2 nan", "// 1 2 3"}) {
    std::string line = text;
    EXPECT_FALSE(moveLine(line, quarterTurn())) << text;
    EXPECT_EQ(line, text);
  }
}

TEST(MoveLine, AnySeparatorsMayStandBetweenTheCoordinates) {
  EXPECT_EQ(moved("1, 2, 3"), "8, 21, 33");
  EXPECT_EQ(moved("1;;2\t \t3;"), "8;;21\t \t33;");
  EXPECT_EQ(moved("\t1 2 3,red;green"), "\t8 21 33,red;green");
}

TEST(MoveLine, ALineThatBeginsWithASeparatorOfFieldsStays) {
  for (const std::string text : {",1 2 3", ";1;2;3", "1:2:3", "1/2/3", "1 2 3:"}) {
    std::string line = text;
    EXPECT_FALSE(moveLine(line, quarterTurn())) << text;
    EXPECT_EQ(line, text);
  }
}

TEST(MoveLine, OnlyPlainFiniteNumbersAreCoordinates) {
  for (const std::string number : {"0x10", "1e", "1.2.3", "inf", "-infinity", "nan(1)", "1e400", "--1", "++1", "+-1",
                                   "-+1", "+", "-", ".", "1d5", "\xD9\xA1"}) {
    for (const std::string& text : {number + " 2 3", "1 " + number + " 3", "1 2 " + number}) {
      std::string line = text;
      EXPECT_FALSE(moveLine(line, quarterTurn())) << text;
      EXPECT_EQ(line, text);
    }
  }
}

TEST(MoveLine, NumbersMayBeWrittenInEveryCommonWay) {
  EXPECT_EQ(moved(".5 5. 1E1"), "5 20.5 40");
  EXPECT_EQ(moved("-0 +0 007"), "10 20 37");
}

TEST(MoveLine, CoordinatesAreWrittenWithTheFewestDigitsThatReadBack) {
  EXPECT_EQ(moved("0.1 9.9 -29.7"), "0.09999999999999964 20.1 0.3000000000000007");
  EXPECT_EQ(moved("1e22 0 0"), "10 1e+22 30");
}

TEST(MoveLine, LargeCoordinatesKeepTheirDigits) {
  OdGeMatrix3d still;
  std::string line = "4512345.678912345 -5412345.123456789 812.5 7";
  ASSERT_TRUE(moveLine(line, still));
  EXPECT_EQ(line, "4512345.678912345 -5412345.123456789 812.5 7");
}

RC_GTEST_PROP(MoveLine, TheUnmovedCoordinateReadsBackAsTheSameDouble, (double z)) {
  OdGeMatrix3d still;
  std::string line = "1 2 " + std::to_string(z);
  const double before = std::strtod(line.c_str() + 4, nullptr);
  RC_PRE(moveLine(line, still));
  RC_ASSERT(std::strtod(line.c_str() + 4, nullptr) == before);
}

class MovedCloudFile : public testing::Test {
 protected:
  static std::string complaint(const std::string& from, const std::string& to, bool replace = false) {
    try {
      writeMovedCloud(from, to, quarterTurn(), replace);
    } catch (const CloudFileError& error) {
      return error.what();
    }
    return "nothing";
  }

  TemporaryFolder folder;
  const std::string source = folder.file("S1.xyz");
  const std::string target = folder.file("moved.xyz");
};

TEST_F(MovedCloudFile, HeadersStayAndPointsMove) {
  writeBytes(source, "2\n1 2 3 9\r\n4 5 6 8");
  const MovedCloud counts = writeMovedCloud(source, target, quarterTurn(), false);
  EXPECT_EQ(counts.points, 2u);
  EXPECT_EQ(counts.otherLines, 1u);
  EXPECT_EQ(readBytes(target), "2\n8 21 33 9\r\n5 24 36 8");
  EXPECT_THAT(folder.names(), ElementsAre("S1.xyz", "moved.xyz"));
}

TEST_F(MovedCloudFile, AFileThatStandsThereIsKeptUnlessReplaced) {
  writeBytes(source, "1 2 3\n");
  writeBytes(target, "mine");
  EXPECT_EQ(complaint(source, target), target + ": the file exists; --force replaces it");
  EXPECT_EQ(readBytes(target), "mine");
  EXPECT_EQ(complaint(source, target, true), "nothing");
  EXPECT_EQ(readBytes(target), "8 21 33\n");
}

TEST_F(MovedCloudFile, TheCloudsOwnFileIsNeverReplaced) {
  writeBytes(source, "1 2 3\n");
  EXPECT_EQ(complaint(source, source, true), source + ": this is the cloud's own file; choose another folder");
  EXPECT_EQ(readBytes(source), "1 2 3\n");
}

TEST_F(MovedCloudFile, WhatIsNoTextLeavesNothingBehind) {
  writeBytes(source, std::string("1 2 3\n\0\0", 8));
  EXPECT_EQ(complaint(source, target),
            source + ": not a text cloud (one point per line: x y z and any further columns)");
  EXPECT_THAT(folder.names(), ElementsAre("S1.xyz"));
}

TEST_F(MovedCloudFile, ACloudWithoutPointsLeavesNothingBehind) {
  writeBytes(source, "no points\n");
  EXPECT_EQ(complaint(source, target), source + ": no line begins with three numbers; nothing to move");
  EXPECT_THAT(folder.names(), ElementsAre("S1.xyz"));
}

TEST_F(MovedCloudFile, AFileOfTheUsersBesideItIsLeftAlone) {
  writeBytes(source, "1 2 3\n");
  for (const char* ending : {".part", ".new", ".tmp"}) writeBytes(target + ending, "mine");
  EXPECT_EQ(complaint(source, target), "nothing");
  for (const char* ending : {".part", ".new", ".tmp"}) EXPECT_EQ(readBytes(target + ending), "mine") << ending;
  EXPECT_EQ(readBytes(target), "8 21 33\n");
}

// Windows keeps no pipes among its files.
#ifndef _WIN32
TEST_F(MovedCloudFile, APipeIsNeverReplaced) {
  writeBytes(source, "1 2 3\n");
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  EXPECT_EQ(complaint(source, target, true), target + ": not an ordinary file; choose another folder");
  struct stat status {};
  ASSERT_EQ(stat(target.c_str(), &status), 0);
  EXPECT_TRUE(S_ISFIFO(status.st_mode));
}
#endif

TEST_F(MovedCloudFile, AMissingCloudIsNamed) {
  EXPECT_EQ(complaint(source, target), source + ": the cloud's file can't be read");
}

TEST_F(MovedCloudFile, AFolderIsNoCloud) {
  EXPECT_EQ(complaint(folder.path().u8string(), target), folder.path().u8string() + ": the cloud's file can't be read");
  EXPECT_THAT(folder.names(), ElementsAre());
}

TEST_F(MovedCloudFile, AFolderIsNeverReplaced) {
  writeBytes(source, "1 2 3\n");
  std::filesystem::create_directory(target);
  EXPECT_EQ(complaint(source, target, true), target + ": not an ordinary file; choose another folder");
  EXPECT_THAT(folder.names(), ElementsAre("S1.xyz", "moved.xyz"));
}

TEST_F(MovedCloudFile, TheCloudsOwnFileIsKnownUnderItsOtherNames) {
  writeBytes(source, "1 2 3\n");
  const std::string detour = (folder.path() / "." / "S1.xyz").u8string();
  EXPECT_EQ(complaint(source, detour, true), detour + ": this is the cloud's own file; choose another folder");
  std::filesystem::create_hard_link(source, target);
  EXPECT_EQ(complaint(source, target, true), target + ": this is the cloud's own file; choose another folder");
  EXPECT_EQ(readBytes(source), "1 2 3\n");
}

TEST_F(MovedCloudFile, AFolderThatIsMissingIsNamedWithTheSystemsWords) {
  writeBytes(source, "1 2 3\n");
  const std::string elsewhere = (folder.path() / "none" / "moved.xyz").u8string();
  EXPECT_THAT(complaint(source, elsewhere), testing::StartsWith(elsewhere + ": the file can't be written: "));
  EXPECT_THAT(folder.names(), ElementsAre("S1.xyz"));
}

TEST_F(MovedCloudFile, AnEmptyFileHoldsNoPoint) {
  writeBytes(source, "");
  EXPECT_EQ(complaint(source, target), source + ": no line begins with three numbers; nothing to move");
  EXPECT_THAT(folder.names(), ElementsAre("S1.xyz"));
}

TEST_F(MovedCloudFile, AFileThatFailsHalfwayLeavesTheFormerCopy) {
  writeBytes(target, "mine");
  writeBytes(source, std::string("1 2 3\n4 5 6\n\0", 13));
  EXPECT_THAT(complaint(source, target, true), testing::HasSubstr("not a text cloud"));
  EXPECT_EQ(readBytes(target), "mine");
}

TEST_F(MovedCloudFile, BlankLinesStayWhereTheyAre) {
  writeBytes(source, "\n1 2 3\n\n \r\n4 5 6\n\n");
  const MovedCloud counts = writeMovedCloud(source, target, quarterTurn(), false);
  EXPECT_EQ(counts.points, 2u);
  EXPECT_EQ(counts.otherLines, 4u);
  EXPECT_EQ(readBytes(target), "\n8 21 33\n\n \r\n5 24 36\n\n");
}

TEST_F(MovedCloudFile, ItsNameMayLieBeyondAscii) {
  const std::string own = folder.file("\xD0\xA6\xD0\xB5\xD1\x85.xyz"), copy = folder.file("\xE6\xB8\xAC.xyz");
  writeBytes(own, "1 2 3\n");
  EXPECT_EQ(writeMovedCloud(own, copy, quarterTurn(), false).points, 1u);
  EXPECT_EQ(readBytes(copy), "8 21 33\n");
}

}  // namespace
}  // namespace tiepoint::workbench
