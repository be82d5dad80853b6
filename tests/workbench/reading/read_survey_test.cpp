#include "workbench/reading/read_survey.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "workbench/reading/byte_sources.h"
#include "workbench/reading/header_columns.h"
#include "workbench/reading/outcome_text.h"

namespace {

using namespace tiepoint::workbench;
using tiepoint::testing::bytesInPieces;
using tiepoint::testing::outcomeText;
using tiepoint::testing::readBytes;

ReadingRequest withColumns(const std::string& text) {
  ReadingRequest request;
  request.columns = std::get<ColumnRequest>(columnRequestOf(text));
  return request;
}

std::string outcome(const std::string& bytes, const ReadingRequest& request = {}) {
  return outcomeText(readBytes(bytes, request));
}

TEST(ReadSurvey, TellsWhatTheFileWasReadAs) {
  const ReadSurvey survey = readBytes(
      "\xEF\xBB\xBF# hall\r\nPunkt;Rechtswert;Hochwert;Höhe\r\n\r\nT 1;1,5;2,25;3\r\n// end\r\nT 2;1;2;3\r\n");
  EXPECT_EQ(outcomeText(survey), "UTF-8 semicolon decimal-comma name,x,y,z | T 1 1.5 2.25 3 | T 2 1 2 3");
  const FileReading& reading = survey.reading;
  EXPECT_TRUE(reading.hasMark);
  EXPECT_EQ(reading.header, (std::vector<std::string>{"Punkt", "Rechtswert", "Hochwert", "Höhe"}));
  EXPECT_FALSE(reading.headerIsComment);
  EXPECT_EQ(reading.lineCount, 6u);
  EXPECT_EQ(reading.pointCount, 2u);
  EXPECT_EQ(reading.commentCount, 2u);
  EXPECT_EQ(reading.blankCount, 1u);
  EXPECT_EQ(survey.points[1].line, 6u);
}

TEST(ReadSurvey, HonoursNorthingBeforeEasting) {
  EXPECT_EQ(outcome("Pt,N,E,H\nA,2,1,3\n"), "ASCII comma name,y,x,z | A 1 2 3");
}

TEST(ReadSurvey, HonoursAHeaderInAComment) {
  const ReadSurvey survey = readBytes("# Pt N E H\nA 2 1 3\n");
  EXPECT_EQ(outcomeText(survey), "ASCII blank name,y,x,z | A 1 2 3");
  EXPECT_TRUE(survey.reading.headerIsComment);
  EXPECT_EQ(outcome("# Pt N E H\nA,2,1,3\n"), "ASCII comma name,y,x,z | A 1 2 3");
}

TEST(ReadSurvey, TakesACommentThatIsNoWholeHeaderForAComment) {
  EXPECT_EQ(outcome("# N E of the hall\nA 2 1 3\n"), "ASCII blank name,x,y,z | A 2 1 3");
  EXPECT_EQ(outcome("# Pt N E H code\nA 2 1 3\n"), "ASCII blank name,x,y,z | A 2 1 3");
}

TEST(ReadSurvey, AsksWhereNumbersAloneDontTellTheColumns) {
  EXPECT_EQ(outcome("# hall\n1 2 3 4\n"), "ambiguous: blank name,x,y,z blank x,y,z,w blank x,y,z,-");
  EXPECT_EQ(outcome("# hall\nA 2 3 4 5\n"), "ambiguous: blank name,x,y,z,w blank name,x,y,z,-");
}

TEST(ReadSurvey, TakesTheColumnsThatTheUserNames) {
  EXPECT_EQ(outcome("1 2 3 4\n", withColumns("name,x,y,z")), "ASCII blank name,x,y,z | 1 2 3 4");
  EXPECT_EQ(outcome("1 2 3 4\n", withColumns("x,y,z,w")), "ASCII blank x,y,z,w | ? 1 2 3 w4");
  EXPECT_EQ(outcome("A;9;2;1;3;0.01;0.02\n", withColumns("name=1,e=4,n=3,h=5")),
            "ASCII semicolon name,-,y,x,z,... | A 1 2 3");
  EXPECT_EQ(outcome("Ziel;Code;Ost;Nord;Alt\nA;9;1;2;3\n", withColumns("name=Ziel,x=ost,y=nord,z=alt")),
            "ASCII semicolon name,-,x,y,z,... | A 1 2 3");
}

// As runs of blanks the tabs would hide the empty field, and every number behind it would move up.
TEST(ReadSurvey, LosesNoEmptyFieldWhereFurtherColumnsMayFollow) {
  EXPECT_EQ(outcome("A\t1\t\t3\t0.01\n", withColumns("name=1,x=2,y=3,z=4")), "faulty 1: 1.3 no-number");
  EXPECT_EQ(outcome("A,1,,3,0.01\n", withColumns("name=1,x=2,y=3,z=4")), "faulty 1: 1.3 no-number");
}

TEST(ReadSurvey, SkipsAHeaderAboveColumnsThatTheUserNames) {
  EXPECT_EQ(outcome("a;b;c;d\nA;1;2;3\n", withColumns("name,y,x,z")), "ASCII semicolon name,y,x,z | A 2 1 3");
}

TEST(ReadSurvey, AsksWhereEveryCommaCouldStandBetweenThousands) {
  EXPECT_EQ(outcome("A 1,234 5,678 9,012\n"), "ambiguous commas");
  EXPECT_EQ(outcome("A 1,234 5,678 9,012\nB 1,234 5,678 0,012\n"),
            "ASCII blank decimal-comma name,x,y,z | A 1.234 5.6779999999999999 9.0120000000000005 | B 1.234 "
            "5.6779999999999999 0.012");
  ReadingRequest request;
  request.decimal = DecimalMark::comma;
  EXPECT_EQ(outcome("A 1,5 5,625 9,125\n", request), "ASCII blank decimal-comma name,x,y,z | A 1.5 5.625 9.125");
  EXPECT_EQ(outcome("A 1,125 5,625 9,125\n", request), "ASCII blank decimal-comma name,x,y,z | A 1.125 5.625 9.125");
}

TEST(ReadSurvey, FindsTheProofOfADecimalCommaBehindTheLook) {
  std::string lines;
  for (int i = 0; i < 3000; ++i) lines += "A 1,125 5,625 9,125\n";
  EXPECT_EQ(outcome(lines), "ambiguous commas");
  EXPECT_EQ(readBytes(lines + "B 0,5 1 1\n").status, ReadStatus::read);
}

TEST(ReadSurvey, AsksForTheEncodingOnlyWhereNamesNeedIt) {
  EXPECT_EQ(outcome("A;1,5;2;3\n# \xD2\n"), "ASCII semicolon decimal-comma name,x,y,z | A 1.5 2 3");
  EXPECT_EQ(outcome("\xD2"
                    "1;1,5;2;3\n"),
            "ambiguous encoding: windows-1251 windows-1252");
  EXPECT_EQ(outcome("Name;X;Y;Z;Code\nA;1;2;3;\xD2\n"), "ASCII semicolon name,x,y,z,- | A 1 2 3");
  ReadingRequest request;
  request.encoding = TextEncoding::windows1251;
  EXPECT_EQ(outcome("\xD2"
                    "1;1,5;2;3\n",
                    request),
            "windows-1251 semicolon decimal-comma name,x,y,z | Т1 1.5 2 3");
  request.encoding = TextEncoding::windows1252;
  EXPECT_EQ(outcome("\xD2"
                    "1;1,5;2;3\n",
                    request),
            "windows-1252 semicolon decimal-comma name,x,y,z | Ò1 1.5 2 3");
}

TEST(ReadSurvey, KnowsTheEncodingByTheHeader) {
  EXPECT_EQ(outcome("\xC8\xEC\xFF;X;Y;Z\n\xD2"
                    "1;1;2;3\n"),
            "windows-1251 semicolon name,x,y,z | Т1 1 2 3");
  EXPECT_EQ(outcome("Nr;X;Y;H\xF6he\n\xC4"
                    "1;1;2;3\n"),
            "windows-1252 semicolon name,x,y,z | Ä1 1 2 3");
}

TEST(ReadSurvey, GivesMetres) {
  ReadingRequest request;
  const struct {
    LengthUnit unit;
    double x;
  } rows[] = {{LengthUnit::metre, 1000.0},
              {LengthUnit::millimetre, 1.0},
              {LengthUnit::foot, 304.8},
              {LengthUnit::usSurveyFoot, 1200000.0 / 3937.0}};
  for (const auto& row : rows) {
    request.unit = row.unit;
    const ReadSurvey survey = readBytes("Name,X,Y,Z,W\nA,1000,0,0,0.5\n", request);
    ASSERT_EQ(survey.points.size(), 1u);
    EXPECT_EQ(survey.points[0].x, row.x);
    EXPECT_EQ(survey.points[0].w, 0.5) << "a weight has no unit";
  }
}

TEST(ReadSurvey, TellsEveryFaultUpToABound) {
  EXPECT_EQ(outcome("Name X Y Z\nA 1 2 3\nB 1 2\nC 1 x 3\nD 1 2 3\nE 1 2 3 4\n"),
            "faulty 3: 3 count '3' not 4 4.3 no-number 'x' 6 count '5' not 4");
  std::string lines = "Name X Y Z\nA 1 2 3\n";
  for (int i = 0; i < 1000; ++i) lines += "A 1 2 x\n";
  const ReadSurvey survey = readBytes(lines);
  EXPECT_EQ(survey.status, ReadStatus::faulty);
  EXPECT_EQ(survey.faultCount, 1000u);
  EXPECT_EQ(survey.faults.size(), mostFaults);
  EXPECT_EQ(survey.faults.back().line, 22u);
  EXPECT_TRUE(survey.points.empty());
}

TEST(ReadSurvey, TellsFaultsOfNamesInTheOrderOfTheLines) {
  EXPECT_EQ(outcome("\xEF\xBB\xBFName;X;Y;Z\n\xD2;1;2;3\nB;1;2;x\n"), "faulty 2: 2 bad-encoding '�' 3.4 no-number 'x'");
}

TEST(ReadSurvey, NeedsNoMoreThanHalfOfTheLinesToSayWhatIsWrongWithTheOthers) {
  EXPECT_EQ(outcome("A 1 2 3\nB 1 2\n"), "faulty 1: 2 count '3' not 4");
  EXPECT_EQ(outcome("A 1 2 3\nB 1 2\nC 1\n"), "none: nothing fits in line 2: 2 count '3' not 4");
}

TEST(ReadSurvey, ReadsTheSameInPiecesOfAnySize) {
  const std::string bytes = "\xEF\xBB\xBFName;X;Y;Z\r\n\"Höhe; 1\";1,5;2,5;3,5\r\nТ2;1;2;3\r\n";
  for (const std::size_t piece : {1u, 2u, 3u, 5u, 7u}) {
    EXPECT_EQ(outcomeText(readSurvey(bytesInPieces(bytes, piece), {})),
              "UTF-8 semicolon decimal-comma name,x,y,z | Höhe; 1 1.5 2.5 3.5 | Т2 1 2 3");
  }
}

TEST(ReadSurvey, LooksPastAnyNumberOfComments) {
  std::string comments;
  for (int i = 0; i < 5000; ++i) comments += "# comment\n\n";
  const ReadSurvey survey = readBytes(comments + "Name,N,E,Z\nA,2,1,3\n");
  EXPECT_EQ(outcomeText(survey), "ASCII comma name,y,x,z | A 1 2 3");
  EXPECT_EQ(survey.reading.commentCount, 5000u);
  EXPECT_EQ(survey.reading.blankCount, 5000u);
}

TEST(ReadSurvey, LetsAnErrorOfTheSourceThrough) {
  const ByteSource broken = [](char*, std::size_t) -> std::size_t { throw std::runtime_error("disk"); };
  EXPECT_THROW(readSurvey(broken, {}), std::runtime_error);
}

}  // namespace
