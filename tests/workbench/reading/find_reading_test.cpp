#include "workbench/reading/find_reading.h"

#include <gtest/gtest.h>

#include "workbench/reading/byte_sources.h"
#include "workbench/reading/file_head.h"
#include "workbench/reading/header_columns.h"
#include "workbench/reading/outcome_text.h"

namespace {

using namespace tiepoint::workbench;
using tiepoint::testing::bytesInPieces;
using tiepoint::testing::noneText;
using tiepoint::testing::readingText;

FoundReadings found(const std::string& bytes, const ReadingRequest& request = {}) {
  TextLines lines(bytesInPieces(bytes), request.encoding);
  return findReadings(lookAtHead(lines).head, request);
}

std::string foundText(const std::string& bytes, const ReadingRequest& request = {}) {
  const FoundReadings readings = found(bytes, request);
  if (readings.candidates.empty()) return "none: " + noneText(readings.none);
  std::string text;
  for (const CandidateReading& candidate : readings.candidates) {
    text += (text.empty() ? "" : " or ") + readingText(candidate.lines);
  }
  return text;
}

ReadingRequest asking(const std::string& columns) {
  ReadingRequest request;
  request.columns = std::get<ColumnRequest>(columnRequestOf(columns));
  return request;
}

struct Row {
  const char* bytes;
  const char* found;
};

template <std::size_t count>
void expectAll(const Row (&rows)[count], const ReadingRequest& request = {}) {
  for (const Row& row : rows) EXPECT_EQ(foundText(row.bytes, request), row.found) << row.bytes;
}

TEST(FoundReadings, PreferASingleSeparatorToBlanksAndBlanksToAMixture) {
  const Row rows[] = {
      {"P 1;1;2;3\n", "semicolon name,x,y,z"}, {"P 1\t1\t2\t3\n", "tab name,x,y,z"},
      {"P 1,1,2,3\n", "comma name,x,y,z"},     {"P 1,5 2,5 3,5\n", "blank decimal-comma name,x,y,z"},
      {"P  1\t2 3\n", "blank name,x,y,z"},     {"P 1, 2; 3\n", "mixed name,x,y,z"},
  };
  expectAll(rows);
}

TEST(FoundReadings, AreTheColumnsThatTheNumberOfFieldsTells) {
  const Row rows[] = {
      {"1;2;3\n", "semicolon x,y,z"},
      {"A;1;2;3\n", "semicolon name,x,y,z"},
      {"7;1;2;3\n", "semicolon name,x,y,z or semicolon x,y,z,w or semicolon x,y,z,-"},
      {"007;1;2;3\n1e5;1;2;3\n", "semicolon name,x,y,z or semicolon x,y,z,w or semicolon x,y,z,-"},
      {"7;1;2;3\nA;1;2;3\n", "semicolon name,x,y,z"},
      {"nan;1;2;3\n", "semicolon name,x,y,z"},
      {"A;1;2;3;4\n", "semicolon name,x,y,z,w or semicolon name,x,y,z,-"},
      {"1;2;3;4;5\n", "semicolon name,x,y,z,w or semicolon name,x,y,z,-"},
      {"1;2\n", "none: too few fields in line 1: 2"},
      {"A;1;2\n", "none: nothing fits in line 1: 1.1 no-number 'A'"},
      {"1;2;3;4;5;6\n", "none: too many fields in line 1: 6"},
      {"A;1;2;3;4;5;6;7;8\n", "none: too many fields in line 1: 9"},
      {"A;1;2;3;wall\n", "none: nothing fits in line 1: 1.5 no-number 'wall'"},
  };
  expectAll(rows);
}

// They could be numbers of points, northings and eastings without a height.
TEST(FoundReadings, AreSeveralForThreeNumbersAndAnEmptyField) {
  const Row rows[] = {
      {"7;10;20;\n8;11;21;\n", "semicolon x,y,z or semicolon name,x,y,z"},
      {"7,10,20,,\n", "comma x,y,z or comma name,x,y,z"},
      {"7\t10\t20\t\n", "tab x,y,z or tab name,x,y,z"},
      {"7;10;20\n8;11;21;\n", "semicolon x,y,z or semicolon name,x,y,z"},
      {"7 10 20 \n", "blank x,y,z"},
      {"A;7;10;20;\n", "semicolon name,x,y,z"},
      {"X;Y;Z\n7;10;20;\n", "semicolon x,y,z"},
  };
  expectAll(rows);
  EXPECT_EQ(foundText("7;10;20;\n", asking("x,y,z")), "semicolon x,y,z");
}

// With the blank in the name as a separator, each of these would be the point P at 1, 10, 20.
TEST(FoundReadings, HideNoMissingCoordinateBehindABlankInAName) {
  const Row rows[] = {
      {"Name;X;Y;Z\nP 1;10;20;\n", "semicolon name,x,y,z"},
      {"Name;X;Y;Z\nP 1;10;20\n", "semicolon name,x,y,z"},
      {"Name,X,Y,Z\nP 1,10,20\nP 2,11,21\n", "comma name,x,y,z"},
      {"Name\tX\tY\tZ\nP 1\t10\t20\t\n", "tab name,x,y,z"},
      {"Name\tX\tY\tZ\tW\nP 1\t\t20\t30\t5\n", "tab name,x,y,z,w"},
      {"Name;X;Y;Z\nA;100;200,5;\n", "semicolon name,x,y,z"},
      {"# Name;X;Y;Z\nP 1;10;20;\n", "semicolon name,x,y,z"},
      {"P 1;10;20;\n", "none: nothing fits in line 1: 1.1 no-number 'P 1'"},
  };
  expectAll(rows);
  const Row asked[] = {
      {"P 1;10;20;\n", "semicolon name,x,y,z"},
      {"P 1\t10\t20\t\n", "tab name,x,y,z"},
      {"P 1,10,,20\n", "comma name,x,y,z"},
  };
  expectAll(asked, asking("name,x,y,z"));
}

TEST(FoundReadings, DivideOtherwiseThanTheHeaderWhereItsSeparatorDividesNothing) {
  const Row rows[] = {
      {"Name;X;Y;Z\nA,1,2,3\n", "mixed name,x,y,z"},
      {"Name,X,Y,Z\nA 1 2 3\n", "mixed name,x,y,z"},
      {"Name X Y Z\nA, 1, 2, 3\n", "mixed name,x,y,z"},
      {"Name\tX\tY\tZ\nA\t\t1\t2\t3\nBench\t1\t2\t3\n", "blank name,x,y,z"},
  };
  expectAll(rows);
  EXPECT_EQ(foundText("A 1,5 2,5 3,5\n", asking("name,x,y,z")), "blank decimal-comma name,x,y,z");
}

TEST(FoundReadings, TakeTwoDimensionsWithDecimalCommasForNoPoints) {
  const Row rows[] = {
      {"1,5;2\n3,7;4\n", "none: too few fields in line 1: 2"},
      {"1,5 2\n", "none: too few fields in line 1: 2"},
      {"X Y\n1,5 2\n", "none: too few fields in line 2: 2"},
  };
  expectAll(rows);
}

TEST(FoundReadings, FollowTheSeparatorThatTheFileSays) {
  const Row rows[] = {
      {"sep=;\nA;1,5;2;3\n", "semicolon decimal-comma name,x,y,z"},
      {"sep=,\nP 1,1,2,3\n", "comma name,x,y,z"},
      {"sep=;\nA,1,2,3\n", "none: too few fields in line 2: 1"},
      {"sep=;\nA 1 2 3\n", "none: too few fields in line 2: 1"},
  };
  expectAll(rows);
}

TEST(FoundReadings, ReadNoRunsOfTabsUnderColumnsByNumber) {
  EXPECT_EQ(foundText("A 1 2 3 wall\n", asking("name=1,x=2,y=3,z=4")), "blank name,x,y,z,...");
  EXPECT_EQ(foundText("A 1\t2 3\n", asking("name=1,x=2,y=3,z=4")), "semicolon name,x,y,z,...");
}

TEST(FoundReadings, TellWhichColumnsCannotBeHad) {
  EXPECT_EQ(foundText("Ziel X Y Z\nA 1 2 3\n", asking("name=Punkt,x=X,y=Y,z=Z")),
            "none: columns in line 1: word not in header 'Punkt'");
  EXPECT_EQ(foundText("A;1;2;3\n", asking("name=Ziel,x=X,y=Y,z=Z")), "none: columns: word not in header 'Ziel'");
  EXPECT_EQ(foundText("Name;X;Y;Z\n"), "none: no lines in line 1");
}

TEST(FoundReadings, SayWhereTheDataBegin) {
  const auto only = [](const std::string& bytes) { return found(bytes).candidates.at(0); };
  EXPECT_EQ(only("A;1;2;3\n").firstData, 0u);
  EXPECT_TRUE(only("A;1;2;3\n").header.empty());
  EXPECT_EQ(only("Name;X;Y;Z\nA;1;2;3\n").firstData, 1u);
  EXPECT_EQ(only("; hall\nName X Y Z\nA 1 2 3\n").firstData, 2u);
  const CandidateReading commented = only("; Name N E H\nA 2 1 3\n");
  EXPECT_EQ(commented.firstData, 0u);
  EXPECT_TRUE(commented.headerIsComment);
  EXPECT_EQ(commented.header, (std::vector<std::string>{"Name", "N", "E", "H"}));
}

TEST(FoundReadings, OfHalfTheLinesAreEnough) {
  EXPECT_EQ(foundText("A 1 2 3\nB 1 2\n"), "blank name,x,y,z");
  EXPECT_EQ(foundText("A 1 2 3\nB 1 2\nC 1 2\n"), "none: nothing fits in line 2: 2 count '3' not 4");
  EXPECT_EQ(foundText("Name X Y Z\nA 1 2 3\nB 1 2\nC 1 2\n"), "blank name,x,y,z") << "a header says what is wanted";
}

}  // namespace
