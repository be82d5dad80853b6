#include "workbench/geometry/station_places.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tiepoint::workbench {
namespace {

SessionState stationWith(const std::vector<OdGePoint3d>& places) {
  SessionState state;
  state.groups = {{0, "A", false}};
  for (const OdGePoint3d& place : places) {
    SessionPoint point;
    point.record.groupId = 0;
    point.record.position = place;
    state.points.push_back(point);
  }
  return state;
}

TEST(StationPlaces, AnInstrumentStandsAmongItsTargets) {
  EXPECT_TRUE(originIsAmongItsPoints(stationWith({{-10, -10, -1}, {10, 10, 5}}), 0));
}

TEST(StationPlaces, AnInstrumentMayStandSomewhatBesideItsTargets) {
  // The box has a diagonal of 5 (4 and 3); a quarter of it is 1.25.
  EXPECT_TRUE(originIsAmongItsPoints(stationWith({{1.25, 0, 0}, {5.25, 3, 0}}), 0));
  EXPECT_FALSE(originIsAmongItsPoints(stationWith({{1.26, 0, 0}, {5.26, 3, 0}}), 0));
}

TEST(StationPlaces, AnOriginFarFromAllTargetsIsNoInstrument) {
  EXPECT_FALSE(originIsAmongItsPoints(stationWith({{4500000, 7500000, 100}, {4500060, 7500040, 108}}), 0));
}

TEST(StationPlaces, PointsWithoutAPlaceHaveNoSay) {
  EXPECT_TRUE(originIsAmongItsPoints(stationWith({{-1, -1, 0}, {1, 1, 0}, {std::nan(""), 0, 0}}), 0));
  EXPECT_FALSE(originIsAmongItsPoints(stationWith({{std::nan(""), 0, 0}}), 0));
}

TEST(StationPlaces, OnlyThePointsOfTheGroupHaveASay) {
  EXPECT_FALSE(originIsAmongItsPoints(stationWith({{-1, -1, 0}, {1, 1, 0}}), 7));
}

TEST(StationPlaces, OneTargetIsABoxWithoutSize) {
  EXPECT_TRUE(originIsAmongItsPoints(stationWith({{0, 0, 0}}), 0));
  EXPECT_FALSE(originIsAmongItsPoints(stationWith({{0.001, 0, 0}}), 0));
  EXPECT_FALSE(originIsAmongItsPoints({}, 0));
}

TEST(StationPlaces, EveryPointOfTheGroupCountsAlsoWhenItIsOut) {
  SessionState state = stationWith({{2, 0, 0}, {-2, 0, 0}});
  state.points[1].record.included = false;
  state.points[1].record.active = false;
  EXPECT_TRUE(originIsAmongItsPoints(state, 0));
}

}  // namespace
}  // namespace tiepoint::workbench
