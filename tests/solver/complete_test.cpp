#include "solver/complete.h"

#include <gtest/gtest.h>

#include "solver/builders.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

/// Coordinates of the order of 10, through a few roundings.
constexpr double rounding = 1e-12;

struct Outcome : SolveMembers {
  Outcome(const RefPointList& points, GroupId reference, const RefPointList& session) {
    solveComplete(points, reference, session, *this, pointDiscrepancies);
  }
  Outcome(const RefPointList& points, GroupId reference) : Outcome(points, reference, points) {}
};

RefPointList threeStations() {
  return join({crossOfStation(0, 0, {1, 2, 3}), crossOfStation(6, 1, {11, 2, 3}), crossOfStation(12, 2, {1, 22, 3})});
}

TEST(Complete, FitsEveryOtherGroupOntoTheReference) {
  const Outcome run(threeStations(), 1);
  EXPECT_EQ(run.registrationMethod, methodComplete);
  EXPECT_EQ(keysOf(run.groupTransforms), (std::vector<GroupId>{0, 2}));
  EXPECT_NEAR(run.groupTransforms.at(0).translation[0], 10.0, rounding);
  EXPECT_NEAR(run.groupTransforms.at(2).translation[0], 10.0, rounding);
  EXPECT_NEAR(run.groupTransforms.at(2).translation[1], -20.0, rounding);
  EXPECT_EQ(run.commonPoints.at(0).position, OdGePoint3d(15, 2, 3));
}

TEST(Complete, WithoutThePointsOfTheReferenceEachGroupGetsTheIdentityAndNothingElseIsStored) {
  const Outcome run(threeStations(), 9);
  EXPECT_EQ(keysOf(run.groupTransforms), (std::vector<GroupId>{0, 1, 2}));
  for (const auto& [group, transform] : run.groupTransforms) {
    EXPECT_EQ(transform.rotation, RigidTransform{}.rotation);
    EXPECT_EQ(transform.translation, RigidTransform{}.translation);
  }
  EXPECT_TRUE(run.commonPoints.empty());
  EXPECT_TRUE(run.pointDiscrepancies.empty());
}

TEST(Complete, WithoutAnotherGroupNothingIsRegistered) {
  Outcome run(crossOfStation(0, 0, {1, 2, 3}), 0);
  EXPECT_EQ(run.registrationMethod, methodComplete);
  EXPECT_TRUE(run.groupTransforms.empty());
  EXPECT_EQ(run.commonPoints.size(), 6u);
  const Outcome based(inBase(crossOfStation(0, 0, {1, 2, 3})), 0);
  EXPECT_EQ(based.registrationMethod, methodComplete);
}

TEST(Complete, ABaseOtherThanTheReferenceTakesTheModelIntoItsCoordinates) {
  RefPointList points = threeStations();
  for (RefPoint& p : points) p.inBase = p.groupId == 2;
  const Outcome run(points, 1);
  EXPECT_EQ(run.registrationMethod, methodCompleteWithBase);
  EXPECT_EQ(keysOf(run.groupTransforms), (std::vector<GroupId>{0, 2}));
  EXPECT_NEAR(run.groupTransforms.at(2).translation[1], 0.0, rounding);
  EXPECT_NEAR(run.groupTransforms.at(0).translation[1], 20.0, rounding);
  EXPECT_THAT(run.commonPoints.at(0).position, IsNearPoint(OdGePoint3d(5, 22, 3), rounding));
}

TEST(Complete, PointsThatTheReferenceLacksAreLeftOut) {
  RefPointList points = threeStations();
  points.push_back(measured(50, 0, 99, {500, 500, 500}));
  const Outcome run(points, 1);
  EXPECT_EQ(run.commonPoints.count(99), 0u);
  EXPECT_EQ(run.pointDiscrepancies.count(50), 0u);
  EXPECT_NEAR(run.groupTransforms.at(0).translation[0], 10.0, rounding);
}

TEST(Complete, TheBasesOwnPointsHaveDiscrepanciesToo) {
  RefPointList points = threeStations();
  for (RefPoint& p : points) p.inBase = p.groupId == 2;
  for (RefPoint& p : points) {
    if (p.id == 12) p.position.z += 0.5;
  }
  const Outcome run(points, 1);
  EXPECT_GT(run.pointDiscrepancies.at(12), 0.1);
}

TEST(Complete, AGroupThatSharesTwoNamesGetsTheIdentity) {
  RefPointList points = crossOfStation(0, 0, {1, 2, 3});
  points.push_back(measured(6, 1, 0, {50, 0, 0}));
  points.push_back(measured(7, 1, 1, {58, 0, 0}));
  const Outcome run(points, 0);
  EXPECT_EQ(run.groupTransforms.at(1).translation, RigidTransform{}.translation);
}

TEST(Complete, PointsLeftOutByTheUserAreStoredButNotThoseOfTheReference) {
  RefPointList points = threeStations();
  RefPointList session = points;
  session.push_back(leftOut(measured(40, 0, 70, {1, 2, 3})));
  session.push_back(leftOut(measured(41, 1, 71, {1, 2, 3})));
  const Outcome run(points, 1, session);
  EXPECT_THAT(run.commonPoints.at(70).position, IsNearPoint(OdGePoint3d(11, 2, 3), rounding));
  EXPECT_EQ(run.commonPoints.count(71), 0u);
}

}  // namespace
