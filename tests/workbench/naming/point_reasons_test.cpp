#include "workbench/naming/point_reasons.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/report/finding_text.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

std::string keyOf(const Finding& finding) { return findingKey(finding.kind); }

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(NotFiniteReasons, NameTheGroupsOnce) {
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0});
  EXPECT_EQ(notFiniteReasons(survey.state).size(), 0u);
  survey.group("B").point("?", {infinity, 0, 0}).point("?", {0, std::nan(""), 0});
  survey.group("C").point("?", {0, 0, -infinity});
  const auto reasons = notFiniteReasons(survey.state);
  ASSERT_EQ(reasons.size(), 1u);
  EXPECT_EQ(keyOf(reasons[0]), "not-finite");
  EXPECT_EQ(findingText(reasons[0]),
            "B, C: some coordinates aren't finite numbers; as long as they are there, no point is named for being "
            "close to another");
}

TEST(NotFiniteReasons, LookAtEveryCoordinate) {
  for (const OdGePoint3d& place : {OdGePoint3d{infinity, 0, 0}, {0, infinity, 0}, {0, 0, infinity}}) {
    StateBuilder survey;
    survey.group("A").point("?", place);
    EXPECT_EQ(notFiniteReasons(survey.state).size(), 1u) << place.x << ' ' << place.y;
  }
}

TEST(TwinReasons, TellOfPointsNearerThanTheTolerance) {
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0}).point("?", {9, 0, 0}).point("?", {0.5, 0, 0});
  survey.group("B").point("?", {0, 0, 0});
  const auto reasons = twinReasons(survey.state, stationsOf(survey.state), std::nextafter(0.5, 1.0));
  ASSERT_EQ(reasons.size(), 1u);
  EXPECT_EQ(keyOf(reasons[0]), "twin-points");
  EXPECT_EQ(findingText(reasons[0]),
            "A: two points lie within 0.5 of one another, so triangles with one can't be told from triangles with the "
            "other; keep only one of them");
  EXPECT_EQ(twinReasons(survey.state, stationsOf(survey.state), 0.5).size(), 0u);
}

TEST(SpanReasons, TellOfStationsTooSmallOrTooLargeForTheLimit) {
  const NamingLimits limits{0.02, 0.02, 0.1, 0.02};
  StateBuilder survey;
  survey.group("A").point("?", {0, 0, 0}).point("?", {0.3999, 0, 0});
  survey.group("B").point("?", {0, 0, 0}).point("?", {0.4001, 0, 0});
  survey.group("C").point("?", {0, 0, 0}).point("?", {0, 19999, 0});
  survey.group("D").point("?", {0, 0, 0}).point("?", {0, 20001, 0});
  survey.group("E").point("?", {5, 5, 5});
  const auto reasons = spanReasons(survey.state, stationsOf(survey.state), limits);
  ASSERT_EQ(reasons.size(), 2u);
  EXPECT_EQ(keyOf(reasons[0]), "unit");
  EXPECT_EQ(findingText(reasons[0]),
            "A: the points are too close together for a limit of 0.02 drawing units (--match-limit); are they in the "
            "unit that --unit gives?");
  EXPECT_EQ(keyOf(reasons[1]), "unit");
  EXPECT_EQ(findingText(reasons[1]),
            "D: the points are too far apart for a limit of 0.02 drawing units (--match-limit); are they in the unit "
            "that --unit gives?");
}

}  // namespace
}  // namespace tiepoint::workbench
