#include "workbench/geometry/nearest_points.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "matching/match_by_distance.h"
#include "solver/arbitrary.h"
#include "workbench/geometry/doubled_names.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using tiepoint::testing::arbitraryBetween;

/// Coordinates here are below 1e7: what a bound may stay below the distance.
constexpr double rounding = 1e-5;
const std::map<ZOR::reg::GroupId, OdGeMatrix3d> unmoved{{0, {}}, {1, {}}, {2, {}}};

NearestPoints nearestIn(const SessionState& state, double maxDistance) {
  return nearestPoints(placedPoints(state, unmoved), maxDistance);
}

TEST(NearestPoints, TellsHowFarAPointWithoutANameIsFromAnyOther) {
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0}).point("T1", {9, 0, 0}).group("B").point("T2", {0, 3, 4});
  EXPECT_NEAR(nearestIn(survey.state, 100.0).toUnnamed, 5.0, rounding);
  EXPECT_LE(nearestIn(survey.state, 100.0).toUnnamed, 5.0);
}

TEST(NearestPoints, TellsHowFarPointsOfDifferentNamesAreApartAndNotThoseOfOne) {
  StateBuilder survey;
  survey.group("A").point("T1", {0, 0, 0}).point("T2", {0, 3, 4}).group("B").point("T1", {0, 1, 0});
  EXPECT_NEAR(nearestIn(survey.state, 100.0).betweenNames, std::hypot(2.0, 4.0), rounding);
  EXPECT_EQ(nearestIn(survey.state, 100.0).toUnnamed, 100.0 - 4e-12);
}

TEST(NearestPoints, LooksNoFartherThanAsked) {
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0}).point("?", {0, 5, 0});
  EXPECT_NEAR(nearestIn(survey.state, 4.0).toUnnamed, 4.0, rounding);
  EXPECT_NEAR(nearestIn({}, 4.0).toUnnamed, 4.0, rounding);
}

TEST(NearestPoints, PromisesNothingWhereAPointHasNoPlace) {
  for (const double lost : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    StateBuilder survey;
    survey.group("A").point("T1", {0, 0, 0}).point("T2", {50, 0, 0}).point("T3", {0, lost, 0});
    EXPECT_EQ(nearestIn(survey.state, 4.0).toUnnamed, 0.0);
    EXPECT_EQ(nearestIn(survey.state, 4.0).betweenNames, 0.0);
  }
}

/// Of three groups, on places that often coincide or lie at the same distances.
SessionState crowdedSurvey() {
  static const std::vector<std::string> names{"?", "?", "T1", "T2", "T3", "T4", "T5"};
  const double far = *rc::gen::element(0.0, 1e6);
  StateBuilder survey;
  for (const char* const group : {"A", "B", "C"}) {
    survey.group(group);
    const int count = arbitraryBetween(0, 12);
    for (int i = 0; i < count; ++i) {
      const auto step = [] { return 0.25 * arbitraryBetween(0, 20); };
      survey.point(*rc::gen::elementOf(names), {far + step(), step(), step()});
      survey.last().autoNamed = survey.last().named && *rc::gen::arbitrary<bool>();
    }
  }
  return survey.state;
}

NearestPoints plainNearest(const SessionState& state, double maxDistance) {
  const std::vector<PlacedPoint> placed = placedPoints(state, unmoved);
  NearestPoints nearest{maxDistance, maxDistance};
  for (auto a = placed.begin(); a != placed.end(); ++a) {
    for (auto b = placed.begin(); b != a; ++b) {
      const bool bothNamed = a->point->record.named && b->point->record.named;
      if (bothNamed && a->point->record.commonId == b->point->record.commonId) continue;
      double& smallest = bothNamed ? nearest.betweenNames : nearest.toUnnamed;
      smallest = std::min(smallest, (a->position - b->position).norm());
    }
  }
  return nearest;
}

RC_GTEST_PROP(NearestPoints, AreThoseOfAllPairs, ()) {
  const SessionState state = crowdedSurvey();
  const double maxDistance = *rc::gen::element(0.25, 0.7, 3.0, 100.0);
  const NearestPoints nearest = nearestIn(state, maxDistance), plain = plainNearest(state, maxDistance);
  RC_ASSERT(nearest.toUnnamed <= plain.toUnnamed && nearest.toUnnamed >= plain.toUnnamed - rounding);
  RC_ASSERT(nearest.betweenNames <= plain.betweenNames && nearest.betweenNames >= plain.betweenNames - rounding);
}

RC_GTEST_PROP(NearestPoints, LeaveNothingToNameWithinThatTolerance, ()) {
  const SessionState state = crowdedSurvey();
  const double tolerance = nearestIn(state, 2.5).toUnnamed;
  RC_CLASSIFY(tolerance > 0.0 && tolerance < 2.0, "some within reach");
  RC_PRE(tolerance > 0.0);
  ZOR::reg::RefPointList points;
  for (const SessionPoint& point : state.points) points.push_back(point.record);
  ZOR::reg::NamingChanges changes;
  ZOR::reg::matchByDistance(points, {{0, {}}, {1, {}}, {2, {}}}, tolerance, changes);
  RC_ASSERT(changes.isEmpty());
}

RC_GTEST_PROP(NearestPoints, LeaveNoNameDoubledWithinASmallerReach, ()) {
  const SessionState state = crowdedSurvey();
  const double reach = 0.999 * nearestIn(state, 2.5).betweenNames;
  RC_CLASSIFY(reach > 0.0 && reach < 2.0, "some within reach");
  RC_PRE(reach > 0.0);
  RC_ASSERT(doubledNames(state, {0, 1, 2}, unmoved, reach).empty());
}

}  // namespace
}  // namespace tiepoint::workbench
