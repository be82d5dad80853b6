#include "workbench/cli/point_choice.h"

#include <gmock/gmock.h>

#include "workbench/cli/exit_status.h"
#include "workbench/session_states.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench::cli {
namespace {

using testing::ElementsAre;

template <class Action>
std::string refusal(Action action, ExitStatus status = ExitStatus::usage) {
  try {
    action();
  } catch (const CommandError& error) {
    EXPECT_EQ(error.status(), status);
    return error.what();
  }
  return "nothing";
}

class PointChoiceTest : public testing::Test {
 protected:
  PointChoiceTest() {
    builder.group("S1").points({"T1", "T2", "T1"}).group("S2").points({"T1", "a:b"}).group("S2:T1").point("X");
    builder.group("odd:name").point("T9");
  }
  const SessionState& state() const { return builder.state; }

  StateBuilder builder;
};

TEST_F(PointChoiceTest, AGroupAloneMeansAllOfIt) {
  const PointChoice choice = chosenPoints(state(), "S1", "--exclude");
  EXPECT_TRUE(choice.wholeGroup);
  EXPECT_EQ(choice.group, 0u);
  EXPECT_THAT(choice.points, ElementsAre(0, 1, 2));
}

TEST_F(PointChoiceTest, AGroupWithAPointMeansAllPointsOfThatName) {
  const PointChoice choice = chosenPoints(state(), "S1:T1", "--exclude");
  EXPECT_FALSE(choice.wholeGroup);
  EXPECT_THAT(choice.points, ElementsAre(0, 2));
}

TEST_F(PointChoiceTest, ColonsInNamesAreUnderstood) {
  EXPECT_THAT(chosenPoints(state(), "S2:a:b", "--exclude").points, ElementsAre(4));
  EXPECT_THAT(chosenPoints(state(), "odd:name:T9", "--exclude").points, ElementsAre(6));
}

TEST_F(PointChoiceTest, AGroupOfTheWholeNameGoesBeforeAPoint) {
  EXPECT_TRUE(chosenPoints(state(), "S2:T1", "--exclude").wholeGroup);
}

TEST_F(PointChoiceTest, AnUnknownGroupIsAnsweredWithTheNearest) {
  EXPECT_EQ(refusal([&] { chosenGroup(state(), "S3", "--base"); }),
            "--base S3: there is no group \"S3\"; did you mean \"S1\"?");
  EXPECT_EQ(refusal([&] { chosenPoints(state(), "reference:T1", "--exclude"); }),
            "--exclude reference:T1: there is no group \"reference\"; there are: S1, S2, S2:T1, odd:name");
}

TEST_F(PointChoiceTest, AnUnknownPointIsAnsweredWithTheNearest) {
  EXPECT_EQ(refusal([&] { chosenPoints(state(), "S1:T3", "--exclude"); }),
            "--exclude S1:T3: group \"S1\" has no point \"T3\"; did you mean \"T1\"?");
}

TEST_F(PointChoiceTest, AWeightStandsBehindTheLastEqualsSign) {
  const WeightChoice choice = parseWeightOption("S1:T=1=0.25");
  EXPECT_EQ(choice.point, "S1:T=1");
  EXPECT_EQ(choice.weight, 0.25);
}

TEST_F(PointChoiceTest, WeightsAreNumbersFromZeroToOne) {
  EXPECT_EQ(parseWeightOption("S1:T1=0").weight, 0.0);
  EXPECT_EQ(parseWeightOption("S1:T1=1").weight, 1.0);
  for (const char* text : {"S1:T1=1.5", "S1:T1=-0.1", "S1:T1=nan", "S1:T1=", "S1:T1=1x"}) {
    EXPECT_EQ(refusal([&] { parseWeightOption(text); }),
              std::string("--weight ") + text + ": the weight must be a number from 0 to 1");
  }
  EXPECT_EQ(refusal([] { parseWeightOption("S1:T1"); }), "--weight S1:T1: write it as GROUP:POINT=WEIGHT");
}

TEST(WeightsFile, LinesAreGroupPointWeight) {
  const TemporaryFolder folder;
  const std::string path = folder.file("weights.txt");
  writeBytes(path, "# weights of the hall\nS1 T1 0.5\n\n  S2;T2; 1 # near\nplant hall\tT3\t0\r\n");
  const std::vector<WeightChoice> weights = readWeightsFile(path);
  ASSERT_EQ(weights.size(), 3u);
  EXPECT_EQ(weights[0].point, "S1:T1");
  EXPECT_EQ(weights[0].weight, 0.5);
  EXPECT_EQ(weights[1].point, "S2:T2");
  EXPECT_EQ(weights[1].weight, 1.0);
  EXPECT_EQ(weights[2].point, "plant hall:T3");
  EXPECT_EQ(weights[2].weight, 0.0);
}

TEST(WeightsFile, ABadLineIsNamed) {
  const TemporaryFolder folder;
  const std::string path = folder.file("weights.txt");
  for (const char* line : {"S1 T1", "S1 T1 2", "T1 0.5", "S1 T1 heavy"}) {
    writeBytes(path, std::string("S1 T1 1\n") + line + "\n");
    EXPECT_EQ(refusal([&] { readWeightsFile(path); }, ExitStatus::file),
              path + ": line 2 isn't \"GROUP POINT WEIGHT\" with a weight from 0 to 1")
        << line;
  }
}

}  // namespace
}  // namespace tiepoint::workbench::cli
