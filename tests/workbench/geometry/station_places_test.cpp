#include "workbench/geometry/station_places.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tiepoint::workbench {
namespace {

using ZOR::reg::GroupIdSet;

/// The one of `stationWith`.
const GroupIdSet onlyGroup{0};
const GroupIdSet none;

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
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{-10, -10, -1}, {10, 10, 5}})), onlyGroup);
}

TEST(StationPlaces, AnInstrumentMayStandSomewhatBesideItsTargets) {
  // The box has a diagonal of 5 (4 and 3); a quarter of it is 1.25.
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{1.25, 0, 0}, {5.25, 3, 0}})), onlyGroup);
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{1.26, 0, 0}, {5.26, 3, 0}})), none);
}

TEST(StationPlaces, AnOriginFarFromAllTargetsIsNoInstrument) {
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{4500000, 7500000, 100}, {4500060, 7500040, 108}})), none);
}

TEST(StationPlaces, PointsWithoutAPlaceHaveNoSay) {
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{-1, -1, 0}, {1, 1, 0}, {std::nan(""), 0, 0}})), onlyGroup);
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{std::nan(""), 0, 0}})), none);
}

TEST(StationPlaces, OnlyThePointsOfTheGroupHaveASay) {
  SessionState state = stationWith({{-1, -1, 0}, {50, 50, 0}, {1, 1, 0}, {52, 52, 0}});
  for (const std::size_t i : {1U, 3U}) state.points[i].record.groupId = 7;
  EXPECT_EQ(groupsAroundTheirOrigin(state), onlyGroup) << "those of group 7 are all at 50 and beyond";
  for (const std::size_t i : {0U, 2U}) state.points[i].record.position.x += 40;
  for (const std::size_t i : {1U, 3U}) state.points[i].record.position = {i == 1 ? -1.0 : 1.0, 0, 0};
  EXPECT_EQ(groupsAroundTheirOrigin(state), GroupIdSet{7});
}

TEST(StationPlaces, OneTargetIsABoxWithoutSize) {
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{0, 0, 0}})), onlyGroup);
  EXPECT_EQ(groupsAroundTheirOrigin(stationWith({{0.001, 0, 0}})), none);
  EXPECT_EQ(groupsAroundTheirOrigin(SessionState()), none);
}

TEST(StationPlaces, EveryPointOfTheGroupCountsAlsoWhenItIsOut) {
  SessionState state = stationWith({{2, 0, 0}, {-2, 0, 0}});
  state.points[1].record.included = false;
  state.points[1].record.active = false;
  EXPECT_EQ(groupsAroundTheirOrigin(state), onlyGroup);
}

}  // namespace
}  // namespace tiepoint::workbench
