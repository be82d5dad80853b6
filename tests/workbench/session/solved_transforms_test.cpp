#include "workbench/session/solved_transforms.h"

#include <gmock/gmock.h>

#include "workbench/clouds/drawing_clouds.h"
#include "workbench/session/workbench_session.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;

/// What a fit of exact measurements of some tens of units may leave.
constexpr double rounding = 1e-12;

/// A station turned by a quarter about z against the hall: (x, y, z) was measured as (y, -x, z).
StationPoints turnedStation(const std::string& name) {
  StationPoints station = stationAt(name, 0.0);
  for (MeasuredPoint& point : station.points) {
    point.position = {point.position.y, -point.position.x, point.position.z};
  }
  return station;
}

/// The base A, B beside it, C turned, and D that sees something else.
class SolvedSession : public testing::Test {
 protected:
  SolvedSession() : session({stationAt("A", 0.0), stationAt("B", 100.0), turnedStation("C"), lonely()}) {
    session.driven->addAllGroups();
    session.driven->setBase({0});
  }
  static StationPoints lonely() {
    StationPoints station = stationAt("D", 0.0);
    for (MeasuredPoint& point : station.points) point.name += " of the yard";
    return station;
  }

  SolvedTransforms solved() { return solvedTransforms(session.workbench, *session.mirrored, {0, 1, 2, 3}); }
  void solve() { ASSERT_TRUE(session.driven->registerPairwise()); }

  WorkbenchSession session;
};

TEST_F(SolvedSession, TakesEachGroupThatMovesToTheCommonSystem) {
  solve();
  const auto motions = solved().toCommon;
  ASSERT_EQ(motions.size(), 2u) << "neither the base nor the one that took no part";
  EXPECT_NEAR(motions.at(1)(0, 3), 100.0, rounding);
  EXPECT_NEAR(motions.at(1)(0, 0), 1.0, rounding);
  EXPECT_NEAR(motions.at(2)(0, 1), -1.0, rounding);
  EXPECT_NEAR(motions.at(2)(1, 0), 1.0, rounding);
  EXPECT_NEAR(motions.at(2)(0, 3), 0.0, rounding);
}

TEST_F(SolvedSession, HasAllDigitsOfItsTransformations) {
  session.driven->excludeGroups({1, 2, 3});
  StationPoints near = stationAt("E", 0.0);
  for (MeasuredPoint& point : near.points) point.position.x += 1.0 / 3.0;
  session.store({near});
  session.driven->addAllGroups();
  solve();
  const auto motions = solvedTransforms(session.workbench, *session.mirrored, {4}).toCommon;
  ASSERT_EQ(motions.count(4), 1u);
  EXPECT_NEAR(motions.at(4)(0, 3), -1.0 / 3.0, 1e-14) << "reports and files have six digits";
}

TEST_F(SolvedSession, GivesTheMotionsOfTheGroupsThatAreAskedFor) {
  solve();
  const auto motions = solvedMotions(session.workbench, *session.mirrored, {2, 77});
  ASSERT_EQ(motions.size(), 1u);
  EXPECT_EQ(motions.at(2), solved().toCommon.at(2));
  EXPECT_THAT(solvedMotions(session.workbench, *session.mirrored, {}), IsEmpty());
}

TEST_F(SolvedSession, GivesEachGroupItsOwnMotionInWhateverOrderTheyAreAsked) {
  solve();
  const auto motions = solvedMotions(session.workbench, *session.mirrored, {2, 0, 1});
  ASSERT_EQ(motions.size(), 2u);
  EXPECT_NEAR(motions.at(1)(0, 3), 100.0, rounding);
  EXPECT_NEAR(motions.at(2)(0, 3), 0.0, rounding);
}

TEST_F(SolvedSession, HasTheMergedTargetsInTheCommonSystem) {
  solve();
  const auto targets = solved().targets;
  ASSERT_EQ(targets.size(), 4u);
  EXPECT_EQ(targets[1].name, "T2");
  EXPECT_NEAR(targets[1].position.x, 8.0, rounding);
  EXPECT_NEAR(targets[1].position.y, 1.0, rounding);
  EXPECT_EQ(targets[1].weight, 1.0);
  EXPECT_EQ(targets[3].name, "T4");
}

TEST_F(SolvedSession, TellsHowFarPointsOfOneNameStayApart) {
  StationPoints off = stationAt("E", 0.0);
  off.points[0].position.z += 0.5;
  session.store({off});
  session.driven->addAllGroups();
  solve();
  const PointSpread spread = solved().spread;
  ASSERT_TRUE(spread.largest);
  EXPECT_GT(*spread.largest, 0.1);
  EXPECT_LT(*spread.largest, 0.5);
  EXPECT_EQ(spread.counts.size(), 10u);
  EXPECT_EQ(spread.edges.size(), 11u);
}

TEST_F(SolvedSession, HasNothingBeforeASolve) {
  const SolvedTransforms none = solved();
  EXPECT_THAT(none.toCommon, IsEmpty());
  EXPECT_THAT(none.targets, IsEmpty());
}

TEST_F(SolvedSession, LeavesTheActiveDrawingAsItIs) {
  solve();
  const int former = session.workbench.requireActiveDocument().number();
  solved();
  EXPECT_EQ(session.workbench.requireActiveDocument().number(), former);
  EXPECT_EQ(session.workbench.documents().size(), 1u);
  EXPECT_THAT(cloudsOf(*session.drawing()), IsEmpty());
  EXPECT_EQ(storedGroups(*session.drawing()).size(), 4u) << "no merged targets among them";
}

TEST_F(SolvedSession, KnowsTheCloudsOfTheActiveDrawingAfterwards) {
  session.workbench.inTransaction([&] { addCloud(*session.drawing(), L"B", L""); });
  solve();
  solved();
  ASSERT_EQ(session.state().clouds.size(), 1u);
  EXPECT_EQ(session.state().clouds[0].name, "B");
  session.workbench.inTransaction([&] { EXPECT_TRUE(session.mirrored->applyTransformToCloud(1, 0)); });
  EXPECT_NEAR(cloudsOf(*session.drawing())[0].matrix(0, 3), 100.0, rounding) << "moved once, not twice";
}

TEST_F(SolvedSession, GivesTheSameTwice) {
  solve();
  const SolvedTransforms first = solved(), second = solved();
  EXPECT_EQ(first.toCommon.at(1), second.toCommon.at(1));
  EXPECT_EQ(first.toCommon.at(2), second.toCommon.at(2));
  EXPECT_EQ(first.targets.size(), second.targets.size());
}

}  // namespace
}  // namespace tiepoint::workbench
