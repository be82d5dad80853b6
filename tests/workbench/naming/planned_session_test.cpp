#include "workbench/naming/planned_session.h"

#include <gmock/gmock.h>

#include "workbench/naming/hall.h"
#include "workbench/session/workbench_session.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

/// A and B see the same six targets; C sees two of them, and two more that B sees. Only A and B can be
/// matched by triangles with the usual tolerance.
class PlannedSessions : public testing::Test {
 protected:
  PlannedSessions()
      : kept({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), stationSeeing("B", {0, 1, 2, 3, 4, 5}, 0.7),
              stationSeeing("C", {6, 7, 8, 9}, 1.9)}) {
    kept.driven->addAllGroups();
    settings = settingsOf(kept.state());
  }

  static std::size_t namedPoints(const SessionState& state) {
    std::size_t count = 0;
    for (const SessionPoint& point : state.points) count += point.record.named ? 1 : 0;
    return count;
  }

  WorkbenchSession kept;
  SettingsById settings;
};

TEST_F(PlannedSessions, WriteDownEachStepWithWhatItNamed) {
  PlannedSession planned(kept.workbench, settings);
  EXPECT_TRUE(planned.matchByTriangles({0, 1}, 0.01, 0.1));
  EXPECT_TRUE(planned.solve({0, 1}));
  ASSERT_EQ(planned.steps().size(), 2u);
  const NamingStep& triangles = planned.steps()[0];
  EXPECT_EQ(triangles.kind, NamingKind::triangles);
  EXPECT_THAT(triangles.groups, ElementsAre(0, 1));
  EXPECT_EQ(triangles.tolerance, 0.01);
  EXPECT_EQ(triangles.minSideDifference, 0.1);
  EXPECT_EQ(triangles.named, 12u);
  EXPECT_EQ(planned.steps()[1].kind, NamingKind::solve);
  EXPECT_THAT(planned.steps()[1].groups, ElementsAre(0, 1));
}

TEST_F(PlannedSessions, DropAStepThatNamedNothing) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  planned.solve({0, 1});
  EXPECT_FALSE(planned.matchByCloseness(0.01)) << "all of A and B have names";
  ASSERT_EQ(planned.steps().size(), 3u);
  EXPECT_EQ(planned.steps()[2].kind, NamingKind::closeness);
  EXPECT_EQ(planned.steps()[2].named, 0u);
  planned.dropIdle();
  EXPECT_EQ(planned.steps().size(), 2u);
}

TEST_F(PlannedSessions, SayThatTrianglesNamedNothing) {
  PlannedSession planned(kept.workbench, settings);
  EXPECT_FALSE(planned.matchByTriangles({0, 2}, 0.01, 0.1));
  ASSERT_EQ(planned.steps().size(), 1u);
  EXPECT_EQ(planned.steps()[0].named, 0u);
}

TEST_F(PlannedSessions, SayThatGroupsDoNotHangTogether) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  EXPECT_FALSE(planned.solve({0, 1, 2}));
  EXPECT_EQ(planned.steps().size(), 2u) << "the step is in the plan all the same";
}

TEST_F(PlannedSessions, SayThatNothingWasUnited) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  EXPECT_FALSE(planned.unite({{0, 7}}, 0.02)) << "A has that name already";
  EXPECT_TRUE(planned.unite({{12, 0}}, 0.02));
  ASSERT_EQ(planned.steps().size(), 3u);
  EXPECT_EQ(planned.steps()[2].kind, NamingKind::unite);
  EXPECT_EQ(planned.steps()[2].takers, (PointPairs{{12, 0}}));
  EXPECT_EQ(planned.steps()[2].tolerance, 0.02);
  EXPECT_EQ(planned.state().points[12].name, planned.state().points[0].name);
}

TEST_F(PlannedSessions, HaveNoMotionsBeforeASolve) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  EXPECT_THAT(planned.motions(), IsEmpty());
}

TEST_F(PlannedSessions, HaveTheMotionsOfTheGroupsThatWereSolvedLast) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  planned.solve({0, 1});
  const auto& motions = planned.motions();
  ASSERT_THAT(motions, ElementsAre(Key(0), Key(1)));
  const RefPoint& one = planned.state().points[3].record;
  const RefPoint& same = planned.state().points[9].record;
  OdGePoint3d first = one.position, second = same.position;
  first.p_transform(motions.at(0));
  second.p_transform(motions.at(1));
  EXPECT_NEAR(first.x, second.x, 1e-9);
  EXPECT_NEAR(first.y, second.y, 1e-9);
  EXPECT_NEAR(first.z, second.z, 1e-9);
}

TEST_F(PlannedSessions, KeepTheMotionsUntilTheNextSolve) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  planned.solve({0, 1});
  const auto before = planned.motions();
  planned.matchByCloseness(0.5);
  EXPECT_EQ(planned.motions(), before);
  planned.solve({0, 2});
  EXPECT_THAT(planned.motions(), IsEmpty()) << "the two share nothing";
}

TEST_F(PlannedSessions, GoBackToTheirFirstSteps) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  planned.solve({0, 1});
  const auto before = planned.motions();
  planned.unite({{12, 0}}, 0.02);
  planned.solve({0, 2});
  EXPECT_THAT(planned.motions(), IsEmpty()) << "one name in common is too few";
  planned.backTo(2);
  EXPECT_EQ(planned.steps().size(), 2u);
  EXPECT_EQ(namedPoints(planned.state()), 12u);
  EXPECT_FALSE(planned.state().points[12].record.named);
  EXPECT_EQ(planned.motions(), before);
}

TEST_F(PlannedSessions, GoBackToTheirBeginning) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  planned.solve({0, 1});
  planned.backTo(0);
  EXPECT_THAT(planned.steps(), IsEmpty());
  EXPECT_EQ(namedPoints(planned.state()), 0u);
  EXPECT_THAT(planned.motions(), IsEmpty());
}

TEST_F(PlannedSessions, HandOverTheSessionInWhichThePlanWasCarriedOut) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  const std::unique_ptr<ScratchSession> session = planned.handOver();
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(namedPoints((*session)->state()), 12u);
  EXPECT_EQ(namedPoints(kept.state()), 0u) << "the one that is kept knows nothing of it";
}

TEST_F(PlannedSessions, CarryOutTheSameStepsToTheSameNamesElsewhere) {
  PlannedSession planned(kept.workbench, settings);
  planned.matchByTriangles({0, 1}, 0.01, 0.1);
  planned.solve({0, 1});
  planned.unite({{12, 0}}, 0.02);
  ScratchSession again(kept.workbench, settings);
  again->repeat(planned.steps());
  for (std::size_t i = 0; i < again->state().points.size(); ++i) {
    EXPECT_EQ(again->state().points[i].name, planned.state().points[i].name) << i;
  }
}

}  // namespace
}  // namespace tiepoint::workbench
