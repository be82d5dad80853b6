#include "workbench/report/file_refusal_text.h"

#include <gtest/gtest.h>

#include "workbench/report/refusal_text.h"

namespace tiepoint::workbench {
namespace {

std::string textOf(const Refusal& refusal) { return fileRefusalText(refusal, optionOf); }

Refusal ofFile(RefusalKind kind) {
  Refusal refusal{kind, Field::files};
  refusal.given = "S1.txt";
  return refusal;
}

Refusal ofTarget(RefusalKind kind, Field field = Field::report, std::string given = "out.html") {
  Refusal refusal{kind, field};
  refusal.given = std::move(given);
  return refusal;
}

// --- Files that are read.

TEST(FileRefusalText, OfANameThatIsntUtf8) {
  Refusal refusal = ofFile(RefusalKind::pathNotUtf8);
  refusal.given = "S\xFF.txt";
  EXPECT_EQ(textOf(refusal), "S?.txt: the file's name isn't UTF-8 text; rename the file");
}

TEST(FileRefusalText, OfAMissingFile) {
  EXPECT_EQ(textOf(ofFile(RefusalKind::fileMissing)), "S1.txt: there is no such file");
}

TEST(FileRefusalText, OfAFolder) {
  EXPECT_EQ(textOf(ofFile(RefusalKind::fileIsFolder)), "S1.txt: this is a folder; name the files in it");
}

TEST(FileRefusalText, OfAFileThatCantBeRead) {
  Refusal refusal = ofFile(RefusalKind::fileUnreadable);
  EXPECT_EQ(textOf(refusal), "S1.txt: the file can't be read: unknown error");
  refusal.cause = "Permission denied";
  EXPECT_EQ(textOf(refusal), "S1.txt: the file can't be read: Permission denied");
}

TEST(FileRefusalText, OfWhatIsNoPlainFile) {
  EXPECT_EQ(textOf(ofFile(RefusalKind::fileNotPlain)), "S1.txt: this isn't a plain file; save the points to one");
}

TEST(FileRefusalText, OfAFileThatEndsEarly) {
  EXPECT_EQ(textOf(ofFile(RefusalKind::fileCutShort)), "S1.txt: the file can't be read to its end");
}

TEST(FileRefusalText, OfAnEmptyFile) { EXPECT_EQ(textOf(ofFile(RefusalKind::fileEmpty)), "S1.txt: the file is empty"); }

TEST(FileRefusalText, OfAFileThatChanged) {
  EXPECT_EQ(textOf(ofFile(RefusalKind::fileChanged)),
            "S1.txt: the file changed while it was read; nothing was taken in, try again");
}

TEST(FileRefusalText, OfAFileWithoutPoints) {
  Refusal refusal = ofFile(RefusalKind::noPoints);
  refusal.fault.emplace();
  refusal.fault->kind = LineFaultKind::comment;
  EXPECT_EQ(textOf(refusal),
            "S1.txt: no reference points found: line 1 begins with \"#\", but these files know no comments; take it "
            "out");
}

TEST(FileRefusalText, OfALineOfWeights) {
  Refusal refusal = ofFile(RefusalKind::weightsLine);
  refusal.count = 12;
  EXPECT_EQ(textOf(refusal), "S1.txt: line 12 isn't \"GROUP POINT WEIGHT\" with a weight from 0 to 1");
}

TEST(FileRefusalText, OfACloudsMissingFile) {
  Refusal refusal = ofFile(RefusalKind::cloudFileMissing);
  refusal.name = "S1";
  EXPECT_EQ(textOf(refusal), "S1.txt: there is no such file (cloud S1)");
}

Refusal ofLine(RefusalKind kind, std::string given, std::string name = {}) {
  Refusal refusal{kind};
  refusal.given = std::move(given);
  refusal.name = std::move(name);
  refusal.count = 3;
  return refusal;
}

TEST(FileRefusalText, OfALineThatIsntWhatItsFileHolds) {
  EXPECT_EQ(textOf(ofLine(RefusalKind::weightsLine, "w.txt")),
            "w.txt: line 3 isn't \"GROUP POINT WEIGHT\" with a weight from 0 to 1");
  EXPECT_EQ(textOf(ofLine(RefusalKind::sigmasLine, "s.txt")),
            "s.txt, line 3: this isn't \"GROUP S\" or \"GROUP POINT S\" with S above 0; write decimal points, and "
            "quotation marks around names of several words");
  EXPECT_EQ(textOf(ofLine(RefusalKind::carryLine, "c.txt")),
            "c.txt, line 3: this isn't \"GROUP x y z\"; write decimal points, and quotation marks around names of "
            "several words");
  EXPECT_EQ(textOf(ofLine(RefusalKind::controlLine, "control.txt")),
            "control.txt, line 3: this isn't \"NAME x y z\", alone or with 1 or 3 sigmas or 6 covariances; write "
            "decimal points, and quotation marks around names of several words");
}

TEST(FileRefusalText, OfALineThatIsntUtf8) {
  for (const RefusalKind kind :
       {RefusalKind::weightsLine, RefusalKind::sigmasLine, RefusalKind::carryLine, RefusalKind::controlLine}) {
    Refusal refusal = ofLine(kind, "c.txt");
    refusal.cause = "the byte 0xE7 at offset 0 isn't UTF-8";
    EXPECT_EQ(textOf(refusal), "c.txt, line 3: the byte 0xE7 at offset 0 isn't UTF-8; save the file as UTF-8");
  }
}

TEST(FileRefusalText, OfAPlaceThatCantBeThatCertain) {
  EXPECT_EQ(textOf(ofLine(RefusalKind::controlNotDefinite, "control.txt", "T04")),
            "control.txt, line 3: the covariances of T04 aren't positive definite; give sigmas above 0, or xx xy xz "
            "yy yz zz of one place");
}

TEST(FileRefusalText, OfATargetWithTwoPlaces) {
  EXPECT_EQ(textOf(ofLine(RefusalKind::controlTwice, "control.txt", "T04")),
            "control.txt, line 3: T04 stands there again with other numbers; keep one of its lines");
}

TEST(FileRefusalText, OfPosesToStartFrom) {
  const auto start = [](const char* cause) {
    Refusal refusal = ofLine(RefusalKind::startNotRead, "p.json", "S2");
    refusal.cause = cause;
    return textOf(refusal);
  };
  const std::string remedy = "; name a file that --transforms wrote";
  EXPECT_EQ(start("json"), "p.json, line 3: this isn't JSON" + remedy);
  EXPECT_EQ(start("number"), "p.json: a number in it is too great" + remedy);
  EXPECT_EQ(start("groups"), "p.json: there is no list \"groups\"" + remedy);
  EXPECT_EQ(start("name"), "p.json: entry 3 of \"groups\" has no name" + remedy);
  EXPECT_EQ(start("twice"), "p.json: S2 has two poses" + remedy);
  EXPECT_EQ(start("registered"), "p.json: S2 doesn't say whether it is \"registered\"" + remedy);
  EXPECT_EQ(start("rotation"), "p.json: the \"rotation\" of S2 isn't three rows of three finite numbers" + remedy);
  EXPECT_EQ(start("translation"), "p.json: the \"translation\" of S2 isn't three finite numbers" + remedy);
  EXPECT_EQ(start("improper"), "p.json: the \"rotation\" of S2 mirrors, or isn't a rotation to 1e-6" + remedy);
}

TEST(FileRefusalText, OfACloudsFileIsTheCause) {
  Refusal refusal = ofFile(RefusalKind::cloudFile);
  refusal.cause = "S1.xyz: line 3 has no coordinates";
  EXPECT_EQ(textOf(refusal), "S1.xyz: line 3 has no coordinates");
}

// --- Files that are written.

TEST(FileRefusalText, OfAFolderThatThereIsnt) {
  Refusal refusal = ofTarget(RefusalKind::noFolder, Field::report, "there/out.html");
  refusal.other = "there";
  EXPECT_EQ(textOf(refusal), "--report there/out.html: there is no folder there; create it first");
}

TEST(FileRefusalText, OfAFolderThatCantBeMade) {
  Refusal refusal = ofTarget(RefusalKind::folderNotMade, Field::matrices, "/proc/m");
  refusal.cause = "No such file or directory";
  EXPECT_EQ(textOf(refusal), "--matrices /proc/m: the folder can't be created: No such file or directory");
}

TEST(FileRefusalText, OfATargetThatIsAFolder) {
  EXPECT_EQ(textOf(ofTarget(RefusalKind::targetIsFolder)), "--report: out.html: this is a folder; name a file in it");
}

TEST(FileRefusalText, OfATargetThatIsADevice) {
  EXPECT_EQ(textOf(ofTarget(RefusalKind::targetNotOrdinary, Field::report, "/dev/null")),
            "--report: /dev/null: not an ordinary file; choose another path");
}

TEST(FileRefusalText, OfATargetThatIsRead) {
  EXPECT_EQ(textOf(ofTarget(RefusalKind::targetIsRead, Field::transforms, "S1.txt")),
            "--transforms: S1.txt: this command reads that file; choose another path");
}

TEST(FileRefusalText, OfATargetThatExists) {
  EXPECT_EQ(textOf(ofTarget(RefusalKind::targetExists)), "--report: out.html: the file exists; --force replaces it");
}

TEST(FileRefusalText, OfAFileInTheFolderThatWasGiven) {
  Refusal refusal = ofTarget(RefusalKind::targetExists, Field::matrices, "out");
  refusal.name = "out/S1.txt";
  EXPECT_EQ(textOf(refusal), "--matrices out: out/S1.txt: the file exists; --force replaces it");
}

TEST(FileRefusalText, OfTwoOptionsThatWriteOneFile) {
  Refusal refusal = ofTarget(RefusalKind::sameTarget);
  refusal.otherField = Field::transforms;
  EXPECT_EQ(textOf(refusal), "--report and --transforms: both would write out.html; give them different files");
}

TEST(FileRefusalText, OfNamesThatNoFileCanHave) {
  Refusal refusal = ofTarget(RefusalKind::nameNotPortable, Field::commonPoints, "CON");
  refusal.name = "CON.txt";
  EXPECT_EQ(textOf(refusal), "--common-points CON: \"CON.txt\" isn't a valid file name on every system");
  refusal = ofTarget(RefusalKind::groupNotPortable, Field::matrices, "out");
  refusal.name = "S1?";
  EXPECT_EQ(textOf(refusal), "--matrices out: no file can be named after the group S1?; rename the group");
}

TEST(FileRefusalText, OfCopiesOfOneName) {
  EXPECT_EQ(textOf(ofTarget(RefusalKind::copiesCollide, Field::moved, "S1.xyz")),
            "S1.xyz: two clouds have files of this name; rename one of them");
}

TEST(FileRefusalText, OfAFileThatCouldntBeWritten) {
  Refusal refusal = ofTarget(RefusalKind::notWritten);
  refusal.cause = "out.html: No space left on device";
  EXPECT_EQ(textOf(refusal), "--report: out.html: No space left on device");
}

TEST(FileRefusalText, OfWhatTheModuleHasntWrittenWhole) {
  EXPECT_EQ(textOf(ofTarget(RefusalKind::commonPointsNotOpened)), "out.html: the common points can't be written");
  EXPECT_EQ(textOf(ofTarget(RefusalKind::commonPointsCutShort)),
            "out.html: the common points can't be written completely; is the disk full?");
  EXPECT_EQ(textOf(ofTarget(RefusalKind::matrixCutShort)),
            "out.html: the module didn't write this matrix, or not completely; is the disk full?");
  EXPECT_EQ(textOf(ofTarget(RefusalKind::reportCutShort)),
            "out.html: the module didn't write this report, or not completely; is the disk full?");
}

TEST(FileRefusalText, OfTheFolderForTemporaryFiles) {
  Refusal refusal = ofTarget(RefusalKind::noTemporaryFolder);
  refusal.cause = "Permission denied";
  EXPECT_EQ(textOf(refusal), "the folder for temporary files can't be used: Permission denied; set TMPDIR");
}

TEST(FileRefusalText, IsWhatIsToldOfARefusalOfItsKind) {
  for (const RefusalKind kind : {RefusalKind::pathNotUtf8, RefusalKind::reportCutShort}) {
    EXPECT_EQ(refusalText(ofTarget(kind)), textOf(ofTarget(kind)));
  }
}

}  // namespace
}  // namespace tiepoint::workbench
