// Files of reference points as they shouldn't be.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using tiepoint::testing::onWindows;

class BadFiles : public SurveyFiles {
 protected:
  /// What the program says on standard error about such a file beside a good one.
  std::string complaint(const std::string& bytes, int status) {
    write("bad.txt", bytes);
    const ProcessResult result = run({"register", "base.txt", "bad.txt", "shifted.txt"});
    EXPECT_EQ(result.status, status);
    return result.err;
  }

  /// The same of a file whose layout is named: it is read in no other way.
  std::string complaintOfNxyz(const std::string& bytes, int status) {
    write("bad.txt", bytes);
    const ProcessResult result = run({"register", "base.txt", "shifted.txt", "--nxyz", "bad.txt"});
    EXPECT_EQ(result.status, status);
    return result.err;
  }
};

TEST_F(BadFiles, AMissingFileIsNamedAndNothingIsTakenIn) {
  const ProcessResult result = run({"import", "--document", "d", "base.txt", "none.txt"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: none.txt: there is no such file\n");
  EXPECT_FALSE(exists("d"));
}

TEST_F(BadFiles, AFolderIsNoFile) {
  const ProcessResult result = run({"register", "."});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: .: this is a folder; name the files in it\n");
}

TEST_F(BadFiles, AnUnreadableFileIsNamed) {
  std::filesystem::permissions(folder.path() / "base.txt", std::filesystem::perms::none);
  ProcessSetup setup;
  setup.withoutRights = true;
  const ProcessResult result = run({"register", "base.txt"}, setup);
  if (result.status == notStarted) GTEST_SKIP() << "the build isn't readable for other users";
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: base.txt: the file can't be read: Permission denied\n");
}

TEST_F(BadFiles, AnEmptyFileIsNamed) { EXPECT_EQ(complaint("", 3), "tiepoint: bad.txt: the file is empty\n"); }

TEST_F(BadFiles, AFileOfBlankLinesGivesNoPoints) {
  EXPECT_EQ(complaint("\n  \n", 3), "tiepoint: bad.txt: no reference points found\n");
  EXPECT_EQ(complaintOfNxyz("\n  \n", 3),
            "tiepoint: bad.txt: no reference points found: line 1 is blank; take it out\n");
}

TEST_F(BadFiles, ABinaryFileIsSeenAsSuch) {
  const std::string program(
      "\x7F"
      "ELF\0\1\2\3",
      8);
  EXPECT_EQ(complaint(program, 3), "tiepoint: bad.txt: line 1 holds a zero byte, so the file isn't plain text\n");
  EXPECT_EQ(complaintOfNxyz(program, 3),
            "tiepoint: bad.txt: no reference points found: line 1 holds a zero byte, so the file isn't plain text\n");
}

TEST_F(BadFiles, AHeaderAboveANamedLayoutIsNamed) {
  EXPECT_EQ(complaintOfNxyz("name x y z\nP1 0 0 0\n", 3),
            "tiepoint: bad.txt: no reference points found: line 1 holds \"x\", which isn't a number; these files have "
            "no header, take it out\n");
}

TEST_F(BadFiles, TheWrongLayoutIsAnsweredWithTheRightOne) {
  EXPECT_EQ(complaintOfNxyz("P1 0 0 0 1\n", 3),
            "tiepoint: bad.txt: no reference points found: line 1 has 5 fields where NXYZ has 4 (name x y z); it reads "
            "as NXYZW (name x y z weight)\n");
}

TEST_F(BadFiles, AFileWithoutPointsKeepsTheOthersFromTheDrawing) {
  ASSERT_EQ(run({"import", "--document", "d", "base.txt"}).status, 0);
  write("bad.txt", "x\n");
  EXPECT_EQ(run({"import", "--document", "d", "shifted.txt", "bad.txt"}).status, 3);
  EXPECT_EQ(runJson({"groups", "--document", "d"})["groups"].size(), 1u);
}

TEST_F(BadFiles, ABadLineEndsTheReadingOfANamedLayoutAndIsTold) {
  EXPECT_EQ(complaintOfNxyz("P1 0 0 0\nP2 10 0 0\nP3 0 10 0\nP4 0 1,5 0\nP5 1 1 1\n", 0),
            "tiepoint: warning: bad.txt: reading stopped after 3 points: line 4 of 5 has 5 fields where NXYZ has 4 "
            "(name x y z); numbers take a decimal point, not a comma\n");
  const json file = runJson({"register", "base.txt", "shifted.txt", "--nxyz", "bad.txt"})["import"]["files"][2];
  EXPECT_EQ(file["lines"], 5);
  EXPECT_EQ(file["points"], 3);
  EXPECT_EQ(file["stoppedAt"]["line"], 4);
}

TEST_F(BadFiles, BlankLinesAtTheEndAreNoLoss) {
  EXPECT_THAT(complaint(std::string(baseLines) + "\n \n", 0), IsEmpty());
}

TEST_F(BadFiles, ABlankLineInTheMiddleIsNoLoss) {
  const std::string lines = "P1 0 0 0\nP2 10 0 0\nP3 0 10 0\n\nP4 0 0 10\n";
  EXPECT_THAT(complaint(lines, 0), IsEmpty());
  EXPECT_EQ(runJson({"register", "base.txt", "bad.txt"})["import"]["files"][1]["points"], 4);
}

TEST_F(BadFiles, ABlankLineInTheMiddleOfANamedLayoutIsALoss) {
  EXPECT_EQ(complaintOfNxyz("P1 0 0 0\nP2 10 0 0\nP3 0 10 0\n\nP4 0 0 10\n", 0),
            "tiepoint: warning: bad.txt: reading stopped after 3 points: line 4 of 5 is blank; take it out\n");
}

TEST_F(BadFiles, CarriageReturnsAreFine) {
  EXPECT_THAT(complaint("P1 0 0 0\r\nP2 10 0 0\r\nP3 0 10 0\r\nP4 0 0 10\r\n", 0), IsEmpty());
}

TEST_F(BadFiles, AByteOrderMarkIsNoPartOfAName) {
  EXPECT_THAT(complaint("\xEF\xBB\xBF" + std::string(baseLines), 0), IsEmpty());
  const json points = runJson({"register", "base.txt", "bad.txt", "shifted.txt"})["points"];
  EXPECT_EQ(points[4]["name"], "P1");
  EXPECT_TRUE(points[4]["active"]);
}

TEST_F(BadFiles, AByteOrderMarkBeforeANumberIsNamed) {
  write("bad.txt",
        "\xEF\xBB\xBF"
        "1 2 3\n");
  EXPECT_EQ(run({"register", "--xyz", "bad.txt"}).err,
            "tiepoint: bad.txt: no reference points found: line 1 begins with a byte-order mark; save the file without "
            "it\n");
}

TEST_F(BadFiles, NamesOfHighBytesAreWindows1251) {
  const std::string lines = "\xCF\xF3\xED\xEA\xF2 0 0 0\nP2 10 0 0\nP3 0 10 0\n";
  write("a.txt", lines);
  write("b.txt", lines);
  const ProcessResult result = run({"register", "a.txt", "b.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_THAT(result.out, HasSubstr("  a      Пункт "));
  EXPECT_EQ(runJson({"register", "a.txt", "b.txt"})["points"][0]["name"], "Пункт");
  EXPECT_EQ(runJson({"register", "a.txt", "b.txt", "--exclude", "a:Пункт"}, 1)["points"][0]["reason"], "excluded");
}

TEST_F(BadFiles, NamesInUtf8AreTakenAsSuch) {
  EXPECT_THAT(complaint("Пункт 0 0 0\nP2 10 0 0\nP3 0 10 0\nP4 0 0 10\n", 0), IsEmpty());
  EXPECT_EQ(runJson({"register", "base.txt", "bad.txt", "shifted.txt"})["points"][4]["name"], "Пункт");
}

TEST_F(BadFiles, ANameThatSteersATerminalIsDefused) {
  write("a.txt", "P\x1B[2J 0 0 0\nP2 10 0 0\nP3 0 10 0\n");
  write("b.txt", read("a.txt"));
  const ProcessResult result = run({"register", "a.txt", "b.txt"});
  EXPECT_THAT(result.out, HasSubstr("P?[2J"));
  EXPECT_THAT(result.out, testing::Not(HasSubstr("\x1B")));
}

TEST_F(BadFiles, AFileNameThatIsntUtf8IsNamed) {
  if (onWindows) GTEST_SKIP() << "every argument is Unicode there";
  const ProcessResult result = run({"register", "bad\xFF.txt"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: bad?.txt: the file's name isn't UTF-8 text; rename the file\n");
}

TEST_F(BadFiles, AGroupNameOutsideWindows1251IsShownAsItIs) {
  write("測站.txt", shiftedLines);
  const ProcessResult result = run({"register", "--method", "pairwise", "base.txt", "測站.txt", "--base", "測站"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_THAT(result.out, HasSubstr("Registered pairwise with base 測站"));
}

TEST_F(BadFiles, TwoFilesOfOneNameAreRefused) {
  std::filesystem::create_directory(folder.path() / "other");
  write("other/base.txt", shiftedLines);
  const ProcessResult result = run({"register", "base.txt", "other/base.txt"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "tiepoint: base.txt and other/base.txt: both become the group \"base\"; rename one of them\n");
}

TEST_F(BadFiles, ACoordinateThatIsNoNumberIsRefused) {
  EXPECT_EQ(complaint("P1 0 0 nan\nP2 10 0 0\nP3 0 10 0\nP4 0 0 10\n", 1),
            "tiepoint: point P1 of bad has a coordinate that isn't a finite number; correct it, or leave the point out "
            "with --exclude bad:P1\n");
}

TEST_F(BadFiles, TargetsOnOneLineAreWarnedOf) {
  write("a.txt", "P1 0 0 0\nP2 10 0 0\nP3 20 0 0\n");
  write("b.txt", "P1 0 5 0\nP2 10 5 0\nP3 20 5 0\n");
  EXPECT_EQ(
      run({"register", "--method", "pairwise", "a.txt", "b.txt"}).err,
      "tiepoint: warning: the points of a in use lie on one line, so its rotation about that line is undetermined\n"
      "tiepoint: warning: the points of b in use lie on one line, so its rotation about that line is undetermined\n");
}

// A million; the sanitizers get a tenth of it, which takes them as long.
TEST_F(BadFiles, AMillionLinesAreTakenIn) {
  std::string lines;
  for (int i = 0; i < MANY_LINES; ++i) lines += "P" + std::to_string(i) + " 1 2 3\n";
  write("large.txt", lines);
  const ProcessResult result = run({"import", "--document", "d", "large.txt"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(runJson({"groups", "--document", "d"})["groups"][0]["pointCount"], MANY_LINES);
}

TEST_F(BadFiles, AMillionLinesBehindABadOneAreCounted) {
  std::string lines = std::string(baseLines) + "bad\n";
  for (int i = 0; i < 1000000; ++i) lines += "P1 1 2 3\n";
  EXPECT_EQ(complaintOfNxyz(lines, 0),
            "tiepoint: warning: bad.txt: reading stopped after 4 points: line 5 of 1000005 has 1 field where NXYZ has "
            "4 (name x y z)\n");
}

}  // namespace
