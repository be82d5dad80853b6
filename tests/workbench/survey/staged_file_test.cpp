#include "workbench/survey/staged_file.h"

#include <gmock/gmock.h>

#include "workbench/temporary_folder.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class StagedFiles : public testing::Test {
 protected:
  /// A file of those bytes, which the module reads from the first line to the last or doesn't.
  SurveyFile file(const std::string& bytes, bool moduleReadsAll = false, bool layoutIsNamed = false) {
    const std::string path = folder.file("S1.csv");
    writeBytes(path, bytes);
    return {path, "S1", Layout::nxyz, layoutIsNamed, moduleReadsAll, surveyFile(path)};
  }

  std::optional<StagedFile> stage(const SurveyFile& survey, const ReadingRequest& request = {}) {
    return stageSurvey(survey, request, staging);
  }

  /// What the module is to read; empty when the file goes to it as it is.
  std::string staged(const SurveyFile& survey, const ReadingRequest& request = {}) {
    if (!stage(survey, request)) return "";
    return staging->content("S1.txt");
  }

  Refusal refusal(const std::string& bytes, const ReadingRequest& request = {}) {
    try {
      stage(file(bytes), request);
    } catch (const Refused& refused) {
      return refused.refusal();
    }
    ADD_FAILURE() << "not refused";
    return {};
  }

  TemporaryFolder folder;
  std::shared_ptr<StagingFolder> staging;
};

TEST_F(StagedFiles, OfWhatTheModuleReadsAreNone) {
  EXPECT_FALSE(stage(file("P1 1 2 3\n", true)).has_value());
  EXPECT_EQ(staging, nullptr) << "no folder is made for nothing";
}

TEST_F(StagedFiles, HoldThePointsInALayoutOfTheModule) {
  const auto one = stage(file("Name;X;Y;Z\nP1;1,5;2;3\nP2;4;5,25;6\n"));
  ASSERT_TRUE(one.has_value());
  EXPECT_EQ(one->layout, Layout::nxyz);
  EXPECT_EQ(staging->content("S1.txt"), "P1 1.5 2 3\nP2 4 5.25 6\n");
  EXPECT_EQ(one->reading.pointCount, 2u);
  EXPECT_EQ(one->reading.lines.separator, Separator::semicolon);
  EXPECT_EQ(one->reading.lines.decimal, DecimalMark::comma);
  EXPECT_THAT(one->reading.header, ElementsAre("Name", "X", "Y", "Z"));
  EXPECT_EQ(one->path, staging->file("S1.txt"));
}

TEST_F(StagedFiles, HaveWeightsOnlyWhereTheFileHas) {
  const auto one = stage(file("Name;X;Y;Z;W\nP1;1;2;3;0,5\nP2;4;5;6;1\n"));
  ASSERT_TRUE(one.has_value());
  EXPECT_EQ(one->layout, Layout::nxyzw);
  EXPECT_EQ(staging->content("S1.txt"), "P1 1 2 3 0.5\nP2 4 5 6 1\n");
}

TEST_F(StagedFiles, CarryNamesThatTheModuleLacksUnderStandIns) {
  EXPECT_EQ(staged(file("H\xC3\xB6he 1;1.5;2.5;3.5\n")), "H_x00F6_he_x0020_1 1.5 2.5 3.5\n");
}

TEST_F(StagedFiles, ArentMadeOfANamedLayoutThatDoesntFit) {
  EXPECT_EQ(staged(file("Name;X;Y;Z\nP1;1,5;2;3\n", false, true)), "");
}

TEST_F(StagedFiles, SaveTheLettersOfAFileInALayoutOfTheModule) {
  EXPECT_EQ(staged(file("\xC3\x84 1 2 3\n", true)), "_x00C4_ 1 2 3\n");
  EXPECT_EQ(staged(file("\xC3\x84 1 2 3\n", true, true)), "_x00C4_ 1 2 3\n") << "the user has named the layout";
  EXPECT_EQ(staged(file("\xEF\xBB\xBFP1 1 2 3\n", true)), "P1 1 2 3\n");
  EXPECT_EQ(staged(file("_x0020_ 1 2 3\n", true)), "_x005F_x0020_ 1 2 3\n");
}

TEST_F(StagedFiles, LeaveBytesThatMayBeWindows1251AsTheyAre) {
  EXPECT_EQ(staged(file("\xCF\xF3\xED\xEA\xF2 1 2 3\n", true)), "") << "windows-1251 without a doubt";
  EXPECT_EQ(staged(file("\xD2\x31 1 2 3\n", true)), "") << "windows-1251 or windows-1252";
}

TEST_F(StagedFiles, ArentMadeWhereTheModuleWouldReadADecimalCommaAsTwoNumbers) {
  SurveyFile survey = file("10;20;30,25\n11;21;31,5\n", true);
  try {
    stage(survey);
    ADD_FAILURE() << "not refused";
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::fileAmbiguous);
    EXPECT_EQ(refused.refusal().reading->candidates.size(), 2u) << "as NXYZ, and as x y z";
  }
  survey.layoutIsNamed = true;
  EXPECT_EQ(staged(survey), "") << "the user has named the layout";
  EXPECT_EQ(staged(file("P1, 1.5, 2, 3\nP2;4;5;6\n", true)), "") << "no comma stands between digits";
}

TEST_F(StagedFiles, ArentMadeWhereTheModuleWouldStepOverAnEmptyField) {
  EXPECT_THROW(stage(file("T01,12.1,11.2,,101\n", true)), Refused);
}

TEST_F(StagedFiles, LeaveOutCommentsAndQuotesWithoutANamedLayout) {
  EXPECT_EQ(staged(file("P1 1 2 3\n #P2 4 5 6\n", true)), "P1 1 2 3\n");
  EXPECT_EQ(staged(file("\"P1\" 1 2 3\n", true)), "P1 1 2 3\n");
  EXPECT_EQ(staged(file("#P1 1 2 3\n", true, true)), "") << "a name, in a named layout";
  EXPECT_EQ(staged(file("P#1 1 2 3\n", true)), "") << "no comment";
}

TEST_F(StagedFiles, CarryTheGroupsNameUnderAStandInToo) {
  SurveyFile survey = file("P1 1 2 3\n", true);
  survey.group = "\xE6\xB8\xAC";
  const auto one = stage(survey);
  ASSERT_TRUE(one.has_value());
  EXPECT_EQ(one->path, staging->file("_x6E2C_.txt"));
}

TEST_F(StagedFiles, HoldMetresWhenAnotherUnitIsAskedFor) {
  ReadingRequest request;
  request.unit = LengthUnit::foot;
  EXPECT_EQ(staged(file("P1 10 0 -1\n", true), request), "P1 3.048 0 -0.3048\n");
  request.unit = LengthUnit::metre;
  EXPECT_EQ(staged(file("P1 10 0 -1\n", true), request), "") << "they are metres already";
}

TEST_F(StagedFiles, AreMadeByTheColumnsThatTheUserNames) {
  ReadingRequest request;
  request.columns.emplace();
  request.columns->columns.roles = {ColumnRole::skipped, ColumnRole::name, ColumnRole::y, ColumnRole::x, ColumnRole::z};
  EXPECT_EQ(staged(file("1 P1 2 1.5 -3\n"), request), "P1 1.5 2 -3\n");
}

TEST_F(StagedFiles, ArentMadeOfAnAmbiguousFile) {
  const Refusal ambiguous = refusal("1;2;3;4\n5;6;7;8\n");
  EXPECT_EQ(ambiguous.kind, RefusalKind::fileAmbiguous);
  EXPECT_EQ(ambiguous.field, Field::files);
  EXPECT_EQ(ambiguous.given, folder.file("S1.csv"));
  ASSERT_TRUE(ambiguous.reading.has_value());
  EXPECT_EQ(ambiguous.reading->status, ReadStatus::ambiguousColumns);
  EXPECT_EQ(ambiguous.reading->candidates.size(), 3u) << "a name first, or a weight or a deviation last";
  EXPECT_EQ(refusal("P1;1,234;5,678;9,012\n").reading->status, ReadStatus::ambiguousCommas);
}

TEST_F(StagedFiles, ArentMadeOfAnEncodingThatIsOpen) {
  const Refusal ambiguous = refusal("\xD2\x31;1.5;2.5;3.5\n");
  EXPECT_EQ(ambiguous.kind, RefusalKind::fileAmbiguous);
  ASSERT_TRUE(ambiguous.reading.has_value());
  EXPECT_THAT(ambiguous.reading->encodings, ElementsAre(TextEncoding::windows1251, TextEncoding::windows1252));
  EXPECT_THAT(ambiguous.reading->samples, ElementsAre("Т1", "Ò1"));
}

TEST_F(StagedFiles, ArentMadeOfAFileWithOneBadLine) {
  const Refusal faulty = refusal("P1;1;2;3\nP2;4;x;6\nP3;7;8;9\n");
  EXPECT_EQ(faulty.kind, RefusalKind::fileNotRead);
  ASSERT_TRUE(faulty.reading.has_value());
  EXPECT_EQ(faulty.reading->faultCount, 1u);
  ASSERT_EQ(faulty.reading->faults.size(), 1u);
  EXPECT_EQ(faulty.reading->faults[0].line, 2u);
  EXPECT_EQ(faulty.reading->faults[0].column, 3u);
  EXPECT_EQ(faulty.reading->faults[0].found, "x");
  EXPECT_EQ(staging, nullptr) << "nothing is written for it";
}

TEST_F(StagedFiles, ArentMadeAgainstAByteOrderMark) {
  ReadingRequest request;
  request.encoding = TextEncoding::windows1251;
  const Refusal contradicted = refusal("\xEF\xBB\xBFP1 1 2 3\n", request);
  EXPECT_EQ(contradicted.kind, RefusalKind::fileNotRead);
  EXPECT_EQ(contradicted.reading->status, ReadStatus::contradictedEncoding);
}

TEST_F(StagedFiles, ShareOneFolderThatGoesWithThem) {
  stage(file("P1;1.5;2;3\n"));
  const std::shared_ptr<StagingFolder> first = staging;
  stage(file("P1;1.5;2;3\n"));
  EXPECT_EQ(staging, first);
  EXPECT_THAT(staging->file("S1.txt"), StartsWith(staging->path()));
}

}  // namespace
}  // namespace tiepoint::workbench
