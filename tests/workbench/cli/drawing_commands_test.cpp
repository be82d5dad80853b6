// tiepoint import, groups and clouds, from the outside.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;

class DrawingCommands : public SurveyFiles {};

TEST_F(DrawingCommands, ImportMakesADrawingAndTellsWhatItTookIn) {
  const ProcessResult result = run({"import", "--document", "d", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_EQ(result.out,
            "Reference points\n"
            "  file         layout  lines  points  group\n"
            "  base.txt     NXYZ        4       4  base\n"
            "  shifted.txt  NXYZ        4       4  shifted\n"
            "  Found 2 files\n"
            "  Command complite. 2 groups of reference points loaded in document\n");
  EXPECT_TRUE(exists("d"));
}

TEST_F(DrawingCommands, AGroupThatIsThereIsKeptAndTold) {
  ASSERT_EQ(run({"import", "--document", "d", "base.txt"}).status, 0);
  write("base.txt", shiftedLines);
  const ProcessResult again = run({"import", "--document", "d", "base.txt", "shifted.txt"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err,
            "tiepoint: warning: base.txt: the drawing has a group \"base\" already; the file was not taken in\n"
            "tiepoint: 1 of 2 files not imported; the drawing already has their groups\n");
  EXPECT_THAT(again.out, HasSubstr("1 groups of reference points loaded"));
  const json groups = runJson({"groups", "--document", "d", "--points"})["groups"];
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(groups[0]["points"][1]["x"], 10.0);
}

TEST_F(DrawingCommands, TheLastEndingAloneIsTakenOffTheName) {
  write("scan.01.txt", baseLines);
  ASSERT_EQ(run({"import", "--document", "d", "scan.01.txt"}).status, 0);
  EXPECT_EQ(runJson({"groups", "--document", "d"})["groups"][0]["name"], "scan.01");
}

TEST_F(DrawingCommands, ImportInJsonHasTheSameFacts) {
  const json result = runJson({"import", "--document", "d", "base.txt"});
  EXPECT_EQ(result["files"][0],
            json::parse(R"({"path":"base.txt","layout":"NXYZ","group":"base","lines":4,"points":4,"stored":true,)"
                        R"("stoppedAt":null})"));
  EXPECT_EQ(result["messages"],
            json::parse(R"(["Found 1 files","Command complite. 1 groups of reference points loaded in document"])"));
}

TEST_F(DrawingCommands, GroupsAreListedWithTheirPoints) {
  write("mixed.txt", "1.25 2 3\n4 5 6e300\n");
  ASSERT_EQ(run({"import", "--document", "d", "base.txt", "--xyz", "mixed.txt"}).status, 0);
  EXPECT_EQ(run({"groups", "--document", "d"}).out,
            "  group  points  unnamed\n  base        4        0\n  mixed       2        2\n");
  EXPECT_THAT(run({"groups", "--document", "d", "--points"}).out,
              HasSubstr("mixed (2 points: name x y z weight)\n    ?  1.25  2       3  1\n    ?     4  5  6e+300  1\n"));
}

TEST_F(DrawingCommands, NumbersThatAreNoneAreTextInJson) {
  write("odd.txt", "nan inf -inf\n");
  ASSERT_EQ(run({"import", "--document", "d", "--xyz", "odd.txt"}).status, 0);
  EXPECT_EQ(runJson({"groups", "--document", "d", "--points"})["groups"][0]["points"][0],
            json::parse(R"({"name":"?","x":"nan","y":"inf","z":"-inf","w":1.0})"));
}

TEST_F(DrawingCommands, CloudsAreAddedOnceAndListed) {
  write("S1.xyz", "1 2 3\n");
  EXPECT_EQ(run({"clouds", "--document", "d", "--add", "S1=S1.xyz"}).status, 0);
  EXPECT_EQ(run({"clouds", "--document", "d", "--add", "S1=S1.xyz"}).status, 0) << "the same cloud again";
  const ProcessResult other = run({"clouds", "--document", "d", "--add", "S1=base.txt"});
  EXPECT_EQ(other.status, 1);
  EXPECT_THAT(other.err, HasSubstr("tiepoint: the drawing already has a cloud S1, from "));
  EXPECT_EQ(run({"clouds", "--document", "d"}).out,
            "S1 (" + folder.file("S1.xyz") + ")\n  1  0  0  0\n  0  1  0  0\n  0  0  1  0\n  0  0  0  1\n");
  EXPECT_EQ(runJson({"clouds", "--document", "d"})["clouds"].size(), 1u);
}

TEST_F(DrawingCommands, AnEmptyDrawingSaysSo) {
  write("S1.xyz", "1 2 3\n");
  ASSERT_EQ(run({"clouds", "--document", "d", "--add", "S1=S1.xyz"}).status, 0);
  EXPECT_EQ(run({"groups", "--document", "d"}).out, "The drawing holds no reference points.\n");
}

}  // namespace
