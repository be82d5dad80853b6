#include "workbench/geometry/mismatches.h"

#include <gmock/gmock.h>

#include <limits>

#include "workbench/report/finding_text.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Places = std::vector<OdGePoint3d>;

const Places hall{{0, 0, 0}, {60, 0, 2}, {0, 40, 5}, {60, 40, 1}, {30, 20, 8}};

StateBuilder& add(StateBuilder& builder, const std::string& group, const Places& places) {
  builder.group(group);
  for (std::size_t i = 0; i < places.size(); ++i) builder.point("P" + std::to_string(i), places[i]);
  return builder;
}

template <class Change>
Places changed(Places places, Change change) {
  for (OdGePoint3d& p : places) p = change(p);
  return places;
}

OdGePoint3d turned(const OdGePoint3d& p) { return {500000 - p.y, 5000000 + p.x, 400 + p.z}; }
OdGePoint3d inMillimetres(const OdGePoint3d& p) { return {1000 * p.x, 1000 * p.y, 1000 * p.z}; }
OdGePoint3d withColumnsExchanged(const OdGePoint3d& p) { return {p.y, p.x, p.z}; }

std::vector<std::string> warningsOf(const SessionState& state) {
  std::vector<std::string> texts;
  for (const Finding& finding : mismatches(state)) texts.push_back(findingText(finding));
  return texts;
}

std::vector<std::string> warningsOfTwo(const Places& a, const Places& b) {
  StateBuilder builder;
  add(add(builder, "A", a), "B", b);
  return warningsOf(builder.state);
}

TEST(Mismatches, StationsThatATurnAndAShiftBringTogetherAreFine) {
  EXPECT_THAT(warningsOfTwo(hall, changed(hall, turned)), IsEmpty());
}

TEST(Mismatches, AnotherUnitIsWarnedOf) {
  EXPECT_THAT(
      warningsOfTwo(hall, changed(hall, inMillimetres)),
      ElementsAre("the targets that A and B share are 1000 times as far apart in B; are both files in the same unit?"));
  EXPECT_THAT(
      warningsOfTwo(changed(hall, inMillimetres), hall),
      ElementsAre("the targets that A and B share are 1000 times as far apart in A; are both files in the same unit?"));
}

TEST(Mismatches, FeetAreAnotherUnit) {
  const auto inFeet = [](const OdGePoint3d& p) { return OdGePoint3d(p.x / 0.3048, p.y / 0.3048, p.z / 0.3048); };
  EXPECT_THAT(
      warningsOfTwo(hall, changed(hall, inFeet)),
      ElementsAre("the targets that A and B share are 3.28 times as far apart in B; are both files in the same unit?"));
}

TEST(Mismatches, ABadTargetIsNoUnit) {
  Places bad = hall;
  bad[2].y += 60;
  EXPECT_THAT(warningsOfTwo(hall, bad), IsEmpty());
}

TEST(Mismatches, ExchangedColumnsAreWarnedOf) {
  EXPECT_THAT(warningsOfTwo(hall, changed(hall, withColumnsExchanged)),
              ElementsAre("A and B fit only as mirror images; are two columns swapped in one of the files?"));
  Places noisy = changed(changed(hall, withColumnsExchanged), turned);
  noisy[1].x += 0.02;
  noisy[3].z -= 0.02;
  EXPECT_EQ(warningsOfTwo(hall, noisy).size(), 1u);
}

TEST(Mismatches, TargetsInAPlaneHaveNoMirrorImageOfTheirOwn) {
  const auto flat = [](const OdGePoint3d& p) { return OdGePoint3d(p.x, p.y, 0); };
  const Places yard = changed(hall, flat);
  EXPECT_THAT(warningsOfTwo(yard, changed(yard, withColumnsExchanged)), IsEmpty());
  Places above = yard, below = changed(yard, withColumnsExchanged);
  above[0].z += 0.002;
  below[0].z += 0.002;
  below[1].x += 0.001;
  EXPECT_THAT(warningsOfTwo(above, below), IsEmpty());
}

TEST(Mismatches, WhatLiesMicrometresBesideAPlaneLiesInIt) {
  const auto flat = [](const OdGePoint3d& p) { return OdGePoint3d(p.x, p.y, 1e-6 * p.z); };
  const Places yard = changed(hall, flat);
  EXPECT_THAT(warningsOfTwo(yard, changed(yard, withColumnsExchanged)), IsEmpty());
}

TEST(Mismatches, ThreeTargetsFitEitherWay) {
  const Places three(hall.begin(), hall.begin() + 3);
  EXPECT_THAT(warningsOfTwo(three, changed(three, withColumnsExchanged)), IsEmpty());
}

TEST(Mismatches, OneStationAmongManyIsToldOnce) {
  StateBuilder builder;
  add(add(add(builder, "A", hall), "B", changed(hall, inMillimetres)), "C", changed(hall, turned));
  EXPECT_THAT(
      warningsOf(builder.state),
      ElementsAre("the targets that A and B share are 1000 times as far apart in B; are both files in the same unit?"));
}

TEST(Mismatches, PointsThatAreOutDontCount) {
  StateBuilder builder;
  add(add(builder, "A", hall), "B", changed(hall, inMillimetres)).allInactive();
  EXPECT_THAT(warningsOf(builder.state), IsEmpty());
}

TEST(Mismatches, TargetsOnOneSpotOrNowhereAreFine) {
  const Places spot(4, OdGePoint3d(1, 1, 1));
  EXPECT_THAT(warningsOfTwo(hall, spot), IsEmpty());
  EXPECT_THAT(warningsOfTwo(spot, spot), IsEmpty());
  Places nowhere = hall;
  nowhere[0].x = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(warningsOfTwo(hall, nowhere), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::workbench
