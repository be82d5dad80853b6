#include "workbench/geometry/group_troubles.h"

#include <gmock/gmock.h>

#include <limits>

#include "workbench/report/finding_text.h"
#include "workbench/report/refusal_text.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> warningsOf(const SessionState& state) {
  std::vector<std::string> texts;
  for (const Finding& finding : groupTroubles(state)) texts.push_back(findingText(finding));
  return texts;
}

TEST(GroupTroubles, PointsOnOneLineAreWarnedOf) {
  StateBuilder b;
  b.group("A").point("P1", {0, 0, 1}).point("P2", {10, 10, 1}).point("P3", {20, 20, 1.001});
  EXPECT_THAT(warningsOf(b.state),
              ElementsAre("the points of A in use lie on one line, so its rotation about that line is undetermined"));
}

TEST(GroupTroubles, PointsBesideTheLineAreFine) {
  StateBuilder b;
  b.group("A").point("P1", {1e6, 0, 0}).point("P2", {1e6 + 10, 0, 0}).point("P3", {1e6 + 20, 0.5, 0});
  EXPECT_THAT(warningsOf(b.state), IsEmpty());
}

TEST(GroupTroubles, OnlyPointsInUseCount) {
  StateBuilder b;
  b.group("A").point("P1", {0, 0, 0}).point("P2", {10, 0, 0}).point("P3", {20, 0, 0});
  b.point("P4", {0, 10, 0}).inactive();
  EXPECT_EQ(warningsOf(b.state).size(), 1u);
}

TEST(GroupTroubles, ATargetThatStandsTwiceInAGroupIsWarnedOf) {
  StateBuilder b;
  b.group("A").point("P1", {0, 0, 0}).point("P2", {10, 0, 0}).point("P3", {0, 10, 0});
  b.point("P2", {10, 0, 1}).point("P2", {10, 0, 2}).point("P1", {0, 0, 0});
  b.group("B").point("P1", {0, 0, 0}).point("P2", {10, 0, 0}).point("P3", {0, 10, 0});
  b.point("P3", {0, 10, 9}).inactive();
  EXPECT_THAT(warningsOf(b.state), ElementsAre("A has P2, P1 more than once; only the last point of each name is used "
                                               "in the fit: remove the others from the file"));
}

TEST(GroupTroubles, WeightsOutsideZeroToOneAreWarnedOf) {
  StateBuilder b;
  b.group("A").point("P1", {0, 0, 0}).point("P2", {10, 0, 0}).point("P3", {0, 10, 0}).last().weight = -1.0;
  EXPECT_THAT(
      warningsOf(b.state),
      ElementsAre("A: 1 point in use has a weight outside 0 to 1; a point with a weight below 0 takes part in no fit"));
}

TEST(FiniteCoordinates, AnActivePointThatIsNowhereIsRefused) {
  StateBuilder b;
  b.group("A").point("P1", {0, std::numeric_limits<double>::infinity(), 0});
  try {
    requireFiniteCoordinates(b.state);
    FAIL();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::notFinite);
    EXPECT_EQ(refusalText(refused.refusal()),
              "point P1 of A has a coordinate that isn't a finite number; correct it, or leave the point out with "
              "--exclude A:P1");
  }
  b.allInactive();
  EXPECT_NO_THROW(requireFiniteCoordinates(b.state));
}

}  // namespace
}  // namespace tiepoint::workbench
