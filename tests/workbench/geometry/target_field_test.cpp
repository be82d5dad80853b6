#include "workbench/geometry/target_field.h"

#include <gmock/gmock.h>

#include <cmath>

#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

OdGeMatrix3d shiftedBy(double x) {
  OdGeMatrix3d motion;
  motion(0, 3) = x;
  return motion;
}

/// A quarter turn about z, then a shift: (x, y, z) goes to (-y + 10, x, z).
OdGeMatrix3d quarterTurn() {
  OdGeMatrix3d motion = shiftedBy(10.0);
  motion(0, 0) = 0.0;
  motion(0, 1) = -1.0;
  motion(1, 0) = 1.0;
  motion(1, 1) = 0.0;
  return motion;
}

/// Two groups that share T1 and T2; the second lies 100 away in a system of its own.
struct TwoGroups {
  TwoGroups() {
    builder.group("A").point("T1", {0, 0, 0}).point("?", {5, 0, 0}).point("T2", {0, 7, 0});
    builder.group("B")
        .point("T2", {100, 7, 0})
        .point("T1", {100, 0, 0})
        .point("?", {100, 0, 3})
        .point("T3", {104, 0, 0});
    stations = stationsOf(builder.state);
  }

  NamedField field(const ZOR::reg::GroupIdSet& groups) const {
    return fieldOf(builder.state, stations, groups, {{1, shiftedBy(-100.0)}});
  }

  StateBuilder builder;
  Stations stations;
};

TEST(InCommonSystem, APointIsWhereItsGroupsMotionTakesIt) {
  ZOR::reg::RefPoint record;
  record.groupId = 3;
  record.position = {1, 2, 3};
  EXPECT_EQ(inCommonSystem(record, {{3, quarterTurn()}, {4, shiftedBy(7.0)}}), Eigen::Vector3d(8, 1, 3));
}

TEST(InCommonSystem, APointOfAGroupWithoutAMotionStaysWhereItIs) {
  ZOR::reg::RefPoint record;
  record.groupId = 3;
  record.position = {1, 2, 3};
  EXPECT_EQ(inCommonSystem(record, {{4, shiftedBy(7.0)}}), Eigen::Vector3d(1, 2, 3));
  EXPECT_EQ(inCommonSystem(record, {}), Eigen::Vector3d(1, 2, 3));
}

TEST(FieldOf, NoGroupsIsEmpty) {
  const NamedField named = TwoGroups().field({});
  EXPECT_TRUE(named.field.targets.empty());
  EXPECT_TRUE(named.field.stations.empty());
  EXPECT_TRUE(named.targetOf.empty());
}

TEST(FieldOf, EachNameIsOneTargetAndEachUnnamedPointOneOfItsOwn) {
  const TwoGroups survey;
  const NamedField named = survey.field({0, 1});
  EXPECT_THAT(named.field.targets,
              ElementsAre(Eigen::Vector3d(0, 0, 0), Eigen::Vector3d(5, 0, 0), Eigen::Vector3d(0, 7, 0),
                          Eigen::Vector3d(0, 0, 3), Eigen::Vector3d(4, 0, 0)));
  ASSERT_EQ(named.field.stations.size(), 2u);
  EXPECT_THAT(named.field.stations[0].target, ElementsAre(0, 1, 2));
  EXPECT_THAT(named.field.stations[1].target, ElementsAre(2, 0, 3, 4));
  EXPECT_EQ(named.field.stations[1].shape, &survey.stations.at(1).shape);
}

TEST(FieldOf, ATargetLiesWhereTheFirstOfItsPointsWasPut) {
  TwoGroups survey;
  survey.builder.state.points[4].record.position.z = 0.25;
  EXPECT_EQ(survey.field({0, 1}).field.targets[0], Eigen::Vector3d(0, 0, 0));
  EXPECT_EQ(survey.field({1}).field.targets[1], Eigen::Vector3d(0, 0, 0.25));
}

TEST(FieldOf, TheNamesTellTheirTargets) {
  const TwoGroups survey;
  const auto nameOf = [&](std::size_t point) { return survey.builder.state.points[point].record.commonId; };
  EXPECT_THAT(survey.field({0}).targetOf, ElementsAre(Pair(nameOf(0), 0), Pair(nameOf(2), 2)));
}

TEST(FieldOf, PointsThatMayNotBeUsedAreNoTargets) {
  TwoGroups survey;
  survey.builder.state.points[2].record.included = false;
  survey.builder.state.points[1].record.position.x = std::nan("");
  survey.stations = stationsOf(survey.builder.state);
  EXPECT_EQ(survey.field({0}).field.targets.size(), 1u);
}

TEST(PlacementOf, AStationIsByItsNames) {
  const TwoGroups survey;
  const NamedField named = survey.field({0});
  EXPECT_THAT(placementOf(survey.builder.state, survey.stations.at(1), named), ElementsAre(Pair(0, 2), Pair(1, 0)));
  EXPECT_THAT(placementOf(survey.builder.state, survey.stations.at(0), named), ElementsAre(Pair(0, 0), Pair(2, 2)));
}

TEST(PlacementOf, AStationWithoutNamesIsEmpty) {
  TwoGroups survey;
  for (SessionPoint& point : survey.builder.state.points) {
    if (point.record.groupId == 1) point.record.named = false;
  }
  EXPECT_THAT(placementOf(survey.builder.state, survey.stations.at(1), survey.field({0})), IsEmpty());
}

TEST(RecordsById, FindEveryPoint) {
  TwoGroups survey;
  survey.builder.state.points[3].record.id = 77;
  const RecordsById records = recordsById(survey.builder.state);
  ASSERT_EQ(records.size(), 7u);
  EXPECT_EQ(records.at(77), &survey.builder.state.points[3].record);
  EXPECT_EQ(records.count(3), 0u);
}

TEST(FarthestApart, IsTheLargestDistanceOfAPairInTheCommonSystem) {
  const TwoGroups survey;
  const RecordsById records = recordsById(survey.builder.state);
  const PointPairs pairs{{0, 4}, {1, 6}, {2, 3}};
  EXPECT_EQ(farthestApart(records, pairs, {{1, shiftedBy(-100.0)}}), 1.0);
  EXPECT_EQ(farthestApart(records, pairs, {}), 100.0);
  EXPECT_EQ(farthestApart(records, {}, {}), 0.0);
}

}  // namespace
}  // namespace tiepoint::workbench
