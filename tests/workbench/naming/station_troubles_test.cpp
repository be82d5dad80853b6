#include "workbench/naming/station_troubles.h"

#include <gtest/gtest.h>

#include "workbench/naming/hall.h"

namespace tiepoint::workbench {
namespace {

/// Of the newest of these stations.
UnplacedStation troubleOfLast(const std::vector<StationPoints>& stations, const PairLinks& pairs = {},
                              const NamingLimits& limits = usualLimits) {
  const SessionState state = stateOf(stations);
  return troubleOf(stations.size() - 1, state, stationsOf(state), pairs, limits);
}

PairLink linkOf(ZOR::reg::GroupId first, ZOR::reg::GroupId second, std::size_t shared) {
  PairLink link;
  link.first = first;
  link.second = second;
  link.shared.resize(shared);
  return link;
}

const StationPoints others = stationSeeing("A", allTargets, 0.0);

TEST(TroubleOfAStation, HasFewerThanThreePoints) {
  const UnplacedStation unplaced = troubleOfLast({others, stationSeeing("B", {0, 1}, 0.7)});
  EXPECT_EQ(unplaced.trouble, StationTrouble::tooFewPoints);
  EXPECT_EQ(unplaced.group, 1u);
}

TEST(TroubleOfAStation, HasThreePointsOfWhichOneIsNowhere) {
  StationPoints station = stationSeeing("B", {0, 1, 2}, 0.7);
  station.points[1].position.y = std::nan("");
  EXPECT_EQ(troubleOfLast({others, station}).trouble, StationTrouble::tooFewPoints);
}

TEST(TroubleOfAStation, IsAloneWhereNoOtherHasThreePoints) {
  const auto unplaced = troubleOfLast({stationSeeing("A", {0, 1}, 0.0), stationSeeing("B", allTargets, 0.7)});
  EXPECT_EQ(unplaced.trouble, StationTrouble::alone);
  EXPECT_EQ(troubleOfLast({stationSeeing("A", allTargets, 0.0)}).trouble, StationTrouble::alone);
}

TEST(TroubleOfAStation, SharesNoTriangle) {
  const auto unplaced = troubleOfLast({stationSeeing("A", {0, 1, 2, 3}, 0.0), stationSeeing("B", {5, 6, 7, 8}, 0.7)});
  EXPECT_EQ(unplaced.trouble, StationTrouble::noEqualTriangle);
  EXPECT_EQ(unplaced.points, 0u);
}

TEST(TroubleOfAStation, FitsAsAMirrorImageOfSixPoints) {
  const UnplacedStation unplaced = troubleOfLast({others, mirrored(stationSeeing("B", {0, 2, 4, 5, 7, 9}, 0.7))});
  EXPECT_EQ(unplaced.trouble, StationTrouble::mirrored);
  EXPECT_EQ(unplaced.points, 6u);
}

TEST(TroubleOfAStation, FitsAsAMirrorImageOfFivePointsAtLeast) {
  const UnplacedStation unplaced = troubleOfLast({others, mirrored(stationSeeing("B", {1, 3, 5, 7, 8}, 0.7))});
  EXPECT_EQ(unplaced.trouble, StationTrouble::mirrored);
  EXPECT_EQ(unplaced.points, 5u);
}

TEST(TroubleOfAStation, IsNoMirrorImageByFourPointsAlone) {
  const UnplacedStation unplaced = troubleOfLast({others, mirrored(stationSeeing("B", {0, 2, 4, 5}, 0.7))});
  EXPECT_NE(unplaced.trouble, StationTrouble::mirrored);
}

TEST(TroubleOfAStation, IsNoMirrorImageWhereAllTargetsLieInAPlane) {
  std::vector<OdGePoint3d> floor = hall;
  for (OdGePoint3d& target : floor) target.z = 0.0;
  const auto unplaced = troubleOfLast(
      {stationSeeing("A", floor, allTargets, 0.0), mirrored(stationSeeing("B", floor, {0, 2, 4, 5, 7, 9}, 0.7))});
  EXPECT_NE(unplaced.trouble, StationTrouble::mirrored);
}

TEST(TroubleOfAStation, CanBeLaidInSeveralWays) {
  const Targets all{0, 1, 2, 3, 4, 5};
  const UnplacedStation unplaced =
      troubleOfLast({stationSeeing("A", courtyard, all, 0.0), stationSeeing("B", courtyard, all, 0.7)});
  EXPECT_EQ(unplaced.trouble, StationTrouble::ambiguous);
  EXPECT_EQ(unplaced.points, 6u);
}

TEST(TroubleOfAStation, OfFivePointsCanBeLaidInSeveralWaysByThreeAndOfSixByFour) {
  // An isosceles triangle that two stations see, and targets that only one of them sees.
  const std::vector<OdGePoint3d> targets{{-5, 0, 0},  {5, 0, 0},   {0, 9, 0},  {31, 4, 2}, {47, -6, 5},
                                         {22, 18, 8}, {60, 33, 1}, {71, 9, 4}, {55, 50, 7}};
  const StationPoints first = stationSeeing("A", targets, {0, 1, 2, 6, 7, 8}, 0.0);
  const UnplacedStation five = troubleOfLast({first, stationSeeing("B", targets, {0, 1, 2, 3, 4}, 0.7)});
  EXPECT_EQ(five.trouble, StationTrouble::ambiguous);
  EXPECT_EQ(five.points, 3u);
  const UnplacedStation six = troubleOfLast({first, stationSeeing("B", targets, {0, 1, 2, 3, 4, 5}, 0.7)});
  EXPECT_NE(six.trouble, StationTrouble::ambiguous);
}

TEST(TroubleOfAStation, HangsOnThreePoints) {
  const std::vector<StationPoints> stations{others, stationSeeing("B", allTargets, 0.7)};
  PairLinks pairs;
  pairs.links = {linkOf(0, 1, 3)};
  EXPECT_EQ(troubleOfLast(stations, pairs).trouble, StationTrouble::threePoints);
  pairs.links = {linkOf(0, 1, 4)};
  EXPECT_NE(troubleOfLast(stations, pairs).trouble, StationTrouble::threePoints);
  pairs.links = {linkOf(0, 7, 3)};
  EXPECT_NE(troubleOfLast(stations, pairs).trouble, StationTrouble::threePoints) << "a link of others";
}

TEST(TroubleOfAStation, LeavesDiscrepanciesAboveTheLimit) {
  PairLinks pairs;
  pairs.aboveLimit = {{0, 0.5}, {1, 0.03}};
  const UnplacedStation unplaced = troubleOfLast({others, stationSeeing("B", allTargets, 0.7)}, pairs);
  EXPECT_EQ(unplaced.trouble, StationTrouble::aboveLimit);
  EXPECT_EQ(unplaced.discrepancy, 0.03);
}

TEST(TroubleOfAStation, ContradictsItselfWhereTrianglesAreEqualAndNothingElseIsWrong) {
  EXPECT_EQ(troubleOfLast({others, stationSeeing("B", allTargets, 0.7)}).trouble, StationTrouble::contradiction);
}

TEST(TroubleOfAStation, ThatWeighsMostIsToldFirst) {
  PairLinks pairs;
  pairs.links = {linkOf(0, 1, 3)};
  pairs.aboveLimit = {{1, 0.03}};
  const StationPoints image = mirrored(stationSeeing("B", {0, 2, 4, 5, 7, 9}, 0.7));
  EXPECT_EQ(troubleOfLast({others, image}, pairs).trouble, StationTrouble::mirrored);
  EXPECT_EQ(troubleOfLast({others, stationSeeing("B", {0, 1}, 0.7)}, pairs).trouble, StationTrouble::tooFewPoints);
  EXPECT_EQ(troubleOfLast({others, stationSeeing("B", allTargets, 0.7)}, pairs).trouble, StationTrouble::threePoints);
}

}  // namespace
}  // namespace tiepoint::workbench
