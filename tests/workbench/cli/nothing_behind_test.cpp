// What a request that asks for what there isn't leaves behind: nothing.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class NothingBehind : public SurveyFiles {
 protected:
  /// Two stations that share nothing with the others.
  void writeOthers() {
    write("one.txt", "Q1 0 0 0\nQ2 9 0 0\nQ3 0 9 0\nQ4 0 0 9\n");
    write("two.txt", "Q1 1 0 0\nQ2 10 0 0\nQ3 1 9 0\nQ4 1 0 9\n");
  }

  /// Registers into a drawing that isn't there yet, and expects a usage error and no drawing.
  std::string refusedWithoutDrawing(std::vector<std::string> choice, int status = 2) {
    std::vector<std::string> arguments{"register", "--document", "new.tiepoint", "base.txt", "shifted.txt"};
    arguments.insert(arguments.end(), choice.begin(), choice.end());
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, status) << result.err;
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_FALSE(exists("new.tiepoint")) << result.err;
    return result.err;
  }
};

TEST_F(NothingBehind, AWrongExclusion) {
  EXPECT_THAT(refusedWithoutDrawing({"--exclude", "base:P9"}), HasSubstr("group \"base\" has no point \"P9\""));
  EXPECT_THAT(refusedWithoutDrawing({"--exclude", "bass"}), HasSubstr("there is no group \"bass\""));
}

TEST_F(NothingBehind, AWrongWeight) {
  EXPECT_THAT(refusedWithoutDrawing({"--weight", "base:P9=0.5"}), HasSubstr("has no point \"P9\""));
  write("weights.txt", "base P9 0.5\n");
  EXPECT_THAT(refusedWithoutDrawing({"--weights", "weights.txt"}), HasSubstr("has no point \"P9\""));
  write("weights.txt", "base P1 heavy\n");
  EXPECT_THAT(refusedWithoutDrawing({"--weights", "weights.txt"}, 3), HasSubstr("weights.txt: line 1 isn't"));
}

TEST_F(NothingBehind, AWrongCluster) {
  writeOthers();
  EXPECT_THAT(refusedWithoutDrawing({"one.txt", "two.txt", "--keep-cluster", "5"}),
              HasSubstr("the clusters are 0 to 1"));
}

TEST_F(NothingBehind, AWrongClusterInADrawingThatIsThere) {
  ASSERT_EQ(run({"import", "--document", "old.tiepoint", "base.txt"}).status, 0);
  writeOthers();
  const ProcessResult result =
      run({"register", "--document", "old.tiepoint", "shifted.txt", "one.txt", "two.txt", "--keep-cluster", "5"});
  EXPECT_EQ(result.status, 2) << result.err;
  const nlohmann::json groups = runJson({"groups", "--document", "old.tiepoint"})["groups"];
  ASSERT_EQ(groups.size(), 1u);
  EXPECT_EQ(groups[0]["name"], "base");
}

TEST_F(NothingBehind, ANameThatIsTaken) {
  EXPECT_THAT(refusedWithoutDrawing({"--store", "base"}, 1), HasSubstr("already has a group of this name"));
}

TEST_F(NothingBehind, APointThatAMatchingDoesNotName) {
  EXPECT_THAT(refusedWithoutDrawing({"--match", "auto", "--exclude", "base:auto7"}), HasSubstr("no point \"auto7\""));
}

TEST_F(NothingBehind, AMissingFileIsToldBeforeTheGroupThatItWouldGive) {
  EXPECT_EQ(run({"register", "--base", "S1", "nofile1.txt", "nofile2.txt"}).err,
            "tiepoint: nofile1.txt: there is no such file\n");
}

TEST_F(NothingBehind, AWordThatThereIsntIsFoundOutBeforeTheFiles) {
  EXPECT_EQ(run({"register", "--match", "foo", "nofile.txt"}).err,
            "tiepoint: --match foo: unknown; choose auto, triangles or distance\n");
}

TEST_F(NothingBehind, AnEmptyValue) {
  for (const char* option : {"--document", "--report", "--transforms", "--matrices", "--common-points", "--picture",
                             "--moved", "--store", "--profile"}) {
    const ProcessResult result = run({"register", option, "", "base.txt", "shifted.txt"});
    EXPECT_EQ(result.status, 2) << option;
    EXPECT_EQ(result.err, std::string("tiepoint: ") + option + ": the value is empty; is a shell variable unset?\n");
  }
  EXPECT_EQ(run({"import", "--document", "", "base.txt"}).status, 2);
  EXPECT_EQ(run({"render", "--document", "x", "--output", ""}).status, 2);
}

TEST_F(NothingBehind, AGroupWithAColonInAFileOfWeightsIsThatGroup) {
  // Windows takes no colon in a file's name.
  if (tiepoint::testing::onWindows) GTEST_SKIP();
  write("A.txt", "B:C 0 0 0\nP2 10 0 0\nP3 0 10 0\nP4 0 0 10\n");
  write("A:B.txt", "C 0 0 0\nP2 10 0 0\nP3 0 10 0\nP4 0 0 10\n");
  write("weights.txt", "A:B C 0.5\n");
  const auto result = runJson({"register", "--weights", "weights.txt", "A.txt", "A:B.txt"});
  for (const auto& point : result["points"]) {
    const bool isMeant = point["group"] == "A:B" && point["name"] == "C";
    EXPECT_EQ(point["weight"], isMeant ? 0.5 : 1.0) << point;
  }
}

TEST_F(NothingBehind, TwoBasesWithoutAThirdGroupAreNoSingleGroup) {
  const ProcessResult result = run({"register", "--base", "base", "--base", "shifted", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tiepoint: not registered: all groups are bases; leave out one --base, or add another group\n");
}

TEST_F(NothingBehind, ByteOrderMarksInEveryFileJoinTheirNamesAllTheSame) {
  write("base.txt", std::string("\xEF\xBB\xBF") + baseLines);
  const std::string alone = run({"register", "base.txt", "shifted.txt"}).err;
  EXPECT_THAT(alone, HasSubstr("which joins nothing now"));
  write("shifted.txt", std::string("\xEF\xBB\xBF") + shiftedLines);
  const ProcessResult both = run({"register", "base.txt", "shifted.txt"});
  EXPECT_THAT(both.err, HasSubstr("became part of the first point's name; save the file without it"));
  EXPECT_THAT(both.err, testing::Not(HasSubstr("joins nothing")));
}

TEST_F(NothingBehind, NothingStandsOutOfASurveyWithoutNoise) {
  std::string first, second;
  for (int i = 0; i < 12; ++i) {
    const double x = 0.1 * i * i, y = 3.7 * i, z = 0.3 * (i % 5);
    const std::string name = "P" + std::to_string(i) + " ";
    first += name + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(z) + "\n";
    second += name + std::to_string(y + 7) + " " + std::to_string(-x) + " " + std::to_string(z - 2) + "\n";
  }
  write("one.txt", first);
  write("two.txt", second);
  const auto result = runJson({"register", "one.txt", "two.txt"});
  EXPECT_LT(result["discrepancies"]["largest"], 1e-9);
  EXPECT_TRUE(result["standOut"].is_null()) << result["standOut"];
}

TEST_F(NothingBehind, HelpIsAWordToo) {
  EXPECT_EQ(run({"help"}).out, run({"--help"}).out);
  EXPECT_EQ(run({"help", "register"}).out, run({"register", "--help"}).out);
  EXPECT_EQ(run({"help", "register"}).status, 0);
  EXPECT_EQ(run({"help", "regster"}).status, 2);
  EXPECT_EQ(run({"help", "regster"}).err,
            "tiepoint: unknown command \"regster\"; did you mean \"register\"?; see tiepoint --help\n");
}

}  // namespace
