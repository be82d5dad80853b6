#include "workbench/survey/output_targets.h"

#include <gmock/gmock.h>

#include <filesystem>
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
namespace fs = std::filesystem;

class OutputTargets : public testing::Test {
 protected:
  OutputTargets() { writeBytes(there, "old"); }

  const TemporaryFolder folder;
  const std::string there = folder.file("there.txt"), missing = folder.file("missing.txt");
  const Replacing nothing{}, anything{{}, true};
};

TEST_F(OutputTargets, TheFolderOfATargetMustBeThere) {
  EXPECT_NO_THROW(requireFolder({Field::report, missing}));
  const std::string path = folder.file("no/such/report.html");
  const Refusal refusal = refusalOf([&] { requireFolder({Field::report, path}); });
  EXPECT_EQ(refusal.kind, RefusalKind::noFolder);
  EXPECT_EQ(refusal.field, Field::report);
  EXPECT_EQ(refusal.given, path);
  EXPECT_EQ(fs::path(refusal.other), fs::path(folder.file("no/such")));
}

TEST_F(OutputTargets, AFileIsNoFolderForATarget) {
  EXPECT_EQ(refusalOf([&] { requireFolder({Field::picture, there + "/map.png"}); }).kind, RefusalKind::noFolder);
}

TEST_F(OutputTargets, ATargetWithoutAFolderStandsInTheWorkingDirectory) {
  EXPECT_NO_THROW(requireFolder({Field::report, "report.html"}));
}

TEST_F(OutputTargets, AFileThatIsThereIsReplacedOnlyWhenForced) {
  EXPECT_NO_THROW(requireReplaceable(nothing, {Field::report, missing}));
  EXPECT_NO_THROW(requireReplaceable(anything, {Field::report, there}));
  const Refusal refusal = refusalOf([&] { requireReplaceable(nothing, {Field::report, there}); });
  EXPECT_EQ(refusal.kind, RefusalKind::targetExists);
  EXPECT_EQ(refusal.field, Field::report);
  EXPECT_EQ(refusal.given, there);
  EXPECT_EQ(refusal.name, "");
}

TEST_F(OutputTargets, ARefusalTellsWhatWasGivenWhereThatIsntThePath) {
  const OutputTarget target{Field::commonPoints, there, folder.file("there")};
  const Refusal refusal = refusalOf([&] { requireReplaceable(nothing, target); });
  EXPECT_EQ(refusal.given, folder.file("there"));
  EXPECT_EQ(refusal.name, there);
}

TEST_F(OutputTargets, AFolderIsNeverReplaced) {
  const Refusal refusal = refusalOf([&] { requireReplaceable(anything, {Field::transforms, folder.file("")}); });
  EXPECT_EQ(refusal.kind, RefusalKind::targetIsFolder);
}

TEST_F(OutputTargets, AFileThatTheRequestReadsIsNotEvenReplacedByForce) {
  const Replacing replacing{{"", missing, there}, true};
  const OutputTarget target{Field::report, there};
  EXPECT_EQ(refusalOf([&] { requireReplaceable(replacing, target); }).kind, RefusalKind::targetIsRead);
  EXPECT_EQ(refusalOf([&] { requireNotRead(replacing, target); }).kind, RefusalKind::targetIsRead);
}

TEST_F(OutputTargets, AFileThatTheRequestReadsIsKnownByAnotherSpelling) {
  const Replacing replacing{{folder.file("sub/../there.txt")}, true};
  fs::create_directory(folder.path() / "sub");
  EXPECT_EQ(refusalOf([&] { requireNotRead(replacing, {Field::report, there}); }).kind, RefusalKind::targetIsRead);
}

TEST_F(OutputTargets, OnlyWhatIsReadMattersToRequireNotRead) {
  EXPECT_NO_THROW(requireNotRead({{missing}, false}, {Field::moved, there}));
  EXPECT_NO_THROW(requireNotRead({{there}, false}, {Field::moved, missing}));
}

TEST_F(OutputTargets, TwoOfOneFileAreRefused) {
  EXPECT_NO_THROW(requireDifferent({{Field::report, there}, {Field::picture, missing}}));
  const std::string again = folder.file("sub/../missing.txt");
  fs::create_directory(folder.path() / "sub");
  const Refusal refusal = refusalOf([&] {
    requireDifferent({{Field::transforms, missing}, {Field::report, there}, {Field::picture, again}});
  });
  EXPECT_EQ(refusal.kind, RefusalKind::sameTarget);
  EXPECT_EQ(refusal.field, Field::transforms);
  EXPECT_EQ(refusal.otherField, Field::picture);
  EXPECT_EQ(refusal.given, again);
}

TEST_F(OutputTargets, FilesOfOneNameInTwoFoldersAreTwo) {
  EXPECT_NO_THROW(requireDifferent({{Field::report, folder.file("a/r")}, {Field::picture, folder.file("b/r")}}));
}

TEST_F(OutputTargets, AFolderIsMadeWithAllAboveIt) {
  makeFolder(Field::matrices, folder.file("a/b/c"));
  EXPECT_TRUE(fs::is_directory(folder.path() / "a" / "b" / "c"));
  EXPECT_NO_THROW(makeFolder(Field::matrices, folder.file("a/b/c"))) << "it is there";
}

TEST_F(OutputTargets, AFolderThatCantBeMadeIsToldWithItsCause) {
  const Refusal refusal = refusalOf([&] { makeFolder(Field::moved, there); });
  EXPECT_EQ(refusal.kind, RefusalKind::folderNotMade);
  EXPECT_EQ(refusal.field, Field::moved);
  EXPECT_EQ(refusal.given, there);
  const Refusal below = refusalOf([&] { makeFolder(Field::moved, there + "/sub"); });
  EXPECT_EQ(below.kind, RefusalKind::folderNotMade);
  EXPECT_NE(below.cause, "");
}

TEST_F(OutputTargets, AFileIsPutWhereThereIsNone) {
  putFile(nothing, {Field::report, missing}, "a\nb\n");
  EXPECT_EQ(readBytes(missing), "a\nb\n");
}

TEST_F(OutputTargets, AFileThatMayNotBeReplacedStaysAsItWas) {
  EXPECT_EQ(refusalOf([&] { putFile(nothing, {Field::report, there}, "new"); }).kind, RefusalKind::targetExists);
  EXPECT_EQ(readBytes(there), "old");
  putFile(anything, {Field::report, there}, "new");
  EXPECT_EQ(readBytes(there), "new");
}

TEST_F(OutputTargets, AFileThatCantBeWrittenIsToldWithItsCauseAndLeavesNothing) {
  const std::string path = folder.file("no/report.html");
  const Refusal refusal = refusalOf([&] { putFile(nothing, {Field::report, path}, "new"); });
  EXPECT_EQ(refusal.kind, RefusalKind::notWritten);
  EXPECT_EQ(refusal.field, Field::report);
  EXPECT_EQ(refusal.given, path);
  EXPECT_NE(refusal.cause, "");
  EXPECT_THAT(folder.names(), ElementsAre("there.txt"));
}

TEST_F(OutputTargets, PathsAreUtf8) {
  const std::string path = folder.file("отчёт.html");
  putFile(nothing, {Field::report, path}, "new");
  EXPECT_THAT(folder.names(), ElementsAre("there.txt", "отчёт.html"));
  EXPECT_EQ(refusalOf([&] { requireReplaceable(nothing, {Field::report, path}); }).kind, RefusalKind::targetExists);
}

// Windows keeps no pipes among its files, and makes links for administrators alone.
#ifndef _WIN32
TEST_F(OutputTargets, APipeIsNeverReplaced) {
  const std::string pipe = folder.file("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(refusalOf([&] {
              requireReplaceable(anything, {Field::report, pipe});
            }).kind,
            RefusalKind::targetNotOrdinary);
  EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(OutputTargets, ALinkToWhatTheRequestReadsIsThatFile) {
  const std::string link = folder.file("link.txt");
  fs::create_symlink(there, link);
  EXPECT_EQ(refusalOf([&] { putFile({{there}, true}, {Field::report, link}, "new"); }).kind, RefusalKind::targetIsRead);
  EXPECT_EQ(readBytes(there), "old");
}

TEST_F(OutputTargets, ALinkAndTheMissingFileBehindItAreTheSame) {
  const std::string link = folder.file("link.txt");
  fs::create_symlink("missing.txt", link);
  EXPECT_EQ(refusalOf([&] {
              requireDifferent({{Field::report, link}, {Field::picture, missing}});
            }).kind,
            RefusalKind::sameTarget);
}

TEST_F(OutputTargets, LinksThatLeadInACircleAreTakenAsTheyAre) {
  fs::create_symlink("b", folder.path() / "a");
  fs::create_symlink("a", folder.path() / "b");
  EXPECT_NO_THROW(requireDifferent({{Field::report, folder.file("a")}, {Field::picture, missing}}));
  EXPECT_EQ(refusalOf([&] {
              putFile(nothing, {Field::report, folder.file("a")}, "new");
            }).kind,
            RefusalKind::notWritten);
}

TEST_F(OutputTargets, TwoFilesInOneFolderOfTwoNamesAreTheSame) {
  fs::create_directory(folder.path() / "a");
  fs::create_directory_symlink(folder.path() / "a", folder.path() / "b");
  EXPECT_EQ(refusalOf([&] {
              requireDifferent({{Field::report, folder.file("a/r")}, {Field::picture, folder.file("b/r")}});
            }).kind,
            RefusalKind::sameTarget);
}
#endif

}  // namespace
}  // namespace tiepoint::workbench
