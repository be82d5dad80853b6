#include "workbench/naming/scratch_session.h"

#include <gmock/gmock.h>

#include "workbench/naming/hall.h"
#include "workbench/session/workbench_session.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<RefPointId> idsOf(const SessionState& state) {
  std::vector<RefPointId> ids;
  for (const SessionPoint& point : state.points) ids.push_back(point.record.id);
  return ids;
}

/// Three stations with points 0 to 11, of which the user has excluded point 1 and weighed point 6.
class ScratchSessions : public testing::Test {
 protected:
  ScratchSessions() : kept({stationAt("A", 0.0), stationAt("B", 100.0), unnamedStationAt("C", 50.0)}) {
    kept.driven->addAllGroups();
    kept.driven->excludePoints({1});
    kept.driven->setWeight({6}, 0.5);
    settings = settingsOf(kept.state());
  }

  void expectChoices(const SessionState& state) {
    for (const SessionPoint& point : state.points) {
      EXPECT_EQ(point.record.included, point.record.id != 1) << point.record.id;
      EXPECT_EQ(point.record.weight, point.record.id == 6 ? 0.5 : 1.0) << point.record.id;
    }
  }

  WorkbenchSession kept;
  SettingsById settings;
};

TEST_F(ScratchSessions, AreMadeFromWhatTheUserHasChosenOfEachPoint) {
  ASSERT_EQ(settings.size(), 12u);
  EXPECT_FALSE(settings.at(1).included);
  EXPECT_TRUE(settings.at(6).included);
  EXPECT_EQ(settings.at(6).weight, 0.5);
  EXPECT_EQ(settings.at(0).weight, 1.0);
}

TEST_F(ScratchSessions, HoldAllGroupsWithTheChoicesAndTheSameIds) {
  ScratchSession scratch(kept.workbench, settings);
  EXPECT_EQ(idsOf(scratch->state()), idsOf(kept.state()));
  EXPECT_THAT(scratch->groups(), ElementsAre(0, 1, 2));
  expectChoices(scratch->state());
}

TEST_F(ScratchSessions, HoldSomeOfTheGroups) {
  ScratchSession scratch(kept.workbench, settings, {0, 2});
  EXPECT_THAT(idsOf(scratch->state()), ElementsAre(0, 1, 2, 3, 8, 9, 10, 11));
  EXPECT_THAT(scratch->groups(), ElementsAre(0, 2));
  expectChoices(scratch->state());
}

TEST_F(ScratchSessions, ChangeNothingInTheOneThatIsKeptNorInTheDrawing) {
  ScratchSession scratch(kept.workbench, settings);
  scratch->solve({0, 1});
  scratch->matchByTriangles({0, 1, 2}, 0.001, 0.1);
  EXPECT_THAT(kept.state().discrepancies, IsEmpty());
  for (std::size_t i = 8; i < 12; ++i) EXPECT_FALSE(kept.state().points[i].record.named);
  EXPECT_EQ(kept.workbench.documents().size(), 1u);
  EXPECT_EQ(storedGroups(*kept.drawing()).size(), 3u);
}

TEST_F(ScratchSessions, AreAsAtFirstAfterARestart) {
  ScratchSession scratch(kept.workbench, settings);
  ASSERT_TRUE(scratch->solve({0, 1}));
  ASSERT_GT(scratch->matchByTriangles({0, 1, 2}, 0.001, 0.1), 0u);
  ASSERT_TRUE(scratch->state().points[8].record.named);
  scratch.restart();
  EXPECT_FALSE(scratch->state().points[8].record.named);
  EXPECT_THAT(scratch->state().discrepancies, IsEmpty());
  EXPECT_THAT(scratch->groups(), ElementsAre(0, 1, 2));
  expectChoices(scratch->state());
}

TEST_F(ScratchSessions, ChangeToOtherGroups) {
  ScratchSession scratch(kept.workbench, settings, {0, 1});
  ASSERT_TRUE(scratch->solve({0, 1}));
  scratch.changeTo({1, 2});
  EXPECT_THAT(idsOf(scratch->state()), ElementsAre(4, 5, 6, 7, 8, 9, 10, 11));
  EXPECT_THAT(scratch->groups(), ElementsAre(1, 2));
  EXPECT_THAT(scratch->state().discrepancies, IsEmpty());
  expectChoices(scratch->state());
  scratch.restart();
  EXPECT_THAT(scratch->groups(), ElementsAre(1, 2)) << "the newer ones are kept";
}

TEST_F(ScratchSessions, HaveNoUseForAGroupThatIsExcludedWhole) {
  kept.driven->excludeGroups({1});
  settings = settingsOf(kept.state());
  ScratchSession scratch(kept.workbench, settings);
  EXPECT_THAT(scratch->groups(), ElementsAre(0, 2));
  EXPECT_EQ(scratch->state().points.size(), 12u);
}

TEST(ScratchSessionsOfOddFiles, KeepWeightsThatNoUserCouldHaveSet) {
  StationPoints odd = stationAt("A", 0.0);
  odd.points[0].weight = 3.0;
  odd.points[1].weight = -1.0;
  WorkbenchSession kept({odd});
  kept.driven->addAllGroups();
  const SettingsById settings = settingsOf(kept.state());
  ScratchSession scratch(kept.workbench, settings);
  EXPECT_EQ(scratch->state().points[0].record.weight, 3.0);
  EXPECT_EQ(scratch->state().points[1].record.weight, -1.0);
}

}  // namespace
}  // namespace tiepoint::workbench
